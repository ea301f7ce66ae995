// The day view's frame: header, menus, bottom bar; ok asks for a new event at the selected hour.
#include "day/VtCalendarDayView.h"

#include <cassert>

#include "PLAppContext.h"
#include "PLDrawContext.h"
#include "PLEventLoop.h"
#include "PLMessage.h"
#include "PLTheme.h"
#include "VtWidgets.h"
#include "app/VtCalendarHelpers.h"
#include "app/VtCalendarMainViewBar.h"

VtCalendarDayView::VtCalendarDayView(uint32_t id, PLDate* selectDate, PLTime* selectTime,
                                     bool showLunar)
    : PLView(id, PLPoint(45, 0), PLSize(275, 240)),
      mSelectDate(selectDate),
      mSelectTime(selectTime),
      mShowLunar(showLunar) {
    assert(selectDate != nullptr && selectTime != nullptr && "the shared selection");
    const uint32_t options[][2] = {{10002, 11811}, {10012, 11812}, {30122, 11817}, {30262, 11816}};
    mOptionsMenu.reset(VtCalendarMakeMenu(11820, options, 4));
    const uint32_t views[][2] = {{10032, 11821}, {10042, 11822}, {10052, 11823}};
    mViewMenu.reset(VtCalendarMakeMenu(kDayViewMenu, views, 3));
    Reload(0);
}

VtCalendarDayView* VtCalendarDayView::Make(uint32_t id, PLDate* selectDate, PLTime* selectTime,
                                           bool showLunar, PLListener* application) {
    auto* view = new VtCalendarDayView(id, selectDate, selectTime, showLunar);
    VtCalendarAddBottomBar(view, {kDayViewSwitchButton, kDayExitButton, 10052},
                           view->mOptionsMenu.get(), view->mViewMenu.get(), application);
    VtCalendarYearSelectControl* header =
        MakeCalendarYearSelectControl(kDayDateHeader, kVtHeaderDay, selectDate, nullptr, false);
    header->AddListener(view);
    view->AddSubPane(header, false);
    return view;
}

void VtCalendarDayView::Reload(int) {
    mShownDate = *mSelectDate;
}

void VtCalendarDayView::Rebuild() {}

void VtCalendarDayView::Listen(PLMessage* message) {
    if (message == nullptr) {
        return;
    }
    const bool goToDate =
        (message->GetMessageID() == kPLMsgUp && message->GetSenderID() == kDayDateHeader &&
         message->GetUserMessageID() == 3) ||
        (message->GetMessageID() == kPLMsgSelect && message->GetSenderID() == 11810 &&
         mOptionsMenu->GetSelectedItemID() == 11812);
    if (goToDate) {
        ShowDateDialog(*mSelectDate);
        PLAppContext::GetInstance()->GetEventLoop().SetTarget(this);
    }
    if (goToDate || message->GetMessageID() == kPLMsgUp) {
        Reload(0);
        Redraw();
    }
}

bool VtCalendarDayView::DoKeyCommand(char key, short, PLKeyModifiers) {
    if (uint8_t(key) != kPLKeyOk) {
        return false;
    }
    // The application opens the new-event form for the selected day and hour.
    PLMessage open(kPLMsgUp, GetID(), 0x3F3F3F3F, kEmptyString, kEmptyString);
    BroadcastMessage(&open);
    return true;
}

void VtCalendarDayView::Draw(PLDrawContext& context) {
    context.FillRect(GetBounds(), PLThemeManager::GetCurrentTheme()->GetBackgroundColor());
}

void VtCalendarDayView::SetSelectHour(int hour) {
    if (mSelectTime != nullptr) {
        mSelectTime->SetHour(hour);
    }
}

// The week view's frame: header, menus, bottom bar.
#include "week/VtCalendarWeekView.h"

#include <cassert>

#include "PLAppContext.h"
#include "PLDrawContext.h"
#include "PLEventLoop.h"
#include "PLMessage.h"
#include "PLTheme.h"
#include "VtWidgets.h"
#include "app/VtCalendarHelpers.h"
#include "app/VtCalendarMainViewBar.h"

VtCalendarWeekView::VtCalendarWeekView(uint32_t id, PLDate* selectDate)
    : PLView(id, PLPoint(45, 0), PLSize(275, 240)), mSelectDate(selectDate) {
    assert(selectDate != nullptr && "the week view shows the shared selected date");
    const uint32_t options[][2] = {{10002, 11811}, {10012, 11812}, {10022, 11815}, {30262, 11816}};
    mOptionsMenu.reset(VtCalendarMakeMenu(11820, options, 4));
    const uint32_t views[][2] = {{10032, 11821}, {10042, 11822}, {10052, 11823}};
    mViewMenu.reset(VtCalendarMakeMenu(kWeekViewMenu, views, 3));
    Reload(0);
}

VtCalendarWeekView* VtCalendarWeekView::Make(uint32_t id, PLDate* selectDate,
                                             PLListener* application) {
    auto* view = new VtCalendarWeekView(id, selectDate);
    VtCalendarAddBottomBar(view, {kWeekViewSwitchButton, kWeekExitButton, 10042},
                           view->mOptionsMenu.get(), view->mViewMenu.get(), application);
    VtCalendarYearSelectControl* header =
        MakeCalendarYearSelectControl(kWeekDateHeader, kVtHeaderDay, selectDate, nullptr, false);
    header->AddListener(view);
    view->AddSubPane(header, false);
    return view;
}

void VtCalendarWeekView::Reload(int) {
    mShownDate = *mSelectDate;
}

void VtCalendarWeekView::Rebuild() {}

void VtCalendarWeekView::Listen(PLMessage* message) {
    if (message == nullptr) {
        return;
    }
    const bool goToDate =
        (message->GetMessageID() == kPLMsgUp && message->GetSenderID() == kWeekDateHeader &&
         message->GetUserMessageID() == 3) ||
        (message->GetMessageID() == kPLMsgSelect && message->GetSenderID() == 11810 &&
         mOptionsMenu->GetSelectedItemID() == 11812);
    if (goToDate) {
        ShowDateDialog(*mSelectDate);
        PLAppContext::GetInstance()->GetEventLoop().SetTarget(GetHourTable());
    }
    if (goToDate || message->GetMessageID() == kPLMsgUp) {
        Reload(0);
        Redraw();
    }
}

void VtCalendarWeekView::Draw(PLDrawContext& context) {
    context.FillRect(GetBounds(), PLThemeManager::GetCurrentTheme()->GetBackgroundColor());
}

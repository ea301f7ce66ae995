// The form's frame: title band and bottom bar.
#include "event/VtCalendarNewEventView.h"

#include <cassert>

#include "APGetStr.h"
#include "PLDrawContext.h"
#include "PLTheme.h"
#include "PLTimeStamp.h"
#include "VtWidgets.h"

VtCalendarNewEventView::VtCalendarNewEventView(uint32_t id, PLDate* selectDate, PLTime* selectTime)
    : PLView(id, PLPoint(45, 0), PLSize(275, 240)),
      mSelectDate(selectDate),
      mSelectTime(selectTime) {
    assert(selectDate != nullptr && selectTime != nullptr && "the shared selection");
}

VtCalendarNewEventView* VtCalendarNewEventView::Make(uint32_t id, PLDate* selectDate,
                                                     PLTime* selectTime, PLListener* application) {
    auto* view = new VtCalendarNewEventView(id, selectDate, selectTime);
    view->mTitle = MakeVtTextTopBar(11501, PLPoint(0, 0), 240, APGetStr(10002), kEmptyString, 0, 0);
    view->AddSubPane(view->mTitle, false);
    VtButton* save = MakeBmpBarButton(kNewEventSave, PLPoint(239, 43), PLSize(36, 154), nullptr,
                                      APGetStr(30092), 1, false, false, nullptr);
    save->AddListener(application);
    view->AddSubPane(save, false);
    VtButton* cancel = MakeCSTBackButton(kNewEventCancel, PLPoint(239, 197));
    cancel->AddListener(application);
    view->AddSubPane(cancel, false);
    return view;
}

void VtCalendarNewEventView::Prepare(_EventRecInfo*) {
    if (mTitle != nullptr) {
        mTitle->SetString(PLDate2PLString(*mSelectDate, 0) + PLBasicString<char>(" ") +
                              PLTime::GetStr(*mSelectTime, 2),
                          false);
    }
}

bool VtCalendarNewEventView::Save() {
    return false;
}

void VtCalendarNewEventView::Draw(PLDrawContext& context) {
    context.FillRect(GetBounds(), PLThemeManager::GetCurrentTheme()->GetBackgroundColor());
}

// INTERFACE STUB of the detail view; replaced by the real screen.
#include "event/VtCalendarDetailView.h"

VtCalendarDetailView::VtCalendarDetailView(uint32_t id)
    : PLView(id, PLPoint(45, 0), PLSize(275, 240)) {}

VtCalendarDetailView* VtCalendarDetailView::Make(uint32_t id, int32_t eventID) {
    auto* view = new VtCalendarDetailView(id);
    view->LoadEvent(eventID);
    return view;
}

void VtCalendarDetailView::LoadEvent(int32_t eventID) {
    mEventID = eventID;
}

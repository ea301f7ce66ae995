// INTERFACE STUB of the kind chooser; replaced by the real screen.
#include "recur/VtCalendarRecurMainView.h"

VtCalendarRecurMainView::VtCalendarRecurMainView(unsigned long id, int kind)
    : PLView(id, PLPoint(0, 0), PLSize(275, 240)) {
    SetKind(kind);
}

void VtCalendarRecurMainView::SetKind(int kind) {
    mKind = kind;
}

void VtCalendarRecurMainView::Listen(PLMessage*) {}

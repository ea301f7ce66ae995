// INTERFACE STUB of the repeat editors; replaced by the real editors.
#include "recur/VtCalendarRecurEditorView.h"

VtCalendarRecurEditorView::VtCalendarRecurEditorView(unsigned long id)
    : PLView(id, PLPoint(0, 0), PLSize(275, 240)) {}

VtCalendarRecurEditorView* VtCalendarMakeRecurEditor(int, _EventRecInfo*) {
    return nullptr;
}

// The frame every repeat editor shares (title bar, scroll container, end-of-series controls,
// confirm and back buttons) and the four editors the form opens by kind.
// INTERFACE STUB: the editors are still to be built; the form already calls this interface.
#pragma once

#include <cstdint>

#include "APEventRecords.h"
#include "PLView.h"

constexpr uint32_t kRecurDailyViewID = 11630;
constexpr uint32_t kRecurWeeklyViewID = 11660;
constexpr uint32_t kRecurMonthlyViewID = 11700;
constexpr uint32_t kRecurYearlyViewID = 11730;

class VtCalendarRecurEditorView : public PLView {
public:
    VtCalendarRecurEditorView(unsigned long id);

    // Takes the rule of a copy of the form's record (start and end stamps already refreshed from
    // the form's fields) and shows it when the record's kind is this editor's, else the defaults.
    virtual void SetRecur(const _EventRecInfo& recordCopy) = 0;
};

// The editor for a kind (1, 2, 4 or 8), made with its view id and loaded from `recordCopy`;
// null for any other kind. The caller owns it until it is added to a parent.
VtCalendarRecurEditorView* VtCalendarMakeRecurEditor(int kind, _EventRecInfo* recordCopy);

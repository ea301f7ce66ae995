// The first screen of the repeat setting: five radio rows (none, daily, weekly, monthly, yearly).
// It only remembers the chosen kind and tells its listener (the event form) that a choice was made.
// INTERFACE STUB: the screen itself is still to be built; the form already calls this interface.
#pragma once

#include <cstdint>

#include "PLView.h"
#include "recur/_RecurInfo.h"

constexpr uint32_t kRecurChooserID = 11600;

class VtCalendarRecurMainView : public PLView {
public:
    VtCalendarRecurMainView(unsigned long id, int kind);

    // Checks the row of `kind` (row 1 for an unknown kind) and sets the bar button's label.
    void SetKind(int kind);
    // The kind chosen with the bar button; read by the form when the chooser reports.
    int GetKind() const { return mKind; }

    void Listen(PLMessage* message) override;
    const char* GetClassName() const override { return "VtCalendarRecurMainView"; }

private:
    int32_t mKind = kRecurNone;
};

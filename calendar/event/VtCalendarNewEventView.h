// The new/edit event form as far as it stands: a title band with the selected date and the bottom
// bar with save (11525) and cancel (11526), so that the application can open and close it. The
// fields and the saving are still to come: Save() stores nothing yet and says so.
#pragma once

#include <cstdint>

#include "APEventRecords.h"
#include "PLDate.h"
#include "PLTime.h"
#include "PLView.h"

class PLListener;
class VtTopBarView;

constexpr uint32_t kNewEventViewID = 11500;
constexpr uint32_t kNewEventSave = 11525;
constexpr uint32_t kNewEventCancel = 11526;

class VtCalendarNewEventView : public PLView {
public:
    VtCalendarNewEventView(uint32_t id, PLDate* selectDate, PLTime* selectTime);
    static VtCalendarNewEventView* Make(uint32_t id, PLDate* selectDate, PLTime* selectTime,
                                        PLListener* application);

    // Starts a new event from the shared selection (null) or edits a stored one.
    void Prepare(_EventRecInfo* record);
    // True when the event was stored; nothing is stored by this form yet.
    bool Save();

    void Draw(PLDrawContext& context) override;
    const char* GetClassName() const override { return "VtCalendarNewEventView"; }

private:
    PLDate* mSelectDate;
    PLTime* mSelectTime;
    VtTopBarView* mTitle = nullptr;  // a sub-pane
};

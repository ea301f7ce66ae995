// One stored event shown read-only, with edit, export and share, and delete in its option menu.
// INTERFACE STUB: the screen is still to be built; the day view already calls this interface.
#pragma once

#include <cstdint>

#include "PLView.h"

constexpr uint32_t kDetailViewID = 12100;
constexpr uint32_t kDetailEditNotice = 12101;  // "ctrl": open the form on the shown event
constexpr uint32_t kDetailBack = 12102;        // "ctrl": back to the calling view
constexpr uint32_t kDetailDeleted = 12106;     // "ctrl": the shown event was deleted

class VtCalendarDetailView : public PLView {
public:
    // The view for `id` (12100) showing event `eventID`; the caller owns it until it is added.
    static VtCalendarDetailView* Make(uint32_t id, int32_t eventID);

    // Reads the event and its alarm from the stores and lays the view out again.
    void LoadEvent(int32_t eventID);
    int32_t GetEventID() const { return mEventID; }

    const char* GetClassName() const override { return "VtCalendarDetailView"; }

private:
    explicit VtCalendarDetailView(uint32_t id);

    int32_t mEventID = 0;
};

// The save path of the event form without its dialogs: the working record and its alarm setting,
// copying the form's values into them, the keep-time check, and storing the event, its daemon
// alarm and its alert record. The form asks the questions and shows the notices; this class only
// answers what happened, so that the whole path runs against real stores in tests.
#pragma once

#include <cstdint>

#include "APEventRecords.h"
#include "PLBasicString.h"
#include "PLDate.h"
#include "PLTime.h"

// What the form's controls hold when the user saves.
struct VtCalendarFormInput {
    PLBasicString<char> subject;
    PLBasicString<char> location;
    PLBasicString<char> notes;
    bool allDay = false;
    PLDate startDate;
    PLTime startTime;
    PLDate endDate;
    PLTime endTime;
    uint32_t colour = 0;
    uint32_t classChoice = 0;
    uint32_t alarmChoice = 0;
};

enum class VtCalendarSaveResult {
    Saved,            // the event (and its alarm) are stored
    KeepTimeRefused,  // the event ends before the keep time: nothing was stored
    StoreFailed,      // a store or the daemon refused: what the failure left is described below
};

class VtCalendarEventSaver {
public:
    VtCalendarEventSaver();

    _EventRecInfo& GetRecord() { return mRecord; }
    const _EventRecInfo& GetRecord() const { return mRecord; }
    const _EventAlertInfo& GetAlert() const { return mAlert; }
    // The start date at local midnight, from which an all-day event's alarm is timed.
    long GetLocalStartStamp() const { return mLocalStart; }
    // Seconds between the alarm and the event, as last chosen.
    long GetLead() const { return mLead; }

    // Starts a new event: an empty record and no alarm.
    void Reset();
    // Takes a stored record to edit: impossible colour and class choices are replaced by the
    // defaults, and its alert record is read. Returns the alarm entry to show (11530 when the
    // alert record is disabled or missing; a dangling alert id is dropped from the working copy).
    uint32_t Load(const _EventRecInfo& record);
    // Puts the recurrence values of a repeat setting into the working record.
    void SetRecurrence(int32_t a, int32_t b, int32_t last, int32_t c, int32_t kind);

    // Copies the form into the working record and the alarm setting. A timed event whose start
    // lies after its end keeps the stamps, rule, choices and alarm it had.
    void CopyForm(const VtCalendarFormInput& input);
    // True when the event's series ends after the configured keep time (or everything is kept).
    bool KeepTimeAllows() const;
    // Stores the event; with an alarm, registers it with the daemon and stores the alert record.
    // When the daemon gives no id the event is deleted again (also one stored before this save)
    // and the working record forgets its ids, so that saving again adds it anew.
    bool StoreEvent(uint32_t alarmChoice);
    // Fills the daemon context for the alarm and adds or updates it; returns the lead in seconds.
    long RegisterAlarm(uint32_t alarmChoice);
    // CopyForm, KeepTimeAllows and StoreEvent in that order.
    VtCalendarSaveResult Save(const VtCalendarFormInput& input);

    // True when the file system holding the stores is nearly full.
    static bool IsStorageLow();

private:
    void CopyTexts(const VtCalendarFormInput& input);
    bool CopyStamps(const VtCalendarFormInput& input);
    void CopyAlarm(uint32_t alarmChoice);
    bool WriteEvent();
    void ForgetStoredIds();

    _EventRecInfo mRecord;
    _EventAlertInfo mAlert;
    long mLocalStart = 0;
    long mLead = 0;
};

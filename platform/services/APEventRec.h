// The event store: calendar events in SQLite under the device root, with the range queries that
// feed the month, week and day views.
//
// Made on the stack for one piece of work and destroyed right after, as the calendar does. Every
// write is one transaction; a failed write leaves the store as it was. Ids start at 1; results of
// 0 or less mean failure.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "APEventQueryNodes.h"
#include "APEventRecords.h"
#include "PLBasicString.h"

class APDatabase;

// Device path of the event and alert store.
extern const char* const kAPEventStoreDevicePath;

class APEventRec {
public:
    // Opens (and on first use creates) the store of the current device root.
    APEventRec();
    ~APEventRec();
    APEventRec(const APEventRec&) = delete;
    APEventRec& operator=(const APEventRec&) = delete;

    // False when the store could not be opened; GetLastError says why.
    bool IsOpen() const;
    const std::string& GetLastError() const;

    // Stores a new event; returns its id (> 0), or 0 or less on failure.
    int AddEventRec(_EventRecInfo* record);
    // Stores many new events in one transaction (an import, a seeded store): either all are stored
    // and their ids written to `ids` (which holds `count` entries), or none. Returns how many.
    int AddEventRecs(const _EventRecInfo* records, int count, int* ids);
    // Rewrites the event with the record's id. On failure the record's id is set to 0 and 0 is
    // returned; on success the id is returned.
    int UpdateEventRec(_EventRecInfo* record);
    // Fills `record` with the stored bytes; 1 when found, 0 otherwise (record untouched).
    int GetEventRec(int id, _EventRecInfo* record);
    // Removes the event, its alert record and its daemon alarm in one transaction; 1 when an event
    // was removed, 0 otherwise.
    int DeleteEventRec(int id);
    // Removes every event whose last-occurrence stamp lies before `before` (with their alerts and
    // alarms); returns how many, or -1 on failure.
    int DeleteFinshedEventRec(long before);

    // Events that touch the half-open range [start, end) of two local midnights, repeating ones
    // once with their rule, ascending start (ties by id). Null when none. `text` is not used.
    APMonthEventNode* QueryMonthEventView(long start, long end, PLBasicString<char>& text);
    APMonthEventNode* QueryWeekEventView(long start, long end, PLBasicString<char>& text);
    // Occurrences that touch the day from `start` (00:00:00) to `end` (23:59:59) of the same day:
    // all-day and multi-day first, then by start time, ties by id. Null when none. Only the day of
    // `start` is looked at; callers ask one day at a time.
    APDayEventNode* GetDayEventView(long start, long end, PLBasicString<char>& text);

    // Ids of the events whose span or series overlaps [from, to), ascending start; every event
    // when from >= to. For tools.
    std::vector<int> ListEventIds(long from, long to);

private:
    struct Impl;
    std::unique_ptr<Impl> mImpl;
};

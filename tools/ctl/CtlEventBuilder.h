// Builds an event record the way the application's form and save path do, so that events seeded
// from the shell look exactly like events made on the phone: stamps (all-day dates coded as UTC),
// the repeat rule with the application's own series end, the move to the first occurrence, and
// the alarm with its daemon rule and alert record.
#pragma once

#include <string>

#include "APEventRecords.h"
#include "PLDate.h"
#include "recur/_RecurInfo.h"

struct CtlRepeat {
    int kind = kRecurNone;
    int interval = 1;  // value A (the month for yearly)
    int pattern = 0;   // value B
    bool hasCount = false;
    int count = 0;
    bool hasUntil = false;
    PLDate until;
};

// Parses a --repeat value (daily, workdays, weekly:1,3, monthly:DAY, monthly:WEEK/WEEKDAY,
// yearly:MONTH/DAY, yearly:MONTH/WEEK/WEEKDAY) into kind, A and B.
bool CtlParseRepeat(const std::string& text, int interval, CtlRepeat& repeat, std::string& error);

// Fills value A, B, C, the last-occurrence stamp, the kind and the recurring flag as the editors'
// end-of-series check and the save path do; a rule the editors would drop becomes no repetition.
// False with `error` for an until date before the start.
bool CtlApplyRepeat(_EventRecInfo& record, const CtlRepeat& repeat, std::string& error);

// For a series that ends after `count` occurrences: value C and the last-occurrence stamp by the
// application's own series end, the count cut so that the series ends within 2030; a count that
// cannot be held turns the event into a single one. The record's rule fields must be set.
void CtlEndAfterCount(_EventRecInfo& record, int count);

// Lead of an alarm-menu id 11531..11540 (seconds, amount, unit); false for any other id.
bool CtlAlarmLead(int alarmID, long& seconds, int& amount, int& unit);

// Registers the alarm of a stored event as the save path does (daemon alarm first, then the alert
// record, then the event rewritten). On failure the event is deleted, as the save path does.
bool CtlRegisterAlarm(_EventRecInfo& record, long leadSeconds, int amount, int unit,
                      std::string& error);

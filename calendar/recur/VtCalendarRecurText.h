// An event's repeat rule in words ("Every 2 weeks on Mo, We, until 31-12-2030"), built from the
// resource texts. The detail view and calendar-ctl's `event show` both print it through these
// functions, so the screen and the tool always agree.
#pragma once

#include <cstdint>

#include "PLBasicString.h"
#include "recur/_RecurInfo.h"

struct _EventRecInfo;

// The rule of `setting` with its end, dates written in `dateFormat` (PLDate2PLString's formats).
// Impossible values (an unknown kind, interval 0, day 45, week 7) leave out the part they spoil
// instead of describing a rule that cannot happen.
PLBasicString<char> VtCalendarRecurText(const _RecurInfo& setting, long dateFormat);
// The same for the rule stored in an event record.
PLBasicString<char> VtCalendarRecurText(const _EventRecInfo& record, long dateFormat);

// The rule without its end: "Monthly on the Second Tuesday".
PLBasicString<char> VtCalendarRecurRuleText(const _RecurInfo& setting);
// The end alone, with its leading separator (", 10 times", ", until 31-12-2030"), or empty for a
// series without end and for a rule that does not repeat.
PLBasicString<char> VtCalendarRecurEndText(const _RecurInfo& setting, long dateFormat);

// The rule fields of a stored event as the recurrence code keeps them.
_RecurInfo VtCalendarRecurOf(const _EventRecInfo& record);

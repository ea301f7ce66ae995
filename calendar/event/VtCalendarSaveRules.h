// The computations of saving an event, kept apart from the form and the stores so that the form,
// calendar-ctl and the tests all store an event with the same fields byte for byte the same: the
// alarm entries and their leads, the record texts, the all-day stamps, the first occurrence of a
// repeat rule, the alarm rule handed to the daemon, the keep-time limit and the low-storage test.
#pragma once

#include <cstdint>
#include <ctime>

#include "APEventRecords.h"
#include "PLBasicString.h"
#include "PLDate.h"
#include "PLTime.h"

// Entries of the form's alarm menu (11530 no alarm, 11531 at the start .. 11540 a day before).
constexpr uint32_t kAlarmNone = 11530;
constexpr uint32_t kAlarmAtStart = 11531;
constexpr uint32_t kAlarmFiveMinutes = 11533;
constexpr uint32_t kAlarmFifteenMinutes = 11535;
constexpr uint32_t kAlarmOneDay = 11540;

// Class menu entries; the colours are in VtCalendarColours.h.
constexpr uint32_t kClassFirst = 11560;
constexpr uint32_t kClassDefault = 11561;
constexpr uint32_t kClassLast = 11563;

// Free space on the store's file system at or below which a failed save is blamed on storage.
constexpr int32_t kLowStorageBytes = 3452928;

// How long before the event an alarm rings: the alert record's amount and unit and the seconds.
struct VtCalendarLead {
    int32_t amount = 0;
    int32_t unit = 0;
    long seconds = 0;
};

// The lead of an alarm entry 11531..11540; false (lead untouched) for 11530 and any other id.
bool VtCalendarLeadOf(uint32_t alarmChoice, VtCalendarLead& lead);

// The alarm entry that a stored alert record stands for: 11530 when it is disabled, the entry
// of a known amount and unit, and five minutes (11533) for any combination no entry writes.
uint32_t VtCalendarAlarmChoiceOf(const _EventAlertInfo& info);

// Copies `text` into a record text field: at most 600 bytes and a NUL, cut before a UTF-8
// character that would not fit whole, so that a long Chinese subject never ends in half a
// character.
void VtCalendarCopyRecordText(char (&field)[kAPEventTextSize], const PLBasicString<char>& text);
// The text of a record field, read up to its NUL or its 601st byte, whichever comes first.
PLBasicString<char> VtCalendarRecordText(const char (&field)[kAPEventTextSize]);

// An all-day event is stored as its dates read as UTC: the start date at 00:00:00 and the end
// date at 23:59:59, the start date's when the end date is not later.
void VtCalendarAllDayStamps(const PLDate& start, const PLDate& end, int32_t& startStamp,
                            int32_t& endStamp);

// The first day of a repeat rule on or after `start` by kind (2 weekly, 4 monthly, 8 yearly; any
// other kind keeps the start). `a` and `b` are the record's recurrence values A and B.
PLDate VtCalendarFirstOccurrence(int32_t kind, int32_t a, int32_t b, const PLDate& start);

// Moves a recurring record's start to its first occurrence, its end by the same number of
// seconds. `startTime` is the form's start time (ignored for all-day events).
void VtCalendarMoveToFirstOccurrence(_EventRecInfo& record, const PLDate& startDate,
                                     const PLTime& startTime);

// The weekday mask the daemon's weekly rule takes for the record's mask `pattern` (bit d - 1 for
// weekday d, Sunday 1) when the alarm first rings at `alertTime`: reversed to Sunday at bit 6,
// then shifted by the day that separates the UTC date of the ring from its local date.
int VtCalendarDaemonWeekMask(int32_t pattern, long alertTime);

// The weekday number the daemon's n-th weekday rules take for a weekday 1..7 (Sunday 1).
int VtCalendarDaemonWeekday(int weekday);

// Writes the rule of the record's alarm ringing first at `alertTime` into `context`: the rule
// builder of the record's repeat kind, or the one-shot rule for a single event.
void VtCalendarAlarmRule(AP_ALERT_CONTEXT& context, const _EventRecInfo& record, long alertTime);

// The keep-time check of a save: true when an event whose series ends at `lastStamp` may be
// stored with the keep-time option `option` at the local time `now` (any option other than the
// five limits keeps everything).
bool VtCalendarKeepTimeAllows(long option, const std::tm& now, long lastStamp);

// The low-storage verdict on the free space of the store's file system: the product of the block
// size and the free blocks, taken as a signed 32-bit number, at or below kLowStorageBytes.
bool VtCalendarIsLowStorage(int64_t blockSize, int64_t freeBlocks);

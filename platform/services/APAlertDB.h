// The alarm daemon's side: registering alarms (AP_ALERT_CONTEXT) in the daemon's own table, the
// builders of their RFC 5545 recurrence rules, and listing when each alarm rings next.
//
// Rules are written in UTC: BYHOUR/BYMINUTE are the alert time's UTC hour and minute, and day
// based parts are moved by the day that separates the local and the UTC date of the alert time
// (for a day of the month: the UTC date of the first ring against the day the rule names, so that
// a lead of a day is followed too).
// A series ends with COUNT=c when c counts occurrences, else with UNTIL at the last-occurrence
// stamp.
#pragma once

#include <string>
#include <vector>

#include "APEventRecords.h"

// Registers a new alarm: the daemon id is written at offset 0 and returned (> 0); 0 on failure.
int APAlertDB_AddAlert(AP_ALERT_CONTEXT* context);
// Rewrites the alarm with the id at offset 0; returns the id, or sets it to 0 and returns 0 when
// there is no such alarm or the write failed.
int APAlertDB_UpdateAlert(AP_ALERT_CONTEXT* context);
// Unregisters an alarm; 1 when one was removed.
int APAlertDB_DeleteAlert(int daemonId);
// Tells the daemon to reload its alarms (bumps the store's generation); 1 on success.
int APAlertDB_SendUpdateToDaemon();
// How many reloads were asked for so far (0 for a fresh store, -1 when unreadable).
long APAlertDB_GetGeneration();

// Rule builders. `time` is the first ring, `c` and `last` the record's value C and last-occurrence
// stamp. Each writes the rule field of `context` and returns true; impossible values (interval
// below 1, empty weekday set, month or day out of range, unknown weekday) write an empty rule and
// return false.
bool APAlertDB_MakeDailyRecur(AP_ALERT_CONTEXT* context, long time, int a, int c, long last);
bool APAlertDB_MakeWeekdayRecur(AP_ALERT_CONTEXT* context, long time, int c, long last);
// `mask`: Sunday at bit 6 down to Saturday at bit 0; bit 7 is ignored.
bool APAlertDB_MakeWeeklyRecur(AP_ALERT_CONTEXT* context, long time, int a, int mask, int c,
                               long last);
// Day-of-month forms.
bool APAlertDB_MakeMonthlyRecur(AP_ALERT_CONTEXT* context, long time, int a, int day, int c,
                                long last);
bool APAlertDB_MakeYearlyRecur(AP_ALERT_CONTEXT* context, long time, int a, int day, int c,
                               long last);
// N-th weekday forms: `week` 1..4 or -1 for the last; `weekday` in the daemon's numbering
// (5 Sunday, 4 Monday, 3 Tuesday, 2 Wednesday, 1 Thursday, 7 Friday, 6 Saturday).
bool APAlertDB_MakeMonthlyRecur(AP_ALERT_CONTEXT* context, long time, int a, int week, int weekday,
                                int c, long last);
bool APAlertDB_MakeYearlyRecur(AP_ALERT_CONTEXT* context, long time, int a, int week, int weekday,
                               int c, long last);

// Every registered alarm, by ascending daemon id. False with `error` when the store is unreadable.
bool APAlertDB_ListAlerts(std::vector<AP_ALERT_CONTEXT>& alarms, std::string& error);
// Reads one alarm; false when there is none.
bool APAlertDB_GetAlert(int daemonId, AP_ALERT_CONTEXT* context);
// Up to `limit` ring times at or after `from`, expanded from the rule text with libical (an empty
// rule rings once at the alert time). False with `error` when the rule text does not parse.
bool APAlertDB_NextRingTimes(const AP_ALERT_CONTEXT& context, long from, int limit,
                             std::vector<long>& times, std::string& error);

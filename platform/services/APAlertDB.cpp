// The alarm daemon's store and the recurrence rule builders (see the header).
#include "APAlertDB.h"

#include <libical/ical.h>
#include <sqlite3.h>

#include <cassert>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "APDatabase.h"
#include "APStoreFiles.h"
#include "PLDate.h"

namespace {

constexpr int kNoEnd = 0xFFFFF;
constexpr const char* kDayNames[7] = {"SU", "MO", "TU", "WE", "TH", "FR", "SA"};
// Expanding a rule never takes more steps than this, whatever the rule says.
constexpr int kMaxExpansionSteps = 200000;

std::tm UtcFields(long time) {
    const time_t moment = time_t(time);
    std::tm fields{};
    gmtime_r(&moment, &fields);
    return fields;
}

// The UTC date of `time` minus its local date: -1, 0 or 1.
int DayShift(long time) {
    const time_t moment = time_t(time);
    std::tm utc{};
    std::tm local{};
    gmtime_r(&moment, &utc);
    localtime_r(&moment, &local);
    if (utc.tm_year != local.tm_year) {
        return utc.tm_year < local.tm_year ? -1 : 1;
    }
    return utc.tm_yday < local.tm_yday ? -1 : (utc.tm_yday > local.tm_yday ? 1 : 0);
}

std::string TimePart(long time) {
    const std::tm fields = UtcFields(time);
    char text[64];
    std::snprintf(text, sizeof text, ";BYHOUR=%d;BYMINUTE=%d;BYSECOND=0", fields.tm_hour,
                  fields.tm_min);
    return text;
}

// COUNT when value C counts occurrences; otherwise (no end, until a date) UNTIL the last stamp.
std::string EndPart(int c, long last) {
    char text[64];
    if (c >= 1 && c != kNoEnd) {
        std::snprintf(text, sizeof text, ";COUNT=%d", c);
    } else {
        const std::tm fields = UtcFields(last);
        std::snprintf(text, sizeof text, ";UNTIL=%04d%02d%02dT%02d%02d%02dZ", fields.tm_year + 1900,
                      fields.tm_mon + 1, fields.tm_mday, fields.tm_hour, fields.tm_min,
                      fields.tm_sec);
    }
    return text;
}

bool WriteRule(AP_ALERT_CONTEXT* context, const std::string& rule) {
    assert(context && "a rule builder needs a context");
    if (!context) {
        return false;
    }
    std::memset(context->rule, 0, sizeof context->rule);
    if (rule.size() >= sizeof context->rule) {
        return false;
    }
    std::memcpy(context->rule, rule.data(), rule.size());
    return !rule.empty();
}

bool Fail(AP_ALERT_CONTEXT* context) {
    WriteRule(context, "");
    return false;
}

// Weekday index 0 (Sunday) .. 6 moved by `shift` days.
const char* ShiftedDay(int index, int shift) {
    return kDayNames[((index + shift) % 7 + 7) % 7];
}

// The daemon's weekday numbering (5 Sunday .. 1 Thursday, 7 Friday, 6 Saturday) to 0 (Sunday) .. 6;
// -1 for a value outside it.
int DaemonWeekdayIndex(int weekday) {
    if (weekday >= 1 && weekday <= 5) {
        return (6 - weekday) - 1;
    }
    if (weekday == 6 || weekday == 7) {
        return (13 - weekday) - 1;
    }
    return -1;
}

// Days between the UTC date of the first ring and the occurrence it announces, which falls on
// day-of-month `day`: the zone's offset and a lead of up to a day both move it. Falls back to the
// zone's shift alone when no nearby date has that day (a 31st in a shorter month).
int PatternDayShift(long time, int day) {
    const time_t moment = time_t(time);
    std::tm utc{};
    gmtime_r(&moment, &utc);
    const PLDate ring(utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday);
    for (int shift : {0, -1, 1, -2}) {
        if ((ring - shift).day == day) {
            return shift;
        }
    }
    return DayShift(time);
}

// "BYMONTHDAY=d" for the UTC date: a day moved before the 1st is the last day of the month before.
// (A 31st moved past the month's end is written as the 1st; months without a 31st then ring too,
// which is the one case a UTC rule cannot follow.)
int ShiftedMonthDay(int day, int shift, int& monthShift) {
    const int shifted = day + shift;
    monthShift = 0;
    if (shifted < 1) {
        monthShift = -1;
        return shifted - 1;  // 0 is the last day of the month before, -1 the one before it
    }
    if (shifted > 31) {
        monthShift = 1;
        return 1;
    }
    return shifted;
}

bool NthWeekdayPart(int week, int weekday, long time, std::string& part) {
    const int index = DaemonWeekdayIndex(weekday);
    if (index < 0 || !(week == -1 || (week >= 1 && week <= 5))) {
        return false;
    }
    part = ";BYDAY=" + std::to_string(week) + ShiftedDay(index, DayShift(time));
    return true;
}

std::string Join(const char* head, const std::string& body, long time, int c, long last) {
    return std::string(head) + body + TimePart(time) + EndPart(c, last);
}

bool ReadContext(sqlite3_stmt* stmt, AP_ALERT_CONTEXT& context) {
    if (sqlite3_column_bytes(stmt, 1) != int(sizeof context)) {
        return false;
    }
    std::memcpy(&context, sqlite3_column_blob(stmt, 1), sizeof context);
    context.alertId = sqlite3_column_int(stmt, 0);
    return true;
}

bool WriteContext(APDatabase& db, AP_ALERT_CONTEXT& context, bool insert) {
    const char* sql = insert ? "INSERT INTO alarms(alert_time, owner, rule, context) "
                               "VALUES(?1, ?2, ?3, ?4)"
                             : "UPDATE alarms SET alert_time = ?1, owner = ?2, rule = ?3, "
                               "context = ?4 WHERE id = ?5";
    sqlite3_stmt* const s = db.Cached(sql);
    if (!s) {
        db.NoteError("cannot prepare the alarm write");
        return false;
    }
    AP_ALERT_CONTEXT stored = context;
    stored.alertId = 0;  // the row id is the alarm's id
    sqlite3_bind_int(s, 1, context.alertTime);
    sqlite3_bind_text(s, 2, context.owner, int(strnlen(context.owner, sizeof context.owner)),
                      SQLITE_TRANSIENT);
    sqlite3_bind_text(s, 3, context.rule, int(strnlen(context.rule, sizeof context.rule)),
                      SQLITE_TRANSIENT);
    sqlite3_bind_blob(s, 4, &stored, sizeof stored, SQLITE_TRANSIENT);
    if (!insert) {
        sqlite3_bind_int(s, 5, context.alertId);
    }
    const int written = sqlite3_step(s);
    sqlite3_reset(s);
    if (written != SQLITE_DONE) {
        db.NoteError("cannot write the alarm");
        return false;
    }
    if (insert) {
        context.alertId = int32_t(sqlite3_last_insert_rowid(db.Handle()));
        return true;
    }
    return sqlite3_changes(db.Handle()) == 1;
}

}  // namespace

int APAlertDB_AddAlert(AP_ALERT_CONTEXT* context) {
    assert(context && "APAlertDB_AddAlert needs a context");
    APDatabase db;
    if (!context || !APOpenEventStore(db)) {
        return 0;
    }
    AP_ALERT_CONTEXT copy = *context;
    if (!db.Transaction([&] { return WriteContext(db, copy, true); })) {
        return 0;
    }
    context->alertId = copy.alertId;
    return copy.alertId;
}

int APAlertDB_UpdateAlert(AP_ALERT_CONTEXT* context) {
    assert(context && "APAlertDB_UpdateAlert needs a context");
    if (!context) {
        return 0;
    }
    APDatabase db;
    const bool ok = context->alertId > 0 && APOpenEventStore(db) &&
                    db.Transaction([&] { return WriteContext(db, *context, false); });
    if (!ok) {
        context->alertId = 0;
        return 0;
    }
    return context->alertId;
}

int APAlertDB_DeleteAlert(int daemonId) {
    APDatabase db;
    if (daemonId <= 0 || !APOpenEventStore(db)) {
        return 0;
    }
    bool removed = false;
    const bool ok = db.Transaction([&] {
        APStatement stmt(db.Handle(), "DELETE FROM alarms WHERE id = ?1");
        sqlite3_bind_int(stmt.Get(), 1, daemonId);
        if (!stmt.Ok() || sqlite3_step(stmt.Get()) != SQLITE_DONE) {
            return false;
        }
        removed = sqlite3_changes(db.Handle()) == 1;
        return true;
    });
    return ok && removed ? 1 : 0;
}

int APAlertDB_SendUpdateToDaemon() {
    APDatabase db;
    if (!APOpenEventStore(db)) {
        return 0;
    }
    const bool ok = db.Transaction([&] {
        return db.Exec(
            "INSERT INTO daemon_state(key, value) VALUES('generation', 1) "
            "ON CONFLICT(key) DO UPDATE SET value = value + 1");
    });
    return ok ? 1 : 0;
}

long APAlertDB_GetGeneration() {
    APDatabase db;
    if (!APOpenEventStore(db)) {
        return -1;
    }
    APStatement stmt(db.Handle(), "SELECT value FROM daemon_state WHERE key = 'generation'");
    if (!stmt.Ok()) {
        return -1;
    }
    return sqlite3_step(stmt.Get()) == SQLITE_ROW ? long(sqlite3_column_int64(stmt.Get(), 0)) : 0;
}

bool APAlertDB_MakeDailyRecur(AP_ALERT_CONTEXT* context, long time, int a, int c, long last) {
    if (a < 1) {
        return Fail(context);
    }
    return WriteRule(context, Join("FREQ=DAILY;INTERVAL=", std::to_string(a), time, c, last));
}

bool APAlertDB_MakeWeekdayRecur(AP_ALERT_CONTEXT* context, long time, int c, long last) {
    const int shift = DayShift(time);
    std::string days;
    for (int index = 1; index <= 5; ++index) {
        days += (days.empty() ? "" : ",");
        days += ShiftedDay(index, shift);
    }
    return WriteRule(context, Join("FREQ=WEEKLY;INTERVAL=1;WKST=SU;BYDAY=", days, time, c, last));
}

bool APAlertDB_MakeWeeklyRecur(AP_ALERT_CONTEXT* context, long time, int a, int mask, int c,
                               long last) {
    // The mask arrives already moved to the UTC weekdays: Sunday at bit 6 .. Saturday at bit 0.
    std::string days;
    for (int index = 0; index < 7; ++index) {
        if (mask & (1 << (6 - index))) {
            days += (days.empty() ? "" : ",");
            days += kDayNames[index];
        }
    }
    if (a < 1 || days.empty()) {
        return Fail(context);
    }
    return WriteRule(
        context,
        Join("FREQ=WEEKLY;INTERVAL=", std::to_string(a) + ";WKST=SU;BYDAY=" + days, time, c, last));
}

bool APAlertDB_MakeMonthlyRecur(AP_ALERT_CONTEXT* context, long time, int a, int day, int c,
                                long last) {
    if (a < 1 || day < 1 || day > 31) {
        return Fail(context);
    }
    int monthShift = 0;
    const int utcDay = ShiftedMonthDay(day, PatternDayShift(time, day), monthShift);
    return WriteRule(
        context, Join("FREQ=MONTHLY;INTERVAL=",
                      std::to_string(a) + ";BYMONTHDAY=" + std::to_string(utcDay), time, c, last));
}

bool APAlertDB_MakeYearlyRecur(AP_ALERT_CONTEXT* context, long time, int a, int day, int c,
                               long last) {
    if (a < 1 || a > 12 || day < 1 || day > 31) {
        return Fail(context);
    }
    int monthShift = 0;
    const int utcDay = ShiftedMonthDay(day, PatternDayShift(time, day), monthShift);
    const int month = (a - 1 + monthShift + 12) % 12 + 1;
    return WriteRule(context, Join("FREQ=YEARLY;INTERVAL=1;BYMONTH=",
                                   std::to_string(month) + ";BYMONTHDAY=" + std::to_string(utcDay),
                                   time, c, last));
}

bool APAlertDB_MakeMonthlyRecur(AP_ALERT_CONTEXT* context, long time, int a, int week, int weekday,
                                int c, long last) {
    std::string byDay;
    if (a < 1 || !NthWeekdayPart(week, weekday, time, byDay)) {
        return Fail(context);
    }
    return WriteRule(context,
                     Join("FREQ=MONTHLY;INTERVAL=", std::to_string(a) + byDay, time, c, last));
}

bool APAlertDB_MakeYearlyRecur(AP_ALERT_CONTEXT* context, long time, int a, int week, int weekday,
                               int c, long last) {
    std::string byDay;
    if (a < 1 || a > 12 || !NthWeekdayPart(week, weekday, time, byDay)) {
        return Fail(context);
    }
    return WriteRule(
        context, Join("FREQ=YEARLY;INTERVAL=1;BYMONTH=", std::to_string(a) + byDay, time, c, last));
}

bool APAlertDB_ListAlerts(std::vector<AP_ALERT_CONTEXT>& alarms, std::string& error) {
    APDatabase db;
    if (!APOpenEventStore(db)) {
        error = db.GetLastError();
        return false;
    }
    APStatement stmt(db.Handle(), "SELECT id, context FROM alarms ORDER BY id");
    if (!stmt.Ok()) {
        error = "cannot read the alarms";
        return false;
    }
    while (sqlite3_step(stmt.Get()) == SQLITE_ROW) {
        AP_ALERT_CONTEXT context;
        if (ReadContext(stmt.Get(), context)) {
            alarms.push_back(context);
        }
    }
    return true;
}

bool APAlertDB_GetAlert(int daemonId, AP_ALERT_CONTEXT* context) {
    assert(context && "APAlertDB_GetAlert needs a context");
    APDatabase db;
    if (!context || daemonId <= 0 || !APOpenEventStore(db)) {
        return false;
    }
    APStatement stmt(db.Handle(), "SELECT id, context FROM alarms WHERE id = ?1");
    if (!stmt.Ok()) {
        return false;
    }
    sqlite3_bind_int(stmt.Get(), 1, daemonId);
    return sqlite3_step(stmt.Get()) == SQLITE_ROW && ReadContext(stmt.Get(), *context);
}

bool APAlertDB_NextRingTimes(const AP_ALERT_CONTEXT& context, long from, int limit,
                             std::vector<long>& times, std::string& error) {
    const std::string rule(context.rule, strnlen(context.rule, sizeof context.rule));
    if (rule.empty()) {
        if (context.alertTime >= from && limit > 0) {
            times.push_back(context.alertTime);
        }
        return true;
    }
    icalerror_clear_errno();
    const icalrecurrencetype recurrence = icalrecurrencetype_from_string(rule.c_str());
    if (recurrence.freq == ICAL_NO_RECURRENCE || icalerrno != ICAL_NO_ERROR) {
        error = "rule does not parse: " + rule;
        icalerror_clear_errno();
        return false;
    }
    icaltimezone* utc = icaltimezone_get_utc_timezone();
    const icaltimetype start = icaltime_from_timet_with_zone(time_t(context.alertTime), 0, utc);
    icalrecur_iterator* iterator = icalrecur_iterator_new(recurrence, start);
    if (!iterator) {
        error = "rule cannot be expanded: " + rule;
        icalerror_clear_errno();
        return false;
    }
    // A rule without COUNT can jump straight to the window; a counted one must be walked.
    if (recurrence.count == 0 && from > context.alertTime) {
        icalrecur_iterator_set_start(iterator, icaltime_from_timet_with_zone(time_t(from), 0, utc));
    }
    for (int step = 0; step < kMaxExpansionSteps && int(times.size()) < limit; ++step) {
        const icaltimetype next = icalrecur_iterator_next(iterator);
        if (icaltime_is_null_time(next)) {
            break;
        }
        const long moment = long(icaltime_as_timet_with_zone(next, utc));
        if (moment >= from) {
            times.push_back(moment);
        }
    }
    icalrecur_iterator_free(iterator);
    icalerror_clear_errno();
    return true;
}

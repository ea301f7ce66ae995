// Event records as the application builds them (see the header).
#include "CtlEventBuilder.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <sstream>

#include "APAlertDB.h"
#include "APEventAlertDB.h"
#include "APEventRec.h"
#include "CtlArgs.h"
#include "PLTimeStamp.h"
#include "app/VtCalendarSeriesEnd.h"
#include "event/VtCalendarSaveRules.h"

namespace {

long SeriesLimit() {
    const PLDate last(2030, 12, 31);
    const PLTime end(23, 59, 59);
    return PLDate2TimeStamp(&last, &end);
}

bool ParseNumbers(const std::string& text, char separator, std::vector<long>& numbers) {
    std::stringstream stream(text);
    std::string part;
    while (std::getline(stream, part, separator)) {
        long value = 0;
        if (!CtlParseInt(part, value)) {
            return false;
        }
        numbers.push_back(value);
    }
    return !numbers.empty();
}

// The start date of the record as the form shows it.
PLDate StartDate(const _EventRecInfo& record, PLTime* time) {
    PLDate date;
    if (record.allDay) {
        TimeStamp2PLDateUTC(record.startStamp, &date, time);
    } else {
        TimeStamp2PLDate(record.startStamp, &date, time);
    }
    return date;
}

// The save path's move of a repeating event's start to its first occurrence: the application's
// own computation, so that a seeded series starts where one saved on the phone does.
void MoveToFirstOccurrence(_EventRecInfo& record) {
    PLTime startTime;
    const PLDate start = StartDate(record, &startTime);
    VtCalendarMoveToFirstOccurrence(record, start, startTime);
}

void ClearRepeat(_EventRecInfo& record) {
    record.recurKind = kRecurNone;
    record.recurring = 0;
    record.lastStamp = record.endStamp;
}

}  // namespace

bool CtlParseRepeat(const std::string& text, int interval, CtlRepeat& repeat, std::string& error) {
    const size_t colon = text.find(':');
    const std::string kind = text.substr(0, colon);
    const std::string rest = colon == std::string::npos ? "" : text.substr(colon + 1);
    std::vector<long> n;
    repeat.interval = interval;
    if (kind == "daily" && rest.empty()) {
        repeat.kind = kRecurDaily;
    } else if (kind == "workdays" && rest.empty()) {
        repeat.kind = kRecurDaily;
        repeat.interval = 1;
        repeat.pattern = 1;
    } else if (kind == "weekly" && ParseNumbers(rest, ',', n)) {
        repeat.kind = kRecurWeekly;
        for (long weekday : n) {
            if (weekday < 1 || weekday > 7) {
                error = "weekdays are 1 (Sunday) .. 7 (Saturday)";
                return false;
            }
            repeat.pattern |= 1 << (weekday - 1);
        }
    } else if (kind == "monthly" && ParseNumbers(rest, '/', n) && n.size() <= 2) {
        repeat.kind = kRecurMonthly;
        const bool byDay = n.size() == 1;
        if (byDay ? (n[0] < 1 || n[0] > 31) : (n[0] < 1 || n[0] > 5 || n[1] < 1 || n[1] > 7)) {
            error = "monthly:DAY takes 1..31, monthly:WEEK/WEEKDAY 1..5 and 1..7";
            return false;
        }
        repeat.pattern = byDay ? int(n[0]) : int(n[0] * 256 + n[1]);
    } else if (kind == "yearly" && ParseNumbers(rest, '/', n) && (n.size() == 2 || n.size() == 3)) {
        repeat.kind = kRecurYearly;
        const bool byDay = n.size() == 2;
        const bool monthOk = n[0] >= 1 && n[0] <= 12;
        if (!monthOk || (byDay ? (n[1] < 1 || n[1] > PLDate::NumberOfDaysInMonth(int(n[0]), 2024))
                               : (n[1] < 1 || n[1] > 5 || n[2] < 1 || n[2] > 7))) {
            error = "yearly:MONTH/DAY or yearly:MONTH/WEEK/WEEKDAY out of range";
            return false;
        }
        repeat.interval = int(n[0]);
        repeat.pattern = byDay ? int(n[1]) : int(n[1] * 256 + n[2]);
    } else {
        error = "unknown --repeat value " + text;
        return false;
    }
    return true;
}

// More occurrences than could fall before 2031. The editors cut a count one by one until the series
// ends within 2030, so starting from this bound gives the same count; walking a series centuries
// past 2030 first would take long for nothing (and leave the dates' range).
int MostOccurrencesBefore2031(const _EventRecInfo& record) {
    const PLDate start = StartDate(record, nullptr);
    const int days = std::max(1, PLDate(2031, 1, 1) - start + 1);
    const int a = std::max(1, int(record.recurValueA));
    switch (record.recurKind) {
        case kRecurDaily:
            return record.recurValueB == 1 ? days : days / a + 1;
        case kRecurWeekly:
            return (days / (7 * a) + 2) * 7;
        case kRecurMonthly:
            return days / (28 * a) + 2;
        default:
            return days / 365 + 2;
    }
}

void CtlEndAfterCount(_EventRecInfo& record, int count) {
    count = std::min(count, MostOccurrencesBefore2031(record));
    _RecurInfo setting;
    setting.startStamp = record.startStamp;
    setting.endStamp = record.endStamp;
    setting.interval = record.recurValueA;
    setting.pattern = record.recurValueB;
    setting.count = count;
    setting.kind = record.recurKind;
    int used = 0;
    PLDate lastDay;
    if (count < 1 || !ComputeSeriesEnd(setting, used, lastDay)) {
        ClearRepeat(record);
        return;
    }
    // The editors cut the count until the series ends before the limit.
    const long limit = SeriesLimit();
    while (setting.lastStamp >= limit) {
        setting.count -= 1;
        if (setting.count < 1 || !ComputeSeriesEnd(setting, used, lastDay)) {
            ClearRepeat(record);
            return;
        }
    }
    record.lastStamp = setting.lastStamp;
    record.recurValueC = setting.count;
}

bool CtlApplyRepeat(_EventRecInfo& record, const CtlRepeat& repeat, std::string& error) {
    if (repeat.kind == kRecurNone) {
        ClearRepeat(record);  // values A and B stay as a new record has them
        return true;
    }
    record.recurKind = repeat.kind;
    record.recurValueA = repeat.interval;
    record.recurValueB = repeat.pattern;
    if (repeat.interval < 1 || (repeat.kind == kRecurWeekly && (repeat.pattern & 0x7F) == 0)) {
        ClearRepeat(record);
        return true;
    }
    const long limit = SeriesLimit();
    if (repeat.hasUntil) {
        const PLTime endOfDay(23, 59, 59);
        const long last = PLDate2TimeStamp(&repeat.until, &endOfDay);
        if (last < record.startStamp) {
            error = "the until date lies before the start";
            return false;
        }
        record.lastStamp = int32_t(last);
        record.recurValueC = repeat.kind == kRecurDaily ? 0 : -1;
    } else if (repeat.hasCount) {
        CtlEndAfterCount(record, repeat.count);
        if (record.recurKind == kRecurNone) {
            return true;
        }
    } else {
        record.lastStamp = int32_t(limit);
        record.recurValueC = kRecurNoEnd;
    }
    record.recurring = 1;
    MoveToFirstOccurrence(record);
    return true;
}

bool CtlAlarmLead(int alarmID, long& seconds, int& amount, int& unit) {
    VtCalendarLead lead;
    if (alarmID < 0 || !VtCalendarLeadOf(uint32_t(alarmID), lead)) {
        return false;
    }
    seconds = lead.seconds;
    amount = lead.amount;
    unit = lead.unit;
    return true;
}

bool CtlRegisterAlarm(_EventRecInfo& record, long leadSeconds, int amount, int unit,
                      std::string& error) {
    AP_ALERT_CONTEXT context;
    std::memset(&context, 0, sizeof context);
    long alertTime = record.startStamp - leadSeconds;
    if (record.allDay) {
        const PLDate startDay = StartDate(record, nullptr);
        alertTime = PLDate2TimeStamp(&startDay, nullptr) - leadSeconds;
        context.localTimeFlag = 1;
        context.utcAlertTime = int32_t(record.startStamp - leadSeconds);
    }
    context.alertTime = int32_t(alertTime);
    VtCalendarAlarmRule(context, record, alertTime);
    // The owner key is the alert record's id, which a new alarm does not have yet.
    std::snprintf(context.owner, sizeof context.owner, "%d", 0);
    context.sourceKind = 5;
    context.state = 1;
    const int daemonId = APAlertDB_AddAlert(&context);
    if (daemonId <= 0) {
        APEventRec().DeleteEventRec(record.id);
        error = "the alarm daemon refused the alarm; the event was removed";
        return false;
    }
    _EventAlertInfo info{};
    info.daemonId = daemonId;
    info.enabled = 1;
    info.eventTime = record.startStamp;
    info.leadAmount = amount;
    info.leadUnit = unit;
    APEventAlertDB alerts;
    if (alerts.Add(&info) <= 0) {
        APAlertDB_DeleteAlert(daemonId);
        APEventRec().DeleteEventRec(record.id);
        error = "cannot store the alert record: " + alerts.GetLastError();
        return false;
    }
    record.alertInfoId = info.id;
    record.alarm = 1;
    APEventRec store;
    if (store.UpdateEventRec(&record) <= 0) {
        error = "cannot rewrite the event: " + store.GetLastError();
        return false;
    }
    return true;
}

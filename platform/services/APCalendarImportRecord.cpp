// Turning a read event into an event record. All-day events keep their dates coded as UTC, as the
// store expects; floating times are local; a rule's end follows the record's conventions.
#include "APCalendarImportRecord.h"

#include <climits>
#include <cstring>
#include <ctime>

#include "APEventRecords.h"
#include "APVCalendarText.h"

namespace {

constexpr int32_t kNoEndCount = 0xFFFFF;

bool ValidDate(int y, int m, int d) {
    static constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (y < 1900 || y > 2100 || m < 1 || m > 12 || d < 1) {
        return false;
    }
    bool leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
    return d <= kDays[m - 1] + (m == 2 && leap ? 1 : 0);
}

bool FitsStamp(long long value) {
    return value >= INT32_MIN && value <= INT32_MAX;
}

struct tm Fields(int y, int m, int d, int h, int mi, int s) {
    struct tm fields {};
    fields.tm_year = y - 1900;
    fields.tm_mon = m - 1;
    fields.tm_mday = d;
    fields.tm_hour = h;
    fields.tm_min = mi;
    fields.tm_sec = s;
    return fields;
}

long long UtcStamp(int y, int m, int d, int h, int mi, int s) {
    struct tm fields = Fields(y, m, d, h, mi, s);
    return static_cast<long long>(timegm(&fields));
}

long long LocalStamp(int y, int m, int d, int h, int mi, int s) {
    struct tm fields = Fields(y, m, d, h, mi, s);
    // Let the C library decide whether summer time applies on that day.
    fields.tm_isdst = -1;
    return static_cast<long long>(mktime(&fields));
}

long long StampOf(const APImportTime& t) {
    if (t.known) {
        return t.stamp;
    }
    return t.utc ? UtcStamp(t.year, t.month, t.day, t.hour, t.minute, t.second)
                 : LocalStamp(t.year, t.month, t.day, t.hour, t.minute, t.second);
}

// The calendar date an event's start falls on, as the rule reads it.
struct Ymd {
    int year, month, day, weekday;
};

Ymd DateOfStamp(long long stamp, bool utc) {
    time_t t = static_cast<time_t>(stamp);
    struct tm fields {};
    if (utc) {
        gmtime_r(&t, &fields);
    } else {
        localtime_r(&t, &fields);
    }
    return {fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday, fields.tm_wday + 1};
}

void CopyText(char* field, const std::string& text, const char* name, std::string& warning) {
    std::string clean = APVCalendarText::SanitiseUtf8(text);
    std::string cut = APVCalendarText::CutUtf8(clean, kAPEventTextMax);
    if (cut.size() < clean.size()) {
        warning += std::string(warning.empty() ? "" : "; ") + name + " cut to " +
                   std::to_string(kAPEventTextMax) + " bytes";
    }
    std::memset(field, 0, kAPEventTextSize);
    std::memcpy(field, cut.data(), cut.size());
}

bool IsAllDay(const APImportDraft& d) {
    if (!d.start.hasTime) {
        return true;
    }
    // vCalendar has no date values: a floating day from 00:00:00 to 23:59(:59) is an all-day event.
    return !d.start.utc && !d.start.known && d.start.hour == 0 && d.start.minute == 0 &&
           d.start.second == 0 && d.hasEnd && !d.end.utc && !d.end.known && d.end.hasTime &&
           d.end.hour == 23 && d.end.minute == 59;
}

void SetLead(APImportedEvent& out, long lead) {
    out.leadSeconds = lead;
    if (lead % 86400 == 0 && lead > 0) {
        out.leadAmount = static_cast<int>(lead / 86400);
        out.leadUnit = kAPLeadDays;
    } else if (lead % 3600 == 0 && lead > 0) {
        out.leadAmount = static_cast<int>(lead / 3600);
        out.leadUnit = kAPLeadHours;
    } else {
        out.leadAmount = static_cast<int>(lead / 60);
        out.leadUnit = kAPLeadMinutes;
    }
}

APImportedEvent Fail(const APImportDraft& d, const std::string& why) {
    APImportedEvent out;
    out.line = d.line;
    out.error = why;
    return out;
}

std::string AtEvent(const APImportDraft& d, const std::string& why) {
    return "line " + std::to_string(d.line) + ": " + why;
}

}  // namespace

bool APImport_ParseTime(const std::string& text, APImportTime& time) {
    auto digits = [&](size_t from, size_t count, int& value) {
        if (from + count > text.size()) {
            return false;
        }
        value = 0;
        for (size_t i = from; i < from + count; ++i) {
            if (text[i] < '0' || text[i] > '9') {
                return false;
            }
            value = value * 10 + (text[i] - '0');
        }
        return true;
    };
    APImportTime t;
    if (!digits(0, 4, t.year) || !digits(4, 2, t.month) || !digits(6, 2, t.day)) {
        return false;
    }
    if (text.size() == 8) {
        t.hasTime = false;
    } else if (text.size() >= 15 && text[8] == 'T' && digits(9, 2, t.hour) &&
               digits(11, 2, t.minute) && digits(13, 2, t.second) &&
               (text.size() == 15 || (text.size() == 16 && (text[15] == 'Z' || text[15] == 'z')))) {
        t.hasTime = true;
        t.utc = text.size() == 16;
    } else {
        return false;
    }
    if (!ValidDate(t.year, t.month, t.day) || t.hour > 23 || t.minute > 59 || t.second > 60) {
        return false;
    }
    time = t;
    return true;
}

APImportedEvent APImport_Finish(const APImportDraft& d) {
    if (!d.error.empty()) {
        return Fail(d, d.error);
    }
    if (!d.hasStart) {
        return Fail(d, AtEvent(d, "event has no DTSTART"));
    }
    auto record = std::make_shared<_EventRecInfo>();
    InitEventRecInfo(record.get());
    APImportedEvent out;
    out.line = d.line;
    out.warning = d.warning;

    bool allDay = IsAllDay(d);
    long long start = 0;
    long long end = 0;
    if (allDay) {
        APImportTime last = d.hasEnd ? d.end : d.start;
        start = UtcStamp(d.start.year, d.start.month, d.start.day, 0, 0, 0);
        long long lastDay = UtcStamp(last.year, last.month, last.day, 0, 0, 0);
        if (d.hasEnd && d.endExclusiveDate && !last.hasTime && lastDay > start) {
            lastDay -= 86400;
        }
        end = lastDay + 86399;
    } else {
        start = StampOf(d.start);
        end = d.hasEnd ? StampOf(d.end) : start;
    }
    if (!FitsStamp(start) || !FitsStamp(end)) {
        return Fail(d, AtEvent(d, "start or end lies outside the range of 32-bit time stamps"));
    }
    if (end < start) {
        return Fail(d, AtEvent(d, "DTEND lies before DTSTART"));
    }
    record->startStamp = static_cast<int32_t>(start);
    record->endStamp = static_cast<int32_t>(end);
    record->lastStamp = record->endStamp;
    record->allDay = allDay ? 1 : 0;
    record->colour =
        d.colour >= kAPColourFirst && d.colour <= kAPColourLast ? d.colour : kAPColourFirst;
    record->classChoice = d.classChoice;
    CopyText(record->subject, d.subject, "SUMMARY", out.warning);
    CopyText(record->location, d.location, "LOCATION", out.warning);
    CopyText(record->notes, d.notes, "DESCRIPTION", out.warning);

    const APImportRule& rule = d.rule;
    if (rule.kind != 0) {
        Ymd first = DateOfStamp(start, allDay);
        record->recurKind = rule.kind;
        record->recurValueA = rule.a;
        record->recurValueB = rule.b;
        if (rule.weekdayFromStart) {
            record->recurValueB = 1 << (first.weekday - 1);
        }
        if (rule.dayFromStart) {
            record->recurValueB = first.day;
        }
        if (rule.monthFromStart) {
            record->recurValueA = first.month;
        }
        record->recurring = 1;
        switch (rule.end) {
            case APImportRule::End::kNone:
                record->recurValueC = kNoEndCount;
                record->lastStamp = static_cast<int32_t>(LocalStamp(2030, 12, 31, 23, 59, 59));
                break;
            case APImportRule::End::kCount:
                // Where the count-th occurrence falls is the application's series rule: the
                // caller that stores the record computes it; until then 2030 bounds the series.
                record->recurValueC = rule.count;
                record->lastStamp = static_cast<int32_t>(LocalStamp(2030, 12, 31, 23, 59, 59));
                break;
            case APImportRule::End::kUntil: {
                Ymd until = DateOfStamp(StampOf(rule.until), false);
                if (!rule.until.hasTime) {
                    until = {rule.until.year, rule.until.month, rule.until.day, 0};
                }
                long long last = LocalStamp(until.year, until.month, until.day, 23, 59, 59);
                if (!FitsStamp(last) || last < start) {
                    return Fail(d, AtEvent(d, "the rule ends before the event starts"));
                }
                record->recurValueC = rule.kind == 1 ? 0 : -1;
                record->lastStamp = static_cast<int32_t>(last);
                break;
            }
        }
    }
    if (d.hasAlarm) {
        long lead = d.alarmLead;
        if (!d.alarmRelative) {
            long long base =
                allDay ? LocalStamp(d.start.year, d.start.month, d.start.day, 0, 0, 0) : start;
            lead = static_cast<long>(base - StampOf(d.alarmTime));
        }
        if (lead < 0) {
            out.warning += std::string(out.warning.empty() ? "" : "; ") +
                           "alarm after the start moved to the start";
            lead = 0;
        }
        record->alarm = 1;
        out.hasAlarm = true;
        SetLead(out, lead);
    }
    out.record = record;
    return out;
}

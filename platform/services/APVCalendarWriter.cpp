// vCalendar 1.0 export of one event. Timed events are written in UTC; all-day events carry their
// calendar dates as floating times, since the record keeps those dates coded as UTC. Text that is
// not plain ASCII is written quoted-printable in UTF-8, and every line ends with CRLF unfolded, so
// that the independent readers the files are checked with agree on every field.
#include "APVCalendarWriter.h"

#include <cstring>
#include <ctime>

#include "APAtomicFile.h"
#include "APEventAlertDB.h"
#include "APEventRecords.h"
#include "APVCalendarText.h"
#include "PLDeviceRoot.h"

using namespace APVCalendarText;

namespace {

constexpr int32_t kNoEndCount = 0xFFFFF;
constexpr const char* kCrLf = "\r\n";

std::string RecordText(const char* field) {
    return SanitiseUtf8(std::string(field, strnlen(field, kAPEventTextMax)));
}

// "NAME:value" or "NAME;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:value".
std::string TextLine(const char* name, const std::string& text) {
    if (IsPlain(text)) {
        return std::string(name) + ":" + text + kCrLf;
    }
    // Readers split values at commas and semicolons and unescape backslash pairs even inside
    // quoted-printable text, so those three characters are escaped with a backslash first.
    std::string escaped;
    for (char c : text) {
        if (c == '\\' || c == ',' || c == ';') {
            escaped += '\\';
        }
        escaped += c;
    }
    return std::string(name) +
           ";CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:" + EncodeQuotedPrintable(escaped) + kCrLf;
}

std::string LocalDateTime(long stamp) {
    time_t t = static_cast<time_t>(stamp);
    struct tm fields {};
    localtime_r(&t, &fields);
    return FloatingDateTime(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday,
                            fields.tm_hour, fields.tm_min, fields.tm_sec);
}

std::string DateOfUtc(long stamp, const char* time) {
    return UtcDateTime(stamp).substr(0, 9) + time;
}

// The series end: "#n" for a count, "#0" for none, else the last occurrence in local time.
std::string RuleEnd(const _EventRecInfo& e) {
    if (e.recurValueC == kNoEndCount) {
        return "#0";
    }
    if (e.recurValueC > 0) {
        return "#" + std::to_string(e.recurValueC);
    }
    return LocalDateTime(e.lastStamp);
}

std::string WeekdayList(int mask) {
    std::string days;
    for (int weekday = 1; weekday <= 7; ++weekday) {
        if (mask & (1 << (weekday - 1))) {
            days += std::string(WeekdayCode(weekday)) + " ";
        }
    }
    return days;
}

// "2+ TU": the week of the month (5 is the last, "1-") and the weekday.
std::string MonthPosition(int pattern) {
    int week = (pattern >> 8) & 0xFF;
    int weekday = pattern & 0xFF;
    std::string position = week >= 5 ? "1-" : std::to_string(week) + "+";
    return position + " " + WeekdayCode(weekday) + " ";
}

int Interval(const _EventRecInfo& e) {
    return e.recurValueA > 0 ? e.recurValueA : 1;
}

// The rule in vCalendar 1.0 syntax, or empty when the event does not repeat or the record holds
// values no rule can carry (an unknown kind, an empty weekday set, a bad weekday).
std::string Rule(const _EventRecInfo& e) {
    int pattern = e.recurValueB;
    bool byWeek = (pattern >> 8) != 0;
    int weekday = pattern & 0xFF;
    switch (e.recurKind) {
        case 1:
            if (pattern == 1) {
                return "W1 " + WeekdayList(0x3E) + RuleEnd(e);
            }
            return "D" + std::to_string(Interval(e)) + " " + RuleEnd(e);
        case 2:
            if ((pattern & 0x7F) == 0) {
                return "";
            }
            return "W" + std::to_string(Interval(e)) + " " + WeekdayList(pattern & 0x7F) +
                   RuleEnd(e);
        case 4:
            if (byWeek) {
                if (weekday < 1 || weekday > 7) {
                    return "";
                }
                return "MP" + std::to_string(Interval(e)) + " " + MonthPosition(pattern) +
                       RuleEnd(e);
            }
            return "MD" + std::to_string(Interval(e)) + " " + std::to_string(pattern & 0xFF) + " " +
                   RuleEnd(e);
        case 8:
            if (byWeek) {
                if (weekday < 1 || weekday > 7) {
                    return "";
                }
                return "MP12 " + MonthPosition(pattern) + RuleEnd(e);
            }
            if (e.recurValueA < 1 || e.recurValueA > 12) {
                return "";
            }
            return "YM1 " + std::to_string(e.recurValueA) + " " + RuleEnd(e);
        default:
            return "";
    }
}

long AlarmTime(const _EventRecInfo& e, long leadSeconds) {
    if (!e.allDay) {
        return static_cast<long>(e.startStamp) - leadSeconds;
    }
    // The all-day start is the date coded as UTC midnight; the alarm rings at local midnight.
    time_t coded = e.startStamp;
    struct tm date {};
    gmtime_r(&coded, &date);
    date.tm_hour = 0;
    date.tm_min = 0;
    date.tm_sec = 0;
    date.tm_isdst = -1;
    return static_cast<long>(mktime(&date)) - leadSeconds;
}

long StoredLead(const _EventRecInfo& e) {
    if (e.alertInfoId <= 0) {
        return 0;
    }
    _EventAlertInfo info{};
    APEventAlertDB alerts;
    if (!alerts.IsOpen() || alerts.GetEventAlertInfo(e.alertInfoId, &info) <= 0) {
        return 0;
    }
    long unit = info.leadUnit == kAPLeadDays ? 86400 : info.leadUnit == kAPLeadHours ? 3600 : 60;
    return info.leadAmount > 0 ? info.leadAmount * unit : 0;
}

}  // namespace

std::string APVCalendar_Format(const _EventRecInfo& e, long leadSeconds) {
    std::string out = std::string("BEGIN:VCALENDAR") + kCrLf + "VERSION:1.0" + kCrLf +
                      "PRODID:-//mdz//calendar//EN" + kCrLf + "BEGIN:VEVENT" + kCrLf;
    out += "UID:" + std::to_string(e.id) + "-" + std::to_string(e.startStamp) +
           "@com.mdz.calendar.v1" + kCrLf;
    if (e.allDay) {
        out += "DTSTART:" + DateOfUtc(e.startStamp, "000000") + kCrLf;
        out += "DTEND:" + DateOfUtc(e.endStamp, "235900") + kCrLf;
    } else {
        out += "DTSTART:" + UtcDateTime(e.startStamp) + kCrLf;
        out += "DTEND:" + UtcDateTime(e.endStamp) + kCrLf;
    }
    std::string subject = RecordText(e.subject);
    out += TextLine("SUMMARY", subject);
    std::string location = RecordText(e.location);
    if (!location.empty()) {
        out += TextLine("LOCATION", location);
    }
    std::string notes = RecordText(e.notes);
    if (!notes.empty()) {
        out += TextLine("DESCRIPTION", notes);
    }
    out += std::string("CATEGORIES:") + CategoryOf(e.classChoice) + kCrLf;
    // vCalendar has no colour; an extension property (ignored by other readers) carries it back.
    out += "X-MDZ-COLOUR:" + std::to_string(e.colour) + kCrLf;
    std::string rule = e.recurring || e.recurKind != 0 ? Rule(e) : std::string();
    if (!rule.empty()) {
        out += "RRULE:" + rule + kCrLf;
    }
    if (e.alarm) {
        std::string when = UtcDateTime(AlarmTime(e, leadSeconds));
        std::string text = IsPlain(subject) && !subject.empty() ? subject : "Reminder";
        out += "DALARM:" + when + ";;0;" + text + kCrLf;
        out += "AALARM:" + when + ";;0;" + kCrLf;
    }
    out += std::string("END:VEVENT") + kCrLf + "END:VCALENDAR" + kCrLf;
    return out;
}

int MakeQnvCalendarWithLead(const std::string& path, const _EventRecInfo* event, long leadSeconds) {
    if (event == nullptr || path.empty()) {
        return 0;
    }
    if (!PLDeviceRoot::MakeParentDirectories(path)) {
        return 0;
    }
    std::string error;
    return APAtomicFile_Write(PLDeviceRoot::Resolve(path), APVCalendar_Format(*event, leadSeconds),
                              error)
               ? 1
               : 0;
}

int MakeQnvCalendar(const std::string& path, _EventRecInfo* event, int flags) {
    (void)flags;  // reserved; the calendar passes 0
    if (event == nullptr) {
        return 0;
    }
    return MakeQnvCalendarWithLead(path, event, event->alarm ? StoredLead(*event) : 0);
}

int MakeQnvCalendar(const PLBasicString<char>& path, _EventRecInfo* event, int flags) {
    return MakeQnvCalendar(path.str(), event, flags);
}

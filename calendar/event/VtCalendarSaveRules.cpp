// The save computations. Several of them keep odd corners on purpose (the yearly candidate's day
// taken in the start month, the weekly mask's two shifts): alarms already registered with the
// daemon and events already stored were made by these rules, and a change would make an edited
// event disagree with its own past.
#include "event/VtCalendarSaveRules.h"

#include <cstdio>
#include <cstring>

#include "APAlertDB.h"
#include "PLTimeStamp.h"
#include "app/VtCalendarPurge.h"
#include "recur/_RecurInfo.h"

namespace {

struct LeadRow {
    uint32_t choice;
    int32_t amount;
    int32_t unit;
    long seconds;
};

constexpr LeadRow kLeads[] = {
    {11531, 0, kAPLeadMinutes, 0},    {11532, 1, kAPLeadMinutes, 60},
    {11533, 5, kAPLeadMinutes, 300},  {11534, 10, kAPLeadMinutes, 600},
    {11535, 15, kAPLeadMinutes, 900}, {11536, 30, kAPLeadMinutes, 1800},
    {11537, 1, kAPLeadHours, 3600},   {11538, 6, kAPLeadHours, 21600},
    {11539, 12, kAPLeadHours, 43200}, {11540, 1, kAPLeadDays, 86400},
};

constexpr int kWeekBits = 7;
constexpr int kSundayDaemonBit = 0x40;
constexpr int kLastYearMovedOn = 2029;

bool IsContinuationByte(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

void SetDay(PLDate& date, int year, int month, int day) {
    // Set as the platform does: a day past the month's end carries into the next month.
    date.year = uint16_t(year);
    date.month = uint8_t(month);
    date.day = uint8_t(day);
    date.FixFromMDY();
}

int DaysIn(const PLDate& date) {
    return PLDate::NumberOfDaysInMonth(date.month, date.year);
}

// Monthly and yearly: the candidate in the start month (the yearly month put in after the day was
// chosen), the next year for a yearly date already past, then one month on if still early.
PLDate MonthlyOrYearlyFirst(int32_t kind, int32_t a, int32_t b, const PLDate& start) {
    const int week = (b >> 8) & 0xFF;
    const int low = b & 0xFF;
    PLDate candidate = start;
    if (week != 0) {
        GetStartWeekday(candidate, week, low);
    } else {
        const int day = low < 1 ? 1 : (low > DaysIn(start) ? DaysIn(start) : low);
        SetDay(candidate, start.year, start.month, day);
    }
    if (kind == kRecurYearly) {
        if (a < 1 || a > 12) {
            return start;  // a damaged rule names no month: leave the start where the user put it
        }
        SetDay(candidate, candidate.year, a, candidate.day);
        if (candidate < start && candidate.year <= kLastYearMovedOn) {
            SetDay(candidate, candidate.year + 1, candidate.month, candidate.day);
        }
    }
    if (candidate < start) {
        const int month = candidate.month == 12 ? 1 : candidate.month + 1;
        const int year = candidate.month == 12 ? candidate.year + 1 : candidate.year;
        SetDay(candidate, year, month, candidate.day);
        if (week != 0) {
            GetStartWeekday(candidate, week, low);
        }
    }
    return candidate;
}

PLDate WeeklyFirst(int32_t mask, const PLDate& start) {
    PLDate date = start;
    for (int tries = 0; tries < kWeekBits; ++tries) {
        if (mask & (1 << (date.Weekday() - 1))) {
            return date;
        }
        date += 1;
    }
    return date;
}

int ReverseWeekBits(int32_t pattern) {
    int reversed = 0;
    for (int bit = 0; bit < kWeekBits; ++bit) {
        if (pattern & (1 << bit)) {
            reversed |= 1 << (kWeekBits - 1 - bit);
        }
    }
    return reversed;
}

void OneShotRule(AP_ALERT_CONTEXT& context, long alertTime) {
    const std::time_t ring = static_cast<std::time_t>(alertTime);
    std::tm utc{};
    gmtime_r(&ring, &utc);
    std::snprintf(context.rule, sizeof context.rule,
                  "FREQ=DAILY;INTERVAL=1;COUNT=1;BYHOUR=%d;BYMINUTE=%d;BYSECOND=0", utc.tm_hour,
                  utc.tm_min);
}

}  // namespace

bool VtCalendarLeadOf(uint32_t alarmChoice, VtCalendarLead& lead) {
    for (const LeadRow& row : kLeads) {
        if (row.choice == alarmChoice) {
            lead = {row.amount, row.unit, row.seconds};
            return true;
        }
    }
    return false;
}

uint32_t VtCalendarAlarmChoiceOf(const _EventAlertInfo& info) {
    if (info.enabled == 0) {
        return kAlarmNone;
    }
    for (const LeadRow& row : kLeads) {
        if (row.amount == info.leadAmount && row.unit == info.leadUnit) {
            return row.choice;
        }
    }
    return kAlarmFiveMinutes;
}

void VtCalendarCopyRecordText(char (&field)[kAPEventTextSize], const PLBasicString<char>& text) {
    const char* source = text.c_str();
    size_t length = std::strlen(source);
    if (length > size_t(kAPEventTextMax)) {
        length = kAPEventTextMax;
        // Back off to the first byte of the character that the cut would split.
        while (length > 0 && IsContinuationByte(source[length])) {
            --length;
        }
    }
    std::memcpy(field, source, length);
    field[length] = '\0';
}

PLBasicString<char> VtCalendarRecordText(const char (&field)[kAPEventTextSize]) {
    const void* end = std::memchr(field, '\0', sizeof field);
    const size_t length =
        end == nullptr ? size_t(kAPEventTextMax) : size_t(static_cast<const char*>(end) - field);
    return PLBasicString<char>(std::string(field, length).c_str());
}

void VtCalendarAllDayStamps(const PLDate& start, const PLDate& end, int32_t& startStamp,
                            int32_t& endStamp) {
    const PLTime lastSecond(23, 59, 59);
    startStamp = int32_t(PLDateUTC2TimeStamp(&start, nullptr));
    const PLDate& lastDay = end > start ? end : start;
    endStamp = int32_t(PLDateUTC2TimeStamp(&lastDay, &lastSecond));
}

PLDate VtCalendarFirstOccurrence(int32_t kind, int32_t a, int32_t b, const PLDate& start) {
    switch (kind) {
        case kRecurWeekly:
            return WeeklyFirst(b, start);
        case kRecurMonthly:
        case kRecurYearly:
            return MonthlyOrYearlyFirst(kind, a, b, start);
        default:
            return start;
    }
}

void VtCalendarMoveToFirstOccurrence(_EventRecInfo& record, const PLDate& startDate,
                                     const PLTime& startTime) {
    const PLDate first = VtCalendarFirstOccurrence(record.recurKind, record.recurValueA,
                                                   record.recurValueB, startDate);
    if (first == startDate) {
        return;
    }
    const long moved =
        record.allDay ? PLDateUTC2TimeStamp(&first, nullptr) : PLDate2TimeStamp(&first, &startTime);
    const long shift = moved - long(record.startStamp);
    record.startStamp = int32_t(moved);
    record.endStamp = int32_t(long(record.endStamp) + shift);
}

int VtCalendarDaemonWeekMask(int32_t pattern, long alertTime) {
    int mask = ReverseWeekBits(pattern);
    PLDate local;
    PLDate utc;
    TimeStamp2PLDate(alertTime, &local, nullptr);
    TimeStamp2PLDateUTC(alertTime, &utc, nullptr);
    if (utc < local) {
        // East of Greenwich before the offset has passed: the ring falls on the day before in
        // UTC. Bit 7 is left as the shift leaves it; the daemon ignores it.
        mask = (mask << 1) | ((mask & kSundayDaemonBit) ? 1 : 0);
    } else if (utc > local && mask != 0) {
        // West of Greenwich late in the evening: the day after in UTC. Sunday is set whatever
        // Saturday was, as the alarms registered so far have it.
        mask = (mask >> 1) | kSundayDaemonBit;
    }
    return mask;
}

int VtCalendarDaemonWeekday(int weekday) {
    return 6 - weekday < 1 ? 13 - weekday : 6 - weekday;
}

void VtCalendarAlarmRule(AP_ALERT_CONTEXT& context, const _EventRecInfo& record, long alertTime) {
    const int a = record.recurValueA;
    const int b = record.recurValueB;
    const int c = record.recurValueC;
    const long last = record.lastStamp;
    if (!record.recurring) {
        OneShotRule(context, alertTime);
        return;
    }
    const int week = (b >> 8) & 0xFF;
    const int weekday = VtCalendarDaemonWeekday(b & 0xFF);
    const int daemonWeek = week == 5 ? -1 : week;
    switch (record.recurKind) {
        case kRecurDaily:
            if (b == 1) {
                APAlertDB_MakeWeekdayRecur(&context, alertTime, c, last);
            } else {
                APAlertDB_MakeDailyRecur(&context, alertTime, a, c, last);
            }
            break;
        case kRecurWeekly:
            APAlertDB_MakeWeeklyRecur(&context, alertTime, a,
                                      VtCalendarDaemonWeekMask(b, alertTime), c, last);
            break;
        case kRecurMonthly:
            if (week != 0) {
                APAlertDB_MakeMonthlyRecur(&context, alertTime, a, daemonWeek, weekday, c, last);
            } else {
                APAlertDB_MakeMonthlyRecur(&context, alertTime, a, b, c, last);
            }
            break;
        case kRecurYearly:
            if (week != 0) {
                APAlertDB_MakeYearlyRecur(&context, alertTime, a, daemonWeek, weekday, c, last);
            } else {
                APAlertDB_MakeYearlyRecur(&context, alertTime, a, b, c, last);
            }
            break;
        default:
            OneShotRule(context, alertTime);
            break;
    }
}

bool VtCalendarKeepTimeAllows(long option, const std::tm& now, long lastStamp) {
    long limit = 0;
    if (!VtCalendarPurgeCutoff(option, now, limit)) {
        return true;
    }
    return limit <= lastStamp;
}

bool VtCalendarIsLowStorage(int64_t blockSize, int64_t freeBlocks) {
    // The product is read as the 32-bit number the platform's old interface handed back.
    const int32_t bytes = static_cast<int32_t>(static_cast<uint32_t>(blockSize * freeBlocks));
    return bytes <= kLowStorageBytes;
}

// Conversions between dates, times and 32-bit time stamps, and between numbers and text.
//
// Local conversions use the C library (mktime/localtime_r), so they follow TZ. A local time that
// does not exist because the clocks sprang forward is resolved as glibc's mktime does with
// tm_isdst = -1: the wall time is read with the offset in force before the change, so 01:30 on a
// day the clocks go from 01:00 to 02:00 becomes 02:30 summer time. A repeated hour in autumn
// resolves to whichever of its two moments mktime picks; glibc's choice depends on the zone's
// rules, so callers must not rely on either.
#include "PLTimeStamp.h"

#include <climits>
#include <cstdio>
#include <ctime>
#include <limits>

namespace {

long ClampToStamp(long long seconds) {
    constexpr long long kMin = std::numeric_limits<int32_t>::min();
    constexpr long long kMax = std::numeric_limits<int32_t>::max();
    return long(seconds < kMin ? kMin : (seconds > kMax ? kMax : seconds));
}

std::tm BrokenDown(const PLDate& date, const PLTime* time) {
    std::tm fields{};
    fields.tm_year = int(date.year) - 1900;
    fields.tm_mon = int(date.month) - 1;
    fields.tm_mday = date.day;
    if (time != nullptr) {
        fields.tm_hour = time->hour;
        fields.tm_min = time->minute;
        fields.tm_sec = time->second;
    }
    fields.tm_isdst = -1;
    return fields;
}

void FromBrokenDown(const std::tm& fields, PLDate* date, PLTime* time) {
    if (date != nullptr) {
        *date = PLDate(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday);
    }
    if (time != nullptr) {
        *time = PLTime(fields.tm_hour, fields.tm_min, fields.tm_sec);
    }
}

PLBasicString<char> FormatDate(int year, int month, int day, long format) {
    char buffer[48];
    switch (format) {
        case 1:
            std::snprintf(buffer, sizeof buffer, "%02d-%02d-%04d", day, month, year);
            break;
        case 2:
            std::snprintf(buffer, sizeof buffer, "%02d/%02d/%04d", month, day, year);
            break;
        default:
            std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d", year, month, day);
            break;
    }
    return PLBasicString<char>(buffer);
}

}  // namespace

long PLDate2TimeStamp(const PLDate* date, const PLTime* time) {
    if (date == nullptr) {
        return 0;
    }
    std::tm fields = BrokenDown(*date, time);
    return ClampToStamp(static_cast<long long>(std::mktime(&fields)));
}

long PLDate2TimeStamp(const PLDate& date, const PLTime& time) {
    return PLDate2TimeStamp(&date, &time);
}

long PLDate2TimeStamp(const PLDate& date, const PLTime* time) {
    return PLDate2TimeStamp(&date, time);
}

long PLDateUTC2TimeStamp(const PLDate* date, const PLTime* time) {
    if (date == nullptr) {
        return 0;
    }
    std::tm fields = BrokenDown(*date, time);
    fields.tm_isdst = 0;
    return ClampToStamp(static_cast<long long>(timegm(&fields)));
}

long PLDateUTC2TimeStamp(const PLDate& date, const PLTime* time) {
    return PLDateUTC2TimeStamp(&date, time);
}

void TimeStamp2PLDate(long stamp, PLDate* date, PLTime* time) {
    const std::time_t moment = std::time_t(ClampToStamp(stamp));
    std::tm fields{};
    if (localtime_r(&moment, &fields) != nullptr) {
        FromBrokenDown(fields, date, time);
    }
}

void TimeStamp2PLDateUTC(long stamp, PLDate* date, PLTime* time) {
    const std::time_t moment = std::time_t(ClampToStamp(stamp));
    std::tm fields{};
    if (gmtime_r(&moment, &fields) != nullptr) {
        FromBrokenDown(fields, date, time);
    }
}

long ChangeTimeStamp(long stamp, const PLDate& date) {
    PLTime timeOfDay;
    TimeStamp2PLDate(stamp, nullptr, &timeOfDay);
    return PLDate2TimeStamp(&date, &timeOfDay);
}

PLBasicString<char> PLDate2PLString(const PLDate& date, long format) {
    return FormatDate(date.year, date.month, date.day, format);
}

PLBasicString<char> TimeStamp2PLStringDate(long stamp, long format, bool utc) {
    PLDate date;
    if (utc) {
        TimeStamp2PLDateUTC(stamp, &date, nullptr);
    } else {
        TimeStamp2PLDate(stamp, &date, nullptr);
    }
    return PLDate2PLString(date, format);
}

PLBasicString<char> PLNumToString(long value) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%ld", value);
    return PLBasicString<char>(buffer);
}

PLBasicString<char> PLUnsignedIntToString(unsigned long value) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%lu", value);
    return PLBasicString<char>(buffer);
}

unsigned long PLStringToUnsigned(const PLBasicString<char>& text) {
    constexpr unsigned long kMax = std::numeric_limits<uint32_t>::max();
    unsigned long value = 0;
    for (char c : text.view()) {
        if (c < '0' || c > '9') {
            break;
        }
        value = value * 10 + unsigned(c - '0');
        if (value > kMax) {
            return kMax;
        }
    }
    return value;
}

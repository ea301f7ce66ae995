// Calendar dates: conversions between a day number and year, month and day, and date arithmetic.
#include "PLDate.h"

#include <ctime>

#include "PLClock.h"

namespace {

constexpr int kCumulativeDays[12] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
constexpr int kMonthDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

// Day 0 is 0001-01-03, so 0001-01-01 is day -2.
constexpr int64_t kEpochShift = 2;
constexpr int64_t kFirstYear = 1;
constexpr int64_t kLastYear = 9999;

int64_t FloorDiv(int64_t a, int64_t b) {
    int64_t q = a / b;
    return (a % b != 0 && ((a < 0) != (b < 0))) ? q - 1 : q;
}

bool IsLeap64(int64_t year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

// Days from 0001-01-01 to January 1st of `year` (floor division keeps it right for years < 1).
int64_t DaysBeforeYear(int64_t year) {
    int64_t y = year - 1;
    return 365 * y + FloorDiv(y, 4) - FloorDiv(y, 100) + FloorDiv(y, 400);
}

// Day number of any year/month/day triple; months and days out of range are carried.
int64_t CarriedDayNumber(int64_t year, int64_t month, int64_t day) {
    int64_t monthIndex = month - 1;
    year += FloorDiv(monthIndex, 12);
    monthIndex -= FloorDiv(monthIndex, 12) * 12;
    int64_t days = DaysBeforeYear(year) + kCumulativeDays[monthIndex];
    if (monthIndex >= 2 && IsLeap64(year)) {
        days += 1;
    }
    return days + (day - 1) - kEpochShift;
}

// The dates that a PLDate can hold with a four-digit year; anything outside is clamped to them so
// that a wild field never produces a year that the 16-bit field would wrap.
int64_t ClampDayNumber(int64_t dayNumber) {
    const int64_t first = DaysBeforeYear(kFirstYear) - kEpochShift;
    const int64_t last = DaysBeforeYear(kLastYear + 1) - 1 - kEpochShift;
    if (dayNumber < first) {
        return first;
    }
    return dayNumber > last ? last : dayNumber;
}

}  // namespace

PLDate::PLDate(int y, int m, int d) {
    dayNumber = int32_t(ClampDayNumber(CarriedDayNumber(y, m, d)));
    FixFromDayNumber();
}

void PLDate::FixFromMDY() {
    dayNumber = int32_t(ClampDayNumber(CarriedDayNumber(year, month, day)));
    FixFromDayNumber();
}

void PLDate::FixFromDayNumber() {
    const int64_t clamped = ClampDayNumber(dayNumber);
    dayNumber = int32_t(clamped);
    const int64_t sinceStart = clamped + kEpochShift;  // days since 0001-01-01
    // 146097 days per 400 years: the estimate is off by at most one year either way.
    int64_t y = sinceStart * 400 / 146097 + 1;
    while (DaysBeforeYear(y) > sinceStart) {
        --y;
    }
    while (DaysBeforeYear(y + 1) <= sinceStart) {
        ++y;
    }
    int dayOfYear = int(sinceStart - DaysBeforeYear(y));
    const bool leap = IsLeap64(y);
    int m = 0;
    while (m < 11) {
        int next = kCumulativeDays[m + 1] + ((m + 1 >= 2 && leap) ? 1 : 0);
        if (dayOfYear < next) {
            break;
        }
        ++m;
    }
    const int monthStart = kCumulativeDays[m] + ((m >= 2 && leap) ? 1 : 0);
    year = uint16_t(y);
    month = uint8_t(m + 1);
    day = uint8_t(dayOfYear - monthStart + 1);
}

int PLDate::Weekday() const {
    return WeekdayOf(dayNumber);
}

PLDate& PLDate::operator+=(int days) {
    dayNumber = int32_t(ClampDayNumber(int64_t(dayNumber) + days));
    FixFromDayNumber();
    return *this;
}

PLDate& PLDate::operator-=(int days) {
    dayNumber = int32_t(ClampDayNumber(int64_t(dayNumber) - days));
    FixFromDayNumber();
    return *this;
}

PLDate PLDate::operator+(int days) const {
    PLDate result = *this;
    result += days;
    return result;
}

PLDate PLDate::operator-(int days) const {
    PLDate result = *this;
    result -= days;
    return result;
}

void PLDate::Today(PLDate& date) {
    const std::time_t now = std::time_t(PLClock::Now());
    std::tm local{};
    if (localtime_r(&now, &local) == nullptr) {
        return;  // leave the date as it was rather than inventing one
    }
    date = PLDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
}

PLDate PLDate::Today() {
    PLDate date;
    Today(date);
    return date;
}

int PLDate::NumberOfDaysInMonth(int m, int y) {
    if (m < 1 || m > 12) {
        return 0;
    }
    return (m == 2 && IsLeapYear(y)) ? 29 : kMonthDays[m - 1];
}

bool PLDate::IsLeapYear(int y) {
    return IsLeap64(y);
}

int32_t PLDate::DayNumberOf(int y, int m, int d) {
    return int32_t(ClampDayNumber(CarriedDayNumber(y, m, d)));
}

int PLDate::WeekdayOf(int32_t number) {
    return int(((int64_t(number) + 3) % 7 + 7) % 7) + 1;
}

bool GetStartWeekday(PLDate& date, int week, int weekday) {
    if (week < 1 || weekday < 1 || weekday > 7 || date.month < 1 || date.month > 12) {
        return false;
    }
    const int monthLength = PLDate::NumberOfDaysInMonth(date.month, date.year);
    int day = 0;
    if (week >= 5) {
        const int lastWeekday =
            PLDate::WeekdayOf(PLDate::DayNumberOf(date.year, date.month, monthLength));
        day = monthLength - (lastWeekday - weekday + 7) % 7;
    } else {
        const int firstWeekday = PLDate::WeekdayOf(PLDate::DayNumberOf(date.year, date.month, 1));
        day = 1 + (weekday - firstWeekday + 7) % 7 + 7 * (week - 1);
    }
    date.day = uint8_t(day);
    date.FixFromMDY();
    return true;
}

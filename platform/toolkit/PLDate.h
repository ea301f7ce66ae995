// A calendar date: a day number and its year, month and day.
//
// The layout is part of the platform's binary records (8 bytes): day number at +0, year at +4,
// month at +6, day at +7. The day number counts days on an epoch that fell on a Wednesday, so that
// the weekday of day number d is (d + 3) mod 7 + 1 with 1 = Sunday .. 7 = Saturday. Day 0 is
// 0001-01-03 of the proleptic Gregorian calendar, which keeps every date of interest positive.
// Dates are kept within 0001-01-01..9999-12-31: wilder fields or day numbers are clamped to those
// ends instead of wrapping the 16-bit year.
#pragma once

#include <cstdint>

struct PLDate {
    int32_t dayNumber = 0;
    uint16_t year = 1;
    uint8_t month = 1;
    uint8_t day = 1;

    PLDate() = default;
    // A date from its fields; the day number is computed (FixFromMDY).
    PLDate(int year, int month, int day);

    // Recomputes the day number from year, month and day. Out-of-range months and days are
    // carried (month 13 is January of the next year, day 0 the last day of the month before), so
    // that any field arithmetic lands on a real date; year, month and day are then rewritten.
    void FixFromMDY();
    // Recomputes year, month and day from the day number.
    void FixFromDayNumber();

    // Weekday 1 (Sunday) .. 7 (Saturday).
    int Weekday() const;

    PLDate& operator+=(int days);
    PLDate& operator-=(int days);
    PLDate operator+(int days) const;
    PLDate operator-(int days) const;
    int operator-(const PLDate& other) const { return dayNumber - other.dayNumber; }

    bool operator==(const PLDate& o) const { return dayNumber == o.dayNumber; }
    bool operator!=(const PLDate& o) const { return dayNumber != o.dayNumber; }
    bool operator<(const PLDate& o) const { return dayNumber < o.dayNumber; }
    bool operator<=(const PLDate& o) const { return dayNumber <= o.dayNumber; }
    bool operator>(const PLDate& o) const { return dayNumber > o.dayNumber; }
    bool operator>=(const PLDate& o) const { return dayNumber >= o.dayNumber; }

    // Today's local date by the platform clock.
    static void Today(PLDate& date);
    static PLDate Today();
    // Days of a month (1..12) in a year; 0 for a month out of range.
    static int NumberOfDaysInMonth(int month, int year);
    static bool IsLeapYear(int year);
    // Day number of a (valid) date, and the weekday of a day number.
    static int32_t DayNumberOf(int year, int month, int day);
    static int WeekdayOf(int32_t dayNumber);
};

static_assert(sizeof(PLDate) == 8, "PLDate is part of the binary node layout");

// Moves `date` to the `week`-th `weekday` (1 Sunday .. 7 Saturday) of the date's month; week 5 (or
// more) means the last such weekday of the month. Returns false and leaves the date untouched when
// week < 1 or the weekday is outside 1..7.
bool GetStartWeekday(PLDate& date, int week, int weekday);

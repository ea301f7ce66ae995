// Chinese lunisolar dates, reckoned for China's standard time (UTC+8), 1900-01-31..2100-12-31.
#pragma once

#include <cstdint>

// A date: Gregorian on input; on output the lunar year (the Gregorian year in which that lunar
// year began), month 1..12, day 1..30 and whether the month is an intercalary (leap) month.
struct DATES {
    int32_t year = 0;
    int32_t month = 0;
    int32_t day = 0;
    int32_t leapMonth = 0;  // output only: 1 for a leap month
};

// Converts a Gregorian date to its lunar date. Returns 1 on success, 0 (and leaves *lunar alone)
// for a null output, an invalid date or a date outside the supported range.
int new2lunar(DATES solar, DATES* lunar);

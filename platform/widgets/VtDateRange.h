// The dates a user can reach with the platform's date controls: 1970-01-01 to 2030-12-31, and the
// month and day steps that the date header and the date dialog take within them.
#pragma once

#include "PLDate.h"

class VtDateRange {
public:
    static PLDate First() { return PLDate(1970, 1, 1); }
    static PLDate Last() { return PLDate(2030, 12, 31); }
    static bool Contains(const PLDate& date);
    // The date moved into the range (a date before it becomes the first day, after it the last).
    static PLDate Clamp(const PLDate& date);
    // `months` months on, the day kept or cut to the month's length. Returns false and leaves the
    // date when the result's month lies outside the range.
    static bool AddMonths(PLDate& date, int months);
    // `days` days on; false and untouched when the result lies outside the range.
    static bool AddDays(PLDate& date, int days);
};

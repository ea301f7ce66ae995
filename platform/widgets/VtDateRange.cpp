// The reachable date range and steps within it.
#include "VtDateRange.h"

#include <algorithm>

bool VtDateRange::Contains(const PLDate& date) {
    return date >= First() && date <= Last();
}

PLDate VtDateRange::Clamp(const PLDate& date) {
    if (date < First()) {
        return First();
    }
    if (date > Last()) {
        return Last();
    }
    return date;
}

bool VtDateRange::AddMonths(PLDate& date, int months) {
    const long total = long(date.year) * 12 + (date.month - 1) + months;
    const int year = int(total / 12);
    const int month = int(total % 12) + 1;
    if (year < First().year || year > Last().year) {
        return false;
    }
    const int day = std::min<int>(date.day, PLDate::NumberOfDaysInMonth(month, year));
    date = PLDate(year, month, day);
    return true;
}

bool VtDateRange::AddDays(PLDate& date, int days) {
    const PLDate moved = date + days;
    if (!Contains(moved)) {
        return false;
    }
    date = moved;
    return true;
}

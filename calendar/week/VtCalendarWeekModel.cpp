// The week's layout: week start, the all-day strip and the hour grid, filled from a week list.
#include "week/VtCalendarWeekModel.h"

#include <algorithm>
#include <cassert>

#include "recur/_RecurInfo.h"

namespace {

// A record with an interval below 1 is shown as if it repeated at every step: it keeps its
// occurrences visible and the arithmetic free of a division by zero.
int32_t UsableInterval(int32_t interval) {
    return interval < 1 ? 1 : interval;
}

// The hour row 1..24 of an hour, whatever a damaged record holds.
int HourRow(int hour) {
    return std::clamp(hour + 1, 1, kWeekHours);
}

}  // namespace

VtCalendarWeekModel::VtCalendarWeekModel() {
    SetWeekStart(PLDate(1970, 1, 4));
}

int VtCalendarWeekModel::WeekdayIndex(int32_t dayNumber) {
    return ((dayNumber + 3) % 7 + 7) % 7;
}

PLDate VtCalendarWeekModel::WeekStartOf(const PLDate& date, int startWeekday) {
    if (startWeekday < 1 || startWeekday > 7) {
        startWeekday = 1;
    }
    int back = WeekdayIndex(date.dayNumber) + 1 - startWeekday;
    if (back < 0) {
        back += 7;
    }
    return date - back;
}

void VtCalendarWeekModel::SetWeekStart(const PLDate& weekStart) {
    mWeekStart = weekStart;
    mLastOfWeek = weekStart + (kWeekDays - 1);
}

PLDate VtCalendarWeekModel::DayDate(int column) const {
    assert(column >= 1 && column <= kWeekDays && "a column of the week");
    return mWeekStart + (std::clamp(column, 1, kWeekDays) - 1);
}

int VtCalendarWeekModel::ColumnOf(const PLDate& date) const {
    return InWeek(date.dayNumber) ? date - mWeekStart + 1 : 0;
}

bool VtCalendarWeekModel::InWeek(int32_t dayNumber) const {
    return dayNumber >= mWeekStart.dayNumber && dayNumber < mWeekStart.dayNumber + kWeekDays;
}

const VtCalendarWeekCell& VtCalendarWeekModel::StripCell(int row, int column) const {
    assert(row >= 1 && row <= kWeekStripRows && column >= 1 && column <= kWeekDays &&
           "a cell of the strip");
    row = std::clamp(row, 1, kWeekStripRows);
    column = std::clamp(column, 1, kWeekDays);
    return mStrip[row - 1][column - 1];
}

const VtCalendarWeekCell& VtCalendarWeekModel::GridCell(int row, int slotColumn) const {
    assert(row >= 1 && row <= kWeekHours && slotColumn >= 0 && slotColumn < kWeekSlotColumns &&
           "a cell of the hour grid");
    row = std::clamp(row, 1, kWeekHours);
    slotColumn = std::clamp(slotColumn, 0, kWeekSlotColumns - 1);
    return mGrid[row - 1][slotColumn];
}

bool VtCalendarWeekModel::HasStripBar(int column) const {
    for (int row = 1; row <= kWeekStripRows; ++row) {
        if (StripCell(row, column).used != 0) {
            return true;
        }
    }
    return false;
}

// ------------------------------------------------------------------------- repeat rules

bool VtCalendarWeekModel::MonthlyDate(const APMonthEventNode& node, int year, int month,
                                      bool nextMonthToo, PLDate& out) const {
    const int week = int(uint32_t(node.recurValueB) >> 8);
    const int low = node.recurValueB & 0xFF;
    const PLDate& lastOfWeek = mLastOfWeek;
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (attempt == 1) {
            // A week that runs into the next month may hold that month's occurrence instead.
            if (!nextMonthToo || (lastOfWeek.month == month && lastOfWeek.year == year)) {
                return false;
            }
            year = lastOfWeek.year;
            month = lastOfWeek.month;
        }
        PLDate date(year, month, 1);
        bool found = false;
        if (week != 0) {
            found = GetStartWeekday(date, week, low);
        } else if (low >= 1 && low <= PLDate::NumberOfDaysInMonth(month, year)) {
            // A day the month does not have (the 31st in a 30-day month): no occurrence.
            date = PLDate(year, month, low);
            found = true;
        }
        if (found && InWeek(date.dayNumber)) {
            out = date;
            return true;
        }
    }
    return false;
}

template <class Place>
void VtCalendarWeekModel::ForEachOccurrence(const APMonthEventNode& node, Reading reading,
                                            Place place) const {
    const int32_t interval = UsableInterval(node.recurValueA);
    // Pattern days outside the series (before its first day, after its limit) are no occurrences,
    // as in the month view and the day view.
    const auto inSeries = [&node](const PLDate& date) {
        return date >= node.firstDay && date <= node.limitDay;
    };
    // Occurrences are handed on as day numbers: the daily and weekly walks never need the
    // calendar fields, and converting every day of every series would cost more than placing it.
    switch (node.recurKind) {
        case kRecurMonthly: {
            int year = mWeekStart.year;
            int month = mWeekStart.month;
            const PLDate& lastOfWeek = mLastOfWeek;
            // The hour grid counts the interval from the month the occurrence falls in when the
            // week runs into the next month and the rule's day comes before the week's first day.
            if (reading == Reading::kGrid && lastOfWeek.month != mWeekStart.month &&
                node.recurValueB < mWeekStart.day) {
                year = lastOfWeek.year;
                month = lastOfWeek.month;
            }
            const int months = (month - node.firstDay.month) + (year - node.firstDay.year) * 12;
            PLDate date;
            if (months % interval == 0 && MonthlyDate(node, year, month, true, date) &&
                inSeries(date)) {
                place(date.dayNumber);
            }
            return;
        }
        case kRecurYearly: {
            PLDate date;
            // The rule's month is the week's first month: only that month can hold it.
            if (node.recurValueA == mWeekStart.month &&
                MonthlyDate(node, mWeekStart.year, mWeekStart.month, false, date) &&
                inSeries(date)) {
                place(date.dayNumber);
            }
            return;
        }
        case kRecurDaily:
        case kRecurWeekly:
            break;
        default:
            // Kind 0, and kinds no rule knows: the event on its own date.
            if (InWeek(node.firstDay.dayNumber)) {
                place(node.firstDay.dayNumber);
            }
            return;
    }
    const int32_t first = node.firstDay.dayNumber;
    int32_t day = std::max(mWeekStart.dayNumber, first);
    for (int step = 0; step < kWeekDays && InWeek(day) && day <= node.limitDay.dayNumber;
         ++step, ++day) {
        const int weekday = WeekdayIndex(day);
        bool occurs = false;
        if (node.recurKind == kRecurDaily) {
            occurs = node.recurValueB == 1 ? (weekday >= 1 && weekday <= 5)
                                           : (day - first) % interval == 0;
        } else {
            occurs = (node.recurValueB & (1 << weekday)) != 0;
            // Only the strip counts the weeks of the interval; the hour grid shows every chosen
            // weekday.
            if (occurs && reading == Reading::kStrip) {
                occurs = ((day - first) / 7) % interval == 0;
            }
        }
        if (occurs) {
            place(day);
        }
    }
}

// ------------------------------------------------------------------------------- strip

void VtCalendarWeekModel::BuildStrip(const APMonthEventNode* events) {
    for (auto& row : mStrip) {
        for (VtCalendarWeekCell& cell : row) {
            cell = VtCalendarWeekCell{};
        }
    }
    for (const APMonthEventNode* node = events; node != nullptr; node = node->next) {
        if (node->firstDay == node->lastDay) {
            if (node->allDay != 0) {
                ForEachOccurrence(*node, Reading::kStrip,
                                  [this, node](int32_t day) { PlaceStripDay(*node, day); });
            }
        } else {
            PlaceStripSpan(*node);
        }
    }
}

void VtCalendarWeekModel::PlaceStripSpan(const APMonthEventNode& node) {
    const int first = node.firstDay > mWeekStart ? node.firstDay - mWeekStart + 1 : 1;
    const int last = node.lastDay < mWeekStart + kWeekDays ? node.lastDay - mWeekStart + 1 : 7;
    // An end before the start, or a span the store had no reason to list: nothing to show.
    if (first > kWeekDays || last < 1 || last < first) {
        return;
    }
    for (auto& row : mStrip) {
        const bool free = std::none_of(row + first - 1, row + last,
                                       [](const VtCalendarWeekCell& cell) { return cell.used; });
        if (!free) {
            continue;
        }
        for (int column = first; column <= last; ++column) {
            int32_t kind = kWeekPieceMiddle;
            if (column == first) {
                kind = kWeekPieceFirst;
            } else if (column == last) {
                kind = kWeekPieceLast;
            }
            row[column - 1] = {1, kind, int32_t(node.colour)};
        }
        return;
    }
    // Three rows are all the strip has: a fourth concurrent bar is not shown.
}

void VtCalendarWeekModel::PlaceStripDay(const APMonthEventNode& node, int32_t dayNumber) {
    if (!InWeek(dayNumber)) {
        return;
    }
    const int column = dayNumber - mWeekStart.dayNumber + 1;
    for (auto& row : mStrip) {
        if (row[column - 1].used == 0) {
            row[column - 1] = {1, kWeekPieceFirst, int32_t(node.colour)};
            return;
        }
    }
}

// ---------------------------------------------------------------------------- hour grid

void VtCalendarWeekModel::BuildGrid(const APMonthEventNode* events) {
    for (auto& row : mGrid) {
        for (VtCalendarWeekCell& cell : row) {
            cell = VtCalendarWeekCell{};
        }
    }
    for (const APMonthEventNode* node = events; node != nullptr; node = node->next) {
        // All-day and multi-day events belong to the strip.
        if (node->firstDay == node->lastDay && node->allDay == 0) {
            ForEachOccurrence(*node, Reading::kGrid,
                              [this, node](int32_t day) { PlaceGridOccurrence(*node, day); });
        }
    }
}

void VtCalendarWeekModel::PlaceGridOccurrence(const APMonthEventNode& node, int32_t dayNumber) {
    if (!InWeek(dayNumber)) {
        return;
    }
    const int column = dayNumber - mWeekStart.dayNumber + 1;
    int endHour = node.endTime.hour;
    int endMinute = node.endTime.minute;
    // An event that ends at midnight ends at 23:00 of its day (its day was taken back already).
    if (node.endTime == PLTime(0, 0, 0)) {
        endHour = 23;
        endMinute = 0;
    }
    const int first = HourRow(node.startTime.hour);
    int last = HourRow(endHour);
    // A bar that ends on the hour does not take that hour's row.
    if (endMinute == 0 && last > first) {
        last = endHour;
    }
    last = std::max(last, first);
    for (int slot = 0; slot < kWeekSlots; ++slot) {
        const int slotColumn = (column - 1) * kWeekSlots + slot;
        bool free = true;
        for (int row = first; row <= last && free; ++row) {
            free = mGrid[row - 1][slotColumn].used == 0;
        }
        if (!free) {
            continue;
        }
        for (int row = first; row <= last; ++row) {
            int32_t kind = kWeekPieceMiddle;
            if (row == first) {
                kind = kWeekPieceFirst;
            } else if (row == last) {
                kind = kWeekPieceLast;
            }
            mGrid[row - 1][slotColumn] = {1, kind, int32_t(node.colour)};
        }
        return;
    }
    // Three slots a day: a fourth overlapping event gets no bar.
}

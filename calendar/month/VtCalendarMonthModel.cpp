// The month grid: cells, touch mapping, and the placement of the month's events into lanes.
#include "month/VtCalendarMonthModel.h"

#include <algorithm>
#include <cassert>
#include <cstring>

#include "recur/_RecurInfo.h"

VtCalendarMonthDay mMonthRectInfo[kMonthMaxDays];

namespace {

constexpr long kFirstWeekdayOption = 11424;
constexpr long kLastWeekdayOption = 11430;

// A record with an interval below 1 is shown as if it repeated at every step: the closest reading
// of the record that still shows its occurrences, and it keeps the arithmetic free of zero.
int32_t UsableInterval(int32_t interval) {
    return interval < 1 ? 1 : interval;
}

}  // namespace

VtCalendarMonthModel::VtCalendarMonthModel() {
    mShownDate.year = 1;
    mShownDate.month = 1;
    mShownDate.day = 1;
    mShownDate.FixFromMDY();
}

int VtCalendarMonthModel::WeekdayOf(const PLDate& date) {
    return WeekdayOfNumber(date.dayNumber);
}

int VtCalendarMonthModel::WeekdayOfNumber(int32_t dayNumber) {
    // Day numbers of reachable dates are positive, but a negative one must not give weekday 0.
    return ((dayNumber + 3) % 7 + 7) % 7 + 1;
}

void VtCalendarMonthModel::SetShownDate(const PLDate& date) {
    mShownDate = date;
}

void VtCalendarMonthModel::SetStartWeekday(uint16_t weekday) {
    assert(weekday >= 1 && weekday <= 7 && "weekdays are numbered 1..7");
    if (weekday >= 1 && weekday <= 7) {
        mStartWeekday = weekday;
    }
}

void VtCalendarMonthModel::SetStartWeekdayOption(long option) {
    if (option >= kFirstWeekdayOption && option <= kLastWeekdayOption) {
        mStartWeekday = uint16_t(option - (kFirstWeekdayOption - 1));
    }
}

int VtCalendarMonthModel::DaysInMonth() const {
    return PLDate::NumberOfDaysInMonth(mShownDate.month, mShownDate.year);
}

PLDate VtCalendarMonthModel::FirstOfMonth() const {
    PLDate first = mShownDate;
    first.day = 1;
    first.FixFromMDY();
    return first;
}

int VtCalendarMonthModel::FirstOffset() const {
    int offset = WeekdayOf(FirstOfMonth()) - mStartWeekday;
    if (offset < 0) {
        offset += 7;
    }
    return offset;
}

int16_t VtCalendarMonthModel::DayAtPoint(PLPoint where) const {
    // Truncation toward zero is deliberate: points a little above the grid still count as row 0.
    const int row = (where.v - kMonthGridTop) / kMonthRowHeight;
    const int column = where.h / kMonthColumnWidth;
    return int16_t(row * 7 + column + 1 - FirstOffset());
}

PLRect VtCalendarMonthModel::CellRectOfDay(int day) const {
    const int index = day - 1 + FirstOffset();
    const int row = index / 7;
    const int column = index % 7;
    const int top = kMonthGridTop + kMonthRowHeight * row;
    const int left = kMonthColumnWidth * column;
    return {top, left, top + kMonthRowHeight, left + kMonthColumnWidth};
}

bool VtCalendarMonthModel::HasAllDayMark(int day) const {
    return day >= 1 && day <= kMonthMaxDays && mAllDayMark[day - 1] != 0;
}

const VtCalendarMonthLane& VtCalendarMonthModel::Lane(int day, int lane) const {
    assert(day >= 1 && day <= kMonthMaxDays && lane >= 0 && lane < kMonthLanes &&
           "lane index out of the table");
    day = std::clamp(day, 1, kMonthMaxDays);
    lane = std::clamp(lane, 0, kMonthLanes - 1);
    return mMonthRectInfo[day - 1].lanes[lane];
}

DATES VtCalendarMonthModel::LunarDate(int day) const {
    return day >= 1 && day <= kMonthMaxDays ? mLunar[day - 1] : DATES{};
}

void VtCalendarMonthModel::ComputeLunarDates() {
    for (int day = 1; day <= kMonthMaxDays; ++day) {
        DATES& lunar = mLunar[day - 1];
        lunar = DATES{};
        if (day > mMonthDays) {
            continue;
        }
        DATES solar;
        solar.year = mShownDate.year;
        solar.month = mShownDate.month;
        solar.day = day;
        // A day the tables do not cover keeps all zeros: it simply has no lunar date.
        new2lunar(solar, &lunar);
    }
}

void VtCalendarMonthModel::ClearMarks() {
    std::memset(mAllDayMark, 0, sizeof(mAllDayMark));
    for (VtCalendarMonthDay& day : mMonthRectInfo) {
        for (VtCalendarMonthLane& lane : day.lanes) {
            lane.recordId = 0;
        }
    }
}

void VtCalendarMonthModel::Build(const APMonthEventNode* events) {
    ClearMarks();
    mMonthFirst = FirstOfMonth().dayNumber;
    mMonthDays = DaysInMonth();
    ComputeLunarDates();
    for (const APMonthEventNode* node = events; node != nullptr; node = node->next) {
        if (node->firstDay != node->lastDay) {
            PlaceNode(*node);
        }
    }
    for (const APMonthEventNode* node = events; node != nullptr; node = node->next) {
        if (node->firstDay == node->lastDay) {
            PlaceNode(*node);
        }
    }
}

void VtCalendarMonthModel::PlaceNode(const APMonthEventNode& node) {
    switch (node.recurKind) {
        case kRecurMonthly:
            ExpandMonthly(node);
            break;
        case kRecurYearly:
            ExpandYearly(node);
            break;
        case kRecurDaily:
            ExpandDaily(node);
            break;
        case kRecurWeekly:
            ExpandWeekly(node);
            break;
        default:
            // Kind 0, and kinds no rule knows: the event as it stands, once.
            PlaceSingle(node, node.firstDay, node.limitDay);
            break;
    }
}

void VtCalendarMonthModel::PlaceSingle(const APMonthEventNode& node, const PLDate& first,
                                       const PLDate& limit) {
    int32_t lastNumber = limit.dayNumber;
    // An end at midnight belongs to the day before. The limit (unlike the list's last day) still
    // holds the stored end's day, so the rule is applied here once, and before clipping to the
    // month: applied after clipping it would also take a day off a span that merely runs past the
    // month's end (the 29th to midnight of the 1st would show the 29th alone instead of the 29th
    // and 30th).
    if (lastNumber > first.dayNumber && node.endTime == PLTime(0, 0, 0)) {
        --lastNumber;
    }
    // An end before the start is shown on the start day alone.
    lastNumber = std::max(lastNumber, first.dayNumber);
    const int32_t monthLast = mMonthFirst + mMonthDays - 1;
    if (lastNumber < mMonthFirst || first.dayNumber > monthLast) {
        return;
    }
    const int32_t from = std::max(first.dayNumber, mMonthFirst);
    const int32_t to = std::min(lastNumber, monthLast);
    PlaceSpan(node, from - mMonthFirst + 1, to - mMonthFirst + 1);
}

void VtCalendarMonthModel::PlaceOccurrence(const APMonthEventNode& node, int32_t occurrence) {
    // The store lists a series in every month it may touch, so the months of its first and last
    // occurrence can hold pattern days before the first or after the limit: those are not
    // occurrences (the daily and weekly visits stop at the same bounds, and the day list agrees).
    if (occurrence < node.firstDay.dayNumber || occurrence > node.limitDay.dayNumber) {
        return;
    }
    // The list's last day has had its midnight end taken back already (right after the query);
    // taking it back again here would shorten every repeating span by one more day.
    const int length = std::max(0, node.lastDay - node.firstDay);
    const int firstDay = occurrence - mMonthFirst + 1;
    if (firstDay < 1 || firstDay > mMonthDays) {
        return;
    }
    PlaceSpan(node, firstDay, std::min(firstDay + length, mMonthDays));
}

void VtCalendarMonthModel::PlaceSpan(const APMonthEventNode& node, int firstDay, int lastDay) {
    assert(firstDay >= 1 && lastDay <= mMonthDays && firstDay <= lastDay &&
           "a span inside the shown month");
    if (firstDay == lastDay) {
        PlaceOneDay(node, firstDay);
    } else {
        PlaceBar(node, firstDay, lastDay);
    }
}

void VtCalendarMonthModel::PlaceOneDay(const APMonthEventNode& node, int day) {
    if (node.allDay != 0) {
        mAllDayMark[day - 1] = 1;
        return;
    }
    for (VtCalendarMonthLane& lane : mMonthRectInfo[day - 1].lanes) {
        if (lane.recordId == 0) {
            lane = {int32_t(node.colour), node.id, kMonthPieceSingle, day, day};
            return;
        }
    }
    // Four marks a day at most: a fifth event gets none.
}

void VtCalendarMonthModel::PlaceBar(const APMonthEventNode& node, int firstDay, int lastDay) {
    for (int lane = 0; lane < kMonthLanes; ++lane) {
        bool free = true;
        for (int day = firstDay; day <= lastDay && free; ++day) {
            free = mMonthRectInfo[day - 1].lanes[lane].recordId == 0;
        }
        if (!free) {
            continue;
        }
        for (int day = firstDay; day <= lastDay; ++day) {
            int32_t piece = kMonthPieceMiddle;
            if (day == firstDay) {
                piece = kMonthPieceFirst;
            } else if (day == lastDay) {
                piece = kMonthPieceLast;
            }
            mMonthRectInfo[day - 1].lanes[lane] = {int32_t(node.colour), node.id, piece, firstDay,
                                                   lastDay};
        }
        return;
    }
}

bool VtCalendarMonthModel::PatternDate(int32_t pattern, bool clamp, PLDate& out) const {
    const int week = int(uint32_t(pattern) >> 8);
    const int low = pattern & 0xFF;
    out = FirstOfMonth();
    if (week != 0) {
        return ::GetStartWeekday(out, week, low);
    }
    const int days = DaysInMonth();
    if (low < 1) {
        return false;
    }
    if (low > days) {
        if (!clamp) {
            return false;
        }
        out.day = uint8_t(days);
    } else {
        out.day = uint8_t(low);
    }
    out.FixFromMDY();
    return true;
}

void VtCalendarMonthModel::ExpandMonthly(const APMonthEventNode& node) {
    const int months =
        (mShownDate.year - node.firstDay.year) * 12 + (mShownDate.month - node.firstDay.month);
    if (months < 0 || months % UsableInterval(node.recurValueA) != 0) {
        return;
    }
    PLDate occurrence;
    // A day past the month's end: no occurrence this month (the yearly rule clamps instead).
    if (PatternDate(node.recurValueB, false, occurrence)) {
        PlaceOccurrence(node, occurrence.dayNumber);
    }
}

void VtCalendarMonthModel::ExpandYearly(const APMonthEventNode& node) {
    if (node.recurValueA != mShownDate.month) {
        return;
    }
    PLDate occurrence;
    if (PatternDate(node.recurValueB, true, occurrence)) {
        PlaceOccurrence(node, occurrence.dayNumber);
    }
}

void VtCalendarMonthModel::ExpandDaily(const APMonthEventNode& node) {
    const bool workingDays = node.recurValueB == 1;
    const int32_t interval = UsableInterval(node.recurValueA);
    const int32_t end = mMonthFirst + mMonthDays;
    for (int32_t day = mMonthFirst; day < end; ++day) {
        if (day > node.limitDay.dayNumber) {
            break;
        }
        if (day < node.firstDay.dayNumber) {
            continue;
        }
        const int weekday = WeekdayOfNumber(day);
        const bool occurs = workingDays ? (weekday >= 2 && weekday <= 6)
                                        : (day - node.firstDay.dayNumber) % interval == 0;
        if (occurs) {
            PlaceOccurrence(node, day);
        }
    }
}

void VtCalendarMonthModel::ExpandWeekly(const APMonthEventNode& node) {
    const int32_t interval = UsableInterval(node.recurValueA);
    // Weeks are counted in calendar weeks that begin on Sunday, from the week of the first day.
    const int32_t firstSunday = node.firstDay.dayNumber - (WeekdayOf(node.firstDay) - 1);
    const int32_t end = mMonthFirst + mMonthDays;
    for (int32_t day = mMonthFirst; day < end; ++day) {
        if (day > node.limitDay.dayNumber) {
            break;
        }
        if (day < node.firstDay.dayNumber) {
            continue;
        }
        const int weekday = WeekdayOfNumber(day);
        if ((node.recurValueB & (1 << (weekday - 1))) == 0) {
            continue;
        }
        const int32_t sunday = day - (weekday - 1);
        if (((sunday - firstSunday) / 7) % interval == 0) {
            PlaceOccurrence(node, day);
        }
    }
}

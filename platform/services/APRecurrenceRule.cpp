// Occurrence test of a repeating event (see the header).
#include "APRecurrenceRule.h"

namespace {

int32_t UsableInterval(int32_t interval) {
    return interval < 1 ? 1 : interval;
}

}  // namespace

APRecurrenceRule::APRecurrenceRule(int32_t kind, int32_t a, int32_t b, const PLDate& firstDay,
                                   const PLDate& limitDay)
    : mKind(kind), mA(a), mB(b), mFirst(firstDay), mLimit(limitDay) {}

bool APRecurrenceRule::IsRepeatingKind(int32_t kind) {
    return kind == 1 || kind == 2 || kind == 4 || kind == 8;
}

bool APRecurrenceRule::OccursOn(const PLDate& day) const {
    if (day < mFirst || day > mLimit) {
        return false;
    }
    switch (mKind) {
        case 1:
            return DailyOn(day);
        case 2:
            return WeeklyOn(day);
        case 4:
            return MonthlyOn(day);
        case 8:
            return YearlyOn(day);
        default:
            return false;
    }
}

bool APRecurrenceRule::PatternDayIs(const PLDate& day, bool clampDay) const {
    const uint32_t week = uint32_t(mB) >> 8;
    const int low = int(uint32_t(mB) & 0xFF);
    const int monthLength = PLDate::NumberOfDaysInMonth(day.month, day.year);
    if (week == 0) {
        if (low < 1) {
            return false;
        }
        const int wanted = clampDay && low > monthLength ? monthLength : low;
        return day.day == wanted;
    }
    PLDate candidate(day.year, day.month, 1);
    const int ordinal = week > 5 ? 5 : int(week);
    if (!GetStartWeekday(candidate, ordinal, low)) {
        return false;
    }
    return candidate == day;
}

bool APRecurrenceRule::MonthlyOn(const PLDate& day) const {
    const int months =
        (int(day.year) - int(mFirst.year)) * 12 + (int(day.month) - int(mFirst.month));
    if (months % UsableInterval(mA) != 0) {
        return false;
    }
    return PatternDayIs(day, false);
}

bool APRecurrenceRule::YearlyOn(const PLDate& day) const {
    if (day.month != mA) {
        return false;
    }
    return PatternDayIs(day, true);
}

bool APRecurrenceRule::DailyOn(const PLDate& day) const {
    if (mB == 1) {
        const int weekday = day.Weekday();
        return weekday >= 2 && weekday <= 6;
    }
    return (day - mFirst) % UsableInterval(mA) == 0;
}

bool APRecurrenceRule::WeeklyOn(const PLDate& day) const {
    const int weekday = day.Weekday();
    if ((uint32_t(mB) & (1u << (weekday - 1))) == 0) {
        return false;
    }
    const int32_t weekOfDay = day.dayNumber - (weekday - 1);
    const int32_t weekOfFirst = mFirst.dayNumber - (mFirst.Weekday() - 1);
    return ((weekOfDay - weekOfFirst) / 7) % UsableInterval(mA) == 0;
}

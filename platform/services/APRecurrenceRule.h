// Whether a repeating event occurs on a given day, read the way the month view expands its rule:
// monthly on a day (no clamping) or an n-th weekday every `a` months; yearly in month `a` on a day
// (clamped to the month) or an n-th weekday; daily every `a` days or on working days; weekly on
// the weekdays of mask `b` every `a` weeks counted in weeks that begin on Sunday.
//
// Any field may be impossible. An interval below 1 reads as 1, as the month view reads it, so that
// both views show the same days; a month 13, a day 45 or an unknown kind simply has no occurrence.
// Nothing divides by zero or loops.
#pragma once

#include <cstdint>

#include "PLDate.h"

class APRecurrenceRule {
public:
    APRecurrenceRule(int32_t kind, int32_t a, int32_t b, const PLDate& firstDay,
                     const PLDate& limitDay);

    // True for the four repeating kinds (1, 2, 4, 8).
    static bool IsRepeatingKind(int32_t kind);
    // Occurrence on `day`, which must lie within first day .. limit day.
    bool OccursOn(const PLDate& day) const;

private:
    bool MonthlyOn(const PLDate& day) const;
    bool YearlyOn(const PLDate& day) const;
    bool DailyOn(const PLDate& day) const;
    bool WeeklyOn(const PLDate& day) const;
    // Day of month or n-th weekday in the day's month, as `b` reads.
    bool PatternDayIs(const PLDate& day, bool clampDay) const;

    int32_t mKind;
    int32_t mA;
    int32_t mB;
    PLDate mFirst;
    PLDate mLimit;
};

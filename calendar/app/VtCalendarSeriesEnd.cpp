// Series end of a repeat rule: the date of the count-th occurrence per kind, the 2030 cut, and the
// occurrence count up to an until date. The walk follows the application's established order,
// including its odd corners (the 99 cap of the until search, the first-month day clamp that the
// later months keep), because stored series depend on them.
#include "app/VtCalendarSeriesEnd.h"

#include <cstdint>

#include "PLTimeStamp.h"

namespace {

constexpr int kHandOverCount = 1001;
constexpr int kUntilSearchCap = 100;
// Months added beyond this land far past the 2030 limit anyway; the cap keeps the year in range.
constexpr long kMaxMonthsAdded = 12L * 200;
// Day steps saturate inside these years. Both lie far beyond what the 2030 limit and the start
// allow, so a saturated date is always refused by the limit check, and no date ever reaches the
// ends of the four-digit years, where it would stop moving and a weekday walk would never end.
constexpr int kEarliestYear = 1800;
constexpr int kLatestYear = 2200;

// `date` moved by `days`, saturating at the years above; `days` may be any product of the rule's
// fields, so it is computed in 64 bits by the callers.
void AddDays(PLDate& date, int64_t days) {
    const int64_t ahead = PLDate(kLatestYear, 1, 1) - date;
    const int64_t behind = PLDate(kEarliestYear, 1, 1) - date;
    date += int(days > ahead ? ahead : (days < behind ? behind : days));
}

long SeriesLimit() {
    const PLDate last(2030, 12, 31);
    const PLTime end(23, 59, 59);
    return PLDate2TimeStamp(&last, &end);
}

PLDate StartDateOf(const _RecurInfo& setting) {
    PLDate date;
    TimeStamp2PLDate(setting.startStamp, &date, nullptr);
    return date;
}

void MoveStart(_RecurInfo& setting, const PLDate& date) {
    setting.startStamp = int32_t(ChangeTimeStamp(setting.startStamp, date));
}

int Clamp(int day, int month, int year) {
    const int length = PLDate::NumberOfDaysInMonth(month, year);
    return day > length ? length : day;
}

// A date `months` months after `date`'s month, day clamped to that month.
PLDate AddMonths(const PLDate& date, long months) {
    if (months > kMaxMonthsAdded) {
        months = kMaxMonthsAdded;
    } else if (months < -kMaxMonthsAdded) {
        months = -kMaxMonthsAdded;
    }
    const long index = long(date.month) - 1 + months;
    const int year = int(date.year + index / 12);
    const int month = int(index % 12) + 1;
    return PLDate(year, month, Clamp(date.day, month, year));
}

bool Chosen(int mask, const PLDate& date) {
    return (mask >> (date.Weekday() - 1)) & 1;
}

// One step forward to the next chosen weekday; leaving Saturday skips the weeks between.
void StepToChosen(PLDate& date, int mask, int interval) {
    do {
        AddDays(date, 1);
        if (date.Weekday() == 1) {
            AddDays(date, int64_t(interval) * 7 - 7);
        }
        // Past the saturation year the series is long over; stop rather than walk on.
    } while (!Chosen(mask, date) && date.year < kLatestYear);
}

int CountBits(int mask) {
    int bits = 0;
    for (int i = 0; i < 7; ++i) {
        bits += (mask >> i) & 1;
    }
    return bits;
}

void DailyEnd(const _RecurInfo& setting, PLDate& date, int n) {
    if (setting.pattern != 1) {
        AddDays(date, int64_t(setting.interval) * n);
        return;
    }
    const int startWeekday = date.Weekday() - 1;  // 0 = Sunday
    AddDays(date, int64_t(setting.interval) * (n / 5) * 7);
    AddDays(date, n % 5);
    if (startWeekday + n % 5 >= 6) {
        date += 2;
    }
}

bool WeeklyEnd(_RecurInfo& setting, PLDate& date, int n) {
    const int mask = setting.pattern & 0x7F;
    const int chosen = CountBits(mask);
    if (chosen == 0) {
        return false;  // no weekday: the rule has no occurrence at all
    }
    const PLDate before = date;
    if (!Chosen(mask, date)) {
        StepToChosen(date, mask, setting.interval);
    }
    if (date != before) {
        MoveStart(setting, date);
    }
    AddDays(date, int64_t(setting.interval) * 7 * (n / chosen));
    for (int i = 0; i < n % chosen; ++i) {
        StepToChosen(date, mask, setting.interval);
    }
    return true;
}

void MonthlyEnd(_RecurInfo& setting, PLDate& date, int n) {
    const int week = int(uint32_t(setting.pattern) >> 8);
    const int low = setting.pattern & 0xFF;
    if (week == 0) {
        PLDate first = date;
        if (low < date.day) {
            first = AddMonths(PLDate(date.year, date.month, 1), setting.interval);
        }
        date = PLDate(first.year, first.month, Clamp(low, first.month, first.year));
    } else {
        PLDate first = date;
        GetStartWeekday(first, week, low);
        if (first < date) {
            first = AddMonths(PLDate(date.year, date.month, 1), setting.interval);
            GetStartWeekday(first, week, low);
        }
        date = first;
    }
    MoveStart(setting, date);
    date = AddMonths(date, long(n) * setting.interval);
    if (week != 0) {
        GetStartWeekday(date, week, low);
    }
}

void YearlyEnd(_RecurInfo& setting, PLDate& date, int n) {
    const int week = int(uint32_t(setting.pattern) >> 8);
    const int low = setting.pattern & 0xFF;
    const int month = setting.interval;
    if (week == 0) {
        if (month != date.month || low != date.day) {
            const bool earlier = month < date.month || (month == date.month && low < date.day);
            const int year = date.year + (earlier ? 1 : 0);
            date = PLDate(year, month, Clamp(low, month, year));
            MoveStart(setting, date);
        }
    } else {
        PLDate first(date.year, month, 1);
        GetStartWeekday(first, week, low);
        if (first < date) {
            first = PLDate(date.year + 1, month, 1);
            GetStartWeekday(first, week, low);
        }
        date = first;
        MoveStart(setting, date);
    }
    date = AddMonths(date, 12L * n);
    if (week != 0) {
        GetStartWeekday(date, week, low);
    }
}

// Steps 2..4: the last occurrence for the current count; false when there is none.
bool LastOccurrence(_RecurInfo& setting, int& count, PLDate& last) {
    PLDate date = StartDateOf(setting);
    if (setting.count == 0) {
        setting.lastStamp = int32_t(ChangeTimeStamp(setting.startStamp, date));
        count = 0;
        last = date;
        return true;
    }
    const int n = setting.count - 1;
    switch (setting.kind) {
        case kRecurNone:
            AddDays(date, n);
            break;
        case kRecurDaily:
            DailyEnd(setting, date, n);
            break;
        case kRecurWeekly:
            if (!WeeklyEnd(setting, date, n)) {
                return false;
            }
            break;
        case kRecurMonthly:
            MonthlyEnd(setting, date, n);
            break;
        case kRecurYearly:
            YearlyEnd(setting, date, n);
            break;
        default:
            break;
    }
    setting.lastStamp = int32_t(ChangeTimeStamp(setting.startStamp, date));
    count = setting.count;
    last = date;
    return true;
}

// Step counts from the start to the until date, per kind; -1 when the rule cannot be counted.
long EstimateSteps(const _RecurInfo& setting, const PLDate& start, const PLDate& until) {
    const long days = until - start;
    const long interval = setting.interval;
    switch (setting.kind) {
        case kRecurDaily:
            if (interval < 1) {
                return -1;
            }
            return setting.pattern == 1 ? days / (interval * 7) * 5 : days / interval;
        case kRecurWeekly:
            return interval < 1 ? -1 : days / (interval * 7) * CountBits(setting.pattern & 0x7F);
        case kRecurMonthly:
            if (interval < 1) {
                return -1;
            }
            return ((long(until.month) - start.month) + 12L * (long(until.year) - start.year)) /
                   interval;
        case kRecurYearly:
            return long(until.year) - start.year;
        default:
            return days;
    }
}

}  // namespace

bool ComputeSeriesEnd(_RecurInfo& setting, int& count, PLDate& last) {
    const long limit = SeriesLimit();
    for (;;) {
        if (setting.count == kHandOverCount) {
            return CountUntilDate(setting, count, last);
        }
        if (setting.count < 0) {
            return false;
        }
        if (!LastOccurrence(setting, count, last)) {
            return false;
        }
        if (setting.count == 0) {
            return true;
        }
        if (limit > setting.lastStamp && setting.lastStamp >= setting.startStamp) {
            return true;
        }
        setting.count -= 1;
        if (setting.count < 1) {
            return false;
        }
    }
}

bool CountUntilDate(_RecurInfo& setting, int& count, PLDate& until) {
    const PLDate start = StartDateOf(setting);
    const PLTime endOfDay(23, 59, 59);
    const long untilInstant = PLDate2TimeStamp(&until, &endOfDay);
    if (until < start) {
        return false;
    }
    long estimate = EstimateSteps(setting, start, until);
    if (estimate < 0) {
        return false;
    }
    if (estimate > kUntilSearchCap - 1) {
        estimate = kUntilSearchCap;
    }
    int chosen = 0;
    PLDate last;
    for (;;) {
        setting.count = int(estimate);
        int computed = 0;
        if (!ComputeSeriesEnd(setting, computed, last)) {
            return false;
        }
        if (computed < estimate) {
            chosen = computed;  // the 2030 limit lowered it
            break;
        }
        const long tried = estimate;
        ++estimate;
        if (setting.lastStamp > untilInstant || estimate > kUntilSearchCap) {
            chosen = int(tried - 1);
            break;
        }
    }
    setting.count = chosen;
    if (!ComputeSeriesEnd(setting, count, last)) {
        return false;
    }
    until = last;
    return true;
}

// The application shell's computations: the purge cut-off, the time picker's hours, the notice
// dialog's button modes, the repeat-rule message, the editors' end-of-series check, and the series
// end and until-date counts for every kind (the 2030 cut, the count hand-over, the cap).
#include <gtest/gtest.h>

#include <cstring>
#include <ctime>
#include <memory>

#include "app/VtCalendarHelpers.h"
#include "app/VtCalendarPurge.h"
#include "app/VtCalendarSeriesEnd.h"
#include "calendar/calendar_support.h"
#include "recur/VtCalendarRecurEnd.h"
#include "recur/VtCalendarSetRecurMsg.h"

namespace {

std::tm LocalTm(int year, int month, int day, int hour) {
    const std::time_t stamp = Stamp(year, month, day, hour);
    std::tm t{};
    localtime_r(&stamp, &t);
    return t;
}

TEST(Purge, CutoffByKeepTime) {
    const std::tm march31 = LocalTm(2026, 3, 31, 10);
    const std::tm january15 = LocalTm(2026, 1, 15, 10);
    const struct {
        const char* name;
        long option;
        std::tm now;
        long cutoff;  // 0: nothing is purged
    } rows[] = {
        // clang-format off
        {"one week", 11452, march31, Stamp(2026, 3, 24, 10)},
        {"one month from the 31st carries past february", 11453, march31, Stamp(2026, 3, 3, 10)},
        {"three months into the year before", 11454, january15, Stamp(2025, 10, 15, 10)},
        {"six months from the 31st", 11455, march31, Stamp(2025, 10, 1, 10)},
        {"one year", 11456, march31, Stamp(2025, 3, 31, 10)},
        {"one month in january", 11453, january15, Stamp(2025, 12, 15, 10)},
        {"keep everything", 11457, march31, 0},
        {"below the options", 11451, march31, 0},
        {"zero", 0, march31, 0},
        {"above the options", 11458, march31, 0},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        long cutoff = -1;
        EXPECT_EQ(VtCalendarPurgeCutoff(row.option, row.now, cutoff), row.cutoff != 0);
        EXPECT_EQ(cutoff, row.cutoff != 0 ? row.cutoff : -1);
    }
}

TEST(TimePicker, HoursOfBothForms) {
    const struct {
        const char* name;
        long hour;
        bool twelve;
        const char* suffix;
        int expected;
    } rows[] = {
        // clang-format off
        {"12 AM is midnight", 12, true, "AM", 0}, {"12 PM is noon", 12, true, "PM", 12},
        {"1 PM", 1, true, "PM", 13}, {"11 AM", 11, true, "AM", 11}, {"11 PM", 11, true, "PM", 23},
        {"24-hour form as it stands", 17, false, "PM", 17}, {"24-hour midnight", 0, false, "AM", 0},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(TimePickerHour24(row.hour, row.twelve, row.suffix), row.expected);
    }
}

TEST(InfoDialog, UnknownButtonModeShowsNothing) {
    EXPECT_EQ(ShowInfoDialog(32050, 10882, 2, 0, 0), 0);
    EXPECT_EQ(ShowInfoDialog(32050, 10882, -1, 0, 0), 0);
}

// A one-hour event starting at 09:00 on `start` with the given rule; the count is left as made.
_RecurInfo Setting(const PLDate& start, int kind, int interval, int pattern) {
    const int32_t at = int32_t(PLDate2TimeStamp(start, PLTime(9, 0, 0)));
    return {at, at + 3600, interval, pattern, 0, 0, kind};
}

// The event form receives a clone: the rule and the three numbers must survive it.
TEST(RecurMessage, CloneCarriesTheRule) {
    _RecurInfo rule = Setting({2026, 3, 2}, kRecurWeekly, 2, 0x0A);
    rule.lastStamp = int32_t(Stamp(2026, 6, 1, 9));
    rule.count = 12;
    VtCalendarSetRecurMsg message(11660, rule, kRecurMessageID, 0x3F3F3F3F);
    std::unique_ptr<PLMessage> clone(message.Clone());
    auto* copy = dynamic_cast<VtCalendarSetRecurMsg*>(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->GetMessageID(), kRecurMessageID);
    EXPECT_EQ(copy->GetSenderID(), 11660u);
    EXPECT_EQ(copy->GetUserMessageID(), 0x3F3F3F3Fu);
    EXPECT_EQ(std::memcmp(&copy->GetSetting(), &rule, sizeof rule), 0);
}

// The counts and series ends themselves are the series-end tests' business; these rows are the
// end modes, what the daily and the other editors write for "until", counts that stop the
// repetition and a count the 2030 limit lowered.
TEST(RecurEnd, EndModes) {
    const _RecurInfo daily = Setting({2026, 3, 1}, kRecurDaily, 1, 0);
    const _RecurInfo sundays = Setting({2026, 3, 1}, kRecurWeekly, 1, 1);  // the 1st is a Sunday
    using M = VtRecurEndMode;
    constexpr VtRecurEndResult ok = VtRecurEndResult::Accepted;
    const struct {
        const char* name;
        _RecurInfo rule;
        VtRecurEndMode mode;
        const char* countText;
        PLDate until;
        VtRecurEndResult result;
        int32_t kind, count;
        long lastStamp;
    } rows[] = {
        // clang-format off
        {"no end", daily, M::NoEnd, "", {}, ok, kRecurDaily, kRecurNoEnd, Stamp(2030, 12, 31, 23, 59, 59)},
        {"until a later date, daily writes 0", daily, M::UntilDate, "", {2026, 3, 2}, ok,
         kRecurDaily, 0, Stamp(2026, 3, 2, 23, 59, 59)},
        {"until the start day, weekly writes -1", sundays, M::UntilDate, "", {2026, 3, 1}, ok,
         kRecurWeekly, -1, Stamp(2026, 3, 1, 23, 59, 59)},
        {"until before the start is refused", daily, M::UntilDate, "", {2026, 2, 28},
         VtRecurEndResult::UntilBeforeStart, kRecurDaily, 0, Stamp(2026, 2, 28, 23, 59, 59)},
        {"three occurrences", daily, M::AfterCount, "3", {}, ok, kRecurDaily, 3, Stamp(2026, 3, 3, 9)},
        {"count 0 stops the repetition", daily, M::AfterCount, "0", {}, ok, kRecurNone, 0, 0},
        {"an empty count stops the repetition", daily, M::AfterCount, "", {}, ok, kRecurNone, 0, 0},
        {"a series reaching 2031 is cut", Setting({2030, 12, 25}, kRecurDaily, 1, 0), M::AfterCount,
         "10", {}, ok, kRecurDaily, 7, Stamp(2030, 12, 31, 9)},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        _RecurInfo rule = row.rule;
        const VtRecurEndInput input{row.mode, row.countText, row.until,
                                    row.rule.kind == kRecurDaily};
        PLDate last;
        EXPECT_EQ(CheckRecurEnd(rule, input, last), row.result);
        EXPECT_EQ(rule.kind, row.kind);
        EXPECT_EQ(rule.count, row.count);
        EXPECT_EQ(rule.lastStamp, row.lastStamp);
    }
}

// The monthly and yearly editors skip the computation for the count they computed last.
TEST(RecurEnd, CachedCountSkipsTheFirstComputation) {
    _RecurInfo rule = Setting({2026, 3, 1}, kRecurMonthly, 1, 1);
    rule.lastStamp = int32_t(Stamp(2026, 8, 1, 9));  // as computed earlier for six
    int32_t cache = 6;
    VtRecurEndInput input{VtRecurEndMode::AfterCount, "6", {}, false, &cache};
    PLDate last;
    EXPECT_EQ(CheckRecurEnd(rule, input, last), VtRecurEndResult::Accepted);
    EXPECT_EQ(rule.lastStamp, Stamp(2026, 8, 1, 9));
    input.countText = "2";
    EXPECT_EQ(CheckRecurEnd(rule, input, last), VtRecurEndResult::Accepted);
    EXPECT_EQ(rule.lastStamp, Stamp(2026, 4, 1, 9));
    EXPECT_EQ(cache, 2);
}

// ----------------------------------------------------------------------------- series end

PLDate DateOf(long stamp) {
    PLDate date;
    TimeStamp2PLDate(stamp, &date, nullptr);
    return date;
}

struct SeriesRow {
    const char* name;
    PLDate start;
    int kind, interval, pattern, count;
    bool ok;
    int wantCount;
    PLDate wantLast;
    PLDate wantStart;  // where the series' first occurrence moved the start
};

// clang-format off
const SeriesRow kSeriesRows[] = {
    {"daily_every_day", {2025, 3, 10}, kRecurDaily, 1, 0, 10, true, 10, {2025, 3, 19}, {2025, 3, 10}},
    {"daily_every_third", {2025, 3, 10}, kRecurDaily, 3, 0, 4, true, 4, {2025, 3, 19}, {2025, 3, 10}},
    {"workdays_from_monday", {2025, 3, 10}, kRecurDaily, 1, 1, 6, true, 6, {2025, 3, 17}, {2025, 3, 10}},
    {"workdays_over_weekend", {2025, 3, 13}, kRecurDaily, 1, 1, 3, true, 3, {2025, 3, 17}, {2025, 3, 13}},
    {"weekly_moves_start", {2025, 3, 9}, kRecurWeekly, 1, 0x2A, 4, true, 4, {2025, 3, 17}, {2025, 3, 10}},
    {"weekly_every_second", {2025, 3, 4}, kRecurWeekly, 2, 0x04, 3, true, 3, {2025, 4, 1}, {2025, 3, 4}},
    {"weekly_skips_odd_week", {2025, 3, 7}, kRecurWeekly, 2, 0x22, 2, true, 2, {2025, 3, 17}, {2025, 3, 7}},
    {"weekly_no_weekday", {2025, 3, 7}, kRecurWeekly, 1, 0, 2, false, 0, {}, {2025, 3, 7}},
    {"monthly_day_next_month", {2025, 1, 20}, kRecurMonthly, 1, 15, 3, true, 3, {2025, 4, 15}, {2025, 2, 15}},
    {"monthly_31_clamped", {2025, 1, 5}, kRecurMonthly, 1, 31, 4, true, 4, {2025, 4, 30}, {2025, 1, 31}},
    {"monthly_31_first_clamp_kept", {2025, 4, 10}, kRecurMonthly, 1, 30 + 1, 2, true, 2,
     {2025, 5, 30}, {2025, 4, 30}},
    {"monthly_second_tuesday", {2025, 3, 1}, kRecurMonthly, 1, 0x0203, 3, true, 3, {2025, 5, 13},
     {2025, 3, 11}},
    {"monthly_last_friday_next", {2025, 3, 30}, kRecurMonthly, 1, 0x0506, 2, true, 2, {2025, 5, 30},
     {2025, 4, 25}},
    {"yearly_later_this_year", {2025, 3, 1}, kRecurYearly, 6, 15, 3, true, 3, {2027, 6, 15}, {2025, 6, 15}},
    {"yearly_feb_29_clamped", {2024, 1, 10}, kRecurYearly, 2, 29, 2, true, 2, {2025, 2, 28}, {2024, 2, 29}},
    {"yearly_passed_next_year", {2025, 5, 1}, kRecurYearly, 3, 1, 1, true, 1, {2026, 3, 1}, {2026, 3, 1}},
    {"yearly_second_sunday_may", {2025, 1, 1}, kRecurYearly, 5, 0x0201, 2, true, 2, {2026, 5, 10},
     {2025, 5, 11}},
    {"none_counts_days", {2025, 3, 10}, kRecurNone, 0, 0, 3, true, 3, {2025, 3, 12}, {2025, 3, 10}},
    {"count_zero_is_start", {2025, 3, 10}, kRecurDaily, 1, 0, 0, true, 0, {2025, 3, 10}, {2025, 3, 10}},
    {"count_negative", {2025, 3, 10}, kRecurDaily, 1, 0, -1, false, 0, {}, {2025, 3, 10}},
    {"cut_at_2030", {2030, 12, 25}, kRecurDaily, 1, 0, 10, true, 7, {2030, 12, 31}, {2030, 12, 25}},
    {"nothing_fits_before_2031", {2031, 1, 5}, kRecurDaily, 1, 0, 3, false, 0, {}, {2031, 1, 5}},
    {"monthly_interval_zero_no_crash", {2025, 3, 10}, kRecurMonthly, 0, 15, 3, true, 3,
     {2025, 3, 15}, {2025, 3, 15}},
    {"weekly_huge_interval_ends", {2025, 3, 4}, kRecurWeekly, 999, 0x06, 999, true, 1, {2025, 3, 4},
     {2025, 3, 4}},
    {"daily_interval_overflow", {2025, 3, 10}, kRecurDaily, 0x7FFFFFFF, 0, 3, true, 1,
     {2025, 3, 10}, {2025, 3, 10}},
    {"daily_negative_interval", {2025, 3, 10}, kRecurDaily, -5, 0, 3, true, 1, {2025, 3, 10}, {2025, 3, 10}},
};
// clang-format on

TEST(SeriesEnd, LastOccurrenceByKind) {
    for (const SeriesRow& row : kSeriesRows) {
        SCOPED_TRACE(row.name);
        _RecurInfo setting = Setting(row.start, row.kind, row.interval, row.pattern);
        setting.count = row.count;
        int count = -99;
        PLDate last;
        const bool ok = ComputeSeriesEnd(setting, count, last);
        ASSERT_EQ(ok, row.ok);
        EXPECT_EQ(DateOf(setting.startStamp), row.wantStart);
        if (!row.ok) {
            continue;
        }
        EXPECT_EQ(count, row.wantCount);
        EXPECT_EQ(last, row.wantLast);
        EXPECT_EQ(DateOf(setting.lastStamp), row.wantLast);
        // The last stamp keeps the start's time of day.
        EXPECT_EQ((setting.lastStamp - setting.startStamp) % 86400, 0);
    }
}

struct UntilRow {
    const char* name;
    PLDate start;
    int kind, interval, pattern;
    PLDate until;
    bool viaHandOver;  // run through ComputeSeriesEnd with count 1001
    bool ok;
    int wantCount;
    PLDate wantLast;
};

// clang-format off
const UntilRow kUntilRows[] = {
    {"daily_until_day", {2025, 3, 10}, kRecurDaily, 1, 0, {2025, 3, 14}, false, true, 5, {2025, 3, 14}},
    {"count_1001_hands_over", {2025, 3, 10}, kRecurDaily, 1, 0, {2025, 3, 14}, true, true, 5, {2025, 3, 14}},
    {"until_equals_start", {2025, 3, 10}, kRecurDaily, 1, 0, {2025, 3, 10}, false, true, 1, {2025, 3, 10}},
    {"search_cap_gives_99", {2025, 1, 1}, kRecurDaily, 1, 0, {2025, 12, 31}, false, true, 99, {2025, 4, 9}},
    {"weekly_two_days", {2025, 3, 3}, kRecurWeekly, 1, 0x12, {2025, 3, 20}, false, true, 6, {2025, 3, 20}},
    {"monthly_until", {2025, 1, 15}, kRecurMonthly, 1, 15, {2025, 6, 14}, false, true, 5, {2025, 5, 15}},
    {"yearly_until", {2025, 1, 1}, kRecurYearly, 7, 4, {2028, 7, 4}, false, true, 4, {2028, 7, 4}},
    {"lowered_by_2030", {2030, 12, 1}, kRecurDaily, 1, 0, {2031, 6, 1}, false, true, 31, {2030, 12, 31}},
    {"until_before_start", {2025, 3, 10}, kRecurDaily, 2, 0, {2025, 3, 9}, false, false, 0, {}},
    {"interval_zero", {2025, 3, 10}, kRecurDaily, 0, 0, {2025, 3, 20}, false, false, 0, {}},
};
// clang-format on

TEST(SeriesEnd, CountUntilDate) {
    for (const UntilRow& row : kUntilRows) {
        SCOPED_TRACE(row.name);
        _RecurInfo setting = Setting(row.start, row.kind, row.interval, row.pattern);
        PLDate date = row.until;
        int count = -99;
        bool ok = false;
        if (row.viaHandOver) {
            setting.count = 1001;
            ok = ComputeSeriesEnd(setting, count, date);
        } else {
            ok = CountUntilDate(setting, count, date);
        }
        ASSERT_EQ(ok, row.ok);
        if (!row.ok) {
            continue;
        }
        EXPECT_EQ(count, row.wantCount);
        EXPECT_EQ(setting.count, row.wantCount);
        EXPECT_EQ(date, row.wantLast);
        EXPECT_EQ(DateOf(setting.lastStamp), row.wantLast);
    }
}

}  // namespace

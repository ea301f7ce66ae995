// Series end and until-date counts for every kind, the 2030 cut, the count hand-over and the cap.
#include "app/VtCalendarSeriesEnd.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

#include "PLTimeStamp.h"

namespace {

class SeriesEndTest : public ::testing::Test {
protected:
    void SetUp() override {
        const char* zone = std::getenv("TZ");
        mSavedZone = zone ? zone : "";
        setenv("TZ", "UTC", 1);
        tzset();
    }
    void TearDown() override {
        setenv("TZ", mSavedZone.c_str(), 1);
        tzset();
    }

private:
    std::string mSavedZone;
};

long At(int y, int m, int d, int hour = 9) {
    const PLDate date(y, m, d);
    const PLTime time(hour, 0, 0);
    return PLDate2TimeStamp(&date, &time);
}

PLDate DateOf(long stamp) {
    PLDate date;
    TimeStamp2PLDate(stamp, &date, nullptr);
    return date;
}

struct Ymd {
    int y, m, d;
};

::testing::AssertionResult SameDay(const PLDate& got, Ymd want) {
    if (got.year == want.y && got.month == want.m && got.day == want.d) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << "got " << got.year << "-" << int(got.month) << "-" << int(got.day) << ", want "
           << want.y << "-" << want.m << "-" << want.d;
}

// A one-hour event starting at 09:00 on `start` with the given rule; the count is left as made.
_RecurInfo Setting(Ymd start, int kind, int interval, int pattern) {
    _RecurInfo setting;
    setting.startStamp = int32_t(At(start.y, start.m, start.d));
    setting.endStamp = setting.startStamp + 3600;
    setting.interval = interval;
    setting.pattern = pattern;
    setting.kind = kind;
    return setting;
}

struct SeriesRow {
    const char* name;
    Ymd start;
    int kind, interval, pattern, count;
    bool ok;
    int wantCount;
    Ymd wantLast;
    Ymd wantStart;  // where the series' first occurrence moved the start
};

// One row a line: the table reads as a table.
// clang-format off
const SeriesRow kSeriesRows[] = {
    {"daily_every_day", {2025, 3, 10}, kRecurDaily, 1, 0, 10, true, 10, {2025, 3, 19}, {2025, 3, 10}},
    {"daily_every_third", {2025, 3, 10}, kRecurDaily, 3, 0, 4, true, 4, {2025, 3, 19}, {2025, 3, 10}},
    {"workdays_from_monday", {2025, 3, 10}, kRecurDaily, 1, 1, 6, true, 6, {2025, 3, 17}, {2025, 3, 10}},
    {"workdays_over_weekend", {2025, 3, 13}, kRecurDaily, 1, 1, 3, true, 3, {2025, 3, 17}, {2025, 3, 13}},
    {"weekly_moves_start", {2025, 3, 9}, kRecurWeekly, 1, 0x2A, 4, true, 4, {2025, 3, 17}, {2025, 3, 10}},
    {"weekly_every_second", {2025, 3, 4}, kRecurWeekly, 2, 0x04, 3, true, 3, {2025, 4, 1}, {2025, 3, 4}},
    {"weekly_skips_odd_week", {2025, 3, 7}, kRecurWeekly, 2, 0x22, 2, true, 2, {2025, 3, 17}, {2025, 3, 7}},
    {"weekly_no_weekday", {2025, 3, 7}, kRecurWeekly, 1, 0, 2, false, 0, {0, 0, 0}, {2025, 3, 7}},
    {"monthly_day_next_month", {2025, 1, 20}, kRecurMonthly, 1, 15, 3, true, 3, {2025, 4, 15}, {2025, 2, 15}},
    {"monthly_31_clamped", {2025, 1, 5}, kRecurMonthly, 1, 31, 4, true, 4, {2025, 4, 30}, {2025, 1, 31}},
    {"monthly_31_first_clamp_kept", {2025, 4, 10}, kRecurMonthly, 1, 30 + 1, 2, true, 2, {2025, 5, 30}, {2025, 4, 30}},
    {"monthly_second_tuesday", {2025, 3, 1}, kRecurMonthly, 1, 0x0203, 3, true, 3, {2025, 5, 13}, {2025, 3, 11}},
    {"monthly_last_friday_next", {2025, 3, 30}, kRecurMonthly, 1, 0x0506, 2, true, 2, {2025, 5, 30}, {2025, 4, 25}},
    {"yearly_later_this_year", {2025, 3, 1}, kRecurYearly, 6, 15, 3, true, 3, {2027, 6, 15}, {2025, 6, 15}},
    {"yearly_feb_29_clamped", {2024, 1, 10}, kRecurYearly, 2, 29, 2, true, 2, {2025, 2, 28}, {2024, 2, 29}},
    {"yearly_passed_next_year", {2025, 5, 1}, kRecurYearly, 3, 1, 1, true, 1, {2026, 3, 1}, {2026, 3, 1}},
    {"yearly_second_sunday_may", {2025, 1, 1}, kRecurYearly, 5, 0x0201, 2, true, 2, {2026, 5, 10}, {2025, 5, 11}},
    {"none_counts_days", {2025, 3, 10}, kRecurNone, 0, 0, 3, true, 3, {2025, 3, 12}, {2025, 3, 10}},
    {"count_zero_is_start", {2025, 3, 10}, kRecurDaily, 1, 0, 0, true, 0, {2025, 3, 10}, {2025, 3, 10}},
    {"count_negative", {2025, 3, 10}, kRecurDaily, 1, 0, -1, false, 0, {0, 0, 0}, {2025, 3, 10}},
    {"cut_at_2030", {2030, 12, 25}, kRecurDaily, 1, 0, 10, true, 7, {2030, 12, 31}, {2030, 12, 25}},
    {"nothing_fits_before_2031", {2031, 1, 5}, kRecurDaily, 1, 0, 3, false, 0, {0, 0, 0}, {2031, 1, 5}},
    {"monthly_interval_zero_no_crash", {2025, 3, 10}, kRecurMonthly, 0, 15, 3, true, 3, {2025, 3, 15}, {2025, 3, 15}},
    {"weekly_huge_interval_ends", {2025, 3, 4}, kRecurWeekly, 999, 0x06, 999, true, 1, {2025, 3, 4}, {2025, 3, 4}},
    {"daily_interval_overflow", {2025, 3, 10}, kRecurDaily, 0x7FFFFFFF, 0, 3, true, 1, {2025, 3, 10}, {2025, 3, 10}},
    {"daily_negative_interval", {2025, 3, 10}, kRecurDaily, -5, 0, 3, true, 1, {2025, 3, 10}, {2025, 3, 10}},
};
// clang-format on

TEST_F(SeriesEndTest, LastOccurrenceByKind) {
    for (const SeriesRow& row : kSeriesRows) {
        SCOPED_TRACE(row.name);
        _RecurInfo setting = Setting(row.start, row.kind, row.interval, row.pattern);
        setting.count = row.count;
        int count = -99;
        PLDate last;
        const bool ok = ComputeSeriesEnd(setting, count, last);
        ASSERT_EQ(ok, row.ok);
        EXPECT_TRUE(SameDay(DateOf(setting.startStamp), row.wantStart));
        if (!row.ok) {
            continue;
        }
        EXPECT_EQ(count, row.wantCount);
        EXPECT_TRUE(SameDay(last, row.wantLast));
        EXPECT_TRUE(SameDay(DateOf(setting.lastStamp), row.wantLast));
        // The last stamp keeps the start's time of day.
        EXPECT_EQ((setting.lastStamp - setting.startStamp) % 86400, 0);
    }
}

struct UntilRow {
    const char* name;
    Ymd start;
    int kind, interval, pattern;
    Ymd until;
    bool viaHandOver;  // run through ComputeSeriesEnd with count 1001
    bool ok;
    int wantCount;
    Ymd wantLast;
};

// One row a line: the table reads as a table.
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
    {"until_before_start", {2025, 3, 10}, kRecurDaily, 2, 0, {2025, 3, 9}, false, false, 0, {0, 0, 0}},
    {"interval_zero", {2025, 3, 10}, kRecurDaily, 0, 0, {2025, 3, 20}, false, false, 0, {0, 0, 0}},
};
// clang-format on

TEST_F(SeriesEndTest, CountUntilDate) {
    for (const UntilRow& row : kUntilRows) {
        SCOPED_TRACE(row.name);
        _RecurInfo setting = Setting(row.start, row.kind, row.interval, row.pattern);
        PLDate date(row.until.y, row.until.m, row.until.d);
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
        EXPECT_TRUE(SameDay(date, row.wantLast));
        EXPECT_TRUE(SameDay(DateOf(setting.lastStamp), row.wantLast));
    }
}

}  // namespace

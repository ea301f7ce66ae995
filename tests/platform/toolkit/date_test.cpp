// Dates against the C library's calendar, carrying of fields, n-th weekdays, and the clock.
#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "PLClock.h"
#include "PLDate.h"
#include "toolkit_support.h"

namespace {

constexpr int kSunday = 1, kMonday = 2, kWednesday = 4, kThursday = 5, kFriday = 6;

using YMD = std::tuple<int, int, int>;

// The fields, and the day number that goes with them.
void ExpectFields(const PLDate& date, YMD expected) {
    EXPECT_EQ(YMD(date.year, date.month, date.day), expected);
    EXPECT_EQ(date.dayNumber, std::apply(PLDate::DayNumberOf, expected));
}

// Every day from 1900 to 2100 against gmtime: fields, weekday, month length and arithmetic.
TEST(PLDateTest, AgreesWithTheCLibraryFrom1900To2100) {
    EXPECT_EQ(PLDate(1, 1, 3).dayNumber, 0);
    EXPECT_EQ(PLDate(1, 1, 3).Weekday(), kWednesday);
    const PLDate first(1900, 1, 1);
    const long firstSeconds = UtcSeconds(1900, 1, 1);
    const int days = PLDate(2101, 1, 1) - first;
    ASSERT_EQ(days, 73414);
    for (int offset = 0; offset < days; ++offset) {
        const std::time_t moment = std::time_t(firstSeconds + long(offset) * 86400);
        std::tm fields{}, next{};
        gmtime_r(&moment, &fields);
        const std::time_t tomorrow = moment + 86400;
        gmtime_r(&tomorrow, &next);
        const PLDate date = first + offset;
        const YMD ymd(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday);
        ASSERT_EQ(date, std::make_from_tuple<PLDate>(ymd)) << offset;
        ASSERT_EQ(YMD(date.year, date.month, date.day), ymd);
        ASSERT_EQ(date.Weekday(), fields.tm_wday + 1);
        const int length = PLDate::NumberOfDaysInMonth(date.month, date.year);
        ASSERT_EQ(next.tm_mday == 1, date.day == length) << "month length at " << offset;
        ASSERT_EQ(date - offset, first);
        PLDate back = date;
        back -= offset;
        ASSERT_EQ(back, first);
    }
    EXPECT_EQ(PLDate::NumberOfDaysInMonth(0, 2026), 0);
    EXPECT_EQ(PLDate::NumberOfDaysInMonth(13, 2026), 0);
}

TEST(PLDateTest, FixFromMDYCarriesOutOfRangeFields) {
    const std::tuple<const char*, YMD, YMD> rows[] = {
        {"month 13", {2026, 13, 5}, {2027, 1, 5}},
        {"month 0", {2026, 0, 5}, {2025, 12, 5}},
        {"month 25", {2026, 25, 1}, {2028, 1, 1}},
        {"day 0", {2026, 3, 0}, {2026, 2, 28}},
        {"day 0 in leap year", {2024, 3, 0}, {2024, 2, 29}},
        {"day 0 of january", {2026, 1, 0}, {2025, 12, 31}},
        {"day 32 of january", {2026, 1, 32}, {2026, 2, 1}},
        {"day 31 of april", {2026, 4, 31}, {2026, 5, 1}},
        {"day 29 of february 1900", {1900, 2, 29}, {1900, 3, 1}},
        {"valid date unchanged", {2030, 12, 31}, {2030, 12, 31}},
    };
    for (const auto& [name, in, out] : rows) {
        SCOPED_TRACE(name);
        PLDate date;
        std::tie(date.year, date.month, date.day) = in;
        date.FixFromMDY();
        ExpectFields(date, out);
    }
    // Wild fields are clamped to four-digit years, not wrapped by the 16-bit field.
    ExpectFields(PLDate(70000, 1, 1), {9999, 12, 31});
    PLDate date;
    date.dayNumber = -100000;
    date.FixFromDayNumber();
    ExpectFields(date, {1, 1, 1});
}

TEST(PLDateTest, GetStartWeekdayFindsTheNthWeekday) {
    const std::tuple<const char*, YMD, int, int, bool, YMD> rows[] = {
        {"first monday of november 2026", {2026, 11, 21}, 1, kMonday, true, {2026, 11, 2}},
        {"first sunday falls on the 1st", {2026, 11, 30}, 1, kSunday, true, {2026, 11, 1}},
        {"fourth thursday", {2026, 11, 1}, 4, kThursday, true, {2026, 11, 26}},
        {"fifth monday exists: still the last", {2026, 11, 1}, 5, kMonday, true, {2026, 11, 30}},
        {"fifth friday missing: last friday", {2026, 11, 1}, 5, kFriday, true, {2026, 11, 27}},
        {"week 9 means last", {2024, 2, 1}, 9, kThursday, true, {2024, 2, 29}},
        {"week 0 rejected", {2026, 11, 21}, 0, kMonday, false, {2026, 11, 21}},
        {"weekday 0 rejected", {2026, 11, 21}, 1, 0, false, {2026, 11, 21}},
        {"weekday 8 rejected", {2026, 11, 21}, 1, 8, false, {2026, 11, 21}},
    };
    for (const auto& [name, start, week, weekday, ok, result] : rows) {
        SCOPED_TRACE(name);
        PLDate date = std::make_from_tuple<PLDate>(start);
        EXPECT_EQ(GetStartWeekday(date, week, weekday), ok);
        ExpectFields(date, result);
    }
}

TEST(PLClockTest, PinAdvanceAndTodayInLocalTime) {
    PLClock::Pin(-1);  // just before the epoch reads as the second before it
    EXPECT_EQ(PLClock::Now(), -1);
    PLClock::Pin(1'800'000'000'500);
    PLClock::Advance(1'600);
    EXPECT_EQ(PLClock::NowMs(), 1'800'000'002'100);
    EXPECT_EQ(PLClock::Now(), 1'800'000'002);
    {
        ScopedTZ zone("Asia/Shanghai");
        PLClock::Pin(int64_t(UtcSeconds(2026, 11, 21, 17, 0)) * 1000);  // 01:00 on the 22nd there
        ExpectFields(PLDate::Today(), {2026, 11, 22});
    }
    PLClock::Unpin();
    EXPECT_FALSE(PLClock::IsPinned());
}

TEST(PLClockTest, ParseLocal) {
    // The expected seconds, or -1 when the text is refused.
    const std::tuple<const char*, const char*, const char*, long> rows[] = {
        {"minutes only", "UTC", "2026-11-21 10:00", UtcSeconds(2026, 11, 21, 10, 0, 0)},
        {"with seconds", "UTC", "2026-11-21 10:00:59", UtcSeconds(2026, 11, 21, 10, 0, 59)},
        {"local in new york", "America/New_York", "2026-07-01 09:00", UtcSeconds(2026, 7, 1, 13)},
        {"local in shanghai", "Asia/Shanghai", "2030-12-31 23:59:00",
         UtcSeconds(2030, 12, 31, 15, 59)},
        {"leap day", "UTC", "2024-02-29 00:00", UtcSeconds(2024, 2, 29)},
        {"no leap day in 2100", "UTC", "2100-02-29 00:00", -1},
        {"month 13", "UTC", "2026-13-01 00:00", -1},
        {"day 31 of april", "UTC", "2026-04-31 00:00", -1},
        {"hour 24", "UTC", "2026-11-21 24:00", -1},
        {"minute 60", "UTC", "2026-11-21 10:60", -1},
        {"second 60", "UTC", "2026-11-21 10:00:60", -1},
        {"missing time", "UTC", "2026-11-21", -1},
        {"one-digit hour", "UTC", "2026-11-21 9:00", -1},
        {"trailing text", "UTC", "2026-11-21 10:00 x", -1},
        {"dangling colon", "UTC", "2026-11-21 10:00:", -1},
        {"T separator", "UTC", "2026-11-21T10:00", -1},
        {"empty", "UTC", "", -1},
        {"year 0", "UTC", "0000-01-01 00:00", -1},
    };
    for (const auto& [name, zoneName, text, utc] : rows) {
        SCOPED_TRACE(name);
        ScopedTZ zone(zoneName);
        int64_t ms = -12345;
        EXPECT_EQ(PLClock::ParseLocal(text, ms), utc != -1);
        EXPECT_EQ(ms, utc != -1 ? int64_t(utc) * 1000 : -12345);
    }
    int64_t ms = 0;
    EXPECT_FALSE(PLClock::ParseLocal(nullptr, ms));
}

}  // namespace

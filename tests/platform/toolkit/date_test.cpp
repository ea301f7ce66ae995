// Dates: day numbers, weekdays, month lengths, carrying of fields, arithmetic, n-th weekdays.
#include <gtest/gtest.h>

#include "PLClock.h"
#include "PLDate.h"
#include "toolkit_support.h"

namespace {

constexpr int kSunday = 1, kMonday = 2, kTuesday = 3, kWednesday = 4, kThursday = 5, kFriday = 6,
              kSaturday = 7;

struct YMD {
    int year, month, day;
};

void ExpectFields(const PLDate& date, YMD expected) {
    EXPECT_EQ(date.year, expected.year);
    EXPECT_EQ(date.month, expected.month);
    EXPECT_EQ(date.day, expected.day);
}

TEST(PLDateTest, WeekdayOfKnownDates) {
    struct Row {
        const char* name;
        YMD date;
        int weekday;
    } rows[] = {
        {"epoch of the day count", {1, 1, 3}, kWednesday},
        {"first day of 1900", {1900, 1, 1}, kMonday},
        {"unix epoch", {1970, 1, 1}, kThursday},
        {"leap day 2000", {2000, 2, 29}, kTuesday},
        {"a Saturday", {2026, 11, 21}, kSaturday},
        {"a Sunday", {2026, 11, 22}, kSunday},
        {"a Friday", {2030, 12, 27}, kFriday},
        {"last day of 2100", {2100, 12, 31}, kFriday},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLDate date(row.date.year, row.date.month, row.date.day);
        EXPECT_EQ(date.Weekday(), row.weekday);
        EXPECT_EQ(date.Weekday(), (date.dayNumber + 3) % 7 + 1);
    }
    EXPECT_EQ(PLDate(1, 1, 3).dayNumber, 0);
}

// Every day from 1900 to 2100 against the C library's own UTC calendar.
TEST(PLDateTest, AgreesWithTheCLibraryFrom1900To2100) {
    const PLDate first(1900, 1, 1);
    const long firstSeconds = UtcSeconds(1900, 1, 1);
    const int days = PLDate(2101, 1, 1) - first;
    ASSERT_EQ(days, 73414);
    for (int offset = 0; offset < days; ++offset) {
        const std::time_t moment = std::time_t(firstSeconds + long(offset) * 86400);
        std::tm fields{};
        gmtime_r(&moment, &fields);
        const PLDate byNumber = first + offset;
        const PLDate byFields(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday);
        ASSERT_EQ(byNumber.dayNumber, byFields.dayNumber) << "offset " << offset;
        ASSERT_EQ(byNumber.year, byFields.year);
        ASSERT_EQ(byNumber.month, byFields.month);
        ASSERT_EQ(byNumber.day, byFields.day);
        ASSERT_EQ(byNumber.Weekday(), fields.tm_wday + 1);
    }
}

TEST(PLDateTest, MonthLengthsAndLeapYears) {
    struct Row {
        const char* name;
        int month, year, days;
    } rows[] = {
        {"february 1900 (century)", 2, 1900, 28},
        {"february 2000 (400 years)", 2, 2000, 29},
        {"february 2100 (century)", 2, 2100, 28},
        {"february 2024", 2, 2024, 29},
        {"february 2026", 2, 2026, 28},
        {"april", 4, 2026, 30},
        {"december", 12, 2026, 31},
        {"month 0", 0, 2026, 0},
        {"month 13", 13, 2026, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(PLDate::NumberOfDaysInMonth(row.month, row.year), row.days);
        if (row.month == 2) {
            EXPECT_EQ(PLDate::IsLeapYear(row.year), row.days == 29);
        }
    }
}

TEST(PLDateTest, FixFromMDYCarriesOutOfRangeFields) {
    struct Row {
        const char* name;
        YMD in, out;
    } rows[] = {
        {"month 13", {2026, 13, 5}, {2027, 1, 5}},
        {"month 0", {2026, 0, 5}, {2025, 12, 5}},
        {"day 0", {2026, 3, 0}, {2026, 2, 28}},
        {"day 0 in leap year", {2024, 3, 0}, {2024, 2, 29}},
        {"day 32 of january", {2026, 1, 32}, {2026, 2, 1}},
        {"day 31 of april", {2026, 4, 31}, {2026, 5, 1}},
        {"day 29 of february 1900", {1900, 2, 29}, {1900, 3, 1}},
        {"day 0 of january", {2026, 1, 0}, {2025, 12, 31}},
        {"month 25", {2026, 25, 1}, {2028, 1, 1}},
        {"valid date unchanged", {2030, 12, 31}, {2030, 12, 31}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLDate date;
        date.year = uint16_t(row.in.year);
        date.month = uint8_t(row.in.month);
        date.day = uint8_t(row.in.day);
        date.FixFromMDY();
        ExpectFields(date, row.out);
        EXPECT_EQ(date.dayNumber, PLDate::DayNumberOf(row.out.year, row.out.month, row.out.day));
    }
}

TEST(PLDateTest, DayArithmeticCrossesMonthAndYearEnds) {
    struct Row {
        const char* name;
        YMD from;
        int days;
        YMD to;
    } rows[] = {
        {"into march of a leap year", {2024, 2, 28}, 1, {2024, 2, 29}},
        {"out of a leap day", {2024, 2, 29}, 1, {2024, 3, 1}},
        {"into the next year", {2026, 12, 31}, 1, {2027, 1, 1}},
        {"back into the previous year", {2027, 1, 1}, -1, {2026, 12, 31}},
        {"a whole leap year", {2000, 1, 1}, 366, {2001, 1, 1}},
        {"over the unix epoch", {1969, 12, 31}, 1, {1970, 1, 1}},
        {"to the last day of 2030", {1970, 1, 1}, 22279, {2030, 12, 31}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const PLDate from(row.from.year, row.from.month, row.from.day);
        const PLDate to = from + row.days;
        ExpectFields(to, row.to);
        EXPECT_EQ(to - from, row.days);
        EXPECT_EQ(to - row.days, from);
        PLDate moved = to;
        moved -= row.days;
        EXPECT_EQ(moved, from);
    }
}

TEST(PLDateTest, WildFieldsAreClampedNotWrapped) {
    PLDate date(70000, 1, 1);
    ExpectFields(date, {9999, 12, 31});
    date.dayNumber = -100000;
    date.FixFromDayNumber();
    ExpectFields(date, {1, 1, 1});
}

TEST(PLDateTest, TodayFollowsThePinnedClockInLocalTime) {
    ScopedTZ zone("Asia/Shanghai");
    PLClock::Pin(int64_t(UtcSeconds(2026, 11, 21, 17, 0)) * 1000);  // 01:00 on the 22nd there
    ExpectFields(PLDate::Today(), {2026, 11, 22});
    PLClock::Unpin();
}

TEST(PLDateTest, GetStartWeekdayFindsTheNthWeekday) {
    struct Row {
        const char* name;
        YMD date;
        int week, weekday;
        bool ok;
        YMD result;
    } rows[] = {
        {"first monday of november 2026", {2026, 11, 21}, 1, kMonday, true, {2026, 11, 2}},
        {"first sunday falls on the 1st", {2026, 11, 30}, 1, kSunday, true, {2026, 11, 1}},
        {"second tuesday", {2026, 11, 1}, 2, kTuesday, true, {2026, 11, 10}},
        {"fourth thursday (thanksgiving)", {2026, 11, 1}, 4, kThursday, true, {2026, 11, 26}},
        {"fifth monday exists: still the last", {2026, 11, 1}, 5, kMonday, true, {2026, 11, 30}},
        {"fifth friday missing: last friday", {2026, 11, 1}, 5, kFriday, true, {2026, 11, 27}},
        {"week 9 means last", {2024, 2, 1}, 9, kThursday, true, {2024, 2, 29}},
        {"last sunday of february 2026", {2026, 2, 1}, 5, kSunday, true, {2026, 2, 22}},
        {"week 0 rejected", {2026, 11, 21}, 0, kMonday, false, {2026, 11, 21}},
        {"weekday 0 rejected", {2026, 11, 21}, 1, 0, false, {2026, 11, 21}},
        {"weekday 8 rejected", {2026, 11, 21}, 1, 8, false, {2026, 11, 21}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLDate date(row.date.year, row.date.month, row.date.day);
        EXPECT_EQ(GetStartWeekday(date, row.week, row.weekday), row.ok);
        ExpectFields(date, row.result);
        EXPECT_EQ(date.dayNumber,
                  PLDate::DayNumberOf(row.result.year, row.result.month, row.result.day));
        if (row.ok) {
            EXPECT_EQ(date.Weekday(), row.weekday);
        }
    }
}

}  // namespace

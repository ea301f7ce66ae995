// Lunar dates against ICU's Chinese calendar on every day of the supported range, the known hard
// years by name, and refusals of dates that cannot be converted. ICU 72 reckons new moons and solar
// terms some minutes off: where a new moon, or a principal term that decides a leap month, falls
// within a quarter of an hour of midnight in China, ICU puts a month a day off. Those months are
// listed with the date published calendars give and the reason, and the comparison with ICU skips
// exactly those days.
#include <gtest/gtest.h>
#include <unicode/calendar.h>
#include <unicode/timezone.h>

#include <memory>
#include <string>
#include <tuple>

#include "APLunar.h"
#include "PLDate.h"

namespace {

// Year (the Gregorian year in which the lunar year began), month, day, leap-month flag.
using Lunar = std::tuple<int, int, int, int>;

Lunar Mine(const PLDate& d) {
    DATES out;
    EXPECT_GT(new2lunar(DATES{d.year, d.month, d.day, 0}, &out), 0)
        << d.year << "-" << int(d.month) << "-" << int(d.day);
    return {out.year, out.month, out.day, out.leapMonth};
}

struct IcuMiss {
    const char* name;
    PLDate first, last;  // the days on which ICU is a day off
    Lunar expected;      // the lunar date of `first`, as published calendars give it
    const char* why;     // times in China (UTC+8), from this module's own astronomy
};

const char* const kEarly = "ICU reckons the new moon before midnight and starts the month early";
const char* const kLate = "ICU reckons the new moon after midnight and starts the month late";
const char* const kLeap =
    "ICU reckons the principal term before midnight, into this month, so it finds no leap month";

const IcuMiss kIcuMisses[] = {
    {"1914_new_moon_0001", {1914, 11, 17}, {1914, 12, 16}, {1914, 9, 30, 0}, kEarly},
    {"1916_new_moon_0005", {1916, 2, 3}, {1916, 3, 3}, {1915, 12, 30, 0}, kEarly},
    // Principal term 30 degrees at 04-21 00:17, the day the next month begins (new moon 22:00).
    {"1917_leap_second_month", {1917, 3, 23}, {1917, 5, 20}, {1917, 2, 1, 1}, kLeap},
    {"1920_new_moon_0004", {1920, 11, 10}, {1920, 12, 9}, {1920, 9, 30, 0}, kEarly},
    // Principal term 120 degrees at 07-24 00:19, the day the next month begins (new moon 20:46).
    {"1922_leap_fifth_month", {1922, 6, 25}, {1922, 8, 22}, {1922, 5, 1, 1}, kLeap},
    {"1954_new_moon_2355", {1954, 2, 3}, {1954, 3, 4}, {1954, 1, 1, 0}, kLate},
    {"1955_new_moon_2354", {1955, 2, 22}, {1955, 3, 23}, {1955, 2, 1, 0}, kLate},
    // Principal term 150 degrees at 08-24 00:09, the day the next month begins (new moon 19:58).
    {"1987_leap_sixth_month", {1987, 7, 26}, {1987, 9, 22}, {1987, 6, 1, 1}, kLeap},
    {"1999_new_moon_2346", {1999, 1, 17}, {1999, 2, 15}, {1998, 12, 1, 0}, kLate},
    {"2012_new_moon_2354", {2012, 8, 17}, {2012, 9, 15}, {2012, 7, 1, 0}, kLate},
    {"2018_new_moon_0002", {2018, 11, 7}, {2018, 12, 6}, {2018, 9, 30, 0}, kEarly},
    {"2027_new_moon_2356", {2027, 2, 6}, {2027, 3, 7}, {2027, 1, 1, 0}, kLate},
    {"2030_new_moon_0007", {2030, 2, 2}, {2030, 3, 3}, {2029, 12, 30, 0}, kEarly},
    {"2057_new_moon_2359", {2057, 9, 28}, {2057, 10, 27}, {2057, 9, 1, 0}, kLate},
    {"2070_new_moon_2351", {2070, 3, 12}, {2070, 4, 10}, {2070, 2, 1, 0}, kLate},
};

bool IsIcuMiss(const PLDate& day) {
    for (const IcuMiss& m : kIcuMisses) {
        if (day >= m.first && day <= m.last) {
            return true;
        }
    }
    return false;
}

TEST(LunarTest, AgreesWithIcuOnEveryDayOfTheRangeAndWithPublishedCalendarsWhereIcuErrs) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone("Asia/Shanghai"));
    std::unique_ptr<icu::Calendar> icu(
        icu::Calendar::createInstance(*zone, icu::Locale("zh@calendar=chinese"), status));
    ASSERT_TRUE(U_SUCCESS(status)) << u_errorName(status);
    int disagreements = 0;
    for (PLDate day(1900, 1, 31); day <= PLDate(2100, 12, 31); day += 1) {
        if (IsIcuMiss(day)) {
            continue;
        }
        // Each day at noon in China (04:00 UTC). ICU counts years from 2637 BCE.
        icu->setTime((double(day - PLDate(1970, 1, 1)) * 86400.0 + 4 * 3600.0) * 1000.0, status);
        const Lunar theirs{icu->get(UCAL_EXTENDED_YEAR, status) - 2637,
                           icu->get(UCAL_MONTH, status) + 1, icu->get(UCAL_DATE, status),
                           icu->get(UCAL_IS_LEAP_MONTH, status)};
        if (Mine(day) != theirs && ++disagreements <= 20) {
            ADD_FAILURE() << day.year << "-" << int(day.month) << "-" << int(day.day) << ": "
                          << ::testing::PrintToString(Mine(day)) << ", ICU "
                          << ::testing::PrintToString(theirs);
        }
    }
    EXPECT_TRUE(U_SUCCESS(status)) << u_errorName(status);
    EXPECT_EQ(disagreements, 0);
    // Where ICU starts a month a day off, the dates follow the new moon as published calendars do.
    for (const IcuMiss& m : kIcuMisses) {
        SCOPED_TRACE(std::string(m.name) + ": " + m.why);
        EXPECT_EQ(Mine(m.first), m.expected);
        // The whole run is one lunar month (or a leap month and its neighbour), counted on by day.
        const int next = std::get<2>(Mine(m.first + 1));
        EXPECT_TRUE(next == std::get<2>(m.expected) + 1 || next == 1) << next;
    }
}

// The years that trip up simple converters: a leap month late in the year (1984, 2033), or soon
// after a new year near a solar term (2017, 2020, 2023, 2025).
TEST(LunarTest, HardYearsBeginAndLeapWhereThePublishedCalendarsSay) {
    // Lunar year, its new year's day, its leap month and that month's first day.
    const std::tuple<const char*, int, PLDate, int, PLDate> rows[] = {
        {"1984_leap_10", 1984, {1984, 2, 2}, 10, {1984, 11, 23}},
        {"2017_leap_6", 2017, {2017, 1, 28}, 6, {2017, 7, 23}},
        {"2020_leap_4", 2020, {2020, 1, 25}, 4, {2020, 5, 23}},
        {"2023_leap_2", 2023, {2023, 1, 22}, 2, {2023, 3, 22}},
        {"2025_leap_6", 2025, {2025, 1, 29}, 6, {2025, 7, 25}},
        {"2033_leap_11", 2033, {2033, 1, 31}, 11, {2033, 12, 22}},
    };
    for (const auto& [name, year, newYear, leapMonth, leapStart] : rows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(Mine(newYear), (Lunar{year, 1, 1, 0}));
        EXPECT_EQ(std::get<0>(Mine(newYear - 1)), year - 1);
        EXPECT_EQ(std::get<1>(Mine(newYear - 1)), 12);
        EXPECT_EQ(Mine(leapStart), (Lunar{year, leapMonth, 1, 1}));
        // A leap month follows the ordinary month of the same number.
        EXPECT_EQ(std::get<1>(Mine(leapStart - 1)), leapMonth);
        EXPECT_EQ(std::get<3>(Mine(leapStart - 1)), 0);
    }
}

TEST(LunarTest, RefusesDatesItCannotConvert) {
    const std::pair<const char*, DATES> rows[] = {
        {"day_before_range", {1900, 1, 30, 0}},
        {"day_after_range", {2101, 1, 1, 0}},
        {"month_13", {2020, 13, 1, 0}},
        {"month_0", {2020, 0, 10, 0}},
        {"day_0", {2020, 5, 0, 0}},
        {"april_31", {2020, 4, 31, 0}},
        {"feb_29_common_year", {2023, 2, 29, 0}},
        {"feb_29_1900", {1900, 2, 29, 0}},
        {"negative_year", {-5, 1, 1, 0}},
    };
    for (const auto& [name, in] : rows) {
        SCOPED_TRACE(name);
        DATES out{1, 2, 3, 4};
        EXPECT_EQ(new2lunar(in, &out), 0);
        EXPECT_EQ(out.year, 1);
        EXPECT_EQ(out.leapMonth, 4) << "output untouched on failure";
    }
    EXPECT_EQ(new2lunar(DATES{2025, 7, 25, 0}, nullptr), 0);
}

}  // namespace

// Time stamps across time zones and daylight-saving changes, time and date text, number text.
#include <gtest/gtest.h>

#include <climits>

#include "PLTimeStamp.h"
#include "toolkit_support.h"

namespace {

struct Wall {
    int year, month, day, hour, minute, second;
};

// Each row: a local wall time in a zone and the UTC wall time it denotes.
TEST(PLTimeStampTest, LocalDateAndTimeToStampAcrossZonesAndDaylightSaving) {
    // clang-format off
    struct Row {
        const char* name;
        const char* zone;
        Wall local, utc;
    } rows[] = {
        {"london winter", "Europe/London", {2026, 1, 15, 9, 0, 0}, {2026, 1, 15, 9, 0, 0}},
        {"london summer", "Europe/London", {2026, 7, 1, 9, 0, 0}, {2026, 7, 1, 8, 0, 0}},
        {"london midnight before spring change", "Europe/London", {2026, 3, 29, 0, 0, 0}, {2026, 3, 29, 0, 0, 0}},
        {"london first summer hour", "Europe/London", {2026, 3, 29, 2, 0, 0}, {2026, 3, 29, 1, 0, 0}},
        // 01:30 does not exist that day; it is read with the winter offset (= 02:30 summer time).
        {"london spring gap", "Europe/London", {2026, 3, 29, 1, 30, 0}, {2026, 3, 29, 1, 30, 0}},
        {"london noon after autumn change", "Europe/London", {2026, 10, 25, 12, 0, 0}, {2026, 10, 25, 12, 0, 0}},
        {"new york winter", "America/New_York", {2026, 1, 15, 9, 0, 0}, {2026, 1, 15, 14, 0, 0}},
        {"new york summer", "America/New_York", {2026, 7, 1, 9, 0, 0}, {2026, 7, 1, 13, 0, 0}},
        {"new york spring gap", "America/New_York", {2026, 3, 8, 2, 30, 0}, {2026, 3, 8, 7, 30, 0}},
        {"new york midnight of change", "America/New_York", {2026, 11, 1, 0, 0, 0}, {2026, 11, 1, 4, 0, 0}},
        {"shanghai", "Asia/Shanghai", {2026, 7, 1, 8, 0, 0}, {2026, 7, 1, 0, 0, 0}},
        {"shanghai new year", "Asia/Shanghai", {2027, 1, 1, 0, 0, 0}, {2026, 12, 31, 16, 0, 0}},
        {"series limit in shanghai", "Asia/Shanghai", {2030, 12, 31, 23, 59, 59}, {2030, 12, 31, 15, 59, 59}},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ScopedTZ zone(row.zone);
        const PLDate date(row.local.year, row.local.month, row.local.day);
        const PLTime time(row.local.hour, row.local.minute, row.local.second);
        const long expected = UtcSeconds(row.utc.year, row.utc.month, row.utc.day, row.utc.hour,
                                         row.utc.minute, row.utc.second);
        EXPECT_EQ(PLDate2TimeStamp(&date, &time), expected);

        // Back to local: every row but the gaps reads the same wall time again.
        PLDate backDate;
        PLTime backTime;
        TimeStamp2PLDate(expected, &backDate, &backTime);
        if (std::string(row.name).find("gap") == std::string::npos) {
            EXPECT_EQ(backDate, date);
            EXPECT_EQ(backTime, time);
        }
    }
}

TEST(PLTimeStampTest, NullTimeIsMidnightAndUtcIgnoresTheZone) {
    ScopedTZ zone("America/New_York");
    const PLDate date(2026, 7, 1);
    const PLTime midnight(0, 0, 0);
    EXPECT_EQ(PLDate2TimeStamp(date, nullptr), PLDate2TimeStamp(date, midnight));
    EXPECT_EQ(PLDateUTC2TimeStamp(date, nullptr), UtcSeconds(2026, 7, 1));
    EXPECT_EQ(PLDate2TimeStamp(nullptr, &midnight), 0);
    PLDate utcDate;
    PLTime utcTime;
    TimeStamp2PLDateUTC(UtcSeconds(2026, 7, 1, 2, 3, 4), &utcDate, &utcTime);
    EXPECT_EQ(utcDate, date);
    EXPECT_EQ(utcTime, PLTime(2, 3, 4));
}

TEST(PLTimeStampTest, StampsClampToThe32BitRange) {
    ScopedTZ zone("UTC");
    EXPECT_EQ(PLDate2TimeStamp(PLDate(2100, 1, 1), PLTime()), long(INT32_MAX));
    EXPECT_EQ(PLDate2TimeStamp(PLDate(1900, 1, 1), PLTime()), long(INT32_MIN));
}

TEST(PLTimeStampTest, ChangeTimeStampKeepsTheLocalTimeOfDay) {
    // clang-format off
    struct Row {
        const char* name;
        const char* zone;
        Wall from;
        PLDate to;
        Wall utc;
    } rows[] = {
        {"london winter to summer", "Europe/London", {2026, 1, 15, 10, 30, 0}, PLDate(2026, 7, 1), {2026, 7, 1, 9, 30, 0}},
        {"new york summer to winter", "America/New_York", {2026, 7, 1, 23, 0, 0}, PLDate(2026, 12, 1), {2026, 12, 2, 4, 0, 0}},
        {"shanghai next day", "Asia/Shanghai", {2026, 7, 1, 7, 45, 10}, PLDate(2026, 7, 2), {2026, 7, 1, 23, 45, 10}},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ScopedTZ zone(row.zone);
        const long stamp =
            PLDate2TimeStamp(PLDate(row.from.year, row.from.month, row.from.day),
                             PLTime(row.from.hour, row.from.minute, row.from.second));
        EXPECT_EQ(ChangeTimeStamp(stamp, row.to),
                  UtcSeconds(row.utc.year, row.utc.month, row.utc.day, row.utc.hour, row.utc.minute,
                             row.utc.second));
    }
}

TEST(PLTimeStampTest, DateText) {
    struct Row {
        const char* name;
        long format;
        const char* text;
    } rows[] = {
        {"iso", 0, "2026-03-07"},
        {"day first", 1, "07-03-2026"},
        {"month first", 2, "03/07/2026"},
        {"unknown format is iso", 9, "2026-03-07"},
    };
    ScopedTZ zone("America/New_York");
    // 02:00 UTC on the 7th is still the 6th in New York.
    const long stamp = UtcSeconds(2026, 3, 7, 2, 0, 0);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(PLDate2PLString(PLDate(2026, 3, 7), row.format).str(), row.text);
        EXPECT_EQ(TimeStamp2PLStringDate(stamp, row.format, true).str(), row.text);
    }
    EXPECT_EQ(TimeStamp2PLStringDate(stamp, 0, false).str(), "2026-03-06");
}

TEST(PLTimeTest, TwelveAndTwentyFourHourText) {
    struct Row {
        const char* name;
        PLTime time;
        const char* h24;
        const char* h12;
    } rows[] = {
        {"midnight", PLTime(0, 0, 0), "0:00", "12:00 AM"},
        {"morning", PLTime(9, 5, 0), "9:05", "9:05 AM"},
        {"before noon", PLTime(11, 59, 59), "11:59", "11:59 AM"},
        {"noon", PLTime(12, 0, 0), "12:00", "12:00 PM"},
        {"afternoon", PLTime(13, 5, 0), "13:05", "1:05 PM"},
        {"last minute", PLTime(23, 59, 0), "23:59", "11:59 PM"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(PLTime::GetStr(row.time, kPLTimeFormat24).str(), row.h24);
        EXPECT_EQ(PLTime::GetStr(row.time, kPLTimeFormat12).str(), row.h12);
        EXPECT_EQ(PLTime::GetStr(row.time, 0).str(), row.h12);
    }
}

TEST(PLTimeStampTest, NumberTextConversions) {
    EXPECT_EQ(PLNumToString(-42).str(), "-42");
    EXPECT_EQ(PLNumToString(0).str(), "0");
    EXPECT_EQ(PLUnsignedIntToString(4294967295UL).str(), "4294967295");
    struct Row {
        const char* name;
        const char* text;
        unsigned long value;
    } rows[] = {
        {"empty", "", 0},
        {"plain", "10", 10},
        {"leading digits", "12ab3", 12},
        {"no digits", "abc", 0},
        {"sign is not a digit", "-5", 0},
        {"space first", " 7", 0},
        {"largest", "4294967295", 4294967295UL},
        {"saturates", "4294967296", 4294967295UL},
        {"very long", "99999999999999999999999999", 4294967295UL},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(PLStringToUnsigned(PLBasicString<char>(row.text)), row.value);
    }
}

}  // namespace

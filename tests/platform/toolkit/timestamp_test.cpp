// Time stamps across time zones and daylight-saving changes, time and date text, number text.
#include <gtest/gtest.h>

#include <climits>

#include "PLTimeStamp.h"
#include "toolkit_support.h"

namespace {

// clang-format off
struct Wall { int year, month, day, hour, minute, second; };
// clang-format on

long Utc(const Wall& w) {
    return UtcSeconds(w.year, w.month, w.day, w.hour, w.minute, w.second);
}

// Each row: a local wall time in a zone and the UTC wall time it denotes, also when a stamp of
// another date is moved to it.
TEST(PLTimeStampTest, LocalDateAndTimeToStampAcrossZonesAndDaylightSaving) {
    // `readsBack` is false where the wall time does not exist.
    struct Row {
        const char *name, *zone;
        Wall local, utc;
        bool readsBack;
    };
    // clang-format off
    const Row rows[] = {
        {"london summer", "Europe/London", {2026, 7, 1, 9, 0, 0}, {2026, 7, 1, 8, 0, 0}, true},
        {"london first summer hour", "Europe/London", {2026, 3, 29, 2, 0, 0}, {2026, 3, 29, 1, 0, 0}, true},
        // 01:30 does not exist that day; it is read with the winter offset (= 02:30 summer time).
        {"london spring gap", "Europe/London", {2026, 3, 29, 1, 30, 0}, {2026, 3, 29, 1, 30, 0}, false},
        {"london noon after autumn change", "Europe/London", {2026, 10, 25, 12, 0, 0}, {2026, 10, 25, 12, 0, 0}, true},
        {"new york winter", "America/New_York", {2026, 1, 15, 9, 0, 0}, {2026, 1, 15, 14, 0, 0}, true},
        {"new york spring gap", "America/New_York", {2026, 3, 8, 2, 30, 0}, {2026, 3, 8, 7, 30, 0}, false},
        {"new york midnight of change", "America/New_York", {2026, 11, 1, 0, 0, 0}, {2026, 11, 1, 4, 0, 0}, true},
        {"shanghai new year", "Asia/Shanghai", {2027, 1, 1, 0, 0, 0}, {2026, 12, 31, 16, 0, 0}, true},
        // Britain kept summer time all year from 1968 to 1971: the first day shown is an hour
        // before the epoch, so its stamp is negative.
        {"1970 limit in london", "Europe/London", {1970, 1, 1, 0, 0, 0}, {1969, 12, 31, 23, 0, 0}, true},
        {"1970 limit in new york", "America/New_York", {1970, 1, 1, 0, 0, 0}, {1970, 1, 1, 5, 0, 0}, true},
        {"series limit in shanghai", "Asia/Shanghai", {2030, 12, 31, 23, 59, 59}, {2030, 12, 31, 15, 59, 59}, true},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ScopedTZ zone(row.zone);
        const PLDate date(row.local.year, row.local.month, row.local.day);
        const PLTime time(row.local.hour, row.local.minute, row.local.second);
        EXPECT_EQ(PLDate2TimeStamp(&date, &time), Utc(row.utc));
        PLDate backDate;
        PLTime backTime;
        TimeStamp2PLDate(Utc(row.utc), &backDate, &backTime);
        EXPECT_EQ(backDate == date && backTime == time, row.readsBack);
        // Half a year away the other offset is in force; moving back keeps the time of day.
        EXPECT_EQ(ChangeTimeStamp(PLDate2TimeStamp(date + 182, time), date), Utc(row.utc));
    }
}

TEST(PLTimeStampTest, NullTimeUtcAndClamping) {
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
    // Stamps are signed 32-bit seconds.
    EXPECT_EQ(PLDate2TimeStamp(PLDate(2100, 1, 1), PLTime()), long(INT32_MAX));
    EXPECT_EQ(PLDateUTC2TimeStamp(PLDate(1900, 1, 1), nullptr), long(INT32_MIN));
}

TEST(PLTimeStampTest, DateTimeAndNumberText) {
    ScopedTZ zone("America/New_York");
    const long stamp = UtcSeconds(2026, 3, 7, 2, 0, 0);  // still the 6th in New York
    const char* dates[] = {"2026-03-07", "07-03-2026", "03/07/2026", "2026-03-07"};
    const long formats[] = {0, 1, 2, 9};  // an unknown format is the first
    for (int i = 0; i < 4; ++i) {
        SCOPED_TRACE(formats[i]);
        EXPECT_EQ(PLDate2PLString(PLDate(2026, 3, 7), formats[i]).str(), dates[i]);
        EXPECT_EQ(TimeStamp2PLStringDate(stamp, formats[i], true).str(), dates[i]);
    }
    EXPECT_EQ(TimeStamp2PLStringDate(stamp, 0, false).str(), "2026-03-06");

    struct Time {
        const char* name;
        PLTime time;
        const char *h24, *h12;
    };
    const Time times[] = {{"midnight", PLTime(0, 0, 0), "0:00", "12:00 AM"},
                          {"morning", PLTime(9, 5, 0), "9:05", "9:05 AM"},
                          {"noon", PLTime(12, 0, 0), "12:00", "12:00 PM"},
                          {"afternoon", PLTime(13, 5, 0), "13:05", "1:05 PM"}};
    for (const Time& row : times) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(PLTime::GetStr(row.time, kPLTimeFormat24).str(), row.h24);
        EXPECT_EQ(PLTime::GetStr(row.time, kPLTimeFormat12).str(), row.h12);
        EXPECT_EQ(PLTime::GetStr(row.time, 0).str(), row.h12) << "12-hour unless told otherwise";
    }

    EXPECT_EQ(PLNumToString(-42).str(), "-42");
    EXPECT_EQ(PLUnsignedIntToString(4294967295UL).str(), "4294967295");
    struct Number {
        const char* text;
        unsigned long value;
    };
    // clang-format off
    const Number numbers[] = {{"", 0}, {"10", 10}, {"12ab3", 12}, {"abc", 0}, {"-5", 0}, {" 7", 0},
                              {"4294967295", 4294967295UL}, {"4294967296", 4294967295UL},
                              {"99999999999999999999999999", 4294967295UL}};
    // clang-format on
    for (const Number& row : numbers) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(PLStringToUnsigned(PLBasicString<char>(row.text)), row.value);
    }
}

}  // namespace

// The save computations: first occurrences per kind (month ends, the 2030 year rule), all-day
// stamps, leads and alarm entries, record texts cut at character boundaries, the daemon's weekly
// mask east and west of Greenwich, the keep-time limit and the low-storage threshold.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

#include "calendar/calendar_support.h"
#include "event/VtCalendarSaveRules.h"
#include "recur/_RecurInfo.h"

namespace {

// Runs the test body in another time zone and puts UTC back afterwards.
class ZoneScope {
public:
    explicit ZoneScope(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }
    ~ZoneScope() {
        setenv("TZ", "UTC", 1);
        tzset();
    }
};

TEST(SaveRules, FirstOccurrenceByKind) {
    const struct {
        const char* name;
        int32_t kind;
        int32_t a;
        int32_t b;
        PLDate start;
        PLDate first;
    } rows[] = {
        // clang-format off
        {"daily keeps the start", kRecurDaily, 1, 0, {2026, 11, 21}, {2026, 11, 21}},
        {"weekly on the start's own day", kRecurWeekly, 1, 1 << 6, {2026, 11, 21}, {2026, 11, 21}},
        {"weekly monday and friday from a saturday", kRecurWeekly, 1, (1 << 1) | (1 << 5),
         {2026, 11, 21}, {2026, 11, 23}},
        {"weekly with no day tries seven days", kRecurWeekly, 1, 0, {2026, 11, 21}, {2026, 11, 28}},
        {"monthly day still ahead", kRecurMonthly, 1, 25, {2026, 11, 21}, {2026, 11, 25}},
        {"monthly day passed goes a month on", kRecurMonthly, 1, 10, {2026, 11, 21}, {2026, 12, 10}},
        {"monthly 31st cut to november's 30th", kRecurMonthly, 1, 31, {2026, 11, 21}, {2026, 11, 30}},
        {"monthly 31st from december 31st", kRecurMonthly, 1, 31, {2026, 12, 31}, {2026, 12, 31}},
        {"monthly passed day in december moves into january", kRecurMonthly, 1, 5,
         {2026, 12, 20}, {2027, 1, 5}},
        {"monthly second tuesday ahead", kRecurMonthly, 1, 2 * 256 + 3, {2026, 11, 1}, {2026, 11, 10}},
        {"monthly second tuesday passed", kRecurMonthly, 1, 2 * 256 + 3, {2026, 11, 21}, {2026, 12, 8}},
        {"monthly last friday", kRecurMonthly, 1, 5 * 256 + 6, {2026, 11, 1}, {2026, 11, 27}},
        {"yearly date ahead this year", kRecurYearly, 12, 24, {2026, 11, 21}, {2026, 12, 24}},
        {"yearly date passed goes to next year", kRecurYearly, 3, 14, {2026, 11, 21}, {2027, 3, 14}},
        {"yearly date passed in 2030 keeps its year and moves a month", kRecurYearly, 3, 14,
         {2030, 11, 21}, {2030, 4, 14}},
        {"yearly day taken in the start month", kRecurYearly, 3, 31, {2027, 2, 10}, {2027, 3, 28}},
        {"yearly with no month keeps the start", kRecurYearly, 13, 5, {2026, 11, 21}, {2026, 11, 21}},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        PLDate start = row.start;
        start.FixFromMDY();
        PLDate expected = row.first;
        expected.FixFromMDY();
        EXPECT_EQ(VtCalendarFirstOccurrence(row.kind, row.a, row.b, start), expected);
    }
}

TEST(SaveRules, AllDayStamps) {
    const struct {
        const char* name;
        PLDate start;
        PLDate end;
        long startStamp;
        long endStamp;
    } rows[] = {
        // clang-format off
        {"one day", {2026, 11, 21}, {2026, 11, 21}, Stamp(2026, 11, 21), Stamp(2026, 11, 21, 23, 59, 59)},
        {"three days", {2026, 11, 21}, {2026, 11, 23}, Stamp(2026, 11, 21), Stamp(2026, 11, 23, 23, 59, 59)},
        {"end before start is the start day", {2026, 11, 21}, {2026, 11, 20}, Stamp(2026, 11, 21),
         Stamp(2026, 11, 21, 23, 59, 59)},
        // clang-format on
    };
    // All-day stamps are the dates read as UTC (the rows above were made in UTC), whatever the
    // zone the phone is in.
    ZoneScope tokyo("Asia/Tokyo");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        int32_t start = 0;
        int32_t end = 0;
        VtCalendarAllDayStamps(row.start, row.end, start, end);
        EXPECT_EQ(start, row.startStamp);
        EXPECT_EQ(end, row.endStamp);
    }
}

TEST(SaveRules, LeadsAndAlarmEntries) {
    const struct {
        const char* name;
        uint32_t choice;
        bool known;
        VtCalendarLead lead;
    } rows[] = {
        {"no alarm", 11530, false, {}},          {"at the start", 11531, true, {0, 1, 0}},
        {"one minute", 11532, true, {1, 1, 60}}, {"fifteen minutes", 11535, true, {15, 1, 900}},
        {"one hour", 11537, true, {1, 2, 3600}}, {"twelve hours", 11539, true, {12, 2, 43200}},
        {"one day", 11540, true, {1, 3, 86400}}, {"past the menu", 11541, false, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        VtCalendarLead lead{-1, -1, -1};
        EXPECT_EQ(VtCalendarLeadOf(row.choice, lead), row.known);
        if (row.known) {
            EXPECT_EQ(lead.amount, row.lead.amount);
            EXPECT_EQ(lead.unit, row.lead.unit);
            EXPECT_EQ(lead.seconds, row.lead.seconds);
            // A stored alert record with this lead reads back as the same entry.
            _EventAlertInfo info{};
            info.enabled = 1;
            info.leadAmount = lead.amount;
            info.leadUnit = lead.unit;
            EXPECT_EQ(VtCalendarAlarmChoiceOf(info), row.choice);
        } else {
            EXPECT_EQ(lead.seconds, -1) << "an unknown entry keeps the lead";
        }
    }
    const struct {
        const char* name;
        uint8_t enabled;
        int32_t amount;
        int32_t unit;
        uint32_t choice;
    } stored[] = {
        {"disabled", 0, 15, 1, 11530},
        {"three hours is no entry", 1, 3, 2, 11533},
        {"unknown unit", 1, 1, 9, 11533},
    };
    for (const auto& row : stored) {
        SCOPED_TRACE(row.name);
        _EventAlertInfo info{};
        info.enabled = row.enabled;
        info.leadAmount = row.amount;
        info.leadUnit = row.unit;
        EXPECT_EQ(VtCalendarAlarmChoiceOf(info), row.choice);
    }
}

TEST(SaveRules, RecordTextsAreCutAtCharacterBoundaries) {
    const std::string han = "\xE7\x89\x99";  // three bytes
    std::string chinese200;
    for (int i = 0; i < 200; ++i) {
        chinese200 += han;
    }
    const struct {
        const char* name;
        std::string text;
        size_t stored;
    } rows[] = {
        {"empty", "", 0},
        {"600 bytes survive", std::string(600, 'a'), 600},
        {"601 bytes cut to 600", std::string(601, 'a'), 600},
        {"200 chinese characters fill it exactly", chinese200, 600},
        {"one more chinese character is dropped whole", chinese200 + han, 600},
        {"a character that would straddle the end goes", "a" + chinese200, 598},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        char field[kAPEventTextSize];
        std::memset(field, 'x', sizeof field);
        VtCalendarCopyRecordText(field, PLBasicString<char>(row.text.c_str()));
        EXPECT_EQ(std::strlen(field), row.stored);
        EXPECT_EQ(std::string(field), row.text.substr(0, row.stored));
        EXPECT_EQ(std::string(VtCalendarRecordText(field).c_str()), row.text.substr(0, row.stored));
    }
    // A field with no terminator (another program's record) reads as its first 600 bytes.
    char full[kAPEventTextSize];
    std::memset(full, 'b', sizeof full);
    EXPECT_EQ(std::strlen(VtCalendarRecordText(full).c_str()), size_t(kAPEventTextMax));
}

TEST(SaveRules, DaemonWeekMaskAcrossTheDateLine) {
    const int monday = 1 << 1;
    const int sunday = 1 << 0;
    const int saturday = 1 << 6;
    const struct {
        const char* name;
        const char* zone;
        int hour;
        int minute;
        int pattern;
        int mask;
    } rows[] = {
        // clang-format off
        {"utc: reversed only", "UTC", 9, 0, monday | saturday, 0x20 | 0x01},
        {"tokyo noon: same day", "Asia/Tokyo", 12, 0, monday, 0x20},
        {"tokyo 00:30 monday is sunday in utc", "Asia/Tokyo", 0, 30, monday, 0x40},
        {"tokyo 00:30 sunday wraps to saturday, bit 7 kept", "Asia/Tokyo", 0, 30, sunday, 0x80 | 0x01},
        {"new york 22:00 monday is tuesday in utc", "America/New_York", 22, 0, monday, 0x10 | 0x40},
        {"new york 22:00 saturday sets sunday", "America/New_York", 22, 0, saturday, 0x40},
        {"new york 22:00 no day stays empty", "America/New_York", 22, 0, 0, 0},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ZoneScope zone(row.zone);
        const long ring = Stamp(2026, 11, 23, row.hour, row.minute);  // a Monday, local
        EXPECT_EQ(VtCalendarDaemonWeekMask(row.pattern, ring), row.mask);
    }
}

TEST(SaveRules, KeepTimeLimits) {
    const std::time_t now = Stamp(2026, 11, 21, 10);
    std::tm local{};
    localtime_r(&now, &local);
    const struct {
        const char* name;
        long option;
        long last;
        bool allowed;
    } rows[] = {
        {"a week: ends 6 days ago", 11452, Stamp(2026, 11, 15, 10), true},
        {"a week: ends exactly at the limit", 11452, Stamp(2026, 11, 14, 10), true},
        {"a week: ends a second before", 11452, Stamp(2026, 11, 14, 9, 59, 59), false},
        {"a month: ends 40 days ago", 11453, Stamp(2026, 10, 12, 10), false},
        {"six months: ends in june", 11455, Stamp(2026, 6, 1), true},
        {"a year: ends two years ago", 11456, Stamp(2024, 11, 21), false},
        {"keep everything", 11457, Stamp(1990, 1, 1), true},
        {"unknown option", 42, Stamp(1990, 1, 1), true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(VtCalendarKeepTimeAllows(row.option, local, row.last), row.allowed);
    }
}

TEST(SaveRules, LowStorageThreshold) {
    const struct {
        const char* name;
        int64_t blockSize;
        int64_t freeBlocks;
        bool low;
    } rows[] = {
        {"exactly the threshold", 4096, 843, true},  // 3,452,928 bytes
        {"one block more", 4096, 844, false},
        {"nothing free", 4096, 0, true},
        {"plenty", 4096, 100000, false},
        {"past 2 GiB reads as negative", 4096, 600000, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(VtCalendarIsLowStorage(row.blockSize, row.freeBlocks), row.low);
    }
}

}  // namespace

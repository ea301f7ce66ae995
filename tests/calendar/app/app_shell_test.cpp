// The application shell's computations: the purge cut-off, the time picker's hours, dates taken
// from a dialog, the notice dialog's button modes, the repeat-rule message and the editors'
// end-of-series check.
#include <gtest/gtest.h>

#include <ctime>

#include "PLStream.h"
#include "PLTime.h"
#include "PLTimeStamp.h"
#include "app/VtCalendarHelpers.h"
#include "app/VtCalendarPurge.h"
#include "recur/VtCalendarRecurEnd.h"
#include "recur/VtCalendarSetRecurMsg.h"

namespace {

// Tests run with TZ=UTC, so local stamps equal UTC ones.
int32_t Utc(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    std::tm t{};
    t.tm_year = year - 1900;
    t.tm_mon = month - 1;
    t.tm_mday = day;
    t.tm_hour = hour;
    t.tm_min = minute;
    t.tm_sec = second;
    return int32_t(timegm(&t));
}

std::tm LocalTm(int year, int month, int day, int hour) {
    const std::time_t stamp = Utc(year, month, day, hour);
    std::tm t{};
    localtime_r(&stamp, &t);
    return t;
}

TEST(Purge, CutoffByKeepTime) {
    const struct {
        const char* name;
        long option;
        std::tm now;
        bool purges;
        long cutoff;
    } rows[] = {
        {"one week", 11452, LocalTm(2026, 3, 31, 10), true, Utc(2026, 3, 24, 10)},
        {"one month from the 31st carries past february", 11453, LocalTm(2026, 3, 31, 10), true,
         Utc(2026, 3, 3, 10)},
        {"three months into the year before", 11454, LocalTm(2026, 1, 15, 10), true,
         Utc(2025, 10, 15, 10)},
        {"six months from the 31st", 11455, LocalTm(2026, 3, 31, 10), true, Utc(2025, 10, 1, 10)},
        {"one year", 11456, LocalTm(2026, 3, 31, 10), true, Utc(2025, 3, 31, 10)},
        {"one month in january", 11453, LocalTm(2026, 1, 15, 10), true, Utc(2025, 12, 15, 10)},
        {"keep everything", 11457, LocalTm(2026, 3, 31, 10), false, 0},
        {"below the options", 11451, LocalTm(2026, 3, 31, 10), false, 0},
        {"zero", 0, LocalTm(2026, 3, 31, 10), false, 0},
        {"above the options", 11458, LocalTm(2026, 3, 31, 10), false, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        long cutoff = -1;
        EXPECT_EQ(VtCalendarPurgeCutoff(row.option, row.now, cutoff), row.purges);
        if (row.purges) {
            EXPECT_EQ(cutoff, row.cutoff);
        }
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
        {"12 AM is midnight", 12, true, "AM", 0},
        {"12 PM is noon", 12, true, "PM", 12},
        {"1 PM", 1, true, "PM", 13},
        {"11 AM", 11, true, "AM", 11},
        {"11 PM", 11, true, "PM", 23},
        {"24-hour form as it stands", 17, false, "PM", 17},
        {"24-hour midnight", 0, false, "AM", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(TimePickerHour24(row.hour, row.twelve, row.suffix), row.expected);
    }
}

TEST(DateFields, ReplacingYearMonthAndDay) {
    const struct {
        const char* name;
        PLDate from;
        int year, month, day;
    } rows[] = {
        {"31 january to 15 february", PLDate(2026, 1, 31), 2026, 2, 15},
        {"31 march to 29 february of a leap year", PLDate(2024, 3, 31), 2024, 2, 29},
        {"29 february to another year's 28th", PLDate(2024, 2, 29), 2025, 2, 28},
        {"31 december to 30 november a year on", PLDate(2026, 12, 31), 2027, 11, 30},
        {"a day of the same month", PLDate(2026, 11, 21), 2026, 11, 30},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        PLDate date = row.from;
        SetDateFields(date, row.year, row.month, row.day);
        EXPECT_EQ(date, PLDate(row.year, row.month, row.day));
        EXPECT_EQ(date.month, row.month);
        EXPECT_EQ(date.day, row.day);
    }
}

TEST(InfoDialog, UnknownButtonModeShowsNothing) {
    EXPECT_EQ(ShowInfoDialog(32050, 10882, 2, 0, 0), 0);
    EXPECT_EQ(ShowInfoDialog(32050, 10882, -1, 0, 0), 0);
}

_RecurInfo SampleRule() {
    return {Utc(2026, 3, 2, 9), Utc(2026, 3, 2, 10), 2, 0x0A, Utc(2026, 6, 1, 9), 12, kRecurWeekly};
}

void ExpectSameRule(const _RecurInfo& a, const _RecurInfo& b) {
    EXPECT_EQ(a.startStamp, b.startStamp);
    EXPECT_EQ(a.endStamp, b.endStamp);
    EXPECT_EQ(a.interval, b.interval);
    EXPECT_EQ(a.pattern, b.pattern);
    EXPECT_EQ(a.lastStamp, b.lastStamp);
    EXPECT_EQ(a.count, b.count);
    EXPECT_EQ(a.kind, b.kind);
}

TEST(RecurMessage, CloneKeepsNumbersAndRuleButNotNames) {
    VtCalendarSetRecurMsg message(11660, SampleRule(), kRecurMessageID, 0x3F3F3F3F);
    message.SetRecipientName("someone");
    message.SetSenderName("editor");
    std::unique_ptr<PLMessage> clone(message.Clone());
    auto* copy = dynamic_cast<VtCalendarSetRecurMsg*>(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->GetMessageID(), 0x43524543u);
    EXPECT_EQ(copy->GetSenderID(), 11660u);
    EXPECT_EQ(copy->GetUserMessageID(), 0x3F3F3F3Fu);
    EXPECT_EQ(copy->GetClassID(), 0x6D657367u);
    EXPECT_TRUE(copy->GetRecipientName().IsEmpty());
    EXPECT_TRUE(copy->GetSenderName().IsEmpty());
    ExpectSameRule(copy->GetSetting(), SampleRule());
}

TEST(RecurMessage, StreamingCarriesOnlyTheBase) {
    VtCalendarSetRecurMsg message(11700, SampleRule(), kRecurMessageID, 0x3F3F3F3F);
    PLStream stream;
    message.WriteData(stream);
    VtCalendarSetRecurMsg received;
    ASSERT_TRUE(received.ReadData(stream));
    EXPECT_EQ(received.GetMessageID(), kRecurMessageID);
    EXPECT_EQ(received.GetSenderID(), 11700u);
    ExpectSameRule(received.GetSetting(), _RecurInfo{});
    EXPECT_EQ(stream.Remaining(), 0u);
}

struct EndRow {
    const char* name;
    _RecurInfo rule;
    VtRecurEndMode mode;
    const char* countText;
    PLDate until;
    bool daily;
    VtRecurEndResult result;
    int32_t count;
    long lastStamp;
    int32_t kind;
};

_RecurInfo Daily(long start, int interval = 1) {
    return {int32_t(start), int32_t(start + 3600), interval, 0, 0, 0, kRecurDaily};
}

TEST(RecurEnd, EndModes) {
    const long limit = Utc(2030, 12, 31, 23, 59, 59);
    const long start = Utc(2026, 3, 1, 9);
    _RecurInfo weekly = Daily(start);
    weekly.kind = kRecurWeekly;
    weekly.pattern = 1 << 0;  // Sundays; the 1st of March 2026 is one
    const EndRow rows[] = {
        {"no end", Daily(start), VtRecurEndMode::NoEnd, "", PLDate(2026, 1, 1), true,
         VtRecurEndResult::Accepted, kRecurNoEnd, limit, kRecurDaily},
        {"until a later date, daily writes 0", Daily(start), VtRecurEndMode::UntilDate, "",
         PLDate(2026, 4, 30), true, VtRecurEndResult::Accepted, 0, Utc(2026, 4, 30, 23, 59, 59),
         kRecurDaily},
        {"until the start day itself, weekly writes -1", weekly, VtRecurEndMode::UntilDate, "",
         PLDate(2026, 3, 1), false, VtRecurEndResult::Accepted, -1, Utc(2026, 3, 1, 23, 59, 59),
         kRecurWeekly},
        {"until before the start is refused", Daily(start), VtRecurEndMode::UntilDate, "",
         PLDate(2026, 2, 28), true, VtRecurEndResult::UntilBeforeStart, 0,
         Utc(2026, 2, 28, 23, 59, 59), kRecurDaily},
        {"three occurrences", Daily(start), VtRecurEndMode::AfterCount, "3", PLDate(2026, 1, 1),
         true, VtRecurEndResult::Accepted, 3, Utc(2026, 3, 3, 9), kRecurDaily},
        {"every second day, four times", Daily(start, 2), VtRecurEndMode::AfterCount, "4",
         PLDate(2026, 1, 1), true, VtRecurEndResult::Accepted, 4, Utc(2026, 3, 7, 9), kRecurDaily},
        {"count 0 stops the repetition", Daily(start), VtRecurEndMode::AfterCount, "0",
         PLDate(2026, 1, 1), true, VtRecurEndResult::Accepted, 0, 0, kRecurNone},
        {"an empty count stops the repetition", Daily(start), VtRecurEndMode::AfterCount, "",
         PLDate(2026, 1, 1), true, VtRecurEndResult::Accepted, 0, 0, kRecurNone},
        {"a series reaching 2031 is cut", Daily(Utc(2030, 12, 25, 9)), VtRecurEndMode::AfterCount,
         "10", PLDate(2026, 1, 1), true, VtRecurEndResult::Accepted, 7, Utc(2030, 12, 31, 9),
         kRecurDaily},
    };
    for (const EndRow& row : rows) {
        SCOPED_TRACE(row.name);
        _RecurInfo rule = row.rule;
        VtRecurEndInput input;
        input.mode = row.mode;
        input.countText = row.countText;
        input.untilDate = row.until;
        input.daily = row.daily;
        PLDate last;
        EXPECT_EQ(CheckRecurEnd(rule, input, last), row.result);
        EXPECT_EQ(rule.kind, row.kind);
        if (row.kind != kRecurNone) {
            EXPECT_EQ(rule.count, row.count);
            EXPECT_EQ(rule.lastStamp, row.lastStamp);
        }
    }
}

TEST(RecurEnd, CachedCountSkipsTheFirstComputation) {
    _RecurInfo rule = Daily(Utc(2026, 3, 1, 9));
    rule.kind = kRecurMonthly;
    rule.pattern = 1;
    rule.lastStamp = int32_t(Utc(2026, 8, 1, 9));  // computed earlier for the same count
    int32_t cache = 6;
    VtRecurEndInput input;
    input.mode = VtRecurEndMode::AfterCount;
    input.countText = "6";
    input.seriesCountCache = &cache;
    PLDate last;
    EXPECT_EQ(CheckRecurEnd(rule, input, last), VtRecurEndResult::Accepted);
    EXPECT_EQ(rule.lastStamp, Utc(2026, 8, 1, 9));
    EXPECT_EQ(rule.count, 6);

    // A new count is computed and remembered.
    input.countText = "2";
    EXPECT_EQ(CheckRecurEnd(rule, input, last), VtRecurEndResult::Accepted);
    EXPECT_EQ(rule.lastStamp, Utc(2026, 4, 1, 9));
    EXPECT_EQ(cache, 2);
    EXPECT_EQ(last, PLDate(2026, 4, 1));
}

}  // namespace

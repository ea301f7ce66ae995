// The repeat rule in words: every kind, every end mode, and stored rules with impossible fields.
#include <tuple>

#include "event_support.h"
#include "recur/VtCalendarRecurText.h"

namespace {

using RecurTextTest = EventTest;

constexpr int32_t kNoEnd = kRecurNoEnd;
constexpr int32_t kMonTueWed = 0b0001110;  // weekday d is bit d - 1, Sunday first
constexpr int32_t kSunSat = 0b1000001;

TEST_F(RecurTextTest, EveryKindAndEndMode) {
    const long until = Stamp(2030, 12, 31, 23, 59, 59);
    // Name, kind, value A, value B, value C, last stamp, the words (dates as 31-12-2030).
    const std::tuple<const char*, int32_t, int32_t, int32_t, int32_t, long, const char*> rows[] = {
        {"none", 0, 0, 0, 0, 0, "Does not repeat"},
        {"daily", 1, 1, 0, kNoEnd, until, "Daily"},
        {"every_3_days_10_times", 1, 3, 0, 10, until, "Every 3 days, 10 times"},
        {"daily_until_is_written_0", 1, 1, 0, 0, Stamp(2027, 1, 5, 23, 59, 59),
         "Daily, until 05-01-2027"},
        {"working_days", 1, 1, 1, kNoEnd, until, "Every working day"},
        {"weekly_days_in_week_order", 2, 1, kMonTueWed, kNoEnd, until, "Weekly on Mo, Tu, We"},
        {"every_2_weeks_until", 2, 2, kSunSat, -1, until,
         "Every 2 weeks on Su, Sa, until 31-12-2030"},
        {"monthly_day", 4, 1, 15, kNoEnd, until, "Monthly on day 15"},
        {"a_single_occurrence_is_once", 4, 1, 15, 1, until, "Monthly on day 15, once"},
        {"every_2_months_day_31_count", 4, 2, 31, 6, until, "Every 2 months on day 31, 6 times"},
        {"monthly_second_tuesday_count", 4, 1, 2 * 256 + 3, 10, until,
         "Monthly on the Second Tuesday, 10 times"},
        {"monthly_last_friday", 4, 1, 5 * 256 + 6, kNoEnd, until, "Monthly on the Last Friday"},
        {"yearly_day", 8, 6, 15, kNoEnd, until, "Yearly on 15 June"},
        {"yearly_first_sunday_until", 8, 3, 1 * 256 + 1, -1, Stamp(2029, 3, 31, 23, 59, 59),
         "Yearly on the First Sunday of March, until 31-03-2029"},
        // Stored rules no editor writes: the part that cannot happen is left out.
        {"unknown_kind_3", 3, 1, 0, 10, until, "Does not repeat"},
        {"interval_0_reads_as_every", 1, 0, 0, kNoEnd, until, "Daily"},
        {"negative_interval", 2, -4, kMonTueWed, kNoEnd, until, "Weekly on Mo, Tu, We"},
        {"weekly_without_days", 2, 1, 0, kNoEnd, until, "Weekly"},
        {"weekly_bits_past_saturday", 2, 1, 0x7F80, kNoEnd, until, "Weekly"},
        {"monthly_day_45", 4, 1, 45, kNoEnd, until, "Monthly"},
        {"monthly_week_7", 4, 1, 7 * 256 + 2, kNoEnd, until, "Monthly"},
        {"monthly_weekday_9", 4, 1, 2 * 256 + 9, kNoEnd, until, "Monthly"},
        {"yearly_month_13", 8, 13, 15, kNoEnd, until, "Yearly"},
        {"yearly_nth_in_month_0", 8, 0, 2 * 256 + 2, kNoEnd, until, "Yearly on the Second Monday"},
    };
    for (const auto& [name, kind, a, b, c, last, words] : rows) {
        SCOPED_TRACE(name);
        _RecurInfo setting;
        setting.kind = kind;
        setting.interval = a;
        setting.pattern = b;
        setting.count = c;
        setting.lastStamp = int32_t(last);
        EXPECT_EQ(VtCalendarRecurText(setting, 1).str(), words);
    }
}

// The record's fields reach the same words, and the until date follows the date format.
TEST_F(RecurTextTest, StoredRecordAndDateFormats) {
    _EventRecInfo record;
    InitEventRecInfo(&record);
    record.recurKind = 2;
    record.recurValueA = 2;
    record.recurValueB = kMonTueWed;
    record.recurValueC = -1;
    record.lastStamp = int32_t(Stamp(2030, 12, 31, 23, 59, 59));
    EXPECT_EQ(VtCalendarRecurText(record, 0).str(),
              "Every 2 weeks on Mo, Tu, We, until 2030-12-31");
    EXPECT_EQ(VtCalendarRecurText(record, 2).str(),
              "Every 2 weeks on Mo, Tu, We, until 12/31/2030");
}

}  // namespace

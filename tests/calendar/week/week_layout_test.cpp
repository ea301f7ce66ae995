// The week's layout without drawing: the week start for every first weekday, the hour bars and
// the all-day strip for every repeat kind, at month and year ends, at the 1970 and 2030 limits and
// for records with impossible fields.
#include <gtest/gtest.h>

#include "calendar/calendar_support.h"
#include "recur/_RecurInfo.h"
#include "week/VtCalendarWeekModel.h"
#include "week_support.h"

namespace {

// Bits of the weekly mask: bit 0 Sunday .. bit 6 Saturday.
constexpr int kMonday = 1 << 1;

// The week of Sunday 2026-11-15 .. Saturday 2026-11-21 unless a row says otherwise.
const PLDate kWeek = D(2026, 11, 15);
// Sunday 2026-11-29 .. Saturday 2026-12-05: the week runs into December.
const PLDate kMonthEndWeek = D(2026, 11, 29);
// Sunday 2026-12-27 .. Saturday 2027-01-02.
const PLDate kYearEndWeek = D(2026, 12, 27);

TEST(WeekLayout, WeekStartForEveryFirstWeekday) {
    const struct {
        const char* name;
        PLDate date;
        int startWeekday;
        PLDate start;
    } rows[] = {
        {"saturday, sunday first", D(2026, 11, 21), 1, D(2026, 11, 15)},
        {"saturday, monday first", D(2026, 11, 21), 2, D(2026, 11, 16)},
        {"sunday, monday first: six days back", D(2026, 11, 22), 2, D(2026, 11, 16)},
        {"saturday, saturday first: the day itself", D(2026, 11, 21), 7, D(2026, 11, 21)},
        {"friday, saturday first", D(2026, 11, 20), 7, D(2026, 11, 14)},
        {"wednesday, thursday first", D(2026, 11, 18), 5, D(2026, 11, 12)},
        {"new year's day, monday first", D(2026, 1, 1), 2, D(2025, 12, 29)},
        {"new year's day, sunday first", D(2026, 1, 1), 1, D(2025, 12, 28)},
        {"first day of 1970", D(1970, 1, 1), 1, D(1969, 12, 28)},
        {"last day of 2030", D(2030, 12, 31), 1, D(2030, 12, 29)},
        {"a first weekday of 0 is read as sunday", D(2026, 11, 21), 0, D(2026, 11, 15)},
        {"a first weekday of 9 is read as sunday", D(2026, 11, 21), 9, D(2026, 11, 15)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(VtCalendarWeekModel::WeekStartOf(row.date, row.startWeekday), row.start);
    }
}

struct LayoutRow {
    const char* name;
    PLDate weekStart;
    std::vector<WeekNode> nodes;
    int times;  // each node is added this many times
    const char* grid;
    const char* strip;
};

void CheckLayout(const LayoutRow& row) {
    SCOPED_TRACE(row.name);
    WeekList list;
    for (const WeekNode& node : row.nodes) {
        list.Add(node, row.times);
    }
    VtCalendarWeekModel model;
    model.SetWeekStart(row.weekStart);
    model.BuildGrid(list.Head());
    model.BuildStrip(list.Head());
    EXPECT_EQ(GridText(model), row.grid);
    EXPECT_EQ(StripText(model), row.strip);
}

// Rows that week_busy and week_scrolled already check pixel by pixel (three bars of four events at
// one hour, a fortnightly series on every chosen weekday, spans cut at both ends of the week, a
// one-day bar under a span) are left to them.
TEST(WeekLayout, TimedBars) {
    // clang-format off
    const LayoutRow rows[] = {
        {"09:00-10:00 takes only the 9am row", kWeek, {{D(2026, 11, 16)}}, 1, "2s0:10-10", ""},
        {"09:00-10:30 takes two rows", kWeek,
         {{D(2026, 11, 16), {9, 0, 0}, {}, {10, 30, 0}}}, 1, "2s0:10-11", ""},
        {"an end at midnight stops at 23:00", kWeek,
         {{D(2026, 11, 18), {22, 0, 0}, D(2026, 11, 19), {0, 0, 0}}}, 1, "4s0:23-23", ""},
        {"23:00 to midnight keeps the 11pm row", kWeek,
         {{D(2026, 11, 18), {23, 0, 0}, D(2026, 11, 19), {0, 0, 0}}}, 1, "4s0:24-24", ""},
        {"a whole day to midnight", kWeek,
         {{D(2026, 11, 18), {0, 0, 0}, D(2026, 11, 19), {0, 0, 0}}}, 1, "4s0:1-23", ""},
        {"an end before the start keeps the start row", kWeek,
         {{D(2026, 11, 16), {15, 0, 0}, {}, {11, 0, 0}}}, 1, "2s0:16-16", ""},
        {"twenty at one hour: still three", kWeek,
         {{D(2026, 11, 16)}}, 20, "2s0:10-10 2s1:10-10 2s2:10-10", ""},
        {"an overlap takes the first free slot", kWeek,
         {{D(2026, 11, 16), {9, 0, 0}, {}, {11, 0, 0}}, {D(2026, 11, 16), {10, 0, 0}, {}, {11, 0, 0}},
          {D(2026, 11, 16), {11, 0, 0}, {}, {12, 0, 0}}}, 1, "2s0:10-11 2s0:12-12 2s1:11-11", ""},
        {"all-day and multi-day events stay out of the grid", kWeek,
         {{D(2026, 11, 20), {0, 0, 0}, {}, {23, 59, 59}, 0, 0, 0, true},
          {D(2026, 11, 16), {9, 0, 0}, D(2026, 11, 17), {18, 0, 0}}}, 1, "", "r1:2-3 r1:6"},
        {"a timed one-day event stays out of the strip", kWeek,
         {{D(2026, 11, 17)}}, 1, "3s0:10-10", ""},
        {"an event of another week is not placed", kWeek, {{D(2026, 11, 23)}}, 1, "", ""},
    };
    // clang-format on
    for (const LayoutRow& row : rows) {
        CheckLayout(row);
    }
}

TEST(WeekLayout, RepeatingBars) {
    // clang-format off
    const LayoutRow rows[] = {
        {"daily on working days", kWeek,
         {{D(2026, 11, 1), {9, 0, 0}, {}, {10, 0, 0}, kRecurDaily, 1, 1}},
         1, "2s0:10-10 3s0:10-10 4s0:10-10 5s0:10-10 6s0:10-10", ""},
        {"daily every third day", kWeek,
         {{D(2026, 11, 14), {9, 0, 0}, {}, {10, 0, 0}, kRecurDaily, 3}}, 1, "3s0:10-10 6s0:10-10", ""},
        {"daily from mid-week", kWeek,
         {{D(2026, 11, 19), {9, 0, 0}, {}, {10, 0, 0}, kRecurDaily, 1}},
         1, "5s0:10-10 6s0:10-10 7s0:10-10", ""},
        {"daily until its limit", kWeek,
         {{D(2026, 11, 1), {9, 0, 0}, {}, {10, 0, 0}, kRecurDaily, 1, 0, false, D(2026, 11, 17)}},
         1, "1s0:10-10 2s0:10-10 3s0:10-10", ""},
        {"daily with interval 0 is read as every day", kWeek,
         {{D(2026, 11, 19), {9, 0, 0}, {}, {10, 0, 0}, kRecurDaily, 0}},
         1, "5s0:10-10 6s0:10-10 7s0:10-10", ""},
        {"weekly with an empty mask shows nothing", kWeek,
         {{D(2026, 11, 9), {18, 0, 0}, {}, {19, 0, 0}, kRecurWeekly, 1, 0}}, 1, "", ""},
        {"monthly on the 17th", kWeek,
         {{D(2026, 10, 17), {9, 0, 0}, {}, {10, 0, 0}, kRecurMonthly, 1, 17}}, 1, "3s0:10-10", ""},
        {"monthly every second month skips this one", kWeek,
         {{D(2026, 10, 17), {9, 0, 0}, {}, {10, 0, 0}, kRecurMonthly, 2, 17}}, 1, "", ""},
        {"monthly with interval 0 is read as every month", kWeek,
         {{D(2026, 10, 17), {9, 0, 0}, {}, {10, 0, 0}, kRecurMonthly, 0, 17}}, 1, "3s0:10-10", ""},
        {"monthly on day 45 shows nothing", kWeek,
         {{D(2026, 10, 17), {9, 0, 0}, {}, {10, 0, 0}, kRecurMonthly, 1, 45}}, 1, "", ""},
        {"monthly on weekday 9 shows nothing", kWeek,
         {{D(2026, 10, 17), {9, 0, 0}, {}, {10, 0, 0}, kRecurMonthly, 1, 0x109}}, 1, "", ""},
        {"monthly before the series begins", kWeek,
         {{D(2026, 11, 20), {9, 0, 0}, {}, {10, 0, 0}, kRecurMonthly, 1, 15}}, 1, "", ""},
        {"monthly third wednesday", kWeek,
         {{D(2026, 9, 16), {9, 0, 0}, {}, {10, 0, 0}, kRecurMonthly, 1, 0x304}}, 1, "4s0:10-10", ""},
        {"monthly in the next month counts months from there", kMonthEndWeek,
         {{D(2026, 10, 2), {9, 0, 0}, {}, {10, 0, 0}, kRecurMonthly, 2, 2}}, 1, "4s0:10-10", ""},
        {"monthly first tuesday found in the next month", kMonthEndWeek,
         {{D(2026, 9, 1), {9, 0, 0}, {}, {10, 0, 0}, kRecurMonthly, 1, 0x103}}, 1, "3s0:10-10", ""},
        {"monthly 31st: none in november", kMonthEndWeek,
         {{D(2026, 10, 31), {9, 0, 0}, {}, {10, 0, 0}, kRecurMonthly, 1, 31}}, 1, "", ""},
        {"monthly on the 1st across the year end", kYearEndWeek,
         {{D(2026, 10, 1), {9, 0, 0}, {}, {10, 0, 0}, kRecurMonthly, 3, 1}}, 1, "6s0:10-10", ""},
        {"yearly on 17 november", kWeek,
         {{D(2020, 11, 17), {9, 0, 0}, {}, {10, 0, 0}, kRecurYearly, 11, 17}}, 1, "3s0:10-10", ""},
        {"yearly in another month", kWeek,
         {{D(2020, 12, 17), {9, 0, 0}, {}, {10, 0, 0}, kRecurYearly, 12, 17}}, 1, "", ""},
        {"yearly in month 13 shows nothing", kWeek,
         {{D(2020, 11, 17), {9, 0, 0}, {}, {10, 0, 0}, kRecurYearly, 13, 17}}, 1, "", ""},
        {"an unknown kind is shown once on its date", kWeek,
         {{D(2026, 11, 18), {9, 0, 0}, {}, {10, 0, 0}, 3, 1, 1}}, 1, "4s0:10-10", ""},
    };
    // clang-format on
    for (const LayoutRow& row : rows) {
        CheckLayout(row);
    }
}

TEST(WeekLayout, StripBars) {
    const PLTime kDayEnd{23, 59, 59};
    // clang-format off
    const LayoutRow rows[] = {
        {"a span over the whole week", kWeek,
         {{D(2026, 11, 1), {9, 0, 0}, D(2026, 12, 24), {18, 0, 0}}}, 1, "", "r1:1-7"},
        {"a span ending at midnight ends the day before", kWeek,
         {{D(2026, 11, 16), {10, 0, 0}, D(2026, 11, 18), {0, 0, 0}}}, 1, "", "r1:2-3"},
        {"four concurrent spans: three rows", kWeek,
         {{D(2026, 11, 16), {9, 0, 0}, D(2026, 11, 18), {18, 0, 0}}}, 4, "", "r1:2-4 r2:2-4 r3:2-4"},
        {"ten all-day events on one day: three rows", kWeek,
         {{D(2026, 11, 20), {0, 0, 0}, {}, kDayEnd, 0, 0, 0, true}}, 10, "", "r1:6 r2:6 r3:6"},
        {"a span ending before its start shows nothing", kWeek,
         {{D(2026, 11, 18), {9, 0, 0}, D(2026, 11, 16), {18, 0, 0}}}, 1, "", ""},
        {"all-day on working days", kWeek,
         {{D(2026, 11, 1), {0, 0, 0}, {}, kDayEnd, kRecurDaily, 1, 1, true}},
         1, "", "r1:2 r1:3 r1:4 r1:5 r1:6"},
        {"all-day every other monday: not in an odd week", kWeek,
         {{D(2026, 11, 9), {0, 0, 0}, {}, kDayEnd, kRecurWeekly, 2, kMonday, true}}, 1, "", ""},
        {"all-day every other monday: in an even week", D(2026, 11, 22),
         {{D(2026, 11, 9), {0, 0, 0}, {}, kDayEnd, kRecurWeekly, 2, kMonday, true}}, 1, "", "r1:2"},
        {"all-day monthly: the interval counts from the week's first month", kMonthEndWeek,
         {{D(2026, 10, 2), {0, 0, 0}, {}, kDayEnd, kRecurMonthly, 2, 2, true}}, 1, "", ""},
        {"all-day monthly on the 2nd found in the next month", kMonthEndWeek,
         {{D(2026, 10, 2), {0, 0, 0}, {}, kDayEnd, kRecurMonthly, 1, 2, true}}, 1, "", "r1:4"},
        {"all-day yearly", kWeek,
         {{D(2020, 11, 17), {0, 0, 0}, {}, kDayEnd, kRecurYearly, 11, 17, true}}, 1, "", "r1:3"},
    };
    // clang-format on
    for (const LayoutRow& row : rows) {
        CheckLayout(row);
    }
}

TEST(WeekLayout, TheLimitsOfTheRange) {
    // clang-format off
    const LayoutRow rows[] = {
        {"the week of 1970-01-01", D(1969, 12, 28), {{D(1970, 1, 1)}}, 1, "5s0:10-10", ""},
        {"a series from before 1970", D(1969, 12, 28),
         {{D(1969, 6, 1), {9, 0, 0}, {}, {10, 0, 0}, kRecurDaily, 1}},
         1, "1s0:10-10 2s0:10-10 3s0:10-10 4s0:10-10 5s0:10-10 6s0:10-10 7s0:10-10", ""},
        {"a series ends with 2030", D(2030, 12, 29),
         {{D(2030, 1, 1), {9, 0, 0}, {}, {10, 0, 0}, kRecurDaily, 1}}, 1, "1s0:10-10 2s0:10-10 3s0:10-10", ""},
        {"a span into 2031", D(2030, 12, 29),
         {{D(2030, 12, 30), {9, 0, 0}, D(2031, 1, 3), {18, 0, 0}}}, 1, "", "r1:2-6"},
    };
    // clang-format on
    for (const LayoutRow& row : rows) {
        CheckLayout(row);
    }
}

TEST(WeekLayout, CellsKeepTheEventColour) {
    WeekList list;
    list.Add({D(2026, 11, 16), {9, 0, 0}, {}, {10, 0, 0}, 0, 0, 0, false, {}, 11552});
    list.Add({D(2026, 11, 16), {9, 0, 0}, D(2026, 11, 17), {10, 0, 0}, 0, 0, 0, false, {}, 11553});
    VtCalendarWeekModel model;
    model.SetWeekStart(kWeek);
    model.BuildGrid(list.Head());
    model.BuildStrip(list.Head());
    EXPECT_EQ(model.GridCell(10, 3).colour, 11552);
    EXPECT_EQ(model.StripCell(1, 3).colour, 11553);
    EXPECT_TRUE(model.HasStripBar(2));
    EXPECT_FALSE(model.HasStripBar(4));
}

}  // namespace

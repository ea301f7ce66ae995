// The month grid: offsets and cells, touch mapping, lanes and the expansion of every repeat kind.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/VtCalendarEventStore.h"
#include "month/VtCalendarMonthModel.h"
#include "month_support.h"

namespace {

VtCalendarMonthModel ModelFor(int year, int month, int day, uint16_t startWeekday) {
    VtCalendarMonthModel model;
    model.SetShownDate(D(year, month, day));
    model.SetStartWeekday(startWeekday);
    return model;
}

// Days of the shown month on which any lane carries the record id.
std::vector<int> MarkedDays(const VtCalendarMonthModel& model, int id) {
    std::vector<int> days;
    for (int day = 1; day <= model.DaysInMonth(); ++day) {
        for (int lane = 0; lane < kMonthLanes; ++lane) {
            if (model.Lane(day, lane).recordId == id) {
                days.push_back(day);
                break;
            }
        }
    }
    return days;
}

std::vector<int> Range(int from, int to) {
    std::vector<int> days;
    for (int day = from; day <= to; ++day) {
        days.push_back(day);
    }
    return days;
}

struct GridRow {
    const char* name;
    int year, month;
    uint16_t startWeekday;
    int offset;
    int lastDay;
    PLRect lastCell;
};

TEST(MonthGrid, OffsetsAndCells) {
    const GridRow rows[] = {
        {"month starting on the first weekday", 2026, 3, 1, 0, 31, {177, 68, 208, 102}},
        {"monday first pushes sunday the 1st to column 6", 2026, 3, 2, 6, 31, {208, 34, 239, 68}},
        {"31 days from column 6 need the sixth row", 2026, 8, 1, 6, 31, {208, 34, 239, 68}},
        {"saturday first, friday the 1st", 2026, 5, 7, 6, 31, {208, 34, 239, 68}},
        {"28-day february in four rows", 2015, 2, 1, 0, 28, {146, 204, 177, 238}},
        {"leap february", 2024, 2, 1, 4, 29, {177, 136, 208, 170}},
    };
    for (const GridRow& row : rows) {
        SCOPED_TRACE(row.name);
        VtCalendarMonthModel model = ModelFor(row.year, row.month, 1, row.startWeekday);
        EXPECT_EQ(model.FirstOffset(), row.offset);
        EXPECT_EQ(model.DaysInMonth(), row.lastDay);
        const PLRect first = model.CellRectOfDay(1);
        EXPECT_EQ(first, PLRect(53, 34 * row.offset, 84, 34 * row.offset + 34));
        EXPECT_EQ(model.CellRectOfDay(row.lastDay), row.lastCell);
    }
}

struct PointRow {
    const char* name;
    int v, h;
    int day;
    bool inMonth;
};

TEST(MonthGrid, DayOfATouchPoint) {
    // March 2026 with Monday first: the 1st sits in row 0, column 6.
    const VtCalendarMonthModel model = ModelFor(2026, 3, 1, 2);
    const PointRow rows[] = {
        {"top left of the 1st", 53, 204, 1, true},
        {"bottom right pixel of the 1st", 83, 237, 1, true},
        {"above the grid still reads as row 0", 30, 204, 1, true},
        {"far enough above gives row -1", 21, 204, -6, false},
        {"empty cell before the 1st", 53, 0, -5, false},
        {"second row first column", 84, 0, 2, true},
        {"sixth row second column is the 31st", 208, 34, 31, true},
        {"after the last day", 208, 68, 32, false},
        {"the two pixels right of the grid fall into a column 7", 60, 238, 2, true},
    };
    for (const PointRow& row : rows) {
        SCOPED_TRACE(row.name);
        const int16_t day = model.DayAtPoint({row.v, row.h});
        EXPECT_EQ(day, row.day);
        EXPECT_EQ(model.IsDayOfMonth(day), row.inMonth);
    }
}

TEST(MonthGrid, FirstWeekdayOptions) {
    const struct {
        const char* name;
        long option;
        uint16_t expected;
    } rows[] = {
        {"sunday", 11424, 1},          {"monday", 11425, 2},          {"saturday", 11430, 7},
        {"below the range", 11423, 4}, {"above the range", 11431, 4}, {"zero", 0, 4},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        VtCalendarMonthModel model = ModelFor(2026, 3, 1, 4);
        model.SetStartWeekdayOption(row.option);
        EXPECT_EQ(model.GetStartWeekday(), row.expected);
    }
}

TEST(MonthLanes, FourMarksADayAndAllDayTakesNoLane) {
    NodeList list;
    for (int id = 1; id <= 5; ++id) {
        list.Add({.id = id, .first = D(2026, 3, 10), .last = D(2026, 3, 10)});
    }
    list.Add({.id = 6, .first = D(2026, 3, 10), .last = D(2026, 3, 10), .allDay = true});
    VtCalendarMonthModel model = ModelFor(2026, 3, 1, 1);
    model.Build(list.Head());
    for (int lane = 0; lane < kMonthLanes; ++lane) {
        SCOPED_TRACE(lane);
        EXPECT_EQ(model.Lane(10, lane).recordId, lane + 1);
        EXPECT_EQ(model.Lane(10, lane).piece, kMonthPieceSingle);
        EXPECT_EQ(model.Lane(10, lane).colour, 11545);
    }
    EXPECT_TRUE(MarkedDays(model, 5).empty());
    EXPECT_TRUE(MarkedDays(model, 6).empty());
    EXPECT_TRUE(model.HasAllDayMark(10));
    EXPECT_FALSE(model.HasAllDayMark(11));
}

TEST(MonthLanes, MultiDayEventsTakeTheLowerLanes) {
    NodeList list;
    list.Add({.id = 1, .first = D(2026, 3, 10), .last = D(2026, 3, 10)});
    list.Add({.id = 2, .first = D(2026, 3, 9), .last = D(2026, 3, 11)});
    list.Add({.id = 3, .first = D(2026, 3, 11), .last = D(2026, 3, 13)});
    list.Add({.id = 4, .first = D(2026, 3, 12), .last = D(2026, 3, 13)});
    VtCalendarMonthModel model = ModelFor(2026, 3, 1, 1);
    model.Build(list.Head());

    const struct {
        const char* name;
        int day, lane, id, piece;
    } rows[] = {
        {"first bar starts in lane 0", 9, 0, 2, kMonthPieceFirst},
        {"first bar middle", 10, 0, 2, kMonthPieceMiddle},
        {"first bar end", 11, 0, 2, kMonthPieceLast},
        {"overlapping bar moves up a lane on all its days", 11, 1, 3, kMonthPieceFirst},
        {"overlapping bar middle", 12, 1, 3, kMonthPieceMiddle},
        {"overlapping bar end", 13, 1, 3, kMonthPieceLast},
        {"a bar free of lane 0 on all its days takes it", 12, 0, 4, kMonthPieceFirst},
        {"one-day event above the bar", 10, 1, 1, kMonthPieceSingle},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(model.Lane(row.day, row.lane).recordId, row.id);
        EXPECT_EQ(model.Lane(row.day, row.lane).piece, row.piece);
    }
}

TEST(MonthLanes, AFifthOverlappingBarGetsNoMark) {
    NodeList list;
    for (int id = 1; id <= 5; ++id) {
        list.Add({.id = id, .first = D(2026, 3, 1), .last = D(2026, 3, 3)});
    }
    VtCalendarMonthModel model = ModelFor(2026, 3, 1, 1);
    model.Build(list.Head());
    EXPECT_EQ(MarkedDays(model, 4), (std::vector<int>{1, 2, 3}));
    EXPECT_TRUE(MarkedDays(model, 5).empty());
}

struct SpanRow {
    const char* name;
    PLDate first, last;
    PLTime end;
    std::vector<int> days;
};

TEST(MonthLanes, SpansClippedToTheMonthAndMidnightEnds) {
    // clang-format off
    const SpanRow rows[] = {
        {"ending at midnight marks only the first day", D(2026, 3, 5), D(2026, 3, 6), {0, 0, 0}, {5}},
        {"three days ending at midnight", D(2026, 3, 5), D(2026, 3, 8), {0, 0, 0}, {5, 6, 7}},
        {"from the month before", D(2026, 2, 25), D(2026, 3, 3), {9, 0, 0}, {1, 2, 3}},
        {"into the next month", D(2026, 3, 30), D(2026, 4, 2), {9, 0, 0}, {30, 31}},
        {"into the next month ending at midnight", D(2026, 3, 30), D(2026, 4, 2), {0, 0, 0}, {30, 31}},
        {"around the whole month", D(2026, 2, 1), D(2026, 5, 1), {9, 0, 0}, Range(1, 31)},
    };
    // clang-format on
    for (const SpanRow& row : rows) {
        SCOPED_TRACE(row.name);
        NodeList list;
        list.Add({.id = 7, .first = row.first, .last = row.last, .end = row.end});
        APMonthEventNode* head = const_cast<APMonthEventNode*>(list.Head());
        VtCalendarAdjustMidnightEnds(head);
        VtCalendarMonthModel model = ModelFor(2026, 3, 1, 1);
        model.Build(head);
        const std::vector<int>& expected = row.days;
        EXPECT_EQ(MarkedDays(model, 7), expected);
        if (expected.size() > 1) {
            EXPECT_EQ(model.Lane(expected.front(), 0).piece, kMonthPieceFirst);
            EXPECT_EQ(model.Lane(expected.back(), 0).piece, kMonthPieceLast);
        }
    }
}

struct ExpandRow {
    const char* name;
    NodeFields node;
    int year, month;
    std::vector<int> days;
};

NodeFields Repeat(PLDate first, int kind, int a, int b, PLDate limit = D(2030, 12, 31)) {
    NodeFields fields;
    fields.id = 9;
    fields.first = first;
    fields.last = first;
    fields.kind = kind;
    fields.a = a;
    fields.b = b;
    fields.limit = limit;
    fields.hasLimit = true;
    return fields;
}

constexpr int kMon = 1 << 1;
constexpr int kWed = 1 << 3;
constexpr int kFri = 1 << 5;

TEST(MonthExpansion, EveryRepeatKind) {
    // clang-format off
    const ExpandRow rows[] = {
        {"monthly on the 15th", Repeat(D(2026, 1, 15), 4, 1, 15), 2026, 3, {15}},
        {"every second month, off month", Repeat(D(2026, 1, 15), 4, 2, 15), 2026, 2, {}},
        {"every second month, on month", Repeat(D(2026, 1, 15), 4, 2, 15), 2026, 3, {15}},
        {"monthly on the 31st skips april", Repeat(D(2026, 1, 31), 4, 1, 31), 2026, 4, {}},
        {"monthly second tuesday", Repeat(D(2026, 1, 13), 4, 1, 2 * 256 + 3), 2026, 3, {10}},
        {"monthly last friday", Repeat(D(2026, 1, 30), 4, 1, 5 * 256 + 6), 2026, 3, {27}},
        {"monthly, before its first month", Repeat(D(2026, 5, 15), 4, 1, 15), 2026, 3, {}},
        {"monthly, after its limit", Repeat(D(2025, 5, 15), 4, 1, 15, D(2026, 3, 10)), 2026, 3, {}},
        {"yearly 29 february clamps in a common year", Repeat(D(2024, 2, 29), 8, 2, 29), 2026, 2, {28}},
        {"yearly in another month", Repeat(D(2024, 6, 1), 8, 6, 1), 2026, 3, {}},
        {"yearly fourth thursday of november", Repeat(D(2020, 11, 26), 8, 11, 4 * 256 + 5), 2026, 11, {26}},
        {"every third day from february", Repeat(D(2026, 2, 26), 1, 3, 0), 2026, 3, {1, 4, 7, 10, 13, 16, 19, 22, 25, 28, 31}},
        {"daily up to its limit", Repeat(D(2026, 3, 1), 1, 1, 0, D(2026, 3, 5)), 2026, 3, {1, 2, 3, 4, 5}},
        {"daily from late in the month", Repeat(D(2026, 3, 29), 1, 1, 0), 2026, 3, {29, 30, 31}},
        {"working days", Repeat(D(2026, 3, 1), 1, 1, 1), 2026, 3, {2, 3, 4, 5, 6, 9, 10, 11, 12, 13, 16, 17, 18, 19, 20, 23, 24, 25, 26, 27, 30, 31}},
        {"weekly monday and wednesday", Repeat(D(2026, 3, 2), 2, 1, kMon | kWed), 2026, 3, {2, 4, 9, 11, 16, 18, 23, 25, 30}},
        {"every second week", Repeat(D(2026, 3, 2), 2, 2, kMon | kWed), 2026, 3, {2, 4, 16, 18, 30}},
        {"weekly, started twenty years back", Repeat(D(2006, 3, 6), 2, 1, kMon), 2026, 3, {2, 9, 16, 23, 30}},
        {"daily, started twenty years back", Repeat(D(2006, 3, 6), 1, 7, 0), 2026, 3, {2, 9, 16, 23, 30}},
    };
    // clang-format on
    for (const ExpandRow& row : rows) {
        SCOPED_TRACE(row.name);
        NodeList list;
        list.Add(row.node);
        VtCalendarMonthModel model = ModelFor(row.year, row.month, 1, 1);
        model.Build(list.Head());
        EXPECT_EQ(MarkedDays(model, 9), row.days);
    }
}

TEST(MonthExpansion, RepeatingSpansKeepTheirLength) {
    NodeFields fields = Repeat(D(2026, 3, 6), 2, 1, kFri);
    fields.last = D(2026, 3, 8);
    NodeList list;
    list.Add(fields);
    VtCalendarMonthModel model = ModelFor(2026, 3, 1, 1);
    model.Build(list.Head());
    EXPECT_EQ(MarkedDays(model, 9),
              (std::vector<int>{6, 7, 8, 13, 14, 15, 20, 21, 22, 27, 28, 29}));
    EXPECT_EQ(model.Lane(13, 0).piece, kMonthPieceFirst);
    EXPECT_EQ(model.Lane(14, 0).piece, kMonthPieceMiddle);
    EXPECT_EQ(model.Lane(15, 0).piece, kMonthPieceLast);
}

TEST(MonthExpansion, ImpossibleRecordsShowWhatTheirFieldsAllow) {
    NodeFields endBeforeStart;
    endBeforeStart.id = 9;
    endBeforeStart.first = D(2026, 3, 10);
    endBeforeStart.last = D(2026, 3, 5);
    NodeFields colourZero;
    colourZero.id = 9;
    colourZero.first = D(2026, 3, 5);
    colourZero.last = D(2026, 3, 5);
    colourZero.colour = 0;
    NodeFields unknownKind = colourZero;
    unknownKind.kind = 3;
    unknownKind.colour = 11544;

    // clang-format off
    const ExpandRow rows[] = {
        {"kind 3 is shown once", unknownKind, 2026, 3, {5}},
        {"end before start shows the start day", endBeforeStart, 2026, 3, {10}},
        {"colour 0 still marks", colourZero, 2026, 3, {5}},
        {"monthly interval 0", Repeat(D(2026, 1, 10), 4, 0, 10), 2026, 3, {10}},
        {"daily interval 0", Repeat(D(2026, 3, 30), 1, 0, 0), 2026, 3, {30, 31}},
        {"weekly negative interval", Repeat(D(2026, 3, 23), 2, -2, kMon), 2026, 3, {23, 30}},
        {"yearly month 13", Repeat(D(2025, 1, 10), 8, 13, 10), 2026, 1, {}},
        {"monthly day 45", Repeat(D(2026, 1, 10), 4, 1, 45), 2026, 3, {}},
        {"yearly day 45 clamps", Repeat(D(2025, 3, 10), 8, 3, 45), 2026, 3, {31}},
        {"monthly day 0", Repeat(D(2026, 1, 10), 4, 1, 0), 2026, 3, {}},
        {"weekday 0", Repeat(D(2026, 1, 10), 4, 1, 1 * 256 + 0), 2026, 3, {}},
        {"weekday 9", Repeat(D(2026, 1, 10), 8, 3, 1 * 256 + 9), 2026, 3, {}},
        {"empty weekday mask", Repeat(D(2026, 1, 10), 2, 1, 0), 2026, 3, {}},
        {"weekday mask with high bits only", Repeat(D(2026, 1, 10), 2, 1, 0x7F00), 2026, 3, {}},
    };
    // clang-format on
    for (const ExpandRow& row : rows) {
        SCOPED_TRACE(row.name);
        NodeList list;
        list.Add(row.node);
        VtCalendarMonthModel model = ModelFor(row.year, row.month, 1, 1);
        model.Build(list.Head());
        EXPECT_EQ(MarkedDays(model, 9), row.days);
    }
}

TEST(MonthExpansion, RebuildClearsTheOldMarks) {
    NodeList busy;
    busy.Add({.id = 3, .first = D(2026, 3, 4), .last = D(2026, 3, 4), .allDay = true});
    busy.Add({.id = 4, .first = D(2026, 3, 5), .last = D(2026, 3, 5)});
    VtCalendarMonthModel model = ModelFor(2026, 3, 1, 1);
    model.Build(busy.Head());
    ASSERT_TRUE(model.HasAllDayMark(4));
    model.Build(nullptr);
    EXPECT_FALSE(model.HasAllDayMark(4));
    EXPECT_TRUE(MarkedDays(model, 4).empty());
}

TEST(MonthLunar, EveryDayOfTheShownMonthGetsItsLunarDate) {
    const struct {
        const char* name;
        int year, month, day;
        DATES lunar;
    } rows[] = {
        {"spring festival 2026", 2026, 2, 17, {2026, 1, 1, 0}},
        {"dragon boat festival", 2026, 6, 19, {2026, 5, 5, 0}},
        {"mid-autumn festival", 2026, 9, 25, {2026, 8, 15, 0}},
        {"first day of a leap sixth month", 2025, 7, 25, {2025, 6, 1, 1}},
        {"spring festival in a leap february", 2024, 2, 10, {2024, 1, 1, 0}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        // Another month first, so that a stale table would show.
        VtCalendarMonthModel model = ModelFor(row.year, row.month == 1 ? 2 : 1, 1, 1);
        model.Build(nullptr);
        model.SetShownDate(D(row.year, row.month, 1));
        model.Build(nullptr);
        const DATES got = model.LunarDate(row.day);
        EXPECT_EQ(got.year, row.lunar.year);
        EXPECT_EQ(got.month, row.lunar.month);
        EXPECT_EQ(got.day, row.lunar.day);
        EXPECT_EQ(got.leapMonth, row.lunar.leapMonth);
    }
}

TEST(MonthLunar, DaysOutsideTheMonthHaveNone) {
    VtCalendarMonthModel model = ModelFor(2026, 1, 1, 1);
    model.Build(nullptr);
    ASSERT_NE(model.LunarDate(31).month, 0);
    model.SetShownDate(D(2026, 2, 1));
    model.Build(nullptr);
    for (int day : {0, 29, 30, 31, 32}) {
        SCOPED_TRACE(day);
        EXPECT_EQ(model.LunarDate(day).month, 0);
        EXPECT_EQ(model.LunarDate(day).day, 0);
    }
    EXPECT_NE(model.LunarDate(28).month, 0);
}

}  // namespace

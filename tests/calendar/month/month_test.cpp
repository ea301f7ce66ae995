// The month grid (offsets and cells, touch mapping, lanes, the expansion of every repeat kind,
// lunar dates) and the month view's keys.
#include <gtest/gtest.h>

#include <array>
#include <numeric>
#include <vector>

#include "app/VtCalendarEventStore.h"
#include "calendar/calendar_support.h"
#include "month/VtCalendarMonthModel.h"
#include "month/VtCalendarMonthView.h"
#include "month_support.h"

namespace {

VtCalendarMonthModel ModelFor(int year, int month, uint16_t startWeekday = 1) {
    VtCalendarMonthModel model;
    model.SetShownDate(D(year, month, 1));
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

// The first weekday is set to Wednesday, then to the row's option from the settings; an option
// outside the seven keeps what was set.
TEST(MonthGrid, OffsetsAndCells) {
    const struct {
        const char* name;
        int year, month;
        uint16_t start;
        long option;
        int offset, lastDay;
        PLRect lastCell;
    } rows[] = {
        // clang-format off
        {"sunday first, sunday the 1st", 2026, 3, 4, 11424, 0, 31, {177, 68, 208, 102}},
        {"monday first pushes sunday the 1st to column 6", 2026, 3, 4, 11425, 6, 31, {208, 34, 239, 68}},
        {"31 days from column 6 need the sixth row", 2026, 8, 4, 11424, 6, 31, {208, 34, 239, 68}},
        {"saturday first, friday the 1st", 2026, 5, 4, 11430, 6, 31, {208, 34, 239, 68}},
        {"28-day february in four rows", 2015, 2, 4, 11424, 0, 28, {146, 204, 177, 238}},
        {"leap february", 2024, 2, 4, 11424, 4, 29, {177, 136, 208, 170}},
        {"an option below the seven keeps monday", 2026, 3, 2, 11423, 6, 31, {208, 34, 239, 68}},
        {"an option above the seven keeps monday", 2026, 3, 2, 11431, 6, 31, {208, 34, 239, 68}},
        {"option 0 keeps monday", 2026, 3, 2, 0, 6, 31, {208, 34, 239, 68}},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        VtCalendarMonthModel model = ModelFor(row.year, row.month, row.start);
        model.SetStartWeekdayOption(row.option);
        EXPECT_EQ(model.FirstOffset(), row.offset);
        EXPECT_EQ(model.DaysInMonth(), row.lastDay);
        EXPECT_EQ(model.CellRectOfDay(1), PLRect(53, 34 * row.offset, 84, 34 * row.offset + 34));
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
    const VtCalendarMonthModel model = ModelFor(2026, 3, 2);
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

// One month holding a crowded day, overlapping bars and five bars on the same days.
TEST(MonthLanes, BarsFirstInTheLowestFreeLaneAndFourMarksADay) {
    NodeList list;
    list.Add({.id = 1, .first = D(2026, 3, 10), .last = D(2026, 3, 10)});
    list.Add({.id = 2, .first = D(2026, 3, 9), .last = D(2026, 3, 11)});
    list.Add({.id = 3, .first = D(2026, 3, 11), .last = D(2026, 3, 13), .colour = 11552});
    list.Add({.id = 4, .first = D(2026, 3, 12), .last = D(2026, 3, 13)});
    for (int id = 20; id <= 24; ++id) {
        list.Add({.id = id, .first = D(2026, 3, 20), .last = D(2026, 3, 20)});
    }
    list.Add({.id = 25, .first = D(2026, 3, 20), .last = D(2026, 3, 20), .allDay = true});
    for (int id = 30; id <= 34; ++id) {
        list.Add({.id = id, .first = D(2026, 3, 1), .last = D(2026, 3, 3)});
    }
    VtCalendarMonthModel model = ModelFor(2026, 3);
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
        {"a one-day event listed first still goes above the bar", 10, 1, 1, kMonthPieceSingle},
        {"first of four one-day marks", 20, 0, 20, kMonthPieceSingle},
        {"fourth one-day mark", 20, 3, 23, kMonthPieceSingle},
        {"fourth bar on the same days", 3, 3, 33, kMonthPieceLast},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(model.Lane(row.day, row.lane).recordId, row.id);
        EXPECT_EQ(model.Lane(row.day, row.lane).piece, row.piece);
    }
    EXPECT_EQ(model.Lane(12, 1).colour, 11552);
    // A fifth event gets no mark, and an all-day event a tint instead of a lane.
    EXPECT_TRUE(MarkedDays(model, 24).empty());
    EXPECT_TRUE(MarkedDays(model, 34).empty());
    EXPECT_TRUE(MarkedDays(model, 25).empty());
    EXPECT_TRUE(model.HasAllDayMark(20));
    EXPECT_FALSE(model.HasAllDayMark(21));
    // A rebuild starts from a clean table.
    model.Build(nullptr);
    EXPECT_FALSE(model.HasAllDayMark(20));
    EXPECT_TRUE(MarkedDays(model, 2).empty());
}

struct ExpandRow {
    const char* name;
    NodeFields node;
    int year, month;
    std::vector<int> days;
};

void ExpectExpansions(const std::vector<ExpandRow>& rows) {
    for (const ExpandRow& row : rows) {
        SCOPED_TRACE(row.name);
        NodeList list;
        list.Add(row.node);
        // As the store's month query hands the list over.
        VtCalendarAdjustMidnightEnds(list.Head());
        VtCalendarMonthModel model = ModelFor(row.year, row.month);
        model.Build(list.Head());
        EXPECT_EQ(MarkedDays(model, 9), row.days);
    }
}

NodeFields Repeat(PLDate first, int kind, int a, int b, PLDate limit = D(2030, 12, 31)) {
    return {.id = 9, .first = first, .last = first, .kind = kind, .a = a, .b = b, .limit = limit};
}

// A record as stored with no repeat rule to expand.
NodeFields Once(PLDate first, PLDate last, PLTime end = {9, 0, 0}, int kind = 0,
                uint32_t colour = 11545) {
    return {.id = 9, .first = first, .last = last, .kind = kind, .end = end, .colour = colour};
}

NodeFields Lasting(NodeFields fields, PLDate last) {
    fields.last = last;
    return fields;
}

constexpr int kMon = 1 << 1;
constexpr int kWed = 1 << 3;
constexpr int kFri = 1 << 5;

TEST(MonthExpansion, SpansAndEveryRepeatKind) {
    const PLTime midnight(0, 0, 0);
    std::vector<int> march(31);
    std::iota(march.begin(), march.end(), 1);
    // clang-format off
    ExpectExpansions({
        {"ending at midnight marks only the first day", Once(D(2026, 3, 5), D(2026, 3, 6), midnight), 2026, 3, {5}},
        {"three days ending at midnight", Once(D(2026, 3, 5), D(2026, 3, 8), midnight), 2026, 3, {5, 6, 7}},
        {"from the month before", Once(D(2026, 2, 25), D(2026, 3, 3)), 2026, 3, {1, 2, 3}},
        {"into the next month", Once(D(2026, 3, 30), D(2026, 4, 2)), 2026, 3, {30, 31}},
        {"into the next month ending at midnight", Once(D(2026, 3, 30), D(2026, 4, 2), midnight), 2026, 3, {30, 31}},
        {"around the whole month", Once(D(2026, 2, 1), D(2026, 5, 1)), 2026, 3, march},
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
        {"every third day from february", Repeat(D(2026, 2, 26), 1, 3, 0), 2026, 3,
         {1, 4, 7, 10, 13, 16, 19, 22, 25, 28, 31}},
        {"daily up to its limit", Repeat(D(2026, 3, 1), 1, 1, 0, D(2026, 3, 5)), 2026, 3, {1, 2, 3, 4, 5}},
        {"daily from late in the month", Repeat(D(2026, 3, 29), 1, 1, 0), 2026, 3, {29, 30, 31}},
        {"working days", Repeat(D(2026, 3, 1), 1, 1, 1), 2026, 3,
         {2, 3, 4, 5, 6, 9, 10, 11, 12, 13, 16, 17, 18, 19, 20, 23, 24, 25, 26, 27, 30, 31}},
        {"weekly monday and wednesday", Repeat(D(2026, 3, 2), 2, 1, kMon | kWed), 2026, 3,
         {2, 4, 9, 11, 16, 18, 23, 25, 30}},
        {"every second week", Repeat(D(2026, 3, 2), 2, 2, kMon | kWed), 2026, 3, {2, 4, 16, 18, 30}},
        {"weekly, started twenty years back", Repeat(D(2006, 3, 6), 2, 1, kMon), 2026, 3, {2, 9, 16, 23, 30}},
        {"daily, started twenty years back", Repeat(D(2006, 3, 6), 1, 7, 0), 2026, 3, {2, 9, 16, 23, 30}},
        // Once found: the midnight rule applied again per occurrence shortened every span.
        {"repeating three-day spans keep their length",
         Lasting(Repeat(D(2026, 3, 6), 2, 1, kFri), D(2026, 3, 8)), 2026, 3,
         {6, 7, 8, 13, 14, 15, 20, 21, 22, 27, 28, 29}},
    });
    // clang-format on
}

TEST(MonthExpansion, ImpossibleRecordsShowWhatTheirFieldsAllow) {
    // clang-format off
    ExpectExpansions({
        {"kind 3 is shown once", Once(D(2026, 3, 5), D(2026, 3, 5), {9, 0, 0}, 3, 11544), 2026, 3, {5}},
        {"end before start shows the start day", Once(D(2026, 3, 10), D(2026, 3, 5)), 2026, 3, {10}},
        {"colour 0 still marks", Once(D(2026, 3, 5), D(2026, 3, 5), {9, 0, 0}, 0, 0), 2026, 3, {5}},
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
    });
    // clang-format on
}

TEST(MonthLunar, EveryDayOfTheShownMonthAndNoOther) {
    const struct {
        const char* name;
        int year, month, day;
        DATES lunar;  // all zero: the day has none
    } rows[] = {
        {"spring festival 2026", 2026, 2, 17, {2026, 1, 1, 0}},
        {"first day of a leap sixth month", 2025, 7, 25, {2025, 6, 1, 1}},
        {"29 february of a common year", 2026, 2, 29, {}},
        {"31 february", 2026, 2, 31, {}},
        {"day 0", 2026, 2, 0, {}},
        {"day 32", 2026, 3, 32, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        // A 31-day month first, so that a stale table would show.
        VtCalendarMonthModel model = ModelFor(row.year, row.month == 1 ? 3 : 1);
        model.Build(nullptr);
        model.SetShownDate(D(row.year, row.month, 1));
        model.Build(nullptr);
        const auto fields = [](const DATES& d) {
            return std::array{d.year, d.month, d.day, d.leapMonth};
        };
        EXPECT_EQ(fields(model.LunarDate(row.day)), fields(row.lunar));
    }
}

// The month view's keys on a scratch device root: the moves a script cannot reach cheaply (year
// ends, both month directions' clamps, the day keys passing the browsing limit, a month key at the
// limit after the pen highlighted a day) and keys the view leaves to others.
TEST(MonthView, KeysMoveTheSelection) {
    const PLPoint noPen(-1, -1);
    const struct {
        const char* name;
        PLDate from;
        PLPoint pen;  // pressed before the key when not noPen
        uint8_t key;
        bool handled;
        PLDate to;
    } rows[] = {
        // clang-format off
        {"previous day from new year", {2026, 1, 1}, noPen, 28, true, {2025, 12, 31}},
        {"next month clamps the day", {2026, 1, 31}, noPen, 31, true, {2026, 2, 28}},
        {"december to january", {2026, 12, 15}, noPen, 31, true, {2027, 1, 15}},
        {"january to december", {2026, 1, 15}, noPen, 30, true, {2025, 12, 15}},
        {"the day keys pass 1970", {1970, 1, 1}, noPen, 28, true, {1969, 12, 31}},
        // At either browsing limit the month stays, but the highlighted day (the 20th) is taken.
        {"january 1970 back", {1970, 1, 15}, {160, 80}, 30, true, {1970, 1, 20}},
        {"december 2030 on", {2030, 12, 10}, {130, 180}, 31, true, {2030, 12, 20}},
        {"a letter is left", {2026, 3, 15}, noPen, 65, false, {2026, 3, 15}},
        // clang-format on
    };
    const ScratchRoot root;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        PLDate selected = row.from;
        VtCalendarMonthView view(11100, &selected);
        view.Reload(0);
        if (row.pen != noPen) {
            view.MouseDown(row.pen, kPLPen);
            // The pen only highlights: the selection moves with a key or on letting go.
            ASSERT_EQ(selected, row.from);
        }
        EXPECT_EQ(view.DoKeyCommand(char(row.key), 0, kPLModNone), row.handled);
        EXPECT_EQ(selected, row.to);
        EXPECT_EQ(view.GetModel().GetShownDate(), row.to);
    }
}

}  // namespace

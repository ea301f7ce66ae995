// The week's layout behind the week view and its hour table, without any drawing: where the week
// starts, which strip cells the all-day and multi-day events take, and which hour cells the timed
// one-day events take, three slots side by side per day.
//
// The strip and the hour grid read the repeat rules a little differently (the strip tests a weekly
// rule's interval, the grid does not); both readings are kept so that each part shows what it
// always showed.
#pragma once

#include <cstdint>

#include "APEventQueryNodes.h"
#include "PLDate.h"

// Piece of a bar that a cell shows.
constexpr int32_t kWeekPieceFirst = 0;
constexpr int32_t kWeekPieceMiddle = 1;
constexpr int32_t kWeekPieceLast = 2;

constexpr int kWeekDays = 7;
constexpr int kWeekStripRows = 3;
constexpr int kWeekHours = 24;
constexpr int kWeekSlots = 3;
constexpr int kWeekSlotColumns = kWeekDays * kWeekSlots;

struct VtCalendarWeekCell {
    uint8_t used = 0;
    int32_t kind = kWeekPieceFirst;  // kWeekPiece...
    int32_t colour = 0;              // the event's colour choice as stored
};

class VtCalendarWeekModel {
public:
    VtCalendarWeekModel();

    // Weekday 0 (Sunday) .. 6 (Saturday) of a day number; never negative.
    static int WeekdayIndex(int32_t dayNumber);
    // The first day of the week that holds `date` when weeks begin on `startWeekday` (1..7; any
    // other value is read as Sunday).
    static PLDate WeekStartOf(const PLDate& date, int startWeekday);

    void SetWeekStart(const PLDate& weekStart);
    const PLDate& GetWeekStart() const { return mWeekStart; }
    // The date of a column 1..7.
    PLDate DayDate(int column) const;
    // The column 1..7 of a date, 0 when the date is not in the week.
    int ColumnOf(const PLDate& date) const;

    // Clears the strip and places the all-day and multi-day events of a week list (midnight ends
    // already taken back), in list order.
    void BuildStrip(const APMonthEventNode* events);
    // Clears the hour grid and places the timed one-day events of a week list, in list order.
    void BuildGrid(const APMonthEventNode* events);

    // Strip rows 1..3, columns 1..7.
    const VtCalendarWeekCell& StripCell(int row, int column) const;
    // Hour rows 1..24, slot columns 0..20 (day = column / 3, slot = column % 3).
    const VtCalendarWeekCell& GridCell(int row, int slotColumn) const;
    bool HasStripBar(int column) const;

private:
    // Both readings share the rule expansion and differ in the weekly interval test.
    enum class Reading { kStrip, kGrid };
    template <class Place>
    void ForEachOccurrence(const APMonthEventNode& node, Reading reading, Place place) const;
    bool MonthlyDate(const APMonthEventNode& node, int year, int month, bool nextMonthToo,
                     PLDate& out) const;
    bool InWeek(int32_t dayNumber) const;

    void PlaceStripSpan(const APMonthEventNode& node);
    void PlaceStripDay(const APMonthEventNode& node, int32_t dayNumber);
    void PlaceGridOccurrence(const APMonthEventNode& node, int32_t dayNumber);

    PLDate mWeekStart;
    PLDate mLastOfWeek;  // the week's seventh day, kept for the month-end tests
    VtCalendarWeekCell mStrip[kWeekStripRows][kWeekDays];
    VtCalendarWeekCell mGrid[kWeekHours][kWeekSlotColumns];
};

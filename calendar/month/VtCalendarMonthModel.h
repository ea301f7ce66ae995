// The month grid behind the month view: which cell a day sits in, which day a touch point names,
// and how the store's month list becomes per-day marks (repeating events expanded here).
//
// The lanes live in the program-wide table mMonthRectInfo: only one month view ever exists, and
// the drawing code reads the same table.
#pragma once

#include <cstdint>

#include "APEventQueryNodes.h"
#include "APLunar.h"
#include "PLDate.h"
#include "PLPoint.h"
#include "PLRect.h"

// Pieces of a mark: what part of an event a lane shows on one day.
constexpr int32_t kMonthPieceSingle = 1;
constexpr int32_t kMonthPieceFirst = 2;
constexpr int32_t kMonthPieceMiddle = 3;
constexpr int32_t kMonthPieceLast = 4;

constexpr int kMonthLanes = 4;
constexpr int kMonthMaxDays = 31;

// One lane of one day: five 32-bit words.
struct VtCalendarMonthLane {
    int32_t colour;    // the event's colour choice (11544..11553)
    int32_t recordId;  // 0: the lane is free on this day
    int32_t piece;     // kMonthPiece...
    int32_t barFirst;  // day of month on which the event's bar starts in this month
    int32_t barLast;   // day of month on which it ends
};
static_assert(sizeof(VtCalendarMonthLane) == 20, "five words a lane");

struct VtCalendarMonthDay {
    VtCalendarMonthLane lanes[kMonthLanes];
};
static_assert(sizeof(VtCalendarMonthDay) == 80, "four lanes a day");

extern VtCalendarMonthDay mMonthRectInfo[kMonthMaxDays];
static_assert(sizeof(mMonthRectInfo) == 2480, "31 days of lanes");

// Grid geometry in view coordinates.
constexpr int kMonthGridTop = 53;
constexpr int kMonthRowHeight = 31;
constexpr int kMonthColumnWidth = 34;
constexpr int kMonthRows = 6;
constexpr int kMonthColumns = 7;

class VtCalendarMonthModel {
public:
    VtCalendarMonthModel();

    // The weekday 1 (Sunday) .. 7 (Saturday) of a date, from its day number.
    static int WeekdayOf(const PLDate& date);
    static int WeekdayOfNumber(int32_t dayNumber);

    // The shown month is the month of `date`; its day is the highlighted day.
    void SetShownDate(const PLDate& date);
    const PLDate& GetShownDate() const { return mShownDate; }
    PLDate& ShownDate() { return mShownDate; }

    uint16_t GetStartWeekday() const { return mStartWeekday; }
    void SetStartWeekday(uint16_t weekday);
    // A first-weekday option of the settings (11424..11430); other values keep the current one.
    void SetStartWeekdayOption(long option);

    int DaysInMonth() const;
    PLDate FirstOfMonth() const;
    // Column of the 1st in row 0 (0..6).
    int FirstOffset() const;
    // The day of month under a view point; below 1 or above DaysInMonth means an empty cell.
    int16_t DayAtPoint(PLPoint where) const;
    bool IsDayOfMonth(int day) const { return day >= 1 && day <= DaysInMonth(); }
    // The cell rectangle of a day of the shown month (top, left, bottom, right).
    PLRect CellRectOfDay(int day) const;

    bool HasAllDayMark(int day) const;
    // The lunar date of a day of the shown month as the last Build found it; all fields 0 when
    // the day has none (outside the lunar tables, or not a day of the month).
    DATES LunarDate(int day) const;
    const VtCalendarMonthLane& Lane(int day, int lane) const;

    // Clears every mark and places the events of a month list: multi-day events first (so they
    // get the lower lanes), then one-day events, each group in list order. Also finds the lunar
    // date of every day of the month.
    void Build(const APMonthEventNode* events);

private:
    void ClearMarks();
    void ComputeLunarDates();
    void PlaceNode(const APMonthEventNode& node);
    // One occurrence of a repeating event, starting on the day with that day number.
    void PlaceOccurrence(const APMonthEventNode& node, int32_t occurrence);
    void PlaceSingle(const APMonthEventNode& node, const PLDate& first, const PLDate& last);
    // Places the days first..last (both within the shown month) of one event.
    void PlaceSpan(const APMonthEventNode& node, int firstDay, int lastDay);
    void PlaceOneDay(const APMonthEventNode& node, int day);
    void PlaceBar(const APMonthEventNode& node, int firstDay, int lastDay);

    void ExpandMonthly(const APMonthEventNode& node);
    void ExpandYearly(const APMonthEventNode& node);
    void ExpandDaily(const APMonthEventNode& node);
    void ExpandWeekly(const APMonthEventNode& node);
    // The date of a day-of-month or n-th-weekday pattern in the shown month; false when the
    // pattern names no day of it. `clamp` holds a too-large day to the month's last day.
    bool PatternDate(int32_t pattern, bool clamp, PLDate& out) const;

    PLDate mShownDate;
    uint16_t mStartWeekday = 1;
    uint8_t mAllDayMark[kMonthMaxDays] = {};
    DATES mLunar[kMonthMaxDays] = {};
    // The shown month while Build runs: day number of its 1st and its length.
    int32_t mMonthFirst = 0;
    int mMonthDays = 31;
};

// A date picker: a month grid under a header with year and month arrows. A tap on a day picks it;
// keys left/right move a day, up/down a week, page keys a month, ok accepts. Dates stay within
// 1970-01-01..2030-12-31. Month and weekday names come from the platform texts.
#pragma once

#include "PLDate.h"
#include "VtBaseDialog.h"

class VtCalendarDateDialog : public VtBaseDialog {
public:
    VtCalendarDateDialog(uint32_t id, PLSize extent, const PLDate& date, long firstWeekday,
                         const PLBasicString<char>& title);

    const PLDate& GetDate() const { return mDate; }
    void SetDate(const PLDate& date);
    long GetFirstWeekday() const { return mFirstWeekday; }

    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "VtCalendarDateDialog"; }

    // The date shown in a grid cell (0..41) for the current month.
    PLDate CellDate(int cell) const;
    // The month title between the arrows: the month's name and year when the platform texts are
    // installed and it fits, else "2026-11".
    PLBasicString<char> HeaderText() const;
    // The weekday initial over a grid column (0..6) in the dialog's first-weekday order; empty for
    // a column outside the grid.
    PLBasicString<char> WeekdayLabel(int column) const;

protected:
    void DrawContent(PLDrawContext& context, const PLRect& area) override;
    bool HandleKey(uint8_t key) override;

private:
    enum class Hit { None, PrevYear, PrevMonth, NextMonth, NextYear, Cell };
    Hit HitAt(PLPoint local, int& cell) const;
    PLRect HeaderRect() const;
    PLRect GridRect() const;
    PLRect CellRect(int cell) const;
    void Move(int days);
    void MoveMonths(int months);

    PLDate mDate;
    long mFirstWeekday;
    Hit mPressed = Hit::None;
    int mPressedCell = -1;
};

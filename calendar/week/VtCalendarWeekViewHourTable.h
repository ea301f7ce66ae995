// The week's hour table: a grey column of hour labels and a grid of 24 hour rows by 7 day columns
// in which the week's timed one-day events are thin coloured bars, up to three side by side a day.
// It keeps a selected cell that the pen and the keys move, and asks the application (its
// listener) to open the selected day ("msup") or to show another week ("valu").
#pragma once

#include <cstdint>

#include "APEventQueryNodes.h"
#include "PLDate.h"
#include "PLView.h"
#include "week/VtCalendarWeekModel.h"

// Table geometry, in table coordinates.
constexpr int kHourRowHeight = 31;
constexpr int kHourLabelWidth = 37;
constexpr int kHourColumnWidth = 26;
constexpr int kHourTableHeight = kHourRowHeight * kWeekHours;  // 744

class VtCalendarWeekViewHourTable : public PLThemeView {
public:
    VtCalendarWeekViewHourTable(PLDate* selectDate, PLPoint location, PLSize size, uint32_t id);
    ~VtCalendarWeekViewHourTable() override;
    VtCalendarWeekViewHourTable(const VtCalendarWeekViewHourTable&) = delete;
    VtCalendarWeekViewHourTable& operator=(const VtCalendarWeekViewHourTable&) = delete;

    static VtCalendarWeekViewHourTable* Make(PLDate* selectDate, PLPoint location, PLSize size,
                                             uint32_t id);

    // Rereads the settings and the week of the selected date from the store and lays out the bars;
    // the selection goes to the selected date at the start-of-day hour.
    void Rebuild();

    const VtCalendarWeekModel& GetModel() const { return mModel; }
    const PLDate& GetCellDate() const { return mCellDate; }
    int GetSelectedColumn() const { return mSelectedColumn; }
    int GetSelectedRow() const { return mSelectedRow; }

    bool DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers) override;
    void Draw(PLDrawContext& context) override;
    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    void MouseMove(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "VtCalendarWeekViewHourTable"; }

private:
    void DrawLabels(PLDrawContext& context) const;
    void DrawGrid(PLDrawContext& context) const;
    void DrawBars(PLDrawContext& context) const;
    void DrawSelection(PLDrawContext& context) const;

    void SelectCellAt(PLPoint where);
    void SelectColumn(int column);
    void StepWeek(int days);
    void CopyCellToSelectDate();
    // The selected date changed under the date header: let it show the new day.
    void RepaintDateHeader();
    void Send(uint32_t kind);

    // Scrolling through the pane that holds the table (a scroll container's content pane).
    long ScrollOffset() const;
    long VisibleHeight() const;
    void ScrollTo(long offset);
    void RepaintHolder();

    PLDate* mSelectDate;
    PLDate mCellDate;
    PLDate mWeekStart;
    uint16_t mStartWeekday = 1;
    uint16_t mSelectedColumn = 1;
    uint16_t mSelectedRow = 1;
    APMonthEventNode* mWeekEvents = nullptr;
    VtCalendarWeekModel mModel;
    bool mDragArmed = false;
};

// The month view: one month as a grid of day cells with event marks, moved by keys and the pen,
// with an options menu (new event, go to a date, delete the month's events, settings) and a
// view-switch menu. Opening a day or another screen is asked of the application by message.
#pragma once

#include <cstdint>
#include <memory>

#include "APEventQueryNodes.h"
#include "PLDate.h"
#include "PLView.h"
#include "VtMenu.h"
#include "month/VtCalendarMonthModel.h"

class PLBitmap;
class PLListener;

// Ids of the month view and its controls and menus.
constexpr uint32_t kMonthViewID = 11100;
constexpr uint32_t kMonthViewSwitchButton = 11102;
constexpr uint32_t kMonthExitButton = 11103;
constexpr uint32_t kMonthDateHeader = 11104;
constexpr uint32_t kMonthViewMenu = 11106;
constexpr uint32_t kOptionsButton = 11810;
constexpr uint32_t kOptionsMenu = 11820;
constexpr uint32_t kOptionNewEvent = 11811;
constexpr uint32_t kOptionGoToDate = 11812;
constexpr uint32_t kOptionDeleteAll = 11815;
constexpr uint32_t kOptionSettings = 11816;
constexpr uint32_t kViewMonth = 11821;
constexpr uint32_t kViewWeek = 11822;
constexpr uint32_t kViewDay = 11823;

class VtCalendarMonthView : public PLView {
public:
    VtCalendarMonthView(uint32_t id, PLDate* selectDate);
    ~VtCalendarMonthView() override;

    // The view with its bottom bar and date header; `application` hears the buttons that ask for
    // other screens.
    static VtCalendarMonthView* Make(uint32_t id, PLDate* selectDate, PLListener* application);

    // Rebuilds the month of the selected date from the store. Modes below 2 reread the first
    // weekday (0: data changed, 1: settings changed).
    void Reload(int mode);

    PLMenu* GetOptionsMenu() const { return mOptionsMenu.get(); }
    PLMenu* GetViewMenu() const { return mViewMenu.get(); }
    const VtCalendarMonthModel& GetModel() const { return mModel; }
    bool HasEvents() const { return mEvents != nullptr; }

    void Listen(PLMessage* message) override;
    bool DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers) override;
    void Draw(PLDrawContext& context) override;
    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    void MouseMove(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "VtCalendarMonthView"; }

private:
    void BuildMenus();
    void FreeEvents();

    // --- painting
    void DrawWeekdayBand(PLDrawContext& context) const;
    void DrawWeekdayNames(PLDrawContext& context) const;
    void DrawGrid(PLDrawContext& context) const;
    void DrawCell(PLDrawContext& context, int cell, const PLDate& date, const PLDate& today) const;
    void DrawMarks(PLDrawContext& context, int row, int column, int day) const;
    // Marks the cell of a day of the shown month for repainting.
    void RepaintDay(int day);

    // --- selection
    // Moves the selection to `date`: repaints two cells within the month, or reloads the month
    // when it changed.
    void SelectDate(const PLDate& date);
    void StepMonth(int delta);
    void HighlightDayAt(PLPoint where);
    void AskForDay();

    // --- menu commands
    void GoToDate();
    void DeleteAllOfMonth();
    // Deletes every event of a fresh month list once the user agreed; false when cancelled.
    bool DeleteMonthEvents();
    void TakeKeys();

    PLDate* mSelectDate;
    VtCalendarMonthModel mModel;
    APMonthEventNode* mEvents = nullptr;
    std::unique_ptr<VtMenu> mOptionsMenu;
    std::unique_ptr<VtMenu> mViewMenu;
    const PLBitmap* mHeaderBitmap = nullptr;
};

// The calendar's application object: start-up, the five top-level screens made on first use,
// and all switching between them. Views never switch among themselves; they report what the
// user asked for and this object removes one view from the root view and adds another.
#pragma once

#include <cstdint>

#include "PLApplication.h"

class CalendarLodingThread;
class PLMenu;
class PLPane;
class VtCalendarDayView;
class VtCalendarMonthView;
class VtCalendarNewEventView;
class VtCalendarSetupView;
class VtCalendarWeekView;

class VtCalendarApp : public PLApplication {
public:
    VtCalendarApp();
    ~VtCalendarApp() override;

    // Resource file, theme, world clock, settings, purge, selected time and the first view.
    // False when the settings cannot be read: then no view is shown.
    bool Startup();
    // Deletes the views that are not on the root view (the shown one goes with the root view),
    // then the loading thread when it has finished.
    void Cleanup();

    // Accessors: each makes its view on first use.
    VtCalendarMonthView* MonthView();
    VtCalendarWeekView* WeekView();
    VtCalendarDayView* DayView();
    VtCalendarSetupView* SetupView();
    VtCalendarNewEventView* NewEventView();
    bool HasMonthView() const { return monthView != nullptr; }
    bool HasWeekView() const { return weekView != nullptr; }
    bool HasDayView() const { return dayView != nullptr; }

    uint32_t GetReturnViewId() const { return returnViewId; }
    int32_t GetWorldClockA() const { return worldClockA; }
    int32_t GetWorldClockB() const { return worldClockB; }

    void Listen(PLMessage* message) override;
    bool DoKeyCommand(char key, short repeat, PLKeyModifiers modifiers) override;

private:
    void LoadResources();
    void ShowFirstView(long defaultView);

    // --- message handling
    void OnMenu(uint32_t sender);
    void OnViewRequest(uint32_t sender);
    void OnValue(uint32_t sender, uint32_t flags);
    void OnControl(uint32_t command);
    void ReloadAll();
    void Exit();

    // --- navigation
    PLPane* ShownMainView();
    uint32_t ShownMainViewId();
    PLMenu* ViewSwitchMenuOf(uint32_t button);
    void SwitchTo(uint32_t item, uint32_t sender);
    void ShowMonth();
    void ShowWeek();
    void ShowDay();
    void OpenDayView();
    void OpenFormFromDay();
    void OpenFromOptions(bool form);
    void ReturnToMainView(uint32_t viewId);
    void TargetMainView(uint32_t viewId);
    void RemoveFromRoot(PLPane* view, bool suppress);
    void AddToRoot(PLPane* view, bool suppress);
    void SetStartHourFromSettings();

    VtCalendarMonthView* monthView = nullptr;
    VtCalendarWeekView* weekView = nullptr;
    VtCalendarDayView* dayView = nullptr;
    VtCalendarSetupView* setupView = nullptr;
    VtCalendarNewEventView* newEventView = nullptr;
    // The main view to return to from the form or the settings; 0 until one was recorded.
    uint32_t returnViewId = 0;
    CalendarLodingThread* loadingThread = nullptr;
    int32_t worldClockA = 0;
    int32_t worldClockB = 0;
};

// The application object: start-up, the view accessors and the navigation between views.
#include "app/VtCalendarApp.h"

#include <cassert>

#include "APConfig.h"
#include "APLaunch.h"
#include "PLAppContext.h"
#include "PLEventDispatcher.h"
#include "PLEventLoop.h"
#include "PLMessage.h"
#include "PLResourceFileManager.h"
#include "PLTheme.h"
#include "PLView.h"
#include "VtTheme.h"
#include "app/CalendarLodingThread.h"
#include "app/VtCalendarBroadcasts.h"
#include "app/VtCalendarGlobals.h"
#include "app/VtCalendarPurge.h"
#include "day/VtCalendarDayView.h"
#include "event/VtCalendarNewEventView.h"
#include "month/VtCalendarMonthView.h"
#include "settings/VtCalendarSetupView.h"
#include "week/VtCalendarWeekView.h"

namespace {

constexpr uint32_t kResourceManagerID = 10003;
constexpr const char* kResourceFile = "/root/resource/calendar.rsc";
constexpr uint32_t kFormSavedAlt = 11570;
constexpr uint32_t kDetailDeleted = 12106;
constexpr uint32_t kDayDeleted = 12203;

PLEventLoop& Loop() {
    return PLAppContext::GetInstance()->GetEventLoop();
}

bool Succeeded(long result) {
    return (result & 0xFF) != 0;
}

// Drawing stays off while a view changes so that removal, reload and first paint appear at once.
class DrawingSuppressed {
public:
    explicit DrawingSuppressed(bool active) : mActive(active) {
        if (mActive) {
            PLPane::SuppressDrawing();
        }
    }
    ~DrawingSuppressed() {
        if (mActive) {
            PLPane::RemoveDrawingSuppression();
        }
    }
    DrawingSuppressed(const DrawingSuppressed&) = delete;
    DrawingSuppressed& operator=(const DrawingSuppressed&) = delete;

private:
    bool mActive;
};

void Repaint(PLPane* pane) {
    pane->HandleDraw(nullptr, nullptr, nullptr, nullptr);
}

}  // namespace

VtCalendarApp::VtCalendarApp() = default;

VtCalendarApp::~VtCalendarApp() = default;

bool VtCalendarApp::DoKeyCommand(char, short, PLKeyModifiers) {
    return false;
}

// ---------------------------------------------------------------------------------- start-up

void VtCalendarApp::LoadResources() {
    auto* manager = new PLResourceFileManager(kResourceManagerID, true);
    // A missing or damaged file still leaves a manager: texts then show their ids.
    manager->LoadFromFile(kResourceFile, true);
    PLAppContext::GetInstance()->AddResourceManager(manager, true);
}

bool VtCalendarApp::Startup() {
    RegisterForIPC_APLaunchAppMsg();
    PLDate::Today(g_selectDate);
    InitVantorTheme(PLRGBColor(), 0, true, true, true, false);
    LoadResources();
    PLThemeManager::GetCurrentTheme();

    APCONFIG_WORLDCLOCK_S clock;
    if (Succeeded(APConfigWorldClock_Read(&clock))) {
        worldClockA = clock.foreignOffsetMinutes;
        worldClockB = clock.foreignDaylight;
    }

    APCONFIG_CALENDAR_S config;
    if (!Succeeded(APConfigCalendar_Read(&config))) {
        // Unreadable settings: nothing is purged and no view is shown.
        return false;
    }
    VtCalendarPurgeFinished(config.keepTime);
    g_selectTime.SetHour(config.startDayTime);
    g_selectTime.SetMinute(0);
    g_selectTime.SetSecond(0);
    ShowFirstView(config.defaultView);
    return true;
}

void VtCalendarApp::ShowFirstView(long defaultView) {
    if (defaultView == kAPDefaultViewWeek) {
        VtCalendarWeekView* week = WeekView();
        GetRootView()->AddSubPane(week, false);
        week->Rebuild();
        Repaint(week);
    } else if (defaultView == kAPDefaultViewDay) {
        VtCalendarDayView* day = DayView();
        GetRootView()->AddSubPane(day, false);
        day->Rebuild();
        Repaint(day);
    } else {
        GetRootView()->AddSubPane(MonthView(), false);
    }
}

void VtCalendarApp::Cleanup() {
    auto dropIfDetached = [](auto*& view) {
        if (view != nullptr && view->GetParent() == nullptr) {
            delete view;
        }
        view = nullptr;
    };
    dropIfDetached(monthView);
    dropIfDetached(weekView);
    dropIfDetached(dayView);
    dropIfDetached(setupView);
    dropIfDetached(newEventView);
    if (loadingThread != nullptr && !loadingThread->IsRunning()) {
        delete loadingThread;
        loadingThread = nullptr;
    }
}

// --------------------------------------------------------------------------------- accessors

VtCalendarMonthView* VtCalendarApp::MonthView() {
    if (monthView == nullptr) {
        monthView = VtCalendarMonthView::Make(kMonthViewID, &g_selectDate, this);
        // The month is laid out before the view is first shown: start-up and the return from the
        // form or the settings only add it, so its first reload happens here.
        monthView->Reload(0);
        Loop().SetTarget(monthView);
        monthView->AddListener(this);
    }
    return monthView;
}

VtCalendarWeekView* VtCalendarApp::WeekView() {
    if (weekView == nullptr) {
        weekView = VtCalendarWeekView::Make(kWeekViewID, &g_selectDate, this);
        Loop().SetTarget(weekView->GetHourTable());
        weekView->AddListener(this);
    }
    return weekView;
}

VtCalendarDayView* VtCalendarApp::DayView() {
    if (dayView == nullptr) {
        long lunar = 0;
        APConfigCalendar_GetLunarCalendar(&lunar);
        dayView =
            VtCalendarDayView::Make(kDayViewID, &g_selectDate, &g_selectTime, lunar != 0, this);
        Loop().SetTarget(dayView);
        dayView->AddListener(this);
    }
    return dayView;
}

VtCalendarSetupView* VtCalendarApp::SetupView() {
    if (setupView == nullptr) {
        setupView = VtCalendarSetupView::Make(kSetupViewID, this);
        setupView->AddListener(this);
    }
    return setupView;
}

VtCalendarNewEventView* VtCalendarApp::NewEventView() {
    if (newEventView == nullptr) {
        newEventView =
            VtCalendarNewEventView::Make(kNewEventViewID, &g_selectDate, &g_selectTime, this);
        newEventView->AddListener(this);
    }
    return newEventView;
}

// ---------------------------------------------------------------------------------- messages

void VtCalendarApp::Listen(PLMessage* message) {
    assert(message != nullptr && "a message to handle");
    if (message == nullptr) {
        return;
    }
    const uint32_t sender = message->GetSenderID();
    switch (message->GetMessageID()) {
        case kPLMsgSelect:
            OnMenu(sender);
            break;
        case kPLMsgUp:
            OnViewRequest(sender);
            break;
        case kPLMsgValue:
            OnValue(sender, message->GetUserMessageID());
            break;
        case kPLMsgControl:
            OnControl(sender);
            break;
        case kMsgReloadRequest:
            ReloadAll();
            break;
        case kMsgExitRequest:
            Exit();
            break;
        default:
            break;
    }
}

void VtCalendarApp::OnMenu(uint32_t sender) {
    if (sender == kMonthViewSwitchButton || sender == kWeekViewSwitchButton ||
        sender == kDayViewSwitchButton) {
        PLMenu* menu = ViewSwitchMenuOf(sender);
        if (menu != nullptr) {
            SwitchTo(menu->GetSelectedItemID(), sender - 2);
        }
        return;
    }
    if (sender != kOptionsButton) {
        return;
    }
    PLMenu* options = nullptr;
    switch (ShownMainViewId()) {
        case kMonthViewID:
            options = monthView->GetOptionsMenu();
            break;
        case kWeekViewID:
            options = weekView->GetOptionsMenu();
            break;
        case kDayViewID:
            options = dayView->GetOptionsMenu();
            break;
        default:
            return;
    }
    const uint32_t chosen = options->GetSelectedItemID();
    if (chosen == kOptionNewEvent) {
        OpenFromOptions(true);
    } else if (chosen == kOptionSettings) {
        OpenFromOptions(false);
    }
}

void VtCalendarApp::OnViewRequest(uint32_t sender) {
    switch (sender) {
        case kMonthViewID:
            RemoveFromRoot(monthView, false);
            OpenDayView();
            break;
        case kWeekViewID:
        case kWeekHourTable:
            RemoveFromRoot(weekView, false);
            OpenDayView();
            break;
        case kDayViewID:
            OpenFormFromDay();
            break;
        default:
            break;
    }
}

void VtCalendarApp::OnValue(uint32_t sender, uint32_t flags) {
    if (sender == kSetupViewID) {
        long keep = 0;
        if (Succeeded(APConfigCalendar_GetKeepTime(&keep))) {
            VtCalendarPurgeFinished(keep);
        }
        SetStartHourFromSettings();
        if (flags & 1) {
            MonthView()->Reload(1);
        }
        if (flags & 2) {
            WeekView()->Reload(1);
            WeekView()->Rebuild();
        }
        if (flags & 4) {
            DayView()->Reload(1);
        }
    } else if (sender == kNewEventViewID || sender == kFormSavedAlt) {
        MonthView()->Reload(0);
        WeekView()->Reload(0);
        DayView()->Reload(0);
    } else if (sender == kWeekHourTable) {
        WeekView()->Reload(0);
        Repaint(WeekView());
    }
}

void VtCalendarApp::OnControl(uint32_t command) {
    const uint32_t current = returnViewId;
    switch (command) {
        case kMonthExitButton:
        case kWeekExitButton:
        case kDayExitButton:
            Exit();
            return;
        case kSetupSave:
        case kSetupBack:
            RemoveFromRoot(SetupView(), false);
            ReturnToMainView(current);
            break;
        case kNewEventSave:
            if (NewEventView()->Save()) {
                RemoveFromRoot(NewEventView(), false);
                ReturnToMainView(current);
            }
            break;
        case kNewEventCancel:
            NewEventView()->Close(false, false);
            ReturnToMainView(current);
            break;
        case kDetailDeleted:
        case kDayDeleted:
            MonthView()->Reload(0);
            WeekView()->Reload(0);
            break;
        default:
            break;
    }
    TargetMainView(current);
}

void VtCalendarApp::ReloadAll() {
    if (monthView != nullptr) {
        monthView->Reload(0);
    }
    if (weekView != nullptr) {
        weekView->Reload(0);
    }
    if (dayView != nullptr) {
        dayView->Reload(0);
    }
    Repaint(GetRootView());
}

void VtCalendarApp::Exit() {
    VtCalendarBroadcastExit();
    PLEventDispatcher::ShutdownEventLoops();
}

// -------------------------------------------------------------------------------- navigation

PLPane* VtCalendarApp::ShownMainView() {
    PLView* root = GetRootView();
    for (uint32_t id : {kMonthViewID, kWeekViewID, kDayViewID}) {
        if (PLPane* pane = root->FindPane(id)) {
            return pane;
        }
    }
    return nullptr;
}

uint32_t VtCalendarApp::ShownMainViewId() {
    PLPane* shown = ShownMainView();
    return shown != nullptr ? shown->GetID() : 0;
}

PLMenu* VtCalendarApp::ViewSwitchMenuOf(uint32_t button) {
    switch (button) {
        case kMonthViewSwitchButton:
            return monthView != nullptr ? monthView->GetViewMenu() : nullptr;
        case kWeekViewSwitchButton:
            return weekView != nullptr ? weekView->GetViewMenu() : nullptr;
        default:
            return dayView != nullptr ? dayView->GetViewMenu() : nullptr;
    }
}

void VtCalendarApp::SwitchTo(uint32_t item, uint32_t sender) {
    const uint32_t own = sender == kMonthViewID  ? kViewMonth
                         : sender == kWeekViewID ? kViewWeek
                                                 : kViewDay;
    if (item == own) {
        return;
    }
    PLPane* from = GetRootView()->FindPane(sender);
    switch (item) {
        case kViewMonth:
            if (GetRootView()->FindPane(kMonthViewID) == nullptr) {
                ShowMonth();
            }
            break;
        case kViewWeek:
            if (GetRootView()->FindPane(kWeekViewID) == nullptr) {
                ShowWeek();
            }
            break;
        case kViewDay:
            if (GetRootView()->FindPane(kDayViewID) == nullptr) {
                ShowDay();
            }
            break;
        default:
            return;
    }
    if (from != nullptr) {
        RemoveFromRoot(from, false);
    }
}

void VtCalendarApp::ShowMonth() {
    VtCalendarMonthView* month = MonthView();
    month->Reload(0);
    Loop().SetTarget(month);
    GetRootView()->AddSubPane(month, false);
    Repaint(month);
}

void VtCalendarApp::ShowWeek() {
    VtCalendarWeekView* week = WeekView();
    week->Reload(0);
    Loop().SetTarget(week->GetHourTable());
    AddToRoot(week, true);
    week->Rebuild();
    Repaint(week);
}

void VtCalendarApp::ShowDay() {
    SetStartHourFromSettings();
    VtCalendarDayView* day = DayView();
    day->Reload(0);
    Loop().SetTarget(day);
    AddToRoot(day, true);
    day->Rebuild();
    Repaint(day);
}

void VtCalendarApp::OpenDayView() {
    if (GetRootView()->FindPane(kDayViewID) != nullptr) {
        return;
    }
    ShowDay();
}

void VtCalendarApp::OpenFormFromDay() {
    returnViewId = kDayViewID;
    RemoveFromRoot(dayView, true);
    // The form starts at the hour the day view selected: the selected time is left alone.
    VtCalendarNewEventView* form = NewEventView();
    form->Prepare(nullptr);
    GetRootView()->AddSubPane(form, false);
}

void VtCalendarApp::OpenFromOptions(bool form) {
    PLPane* shown = ShownMainView();
    if (shown == nullptr) {
        return;
    }
    returnViewId = shown->GetID();
    RemoveFromRoot(shown, returnViewId == kDayViewID);
    if (form) {
        SetStartHourFromSettings();
        VtCalendarNewEventView* view = NewEventView();
        view->Prepare(nullptr);
        GetRootView()->AddSubPane(view, false);
    } else {
        VtCalendarSetupView* view = SetupView();
        view->LoadSettings();
        GetRootView()->AddSubPane(view, false);
    }
}

void VtCalendarApp::ReturnToMainView(uint32_t viewId) {
    switch (viewId) {
        case kMonthViewID:
            GetRootView()->AddSubPane(MonthView(), false);
            break;
        case kWeekViewID:
            AddToRoot(WeekView(), true);
            WeekView()->Rebuild();
            Repaint(WeekView());
            break;
        case kDayViewID:
            AddToRoot(DayView(), true);
            DayView()->Rebuild();
            Repaint(DayView());
            break;
        default:
            break;
    }
}

void VtCalendarApp::TargetMainView(uint32_t viewId) {
    switch (viewId) {
        case kMonthViewID:
            Loop().SetTarget(MonthView());
            break;
        case kWeekViewID:
            Loop().SetTarget(WeekView()->GetHourTable());
            break;
        case kDayViewID:
            Loop().SetTarget(DayView());
            break;
        default:
            break;
    }
}

void VtCalendarApp::RemoveFromRoot(PLPane* view, bool suppress) {
    if (view == nullptr) {
        return;
    }
    DrawingSuppressed quiet(suppress);
    GetRootView()->RemoveSubPane(view);
}

void VtCalendarApp::AddToRoot(PLPane* view, bool suppress) {
    DrawingSuppressed quiet(suppress);
    GetRootView()->AddSubPane(view, false);
}

void VtCalendarApp::SetStartHourFromSettings() {
    long hour = 0;
    if (Succeeded(APConfigCalendar_GetStartDayTime(&hour))) {
        g_selectTime.SetHour(int(hour));
    }
}

// The application object on a scratch device root with a pinned clock: start-up by the settings,
// damaged settings, the purge, the messages that switch views and reload them, exit, clean-up and
// the loading thread.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "APConfig.h"
#include "APEventRec.h"
#include "PLAppContext.h"
#include "PLClock.h"
#include "PLDeviceRoot.h"
#include "PLEventDispatcher.h"
#include "PLEventLoop.h"
#include "PLMessage.h"
#include "PLPMEClient.h"
#include "PLTimeStamp.h"
#include "PLView.h"
#include "app/CalendarLodingThread.h"
#include "app/VtCalendarApp.h"
#include "app/VtCalendarGlobals.h"
#include "app/VtCalendarHelpers.h"
#include "day/VtCalendarDayView.h"
#include "month/VtCalendarMonthView.h"
#include "settings/VtCalendarSetupView.h"
#include "week/VtCalendarWeekView.h"

namespace {

namespace fs = std::filesystem;

long Utc(int year, int month, int day, int hour = 0, int minute = 0) {
    std::tm t{};
    t.tm_year = year - 1900;
    t.tm_mon = month - 1;
    t.tm_mday = day;
    t.tm_hour = hour;
    t.tm_min = minute;
    return long(timegm(&t));
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

int AddEvent(long start, long end) {
    _EventRecInfo record;
    InitEventRecInfo(&record);
    record.startStamp = int32_t(start);
    record.endStamp = int32_t(end);
    record.lastStamp = int32_t(end);
    record.colour = 11548;
    record.classChoice = 11561;
    APEventRec store;
    return store.AddEventRec(&record);
}

class CalendarAppTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "calapp-XXXXXX").string();
        mRoot = mkdtemp(pattern.data());
        PLDeviceRoot::SetRoot(mRoot);
        const fs::path rsc = fs::path(CAL_BINARY_DIR) / "share" / "calendar.rsc";
        if (fs::exists(rsc)) {
            fs::create_directories(fs::path(mRoot) / "root" / "resource");
            fs::copy_file(rsc, fs::path(mRoot) / "root" / "resource" / "calendar.rsc");
        }
        PLClock::Pin(int64_t(Utc(2026, 11, 21, 9, 41)) * 1000);
        PLAppContext::ResetInstance();
    }
    void TearDown() override {
        if (app) {
            app->Cleanup();
            PLAppContext::GetInstance()->SetApplication(nullptr);
            app.reset();
        }
        PLAppContext::ResetInstance();
        PLClock::Unpin();
        PLDeviceRoot::SetRoot("");
        std::error_code ignored;
        fs::remove_all(mRoot, ignored);
    }

    void WriteSettings(int32_t defaultView, int32_t weekday = 11424, int32_t hour = 8,
                       int32_t keep = 11457) {
        APCONFIG_CALENDAR_S config;
        config.defaultView = defaultView;
        config.startWeekDay = weekday;
        config.startDayTime = hour;
        config.keepTime = keep;
        ASSERT_EQ(APConfigCalendar_Write(&config) & 0xFF, 1);
    }
    // The application as InitApplication makes it, before its start-up.
    void MakeApp() {
        app = std::make_unique<VtCalendarApp>();
        app->Initialize();
        PLAppContext::GetInstance()->SetApplication(app.get());
        PLAppContext::GetInstance()->GetEventDispatcher().AddListener(app.get());
    }
    bool StartApp() {
        MakeApp();
        return app->Startup();
    }
    bool Shown(uint32_t id) { return app->GetRootView()->FindPane(id) != nullptr; }
    void Send(uint32_t kind, uint32_t first, uint32_t second = 0x3F3F3F3F) {
        PLMessage message(kind, first, second, kEmptyString, kEmptyString);
        app->Listen(&message);
    }
    PLPane* Target() { return PLAppContext::GetInstance()->GetEventLoop().GetTarget(); }

    std::string mRoot;
    std::unique_ptr<VtCalendarApp> app;
};

TEST_F(CalendarAppTest, StartsInTheViewTheSettingsChoose) {
    const struct {
        const char* name;
        int32_t defaultView;
        uint32_t shown;
    } rows[] = {
        {"month", 11414, 11100}, {"week", 11415, 11200},       {"day", 11416, 11300},
        {"zero", 0, 11100},      {"unknown id", 12345, 11100},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        WriteSettings(row.defaultView, 11424, 7);
        ASSERT_TRUE(StartApp());
        for (uint32_t id : {11100u, 11200u, 11300u}) {
            EXPECT_EQ(Shown(id), id == row.shown) << id;
        }
        EXPECT_EQ(g_selectDate, PLDate(2026, 11, 21));
        EXPECT_EQ(g_selectTime, PLTime(7, 0, 0));
        ASSERT_NE(Target(), nullptr);
        EXPECT_EQ(Target()->GetID(), row.shown);
        app->Cleanup();
        PLAppContext::GetInstance()->SetApplication(nullptr);
        app.reset();
        PLAppContext::ResetInstance();
    }
}

TEST_F(CalendarAppTest, FirstWeekdayIsTheStoredOptionLess11423In16Bits) {
    const struct {
        const char* name;
        int32_t stored;
        uint16_t weekday;
    } rows[] = {
        {"sunday", 11424, 1},    {"monday", 11425, 2},
        {"saturday", 11430, 7},  {"one below the options", 11423, 0},
        {"one above", 11431, 8}, {"zero wraps", 0, uint16_t(0 - 11423)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        WriteSettings(11414, row.stored);
        EXPECT_EQ(StartWeekDayIndex(), row.weekday);
    }
}

TEST_F(CalendarAppTest, UnreadableSettingsShowNothingAndLoseNothing) {
    WriteSettings(11414);
    const int id = AddEvent(Utc(2026, 11, 10, 10), Utc(2026, 11, 10, 11));
    ASSERT_GT(id, 0);
    const std::string settings = PLDeviceRoot::Resolve(kAPConfigDevicePath);
    {
        std::ofstream out(settings, std::ios::binary | std::ios::trunc);
        out << "calendar.default_view=oops\nnot a settings file";
    }
    const std::string before = ReadFile(settings);
    g_selectTime = PLTime(3, 4, 5);

    EXPECT_FALSE(StartApp());
    EXPECT_FALSE(Shown(11100) || Shown(11200) || Shown(11300));
    EXPECT_EQ(g_selectTime, PLTime(3, 4, 5));
    EXPECT_EQ(ReadFile(settings), before);
    _EventRecInfo record;
    APEventRec store;
    EXPECT_EQ(store.GetEventRec(id, &record), 1);
}

TEST_F(CalendarAppTest, StartUpPurgesByTheKeepTime) {
    WriteSettings(11414, 11424, 8, 11452);
    const int old = AddEvent(Utc(2026, 11, 10, 10), Utc(2026, 11, 10, 11));
    const int recent = AddEvent(Utc(2026, 11, 18, 10), Utc(2026, 11, 18, 11));
    ASSERT_TRUE(StartApp());
    _EventRecInfo record;
    APEventRec store;
    EXPECT_EQ(store.GetEventRec(old, &record), 0);
    EXPECT_EQ(store.GetEventRec(recent, &record), 1);
}

TEST_F(CalendarAppTest, SettingsChangesReloadExactlyTheFlaggedViews) {
    const struct {
        const char* name;
        uint32_t flags;
        bool monthReloaded, weekMade, dayMade;
    } rows[] = {
        {"no flags", 0, false, false, false}, {"month", 1, true, false, false},
        {"week", 2, false, true, false},      {"day", 4, false, false, true},
        {"all three", 7, true, true, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        WriteSettings(11414, 11424, 8);
        ASSERT_TRUE(StartApp());
        ASSERT_EQ(app->MonthView()->GetModel().GetStartWeekday(), 1);
        WriteSettings(11414, 11425, 6);
        Send(kPLMsgValue, 11400, row.flags);
        EXPECT_EQ(app->MonthView()->GetModel().GetStartWeekday(), row.monthReloaded ? 2 : 1);
        EXPECT_EQ(app->HasWeekView(), row.weekMade);
        EXPECT_EQ(app->HasDayView(), row.dayMade);
        EXPECT_EQ(g_selectTime.GetHour(), 6);
        app->Cleanup();
        PLAppContext::GetInstance()->SetApplication(nullptr);
        app.reset();
        PLAppContext::ResetInstance();
    }
}

TEST_F(CalendarAppTest, ReloadRequestShowsEventsAddedElsewhere) {
    WriteSettings(11414);
    ASSERT_TRUE(StartApp());
    EXPECT_FALSE(app->MonthView()->HasEvents());
    const int id = AddEvent(Utc(2026, 11, 12, 10), Utc(2026, 11, 12, 11));
    PLMessage reload(10041, 0x3F3F3F3F, 0x3F3F3F3F, kEmptyString, kEmptyString);
    PLAppContext::GetInstance()->GetEventDispatcher().DispatchMessage(&reload);
    EXPECT_TRUE(app->MonthView()->HasEvents());
    EXPECT_EQ(app->MonthView()->GetModel().Lane(12, 0).recordId, id);
}

TEST_F(CalendarAppTest, ViewSwitchMenusAndTheOptionsMenu) {
    WriteSettings(11414);
    ASSERT_TRUE(StartApp());
    VtCalendarMonthView* month = app->MonthView();

    month->GetViewMenu()->SetSelectedItemByID(11821);
    Send(kPLMsgSelect, 11102);
    EXPECT_TRUE(Shown(11100));
    EXPECT_FALSE(app->HasWeekView());

    month->GetViewMenu()->SetSelectedItemByID(11822);
    Send(kPLMsgSelect, 11102);
    EXPECT_TRUE(Shown(11200));
    EXPECT_FALSE(Shown(11100));
    EXPECT_EQ(Target(), app->WeekView()->GetHourTable());

    app->WeekView()->GetOptionsMenu()->SetSelectedItemByID(11816);
    Send(kPLMsgSelect, 11810);
    EXPECT_TRUE(Shown(11400));
    EXPECT_FALSE(Shown(11200));
    EXPECT_EQ(app->GetReturnViewId(), 11200u);

    Send(kPLMsgControl, 11402);
    EXPECT_FALSE(Shown(11400));
    EXPECT_TRUE(Shown(11200));
    EXPECT_EQ(Target(), app->WeekView()->GetHourTable());

    app->WeekView()->GetViewMenu()->SetSelectedItemByID(11823);
    Send(kPLMsgSelect, 11202);
    EXPECT_TRUE(Shown(11300));
    EXPECT_FALSE(Shown(11200));
}

TEST_F(CalendarAppTest, AskingForADayAndForANewEvent) {
    WriteSettings(11414, 11424, 9);
    ASSERT_TRUE(StartApp());
    g_selectTime.SetHour(15);
    Send(kPLMsgUp, 11100);
    EXPECT_TRUE(Shown(11300));
    EXPECT_FALSE(Shown(11100));
    EXPECT_EQ(g_selectTime.GetHour(), 9);
    EXPECT_EQ(Target(), static_cast<PLPane*>(app->DayView()));

    g_selectTime.SetHour(14);
    Send(kPLMsgUp, 11300);
    EXPECT_TRUE(Shown(11500));
    EXPECT_FALSE(Shown(11300));
    EXPECT_EQ(app->GetReturnViewId(), 11300u);
    EXPECT_EQ(g_selectTime.GetHour(), 14);

    // The form stores nothing yet, so save keeps it on screen; cancel returns to the day.
    Send(kPLMsgControl, 11525);
    EXPECT_TRUE(Shown(11500));
    Send(kPLMsgControl, 11526);
    PLAppContext::GetInstance()->GetEventLoop().ProcessIdle();
    EXPECT_FALSE(Shown(11500));
    EXPECT_TRUE(Shown(11300));
}

TEST_F(CalendarAppTest, ExitBroadcastsAndEndsTheLoops) {
    const struct {
        const char* name;
        uint32_t kind;
        uint32_t first;
    } rows[] = {
        {"message 5005", 5005, 0},
        {"month exit button", kPLMsgControl, 11103},
        {"week exit button", kPLMsgControl, 11203},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        WriteSettings(11414);
        ASSERT_TRUE(StartApp());
        PLEventLoop& loop = PLAppContext::GetInstance()->GetEventLoop();
        loop.Reset();
        const std::string log = PLDeviceRoot::Resolve(PLPMEClient::LogPath());
        std::error_code ignored;
        fs::remove(log, ignored);
        Send(row.kind, row.first);
        EXPECT_TRUE(loop.IsShuttingDown());
        const std::string written = ReadFile(log);
        EXPECT_NE(written.find("\"id\":5010"), std::string::npos) << written;
        EXPECT_NE(written.find("com.mdz.calendar.v1"), std::string::npos) << written;
        app->Cleanup();
        PLAppContext::GetInstance()->SetApplication(nullptr);
        app.reset();
        PLAppContext::ResetInstance();
    }
}

TEST_F(CalendarAppTest, CleanupDeletesOnlyDetachedViews) {
    WriteSettings(11414);
    ASSERT_TRUE(StartApp());
    app->MonthView()->GetViewMenu()->SetSelectedItemByID(11822);
    Send(kPLMsgSelect, 11102);
    app->SetupView();
    app->Cleanup();
    EXPECT_FALSE(app->HasMonthView());
    // The shown week view stays with the root view, which deletes it with the application.
    EXPECT_TRUE(Shown(11200));
}

TEST_F(CalendarAppTest, LoadingThreadRunsTheStartUp) {
    WriteSettings(11415);
    MakeApp();
    {
        CalendarLodingThread thread(app.get());
        ASSERT_TRUE(thread.Start());
        thread.WaitForCompletion();
        EXPECT_EQ(thread.GetResult(), 0);
        EXPECT_FALSE(thread.IsRunning());
    }
    EXPECT_TRUE(Shown(11200));
    EXPECT_EQ(g_selectDate, PLDate(2026, 11, 21));
}

}  // namespace

// The application object on a scratch device root with a pinned clock: what the scripts do not
// walk (damaged settings, the purge, unknown stored values, returns to the week and day views, the
// reload messages), clean-up and the loading thread.
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>

#include "APConfig.h"
#include "APEventRec.h"
#include "PLClock.h"
#include "PLEventDispatcher.h"
#include "PLEventLoop.h"
#include "PLMessage.h"
#include "PLView.h"
#include "app/CalendarLodingThread.h"
#include "app/VtCalendarApp.h"
#include "app/VtCalendarGlobals.h"
#include "app/VtCalendarHelpers.h"
#include "calendar/calendar_support.h"
#include "day/VtCalendarDayView.h"
#include "month/VtCalendarMonthView.h"
#include "week/VtCalendarWeekView.h"
#include "week/VtCalendarWeekViewHourTable.h"

namespace {

// A one-hour event on the given day of November 2026; today is the 21st.
int AddEvent(int day) {
    _EventRecInfo record;
    InitEventRecInfo(&record);
    record.startStamp = int32_t(Stamp(2026, 11, day, 10));
    record.endStamp = record.lastStamp = record.startStamp + 3600;
    return APEventRec().AddEventRec(&record);
}

bool Stored(int id) {
    _EventRecInfo record;
    return APEventRec().GetEventRec(id, &record) == 1;
}

class CalendarAppTest : public ::testing::Test {
protected:
    void SetUp() override { PLClock::Pin(int64_t(Stamp(2026, 11, 21, 9, 41)) * 1000); }
    void TearDown() override {
        StopApp();
        PLClock::Unpin();
    }

    void WriteSettings(int32_t defaultView, int32_t weekday = 11424, int32_t hour = 9,
                       int32_t keep = 11457) {
        APCONFIG_CALENDAR_S config{defaultView, weekday, hour, keep};
        ASSERT_EQ(APConfigCalendar_Write(&config) & 0xFF, 1);
    }
    // The application as InitApplication makes it; `startup` runs its start-up too.
    bool StartApp(bool startup = true) {
        app = std::make_unique<VtCalendarApp>();
        app->Initialize();
        PLAppContext::GetInstance()->SetApplication(app.get());
        PLAppContext::GetInstance()->GetEventDispatcher().AddListener(app.get());
        return !startup || app->Startup();
    }
    // As CleanupApplication takes it down; the next row starts from a fresh context.
    void StopApp() {
        if (app) {
            app->Cleanup();
            PLAppContext::GetInstance()->SetApplication(nullptr);
            app.reset();
        }
        PLAppContext::ResetInstance();
    }
    bool Shown(uint32_t id) { return app->GetRootView()->FindPane(id) != nullptr; }
    void Send(uint32_t kind, uint32_t first, uint32_t second = 0x3F3F3F3F) {
        PLMessage message(kind, first, second, kEmptyString, kEmptyString);
        app->Listen(&message);
    }
    PLPane* Target() { return PLAppContext::GetInstance()->GetEventLoop().GetTarget(); }
    // The pane that takes a shown main view's keys: the week view hands them to its hour table.
    PLPane* KeysOf(uint32_t view) {
        PLPane* shown = app->GetRootView()->FindPane(view);
        return shown != nullptr && view == 11200 ? app->WeekView()->GetHourTable() : shown;
    }

    ScratchRoot root;
    std::unique_ptr<VtCalendarApp> app;
};

// Start in a main view (`from`), choose an options menu item (`option`, or 0), send a message that
// opens a screen, leave it with a control (`close`, or 0): `back` is shown then and, when a main
// view, has the keys. A day asked for starts at the configured hour (9), a form asked for by the
// day keeps the day's hour (set to 14 before asking), the settings leave it alone.
TEST_F(CalendarAppTest, OpeningAndReturning) {
    const struct {
        const char* name;
        int32_t defaultView;
        uint32_t from, option, kind, sender, opened;
        int hour;
        uint32_t close, back;
    } rows[] = {
        // clang-format off
        {"settings from the week", 11415, 11200, 11816, kPLMsgSelect, 11810, 11400, 14, 11402, 11200},
        {"form from the day's options", 11416, 11300, 11811, kPLMsgSelect, 11810, 11500, 9, 11526, 11300},
        {"form asked for by the day", 11416, 11300, 0, kPLMsgUp, 11300, 11500, 14, 11526, 11300},
        // The form stores nothing yet: save must not take it off the screen.
        {"failed save keeps the form", 11416, 11300, 0, kPLMsgUp, 11300, 11500, 14, 11525, 11500},
        {"day asked for by the month", 11414, 11100, 0, kPLMsgUp, 11100, 11300, 9, 0, 11300},
        {"an unknown default view starts in the month", 12345, 11100, 0, kPLMsgUp, 11100, 11300, 9, 0, 11300},
        {"day asked for by the week's hours", 11415, 11200, 0, kPLMsgUp, 11207, 11300, 9, 0, 11300},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        WriteSettings(row.defaultView);
        ASSERT_TRUE(StartApp());
        EXPECT_EQ(g_selectTime, PLTime(9, 0, 0));
        EXPECT_TRUE(Shown(row.from));
        EXPECT_EQ(Target(), KeysOf(row.from));
        if (row.option != 0) {
            PLMenu* options = row.from == 11200 ? app->WeekView()->GetOptionsMenu()
                                                : app->DayView()->GetOptionsMenu();
            options->SetSelectedItemByID(row.option);
        }
        g_selectTime.SetHour(14);
        Send(row.kind, row.sender);
        EXPECT_TRUE(Shown(row.opened));
        EXPECT_FALSE(Shown(row.from));
        EXPECT_EQ(g_selectTime.GetHour(), row.hour);
        if (row.close != 0) {
            Send(kPLMsgControl, row.close);
            PLAppContext::GetInstance()->GetEventLoop().ProcessIdle();
            EXPECT_EQ(Shown(row.opened), row.back == row.opened);
        }
        EXPECT_TRUE(Shown(row.back));
        if (row.back != row.opened) {
            EXPECT_EQ(Target(), KeysOf(row.back));
        }
        StopApp();
    }
}

// Out-of-range values are handed on: the date dialog reads them as Sunday.
TEST_F(CalendarAppTest, FirstWeekdayIsTheStoredOptionLess11423In16Bits) {
    const struct {
        const char* name;
        int32_t stored;
        uint16_t weekday;
    } rows[] = {
        // clang-format off
        {"sunday", 11424, 1}, {"saturday", 11430, 7}, {"one below", 11423, 0}, {"one above", 11431, 8},
        {"zero wraps", 0, uint16_t(0 - 11423)},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        WriteSettings(11414, row.stored);
        EXPECT_EQ(StartWeekDayIndex(), row.weekday);
    }
}

// Damaged settings: no view, nothing written, nothing purged. Readable ones purge by their keep
// time (a week: the 10th goes, the 18th stays).
TEST_F(CalendarAppTest, StartUpPurgesOnlyWithReadableSettings) {
    WriteSettings(11414, 11424, 8, 11452);
    const int old = AddEvent(10);
    const int recent = AddEvent(18);
    const std::string settings = PLDeviceRoot::Resolve(kAPConfigDevicePath);
    std::ofstream(settings, std::ios::binary | std::ios::trunc) << "calendar.default_view=oops\n";
    g_selectTime = PLTime(3, 4, 5);
    EXPECT_FALSE(StartApp());
    EXPECT_FALSE(Shown(11100) || Shown(11200) || Shown(11300));
    EXPECT_EQ(g_selectTime, PLTime(3, 4, 5));
    APCONFIG_CALENDAR_S unread;
    EXPECT_EQ(APConfigCalendar_Read(&unread) & 0xFF, 0);  // not replaced by defaults either
    EXPECT_TRUE(Stored(old));
    StopApp();
    WriteSettings(11414, 11424, 8, 11452);
    ASSERT_TRUE(StartApp());
    EXPECT_FALSE(Stored(old));
    EXPECT_TRUE(Stored(recent));
}

// Each flagged view reloads, made first when it was not there; a shown week starts on the new
// first weekday only when it is flagged.
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
    for (const int32_t shown : {11414, 11415}) {
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(row.name) + (shown == 11415 ? ", week shown" : ""));
            WriteSettings(shown, 11424, 8);
            ASSERT_TRUE(StartApp());
            WriteSettings(shown, 11425, 6);
            if (shown == 11414) {
                ASSERT_EQ(app->MonthView()->GetModel().GetStartWeekday(), 1);
            }
            Send(kPLMsgValue, 11400, row.flags);
            if (shown == 11414) {
                EXPECT_EQ(app->MonthView()->GetModel().GetStartWeekday(),
                          row.monthReloaded ? 2 : 1);
                EXPECT_EQ(app->HasWeekView(), row.weekMade);
            } else {
                const PLDate start(2026, 11, row.weekMade ? 16 : 15);
                EXPECT_EQ(app->WeekView()->GetWeekStart(), start);
                EXPECT_EQ(app->WeekView()->GetTable()->GetModel().GetWeekStart(), start);
            }
            EXPECT_EQ(app->HasDayView(), row.dayMade);
            EXPECT_EQ(g_selectTime.GetHour(), 6);
            StopApp();
        }
    }
}

// Another application's reload request, and the day view or the detail deleting events: each
// time an event added behind the month view's back must show.
TEST_F(CalendarAppTest, ChangesMadeElsewhereReloadTheMonth) {
    const struct {
        const char* name;
        uint32_t kind, sender;
        int day;
    } rows[] = {
        {"reload request", 10041, 0x3F3F3F3F, 12},
        {"the day deleted events", kPLMsgControl, 12203, 13},
        {"the detail deleted an event", kPLMsgControl, 12106, 14},
    };
    WriteSettings(11414);
    ASSERT_TRUE(StartApp());
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const int id = AddEvent(row.day);
        ASSERT_EQ(app->MonthView()->GetModel().Lane(row.day, 0).recordId, 0);
        PLMessage message(row.kind, row.sender, 0x3F3F3F3F, kEmptyString, kEmptyString);
        PLAppContext::GetInstance()->GetEventDispatcher().DispatchMessage(&message);
        EXPECT_EQ(app->MonthView()->GetModel().Lane(row.day, 0).recordId, id);
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
    StartApp(false);
    {
        CalendarLodingThread thread(app.get());
        ASSERT_TRUE(thread.Start());
    }  // its end waits for the start-up
    EXPECT_TRUE(Shown(11200));
}

}  // namespace

// The settings view: menu indexes of stored values, validation on save, change flags, and the view
// loading and saving a real settings file.
#include <gtest/gtest.h>

#include <array>
#include <memory>

#include "APConfig.h"
#include "PLMessage.h"
#include "VtComboControl.h"
#include "calendar/calendar_support.h"
#include "settings/VtCalendarSetupMapping.h"
#include "settings/VtCalendarSetupView.h"

namespace {

TEST(SetupMapping, MenuIndexesOfStoredValues) {
    const struct {
        const char* name;
        size_t (*map)(int32_t);
        int32_t value;
        size_t index;
    } rows[] = {
        // clang-format off
        {"month view", DefaultViewMenuIndex, 11414, 1}, {"day view", DefaultViewMenuIndex, 11416, 3},
        {"unknown view", DefaultViewMenuIndex, 11417, 0},
        {"sunday is the last weekday entry", FirstWeekdayMenuIndex, 11424, 7},
        {"monday is the first", FirstWeekdayMenuIndex, 11425, 1}, {"saturday", FirstWeekdayMenuIndex, 11430, 6},
        {"weekday above", FirstWeekdayMenuIndex, 11431, 0}, {"weekday below", FirstWeekdayMenuIndex, 11423, 0},
        {"one week", KeepTimeMenuIndex, 11452, 1}, {"keep everything", KeepTimeMenuIndex, 11457, 6},
        {"keep time below", KeepTimeMenuIndex, 11451, 0},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.map(row.value), row.index);
    }
}

using Settings = APCONFIG_CALENDAR_S;

// The five settings words; the spare ones are not the view's.
std::array<int32_t, 5> Fields(const Settings& s) {
    return {s.defaultView, s.startWeekDay, s.startDayTime, s.keepTime, s.lunarCalendar};
}

TEST(SetupMapping, InvalidFieldsAreSavedAsTheirDefaults) {
    const struct {
        const char* name;
        Settings chosen, saved;
    } rows[] = {
        {"each just past its range", {11417, 11431, 24, 11458, 2}, {11414, 11424, 8, 11457, 0}},
        {"each just below its range", {11413, 11423, -1, 11451, -1}, {11414, 11424, 8, 11457, 0}},
        {"the other ends are kept", {11416, 11430, 0, 11452, 1}, {11416, 11430, 0, 11452, 1}},
        {"the last hour is kept", {11414, 11424, 23, 11457, 0}, {11414, 11424, 23, 11457, 0}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Fields(ValidatedSettings(row.chosen)), Fields(row.saved));
    }
}

TEST(SetupMapping, ChangeFlags) {
    const Settings base{11414, 11424, 8, 11457, 0};
    const struct {
        const char* name;
        Settings saved;
        uint32_t flags;
    } rows[] = {
        {"nothing changed", base, 0},
        {"default view alone reloads nothing", {11415, 11424, 8, 11457, 0}, 0},
        {"first weekday: month and week", {11414, 11425, 8, 11457, 0}, 1 | 2},
        {"day start: week and day", {11414, 11424, 9, 11457, 0}, 2 | 4},
        {"keep time: all three", {11414, 11424, 8, 11452, 0}, 1 | 2 | 4},
        {"lunar: day", {11414, 11424, 8, 11457, 1}, 4},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(SettingsChangeFlags(base, row.saved), row.flags);
    }
}

// The saved record is read back from the controls: a record saved untouched proves that loading
// showed every field. The flags compare with what was loaded.
TEST(SetupView, SavesWhatTheControlsShow) {
    const struct {
        const char* name;
        Settings stored;
        int32_t picked;  // default view chosen on screen, or 0
        Settings written;
        long flags;
    } rows[] = {
        // clang-format off
        {"saved untouched", {11415, 11424, 6, 11453, 1}, 0, {11415, 11424, 6, 11453, 1}, 0},
        {"another default view alone", {11414, 11426, 8, 11457, 0}, 11416, {11416, 11426, 8, 11457, 0}, 0},
        // Keep time and lunar flag had no entry: saved as their defaults, both count as changes.
        {"invalid stored fields", {11414, 11424, 8, 99, 2}, 11416, {11416, 11424, 8, 11457, 0}, 1 | 2 | 4},
        // clang-format on
    };
    // The view on a scratch device root; it hears its own "valu" through a recording listener.
    const ScratchRoot root;
    struct : PLListener {
        void Listen(PLMessage* message) override {
            if (message->GetMessageID() == kPLMsgValue && message->GetSenderID() == 11400) {
                flags = long(message->GetUserMessageID());
            }
        }
        long flags = -1;
    } heard;
    std::unique_ptr<VtCalendarSetupView> view(VtCalendarSetupView::Make(11400, nullptr));
    view->AddListener(&heard);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Settings stored = row.stored;
        ASSERT_EQ(APConfigCalendar_Write(&stored) & 0xFF, 1);
        view->LoadSettings();
        if (row.picked != 0) {
            view->GetDefaultViewCombo()->SetValue(row.picked, false);
        }
        EXPECT_TRUE(view->SaveSettings());
        Settings written;
        ASSERT_EQ(APConfigCalendar_Read(&written) & 0xFF, 1);
        EXPECT_EQ(Fields(written), Fields(row.written));
        EXPECT_EQ(heard.flags, row.flags);
    }
}

}  // namespace

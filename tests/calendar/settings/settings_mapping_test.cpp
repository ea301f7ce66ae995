// The settings view: menu indexes of stored values, validation on save, change flags, and the view
// loading and saving a real settings file.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

#include "APConfig.h"
#include "PLAppContext.h"
#include "PLDeviceRoot.h"
#include "PLMessage.h"
#include "VtCheckbox.h"
#include "VtComboControl.h"
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
        {"month view", DefaultViewMenuIndex, 11414, 1},
        {"day view", DefaultViewMenuIndex, 11416, 3},
        {"unknown view", DefaultViewMenuIndex, 11417, 0},
        {"sunday is the last weekday entry", FirstWeekdayMenuIndex, 11424, 7},
        {"monday is the first", FirstWeekdayMenuIndex, 11425, 1},
        {"saturday", FirstWeekdayMenuIndex, 11430, 6},
        {"weekday out of range", FirstWeekdayMenuIndex, 11431, 0},
        {"weekday below range", FirstWeekdayMenuIndex, 11423, 0},
        {"one week", KeepTimeMenuIndex, 11452, 1},
        {"keep everything", KeepTimeMenuIndex, 11457, 6},
        {"keep time out of range", KeepTimeMenuIndex, 11451, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.map(row.value), row.index);
    }
}

APCONFIG_CALENDAR_S Record(int32_t view, int32_t weekday, int32_t hour, int32_t keep,
                           int32_t lunar) {
    APCONFIG_CALENDAR_S record;
    record.defaultView = view;
    record.startWeekDay = weekday;
    record.startDayTime = hour;
    record.keepTime = keep;
    record.lunarCalendar = lunar;
    return record;
}

TEST(SetupMapping, InvalidFieldsAreSavedAsTheirDefaults) {
    const APCONFIG_CALENDAR_S saved = ValidatedSettings(Record(0, 11431, 24, 99, 2));
    EXPECT_EQ(saved.defaultView, 11414);
    EXPECT_EQ(saved.startWeekDay, 11424);
    EXPECT_EQ(saved.startDayTime, 8);
    EXPECT_EQ(saved.keepTime, 11457);
    EXPECT_EQ(saved.lunarCalendar, 0);

    const APCONFIG_CALENDAR_S kept = ValidatedSettings(Record(11416, 11430, 0, 11452, 1));
    EXPECT_EQ(kept.defaultView, 11416);
    EXPECT_EQ(kept.startWeekDay, 11430);
    EXPECT_EQ(kept.startDayTime, 0);
    EXPECT_EQ(kept.keepTime, 11452);
    EXPECT_EQ(kept.lunarCalendar, 1);
}

TEST(SetupMapping, ChangeFlags) {
    const APCONFIG_CALENDAR_S base = Record(11414, 11424, 8, 11457, 0);
    const struct {
        const char* name;
        APCONFIG_CALENDAR_S saved;
        uint32_t flags;
    } rows[] = {
        {"nothing changed", base, 0},
        {"default view alone reloads nothing", Record(11415, 11424, 8, 11457, 0), 0},
        {"first weekday: month and week", Record(11414, 11425, 8, 11457, 0), 1 | 2},
        {"day start: week and day", Record(11414, 11424, 9, 11457, 0), 2 | 4},
        {"keep time: all three", Record(11414, 11424, 8, 11452, 0), 1 | 2 | 4},
        {"lunar: day", Record(11414, 11424, 8, 11457, 1), 4},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(SettingsChangeFlags(base, row.saved), row.flags);
    }
}

// The view on a scratch device root; it hears its own "valu" through a recording listener.
class SetupViewTest : public ::testing::Test, public PLListener {
protected:
    void SetUp() override {
        std::string pattern = (std::filesystem::temp_directory_path() / "calsetup-XXXXXX").string();
        mRoot = mkdtemp(pattern.data());
        PLDeviceRoot::SetRoot(mRoot);
        PLAppContext::ResetInstance();
        view.reset(VtCalendarSetupView::Make(11400, nullptr));
        view->AddListener(this);
    }
    void TearDown() override {
        view.reset();
        PLAppContext::ResetInstance();
        PLDeviceRoot::SetRoot("");
        std::error_code ignored;
        std::filesystem::remove_all(mRoot, ignored);
    }
    void Listen(PLMessage* message) override {
        if (message->GetMessageID() == kPLMsgValue) {
            heardFlags = long(message->GetUserMessageID());
            heardFrom = message->GetSenderID();
        }
    }

    std::string mRoot;
    std::unique_ptr<VtCalendarSetupView> view;
    long heardFlags = -1;
    uint32_t heardFrom = 0;
};

TEST_F(SetupViewTest, LoadsTheStoredSettingsIntoTheControls) {
    APCONFIG_CALENDAR_S stored = Record(11415, 11424, 6, 11453, 1);
    ASSERT_EQ(APConfigCalendar_Write(&stored) & 0xFF, 1);
    view->LoadSettings();
    EXPECT_EQ(view->GetDefaultViewCombo()->GetValue(), 11415);
    EXPECT_EQ(view->GetFirstWeekdayCombo()->GetMenu()->GetSelectedIndex(), 7u);
    EXPECT_EQ(view->GetFirstWeekdayCombo()->GetValue(), 11424);
    EXPECT_EQ(view->GetKeepTimeCombo()->GetValue(), 11453);
    EXPECT_EQ(view->GetDayStart(), PLTime(6, 0, 0));
    EXPECT_TRUE(view->GetLunarBox()->IsChecked());
}

TEST_F(SetupViewTest, TheOptionsButtonIsInert) {
    PLPane* options = view->FindPane(11810);
    ASSERT_NE(options, nullptr);
    EXPECT_FALSE(options->IsEnabled());
}

TEST_F(SetupViewTest, SavesValidatedValuesAndReportsTheFlags) {
    APCONFIG_CALENDAR_S stored = Record(11414, 11424, 8, 99, 2);
    ASSERT_EQ(APConfigCalendar_Write(&stored) & 0xFF, 1);
    view->LoadSettings();
    view->GetDefaultViewCombo()->SetValue(11416, false);
    EXPECT_TRUE(view->SaveSettings());
    APCONFIG_CALENDAR_S written;
    ASSERT_EQ(APConfigCalendar_Read(&written) & 0xFF, 1);
    EXPECT_EQ(written.defaultView, 11416);
    // The keep time and the lunar flag had no entry: they are saved as their defaults, and
    // both count as changes.
    EXPECT_EQ(written.keepTime, 11457);
    EXPECT_EQ(written.lunarCalendar, 0);
    EXPECT_EQ(heardFrom, 11400u);
    EXPECT_EQ(heardFlags, 1 | 2 | 4);
}

TEST_F(SetupViewTest, ChangingOnlyTheDefaultViewFlagsNothing) {
    APCONFIG_CALENDAR_S stored = Record(11414, 11426, 8, 11457, 0);
    ASSERT_EQ(APConfigCalendar_Write(&stored) & 0xFF, 1);
    view->LoadSettings();
    view->GetDefaultViewCombo()->SetValue(11415, false);
    EXPECT_TRUE(view->SaveSettings());
    EXPECT_EQ(heardFlags, 0);
    APCONFIG_CALENDAR_S written;
    ASSERT_EQ(APConfigCalendar_Read(&written) & 0xFF, 1);
    EXPECT_EQ(written.defaultView, 11415);
    EXPECT_EQ(written.startWeekDay, 11426);
}

}  // namespace

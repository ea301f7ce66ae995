// Settings store: round trips that keep the other records, atomic replacement, damaged files that
// are reported and kept, getters that leave the value alone on failure, and calendar-ctl's key
// validation.

#include <cstring>
#include <filesystem>
#include <regex>
#include <tuple>

#include "APConfig.h"
#include "store_support.h"

namespace {

class ConfigTest : public StoreRootTest {
protected:
    std::string SettingsPath() { return HostPath(kAPConfigDevicePath); }
    void Defaults() {
        std::string error;
        ASSERT_TRUE(APConfig_EnsureDefaults(error)) << error;
    }
};

// Every single-setting getter with the field it must read.
const std::pair<long (*)(long*), int32_t APCONFIG_CALENDAR_S::*> kGetters[] = {
    {APConfigCalendar_GetDefaultView, &APCONFIG_CALENDAR_S::defaultView},
    {APConfigCalendar_GetStartWeekDay, &APCONFIG_CALENDAR_S::startWeekDay},
    {APConfigCalendar_GetStartDayTime, &APCONFIG_CALENDAR_S::startDayTime},
    {APConfigCalendar_GetKeepTime, &APCONFIG_CALENDAR_S::keepTime},
    {APConfigCalendar_GetLunarCalendar, &APCONFIG_CALENDAR_S::lunarCalendar},
};

TEST_F(ConfigTest, EachRecordRoundTripsWithoutDisturbingTheOthers) {
    APCONFIG_CALENDAR_S config;
    config.defaultView = 1;
    EXPECT_EQ(APConfigCalendar_Read(&config), 0) << "no settings file yet";
    EXPECT_EQ(config.defaultView, 1) << "a failed read must not touch the record";
    Defaults();

    APCONFIG_WORLDCLOCK_S clock{1, 480, 0, -300, 1};
    ASSERT_EQ(APConfigWorldClock_Write(&clock), 1);
    ASSERT_EQ(APConfigSystem_SetTimeFormat(2), 1);
    ASSERT_EQ(APConfigSystem_SetDateFormat(1), 1);
    EXPECT_EQ(APConfigSystem_SetDateFormat(3), 0) << "date formats are 0..2";
    const std::pair<const char*, APCONFIG_CALENDAR_S> rows[] = {
        {"week_monday_hour0_oneweek_lunar", {11415, 11425, 0, 11452, 1}},
        {"out_of_range_values_kept_as_given", {0, -5, 99, 70000, 2}},
    };
    for (const auto& [name, record] : rows) {
        SCOPED_TRACE(name);
        APCONFIG_CALENDAR_S written = record;
        ASSERT_EQ(APConfigCalendar_Write(&written), 1);
        APCONFIG_CALENDAR_S read;
        ASSERT_EQ(APConfigCalendar_Read(&read), 1);
        EXPECT_EQ(std::memcmp(&read, &written, sizeof read), 0);
        for (const auto& [get, field] : kGetters) {
            long value = -1;
            EXPECT_EQ(get(&value) & 0xFF, 1);
            EXPECT_EQ(value, written.*field);
            EXPECT_EQ(get(nullptr), 0);
        }
        APCONFIG_WORLDCLOCK_S clockRead;
        long time = 0, date = 0;
        EXPECT_EQ(APConfigWorldClock_Read(&clockRead) + APConfigSystem_GetTimeFormat(&time) +
                      APConfigSystem_GetDateFormat(&date),
                  3);
        EXPECT_EQ(std::memcmp(&clockRead, &clock, sizeof clock), 0);
        EXPECT_EQ(std::make_pair(time, date), std::make_pair(2L, 1L));
    }
}

// Reads, getters, the key setter and the defaults refuse a damaged file and keep it as it is; an
// application write sets it aside under a name no earlier one took, then replaces the file whole,
// leaving no temporary file (and not disturbed by one that an interrupted write left).
TEST_F(ConfigTest, DamagedFilesAreReportedKeptAndSetAsideBeforeAWrite) {
    Defaults();
    WriteFile(SettingsPath() + ".tmp-1", "half written");
    const std::string good = ReadFile(SettingsPath());
    auto replace = [&](const std::string& from, const std::string& to) {
        std::string text = good;
        const size_t at = text.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        return at == std::string::npos ? text : text.replace(at, from.size(), to);
    };
    const std::pair<const char*, std::string> rows[] = {
        {"empty", ""},
        {"truncated_before_checksum", good.substr(0, good.find("checksum"))},
        {"cut_mid_line", good.substr(0, good.size() / 2)},
        {"value_changed_without_checksum", replace("day_start=8", "day_start=9")},
        {"checksum_altered", replace("checksum=", "checksum=0")},
        {"unknown_key", replace("calendar.lunar=0\n", "calendar.lunar=0\ncalendar.colour=3\n")},
        {"not_a_number", replace("day_start=8", "day_start=eight")},
        {"number_too_large", replace("day_start=8", "day_start=99999999999")},
        {"binary", std::string("\x00\xff\x13settings", 11)},
        {"no_trailing_newline", good.substr(0, good.size() - 1)},
    };
    int setAside = 0;
    for (const auto& [name, content] : rows) {
        SCOPED_TRACE(name);
        WriteFile(SettingsPath(), content);
        APCONFIG_CALENDAR_S config;
        config.keepTime = 4242;
        EXPECT_EQ(APConfigCalendar_Read(&config), 0);
        EXPECT_EQ(config.keepTime, 4242);
        long value = 77;
        for (const auto& getter : kGetters) {
            EXPECT_EQ(getter.first(&value), 0);
        }
        EXPECT_EQ(APConfigSystem_GetTimeFormat(&value), 0);
        EXPECT_EQ(value, 77);
        std::string error;
        EXPECT_FALSE(APConfig_SetByKey("lunar", "1", error));
        EXPECT_NE(error.find("damaged"), std::string::npos) << error;
        EXPECT_TRUE(APConfig_EnsureDefaults(error)) << "a damaged file is not replaced by defaults";
        EXPECT_EQ(ReadFile(SettingsPath()), content) << "reads and refusals keep the file";

        config.defaultView = 11416;
        ASSERT_EQ(APConfigCalendar_Write(&config), 1);
        const int n = setAside++;
        EXPECT_EQ(ReadFile(SettingsPath() + ".damaged" + (n ? "." + std::to_string(n) : "")),
                  content);
        ASSERT_EQ(APConfigCalendar_Read(&config), 1);
        EXPECT_EQ(config.defaultView, 11416);
    }
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(SettingsPath()).parent_path())) {
        EXPECT_TRUE(std::regex_match(
            entry.path().filename().string(),
            std::regex("settings\\.conf(\\.damaged(\\.[0-9])?|\\.tmp-1|\\.lock)?")))
            << entry.path();
    }
}

TEST_F(ConfigTest, KeysAreValidatedBeforeAnythingIsWritten) {
    Defaults();
    // Name, key, value, whether it is taken, what the key reads afterwards.
    const std::tuple<const char*, const char*, const char*, bool, const char*> rows[] = {
        {"view_week", "default_view", "11415", true, "11415"},
        {"view_below_range", "default_view", "11413", false, "11415"},
        {"weekday_saturday", "first_weekday", "11430", true, "11430"},
        {"weekday_past_saturday", "first_weekday", "11431", false, "11430"},
        {"day_start_23", "day_start", "23", true, "23"},
        {"day_start_24", "day_start", "24", false, "23"},
        {"day_start_negative", "day_start", "-1", false, "23"},
        {"day_start_trailing_text", "day_start", "7am", false, "23"},
        {"day_start_empty", "day_start", "", false, "23"},
        {"keep_one_week", "keep_time", "11452", true, "11452"},
        {"keep_unknown", "keep_time", "11458", false, "11452"},
        {"lunar_on", "lunar", "1", true, "1"},
        {"lunar_two", "lunar", "2", false, "1"},
        {"time_24", "time_format", "24", true, "24"},
        {"time_13", "time_format", "13", false, "24"},
        {"date_2", "date_format", "2", true, "2"},
        {"date_3", "date_format", "3", false, "2"},
    };
    for (const auto& [name, key, value, accepted, shown] : rows) {
        SCOPED_TRACE(name);
        std::string error, read;
        EXPECT_EQ(APConfig_SetByKey(key, value, error), accepted) << error;
        EXPECT_TRUE(accepted || error.find(key) != std::string::npos) << error;
        ASSERT_TRUE(APConfig_GetByKey(key, read, error)) << error;
        EXPECT_EQ(read, shown);
    }
    long format = 0;
    ASSERT_EQ(APConfigSystem_GetTimeFormat(&format), 1);
    EXPECT_EQ(format, 2) << "24-hour display is stored as format 2";
    std::vector<std::pair<std::string, std::string>> all;
    std::string error;
    ASSERT_TRUE(APConfig_GetAll(all, error) && all.size() == 7) << error;
    EXPECT_EQ(all.back(), (std::pair<std::string, std::string>("date_format", "2")));
}

}  // namespace

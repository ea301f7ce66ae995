// Fuzz target: the settings file from untrusted bytes. The bytes become the settings file of a
// scratch device root and every getter reads it; the input is then tried again with a correct
// checksum line appended so that the strict grammar behind the checksum is reached. Writers are
// checked for what they promise about a damaged file: calendar-ctl's setter leaves it untouched,
// and the application's writers set it aside rather than lose it.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "APConfig.h"
#include "FuzzCheck.h"
#include "FuzzTempDir.h"
#include "PLDeviceRoot.h"
#include "PLResourceFileManager.h"

namespace {

std::string SettingsPath() {
    return PLDeviceRoot::Resolve(kAPConfigDevicePath);
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Calls every getter; returns whether the file was read as valid.
bool ReadEverything() {
    APCONFIG_CALENDAR_S calendar;
    const bool valid = APConfigCalendar_Read(&calendar) == 1;
    long value = -12345;
    for (auto getter : {APConfigCalendar_GetDefaultView, APConfigCalendar_GetStartWeekDay,
                        APConfigCalendar_GetStartDayTime, APConfigCalendar_GetKeepTime,
                        APConfigCalendar_GetLunarCalendar, APConfigSystem_GetTimeFormat,
                        APConfigSystem_GetDateFormat}) {
        value = -12345;
        const long result = getter(&value);
        FuzzCheck((result == 1) == valid, "every getter agrees on whether the file is valid");
        FuzzCheck(result == 1 || value == -12345, "a failed getter leaves the value alone");
    }
    APCONFIG_WORLDCLOCK_S clock;
    FuzzCheck((APConfigWorldClock_Read(&clock) == 1) == valid, "the world clock reads alike");

    std::vector<std::pair<std::string, std::string>> all;
    std::string error;
    FuzzCheck(APConfig_GetAll(all, error) == valid, "GetAll agrees with the getters");
    FuzzCheck(valid || !error.empty(), "a damaged file is reported with a reason");
    for (const std::string& key : APConfig_Keys()) {
        std::string text;
        FuzzCheck(APConfig_GetByKey(key, text, error) == valid, "GetByKey agrees");
    }
    std::string ignored;
    FuzzCheck(!APConfig_GetByKey("no_such_key", ignored, error), "an unknown key is refused");
    return valid;
}

// The setters on the file as it is now.
void WriteChecks(bool valid) {
    const std::string path = SettingsPath();
    const std::string before = ReadFile(path);
    std::string error;
    const bool set = APConfig_SetByKey("lunar", "1", error);
    if (!valid) {
        FuzzCheck(!set, "calendar-ctl's setter refuses a damaged file");
        FuzzCheck(ReadFile(path) == before, "a refused set leaves the file as it was");
        // The application's writer replaces the damaged file, but only after setting it aside.
        APCONFIG_CALENDAR_S defaults;
        if (APConfigCalendar_Write(&defaults) == 1) {
            bool kept = false;
            for (const auto& entry :
                 std::filesystem::directory_iterator(std::filesystem::path(path).parent_path())) {
                kept = kept || (entry.path() != path && ReadFile(entry.path()) == before);
            }
            FuzzCheck(kept, "a damaged file is set aside, not lost");
        }
    } else {
        FuzzCheck(set, "a valid file takes a valid setting");
    }
    long lunar = 0;
    if (APConfigCalendar_GetLunarCalendar(&lunar) == 1 && set) {
        FuzzCheck(lunar == 1, "a setting reads back as set");
    }
}

void TryFile(const FuzzTempDir& dir, const std::string& text) {
    std::error_code ignored;
    std::filesystem::remove_all(std::filesystem::path(dir.Path()) / "var", ignored);
    const std::string relative = std::string(kAPConfigDevicePath).substr(1);
    if (dir.WriteFile(relative, reinterpret_cast<const uint8_t*>(text.data()), text.size())
            .empty()) {
        return;
    }
    WriteChecks(ReadEverything());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzTempDir dir;
    if (!dir.Ok()) {
        return 0;
    }
    PLDeviceRoot::SetRoot(dir.Path());
    const std::string text(reinterpret_cast<const char*>(data), size);
    TryFile(dir, text);

    // The same lines closed by a checksum that matches them.
    std::string body = text;
    if (!body.empty() && body.back() != '\n') {
        body += '\n';
    }
    char line[32];
    std::snprintf(line, sizeof line, "checksum=%08x\n",
                  static_cast<unsigned>(PLResourceFileManager::Checksum(
                      reinterpret_cast<const uint8_t*>(body.data()), body.size())));
    TryFile(dir, body + line);
    PLDeviceRoot::SetRoot("");
    return 0;
}

// The configuration store's public functions over the settings file. Reads never change the
// file; writers from the application replace a damaged file after setting it aside under a new
// name (nothing is lost, and the device keeps working), while calendar-ctl's key setter refuses to
// touch a damaged file so that the user sees the damage first.
#include "APConfig.h"

#include <charconv>
#include <chrono>
#include <functional>
#include <vector>

#include "APAtomicFile.h"
#include "APSettingsFile.h"
#include "APStoreLock.h"
#include "PLDeviceRoot.h"

const char* const kAPConfigDevicePath = "/var/lib/config/settings.conf";

namespace {

bool Load(APSettings& settings) {
    std::string error;
    return APSettingsFile::Load(settings, error) == APSettingsFile::Status::kOk;
}

constexpr std::chrono::seconds kSettingsLockWait{10};

// Runs a read-modify-write of the settings file while holding its lock file exclusively. Every
// process of the device changes settings, and two changes read from the same old file would each
// write back their own copy: the later rename would silently drop the other's acknowledged change.
// Readers need no lock: the file is only ever replaced whole by a rename.
bool UnderSettingsLock(const std::function<bool()>& body, std::string& error) {
    if (!PLDeviceRoot::MakeParentDirectories(kAPConfigDevicePath)) {
        error = "cannot create the folder of " + APSettingsFile::HostPath();
        return false;
    }
    APStoreLock lock;
    if (!lock.Open(APSettingsFile::HostPath() + ".lock", error)) {
        return false;
    }
    if (!lock.LockExclusive(std::chrono::steady_clock::now() + kSettingsLockWait)) {
        error = "settings busy: another process held " + APSettingsFile::HostPath() + " too long";
        return false;
    }
    return body();
}

// Reads the file (defaults when missing; a damaged file is kept under another name and then
// replaced), applies the change and writes the file back.
bool Modify(const std::function<void(APSettings&)>& change, std::string& error) {
    return UnderSettingsLock(
        [&] {
            APSettings settings;
            switch (APSettingsFile::Load(settings, error)) {
                case APSettingsFile::Status::kOk:
                    break;
                case APSettingsFile::Status::kMissing:
                    settings = APSettings();
                    break;
                case APSettingsFile::Status::kCorrupt: {
                    // A second name rather than a rename: readers find the damaged file until
                    // the new one replaces it, never no file at all.
                    std::string keptAs;
                    if (!APAtomicFile_KeepAside(APSettingsFile::HostPath(), "damaged", keptAs,
                                                error)) {
                        return false;
                    }
                    settings = APSettings();
                    break;
                }
                case APSettingsFile::Status::kError:
                    return false;
            }
            change(settings);
            return APSettingsFile::Save(settings, error);
        },
        error);
}

long GetCalendarField(long* value, int32_t APCONFIG_CALENDAR_S::*field) {
    APSettings settings;
    if (value == nullptr || !Load(settings)) {
        return 0;
    }
    *value = settings.calendar.*field;
    return 1;
}

struct Key {
    const char* name;
    // Stored value to the text shown, and text to the stored value (false when invalid).
    std::function<int32_t&(APSettings&)> field;
    std::function<bool(int32_t)> valid;
    const char* allowed;
    int32_t (*toDisplay)(int32_t);
    int32_t (*fromDisplay)(int32_t);
};

int32_t Same(int32_t v) {
    return v;
}
int32_t TimeFormatToHours(int32_t v) {
    return v == kAPTimeFormat24 ? 24 : 12;
}
int32_t HoursToTimeFormat(int32_t v) {
    return v == 24 ? kAPTimeFormat24 : kAPTimeFormat12;
}

const std::vector<Key>& Keys() {
    static const std::vector<Key> keys = {
        {"default_view", [](APSettings& s) -> int32_t& { return s.calendar.defaultView; },
         [](int32_t v) { return v >= kAPDefaultViewMonth && v <= kAPDefaultViewDay; },
         "11414 (month), 11415 (week) or 11416 (day)", Same, Same},
        {"first_weekday", [](APSettings& s) -> int32_t& { return s.calendar.startWeekDay; },
         [](int32_t v) { return v >= kAPFirstWeekdaySunday && v <= kAPFirstWeekdaySaturday; },
         "11424 (Sunday) .. 11430 (Saturday)", Same, Same},
        {"day_start", [](APSettings& s) -> int32_t& { return s.calendar.startDayTime; },
         [](int32_t v) { return v >= 0 && v <= 23; }, "an hour 0..23", Same, Same},
        {"keep_time", [](APSettings& s) -> int32_t& { return s.calendar.keepTime; },
         [](int32_t v) { return v >= kAPKeepOneWeek && v <= kAPKeepEverything; },
         "11452 (one week) .. 11457 (keep everything)", Same, Same},
        {"lunar", [](APSettings& s) -> int32_t& { return s.calendar.lunarCalendar; },
         [](int32_t v) { return v == 0 || v == 1; }, "0 or 1", Same, Same},
        {"time_format", [](APSettings& s) -> int32_t& { return s.timeFormat; },
         [](int32_t v) { return v == 12 || v == 24; }, "12 or 24", TimeFormatToHours,
         HoursToTimeFormat},
        {"date_format", [](APSettings& s) -> int32_t& { return s.dateFormat; },
         [](int32_t v) { return v >= 0 && v <= 2; },
         "0 (2026-11-21), 1 (21-11-2026) or 2 (11/21/2026)", Same, Same},
    };
    return keys;
}

const Key* FindKey(const std::string& name, std::string& error) {
    for (const Key& key : Keys()) {
        if (name == key.name) {
            return &key;
        }
    }
    error = "unknown setting '" + name + "'; known settings:";
    for (const Key& key : Keys()) {
        error += std::string(" ") + key.name;
    }
    return nullptr;
}

}  // namespace

long APConfigCalendar_Read(APCONFIG_CALENDAR_S* config) {
    APSettings settings;
    if (config == nullptr || !Load(settings)) {
        return 0;
    }
    *config = settings.calendar;
    return 1;
}

long APConfigCalendar_Write(APCONFIG_CALENDAR_S* config) {
    if (config == nullptr) {
        return 0;
    }
    std::string error;
    return Modify([config](APSettings& s) { s.calendar = *config; }, error) ? 1 : 0;
}

long APConfigCalendar_GetDefaultView(long* value) {
    return GetCalendarField(value, &APCONFIG_CALENDAR_S::defaultView);
}
long APConfigCalendar_GetStartWeekDay(long* value) {
    return GetCalendarField(value, &APCONFIG_CALENDAR_S::startWeekDay);
}
long APConfigCalendar_GetStartDayTime(long* value) {
    return GetCalendarField(value, &APCONFIG_CALENDAR_S::startDayTime);
}
long APConfigCalendar_GetKeepTime(long* value) {
    return GetCalendarField(value, &APCONFIG_CALENDAR_S::keepTime);
}
long APConfigCalendar_GetLunarCalendar(long* value) {
    return GetCalendarField(value, &APCONFIG_CALENDAR_S::lunarCalendar);
}

long APConfigWorldClock_Read(APCONFIG_WORLDCLOCK_S* config) {
    APSettings settings;
    if (config == nullptr || !Load(settings)) {
        return 0;
    }
    *config = settings.worldClock;
    return 1;
}

long APConfigWorldClock_Write(APCONFIG_WORLDCLOCK_S* config) {
    if (config == nullptr) {
        return 0;
    }
    std::string error;
    return Modify([config](APSettings& s) { s.worldClock = *config; }, error) ? 1 : 0;
}

long APConfigSystem_GetTimeFormat(long* value) {
    APSettings settings;
    if (value == nullptr || !Load(settings)) {
        return 0;
    }
    *value = settings.timeFormat;
    return 1;
}

long APConfigSystem_SetTimeFormat(long value) {
    std::string error;
    int32_t stored = value == kAPTimeFormat24 ? kAPTimeFormat24 : kAPTimeFormat12;
    return Modify([stored](APSettings& s) { s.timeFormat = stored; }, error) ? 1 : 0;
}

long APConfigSystem_GetDateFormat(long* value) {
    APSettings settings;
    if (value == nullptr || !Load(settings)) {
        return 0;
    }
    *value = settings.dateFormat;
    return 1;
}

long APConfigSystem_SetDateFormat(long value) {
    if (value < 0 || value > 2) {
        return 0;
    }
    std::string error;
    return Modify([value](APSettings& s) { s.dateFormat = static_cast<int32_t>(value); }, error)
               ? 1
               : 0;
}

bool APConfig_EnsureDefaults(std::string& error) {
    APSettings settings;
    if (APSettingsFile::Load(settings, error) != APSettingsFile::Status::kMissing) {
        error.clear();
        return true;  // present, damaged or unreadable: left for the user to see, never replaced
    }
    // Checked again under the lock: another process may have written its change meanwhile, and
    // the defaults must not replace it.
    return UnderSettingsLock(
        [&] {
            if (APSettingsFile::Load(settings, error) != APSettingsFile::Status::kMissing) {
                error.clear();
                return true;
            }
            return APSettingsFile::Save(APSettings(), error);
        },
        error);
}

std::vector<std::string> APConfig_Keys() {
    std::vector<std::string> names;
    for (const Key& key : Keys()) {
        names.push_back(key.name);
    }
    return names;
}

bool APConfig_GetAll(std::vector<std::pair<std::string, std::string>>& values, std::string& error) {
    APSettings settings;
    if (APSettingsFile::Load(settings, error) != APSettingsFile::Status::kOk) {
        return false;
    }
    values.clear();
    for (const Key& key : Keys()) {
        values.emplace_back(key.name, std::to_string(key.toDisplay(key.field(settings))));
    }
    return true;
}

bool APConfig_GetByKey(const std::string& name, std::string& value, std::string& error) {
    const Key* key = FindKey(name, error);
    APSettings settings;
    if (key == nullptr || APSettingsFile::Load(settings, error) != APSettingsFile::Status::kOk) {
        return false;
    }
    value = std::to_string(key->toDisplay(key->field(settings)));
    return true;
}

bool APConfig_SetByKey(const std::string& name, const std::string& text, std::string& error) {
    const Key* key = FindKey(name, error);
    if (key == nullptr) {
        return false;
    }
    int32_t number = 0;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || ec != std::errc() || end != text.data() + text.size() ||
        !key->valid(number)) {
        error = "invalid value '" + text + "' for " + name + ": expected " + key->allowed;
        return false;
    }
    return UnderSettingsLock(
        [&] {
            APSettings settings;
            APSettingsFile::Status status = APSettingsFile::Load(settings, error);
            if (status == APSettingsFile::Status::kCorrupt ||
                status == APSettingsFile::Status::kError) {
                error += " (not changed; move the file away to start from the defaults)";
                return false;
            }
            if (status == APSettingsFile::Status::kMissing) {
                settings = APSettings();
            }
            key->field(settings) = key->fromDisplay(number);
            return APSettingsFile::Save(settings, error);
        },
        error);
}

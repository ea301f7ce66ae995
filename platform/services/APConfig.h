// The configuration store: the calendar's settings record, the world clock and the system's time
// and date formats, kept together in one small text file under the device root.
//
// Every call reads or rewrites the file; nothing is cached, so a change made by calendar-ctl is
// seen by the next call in the application. Results report success in their low byte (1), failure
// 0; a failed read leaves the caller's value as it was.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// Option ids as the settings view's menus carry them.
constexpr int32_t kAPDefaultViewMonth = 11414;
constexpr int32_t kAPDefaultViewWeek = 11415;
constexpr int32_t kAPDefaultViewDay = 11416;
constexpr int32_t kAPFirstWeekdaySunday = 11424;  // 11424 Sunday .. 11430 Saturday
constexpr int32_t kAPFirstWeekdaySaturday = 11430;
constexpr int32_t kAPKeepOneWeek = 11452;
constexpr int32_t kAPKeepEverything = 11457;

// The calendar's settings record; the calendar uses the first five fields.
struct APCONFIG_CALENDAR_S {
    int32_t defaultView = kAPDefaultViewMonth;     // 11414 month, 11415 week, 11416 day
    int32_t startWeekDay = kAPFirstWeekdaySunday;  // 11424..11430
    int32_t startDayTime = 8;                      // hour 0..23 at which the day view starts
    int32_t keepTime = kAPKeepEverything;          // 11452..11457
    int32_t lunarCalendar = 0;                     // 1 shows lunar dates
    int32_t reserved[3] = {0, 0, 0};
};
static_assert(sizeof(APCONFIG_CALENDAR_S) == 32, "five settings words and three spare ones");

// The world clock: a home zone and one foreign zone. The calendar caches words four and five.
struct APCONFIG_WORLDCLOCK_S {
    int32_t enabled = 0;               // 1 when the home screen shows the second clock
    int32_t homeOffsetMinutes = 480;   // home zone, minutes east of UTC
    int32_t homeDaylight = 0;          // 1 when daylight saving applies at home
    int32_t foreignOffsetMinutes = 0;  // second zone, minutes east of UTC
    int32_t foreignDaylight = 0;       // 1 when daylight saving applies there
    int32_t reserved[3] = {0, 0, 0};
};
static_assert(sizeof(APCONFIG_WORLDCLOCK_S) == 32, "five world-clock words and three spare ones");

// Time display format values as PLTime::GetStr takes them.
constexpr long kAPTimeFormat12 = 1;
constexpr long kAPTimeFormat24 = 2;

// Device path of the settings file.
extern const char* const kAPConfigDevicePath;

long APConfigCalendar_Read(APCONFIG_CALENDAR_S* config);
long APConfigCalendar_Write(APCONFIG_CALENDAR_S* config);
// Single settings; each leaves *value untouched on failure.
long APConfigCalendar_GetDefaultView(long* value);
long APConfigCalendar_GetStartWeekDay(long* value);
long APConfigCalendar_GetStartDayTime(long* value);
long APConfigCalendar_GetKeepTime(long* value);
long APConfigCalendar_GetLunarCalendar(long* value);

long APConfigWorldClock_Read(APCONFIG_WORLDCLOCK_S* config);
long APConfigWorldClock_Write(APCONFIG_WORLDCLOCK_S* config);

// 2 means 24-hour display, anything else 12-hour.
long APConfigSystem_GetTimeFormat(long* value);
long APConfigSystem_SetTimeFormat(long value);
// 0, 1 or 2 as PLDate2PLString takes them.
long APConfigSystem_GetDateFormat(long* value);
long APConfigSystem_SetDateFormat(long value);

// Writes the default settings when no settings file exists; an existing file (even a corrupt one)
// is left alone. False with a reason when the file cannot be written.
bool APConfig_EnsureDefaults(std::string& error);

// Settings by name, for calendar-ctl's `config get` / `config set`: default_view, first_weekday,
// day_start, keep_time, lunar, time_format (12 or 24), date_format (0..2). Values are decimal text.
std::vector<std::string> APConfig_Keys();
bool APConfig_GetByKey(const std::string& key, std::string& value, std::string& error);
// Every setting in key order, as the file holds it.
bool APConfig_GetAll(std::vector<std::pair<std::string, std::string>>& values, std::string& error);
// Validates the value for its key and rewrites the file; a corrupt file is refused, not replaced.
bool APConfig_SetByKey(const std::string& key, const std::string& value, std::string& error);

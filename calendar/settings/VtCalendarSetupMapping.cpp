// Settings menus, validation and change flags.
#include "settings/VtCalendarSetupMapping.h"

namespace {

constexpr int32_t kDefaultViewBase = 11413;
constexpr int32_t kKeepTimeBase = 11451;
constexpr int32_t kKeepTimeLast = 11457;
constexpr int32_t kDefaultDayStart = 8;

bool InRange(int32_t value, int32_t low, int32_t high) {
    return value >= low && value <= high;
}

}  // namespace

size_t DefaultViewMenuIndex(int32_t value) {
    return InRange(value, kAPDefaultViewMonth, kAPDefaultViewDay) ? size_t(value - kDefaultViewBase)
                                                                  : 0;
}

size_t FirstWeekdayMenuIndex(int32_t value) {
    if (value == kAPFirstWeekdaySunday) {
        return 7;
    }
    if (InRange(value, kAPFirstWeekdaySunday + 1, kAPFirstWeekdaySaturday)) {
        return size_t(value - kAPFirstWeekdaySunday);
    }
    return 0;
}

size_t KeepTimeMenuIndex(int32_t value) {
    return InRange(value, kAPKeepOneWeek, kKeepTimeLast) ? size_t(value - kKeepTimeBase) : 0;
}

APCONFIG_CALENDAR_S ValidatedSettings(const APCONFIG_CALENDAR_S& chosen) {
    APCONFIG_CALENDAR_S out = chosen;
    if (!InRange(out.defaultView, kAPDefaultViewMonth, kAPDefaultViewDay)) {
        out.defaultView = kAPDefaultViewMonth;
    }
    if (!InRange(out.startWeekDay, kAPFirstWeekdaySunday, kAPFirstWeekdaySaturday)) {
        out.startWeekDay = kAPFirstWeekdaySunday;
    }
    if (!InRange(out.startDayTime, 0, 23)) {
        out.startDayTime = kDefaultDayStart;
    }
    if (!InRange(out.keepTime, kAPKeepOneWeek, kKeepTimeLast)) {
        out.keepTime = kAPKeepEverything;
    }
    if (!InRange(out.lunarCalendar, 0, 1)) {
        out.lunarCalendar = 0;
    }
    return out;
}

uint32_t SettingsChangeFlags(const APCONFIG_CALENDAR_S& loaded, const APCONFIG_CALENDAR_S& saved) {
    const bool weekday = loaded.startWeekDay != saved.startWeekDay;
    const bool hour = loaded.startDayTime != saved.startDayTime;
    const bool keep = loaded.keepTime != saved.keepTime;
    const bool lunar = loaded.lunarCalendar != saved.lunarCalendar;
    uint32_t flags = 0;
    if (weekday || keep) {
        flags |= kSetupReloadMonth;
    }
    if (weekday || hour || keep) {
        flags |= kSetupReloadWeek;
    }
    if (lunar || hour || keep) {
        flags |= kSetupReloadDay;
    }
    return flags;
}

// The platform's own texts: month and weekday names, date title formats, keyboard labels and the
// time picker's halves of the day, read from the platform resource file that every device root
// carries at "/usr/share/platform/platform.rsc".
//
// The texts use ids 60000..60999, which no application uses, so an application's resource
// manager (asked before this one once it is added later) never shadows them. Every id has a
// fallback so that a widget shows something sensible when the file is missing or damaged; the
// date titles then keep their numeric forms ("2026-11", "2026-11-21").
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "PLBasicString.h"

class PLFont;
struct PLDate;

enum class VtWeekdayForm { Full, Short, Initial };

class VtPlatformText {
public:
    // Full month names, January first; also the probe that the file is loaded.
    static constexpr uint32_t kMonthNames = 60000;
    static constexpr uint32_t kMonthShortNames = 60020;
    // Weekday names, Sunday first.
    static constexpr uint32_t kWeekdayNames = 60040;
    static constexpr uint32_t kWeekdayShortNames = 60050;
    static constexpr uint32_t kWeekdayInitials = 60060;
    // Date title formats; fields {month} {mon} {weekday} {wday} {day} {year}.
    static constexpr uint32_t kMonthTitleLong = 60070;   // "November 2026"
    static constexpr uint32_t kMonthTitleShort = 60071;  // "Nov 2026"
    static constexpr uint32_t kDayTitleLong = 60072;     // "Saturday 21 November 2026"
    static constexpr uint32_t kDayTitleMedium = 60073;   // "Sat 21 November 2026"
    static constexpr uint32_t kDayTitleShort = 60074;    // "Sat 21 Nov 2026"
    // Keyboard keys.
    static constexpr uint32_t kKeySpace = 60100;
    static constexpr uint32_t kKeyDelete = 60101;
    static constexpr uint32_t kKeyDone = 60102;
    static constexpr uint32_t kKeySymbols = 60103;
    static constexpr uint32_t kKeyLetters = 60104;
    static constexpr uint32_t kKeyShift = 60105;
    // The time picker's halves of the day.
    static constexpr uint32_t kTimeAM = 60110;
    static constexpr uint32_t kTimePM = 60111;

    static constexpr uint32_t kFirstID = 60000;
    static constexpr uint32_t kLastID = 60999;
    static constexpr const char* kDevicePath = "/usr/share/platform/platform.rsc";

    // Registers the platform resource file with the running application context unless its texts
    // already resolve there (so a second theme installation adds nothing, and one after
    // PLAppContext::ResetInstance loads it again). A missing or damaged file is reported once per
    // process on standard error and leaves the fallbacks in use. True when the texts resolve.
    static bool Install();
    // Whether the platform texts resolve in the running context.
    static bool IsInstalled();

    // The text of a platform id: the resource file's, else the built-in fallback; empty for an id
    // that is not a platform text.
    static PLString Get(uint32_t id);
    // The fallback of an id (what the widgets show without the file); empty for an unknown id.
    static std::string_view Fallback(uint32_t id);
    // Month 1..12, weekday 1 (Sunday)..7; empty outside those ranges.
    static PLString MonthName(int month, bool shortForm);
    static PLString WeekdayName(int weekday, VtWeekdayForm form);

    // Fills a title format's fields from `date`; unknown fields and stray braces stay as written.
    static PLString FormatDate(std::string_view format, const PLDate& date);
    // The first of `formats` whose title for `date` fits `width` pixels in `font`; empty when the
    // platform texts are not installed or none fits (the caller then shows its numeric form).
    static PLString FitDateTitle(const PLDate& date, std::initializer_list<uint32_t> formats,
                                 const PLFont* font, int width);
};

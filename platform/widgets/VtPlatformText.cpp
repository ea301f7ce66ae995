// The platform's own texts: loading the platform resource file once per context, lookups with
// fallbacks, and date titles built from the month and weekday names.
#include "VtPlatformText.h"

#include <atomic>
#include <cstdio>
#include <memory>
#include <string>

#include "PLAppContext.h"
#include "PLDate.h"
#include "PLFont.h"
#include "PLResourceFileManager.h"
#include "PLTypes.h"

namespace {

struct Fallback {
    uint32_t id;
    const char* text;
};

// What the widgets show when the platform file cannot be had: the English texts they always
// showed, so that a device with a damaged file still reads well.
constexpr Fallback kFallbacks[] = {
    {60000, "January"},
    {60001, "February"},
    {60002, "March"},
    {60003, "April"},
    {60004, "May"},
    {60005, "June"},
    {60006, "July"},
    {60007, "August"},
    {60008, "September"},
    {60009, "October"},
    {60010, "November"},
    {60011, "December"},
    {60020, "Jan"},
    {60021, "Feb"},
    {60022, "Mar"},
    {60023, "Apr"},
    {60024, "May"},
    {60025, "Jun"},
    {60026, "Jul"},
    {60027, "Aug"},
    {60028, "Sep"},
    {60029, "Oct"},
    {60030, "Nov"},
    {60031, "Dec"},
    {60040, "Sunday"},
    {60041, "Monday"},
    {60042, "Tuesday"},
    {60043, "Wednesday"},
    {60044, "Thursday"},
    {60045, "Friday"},
    {60046, "Saturday"},
    {60050, "Sun"},
    {60051, "Mon"},
    {60052, "Tue"},
    {60053, "Wed"},
    {60054, "Thu"},
    {60055, "Fri"},
    {60056, "Sat"},
    {60060, "S"},
    {60061, "M"},
    {60062, "T"},
    {60063, "W"},
    {60064, "T"},
    {60065, "F"},
    {60066, "S"},
    {60070, "{month} {year}"},
    {60071, "{mon} {year}"},
    {60072, "{weekday} {day} {month} {year}"},
    {60073, "{wday} {day} {month} {year}"},
    {60074, "{wday} {day} {mon} {year}"},
    {60100, "space"},
    {60101, "\xE2\x86\x90"},
    {60102, "Done"},
    {60103, "123"},
    {60104, "abc"},
    {60105, "\xE2\x86\x91"},
    {60110, "AM"},
    {60111, "PM"},
};

// Reporting is per process: a simulator that restarts applications, or a test that resets the
// context between cases, would otherwise repeat the same line every time.
std::atomic<bool> gReportedUnavailable{false};

void ReportUnavailableOnce(const std::string& why) {
    if (!gReportedUnavailable.exchange(true)) {
        std::fprintf(stderr, "widgets: platform texts unavailable (%s); showing numeric dates\n",
                     why.c_str());
    }
}

constexpr uint32_t kManagerID = 0x706C6174;  // "plat"

// The text of one title field, or false when the name is not a field.
bool FieldText(std::string_view name, const PLDate& date, std::string& out) {
    if (name == "month" || name == "mon") {
        out = VtPlatformText::MonthName(date.month, name == "mon").str();
    } else if (name == "weekday" || name == "wday") {
        const VtWeekdayForm form = name == "wday" ? VtWeekdayForm::Short : VtWeekdayForm::Full;
        out = VtPlatformText::WeekdayName(date.Weekday(), form).str();
    } else if (name == "day") {
        out = std::to_string(int(date.day));
    } else if (name == "year") {
        char year[8];
        std::snprintf(year, sizeof year, "%04d", int(date.year));
        out = year;
    } else {
        return false;
    }
    return true;
}

}  // namespace

bool VtPlatformText::IsInstalled() {
    PLString probe;
    return PLAppContext::GetInstance()->GetText(kMonthNames, probe);
}

bool VtPlatformText::Install() {
    // Asking the context, rather than keeping a flag, stays right across ResetInstance, which
    // drops every manager.
    if (IsInstalled()) {
        return true;
    }
    auto manager = std::make_unique<PLResourceFileManager>(kManagerID, true);
    if (!manager->LoadFromFile(kDevicePath)) {
        ReportUnavailableOnce(manager->GetLastError());
        return false;
    }
    PLString probe;
    if (!manager->GetText(kMonthNames, probe)) {
        // Adding a file without the probe text would add it again on every installation.
        ReportUnavailableOnce(std::string(kDevicePath) + " holds no platform texts");
        return false;
    }
    PLAppContext::GetInstance()->AddResourceManager(manager.release(), true);
    return true;
}

std::string_view VtPlatformText::Fallback(uint32_t id) {
    for (const auto& entry : kFallbacks) {
        if (entry.id == id) {
            return entry.text;
        }
    }
    return {};
}

PLString VtPlatformText::Get(uint32_t id) {
    if (id < kFirstID || id > kLastID) {
        return {};
    }
    PLString text;
    if (PLAppContext::GetInstance()->GetText(id, text)) {
        return text;
    }
    return PLString(Fallback(id));
}

PLString VtPlatformText::MonthName(int month, bool shortForm) {
    if (month < 1 || month > 12) {
        return {};
    }
    return Get((shortForm ? kMonthShortNames : kMonthNames) + uint32_t(month - 1));
}

PLString VtPlatformText::WeekdayName(int weekday, VtWeekdayForm form) {
    if (weekday < 1 || weekday > 7) {
        return {};
    }
    const uint32_t first = form == VtWeekdayForm::Full    ? kWeekdayNames
                           : form == VtWeekdayForm::Short ? kWeekdayShortNames
                                                          : kWeekdayInitials;
    return Get(first + uint32_t(weekday - 1));
}

PLString VtPlatformText::FormatDate(std::string_view format, const PLDate& date) {
    std::string out;
    size_t pos = 0;
    while (pos < format.size()) {
        const size_t open = format.find('{', pos);
        if (open == std::string_view::npos) {
            out.append(format.substr(pos));
            break;
        }
        out.append(format.substr(pos, open - pos));
        const size_t close = format.find('}', open + 1);
        std::string field;
        if (close != std::string_view::npos &&
            FieldText(format.substr(open + 1, close - open - 1), date, field)) {
            out += field;
            pos = close + 1;
        } else {
            // Not a field: keep the brace and carry on after it, so nothing is lost.
            out += '{';
            pos = open + 1;
        }
    }
    return PLString(std::move(out));
}

PLString VtPlatformText::FitDateTitle(const PLDate& date, std::initializer_list<uint32_t> formats,
                                      const PLFont* font, int width) {
    if (!IsInstalled() || width <= 0) {
        return {};
    }
    for (uint32_t id : formats) {
        PLString title = FormatDate(Get(id).view(), date);
        if (!title.IsEmpty() && (font == nullptr || font->MeasureText(title.view()) <= width)) {
            return title;
        }
    }
    return {};
}

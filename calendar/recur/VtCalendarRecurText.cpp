// The repeat rule in words: the kind and interval, the days it falls on, then how it ends.
#include "recur/VtCalendarRecurText.h"

#include "APEventRecords.h"
#include "APGetStr.h"
#include "PLTimeStamp.h"

#include <string>

namespace {

constexpr uint32_t kTextNoRepeat = 10442;
constexpr uint32_t kTextDaily = 10462;
constexpr uint32_t kTextWeekly = 10472;
constexpr uint32_t kTextMonthly = 10482;
constexpr uint32_t kTextYearly = 10492;
constexpr uint32_t kTextEvery = 10502;
constexpr uint32_t kTextDays = 10512;
constexpr uint32_t kTextWeeks = 10522;
constexpr uint32_t kTextMonths = 10532;
constexpr uint32_t kTextWorkingDays = 10542;
constexpr uint32_t kTextTimes = 10582;
constexpr uint32_t kTextOnce = 12202;
constexpr uint32_t kTextFirstOrdinal = 10602;  // First .. Fourth, then Last for week 5
constexpr uint32_t kTextOn = 12142;
constexpr uint32_t kTextOnDay = 12152;
constexpr uint32_t kTextOnThe = 12162;
constexpr uint32_t kTextOf = 12172;
constexpr uint32_t kTextUntil = 12182;
constexpr uint32_t kTextSundayShort = 30592;  // short names run Monday (30532) .. Sunday
constexpr uint32_t kTextMondayShort = 30532;
constexpr uint32_t kTextSundayLong = 30462;  // long names run Sunday .. Saturday
constexpr uint32_t kTextJanuary = 30602;
constexpr uint32_t kTextStep = 10;  // resource texts of one list are 10 ids apart

constexpr int kWeekdays = 7;
constexpr int kLastWeek = 5;

// Pieces are joined as standard strings and handed out as toolkit strings at the end.
using Text = std::string;

Text Str(uint32_t id) {
    return APGetStr(id).str();
}

Text Number(long value) {
    return std::to_string(value);
}

// "Daily" for every one, "Every 3 days" for more.
Text EveryText(int32_t interval, uint32_t single, uint32_t unit) {
    if (interval <= 1) {
        return Str(single);
    }
    return Str(kTextEvery) + " " + Number(interval) + " " + Str(unit);
}

// Weekday d (1 Sunday .. 7 Saturday) in the short form of the week header.
Text ShortWeekday(int weekday) {
    return weekday == 1 ? Str(kTextSundayShort)
                        : Str(kTextMondayShort + kTextStep * uint32_t(weekday - 2));
}

Text LongWeekday(int weekday) {
    return Str(kTextSundayLong + kTextStep * uint32_t(weekday - 1));
}

bool IsWeekday(int value) {
    return value >= 1 && value <= kWeekdays;
}

// " on Mo, We" for the days of a weekday mask (bit d - 1 for weekday d); empty without days.
Text WeekdaysText(int32_t mask) {
    Text days;
    for (int weekday = 1; weekday <= kWeekdays; ++weekday) {
        if ((mask & (1 << (weekday - 1))) == 0) {
            continue;
        }
        days += days.empty() ? " " + Str(kTextOn) + " " : Text(", ");
        days += ShortWeekday(weekday);
    }
    return days;
}

// " on the Second Tuesday" for week * 256 + weekday; empty when either part is impossible.
Text NthWeekdayText(int32_t pattern) {
    const int week = (pattern >> 8) & 0xFF;
    const int weekday = pattern & 0xFF;
    if (week < 1 || week > kLastWeek || !IsWeekday(weekday)) {
        return {};
    }
    return " " + Str(kTextOnThe) + " " + Str(kTextFirstOrdinal + kTextStep * uint32_t(week - 1)) +
           " " + LongWeekday(weekday);
}

bool IsNthWeekday(int32_t pattern) {
    return (pattern >> 8) != 0;
}

bool IsMonth(int32_t month) {
    return month >= 1 && month <= 12;
}

Text MonthName(int32_t month) {
    return Str(kTextJanuary + kTextStep * uint32_t(month - 1));
}

Text MonthlyText(const _RecurInfo& setting) {
    Text text = EveryText(setting.interval, kTextMonthly, kTextMonths);
    if (IsNthWeekday(setting.pattern)) {
        return text + NthWeekdayText(setting.pattern);
    }
    if (setting.pattern >= 1 && setting.pattern <= 31) {
        text += " " + Str(kTextOnDay) + " " + Number(setting.pattern);
    }
    return text;
}

// The interval of a yearly rule is its month.
Text YearlyText(const _RecurInfo& setting) {
    Text text = Str(kTextYearly);
    const bool month = IsMonth(setting.interval);
    if (IsNthWeekday(setting.pattern)) {
        const Text nth = NthWeekdayText(setting.pattern);
        text += nth;
        if (!nth.empty() && month) {
            text += " " + Str(kTextOf) + " " + MonthName(setting.interval);
        }
        return text;
    }
    const bool day = setting.pattern >= 1 && setting.pattern <= 31;
    if (day && month) {
        text +=
            " " + Str(kTextOn) + " " + Number(setting.pattern) + " " + MonthName(setting.interval);
    }
    return text;
}

bool Repeats(int32_t kind) {
    return kind == kRecurDaily || kind == kRecurWeekly || kind == kRecurMonthly ||
           kind == kRecurYearly;
}

Text RuleText(const _RecurInfo& setting) {
    switch (setting.kind) {
        case kRecurDaily:
            if (setting.pattern == 1) {
                return Str(kTextWorkingDays);
            }
            return EveryText(setting.interval, kTextDaily, kTextDays);
        case kRecurWeekly:
            return EveryText(setting.interval, kTextWeekly, kTextWeeks) +
                   WeekdaysText(setting.pattern);
        case kRecurMonthly:
            return MonthlyText(setting);
        case kRecurYearly:
            return YearlyText(setting);
        default:
            return Str(kTextNoRepeat);
    }
}

Text EndText(const _RecurInfo& setting, long dateFormat) {
    if (!Repeats(setting.kind) || setting.count == kRecurNoEnd) {
        return {};
    }
    // The daily editor writes 0 for "until a date", the others -1; both end on the last stamp.
    if (setting.count <= 0) {
        return ", " + Str(kTextUntil) + " " +
               TimeStamp2PLStringDate(setting.lastStamp, dateFormat, false).str();
    }
    if (setting.count == 1) {
        return ", " + Str(kTextOnce);
    }
    return ", " + Number(setting.count) + " " + Str(kTextTimes);
}

}  // namespace

_RecurInfo VtCalendarRecurOf(const _EventRecInfo& record) {
    _RecurInfo setting;
    setting.startStamp = record.startStamp;
    setting.endStamp = record.endStamp;
    setting.interval = record.recurValueA;
    setting.pattern = record.recurValueB;
    setting.lastStamp = record.lastStamp;
    setting.count = record.recurValueC;
    setting.kind = record.recurKind;
    return setting;
}

PLBasicString<char> VtCalendarRecurRuleText(const _RecurInfo& setting) {
    return RuleText(setting);
}

PLBasicString<char> VtCalendarRecurEndText(const _RecurInfo& setting, long dateFormat) {
    return EndText(setting, dateFormat);
}

PLBasicString<char> VtCalendarRecurText(const _RecurInfo& setting, long dateFormat) {
    return RuleText(setting) + EndText(setting, dateFormat);
}

PLBasicString<char> VtCalendarRecurText(const _EventRecInfo& record, long dateFormat) {
    return VtCalendarRecurText(VtCalendarRecurOf(record), dateFormat);
}

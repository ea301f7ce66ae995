// The repeat rule of an event as it travels between the event form, the recurrence editors and the
// series-end computation: seven signed 32-bit words in a fixed order.
#pragma once

#include <cstdint>

// Recurrence kinds; one bit each, but only one is ever set.
constexpr int32_t kRecurNone = 0;
constexpr int32_t kRecurDaily = 1;
constexpr int32_t kRecurWeekly = 2;
constexpr int32_t kRecurMonthly = 4;
constexpr int32_t kRecurYearly = 8;

// Value of `count` that means "the series has no end" (it then stops at the end of 2030).
constexpr int32_t kRecurNoEnd = 0xFFFFF;

struct _RecurInfo {
    int32_t startStamp = 0;  // first moment of the event
    int32_t endStamp = 0;    // last moment of the event
    int32_t interval = 0;    // daily/weekly/monthly: every N; yearly: the month 1..12
    int32_t pattern = 0;     // daily: 1 = working days; weekly: weekday mask; monthly/yearly: day
                             // of month, or week * 256 + weekday
    int32_t lastStamp = 0;   // end of the series
    int32_t count = 0;       // occurrences, kRecurNoEnd, or 0 / -1 for "until a date"
    int32_t kind = kRecurNone;
};

static_assert(sizeof(_RecurInfo) == 28, "seven words, in message payload order");

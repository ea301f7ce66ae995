// Conversions between dates, times and time stamps, and number/text conversions.
//
// Time stamps are signed 32-bit seconds since 1970-01-01 00:00 UTC. "Local" follows TZ. Every
// reading of "now" goes through PLClock.
#pragma once

#include <cstdint>

#include "PLBasicString.h"
#include "PLDate.h"
#include "PLTime.h"

using PLTimeStampValue = int32_t;

// The moment of `date` at `time` in local time; a null time means 00:00:00. Dates outside the
// 32-bit range are clamped to its ends.
long PLDate2TimeStamp(const PLDate* date, const PLTime* time);
long PLDate2TimeStamp(const PLDate& date, const PLTime& time);
// A date object with a time that may be null (the calendar's "date, nullptr" calls).
long PLDate2TimeStamp(const PLDate& date, const PLTime* time);
// The same date and time read as UTC (timegm), as all-day events are stored.
long PLDateUTC2TimeStamp(const PLDate* date, const PLTime* time);
long PLDateUTC2TimeStamp(const PLDate& date, const PLTime* time);
// The local date and time of a stamp; either output may be null.
void TimeStamp2PLDate(long stamp, PLDate* date, PLTime* time);
// The UTC date and time of a stamp; either output may be null.
void TimeStamp2PLDateUTC(long stamp, PLDate* date, PLTime* time);
// The moment on `date` that has the local time of day of `stamp`.
long ChangeTimeStamp(long stamp, const PLDate& date);

// Date display formats (the system's date-format setting): 0 "2026-11-21", 1 "21-11-2026",
// 2 "11/21/2026". Any other value is format 0.
PLBasicString<char> PLDate2PLString(const PLDate& date, long format);
// The date of a stamp as text, local (utc false) or UTC (utc true).
PLBasicString<char> TimeStamp2PLStringDate(long stamp, long format, bool utc);

PLBasicString<char> PLNumToString(long value);
PLBasicString<char> PLUnsignedIntToString(unsigned long value);
// Reads a decimal number from the start of the text; empty text or no digits gives 0, values past
// the 32-bit range saturate.
unsigned long PLStringToUnsigned(const PLBasicString<char>& text);

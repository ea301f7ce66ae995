// Fast conversion of many time stamps near one range to dates and times of day.
//
// A range query turns hundreds of stamps into dates; asking the C library for each one costs more
// than the whole index scan. The decoder asks once for the UTC offset over a window around the
// range and, where that offset holds at both ends, converts stamps inside the window with plain
// arithmetic. Stamps elsewhere, or windows with a change of offset, take the offset of their hour,
// which each thread remembers once the C library gave it (the repeating series of a store keep
// asking for the same far stamps on every query).
#pragma once

#include <cstdint>

#include "PLDate.h"
#include "PLTime.h"

class APStampDecoder {
public:
    // The window reaches `margin` seconds beyond the range on both sides.
    APStampDecoder(long rangeStart, long rangeEnd, long margin);

    // Local date and time of day of a stamp.
    void Local(long stamp, PLDate& date, PLTime& time) const;
    // UTC date and time of day (the coding of all-day events).
    static void Utc(long stamp, PLDate& date, PLTime& time);

    // The date whose day number is given, with its fields filled.
    static PLDate DateOf(int32_t dayNumber);
    // The day number of days since 1970-01-01.
    static int32_t DayNumberOfUnixDay(int64_t unixDay);

private:
    static long OffsetAt(long stamp);
    // The offset of a stamp, remembered per hour when the whole hour has one offset.
    static long RememberedOffsetAt(long stamp);
    static void FromLocalSeconds(int64_t seconds, PLDate& date, PLTime& time);

    int64_t mWindowStart = 0;
    int64_t mWindowEnd = -1;
    long mOffset = 0;
};

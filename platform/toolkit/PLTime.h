// A time of day: hour, minute and second (4 bytes in the platform's records).
#pragma once

#include <cstdint>

#include "PLBasicString.h"

// Display formats for GetStr: 2 is the 24-hour form ("13:05"); any other value the 12-hour form
// ("1:05 PM").
constexpr long kPLTimeFormat12 = 1;
constexpr long kPLTimeFormat24 = 2;

struct PLTime {
    uint8_t hour = 0;
    uint8_t minute = 0;
    uint8_t second = 0;
    uint8_t reserved = 0;

    PLTime() = default;
    PLTime(int h, int m, int s) : hour(uint8_t(h)), minute(uint8_t(m)), second(uint8_t(s)) {}

    void SetHour(int h) { hour = uint8_t(h); }
    void SetMinute(int m) { minute = uint8_t(m); }
    void SetSecond(int s) { second = uint8_t(s); }
    int GetHour() const { return hour; }
    int GetMinute() const { return minute; }
    int GetSecond() const { return second; }
    int SecondsOfDay() const { return hour * 3600 + minute * 60 + second; }

    bool operator==(const PLTime& o) const {
        return hour == o.hour && minute == o.minute && second == o.second;
    }
    bool operator!=(const PLTime& o) const { return !(*this == o); }

    // Writes the time as text: "13:05" in format 2, else "1:05 PM" (12 AM for hour 0).
    static void GetStr(const PLTime& time, long format, PLBasicString<char>& text);
    static PLBasicString<char> GetStr(const PLTime& time, long format);
};

static_assert(sizeof(PLTime) == 4, "PLTime is part of the binary node layout");

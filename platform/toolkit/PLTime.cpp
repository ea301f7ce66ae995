// Text forms of a time of day in the 12- and 24-hour display formats.
#include "PLTime.h"

#include <cstdio>

void PLTime::GetStr(const PLTime& time, long format, PLBasicString<char>& text) {
    char buffer[32];
    if (format == kPLTimeFormat24) {
        std::snprintf(buffer, sizeof buffer, "%d:%02d", time.GetHour(), time.GetMinute());
    } else {
        // Midnight reads 12 AM and noon 12 PM; an impossible hour still gets a 1..12 face.
        const int hour = time.GetHour() % 24;
        const int face = hour % 12 == 0 ? 12 : hour % 12;
        std::snprintf(buffer, sizeof buffer, "%d:%02d %s", face, time.GetMinute(),
                      hour < 12 ? "AM" : "PM");
    }
    text = PLBasicString<char>(buffer);
}

PLBasicString<char> PLTime::GetStr(const PLTime& time, long format) {
    PLBasicString<char> text;
    GetStr(time, format, text);
    return text;
}

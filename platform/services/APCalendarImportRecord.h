// The common end of both calendar readers: an event as read from a file, in neutral terms, and
// its conversion into an event record with the checks that decide whether the record can hold it.
#pragma once

#include <cstdint>
#include <string>

#include "APVCalendarImport.h"

// A calendar date and time as written in a file.
struct APImportTime {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    bool hasTime = false;  // false for a bare date
    bool utc = false;      // "Z": UTC; otherwise floating (local)
    bool known = false;    // set when already converted to a stamp (a zoned time)
    long stamp = 0;        // the moment, when `known`
};

// A repeat rule in the record's terms; `kind` 0 means none.
struct APImportRule {
    int kind = 0;
    int a = 0;
    int b = 0;
    enum class End { kNone, kCount, kUntil } end = End::kNone;
    int count = 0;
    APImportTime until;
    bool weekdayFromStart = false;  // weekly rule without days: the start's weekday
    bool dayFromStart = false;      // monthly/yearly rule without a day: the start's day
    bool monthFromStart = false;    // yearly rule without a month: the start's month
};

struct APImportDraft {
    int line = 0;
    bool hasStart = false;
    bool hasEnd = false;
    bool endExclusiveDate = false;  // iCalendar: a DTEND date is the day after the last day
    APImportTime start;
    APImportTime end;
    std::string subject, location, notes;
    uint32_t classChoice = 11561;
    uint32_t colour = 11544;  // X-MDZ-COLOUR, this calendar's own extension
    APImportRule rule;
    bool hasAlarm = false;
    bool alarmRelative = false;  // lead given directly
    long alarmLead = 0;
    APImportTime alarmTime;
    std::string error;  // set by the reader: "line N: why"
    std::string warning;
};

// Parses "YYYYMMDD", "YYYYMMDDTHHMMSS" or "YYYYMMDDTHHMMSSZ"; false on anything else.
bool APImport_ParseTime(const std::string& text, APImportTime& time);
// Converts a draft into the imported event (record or error).
APImportedEvent APImport_Finish(const APImportDraft& draft);

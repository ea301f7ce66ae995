// Export cases shared by the writer and import tests: one event of every kind, end mode and text
// shape, with what independent readers must find in the written file.
#pragma once

#include <string>
#include <vector>

#include "APEventRecords.h"

struct ExportCase {
    std::string name;
    _EventRecInfo record;
    long lead = 0;        // alarm lead in seconds, when the record has an alarm
    std::string dtstart;  // as libical prints it
    std::string dtend;
    std::string dtstartIso;  // as Python's vobject reads it (isoformat)
    std::string rule;        // vCalendar 1.0 RRULE text, empty for none
    std::string icalRule;    // libical's iCalendar reading of that rule
    std::string alarm;       // the alarm's run time in UTC, empty for none
    std::string category;
    bool countedRule = false;  // the rule ends after a count
};

// Built for TZ=UTC.
std::vector<ExportCase> ExportCases();

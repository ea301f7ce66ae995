// The iCalendar reader: libical parses the file; each VEVENT is mapped onto an import draft, and a
// rule outside the record's five kinds is reported with the line of its event.
#pragma once

#include <string>
#include <vector>

#include "APCalendarImportRecord.h"

class APICalendarReader {
public:
    static bool Read(const std::string& text, std::vector<APImportDraft>& drafts,
                     std::string& error);
};

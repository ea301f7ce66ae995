// The vCalendar 1.0 reader: logical lines with their line numbers, properties with parameters,
// quoted-printable and charsets, and the 1.0 rule grammar, into import drafts.
#pragma once

#include <string>
#include <vector>

#include "APCalendarImportRecord.h"

class APVCalendarReader {
public:
    // Reads every VEVENT of the text; false with `error` when there is no VCALENDAR at all.
    static bool Read(const std::string& text, std::vector<APImportDraft>& drafts,
                     std::string& error);
    // Parses a 1.0 rule ("W1 MO WE FR #0"); false with the reason when the record cannot hold it.
    static bool ParseRule(const std::string& text, APImportRule& rule, std::string& why);
};

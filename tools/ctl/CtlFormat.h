// Text in and out of calendar-ctl: dates and times on the command line, local renderings of
// stamps, and JSON objects written one per line.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "PLDate.h"
#include "PLTime.h"

// "YYYY-MM-DD" into a date; false for malformed text or a date that does not exist.
bool CtlParseDate(const std::string& text, PLDate& date);
// "YYYY-MM-DD HH:MM[:SS]" or, with `dateOnlyAllowed`, "YYYY-MM-DD" (time 00:00:00).
bool CtlParseDateTime(const std::string& text, PLDate& date, PLTime& time, bool dateOnlyAllowed);

std::string CtlDateText(const PLDate& date);             // YYYY-MM-DD
std::string CtlTimeText(const PLTime& time);             // HH:MM:SS
std::string CtlStampText(long stamp, bool utc = false);  // YYYY-MM-DD HH:MM:SS
// Bytes of a fixed text field up to its NUL or `size`, whichever comes first.
std::string CtlFieldText(const char* field, size_t size);

// One JSON object, members in insertion order.
class CtlJson {
public:
    CtlJson& Add(const std::string& key, long value);
    CtlJson& Add(const std::string& key, const std::string& value);
    CtlJson& Add(const std::string& key, const std::vector<std::string>& values);
    std::string Text() const;
    // The members as "key=value" words, for the plain output.
    std::string Plain() const;

    // JSON string literal; invalid UTF-8 becomes U+FFFD so that the output always parses.
    static std::string Quote(const std::string& text);

private:
    std::vector<std::pair<std::string, std::string>> mMembers;  // key, encoded value
    std::vector<std::pair<std::string, std::string>> mPlain;
};

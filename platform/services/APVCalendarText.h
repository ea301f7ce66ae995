// Text helpers shared by the vCalendar writer and reader: quoted-printable, UTF-8 checks, the
// recurrence and category vocabulary of vCalendar 1.0, and UTC date-time text.
#pragma once

#include <cstdint>
#include <string>

namespace APVCalendarText {

// True when the text can be written as it stands: printable ASCII without ; , \ and no line break.
bool IsPlain(const std::string& text);
// Quoted-printable with uppercase hex and no soft line breaks; every line break becomes =0D=0A.
std::string EncodeQuotedPrintable(const std::string& text);
// Decodes quoted-printable; soft line breaks ("=" at a line end) are removed. False on a bad
// escape, with the text decoded as far as it went.
bool DecodeQuotedPrintable(const std::string& text, std::string& decoded);
// Replaces every invalid UTF-8 sequence with '?', so that the file stays valid UTF-8.
std::string SanitiseUtf8(const std::string& text);
// Cuts to at most `maxBytes` bytes without splitting a UTF-8 sequence.
std::string CutUtf8(const std::string& text, size_t maxBytes);

// "20260315T090000Z" for a stamp (UTC), "20260315T090000" for the broken-down fields.
std::string UtcDateTime(long stamp);
std::string FloatingDateTime(int year, int month, int day, int hour, int minute, int second);

// Weekday 1 (Sunday) .. 7 (Saturday) to "SU".."SA"; 0 for an unknown abbreviation.
const char* WeekdayCode(int weekday);
int WeekdayFromCode(const std::string& code);

// Class choice 11560..11563 to BUSINESS, PERSONAL, HOLIDAY, MISCELLANEOUS (others PERSONAL), and
// back (0 for an unknown category).
const char* CategoryOf(uint32_t classChoice);
uint32_t ClassOfCategory(const std::string& category);

}  // namespace APVCalendarText

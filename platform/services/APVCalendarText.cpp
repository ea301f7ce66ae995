// vCalendar text helpers. Quoted-printable is written without soft line breaks because the files
// are never folded; readers that expect 76-column lines still accept longer ones.
#include "APVCalendarText.h"

#include <cctype>
#include <cstdio>
#include <ctime>

namespace APVCalendarText {

bool IsPlain(const std::string& text) {
    for (unsigned char c : text) {
        if (c < 0x20 || c > 0x7E || c == ';' || c == ',' || c == '\\') {
            return false;
        }
    }
    // A trailing space would be lost by readers that trim values.
    return text.empty() || (text.back() != ' ' && text.front() != ' ');
}

std::string EncodeQuotedPrintable(const std::string& text) {
    static const char kHex[] = "0123456789ABCDEF";
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        unsigned char c = static_cast<unsigned char>(text[i]);
        if (c == '\r' || c == '\n') {
            out += "=0D=0A";
            if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
                ++i;
            }
            continue;
        }
        bool lastOnLine = i + 1 == text.size() || text[i + 1] == '\r' || text[i + 1] == '\n';
        bool literal = (c >= 0x21 && c <= 0x7E && c != '=' && c != ';' && c != ',' && c != '\\') ||
                       (c == ' ' && !lastOnLine && i != 0);
        if (literal) {
            out += static_cast<char>(c);
        } else {
            out += '=';
            out += kHex[c >> 4];
            out += kHex[c & 15];
        }
    }
    return out;
}

bool DecodeQuotedPrintable(const std::string& text, std::string& decoded) {
    decoded.clear();
    auto hexValue = [](char c) -> int {
        if (c >= '0' && c <= '9') {
            return c - '0';
        }
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
    };
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '=') {
            decoded += text[i];
            continue;
        }
        if (i + 1 < text.size() && (text[i + 1] == '\r' || text[i + 1] == '\n')) {
            i += (text[i + 1] == '\r' && i + 2 < text.size() && text[i + 2] == '\n') ? 2 : 1;
            continue;  // soft line break
        }
        if (i + 2 >= text.size()) {
            return i + 1 == text.size();  // a lone "=" at the very end is a soft break
        }
        int hi = hexValue(text[i + 1]);
        int lo = hexValue(text[i + 2]);
        if (hi < 0 || lo < 0) {
            return false;
        }
        decoded += static_cast<char>(hi * 16 + lo);
        i += 2;
    }
    return true;
}

std::string SanitiseUtf8(const std::string& text) {
    std::string out;
    size_t i = 0;
    while (i < text.size()) {
        unsigned char c = static_cast<unsigned char>(text[i]);
        size_t length = c < 0x80         ? 1
                        : (c >> 5) == 6  ? 2
                        : (c >> 4) == 14 ? 3
                        : (c >> 3) == 30 ? 4
                                         : 0;
        bool valid = length > 0 && i + length <= text.size();
        for (size_t k = 1; valid && k < length; ++k) {
            valid = (static_cast<unsigned char>(text[i + k]) & 0xC0) == 0x80;
        }
        if (valid && length > 1) {
            // Reject overlong forms and surrogates.
            unsigned char c1 = static_cast<unsigned char>(text[i + 1]);
            valid =
                !(c == 0xC0 || c == 0xC1 || (c == 0xE0 && c1 < 0xA0) || (c == 0xED && c1 >= 0xA0) ||
                  (c == 0xF0 && c1 < 0x90) || c > 0xF4 || (c == 0xF4 && c1 >= 0x90));
        }
        if (valid) {
            out.append(text, i, length);
            i += length;
        } else {
            out += '?';
            ++i;
        }
    }
    return out;
}

std::string CutUtf8(const std::string& text, size_t maxBytes) {
    if (text.size() <= maxBytes) {
        return text;
    }
    size_t end = maxBytes;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
        --end;
    }
    return text.substr(0, end);
}

std::string UtcDateTime(long stamp) {
    time_t t = static_cast<time_t>(stamp);
    struct tm fields {};
    gmtime_r(&t, &fields);
    return FloatingDateTime(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday,
                            fields.tm_hour, fields.tm_min, fields.tm_sec) +
           "Z";
}

std::string FloatingDateTime(int year, int month, int day, int hour, int minute, int second) {
    char text[32];
    std::snprintf(text, sizeof text, "%04d%02d%02dT%02d%02d%02d", year, month, day, hour, minute,
                  second);
    return text;
}

namespace {
const char* const kWeekdays[7] = {"SU", "MO", "TU", "WE", "TH", "FR", "SA"};
const char* const kCategories[4] = {"BUSINESS", "PERSONAL", "HOLIDAY", "MISCELLANEOUS"};
constexpr uint32_t kFirstClass = 11560;
}  // namespace

const char* WeekdayCode(int weekday) {
    return weekday >= 1 && weekday <= 7 ? kWeekdays[weekday - 1] : "";
}

int WeekdayFromCode(const std::string& code) {
    for (int i = 0; i < 7; ++i) {
        if (code == kWeekdays[i]) {
            return i + 1;
        }
    }
    return 0;
}

const char* CategoryOf(uint32_t classChoice) {
    if (classChoice >= kFirstClass && classChoice < kFirstClass + 4) {
        return kCategories[classChoice - kFirstClass];
    }
    return kCategories[1];
}

uint32_t ClassOfCategory(const std::string& category) {
    std::string upper;
    for (char c : category) {
        upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    for (uint32_t i = 0; i < 4; ++i) {
        if (upper == kCategories[i]) {
            return kFirstClass + i;
        }
    }
    return 0;
}

}  // namespace APVCalendarText

// Dates, times and JSON for calendar-ctl.
#include "CtlFormat.h"

#include <cstdio>

#include "PLTimeStamp.h"

namespace {

bool ParseFields(const std::string& text, int& y, int& m, int& d, int& hh, int& mm, int& ss,
                 bool& hasTime) {
    char tail = 0;
    hh = mm = ss = 0;
    hasTime = false;
    if (std::sscanf(text.c_str(), "%4d-%2d-%2d %2d:%2d:%2d%c", &y, &m, &d, &hh, &mm, &ss, &tail) ==
        6) {
        hasTime = true;
    } else if (std::sscanf(text.c_str(), "%4d-%2d-%2d %2d:%2d%c", &y, &m, &d, &hh, &mm, &tail) ==
               5) {
        hasTime = true;
        ss = 0;
    } else if (std::sscanf(text.c_str(), "%4d-%2d-%2d%c", &y, &m, &d, &tail) != 3) {
        return false;
    }
    return hh >= 0 && hh <= 23 && mm >= 0 && mm <= 59 && ss >= 0 && ss <= 59;
}

bool ValidDate(int y, int m, int d) {
    return y >= 1900 && y <= 2100 && m >= 1 && m <= 12 && d >= 1 &&
           d <= PLDate::NumberOfDaysInMonth(m, y);
}

// Length of the valid UTF-8 sequence at `i`, or 0.
size_t Utf8Length(const std::string& s, size_t i) {
    const auto c = static_cast<unsigned char>(s[i]);
    size_t length = c < 0x80 ? 1 : (c >> 5) == 6 ? 2 : (c >> 4) == 14 ? 3 : (c >> 3) == 30 ? 4 : 0;
    if (length == 0 || i + length > s.size() || (length == 2 && c < 0xC2)) {
        return 0;
    }
    for (size_t k = 1; k < length; ++k) {
        if ((static_cast<unsigned char>(s[i + k]) >> 6) != 2) {
            return 0;
        }
    }
    return length;
}

}  // namespace

bool CtlParseDate(const std::string& text, PLDate& date) {
    int y, m, d, hh, mm, ss;
    bool hasTime = false;
    if (!ParseFields(text, y, m, d, hh, mm, ss, hasTime) || hasTime || !ValidDate(y, m, d)) {
        return false;
    }
    date = PLDate(y, m, d);
    return true;
}

bool CtlParseDateTime(const std::string& text, PLDate& date, PLTime& time, bool dateOnlyAllowed) {
    int y, m, d, hh, mm, ss;
    bool hasTime = false;
    if (!ParseFields(text, y, m, d, hh, mm, ss, hasTime) || !ValidDate(y, m, d) ||
        (!hasTime && !dateOnlyAllowed)) {
        return false;
    }
    date = PLDate(y, m, d);
    time = PLTime(hh, mm, ss);
    return true;
}

std::string CtlDateText(const PLDate& date) {
    char text[16];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", int(date.year), int(date.month),
                  int(date.day));
    return text;
}

std::string CtlTimeText(const PLTime& time) {
    char text[16];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", time.GetHour(), time.GetMinute(),
                  time.GetSecond());
    return text;
}

std::string CtlStampText(long stamp, bool utc) {
    PLDate date;
    PLTime time;
    if (utc) {
        TimeStamp2PLDateUTC(stamp, &date, &time);
    } else {
        TimeStamp2PLDate(stamp, &date, &time);
    }
    return CtlDateText(date) + " " + CtlTimeText(time);
}

std::string CtlFieldText(const char* field, size_t size) {
    size_t length = 0;
    while (length < size && field[length] != '\0') {
        ++length;
    }
    return std::string(field, length);
}

std::string CtlJson::Quote(const std::string& text) {
    std::string out = "\"";
    for (size_t i = 0; i < text.size();) {
        const auto c = static_cast<unsigned char>(text[i]);
        const size_t length = Utf8Length(text, i);
        if (length == 0) {
            out += "\\ufffd";
            ++i;
            continue;
        }
        if (c == '"' || c == '\\') {
            out += '\\';
            out += char(c);
        } else if (c == '\n') {
            out += "\\n";
        } else if (c == '\r') {
            out += "\\r";
        } else if (c == '\t') {
            out += "\\t";
        } else if (c < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", c);
            out += escape;
        } else {
            out.append(text, i, length);
        }
        i += length;
    }
    return out + "\"";
}

CtlJson& CtlJson::Add(const std::string& key, long value) {
    mMembers.emplace_back(key, std::to_string(value));
    mPlain.emplace_back(key, std::to_string(value));
    return *this;
}

CtlJson& CtlJson::Add(const std::string& key, const std::string& value) {
    mMembers.emplace_back(key, Quote(value));
    mPlain.emplace_back(key, value.find_first_of(" \t\n") == std::string::npos && !value.empty()
                                 ? value
                                 : Quote(value));
    return *this;
}

CtlJson& CtlJson::Add(const std::string& key, const std::vector<std::string>& values) {
    std::string array = "[";
    std::string plain;
    for (size_t i = 0; i < values.size(); ++i) {
        array += (i ? "," : "") + Quote(values[i]);
        plain += (i ? "," : "") + values[i];
    }
    mMembers.emplace_back(key, array + "]");
    mPlain.emplace_back(key, Quote(plain));
    return *this;
}

std::string CtlJson::Text() const {
    std::string out = "{";
    for (size_t i = 0; i < mMembers.size(); ++i) {
        out += (i ? "," : "") + Quote(mMembers[i].first) + ":" + mMembers[i].second;
    }
    return out + "}";
}

std::string CtlJson::Plain() const {
    std::string out;
    for (size_t i = 0; i < mPlain.size(); ++i) {
        out += (i ? " " : "") + mPlain[i].first + "=" + mPlain[i].second;
    }
    return out;
}

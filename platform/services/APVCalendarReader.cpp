// vCalendar 1.0 reading. Lines are unfolded (CRLF + white space) and quoted-printable values are
// joined across soft line breaks before a property is parsed, so that every error can still name
// the physical line on which its property began.
#include "APVCalendarReader.h"

#include <cctype>
#include <cstdlib>
#include <sstream>

#include "APVCalendarText.h"

namespace {

struct Line {
    int number;
    std::string text;
};

std::string Upper(std::string s) {
    for (char& c : s) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return s;
}

std::vector<Line> PhysicalLines(const std::string& text) {
    std::vector<Line> lines;
    size_t pos = 0;
    int number = 0;
    while (pos < text.size()) {
        size_t end = text.find('\n', pos);
        size_t next = end == std::string::npos ? text.size() : end + 1;
        size_t stop = end == std::string::npos ? text.size() : end;
        if (stop > pos && text[stop - 1] == '\r') {
            --stop;
        }
        lines.push_back({++number, text.substr(pos, stop - pos)});
        pos = next;
    }
    return lines;
}

bool IsQuotedPrintable(const std::string& line) {
    size_t colon = line.find(':');
    return colon != std::string::npos &&
           Upper(line.substr(0, colon)).find("QUOTED-PRINTABLE") != std::string::npos;
}

// Unfolds continuation lines and quoted-printable soft breaks.
std::vector<Line> LogicalLines(const std::vector<Line>& physical) {
    std::vector<Line> lines;
    for (const Line& line : physical) {
        bool continuation =
            !lines.empty() && !line.text.empty() && (line.text[0] == ' ' || line.text[0] == '\t');
        bool softBreak = !lines.empty() && IsQuotedPrintable(lines.back().text) &&
                         !lines.back().text.empty() && lines.back().text.back() == '=';
        if (softBreak) {
            lines.back().text.pop_back();
            lines.back().text += line.text;
        } else if (continuation) {
            lines.back().text += line.text.substr(1);
        } else {
            lines.push_back(line);
        }
    }
    return lines;
}

struct Property {
    std::string name;
    std::string value;
    bool quotedPrintable = false;
    std::string charset;
};

bool ParseProperty(const std::string& text, Property& p) {
    size_t colon = text.find(':');
    if (colon == std::string::npos || colon == 0) {
        return false;
    }
    std::string head = text.substr(0, colon);
    p.value = text.substr(colon + 1);
    std::stringstream parts(head);
    std::string part;
    std::getline(parts, part, ';');
    p.name = Upper(part);
    while (std::getline(parts, part, ';')) {
        std::string upper = Upper(part);
        if (upper == "QUOTED-PRINTABLE" || upper == "ENCODING=QUOTED-PRINTABLE") {
            p.quotedPrintable = true;
        } else if (upper.rfind("CHARSET=", 0) == 0) {
            p.charset = upper.substr(8);
        }
    }
    return true;
}

std::string Latin1ToUtf8(const std::string& text) {
    std::string out;
    for (unsigned char c : text) {
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

// Decoded text with line breaks as "\n".
bool TextValue(const Property& p, std::string& text, std::string& why) {
    std::string raw = p.value;
    if (p.quotedPrintable && !APVCalendarText::DecodeQuotedPrintable(p.value, raw)) {
        why = "bad quoted-printable escape in " + p.name;
        return false;
    }
    if (p.charset == "ISO-8859-1" || p.charset == "LATIN1") {
        raw = Latin1ToUtf8(raw);
    }
    text.clear();
    for (size_t i = 0; i < raw.size(); ++i) {
        if (raw[i] == '\r') {
            text += '\n';
            if (i + 1 < raw.size() && raw[i + 1] == '\n') {
                ++i;
            }
        } else if (raw[i] == '\\' && i + 1 < raw.size() &&
                   (raw[i + 1] == ';' || raw[i + 1] == ',' || raw[i + 1] == '\\')) {
            text += raw[++i];
        } else {
            text += raw[i];
        }
    }
    return true;
}

bool ParsePositiveInt(const std::string& text, int& value) {
    if (text.empty() || text.size() > 6) {
        return false;
    }
    value = 0;
    for (char c : text) {
        if (c < '0' || c > '9') {
            return false;
        }
        value = value * 10 + (c - '0');
    }
    return true;
}

void ApplyProperty(const Property& p, int lineNumber, APImportDraft& d) {
    auto fail = [&](const std::string& why) {
        if (d.error.empty()) {
            d.error = "line " + std::to_string(lineNumber) + ": " + why;
        }
    };
    std::string why;
    if (p.name == "DTSTART" || p.name == "DTEND") {
        APImportTime t;
        if (!APImport_ParseTime(p.value, t)) {
            return fail("bad date-time '" + p.value + "' in " + p.name);
        }
        (p.name == "DTSTART" ? d.start : d.end) = t;
        (p.name == "DTSTART" ? d.hasStart : d.hasEnd) = true;
    } else if (p.name == "SUMMARY" || p.name == "LOCATION" || p.name == "DESCRIPTION") {
        std::string text;
        if (!TextValue(p, text, why)) {
            return fail(why);
        }
        (p.name == "SUMMARY" ? d.subject : p.name == "LOCATION" ? d.location : d.notes) = text;
    } else if (p.name == "CATEGORIES") {
        std::string first = p.value.substr(0, p.value.find_first_of(";,"));
        uint32_t choice = APVCalendarText::ClassOfCategory(first);
        d.classChoice = choice != 0 ? choice : 11563;
    } else if (p.name == "X-MDZ-COLOUR") {
        d.colour = uint32_t(std::strtoul(p.value.c_str(), nullptr, 10));
    } else if (p.name == "RRULE") {
        if (!APVCalendarReader::ParseRule(p.value, d.rule, why)) {
            return fail("RRULE '" + p.value + "' cannot be held: " + why);
        }
    } else if (p.name == "EXRULE" || p.name == "EXDATE" || p.name == "RDATE") {
        return fail(p.name + " cannot be held: the record keeps one rule without exceptions");
    } else if (p.name == "DALARM" || p.name == "AALARM") {
        std::string when = p.value.substr(0, p.value.find(';'));
        APImportTime t;
        if (!APImport_ParseTime(when, t) || !t.hasTime) {
            return fail("bad alarm time '" + when + "' in " + p.name);
        }
        if (!d.hasAlarm) {
            d.hasAlarm = true;
            d.alarmTime = t;
        }
    }
}

}  // namespace

bool APVCalendarReader::ParseRule(const std::string& text, APImportRule& rule, std::string& why) {
    std::vector<std::string> words;
    std::stringstream stream(text);
    for (std::string w; stream >> w;) {
        words.push_back(Upper(w));
    }
    if (words.empty()) {
        why = "empty rule";
        return false;
    }
    APImportRule r;
    r.end = APImportRule::End::kCount;
    r.count = 2;  // vCalendar 1.0: a rule without a duration runs twice
    // The last word may be the end: "#n" or a date-time.
    std::vector<std::string> modifiers(words.begin() + 1, words.end());
    if (!modifiers.empty()) {
        const std::string& last = modifiers.back();
        APImportTime until;
        int count = 0;
        if (last[0] == '#') {
            if (!ParsePositiveInt(last.substr(1), count)) {
                why = "bad duration '" + last + "'";
                return false;
            }
            r.end = count == 0 ? APImportRule::End::kNone : APImportRule::End::kCount;
            r.count = count;
            modifiers.pop_back();
        } else if (APImport_ParseTime(last, until)) {
            r.end = APImportRule::End::kUntil;
            r.until = until;
            modifiers.pop_back();
        }
    }
    const std::string& head = words[0];
    size_t digits = head.find_first_of("0123456789");
    std::string freq = head.substr(0, digits);
    int interval = 0;
    if (digits == std::string::npos || !ParsePositiveInt(head.substr(digits), interval) ||
        interval < 1) {
        why = "bad frequency '" + head + "'";
        return false;
    }
    r.a = interval;
    if (freq == "D") {
        if (!modifiers.empty()) {
            why = "times of day in a daily rule";
            return false;
        }
        r.kind = 1;
    } else if (freq == "W") {
        int mask = 0;
        for (const std::string& m : modifiers) {
            int weekday = APVCalendarText::WeekdayFromCode(m);
            if (weekday == 0) {
                why = "unknown weekday '" + m + "'";
                return false;
            }
            mask |= 1 << (weekday - 1);
        }
        r.kind = 2;
        r.b = mask;
        r.weekdayFromStart = mask == 0;
        if (interval == 1 && mask == 0x3E) {
            r.kind = 1;  // Monday to Friday every week: the daily working-days rule
            r.b = 1;
        }
    } else if (freq == "MD") {
        if (modifiers.size() > 1) {
            why = "more than one day of the month";
            return false;
        }
        int day = 0;
        if (!modifiers.empty() && (!ParsePositiveInt(modifiers[0], day) || day < 1 || day > 31)) {
            why = "day of the month '" + modifiers[0] + "' (days counted from the end, LD)";
            return false;
        }
        r.kind = 4;
        r.b = day;
        r.dayFromStart = modifiers.empty();
    } else if (freq == "MP") {
        if (modifiers.size() != 2) {
            why = "exactly one week position and one weekday are needed";
            return false;
        }
        const std::string& pos = modifiers[0];
        int week = 0;
        int weekday = APVCalendarText::WeekdayFromCode(modifiers[1]);
        if (pos == "1-") {
            week = 5;
        } else if (pos.size() == 2 && pos[1] == '+' && pos[0] >= '1' && pos[0] <= '5') {
            week = pos[0] - '0';
        } else {
            why = "week position '" + pos + "'";
            return false;
        }
        if (weekday == 0) {
            why = "unknown weekday '" + modifiers[1] + "'";
            return false;
        }
        r.kind = interval == 12 ? 8 : 4;
        r.b = week * 256 + weekday;
        r.monthFromStart = r.kind == 8;
    } else if (freq == "YM") {
        if (interval != 1) {
            why = "a yearly rule repeats every year";
            return false;
        }
        if (modifiers.size() > 1) {
            why = "more than one month";
            return false;
        }
        int month = 0;
        if (!modifiers.empty() &&
            (!ParsePositiveInt(modifiers[0], month) || month < 1 || month > 12)) {
            why = "month '" + modifiers[0] + "'";
            return false;
        }
        r.kind = 8;
        r.a = month;
        r.monthFromStart = modifiers.empty();
        r.dayFromStart = true;
    } else {
        why = "frequency '" + freq + "' (only D, W, MD, MP and YM rules)";
        return false;
    }
    rule = r;
    return true;
}

bool APVCalendarReader::Read(const std::string& text, std::vector<APImportDraft>& drafts,
                             std::string& error) {
    std::vector<Line> lines = LogicalLines(PhysicalLines(text));
    bool sawCalendar = false;
    int depth = 0;  // nesting of components below VCALENDAR other than the event
    APImportDraft* event = nullptr;
    for (const Line& line : lines) {
        if (line.text.empty()) {
            continue;
        }
        Property p;
        if (!ParseProperty(line.text, p)) {
            if (event != nullptr && event->error.empty()) {
                event->error = "line " + std::to_string(line.number) + ": not a property";
            }
            continue;
        }
        std::string value = Upper(p.value);
        if (p.name == "BEGIN" && value == "VCALENDAR") {
            sawCalendar = true;
        } else if (p.name == "BEGIN" && value == "VEVENT" && event == nullptr && depth == 0) {
            drafts.emplace_back();
            event = &drafts.back();
            event->line = line.number;
        } else if (p.name == "BEGIN") {
            ++depth;
        } else if (p.name == "END" && value == "VEVENT" && event != nullptr && depth == 0) {
            event = nullptr;
        } else if (p.name == "END" && value != "VCALENDAR" && depth > 0) {
            --depth;
        } else if (event != nullptr && depth == 0) {
            ApplyProperty(p, line.number, *event);
        }
    }
    if (event != nullptr && event->error.empty()) {
        event->error = "line " + std::to_string(event->line) + ": event without END:VEVENT";
    }
    if (!sawCalendar) {
        error = "no BEGIN:VCALENDAR: not a calendar file";
        return false;
    }
    return true;
}

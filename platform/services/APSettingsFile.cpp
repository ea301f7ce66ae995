// Reading and writing the settings file. The checksum line catches torn or hand-damaged files;
// the strict grammar catches everything else, so a read either yields every setting or fails.
#include "APSettingsFile.h"

#include <charconv>
#include <cstdio>
#include <set>
#include <vector>

#include "APAtomicFile.h"
#include "PLDeviceRoot.h"

namespace {

constexpr size_t kMaxFileSize = 64 * 1024;
constexpr const char* kChecksumKey = "checksum";

struct Field {
    const char* key;
    int32_t* (*get)(APSettings&);
};

const std::vector<Field>& Fields() {
    static const std::vector<Field> fields = {
        {"calendar.default_view", [](APSettings& s) { return &s.calendar.defaultView; }},
        {"calendar.first_weekday", [](APSettings& s) { return &s.calendar.startWeekDay; }},
        {"calendar.day_start", [](APSettings& s) { return &s.calendar.startDayTime; }},
        {"calendar.keep_time", [](APSettings& s) { return &s.calendar.keepTime; }},
        {"calendar.lunar", [](APSettings& s) { return &s.calendar.lunarCalendar; }},
        {"worldclock.enabled", [](APSettings& s) { return &s.worldClock.enabled; }},
        {"worldclock.home_offset", [](APSettings& s) { return &s.worldClock.homeOffsetMinutes; }},
        {"worldclock.home_daylight", [](APSettings& s) { return &s.worldClock.homeDaylight; }},
        {"worldclock.foreign_offset",
         [](APSettings& s) { return &s.worldClock.foreignOffsetMinutes; }},
        {"worldclock.foreign_daylight",
         [](APSettings& s) { return &s.worldClock.foreignDaylight; }},
        {"system.time_format", [](APSettings& s) { return &s.timeFormat; }},
        {"system.date_format", [](APSettings& s) { return &s.dateFormat; }},
    };
    return fields;
}

uint32_t Crc32(const std::string& data) {
    uint32_t crc = 0xFFFFFFFFu;
    for (unsigned char byte : data) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
        }
    }
    return ~crc;
}

std::string ChecksumLine(const std::string& body) {
    char line[32];
    std::snprintf(line, sizeof line, "%s=%08x\n", kChecksumKey, static_cast<unsigned>(Crc32(body)));
    return line;
}

bool ParseInt32(std::string_view text, int32_t& value) {
    if (text.empty()) {
        return false;
    }
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    return ec == std::errc() && end == text.data() + text.size();
}

std::string AtLine(int line, const std::string& what) {
    return "line " + std::to_string(line) + ": " + what;
}

}  // namespace

std::string APSettingsFile::Format(const APSettings& settings) {
    APSettings copy = settings;
    std::string body = "# Device settings; change them with calendar-ctl config set.\n";
    for (const Field& field : Fields()) {
        body += std::string(field.key) + "=" + std::to_string(*field.get(copy)) + "\n";
    }
    return body + ChecksumLine(body);
}

bool APSettingsFile::Parse(const std::string& text, APSettings& settings, std::string& error) {
    APSettings parsed;
    std::set<std::string> seen;
    size_t pos = 0;
    int lineNumber = 0;
    while (pos < text.size()) {
        ++lineNumber;
        size_t end = text.find('\n', pos);
        if (end == std::string::npos) {
            error = AtLine(lineNumber, "unterminated last line");
            return false;
        }
        std::string_view line(text.data() + pos, end - pos);
        size_t lineStart = pos;
        pos = end + 1;
        if (line.empty() || line[0] == '#') {
            continue;
        }
        size_t eq = line.find('=');
        if (eq == std::string_view::npos) {
            error = AtLine(lineNumber, "expected key=value");
            return false;
        }
        std::string key(line.substr(0, eq));
        std::string_view value = line.substr(eq + 1);
        if (key == kChecksumKey) {
            std::string body = text.substr(0, lineStart);
            if (pos != text.size()) {
                error = AtLine(lineNumber, "text after the checksum line");
                return false;
            }
            if (std::string(line) + "\n" != ChecksumLine(body)) {
                error = AtLine(lineNumber, "checksum does not match the content");
                return false;
            }
            for (const Field& field : Fields()) {
                if (!seen.count(field.key)) {
                    error = std::string("missing setting ") + field.key;
                    return false;
                }
            }
            settings = parsed;
            return true;
        }
        const Field* match = nullptr;
        for (const Field& field : Fields()) {
            if (key == field.key) {
                match = &field;
            }
        }
        if (match == nullptr) {
            error = AtLine(lineNumber, "unknown setting '" + key + "'");
            return false;
        }
        if (!seen.insert(key).second) {
            error = AtLine(lineNumber, "setting '" + key + "' given twice");
            return false;
        }
        if (!ParseInt32(value, *match->get(parsed))) {
            error = AtLine(lineNumber, "value of '" + key + "' is not a 32-bit number");
            return false;
        }
    }
    error = "no checksum line (file truncated?)";
    return false;
}

std::string APSettingsFile::HostPath() {
    return PLDeviceRoot::Resolve(kAPConfigDevicePath);
}

APSettingsFile::Status APSettingsFile::Load(APSettings& settings, std::string& error) {
    std::string text;
    std::string readError;
    switch (APAtomicFile_Read(HostPath(), text, readError, kMaxFileSize)) {
        case APReadResult::kMissing:
            error = "no settings file at " + HostPath();
            return Status::kMissing;
        case APReadResult::kError:
            error = readError;
            return Status::kError;
        case APReadResult::kOk:
            break;
    }
    std::string parseError;
    if (!Parse(text, settings, parseError)) {
        error = "settings file " + HostPath() + " is damaged: " + parseError;
        return Status::kCorrupt;
    }
    return Status::kOk;
}

bool APSettingsFile::Save(const APSettings& settings, std::string& error) {
    if (!PLDeviceRoot::MakeParentDirectories(kAPConfigDevicePath)) {
        error = "cannot create the folder of " + HostPath();
        return false;
    }
    return APAtomicFile_Write(HostPath(), Format(settings), error);
}

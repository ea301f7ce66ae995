// Parser of the simulator's script language.
#include "PLHostScript.h"

#include <array>
#include <cstdio>

#include "PLClock.h"
#include "PLTypes.h"

namespace {

constexpr int kMaxX = kPLScreenWidth - 1;
constexpr int kMaxY = kPLScreenHeight - 1;

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view Trim(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

// A strict decimal integer: optional minus sign and 1..18 digits, nothing else.
bool ParseInteger(const std::string& word, int64_t& value, std::string& error) {
    size_t i = 0;
    bool negative = false;
    if (!word.empty() && word[0] == '-') {
        negative = true;
        i = 1;
    }
    if (i == word.size() || word.size() - i > 18) {
        error = "malformed number '" + word + "'";
        return false;
    }
    int64_t result = 0;
    for (; i < word.size(); ++i) {
        if (word[i] < '0' || word[i] > '9') {
            error = "malformed number '" + word + "'";
            return false;
        }
        result = result * 10 + (word[i] - '0');
    }
    value = negative ? -result : result;
    return true;
}

bool ParseInRange(const std::string& word, int64_t low, int64_t high, const char* what,
                  int64_t& value, std::string& error) {
    if (!ParseInteger(word, value, error)) {
        return false;
    }
    if (value < low || value > high) {
        error = std::string(what) + " " + word + " is out of range (" + std::to_string(low) + ".." +
                std::to_string(high) + ")";
        return false;
    }
    return true;
}

bool ParseCoordinate(const std::string& word, bool across, int& out, std::string& error) {
    int64_t value = 0;
    if (!ParseInteger(word, value, error)) {
        return false;
    }
    int limit = across ? kMaxX : kMaxY;
    if (value < 0 || value > limit) {
        error = std::string(across ? "x " : "y ") + word + " is off the screen (0.." +
                std::to_string(limit) + ")";
        return false;
    }
    out = int(value);
    return true;
}

bool ParsePoint(const std::vector<std::string>& words, size_t first, PLHostScriptCommand& command,
                std::string& error) {
    return ParseCoordinate(words[first], true, command.x, error) &&
           ParseCoordinate(words[first + 1], false, command.y, error);
}

struct KeyName {
    const char* name;
    uint8_t code;
};
constexpr std::array<KeyName, 7> kKeyNames{{{"up", kPLKeyUp},
                                            {"ok", kPLKeyOk},
                                            {"down", kPLKeyDown},
                                            {"left", kPLKeyLeft},
                                            {"right", kPLKeyRight},
                                            {"pageup", kPLKeyPageUp},
                                            {"pagedown", kPLKeyPageDown}}};

bool ParseKey(const std::string& word, uint8_t& key, std::string& error) {
    for (const KeyName& entry : kKeyNames) {
        if (word == entry.name) {
            key = entry.code;
            return true;
        }
    }
    int64_t code = 0;
    if (!ParseInteger(word, code, error) || code < 17 || code > 31) {
        error = "unknown key '" + word +
                "' (a code 17..31 or up, ok, down, left, right, pageup, pagedown)";
        return false;
    }
    key = uint8_t(code);
    return true;
}

bool ParsePaneID(const std::string& word, uint32_t& id, std::string& error) {
    if (word.size() == 6 && word.front() == '\'' && word.back() == '\'') {
        id = (uint32_t(uint8_t(word[1])) << 24) | (uint32_t(uint8_t(word[2])) << 16) |
             (uint32_t(uint8_t(word[3])) << 8) | uint32_t(uint8_t(word[4]));
        return true;
    }
    int64_t value = 0;
    if (!ParseInRange(word, 0, UINT32_MAX, "pane id", value, error)) {
        return false;
    }
    id = uint32_t(value);
    return true;
}

bool ExpectCount(const std::vector<std::string>& words, size_t count, const char* usage,
                 std::string& error) {
    if (words.size() == count) {
        return true;
    }
    error = std::string(words.size() < count ? "missing arguments" : "too many arguments") +
            ": expected '" + usage + "'";
    return false;
}

bool ParseExpect(const std::vector<std::string>& words, PLHostScriptCommand& command,
                 std::string& error) {
    if (words.size() < 2) {
        error = "expect needs shown, hidden, pixel or text";
        return false;
    }
    const std::string& what = words[1];
    if (what == "shown" || what == "hidden") {
        command.kind =
            what == "shown" ? PLHostCommandKind::ExpectShown : PLHostCommandKind::ExpectHidden;
        return ExpectCount(words, 3, what == "shown" ? "expect shown ID" : "expect hidden ID",
                           error) &&
               ParsePaneID(words[2], command.paneID, error);
    }
    if (what == "text") {
        command.kind = PLHostCommandKind::ExpectText;
        if (!ExpectCount(words, 4, "expect text ID \"TEXT\"", error) ||
            !ParsePaneID(words[2], command.paneID, error)) {
            return false;
        }
        command.text = words[3];
        return true;
    }
    if (what == "pixel") {
        command.kind = PLHostCommandKind::ExpectPixel;
        if (!ExpectCount(words, 7, "expect pixel X Y R G B", error) ||
            !ParsePoint(words, 2, command, error)) {
            return false;
        }
        std::array<int64_t, 3> rgb{};
        const char* names[] = {"red", "green", "blue"};
        for (size_t i = 0; i < 3; ++i) {
            if (!ParseInRange(words[4 + i], 0, 255, names[i], rgb[i], error)) {
                return false;
            }
        }
        command.red = uint8_t(rgb[0]);
        command.green = uint8_t(rgb[1]);
        command.blue = uint8_t(rgb[2]);
        return true;
    }
    error = "unknown expectation '" + what + "' (shown, hidden, pixel or text)";
    return false;
}

bool ParsePen(const std::vector<std::string>& words, PLHostCommandKind kind,
              PLHostScriptCommand& command, std::string& error) {
    command.kind = kind;
    std::string usage = words[0] + " X Y";
    return ExpectCount(words, 3, usage.c_str(), error) && ParsePoint(words, 1, command, error);
}

bool ParseWords(const std::vector<std::string>& words, PLHostScriptCommand& command,
                std::string& error) {
    const std::string& name = words[0];
    if (name == "tap") {
        return ParsePen(words, PLHostCommandKind::Tap, command, error);
    }
    if (name == "down") {
        return ParsePen(words, PLHostCommandKind::Down, command, error);
    }
    if (name == "move") {
        return ParsePen(words, PLHostCommandKind::Move, command, error);
    }
    if (name == "up") {
        return ParsePen(words, PLHostCommandKind::Up, command, error);
    }
    if (name == "key") {
        command.kind = PLHostCommandKind::Key;
        return ExpectCount(words, 2, "key K", error) && ParseKey(words[1], command.key, error);
    }
    if (name == "wait") {
        command.kind = PLHostCommandKind::Wait;
        return ExpectCount(words, 2, "wait MS", error) &&
               ParseInRange(words[1], 0, PLHostScript::kMaxWaitMs, "wait", command.number, error);
    }
    if (name == "clock") {
        command.kind = PLHostCommandKind::Clock;
        if (!ExpectCount(words, 2, "clock \"YYYY-MM-DD HH:MM[:SS]\"", error)) {
            return false;
        }
        if (!PLClock::ParseLocal(words[1].c_str(), command.number)) {
            error = "malformed time '" + words[1] + "' (expected \"YYYY-MM-DD HH:MM[:SS]\")";
            return false;
        }
        return true;
    }
    if (name == "send" || name == "await") {
        command.kind = name == "send" ? PLHostCommandKind::Send : PLHostCommandKind::Await;
        return ExpectCount(words, 2, name == "send" ? "send N" : "await N", error) &&
               ParseInRange(words[1], 0, UINT32_MAX, "message id", command.number, error);
    }
    if (name == "shot" || name == "dump") {
        command.kind = name == "shot" ? PLHostCommandKind::Shot : PLHostCommandKind::Dump;
        if (!ExpectCount(words, 2, name == "shot" ? "shot FILE" : "dump FILE", error)) {
            return false;
        }
        command.text = words[1];
        if (command.text.empty()) {
            error = "empty file name";
            return false;
        }
        return true;
    }
    if (name == "expect") {
        return ParseExpect(words, command, error);
    }
    error = "unknown command '" + name + "'";
    return false;
}

}  // namespace

bool PLHostScript::Tokenize(std::string_view line, std::vector<std::string>& words,
                            std::vector<bool>& quoted, std::string& error) {
    words.clear();
    quoted.clear();
    size_t i = 0;
    while (i < line.size()) {
        if (IsBlank(line[i])) {
            ++i;
            continue;
        }
        if (line[i] == '#') {
            break;
        }
        std::string word;
        if (line[i] != '"') {
            while (i < line.size() && !IsBlank(line[i])) {
                word += line[i++];
            }
            words.push_back(std::move(word));
            quoted.push_back(false);
            continue;
        }
        ++i;  // the opening quote
        bool closed = false;
        while (i < line.size()) {
            char c = line[i++];
            if (c == '"') {
                closed = true;
                break;
            }
            if (c != '\\') {
                word += c;
                continue;
            }
            if (i == line.size()) {
                break;
            }
            char escaped = line[i++];
            switch (escaped) {
                case '"':
                case '\\':
                    word += escaped;
                    break;
                case 'n':
                    word += '\n';
                    break;
                case 't':
                    word += '\t';
                    break;
                default:
                    error = std::string("unknown escape '\\") + escaped + "' in quoted text";
                    return false;
            }
        }
        if (!closed) {
            error = "unterminated quoted text";
            return false;
        }
        if (i < line.size() && !IsBlank(line[i])) {
            error = "text right after a closing quote";
            return false;
        }
        words.push_back(std::move(word));
        quoted.push_back(true);
    }
    return true;
}

bool PLHostScript::ParseLine(std::string_view line, int lineNumber, PLHostScriptCommand& command,
                             bool& isCommand, std::string& error) {
    command = PLHostScriptCommand{};
    command.line = lineNumber;
    isCommand = false;
    std::string_view trimmed = line;
    while (!trimmed.empty() && IsBlank(trimmed.front())) {
        trimmed.remove_prefix(1);
    }
    while (!trimmed.empty() && (trimmed.back() == '\r' || trimmed.back() == '\n')) {
        trimmed.remove_suffix(1);
    }
    if (Trim(trimmed).empty() || trimmed.front() == '#') {
        return true;
    }
    isCommand = true;
    // `type` takes the rest of the line as it is (blanks and '#' included), after one separator.
    if (trimmed.substr(0, 4) == "type" && (trimmed.size() == 4 || IsBlank(trimmed[4]))) {
        command.kind = PLHostCommandKind::Type;
        std::string_view text = trimmed.substr(trimmed.size() == 4 ? 4 : 5);
        if (text.empty()) {
            error = "type needs the text to type";
            return false;
        }
        command.text = std::string(text);
        return true;
    }
    std::vector<std::string> words;
    std::vector<bool> quoted;
    if (!Tokenize(trimmed, words, quoted, error)) {
        return false;
    }
    if (words.empty()) {
        isCommand = false;
        return true;
    }
    return ParseWords(words, command, error);
}

bool PLHostScript::Parse(std::string_view script, std::vector<PLHostScriptCommand>& commands,
                         Error& error) {
    commands.clear();
    int lineNumber = 0;
    while (!script.empty()) {
        ++lineNumber;
        size_t end = script.find('\n');
        std::string_view line = script.substr(0, end);
        script.remove_prefix(end == std::string_view::npos ? script.size() : end + 1);
        PLHostScriptCommand command;
        bool isCommand = false;
        std::string message;
        if (!ParseLine(line, lineNumber, command, isCommand, message)) {
            error.line = lineNumber;
            error.message = std::move(message);
            return false;
        }
        if (isCommand) {
            commands.push_back(std::move(command));
        }
    }
    return true;
}

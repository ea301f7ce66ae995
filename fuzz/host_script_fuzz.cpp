// Fuzz target: the simulator's script parser (parsing only; nothing is run). A parsed script must
// hold only commands the driver can carry out as they stand: pen points on the screen, known keys,
// waits within a year, line numbers in order; a refused script names a line of the input.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzCheck.h"
#include "PLHostScript.h"

namespace {

constexpr int kScreenWidth = 240;
constexpr int kScreenHeight = 320;

bool IsPen(PLHostCommandKind kind) {
    return kind == PLHostCommandKind::Tap || kind == PLHostCommandKind::Down ||
           kind == PLHostCommandKind::Move || kind == PLHostCommandKind::Up ||
           kind == PLHostCommandKind::ExpectPixel;
}

void CheckCommand(const PLHostScriptCommand& command, int lines) {
    FuzzCheck(command.line >= 1 && command.line <= lines, "a command names a line of the script");
    if (IsPen(command.kind)) {
        FuzzCheck(command.x >= 0 && command.x < kScreenWidth && command.y >= 0 &&
                      command.y < kScreenHeight,
                  "a pen point lies on the screen");
    }
    if (command.kind == PLHostCommandKind::Wait) {
        FuzzCheck(command.number >= 0 && command.number <= PLHostScript::kMaxWaitMs,
                  "a wait lies within a year");
    }
    if (command.kind == PLHostCommandKind::Shot || command.kind == PLHostCommandKind::Dump) {
        FuzzCheck(!command.text.empty(), "a picture or dump names its file");
    }
}

// Whole-script parse against line-by-line parse: both must accept and refuse alike.
void CheckAgainstLines(std::string_view script, bool parsed,
                       const std::vector<PLHostScriptCommand>& commands,
                       const PLHostScript::Error& error) {
    int lineNumber = 0;
    size_t commandIndex = 0;
    size_t pos = 0;
    while (pos <= script.size()) {
        const size_t end = std::min(script.find('\n', pos), script.size());
        ++lineNumber;
        PLHostScriptCommand command;
        bool isCommand = false;
        std::string message;
        const bool ok = PLHostScript::ParseLine(script.substr(pos, end - pos), lineNumber, command,
                                                isCommand, message);
        if (!ok) {
            FuzzCheck(!parsed && error.line == lineNumber, "the first bad line is the one named");
            FuzzCheck(!message.empty(), "a bad line comes with a reason");
            return;
        }
        if (isCommand) {
            FuzzCheck(commandIndex < commands.size() && commands[commandIndex].kind == command.kind,
                      "the whole parse holds each line's command");
            ++commandIndex;
        }
        pos = end + 1;
    }
    FuzzCheck(parsed && commandIndex == commands.size(), "a script of good lines parses whole");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view script(reinterpret_cast<const char*>(data), size);
    std::vector<PLHostScriptCommand> commands;
    PLHostScript::Error error;
    const bool parsed = PLHostScript::Parse(script, commands, error);
    const int lines = int(std::count(script.begin(), script.end(), '\n')) + 1;
    if (parsed) {
        for (const PLHostScriptCommand& command : commands) {
            CheckCommand(command, lines);
        }
    } else {
        FuzzCheck(error.line >= 1 && error.line <= lines && !error.message.empty(),
                  "a refused script names one of its lines and why");
    }
    CheckAgainstLines(script, parsed, commands, error);
    return 0;
}

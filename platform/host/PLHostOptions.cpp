// Command-line parsing of the simulator.
#include "PLHostOptions.h"

#include <cstring>

#include "PLClock.h"

namespace {

// "--name value" or "--name=value"; advances `i` past what it used. In the first form a following
// option is not taken as the value: "--root --headless" is a forgotten folder, not a folder named
// "--headless" (which "--root=--headless" still reaches).
bool TakeValue(int argc, const char* const* argv, int& i, const std::string& name,
               std::string& value, bool& matched, std::string& error) {
    std::string argument = argv[i];
    matched = false;
    if (argument == name) {
        matched = true;
        if (i + 1 >= argc || std::strncmp(argv[i + 1], "--", 2) == 0) {
            error = name + " needs a value";
            return false;
        }
        value = argv[++i];
        return true;
    }
    if (argument.rfind(name + "=", 0) == 0) {
        matched = true;
        value = argument.substr(name.size() + 1);
        return true;
    }
    return true;
}

bool ParseScale(const std::string& text, int& scale, std::string& error) {
    if (text.size() == 1 && text[0] >= '1' && text[0] <= '0' + PLHostOptions::kMaxScale) {
        scale = text[0] - '0';
        return true;
    }
    error = "--scale takes a whole number from 1 to " + std::to_string(PLHostOptions::kMaxScale) +
            ", not '" + text + "'";
    return false;
}

}  // namespace

const char* PLHostOptions::Usage() {
    return "usage: calendar-sim [--root DIR] [--now \"YYYY-MM-DD HH:MM[:SS]\"] [--headless]\n"
           "                    [--script FILE|-] [--scale N] [--app PATH|NAME]\n";
}

bool PLHostOptions::Parse(int argc, const char* const* argv, PLHostOptions& options,
                          std::string& error) {
    options = PLHostOptions{};
    for (int i = 1; i < argc; ++i) {
        std::string argument = argv[i];
        if (argument == "--headless") {
            options.headless = true;
            continue;
        }
        if (argument == "--help" || argument == "-h") {
            options.help = true;
            continue;
        }
        std::string value;
        bool matched = false;
        struct Named {
            const char* name;
            std::string* target;
        };
        std::string now;
        std::string scale;
        const Named named[] = {{"--root", &options.root},
                               {"--app", &options.app},
                               {"--script", &options.script},
                               {"--now", &now},
                               {"--scale", &scale}};
        for (const Named& option : named) {
            if (!TakeValue(argc, argv, i, option.name, value, matched, error)) {
                return false;
            }
            if (matched) {
                if (value.empty()) {
                    error = std::string(option.name) + " needs a value";
                    return false;
                }
                *option.target = value;
                break;
            }
        }
        if (!matched) {
            error = "unknown argument '" + argument + "'";
            return false;
        }
        if (!now.empty()) {
            if (!PLClock::ParseLocal(now.c_str(), options.nowMs)) {
                error = "--now takes \"YYYY-MM-DD HH:MM[:SS]\", not '" + now + "'";
                return false;
            }
            options.hasNow = true;
        }
        if (!scale.empty() && !ParseScale(scale, options.scale, error)) {
            return false;
        }
    }
    return true;
}

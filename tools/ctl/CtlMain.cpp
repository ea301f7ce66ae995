// calendar-ctl: the device's services from a shell (events, queries, alarms, settings, texts,
// lunar dates, messages) on a device root.
#include <cstdio>
#include <cstring>
#include <map>

#include "APDeviceSetup.h"
#include "CtlCommands.h"
#include "PLDeviceRoot.h"

namespace {

const char* const kUsage =
    "usage: calendar-ctl [--root DIR] COMMAND ...\n"
    "  event add --subject S --start \"YYYY-MM-DD HH:MM\" --end \"...\" [--all-day] [--location "
    "L]\n"
    "            [--notes N] [--colour ID] [--class ID] [--alarm ID]\n"
    "            [--repeat daily|workdays|weekly:1,3|monthly:DAY|monthly:WEEK/WEEKDAY|\n"
    "                      yearly:MONTH/DAY|yearly:MONTH/WEEK/WEEKDAY]\n"
    "            [--interval N] [--count N | --until YYYY-MM-DD]\n"
    "  event list [--from DATE --to DATE] [--json]   event show ID [--json]   event delete ID\n"
    "  event import FILE.vcs|FILE.ics                event export ID FILE\n"
    "  query month|week|day DATE [--json]\n"
    "  alarm list [--from DATE --to DATE] [--json]\n"
    "  config get [KEY] | config set KEY VALUE\n"
    "  text ID\n"
    "  lunar YYYY-MM-DD...\n"
    "  send N\n";

}  // namespace

int CtlFail(int status, const std::string& message) {
    std::fprintf(stderr, "calendar-ctl: %s\n", message.c_str());
    return status;
}

int main(int argc, char** argv) {
    std::vector<std::string> words(argv + 1, argv + argc);
    std::string root = PLDeviceRoot::DefaultRoot();
    if (!words.empty() && words[0] == "--root") {
        if (words.size() < 2) {
            return CtlFail(kCtlUsage, "--root needs a directory");
        }
        root = words[1];
        words.erase(words.begin(), words.begin() + 2);
    }
    if (words.empty() || words[0] == "--help" || words[0] == "-h") {
        std::fputs(kUsage, words.empty() ? stderr : stdout);
        return words.empty() ? kCtlUsage : kCtlOk;
    }
    const std::map<std::string, int (*)(const std::vector<std::string>&)> commands = {
        {"event", CtlEventCommand},   {"query", CtlQueryCommand}, {"alarm", CtlAlarmCommand},
        {"config", CtlConfigCommand}, {"text", CtlTextCommand},   {"lunar", CtlLunarCommand},
        {"send", CtlSendCommand},
    };
    const auto command = commands.find(words[0]);
    if (command == commands.end()) {
        std::fputs(kUsage, stderr);
        return CtlFail(kCtlUsage, "unknown command " + words[0]);
    }
    PLDeviceRoot::SetRoot(root);
    std::string error;
    if (!APDeviceSetup_Populate(error)) {
        // The stores still work on a root without program files; say so and go on.
        std::fprintf(stderr, "calendar-ctl: device set-up: %s\n", error.c_str());
    }
    return command->second(std::vector<std::string>(words.begin() + 1, words.end()));
}

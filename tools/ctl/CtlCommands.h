// The command groups of calendar-ctl. Each takes the words after its command name and returns the
// exit status: 0 done, 1 refused or not found, 2 usage error.
#pragma once

#include <string>
#include <vector>

constexpr int kCtlOk = 0;
constexpr int kCtlFailed = 1;
constexpr int kCtlUsage = 2;

int CtlEventCommand(const std::vector<std::string>& words);
int CtlQueryCommand(const std::vector<std::string>& words);
int CtlAlarmCommand(const std::vector<std::string>& words);
int CtlConfigCommand(const std::vector<std::string>& words);
int CtlTextCommand(const std::vector<std::string>& words);
int CtlLunarCommand(const std::vector<std::string>& words);
int CtlSendCommand(const std::vector<std::string>& words);

// Makes calendar.rsc's texts available to APGetStr; false with the reason when it cannot be read.
bool CtlLoadCalendarTexts(std::string& error);

// Prints "calendar-ctl: <message>" on standard error and returns `status`.
int CtlFail(int status, const std::string& message);

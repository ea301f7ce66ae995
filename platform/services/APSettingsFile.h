// The settings file: every setting of the configuration store as "key=value" lines closed by a
// CRC-32 line, parsed strictly so that a damaged file is recognised rather than half-read.
#pragma once

#include <cstdint>
#include <string>

#include "APConfig.h"

struct APSettings {
    APCONFIG_CALENDAR_S calendar;
    APCONFIG_WORLDCLOCK_S worldClock;
    int32_t timeFormat = kAPTimeFormat12;
    int32_t dateFormat = 0;
};

class APSettingsFile {
public:
    enum class Status { kOk, kMissing, kCorrupt, kError };

    static std::string Format(const APSettings& settings);
    // Strict: every key exactly once, decimal 32-bit values, the checksum last and matching.
    // `error` names the line and the fault.
    static bool Parse(const std::string& text, APSettings& settings, std::string& error);

    // The file in the current device root.
    static std::string HostPath();
    static Status Load(APSettings& settings, std::string& error);
    static bool Save(const APSettings& settings, std::string& error);
};

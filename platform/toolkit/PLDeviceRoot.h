// The device root: every absolute device path the program names is resolved under one directory.
//
// On the phone the mapping is the identity; on a desktop the simulator and calendar-ctl choose a
// directory (--root) and "/root/resource/calendar.rsc" becomes "<root>/root/resource/calendar.rsc".
#pragma once

#include <string>

class PLDeviceRoot {
public:
    // Sets the root directory; an empty root means the identity mapping.
    static void SetRoot(const std::string& directory);
    static const std::string& GetRoot();
    // Resolves an absolute device path under the root. Relative paths are returned unchanged.
    static std::string Resolve(const std::string& devicePath);
    // The default root of a desktop build: $XDG_DATA_HOME/calendar-sim/device, or
    // ~/.local/share/calendar-sim/device.
    static std::string DefaultRoot();
    // Creates the directories of a device path's parent under the root. Returns false on failure.
    static bool MakeParentDirectories(const std::string& devicePath);
};

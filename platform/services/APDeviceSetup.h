// Populates the current device root on first use and refreshes the program files in it.
#pragma once

#include <string>

// Copies the compiled resource files (the calendar's and, when built, the platform's) and the share
// library from the install layout into the device root, creates "/tmp/" and writes the default
// settings when none exist. Existing data (stores, settings) is never touched. False with a reason
// when the root cannot be written or the install layout lacks a file.
bool APDeviceSetup_Populate(std::string& error);
// The install directory (the build dir with bin/, lib/, share/): $CAL_INSTALL_DIR, else the parent
// of the running program's directory.
std::string APDeviceSetup_InstallDir();

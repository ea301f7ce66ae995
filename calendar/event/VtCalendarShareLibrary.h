// The share library ("/usr/lib/libVtShare_shareui.so"), loaded with dlopen the first time an
// event is shared and kept for the process until the detail view that used it goes. A library
// that lacks either entry is closed again at once and never called.
#pragma once

#include <string>

#include "PLBasicString.h"
#include "PLVector.h"

class VtCalendarShareLibrary {
public:
    // Opens the library when no handle is held, then looks both entries up again (also when the
    // handle was already held). 0 on success, -1 when the library is missing or incomplete.
    static int Load();
    // Calls DestroyShareView and closes the library when one is held; clears all three together.
    static void Unload();
    static bool IsLoaded();

    // Shows the share sheet for one file; the sheet's result, or 0 for an empty path or when the
    // library cannot be loaded.
    static int ShareFile(const PLBasicString<char>& path);
    // The same for a list of files; 0 for an empty list.
    static int ShareFiles(PLVector<PLBasicString<char>>& paths);

    // The device path that Load opens; tests point it at a library of their own.
    static void SetLibraryPath(const std::string& devicePath);
    static const std::string& GetLibraryPath();
};

// The share library's entry points, as the calendar loads them with dlopen/dlsym.
#pragma once

#include "PLBasicString.h"
#include "PLVector.h"

// Device path of the library and of the folder that "save to outbox" copies files into.
constexpr const char* kVtShareLibraryPath = "/usr/lib/libVtShare_shareui.so";
constexpr const char* kVtShareOutboxPath = "/var/outbox/";

extern "C" {
// Shows the modal share sheet for the files; returns the number of files saved (0 on cancel).
int MakeVtShareDlg(PLVector<PLBasicString<char>>& files);
// Releases whatever the sheet keeps; called before the library is closed.
void DestroyShareView();
}

using MakeVtShareDlgFn = int (*)(PLVector<PLBasicString<char>>&);
using DestroyShareViewFn = void (*)();

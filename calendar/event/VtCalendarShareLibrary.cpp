// The share library's handle and entries: process-wide, set together on a successful load and
// cleared together on unload.
#include "event/VtCalendarShareLibrary.h"

#include <dlfcn.h>

#include "PLDeviceRoot.h"

namespace {

using MakeShareDialog = int (*)(PLVector<PLBasicString<char>>&);
using DestroyShareView = void (*)();

constexpr const char* kLibraryPath = "/usr/lib/libVtShare_shareui.so";

struct ShareLibraryState {
    void* handle = nullptr;
    MakeShareDialog makeDialog = nullptr;
    DestroyShareView destroyView = nullptr;
    std::string devicePath = kLibraryPath;
};

ShareLibraryState& State() {
    static ShareLibraryState state;
    return state;
}

// Closes a handle whose entries were never taken (an incomplete library): nothing of it ran, so
// there is nothing to destroy first.
void Discard(ShareLibraryState& state) {
    if (state.handle != nullptr) {
        dlclose(state.handle);
    }
    state.handle = nullptr;
    state.makeDialog = nullptr;
    state.destroyView = nullptr;
}

}  // namespace

int VtCalendarShareLibrary::Load() {
    ShareLibraryState& state = State();
    if (state.handle == nullptr) {
        state.handle = dlopen(PLDeviceRoot::Resolve(state.devicePath).c_str(), RTLD_LAZY);
        if (state.handle == nullptr) {
            return -1;
        }
    }
    auto* make = reinterpret_cast<MakeShareDialog>(dlsym(state.handle, "MakeVtShareDlg"));
    auto* destroy = reinterpret_cast<DestroyShareView>(dlsym(state.handle, "DestroyShareView"));
    if (make == nullptr || destroy == nullptr) {
        // A library that held both entries before was already used: let it clean up first.
        if (state.destroyView != nullptr) {
            Unload();
        } else {
            Discard(state);
        }
        return -1;
    }
    state.makeDialog = make;
    state.destroyView = destroy;
    return 0;
}

void VtCalendarShareLibrary::Unload() {
    ShareLibraryState& state = State();
    if (state.handle != nullptr && state.destroyView != nullptr) {
        state.destroyView();
    }
    Discard(state);
}

bool VtCalendarShareLibrary::IsLoaded() {
    return State().handle != nullptr;
}

int VtCalendarShareLibrary::ShareFile(const PLBasicString<char>& path) {
    if (path.IsEmpty()) {
        return 0;
    }
    PLVector<PLBasicString<char>> paths;
    paths.Append(path);
    return ShareFiles(paths);
}

int VtCalendarShareLibrary::ShareFiles(PLVector<PLBasicString<char>>& paths) {
    if (paths.GetCount() == 0 || Load() != 0) {
        return 0;
    }
    return State().makeDialog(paths);
}

void VtCalendarShareLibrary::SetLibraryPath(const std::string& devicePath) {
    Unload();
    State().devicePath = devicePath;
}

const std::string& VtCalendarShareLibrary::GetLibraryPath() {
    return State().devicePath;
}

// The device root: maps absolute device paths into one directory of the host.
//
// The root is chosen once at start-up (--root) before any thread reads it.
#include "PLDeviceRoot.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <vector>

namespace {

std::string& Root() {
    static std::string root;
    return root;
}

// The components of an absolute path with "." dropped and ".." applied; ".." at the top stays at
// the top, so no device path can name anything outside the root.
std::vector<std::string> NormalComponents(const std::string& path) {
    std::vector<std::string> parts;
    size_t start = 0;
    while (start <= path.size()) {
        size_t end = path.find('/', start);
        if (end == std::string::npos) {
            end = path.size();
        }
        const std::string part = path.substr(start, end - start);
        if (part == "..") {
            if (!parts.empty()) {
                parts.pop_back();
            }
        } else if (!part.empty() && part != ".") {
            parts.push_back(part);
        }
        start = end + 1;
    }
    return parts;
}

std::string HomeDirectory() {
    const char* home = std::getenv("HOME");
    if (home != nullptr && home[0] != '\0') {
        return home;
    }
    const passwd* entry = getpwuid(getuid());
    if (entry != nullptr && entry->pw_dir != nullptr && entry->pw_dir[0] != '\0') {
        return entry->pw_dir;
    }
    return "/tmp";
}

}  // namespace

void PLDeviceRoot::SetRoot(const std::string& directory) {
    std::string root = directory;
    // "/" and "" both mean the identity mapping; trailing slashes would double up in Resolve.
    while (!root.empty() && root.back() == '/') {
        root.pop_back();
    }
    Root() = root;
}

const std::string& PLDeviceRoot::GetRoot() {
    return Root();
}

std::string PLDeviceRoot::Resolve(const std::string& devicePath) {
    const std::string& root = Root();
    if (root.empty() || devicePath.empty() || devicePath.front() != '/') {
        return devicePath;
    }
    std::string resolved = root;
    for (const std::string& part : NormalComponents(devicePath)) {
        resolved += '/';
        resolved += part;
    }
    // Keep a trailing slash: callers name folders such as "/tmp/" and append file names.
    if (devicePath.back() == '/' || resolved == root) {
        resolved += '/';
    }
    return resolved;
}

std::string PLDeviceRoot::DefaultRoot() {
    const char* dataHome = std::getenv("XDG_DATA_HOME");
    // A relative XDG_DATA_HOME is invalid and must be ignored.
    std::string base = (dataHome != nullptr && dataHome[0] == '/')
                           ? std::string(dataHome)
                           : HomeDirectory() + "/.local/share";
    while (base.size() > 1 && base.back() == '/') {
        base.pop_back();
    }
    return base + "/calendar-sim/device";
}

bool PLDeviceRoot::MakeParentDirectories(const std::string& devicePath) {
    const std::string resolved = Resolve(devicePath);
    const size_t slash = resolved.find_last_of('/');
    if (slash == std::string::npos || slash == 0) {
        return true;  // the parent is the current directory or "/"
    }
    const std::filesystem::path parent = resolved.substr(0, slash);
    std::error_code error;
    std::filesystem::create_directories(parent, error);
    return std::filesystem::is_directory(parent, error);
}

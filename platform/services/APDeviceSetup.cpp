// First-use population of a device root. Program files (resource file, share library) are
// refreshed from the install layout whenever they differ; user data (stores, settings) is only
// ever created when missing, never rewritten here.
#include "APDeviceSetup.h"

#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "APAtomicFile.h"
#include "APConfig.h"
#include "PLDeviceRoot.h"

namespace {

struct ProgramFile {
    const char* installPath;  // relative to the install directory
    const char* devicePath;
    // The widgets fall back to built-in texts without the platform's resource file, so a build
    // that lacks it still gets a working device.
    bool optional;
};

constexpr ProgramFile kProgramFiles[] = {
    {"share/calendar.rsc", "/root/resource/calendar.rsc", false},
    {"lib/libVtShare_shareui.so", "/usr/lib/libVtShare_shareui.so", false},
    {"share/platform.rsc", "/usr/share/platform/platform.rsc", true},
};

std::string ParentDirectory(const std::string& path) {
    size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? "." : path.substr(0, slash);
}

bool Exists(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0;
}

bool SameContent(const std::string& a, const std::string& b) {
    std::string first, second, error;
    return APAtomicFile_Read(a, first, error, size_t(1) << 31) == APReadResult::kOk &&
           APAtomicFile_Read(b, second, error, size_t(1) << 31) == APReadResult::kOk &&
           first == second;
}

bool MakeFolder(const char* devicePath, std::string& error) {
    // MakeParentDirectories creates the folders above a path; a name inside gives the folder
    // itself.
    std::string probe = std::string(devicePath) + ".probe";
    if (!PLDeviceRoot::MakeParentDirectories(probe)) {
        error = "cannot create " + PLDeviceRoot::Resolve(devicePath) + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

bool Refresh(const ProgramFile& file, const std::string& installDir, std::string& error) {
    std::string source = installDir + "/" + file.installPath;
    std::string target = PLDeviceRoot::Resolve(file.devicePath);
    if (!Exists(source)) {
        if (Exists(target) || file.optional) {
            return true;  // keep what the device has; the build may not have produced it yet
        }
        error = "the install layout lacks " + source + " (set CAL_INSTALL_DIR to the build dir)";
        return false;
    }
    if (Exists(target) && SameContent(source, target)) {
        return true;
    }
    if (!PLDeviceRoot::MakeParentDirectories(file.devicePath)) {
        error = "cannot create the folder of " + target + ": " + std::strerror(errno);
        return false;
    }
    return APAtomicFile_Copy(source, target, error);
}

}  // namespace

std::string APDeviceSetup_InstallDir() {
    const char* fromEnvironment = std::getenv("CAL_INSTALL_DIR");
    if (fromEnvironment != nullptr && *fromEnvironment != '\0') {
        return fromEnvironment;
    }
    char exe[PATH_MAX];
    ssize_t n = ::readlink("/proc/self/exe", exe, sizeof exe - 1);
    if (n <= 0) {
        return ".";
    }
    exe[n] = '\0';
    return ParentDirectory(ParentDirectory(exe));
}

bool APDeviceSetup_Populate(std::string& error) {
    error.clear();
    const std::string& root = PLDeviceRoot::GetRoot();
    if (!root.empty() && root != "/") {
        if (!MakeFolder("/tmp/", error) || ::access(root.c_str(), W_OK) != 0) {
            error = "device root " + root +
                    " is not writable: " + (error.empty() ? std::strerror(errno) : error);
            return false;
        }
        // A missing program file is reported, but the rest of the root (the other files, the
        // folders, the default settings) is still set up: the stores work without it.
        std::string installDir = APDeviceSetup_InstallDir();
        for (const ProgramFile& file : kProgramFiles) {
            std::string problem;
            if (!Refresh(file, installDir, problem)) {
                error += (error.empty() ? "" : "; ") + problem;
            }
        }
    }
    // On the device itself (identity mapping) the program files are installed with the system.
    std::string problem;
    if (!MakeFolder("/tmp/", problem) || !MakeFolder("/var/lib/", problem) ||
        !APConfig_EnsureDefaults(problem)) {
        error += (error.empty() ? "" : "; ") + problem;
    }
    return error.empty();
}

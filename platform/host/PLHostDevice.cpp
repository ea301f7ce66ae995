// Device root preparation for the simulator: directory, lock and first-use population.
#include "PLHostDevice.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "PLHostFiles.h"

#if PL_HOST_HAVE_DEVICE_SETUP
#include "APDeviceSetup.h"
#endif

PLHostDevice::~PLHostDevice() {
    Close();
}

bool PLHostDevice::Open(const std::string& root, std::string& error) {
    if (root.empty() || root[0] != '/') {
        error = "the device root must be an absolute directory: '" + root + "'";
        return false;
    }
    std::string why;
    if (!PLHostFiles::MakeDirectories(root + kRunDirectory, why)) {
        error = "cannot use the device root " + root + ": " + why;
        return false;
    }
    std::string lockPath = root + kLockFile;
    int fd = ::open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) {
        error =
            "cannot use the device root " + root + ": " + lockPath + ": " + std::strerror(errno);
        return false;
    }
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        char pid[32] = {};
        [[maybe_unused]] ssize_t got = ::pread(fd, pid, sizeof(pid) - 1, 0);
        ::close(fd);
        pid[std::strcspn(pid, "\n")] = '\0';
        std::string owner = pid[0] ? std::string(" (pid ") + pid + ")" : std::string();
        error = "another simulator" + owner + " is running on the device root " + root;
        return false;
    }
    std::string pid = std::to_string(::getpid()) + "\n";
    if (::ftruncate(fd, 0) != 0 || ::pwrite(fd, pid.data(), pid.size(), 0) < 0) {
        // The pid is only a courtesy for the message above; the lock itself is what counts.
    }
    mRoot = root;
    mLockFD = fd;
    return true;
}

bool PLHostDevice::Populate(std::string& error) {
#if PL_HOST_HAVE_DEVICE_SETUP
    std::string why;
    if (!APDeviceSetup_Populate(why)) {
        error = "cannot populate the device root " + mRoot + ": " + why;
        return false;
    }
    return true;
#else
    return PopulateFromInstall(error);
#endif
}

// Without the services layer, the root only needs the resource file and the folders that the
// platform writes into.
bool PLHostDevice::PopulateFromInstall(std::string& error) {
    std::string why;
    for (const char* folder : {"/root/resource", "/tmp", "/var/log", "/var/lib"}) {
        if (!PLHostFiles::MakeDirectories(mRoot + folder, why)) {
            error = "cannot populate the device root " + mRoot + ": " + why;
            return false;
        }
    }
    std::string source = PLHostFiles::InstallDir() + "/share/calendar.rsc";
    std::string target = mRoot + "/root/resource/calendar.rsc";
    if (!PLHostFiles::Exists(source)) {
        return true;  // nothing built to install yet; applications that need it will say so
    }
    if (!PLHostFiles::CopyAtomically(source, target, why)) {
        error = "cannot populate the device root " + mRoot + ": " + why;
        return false;
    }
    return true;
}

void PLHostDevice::Close() {
    if (mLockFD >= 0) {
        ::flock(mLockFD, LOCK_UN);
        ::close(mLockFD);
        mLockFD = -1;
    }
}

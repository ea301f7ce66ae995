#include "PLHostSocketAddress.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

PLHostSocketAddress::~PLHostSocketAddress() {
    if (mDirectory >= 0) {
        ::close(mDirectory);
    }
}

bool PLHostSocketAddress::Fill(const std::string& text) {
    std::memset(&mAddress, 0, sizeof(mAddress));
    mAddress.sun_family = AF_UNIX;
    if (text.size() >= sizeof(mAddress.sun_path)) {
        return false;
    }
    std::memcpy(mAddress.sun_path, text.c_str(), text.size() + 1);
    return true;
}

bool PLHostSocketAddress::Set(const std::string& path, std::string& error, int* errorNumber) {
    if (errorNumber != nullptr) {
        *errorNumber = 0;
    }
    if (mDirectory >= 0) {
        ::close(mDirectory);
        mDirectory = -1;
    }
    if (Fill(path)) {
        return true;
    }
    size_t slash = path.rfind('/');
    std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    std::string directory = slash == std::string::npos ? "." : path.substr(0, slash);
    if (directory.empty()) {
        directory = "/";
    }
    if (name.empty()) {
        error = "socket path names no file: " + path;
        return false;
    }
    mDirectory = ::open(directory.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (mDirectory < 0) {
        int why = errno;
        if (errorNumber != nullptr) {
            *errorNumber = why;
        }
        error = "cannot open the socket's folder " + directory + ": " + std::strerror(why);
        return false;
    }
    if (!Fill("/proc/self/fd/" + std::to_string(mDirectory) + "/" + name)) {
        error = "socket file name too long: " + name;
        ::close(mDirectory);
        mDirectory = -1;
        return false;
    }
    return true;
}

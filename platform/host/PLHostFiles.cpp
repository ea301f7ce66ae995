// File helpers of the simulator: install location, atomic writes and copies.
#include "PLHostFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <iterator>
#include <sstream>

#include "PLBitmap.h"

namespace {

std::string ErrnoText() {
    return std::strerror(errno);
}

bool WriteAll(int fd, const char* data, size_t length) {
    while (length > 0) {
        ssize_t written = ::write(fd, data, length);
        if (written < 0) {
            if (errno == EINTR) {
                continue;
            }
            return false;
        }
        data += written;
        length -= size_t(written);
    }
    return true;
}

// Moves a finished temporary file into place, or removes it so that nothing half-done remains.
bool Commit(const std::string& temporary, const std::string& path, std::string& error) {
    if (::rename(temporary.c_str(), path.c_str()) != 0) {
        error = "cannot write " + path + ": " + ErrnoText();
        ::unlink(temporary.c_str());
        return false;
    }
    return true;
}

}  // namespace

std::string PLHostFiles::ExecutableDir() {
    char buffer[PATH_MAX];
    ssize_t length = ::readlink("/proc/self/exe", buffer, sizeof(buffer) - 1);
    if (length <= 0) {
        return {};
    }
    std::string path(buffer, size_t(length));
    size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string PLHostFiles::InstallDir() {
    const char* fromEnvironment = std::getenv("CAL_INSTALL_DIR");
    if (fromEnvironment && *fromEnvironment) {
        return fromEnvironment;
    }
    std::string exeDir = ExecutableDir();
    return exeDir.empty() ? std::string(".") : exeDir + "/..";
}

std::string PLHostFiles::Absolute(const std::string& path) {
    if (path.empty() || path[0] == '/') {
        return path;
    }
    char buffer[PATH_MAX];
    if (!::getcwd(buffer, sizeof(buffer))) {
        return path;
    }
    return std::string(buffer) + "/" + path;
}

bool PLHostFiles::Exists(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0;
}

bool PLHostFiles::MakeDirectories(const std::string& path, std::string& error) {
    if (path.empty()) {
        error = "empty directory name";
        return false;
    }
    size_t position = 0;
    while (position != std::string::npos) {
        position = path.find('/', position + 1);
        std::string part = path.substr(0, position);
        if (part.empty() || ::mkdir(part.c_str(), 0755) == 0 || errno == EEXIST) {
            continue;
        }
        error = "cannot create " + part + ": " + ErrnoText();
        return false;
    }
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0 || !S_ISDIR(info.st_mode)) {
        error = path + " is not a directory";
        return false;
    }
    return true;
}

std::string PLHostFiles::TemporaryPathFor(const std::string& path) {
    return path + ".tmp." + std::to_string(::getpid());
}

bool PLHostFiles::WriteAtomically(const std::string& path, std::string_view data,
                                  std::string& error) {
    std::string temporary = TemporaryPathFor(path);
    int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) {
        error = "cannot write " + path + ": " + ErrnoText();
        return false;
    }
    bool written = WriteAll(fd, data.data(), data.size());
    std::string why = written ? std::string() : ErrnoText();
    if (::close(fd) != 0 && written) {
        written = false;
        why = ErrnoText();
    }
    if (!written) {
        error = "cannot write " + path + ": " + why;
        ::unlink(temporary.c_str());
        return false;
    }
    return Commit(temporary, path, error);
}

bool PLHostFiles::CopyAtomically(const std::string& from, const std::string& to,
                                 std::string& error) {
    std::string data;
    if (!ReadAll(from, data, error)) {
        return false;
    }
    return WriteAtomically(to, data, error);
}

bool PLHostFiles::SavePNGAtomically(const PLBitmap& bitmap, const std::string& path,
                                    std::string& error) {
    std::string temporary = TemporaryPathFor(path);
    std::string why;
    if (!bitmap.SavePNG(temporary, why)) {
        error = "cannot write " + path + ": " + why;
        ::unlink(temporary.c_str());
        return false;
    }
    return Commit(temporary, path, error);
}

bool PLHostFiles::ReadAll(const std::string& path, std::string& data, std::string& error) {
    if (path == "-") {
        data.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
        return true;
    }
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        error = "cannot read " + path + ": " + ErrnoText();
        return false;
    }
    data.clear();
    char buffer[65536];
    for (;;) {
        ssize_t got = ::read(fd, buffer, sizeof(buffer));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            error = "cannot read " + path + ": " + ErrnoText();
            ::close(fd);
            return false;
        }
        if (got == 0) {
            break;
        }
        data.append(buffer, size_t(got));
    }
    ::close(fd);
    return true;
}

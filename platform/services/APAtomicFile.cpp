// Whole-file reads and atomic writes: write a temporary file, fsync it, rename it into place and
// fsync the directory, so a crash leaves either the old or the new content.
#include "APAtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace {

std::string Reason(const std::string& what, const std::string& path) {
    return what + " " + path + ": " + std::strerror(errno);
}

std::string ParentOf(const std::string& path) {
    size_t slash = path.find_last_of('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}

void SyncDirectory(const std::string& directory) {
    int fd = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY);
    if (fd >= 0) {
        ::fsync(fd);  // best effort: some file systems refuse fsync on directories
        ::close(fd);
    }
}

bool WriteAll(int fd, const char* data, size_t length) {
    while (length > 0) {
        ssize_t n = ::write(fd, data, length);
        if (n < 0) {
            if (errno == EINTR) {
                continue;
            }
            return false;
        }
        data += n;
        length -= static_cast<size_t>(n);
    }
    return true;
}

}  // namespace

APReadResult APAtomicFile_Read(const std::string& hostPath, std::string& data, std::string& error,
                               size_t limit) {
    int fd = ::open(hostPath.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        if (errno == ENOENT) {
            return APReadResult::kMissing;
        }
        error = Reason("cannot open", hostPath);
        return APReadResult::kError;
    }
    data.clear();
    char buffer[65536];
    for (;;) {
        ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n < 0) {
            error = Reason("cannot read", hostPath);
            ::close(fd);
            return APReadResult::kError;
        }
        if (n == 0) {
            break;
        }
        if (data.size() + static_cast<size_t>(n) > limit) {
            error = hostPath + ": file is larger than " + std::to_string(limit) + " bytes";
            ::close(fd);
            return APReadResult::kError;
        }
        data.append(buffer, static_cast<size_t>(n));
    }
    ::close(fd);
    return APReadResult::kOk;
}

bool APAtomicFile_Write(const std::string& hostPath, const std::string& data, std::string& error,
                        unsigned mode) {
    // A name of its own for every writer (processes and threads alike): two writers sharing one
    // temporary file would interleave their bytes and rename a mix of both into place.
    std::string temp = hostPath + ".tmp-XXXXXX";
    int fd = ::mkostemp(temp.data(), O_CLOEXEC);
    if (fd < 0) {
        error = Reason("cannot create a temporary file for", hostPath);
        return false;
    }
    bool ok = ::fchmod(fd, mode) == 0 && WriteAll(fd, data.data(), data.size()) && ::fsync(fd) == 0;
    if (!ok) {
        error = Reason("cannot write", temp);
    }
    if (::close(fd) != 0 && ok) {
        error = Reason("cannot write", temp);
        ok = false;
    }
    if (ok && ::rename(temp.c_str(), hostPath.c_str()) != 0) {
        error = Reason("cannot replace", hostPath);
        ok = false;
    }
    if (!ok) {
        ::unlink(temp.c_str());
        return false;
    }
    SyncDirectory(ParentOf(hostPath));
    return true;
}

bool APAtomicFile_Copy(const std::string& fromHostPath, const std::string& toHostPath,
                       std::string& error) {
    std::string data;
    APReadResult read = APAtomicFile_Read(fromHostPath, data, error, size_t(1) << 31);
    if (read == APReadResult::kMissing) {
        error = "missing " + fromHostPath;
        return false;
    }
    if (read != APReadResult::kOk) {
        return false;
    }
    struct stat info {};
    unsigned mode = ::stat(fromHostPath.c_str(), &info) == 0 ? (info.st_mode & 0777) : 0644;
    return APAtomicFile_Write(toHostPath, data, error, mode);
}

namespace {

// Gives the file a second, free name: link() never replaces an existing file, so two processes
// setting files aside at once cannot pick the same name and overwrite each other's copy.
bool LinkAside(const std::string& hostPath, const std::string& suffix, std::string& movedTo,
               std::string& error) {
    std::string base = hostPath + "." + suffix;
    for (int n = 0; n < 10000; ++n) {
        std::string candidate = n == 0 ? base : base + "." + std::to_string(n);
        if (::link(hostPath.c_str(), candidate.c_str()) == 0) {
            movedTo = candidate;
            return true;
        }
        if (errno != EEXIST) {
            error = Reason("cannot set aside", hostPath);
            return false;
        }
    }
    error = "no free name to set aside " + hostPath;
    return false;
}

}  // namespace

bool APAtomicFile_SetAside(const std::string& hostPath, const std::string& suffix,
                           std::string& movedTo, std::string& error) {
    if (!LinkAside(hostPath, suffix, movedTo, error)) {
        return false;
    }
    if (::unlink(hostPath.c_str()) != 0) {
        error = Reason("cannot set aside", hostPath);
        return false;
    }
    return true;
}

bool APAtomicFile_KeepAside(const std::string& hostPath, const std::string& suffix,
                            std::string& keptAs, std::string& error) {
    return LinkAside(hostPath, suffix, keptAs, error);
}

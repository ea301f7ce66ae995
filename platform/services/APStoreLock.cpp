// flock() on "<store>.lock": shared while a store is open, exclusive to set a damaged one aside.
#include "APStoreLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cassert>
#include <cerrno>
#include <cstring>
#include <thread>

APStoreLock::~APStoreLock() {
    if (mFd >= 0) {
        ::close(mFd);  // closing the descriptor drops the lock
    }
}

bool APStoreLock::Open(const std::string& hostPath, std::string& error) {
    assert(mFd < 0 && "store lock opened twice");
    mFd = ::open(hostPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (mFd < 0) {
        error = "cannot open the lock file " + hostPath + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

bool APStoreLock::Take(int operation, Deadline deadline) {
    assert(mFd >= 0 && "store lock used before Open");
    // Polling instead of a blocking flock keeps the wait bounded; the exclusive lock is only
    // ever held for the few milliseconds of a check and a rename, so short naps suffice.
    auto nap = std::chrono::milliseconds(1);
    for (;;) {
        if (::flock(mFd, operation | LOCK_NB) == 0) {
            return true;
        }
        if (errno != EWOULDBLOCK && errno != EINTR) {
            return false;
        }
        if (std::chrono::steady_clock::now() + nap > deadline) {
            return false;
        }
        std::this_thread::sleep_for(nap);
        nap = std::min(nap * 2, std::chrono::milliseconds(20));
    }
}

bool APStoreLock::LockShared(Deadline deadline) {
    return Take(LOCK_SH, deadline);
}

bool APStoreLock::LockExclusive(Deadline deadline) {
    // Converting a held shared lock is not atomic anyway; dropping it first makes that explicit.
    Unlock();
    return Take(LOCK_EX, deadline);
}

void APStoreLock::Unlock() {
    if (mFd >= 0) {
        ::flock(mFd, LOCK_UN);
    }
}

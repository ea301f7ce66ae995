// The advisory lock that every process holds on a shared store file while it has the file open.
//
// SQLite's own locks say who is reading or writing right now, not who has the file open, so they
// cannot tell whether renaming a damaged file would pull it from under another process. Every
// opener holds this lock shared for as long as its connection lives; only a holder of the
// exclusive lock (nobody else has the file open) may judge the file damaged and set it aside.
// The lock file itself is never renamed or removed, so every process always locks the same inode.
#pragma once

#include <chrono>
#include <string>

class APStoreLock {
public:
    using Deadline = std::chrono::steady_clock::time_point;

    APStoreLock() = default;
    ~APStoreLock();
    APStoreLock(const APStoreLock&) = delete;
    APStoreLock& operator=(const APStoreLock&) = delete;

    // Opens (creating) the lock file `hostPath`; false with `error` set when it cannot.
    bool Open(const std::string& hostPath, std::string& error);
    // Takes the lock shared (others may hold it shared too), waiting until `deadline` at most.
    bool LockShared(Deadline deadline);
    // Takes the lock exclusively, waiting until `deadline` at most. A holder of the shared lock
    // gives it up first; on failure the lock is not held at all.
    bool LockExclusive(Deadline deadline);
    void Unlock();

private:
    bool Take(int operation, Deadline deadline);

    int mFd = -1;
};

// Idle store connections of this process (see the header).
#include "APConnectionPool.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <deque>
#include <mutex>

#include "APStoreLock.h"

namespace {

// Long enough for a short-lived user to finish; a repair holds the lock for milliseconds.
constexpr std::chrono::milliseconds kCloseWait{500};

// The kept connections, closed when the process exits normally so that the log of each file is
// checkpointed and removed as it was before connections were kept.
class Idle {
public:
    ~Idle() { Clear(); }

    bool Take(const std::string& key, APIdleConnection& out) {
        std::lock_guard<std::mutex> lock(mMutex);
        const pid_t self = ::getpid();
        for (auto it = mConnections.begin(); it != mConnections.end(); ++it) {
            if (it->owner == self && it->key == key) {
                out = std::move(*it);
                mConnections.erase(it);
                return true;
            }
        }
        return false;
    }

    void Put(APIdleConnection&& connection) {
        APIdleConnection oldest;
        bool evicted = false;
        {
            std::lock_guard<std::mutex> lock(mMutex);
            mConnections.push_back(std::move(connection));
            if (mConnections.size() > APConnectionPool::kMaxIdle) {
                oldest = std::move(mConnections.front());
                mConnections.pop_front();
                evicted = true;
            }
        }
        if (evicted) {
            APConnectionPool::Close(oldest);
        }
    }

    void Clear() {
        std::deque<APIdleConnection> all;
        {
            std::lock_guard<std::mutex> lock(mMutex);
            all.swap(mConnections);
        }
        for (APIdleConnection& connection : all) {
            APConnectionPool::Close(connection);
        }
    }

private:
    std::mutex mMutex;
    std::deque<APIdleConnection> mConnections;
};

Idle& Connections() {
    static Idle idle;
    return idle;
}

// Connections a forked child inherited: never used or closed here, but kept reachable, so that
// they are not mistaken for leaks.
void KeepInherited(sqlite3* db) {
    static std::mutex mutex;
    static std::deque<sqlite3*> inherited;
    std::lock_guard<std::mutex> lock(mutex);
    inherited.push_back(db);
}

}  // namespace

bool APConnectionPool::Take(const std::string& key, APIdleConnection& out) {
    return Connections().Take(key, out);
}

void APConnectionPool::Put(APIdleConnection&& connection) {
    if (connection.db) {
        Connections().Put(std::move(connection));
    }
}

void APConnectionPool::Clear() {
    Connections().Clear();
}

bool APConnectionPool::IdentityOf(const std::string& hostPath, APFileIdentity& identity) {
    struct stat info {};
    if (::stat(hostPath.c_str(), &info) != 0) {
        return false;
    }
    identity.device = uint64_t(info.st_dev);
    identity.inode = uint64_t(info.st_ino);
    return true;
}

void APConnectionPool::Close(APIdleConnection& connection) {
    if (!connection.db) {
        return;
    }
    if (connection.owner != ::getpid()) {
        // A copy made by fork: closing it here would release or checkpoint what the parent uses.
        KeepInherited(connection.db);
        connection.db = nullptr;
        return;
    }
    connection.statements.FinalizeAll();
    // Closing the last connection of a file checkpoints its log and deletes the log by name. That
    // is only right while the name still belongs to this connection's file, which the shared lock
    // guarantees for as long as it is held (a file is replaced only under the exclusive lock).
    APStoreLock lock;
    std::string error;
    APFileIdentity now;
    const bool ownFile = lock.Open(connection.hostPath + ".lock", error) &&
                         lock.LockShared(std::chrono::steady_clock::now() + kCloseWait) &&
                         IdentityOf(connection.hostPath, now) && now == connection.file;
    if (!ownFile) {
        sqlite3_db_config(connection.db, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    }
    sqlite3_close_v2(connection.db);
    connection.db = nullptr;
}

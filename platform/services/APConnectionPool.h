// The store connections of this process that no store object is using at the moment, kept open
// for the next one.
//
// Store objects are short-lived (a view opens one per query, a save one per step), and opening a
// connection costs more than the query it serves: SQLite reads the schema, the pragmas run, and
// closing the last connection of a file checkpoints its log, syncs and deletes it, only for the
// next open to create it again. A store object hands its connection back here when it is destroyed
// and the next store object of the same file, schema and quota takes it.
//
// A kept connection does not hold the store's lock: an idle process must not stop another one from
// setting a damaged file aside. Whoever takes a connection holds the lock shared first and checks
// that the path still names the file the connection has open; a connection whose file was
// replaced is closed without a checkpoint, so that it never touches the files now at that path.
// A forked child never uses or closes its parent's connections.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "APStatementCache.h"

struct sqlite3;

// Which file a path names: device and inode.
struct APFileIdentity {
    uint64_t device = 0;
    uint64_t inode = 0;

    bool operator==(const APFileIdentity& other) const {
        return device == other.device && inode == other.inode;
    }
};

struct APIdleConnection {
    std::string key;  // host path, schema and quota: what the connection was opened for
    std::string hostPath;
    sqlite3* db = nullptr;
    APFileIdentity file;
    APStatementCache statements;
    pid_t owner = 0;
};

class APConnectionPool {
public:
    // A process uses one or two stores, a few objects at a time.
    static constexpr size_t kMaxIdle = 8;

    // Moves out a connection kept under `key` by this process; false when there is none.
    static bool Take(const std::string& key, APIdleConnection& out);
    // Keeps a connection; the oldest kept one is closed when there are too many.
    static void Put(APIdleConnection&& connection);
    // Closes every kept connection.
    static void Clear();
    // Closes a connection: normally (its log checkpointed) while its path still names its file,
    // else without a checkpoint. A connection of another process (inherited by fork) is left
    // alone.
    static void Close(APIdleConnection& connection);
    // The identity of the file at `hostPath`; false when there is none.
    static bool IdentityOf(const std::string& hostPath, APFileIdentity& identity);
};

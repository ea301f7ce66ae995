// One SQLite connection to a service's store under the device root, opened the same way for every
// store: WAL, foreign keys on, a quick check on first open in this process, and a corrupt or
// truncated file set aside under a new name (never deleted) before a fresh store is made.
//
// The stores are shared by every process of the device at once. Contention (SQLITE_BUSY or
// SQLITE_LOCKED while another process writes or recovers the log) is waited out for a bounded
// time and then reported as "store busy"; it is never taken for damage. A file is judged damaged
// only on SQLITE_CORRUPT or SQLITE_NOTADB confirmed while this process holds the store's lock
// exclusively, so a file that another process has open is never renamed.
//
// A closed store object hands its connection to the process's pool of idle connections, and the
// next object of the same store takes it over, with its prepared statements (see APConnectionPool).
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "APConnectionPool.h"
#include "APStatementCache.h"
#include "APStoreLock.h"

struct sqlite3;
struct sqlite3_stmt;

class APDatabase {
public:
    APDatabase() = default;
    ~APDatabase();
    APDatabase(const APDatabase&) = delete;
    APDatabase& operator=(const APDatabase&) = delete;

    // Opens the store at a device path, running `schema` (idempotent SQL) on it. False with
    // GetLastError set when it cannot be opened or created.
    bool Open(const std::string& devicePath, const std::string& schema);

    bool IsOpen() const { return mDb != nullptr; }
    // True when the connection was taken over from the idle pool rather than opened anew.
    bool WasAdopted() const { return mAdopted; }
    sqlite3* Handle() const { return mDb; }
    const std::string& GetLastError() const { return mLastError; }
    // The file opened last (host path), a key for what this process keeps about the store.
    const std::string& GetHostPath() const { return mHostPath; }
    // What the last open set aside, if anything (the new name of the damaged file).
    const std::string& GetSetAsidePath() const { return mSetAside; }

    // A statement prepared once for this connection (and kept with it in the pool), reset and with
    // its bindings cleared; null when it cannot be prepared. Finish it (step to the end or reset)
    // before asking for the same SQL again.
    sqlite3_stmt* Cached(const char* sql);

    // Runs SQL without results; false (and GetLastError) on failure.
    bool Exec(const std::string& sql);
    // Runs `body` inside BEGIN IMMEDIATE .. COMMIT; any failure (body false, or a failed commit)
    // rolls back, leaving the files as they were. Another process's write lock is waited out
    // (bounded); then the transaction fails with "store busy" and `body` has not run.
    bool Transaction(const std::function<bool()>& body);
    // Records the connection's current error message.
    void NoteError(const std::string& what);

    // A store is checked once per process; this makes the next open check again (and closes the
    // idle connections, so that the next open really opens the file).
    static void ForgetChecks();
    // Caps every store opened afterwards at `pages` database pages (0: no cap), as a device quota;
    // a write past it fails like a full disk.
    static void SetPageQuota(long pages);
    // How long contention is waited out before an open or a write gives up with "store busy".
    static void SetBusyWait(std::chrono::milliseconds wait);

private:
    using Deadline = std::chrono::steady_clock::time_point;
    enum class Verdict { kOk, kBusy, kDamaged, kFailed };

    bool Connect(const std::string& hostPath);
    void Disconnect();
    // Takes over an idle connection of this process to the same file; false when there is none.
    bool Adopt(const std::string& hostPath, const std::string& key);
    // Gives the connection to the idle pool when it is fit to be used again, else closes it.
    void Release();
    // Steps a kept statement without results once: SQLITE_OK when it ran to the end.
    int RunCached(const char* sql);
    Verdict Prepare(const std::string& hostPath, const std::string& schema, Deadline deadline);
    Verdict CheckFile(Deadline deadline);
    Verdict RunStep(const std::string& sql, Deadline deadline);
    Verdict RunSchema(const std::string& schema, Deadline deadline);
    // True when the file already carries this schema's fingerprint, so its script can be skipped.
    bool HasSchema(const std::string& schema);
    // Holding the lock exclusively, checks the file again and sets it aside only when the check
    // confirms the damage. False when nothing may be done now (another process has it open).
    bool ConfirmAndSetAside(const std::string& hostPath, Deadline deadline);
    bool SetAside(const std::string& hostPath);
    Verdict Busy(const std::string& what);

    sqlite3* mDb = nullptr;
    APStoreLock mLock;
    std::string mLastError;
    std::string mSetAside;
    std::string mHostPath;
    std::string mPoolKey;
    APFileIdentity mFile;
    APStatementCache mStatements;
    bool mAdopted = false;
    // The highest id of each table of a file set aside, so that the fresh store never hands out
    // an id that the damaged one used for another event.
    std::string mSequenceSeed;
};

// A prepared statement that finalizes itself.
class APStatement {
public:
    APStatement(sqlite3* db, const char* sql);
    ~APStatement();
    APStatement(const APStatement&) = delete;
    APStatement& operator=(const APStatement&) = delete;

    bool Ok() const { return mStmt != nullptr; }
    sqlite3_stmt* Get() const { return mStmt; }
    // Resets the statement and clears its bindings for another run.
    void Reset();

private:
    sqlite3_stmt* mStmt = nullptr;
};

// One SQLite connection to a service's store under the device root, opened the same way for every
// store: WAL, foreign keys on, a quick check on first open in this process, and a corrupt or
// truncated file set aside under a new name (never deleted) before a fresh store is made.
#pragma once

#include <functional>
#include <string>

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
    sqlite3* Handle() const { return mDb; }
    const std::string& GetLastError() const { return mLastError; }
    // What the last open set aside, if anything (the new name of the damaged file).
    const std::string& GetSetAsidePath() const { return mSetAside; }

    // Runs SQL without results; false (and GetLastError) on failure.
    bool Exec(const std::string& sql);
    // Runs `body` inside BEGIN IMMEDIATE .. COMMIT; any failure (body false, or a failed commit)
    // rolls back, leaving the files as they were.
    bool Transaction(const std::function<bool()>& body);
    // Records the connection's current error message.
    void NoteError(const std::string& what);

    // A store is checked once per process; this makes the next open check again.
    static void ForgetChecks();
    // Caps every store opened afterwards at `pages` database pages (0: no cap), as a device quota;
    // a write past it fails like a full disk.
    static void SetPageQuota(long pages);

private:
    bool CheckAndPrepare(const std::string& hostPath, const std::string& schemaName);
    bool SetAside(const std::string& hostPath);

    sqlite3* mDb = nullptr;
    std::string mLastError;
    std::string mSetAside;
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

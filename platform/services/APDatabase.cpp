// Opening a service store: device-root path, quick check once per process, setting a damaged file
// aside, WAL and foreign keys, the schema, and transactions that leave the files as they were on
// any failure.
#include "APDatabase.h"

#include <sqlite3.h>
#include <sys/stat.h>

#include <cassert>
#include <cstdio>
#include <ctime>
#include <mutex>
#include <set>

#include "PLClock.h"
#include "PLDeviceRoot.h"

namespace {

// Stores that passed the quick check in this process. The check reads the whole file, so it runs
// once per store and process, not on every short-lived store object.
std::mutex gCheckedMutex;
std::set<std::string> gChecked;
long gPageQuota = 0;

bool FileExists(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0;
}

std::string SetAsideName(const std::string& hostPath) {
    const time_t now = time_t(PLClock::Now());
    std::tm fields{};
    gmtime_r(&now, &fields);
    char stamp[32];
    std::strftime(stamp, sizeof stamp, "%Y%m%d-%H%M%S", &fields);
    const std::string base = hostPath + ".corrupt-" + stamp;
    std::string candidate = base;
    for (int n = 1; FileExists(candidate); ++n) {
        candidate = base + "-" + std::to_string(n);
    }
    return candidate;
}

// Runs `PRAGMA <schema>.quick_check` and reports whether the answer is a single "ok".
bool QuickCheckPasses(sqlite3* db, const std::string& schemaName, std::string& problem) {
    const std::string sql = "PRAGMA " + schemaName + ".quick_check(1)";
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt, nullptr) != SQLITE_OK) {
        problem = sqlite3_errmsg(db);
        return false;
    }
    const int rc = sqlite3_step(stmt);
    bool ok = false;
    if (rc == SQLITE_ROW) {
        const unsigned char* text = sqlite3_column_text(stmt, 0);
        ok = text && std::string(reinterpret_cast<const char*>(text)) == "ok";
        problem = text ? reinterpret_cast<const char*>(text) : "no answer";
    } else {
        problem = sqlite3_errmsg(db);
    }
    sqlite3_finalize(stmt);
    return ok;
}

}  // namespace

APDatabase::~APDatabase() {
    if (mDb) {
        sqlite3_close_v2(mDb);
    }
}

void APDatabase::ForgetChecks() {
    std::lock_guard<std::mutex> lock(gCheckedMutex);
    gChecked.clear();
}

void APDatabase::SetPageQuota(long pages) {
    gPageQuota = pages < 0 ? 0 : pages;
}

void APDatabase::NoteError(const std::string& what) {
    mLastError = what;
    if (mDb) {
        mLastError += ": ";
        mLastError += sqlite3_errmsg(mDb);
    }
}

bool APDatabase::Exec(const std::string& sql) {
    assert(mDb && "Exec on a closed store");
    char* message = nullptr;
    if (sqlite3_exec(mDb, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
        mLastError = message ? message : "unknown SQLite error";
        sqlite3_free(message);
        return false;
    }
    return true;
}

bool APDatabase::SetAside(const std::string& hostPath) {
    const std::string target = SetAsideName(hostPath);
    if (std::rename(hostPath.c_str(), target.c_str()) != 0) {
        mLastError = "cannot set aside the damaged store " + hostPath;
        return false;
    }
    // The journal files belong to the damaged image: they travel with it, so nothing is lost.
    for (const char* suffix : {"-wal", "-shm", "-journal"}) {
        const std::string side = hostPath + suffix;
        if (FileExists(side)) {
            std::rename(side.c_str(), (target + suffix).c_str());
        }
    }
    mSetAside = target;
    std::fprintf(stderr, "store %s is damaged; set aside as %s\n", hostPath.c_str(),
                 target.c_str());
    return true;
}

bool APDatabase::CheckAndPrepare(const std::string& hostPath, const std::string& schemaName) {
    bool needsCheck = false;
    {
        std::lock_guard<std::mutex> lock(gCheckedMutex);
        needsCheck = gChecked.count(hostPath) == 0;
    }
    if (needsCheck && FileExists(hostPath)) {
        std::string problem;
        if (!QuickCheckPasses(mDb, schemaName, problem)) {
            mLastError = "store " + hostPath + " failed its check (" + problem + ")";
            return false;
        }
    }
    const std::string prefix = "PRAGMA " + schemaName + ".";
    // With a write-ahead log, NORMAL syncs at checkpoints only: a power cut can lose the last
    // commits but never leaves a damaged file.
    if (!Exec(prefix + "journal_mode=WAL") || !Exec(prefix + "synchronous=NORMAL") ||
        !Exec("PRAGMA foreign_keys=ON") || !Exec("PRAGMA busy_timeout=5000")) {
        return false;
    }
    if (gPageQuota > 0 && !Exec(prefix + "max_page_count=" + std::to_string(gPageQuota))) {
        return false;
    }
    std::lock_guard<std::mutex> lock(gCheckedMutex);
    gChecked.insert(hostPath);
    return true;
}

bool APDatabase::Open(const std::string& devicePath, const std::string& schema) {
    assert(!mDb && "store opened twice");
    if (!PLDeviceRoot::MakeParentDirectories(devicePath)) {
        mLastError = "cannot create the folder of " + devicePath;
        return false;
    }
    const std::string hostPath = PLDeviceRoot::Resolve(devicePath);
    for (int attempt = 0; attempt < 2; ++attempt) {
        const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX;
        if (sqlite3_open_v2(hostPath.c_str(), &mDb, flags, nullptr) != SQLITE_OK) {
            NoteError("cannot open " + hostPath);
            sqlite3_close_v2(mDb);
            mDb = nullptr;
            return false;
        }
        if (CheckAndPrepare(hostPath, "main") && Exec(schema)) {
            return true;
        }
        const std::string reason = mLastError;
        sqlite3_close_v2(mDb);
        mDb = nullptr;
        // Only a file that exists and fails to read as a store is set aside; a fresh one that
        // cannot be written (read-only root, no space) is an error, not damage.
        if (attempt > 0 || !FileExists(hostPath) || !SetAside(hostPath)) {
            mLastError = reason;
            return false;
        }
    }
    return false;
}

bool APDatabase::Transaction(const std::function<bool()>& body) {
    assert(mDb && "transaction on a closed store");
    if (!Exec("BEGIN IMMEDIATE")) {
        return false;
    }
    if (body() && sqlite3_exec(mDb, "COMMIT", nullptr, nullptr, nullptr) == SQLITE_OK) {
        return true;
    }
    if (mLastError.empty()) {
        NoteError("write failed");
    }
    sqlite3_exec(mDb, "ROLLBACK", nullptr, nullptr, nullptr);
    return false;
}

APStatement::APStatement(sqlite3* db, const char* sql) {
    if (db && sqlite3_prepare_v2(db, sql, -1, &mStmt, nullptr) != SQLITE_OK) {
        sqlite3_finalize(mStmt);
        mStmt = nullptr;
    }
}

APStatement::~APStatement() {
    sqlite3_finalize(mStmt);
}

void APStatement::Reset() {
    if (mStmt) {
        sqlite3_reset(mStmt);
        sqlite3_clear_bindings(mStmt);
    }
}

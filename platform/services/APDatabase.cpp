// Opening a service store: device-root path, the shared lock that marks this process as a user of
// the file, quick check once per process, WAL and foreign keys, the schema, contention waited
// out, a damaged file set aside only when confirmed under the exclusive lock, and transactions
// that leave the files as they were on any failure.
#include "APDatabase.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cassert>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <mutex>
#include <random>
#include <set>
#include <thread>

#include "PLClock.h"
#include "PLDeviceRoot.h"

namespace {

using Clock = std::chrono::steady_clock;

// Stores that passed the quick check in this process. The check reads the whole file, so it runs
// once per store and process, not on every short-lived store object.
std::mutex gCheckedMutex;
std::set<std::string> gChecked;
long gPageQuota = 0;
// Read by every store user, on any thread; set by tests.
std::atomic<std::chrono::milliseconds::rep> gBusyWaitMs{10000};

std::chrono::milliseconds BusyWait() {
    return std::chrono::milliseconds(gBusyWaitMs.load());
}
// Long enough for short-lived users (calendar-ctl) to finish; a long-lived one keeps the file.
constexpr std::chrono::milliseconds kExclusiveWait{2000};

bool FileExists(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0;
}

bool IsBusy(int rc) {
    const int primary = rc & 0xff;
    return primary == SQLITE_BUSY || primary == SQLITE_LOCKED;
}

bool IsDamage(int rc) {
    const int primary = rc & 0xff;
    return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB;
}

// A short randomised pause, so that processes retrying together do not stay in step.
void Nap() {
    thread_local std::minstd_rand random{std::random_device{}()};
    std::this_thread::sleep_for(std::chrono::microseconds(500 + random() % 4500));
}

bool TimeLeft(Clock::time_point deadline) {
    return Clock::now() < deadline;
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

// The id counters of a damaged file, as far as it can still be read, as SQL that gives a fresh
// store the same counters. The file is opened immutable so that reading it changes nothing.
std::string SequenceSeedOf(const std::string& damagedPath) {
    sqlite3* db = nullptr;
    const std::string uri = "file:" + damagedPath + "?mode=ro&immutable=1";
    std::string seed;
    if (sqlite3_open_v2(uri.c_str(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr) ==
        SQLITE_OK) {
        sqlite3_stmt* stmt = nullptr;
        if (sqlite3_prepare_v2(db, "SELECT name, seq FROM sqlite_sequence", -1, &stmt, nullptr) ==
            SQLITE_OK) {
            while (sqlite3_step(stmt) == SQLITE_ROW) {
                const auto* name = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0));
                char* row = sqlite3_mprintf(
                    "INSERT INTO sqlite_sequence(name, seq) SELECT %Q, %lld WHERE NOT EXISTS "
                    "(SELECT 1 FROM sqlite_sequence WHERE name = %Q);",
                    name, sqlite3_column_int64(stmt, 1), name);
                seed += row ? row : "";
                sqlite3_free(row);
            }
        }
        sqlite3_finalize(stmt);
    }
    sqlite3_close_v2(db);
    return seed;
}

// The schema's fingerprint, kept in the file's user_version once its script has run: positive and
// never 0, the version of a fresh file.
int SchemaFingerprint(const std::string& schema) {
    uint32_t hash = 2166136261u;
    for (const unsigned char c : schema) {
        hash = (hash ^ c) * 16777619u;
    }
    return int(hash & 0x7fffffff) | 1;
}

}  // namespace

APDatabase::~APDatabase() {
    // The lock member is released after this: the connection reaches the pool while it is held.
    Release();
}

void APDatabase::ForgetChecks() {
    {
        std::lock_guard<std::mutex> lock(gCheckedMutex);
        gChecked.clear();
    }
    APConnectionPool::Clear();
}

sqlite3_stmt* APDatabase::Cached(const char* sql) {
    assert(mDb && "Cached on a closed store");
    return mDb ? mStatements.Get(mDb, sql) : nullptr;
}

void APDatabase::SetPageQuota(long pages) {
    gPageQuota = pages < 0 ? 0 : pages;
}

void APDatabase::SetBusyWait(std::chrono::milliseconds wait) {
    assert(wait.count() > 0 && "the busy wait must be positive");
    gBusyWaitMs = std::max(wait, std::chrono::milliseconds(1)).count();
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

bool APDatabase::Connect(const std::string& hostPath) {
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX;
    if (sqlite3_open_v2(hostPath.c_str(), &mDb, flags, nullptr) != SQLITE_OK) {
        NoteError("cannot open " + hostPath);
        Disconnect();
        return false;
    }
    // Before anything reads the file: even the first read can meet another process's lock.
    sqlite3_extended_result_codes(mDb, 1);
    sqlite3_busy_timeout(mDb, int(BusyWait().count()));
    return true;
}

void APDatabase::Disconnect() {
    mStatements.FinalizeAll();
    if (mDb) {
        sqlite3_close_v2(mDb);
        mDb = nullptr;
    }
}

bool APDatabase::Adopt(const std::string& hostPath, const std::string& key) {
    APIdleConnection idle;
    if (!APConnectionPool::Take(key, idle)) {
        return false;
    }
    // The shared lock is held, so the file at the path cannot change while this is decided.
    APFileIdentity now;
    if (!APConnectionPool::IdentityOf(hostPath, now) || !(now == idle.file)) {
        APConnectionPool::Close(idle);  // its file was set aside or removed meanwhile
        return false;
    }
    mDb = idle.db;
    mFile = idle.file;
    mStatements = std::move(idle.statements);
    sqlite3_busy_timeout(mDb, int(BusyWait().count()));
    return true;
}

void APDatabase::Release() {
    if (!mDb) {
        return;
    }
    mStatements.ResetAll();
    // Fit to be used again: no transaction left open and no statement of the caller still alive.
    bool fit = !mPoolKey.empty() && sqlite3_get_autocommit(mDb) != 0;
    for (sqlite3_stmt* s = sqlite3_next_stmt(mDb, nullptr); fit && s;
         s = sqlite3_next_stmt(mDb, s)) {
        fit = mStatements.Holds(s);
    }
    if (!fit) {
        Disconnect();
        return;
    }
    APIdleConnection idle;
    idle.key = mPoolKey;
    idle.hostPath = mHostPath;
    idle.db = mDb;
    idle.file = mFile;
    idle.statements = std::move(mStatements);
    idle.owner = ::getpid();
    mDb = nullptr;
    APConnectionPool::Put(std::move(idle));
}

APDatabase::Verdict APDatabase::Busy(const std::string& what) {
    mLastError = "store busy: " + what + " (another process held the store too long)";
    return Verdict::kBusy;
}

// One statement (or a script of idempotent ones), run again while another process holds a lock.
APDatabase::Verdict APDatabase::RunStep(const std::string& sql, Deadline deadline) {
    for (;;) {
        const int rc = sqlite3_exec(mDb, sql.c_str(), nullptr, nullptr, nullptr);
        if (rc == SQLITE_OK) {
            return Verdict::kOk;
        }
        if (IsBusy(rc)) {
            if (TimeLeft(deadline)) {
                Nap();
                continue;
            }
            return Busy(sql);
        }
        NoteError(sql);
        return IsDamage(rc) ? Verdict::kDamaged : Verdict::kFailed;
    }
}

APDatabase::Verdict APDatabase::CheckFile(Deadline deadline) {
    for (;;) {
        sqlite3_stmt* stmt = nullptr;
        int rc = sqlite3_prepare_v2(mDb, "PRAGMA main.quick_check(1)", -1, &stmt, nullptr);
        std::string answer;
        if (rc == SQLITE_OK) {
            rc = sqlite3_step(stmt);
            const unsigned char* text = rc == SQLITE_ROW ? sqlite3_column_text(stmt, 0) : nullptr;
            answer = text ? reinterpret_cast<const char*>(text) : "";
        }
        const std::string message = sqlite3_errmsg(mDb);
        sqlite3_finalize(stmt);
        if (rc == SQLITE_ROW) {
            if (answer == "ok") {
                return Verdict::kOk;
            }
            mLastError = "failed its check (" + answer + ")";
            return Verdict::kDamaged;
        }
        if (IsBusy(rc) && TimeLeft(deadline)) {
            Nap();
            continue;
        }
        if (IsBusy(rc)) {
            return Busy("checking the file");
        }
        mLastError = "failed its check (" + message + ")";
        return IsDamage(rc) ? Verdict::kDamaged : Verdict::kFailed;
    }
}

bool APDatabase::HasSchema(const std::string& schema) {
    sqlite3_stmt* stmt = nullptr;
    bool current = false;
    // Reading the schema table first: a damaged one then fails the script below as before.
    if (sqlite3_prepare_v2(mDb,
                           "SELECT user_version FROM pragma_user_version "
                           "WHERE (SELECT count(*) FROM main.sqlite_master) >= 0",
                           -1, &stmt, nullptr) == SQLITE_OK &&
        sqlite3_step(stmt) == SQLITE_ROW) {
        current = sqlite3_column_int(stmt, 0) == SchemaFingerprint(schema);
    }
    sqlite3_finalize(stmt);
    return current;
}

APDatabase::Verdict APDatabase::RunSchema(const std::string& schema, Deadline deadline) {
    // Every statement of a schema is idempotent, so a retry after a partial run is harmless. The
    // script (whose statements may take the write lock) runs only on a file that has not had it
    // yet; the fingerprint is written last, so an interrupted run is simply repeated.
    Verdict verdict = Verdict::kOk;
    if (!HasSchema(schema)) {
        verdict = RunStep(schema + ";\nPRAGMA main.user_version=" +
                              std::to_string(SchemaFingerprint(schema)) + ";",
                          deadline);
    }
    if (verdict == Verdict::kOk && !mSequenceSeed.empty()) {
        verdict = RunStep(mSequenceSeed, deadline);
        mSequenceSeed.clear();
    }
    return verdict;
}

APDatabase::Verdict APDatabase::Prepare(const std::string& hostPath, const std::string& schema,
                                        Deadline deadline) {
    bool needsCheck = false;
    {
        std::lock_guard<std::mutex> lock(gCheckedMutex);
        needsCheck = gChecked.count(hostPath) == 0;
    }
    if (needsCheck) {
        const Verdict checked = CheckFile(deadline);
        if (checked != Verdict::kOk) {
            return checked;
        }
    }
    // With a write-ahead log, NORMAL syncs at checkpoints only: a power cut can lose the last
    // commits but never leaves a damaged file.
    for (const std::string& pragma :
         {std::string("PRAGMA main.journal_mode=WAL"),
          std::string("PRAGMA main.synchronous=NORMAL"), std::string("PRAGMA foreign_keys=ON")}) {
        const Verdict verdict = RunStep(pragma, deadline);
        if (verdict != Verdict::kOk) {
            return verdict;
        }
    }
    if (gPageQuota > 0) {
        const Verdict verdict =
            RunStep("PRAGMA main.max_page_count=" + std::to_string(gPageQuota), deadline);
        if (verdict != Verdict::kOk) {
            return verdict;
        }
    }
    const Verdict verdict = RunSchema(schema, deadline);
    if (verdict == Verdict::kOk) {
        std::lock_guard<std::mutex> lock(gCheckedMutex);
        gChecked.insert(hostPath);
    }
    return verdict;
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
    mSequenceSeed = SequenceSeedOf(target);
    std::fprintf(stderr, "store %s is damaged; set aside as %s\n", hostPath.c_str(),
                 target.c_str());
    return true;
}

bool APDatabase::ConfirmAndSetAside(const std::string& hostPath, Deadline deadline) {
    const std::string suspicion = mLastError;
    if (!mLock.LockExclusive(std::min(deadline, Clock::now() + kExclusiveWait))) {
        mLastError = "store " + hostPath + " looks damaged (" + suspicion +
                     ") but another process has it open; it is left in place";
        return false;
    }
    // Nobody else has the file open now: what the check finds is the file's own state.
    if (!Connect(hostPath)) {
        return false;
    }
    const Verdict verdict = CheckFile(deadline);
    Disconnect();
    switch (verdict) {
        case Verdict::kOk:
            return true;  // the earlier failure was not the file's; open it again
        case Verdict::kDamaged:
            return SetAside(hostPath);
        case Verdict::kBusy:
        case Verdict::kFailed:
            break;
    }
    mLastError = "store " + hostPath + " " + mLastError;
    return false;
}

bool APDatabase::Open(const std::string& devicePath, const std::string& schema) {
    assert(!mDb && "store opened twice");
    const std::string hostPath = PLDeviceRoot::Resolve(devicePath);
    mHostPath = hostPath;
    const Deadline deadline = Clock::now() + BusyWait();
    // The folder is made only when the lock file cannot be opened without it: it nearly always
    // exists, and making sure costs a walk over every folder of the path.
    if (!mLock.Open(hostPath + ".lock", mLastError)) {
        if (!PLDeviceRoot::MakeParentDirectories(devicePath)) {
            mLastError = "cannot create the folder of " + devicePath;
            return false;
        }
        if (!mLock.Open(hostPath + ".lock", mLastError)) {
            return false;
        }
    }
    if (!mLock.LockShared(deadline)) {
        mLastError = "store busy: " + hostPath + " is being repaired by another process";
        return false;
    }
    const std::string key = hostPath + '\n' + std::to_string(SchemaFingerprint(schema)) + '\n' +
                            std::to_string(gPageQuota);
    if (Adopt(hostPath, key)) {
        mPoolKey = key;
        mAdopted = true;
        return true;
    }
    bool confirmed = false;
    for (;;) {
        if (!Connect(hostPath)) {
            mLock.Unlock();
            return false;
        }
        const Verdict verdict = Prepare(hostPath, schema, deadline);
        if (verdict == Verdict::kOk) {
            // After a repair this process held the lock exclusively; others may come in now.
            mLock.LockShared(deadline);
            // Only a connection whose file is known may be kept for later.
            if (APConnectionPool::IdentityOf(hostPath, mFile)) {
                mPoolKey = key;
            }
            return true;
        }
        Disconnect();
        if (verdict == Verdict::kDamaged && !confirmed) {
            mLastError = "store " + hostPath + " " + mLastError;
            confirmed = true;
            if (ConfirmAndSetAside(hostPath, deadline)) {
                continue;
            }
        } else if (verdict == Verdict::kDamaged) {
            mLastError = "store " + hostPath + " " + mLastError;
        }
        mLock.Unlock();
        return false;
    }
}

bool APDatabase::Transaction(const std::function<bool()>& body) {
    assert(mDb && "transaction on a closed store");
    mLastError.clear();
    const Deadline deadline = Clock::now() + BusyWait();
    int rc;
    while (IsBusy(rc = RunCached("BEGIN IMMEDIATE")) && TimeLeft(deadline)) {
        Nap();
    }
    if (rc != SQLITE_OK) {
        if (IsBusy(rc)) {
            Busy("starting a write");
        } else {
            NoteError("cannot start a write");
        }
        return false;
    }
    if (body()) {
        // A commit that meets a lock keeps the transaction open and may simply be tried again.
        while (IsBusy(rc = RunCached("COMMIT")) && TimeLeft(deadline)) {
            Nap();
        }
        if (rc == SQLITE_OK) {
            return true;
        }
        NoteError(IsBusy(rc) ? "store busy: cannot commit" : "cannot commit");
    }
    if (mLastError.empty()) {
        NoteError("write failed");
    }
    if (sqlite3_get_autocommit(mDb) == 0) {
        sqlite3_exec(mDb, "ROLLBACK", nullptr, nullptr, nullptr);
    }
    return false;
}

int APDatabase::RunCached(const char* sql) {
    sqlite3_stmt* const stmt = mStatements.Get(mDb, sql);
    if (!stmt) {
        return sqlite3_errcode(mDb);
    }
    const int rc = sqlite3_step(stmt);
    sqlite3_reset(stmt);
    return rc == SQLITE_DONE ? SQLITE_OK : rc;
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

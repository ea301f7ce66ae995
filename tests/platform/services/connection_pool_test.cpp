// Idle connections kept between store objects: reused only while the path still names their file,
// closed without touching the files now at that path when it does not, and closed cleanly when the
// process exits, so that the store file alone holds every event afterwards.
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

#include "APDatabase.h"
#include "APEventRec.h"
#include "store_support.h"

namespace {

using ConnectionPoolTest = StoreRootTest;

int AddEvent(const char* subject) {
    APEventRec store;
    _EventRecInfo record = TimedEvent(subject, At(20261123, 9), At(20261123, 10));
    return store.AddEventRec(&record);
}

// Ids of the stored events ("1;2;"), read with SQLite alone.
std::string IdsIn(const std::string& uri) {
    sqlite3* db = nullptr;
    std::string ids;
    if (sqlite3_open_v2(uri.c_str(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr) ==
        SQLITE_OK) {
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(db, "SELECT id FROM events ORDER BY id", -1, &stmt, nullptr);
        while (stmt && sqlite3_step(stmt) == SQLITE_ROW) {
            ids += std::to_string(sqlite3_column_int(stmt, 0)) + ";";
        }
        sqlite3_finalize(stmt);
    }
    sqlite3_close(db);
    return ids;
}

void MoveStore(const std::string& from, const std::string& to) {
    for (const char* suffix : {"", "-wal", "-shm"}) {
        std::rename((from + suffix).c_str(), (to + suffix).c_str());
    }
}

// The path of the store is given to another file while this process keeps an idle connection to
// the old one: the next store object works on the new file, and nothing of either file is lost.
TEST_F(ConnectionPoolTest, AReplacedFileIsNeverUsedOrCheckpointedThroughAnIdleConnection) {
    struct Row {
        const char* name;
        // Puts another file (or none) at the store's path; the old one goes to `aside`.
        std::function<void(const std::string& host, const std::string& aside)> replace;
        const char* expectedIds;  // of the store at the path afterwards
    };
    const Row rows[] = {
        {"set_aside_and_made_anew", MoveStore, "1;"},
        {"removed",
         [](const std::string& host, const std::string&) {
             for (const char* suffix : {"", "-wal", "-shm"}) {
                 std::remove((host + suffix).c_str());
             }
         },
         "1;"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Restart();
        const std::string host = HostPath(kAPEventStoreDevicePath);
        const std::string aside = host + ".aside";
        ASSERT_EQ(AddEvent("old one"), 1);
        ASSERT_EQ(AddEvent("old two"), 2);  // the second object reused the first's connection
        row.replace(host, aside);

        // Another process's fresh store at the path, its last commit still only in its log.
        sqlite3* other = nullptr;
        ASSERT_EQ(sqlite3_open(host.c_str(), &other), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(other,
                               "PRAGMA journal_mode=WAL; PRAGMA wal_autocheckpoint=0; "
                               "CREATE TABLE other(x); INSERT INTO other VALUES(7);",
                               nullptr, nullptr, nullptr),
                  SQLITE_OK);
        ASSERT_TRUE(std::filesystem::exists(host + "-wal"));

        // Takes the idle connection of the old file, finds the path changed, and drops it.
        EXPECT_EQ(AddEvent("new"), 1) << "the new file has its own ids";
        EXPECT_TRUE(std::filesystem::exists(host + "-wal"))
            << "closing the old file's connection must not delete the new file's log";
        sqlite3_close(other);
        EXPECT_EQ(IdsIn("file:" + host + "?mode=ro"), row.expectedIds);
        sqlite3* check = nullptr;
        ASSERT_EQ(sqlite3_open_v2(host.c_str(), &check, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
        sqlite3_stmt* stmt = nullptr;
        ASSERT_EQ(sqlite3_prepare_v2(check, "SELECT x FROM other", -1, &stmt, nullptr), SQLITE_OK);
        ASSERT_EQ(sqlite3_step(stmt), SQLITE_ROW) << "the other process's commit survived";
        EXPECT_EQ(sqlite3_column_int(stmt, 0), 7);
        sqlite3_finalize(stmt);
        sqlite3_close(check);
        if (std::filesystem::exists(aside)) {
            EXPECT_EQ(IdsIn("file:" + aside + "?mode=ro"), "1;2;")
                << "the set-aside file kept both events";
        }
    }
}

// A process that exits normally closes its idle connections: the log is folded into the file, so
// the store file alone (as a copy or backup takes it) holds every event. A child made by fork
// neither uses nor closes its parent's connections.
TEST_F(ConnectionPoolTest, ExitLeavesEveryEventInTheStoreFileAndChildrenKeepTheirOwn) {
    const std::string host = HostPath(kAPEventStoreDevicePath);
    ASSERT_EQ(AddEvent("parent"), 1);
    APDatabase::ForgetChecks();  // the parent closes its own, so the child's is the last one
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        std::exit(AddEvent("child") == 2 ? 0 : 1);  // exit, not _exit: the process ends normally
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_FALSE(std::filesystem::exists(host + "-wal")) << "the child's log was folded in";
    EXPECT_EQ(IdsIn("file:" + host + "?immutable=1"), "1;2;");

    // With an idle connection of the parent inherited by the child, both go on writing safely.
    ASSERT_EQ(AddEvent("parent again"), 3);
    const pid_t second = fork();
    ASSERT_GE(second, 0);
    if (second == 0) {
        _exit(AddEvent("second child") == 4 ? 0 : 1);
    }
    ASSERT_EQ(waitpid(second, &status, 0), second);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(AddEvent("parent last"), 5);
    EXPECT_EQ(IdsIn("file:" + host + "?mode=ro"), "1;2;3;4;5;");
}

}  // namespace

// The event store shared by several processes at once: writers (some through calendar-ctl, some
// killed with SIGKILL at random moments) and readers run together on one device root for a
// moment; afterwards every write that a process saw acknowledged is in the store field by field,
// every acknowledged delete is gone, no id was handed out twice, the file passes its integrity
// check and nothing was set aside.
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sqlite3.h>
#include <sys/wait.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <regex>
#include <set>
#include <sstream>
#include <thread>

#include "APAlertDB.h"
#include "APDatabase.h"
#include "APEventAlertDB.h"
#include "APEventRec.h"
#include "APStoreLock.h"
#include "store_support.h"

extern char** environ;

namespace {

using std::chrono::milliseconds;

const std::string kBin = std::string(CAL_BINARY_DIR) + "/bin/";

struct Acknowledged {
    std::string subject;
    long start = 0;
};

// What the processes printed: acknowledged adds by id, acknowledged deletes, and trouble.
struct Outcome {
    std::map<int, Acknowledged> added;
    std::set<int> deleted;
    std::set<int> deleting;  // deletes a writer started (it may have been killed before "del")
    int addedTwice = 0;
    long reads = 0;
    long readFailures = 0;
    std::string errors;
};

class Process {
public:
    Process(const std::vector<std::string>& words, const std::string& out, const std::string& err) {
        std::vector<std::string> copy = words;
        std::vector<char*> argv;
        for (std::string& word : copy) {
            argv.push_back(word.data());
        }
        argv.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                         0644);
        posix_spawn_file_actions_addopen(&actions, 2, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                         0644);
        EXPECT_EQ(posix_spawn(&mPid, argv[0], &actions, nullptr, argv.data(), environ), 0)
            << words[0];
        posix_spawn_file_actions_destroy(&actions);
    }
    void Kill() { ::kill(mPid, SIGKILL); }
    // The exit status, or -signal.
    int Wait() {
        int status = 0;
        if (mPid <= 0 || ::waitpid(mPid, &status, 0) != mPid) {
            return -1000;
        }
        mPid = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

private:
    pid_t mPid = 0;
};

struct Mix {
    const char* name;
    int writers;     // in-process store users
    int ctlWriters;  // calendar-ctl event add, one process per add
    int readers;
    int runMs;
    bool killWriters;  // SIGKILL a writer every few milliseconds and start a new one
    size_t minAdds;    // below this little contention happened and the row proves nothing
};

class SharedStoreTest : public StoreRootTest {
protected:
    void SetUp() override {
        StoreRootTest::SetUp();
        for (const char* program : {"store_stress_driver", "calendar-ctl"}) {
            if (!std::filesystem::exists(kBin + program)) {
                GTEST_SKIP() << program << " is not built in " << kBin;
            }
        }
    }

    std::unique_ptr<Process> Start(const std::string& name, std::vector<std::string> mode) {
        std::vector<std::string> words = {kBin + "store_stress_driver", Root(), StopPath()};
        words.insert(words.end(), mode.begin(), mode.end());
        mOutputs.push_back(Root() + "/" + name);
        return std::make_unique<Process>(words, mOutputs.back() + ".out", mOutputs.back() + ".err");
    }

    std::string StopPath() const { return Root() + "/stop"; }

    Outcome Run(const Mix& mix) {
        mOutputs.clear();
        std::vector<std::unique_ptr<Process>> writers, others;
        for (int w = 0; w < mix.writers; ++w) {
            const std::string tag = "w" + std::to_string(w) + "g0";
            writers.push_back(Start(tag, {"writer", tag}));
        }
        for (int w = 0; w < mix.ctlWriters; ++w) {
            const std::string tag = "c" + std::to_string(w);
            others.push_back(Start(tag, {"ctl-writer", tag, kBin + "calendar-ctl"}));
        }
        for (int r = 0; r < mix.readers; ++r) {
            others.push_back(Start("r" + std::to_string(r), {"reader"}));
        }
        // The mix runs at least runMs and then until enough adds were acknowledged to prove
        // something: a slow or loaded machine takes longer instead of failing.
        const auto soonest = std::chrono::steady_clock::now() + milliseconds(mix.runMs);
        const auto latest = soonest + std::chrono::seconds(60);
        std::mt19937 random(20261123);
        for (int generation = 1; !Enough(mix, soonest, latest); ++generation) {
            std::this_thread::sleep_for(milliseconds(mix.killWriters ? 10 + random() % 70 : 20));
            if (mix.killWriters && !writers.empty()) {
                const size_t victim = random() % writers.size();
                writers[victim]->Kill();
                EXPECT_EQ(writers[victim]->Wait(), -SIGKILL);
                const std::string tag =
                    "w" + std::to_string(victim) + "g" + std::to_string(generation);
                writers[victim] = Start(tag, {"writer", tag});
            }
        }
        WriteFile(StopPath(), "");
        for (auto& process : writers) {
            EXPECT_EQ(process->Wait(), 0);
        }
        for (auto& process : others) {
            EXPECT_EQ(process->Wait(), 0);
        }
        return Collect();
    }

    bool Enough(const Mix& mix, std::chrono::steady_clock::time_point soonest,
                std::chrono::steady_clock::time_point latest) const {
        const auto now = std::chrono::steady_clock::now();
        return now >= latest || (now >= soonest && Collect().added.size() >= mix.minAdds);
    }

    Outcome Collect() const {
        Outcome outcome;
        for (const std::string& output : mOutputs) {
            std::istringstream lines(ReadFile(output + ".out"));
            std::string word;
            while (lines >> word) {
                int id = 0;
                if (word == "add") {
                    Acknowledged ack;
                    lines >> id >> ack.subject >> ack.start;
                    outcome.addedTwice += outcome.added.count(id) ? 1 : 0;
                    outcome.added[id] = ack;
                } else if (word == "del") {
                    lines >> id;
                    outcome.deleted.insert(id);
                } else if (word == "deleting") {
                    lines >> id;
                    outcome.deleting.insert(id);
                } else if (word == "reads") {
                    long reads = 0, failures = 0;
                    lines >> reads >> word >> failures;
                    outcome.reads += reads;
                    outcome.readFailures += failures;
                }
            }
            outcome.errors += ReadFile(output + ".err");
        }
        return outcome;
    }

    std::vector<std::string> mOutputs;
};

std::string IntegrityOf(const std::string& path) {
    sqlite3* db = nullptr;
    std::string answer = "cannot open";
    if (sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(db, "PRAGMA integrity_check", -1, &stmt, nullptr);
        answer = sqlite3_step(stmt) == SQLITE_ROW
                     ? reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0))
                     : sqlite3_errmsg(db);
        sqlite3_finalize(stmt);
    }
    sqlite3_close_v2(db);
    return answer;
}

int SetAsideFiles(const std::string& folder) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        // The damaged file itself, not the journal files that travel with it.
        count +=
            std::regex_search(entry.path().filename().string(), std::regex("\\.corrupt-[0-9-]+$"));
    }
    return count;
}

// Each event, its alert record and its alarm hold what the writer gave them.
void ExpectKept(int id, const Acknowledged& ack) {
    SCOPED_TRACE("id " + std::to_string(id) + " " + ack.subject);
    APEventRec store;
    _EventRecInfo record;
    ASSERT_EQ(store.GetEventRec(id, &record), 1) << "an acknowledged event is missing";
    EXPECT_EQ(Stored(record.subject), ack.subject);
    EXPECT_EQ(record.startStamp, ack.start);
    EXPECT_EQ(record.endStamp, ack.start + 1800);
    EXPECT_EQ(record.alarm, 1);
    _EventAlertInfo alert{};
    ASSERT_EQ(APEventAlertDB().GetEventAlertInfo(record.alertInfoId, &alert), 1);
    EXPECT_EQ(alert.eventTime, ack.start);
    AP_ALERT_CONTEXT alarm;
    ASSERT_TRUE(APAlertDB_GetAlert(alert.daemonId, &alarm));
    EXPECT_EQ(alarm.alertTime, ack.start - 600);
}

TEST_F(SharedStoreTest, EveryAcknowledgedWriteSurvivesTheOthers) {
    const Mix mixes[] = {
        {"four_writers_and_a_reader", 4, 0, 1, 1500, false, 20},
        {"calendar_ctl_writers_beside_others", 1, 2, 1, 1500, false, 10},
        {"writers_killed_at_random", 3, 0, 1, 2000, true, 10},
    };
    for (const Mix& mix : mixes) {
        SCOPED_TRACE(mix.name);
        Restart();
        const Outcome outcome = Run(mix);
        APDatabase::ForgetChecks();
        EXPECT_GE(outcome.added.size(), mix.minAdds);
        std::printf("%s: %zu acknowledged adds, %zu acknowledged deletes, %ld reads\n", mix.name,
                    outcome.added.size(), outcome.deleted.size(), outcome.reads);
        EXPECT_GT(outcome.reads, 20);
        EXPECT_EQ(outcome.readFailures, 0);
        EXPECT_EQ(outcome.addedTwice, 0) << "an id was handed out for two events";
        if (!mix.killWriters) {
            EXPECT_EQ(outcome.errors, "") << "contention is waited out, never reported";
        }
        _EventRecInfo record;
        for (const auto& [id, ack] : outcome.added) {
            // A writer killed after its delete committed but before it said so leaves an id that
            // may rightly be gone; if it is still there, it must be whole.
            const bool mayBeGone = mix.killWriters && outcome.deleting.count(id) != 0 &&
                                   APEventRec().GetEventRec(id, &record) == 0;
            if (outcome.deleted.count(id) == 0 && !mayBeGone) {
                ExpectKept(id, ack);
            }
        }
        for (int id : outcome.deleted) {
            EXPECT_EQ(APEventRec().GetEventRec(id, &record), 0) << "deleted " << id;
        }
        const std::string host = HostPath(kAPEventStoreDevicePath);
        EXPECT_EQ(IntegrityOf(host), "ok");
        EXPECT_EQ(SetAsideFiles(std::filesystem::path(host).parent_path()), 0);
    }
}

// Contention that outlasts the wait is reported as a busy store, and the file stays where it is;
// only damage confirmed while nobody else has the file open sets it aside.
TEST_F(SharedStoreTest, ContentionIsReportedAsBusyAndNeverTakenForDamage) {
    APDatabase::SetBusyWait(milliseconds(200));
    _EventRecInfo record = TimedEvent("first", At(20261102, 9), At(20261102, 10));
    ASSERT_EQ(APEventRec().AddEventRec(&record), 1);
    const std::string host = HostPath(kAPEventStoreDevicePath);
    {
        // Another connection holds the write lock longer than the wait.
        sqlite3* other = nullptr;
        ASSERT_EQ(sqlite3_open(host.c_str(), &other), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
        APEventRec store;
        ASSERT_TRUE(store.IsOpen()) << store.GetLastError();
        EXPECT_EQ(store.AddEventRec(&record), 0);
        EXPECT_NE(store.GetLastError().find("store busy"), std::string::npos)
            << store.GetLastError();
        sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(other);
        EXPECT_EQ(store.AddEventRec(&record), 2) << "the next write, once free, goes through";
    }
    {
        // A process repairing the store holds its lock exclusively: others wait, then say so.
        APStoreLock repair;
        std::string error;
        ASSERT_TRUE(repair.Open(host + ".lock", error)) << error;
        ASSERT_TRUE(repair.LockExclusive(std::chrono::steady_clock::now()));
        APEventRec store;
        EXPECT_FALSE(store.IsOpen());
        EXPECT_NE(store.GetLastError().find("store busy"), std::string::npos);
    }
    {
        // A damaged file that another store user has open is reported and left in place.
        APStoreLock user;
        std::string error;
        ASSERT_TRUE(user.Open(host + ".lock", error)) << error;
        ASSERT_TRUE(user.LockShared(std::chrono::steady_clock::now()));
        WriteFile(host + "-wal", "");
        WriteFile(host, std::string(4096, '\x7f'));
        APDatabase::ForgetChecks();
        APEventRec store;
        EXPECT_FALSE(store.IsOpen());
        EXPECT_NE(store.GetLastError().find("another process has it open"), std::string::npos)
            << store.GetLastError();
        EXPECT_EQ(ReadFile(host), std::string(4096, '\x7f'));
    }
    APDatabase::ForgetChecks();
    APEventRec store;
    EXPECT_TRUE(store.IsOpen()) << "set aside once nobody has it open: " << store.GetLastError();
    EXPECT_EQ(SetAsideFiles(std::filesystem::path(host).parent_path()), 1);
    APDatabase::SetBusyWait(milliseconds(10000));
}

}  // namespace

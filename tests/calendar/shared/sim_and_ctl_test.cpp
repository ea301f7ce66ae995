// calendar-sim and calendar-ctl at once on one device root: while the simulator shows the month,
// calendar-ctl adds and deletes events and broadcasts 10041, and the shown month reloads and
// shows each change. The simulator's script waits (`await 10041`) for each broadcast; before it
// waits it writes a dump that tells the test the screen is ready for the next change.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

extern char** environ;

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

const std::string kBin = std::string(CAL_BINARY_DIR) + "/bin/";

std::string ReadFile(const fs::path& path) {
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

struct Action {
    bool add;
    std::string subject;
    std::vector<std::string> words;  // the rest of `event add`
};

struct Step {
    const char* name;
    std::vector<Action> actions;
    std::vector<const char*> expects;  // script lines checked after the reload
};

// The 10th carries a one-day mark in lane 0 in the event's colour; an all-day event tints the
// 25th; without them both spots show the grid's ground.
const std::vector<Step> kSteps = {
    {"add_a_timed_and_an_all_day_event",
     {{true,
       "Team",
       {"--start", "2026-11-10 10:00", "--end", "2026-11-10 11:00", "--colour", "11548"}},
      {true, "Holiday", {"--start", "2026-11-25 00:00", "--end", "2026-11-25 23:59", "--all-day"}}},
     {"expect pixel 75 156 0 221 0", "expect pixel 130 196 255 214 187"}},
    {"delete_the_timed_one",
     {{false, "Team", {}}},
     {"expect pixel 75 156 228 228 228", "expect pixel 130 196 255 214 187"}},
    {"delete_the_all_day_one",
     {{false, "Holiday", {}}},
     {"expect pixel 75 156 228 228 228", "expect pixel 130 196 228 228 228"}},
};

class SimAndCtlTest : public ::testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(fs::path(CAL_BINARY_DIR) / "tests-tmp");
        std::string pattern = std::string(CAL_BINARY_DIR) + "/tests-tmp/shared-XXXXXX";
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        mWork = pattern;
        mRoot = (mWork / "root").string();
    }
    void TearDown() override {
        if (mSim > 0) {
            ::kill(mSim, SIGKILL);
            ::waitpid(mSim, nullptr, 0);
        }
        if (!HasFailure()) {
            fs::remove_all(mWork);
        }
    }

    std::string Script() const {
        std::string script = "expect shown 11100\nexpect pixel 75 156 228 228 228\n";
        for (size_t i = 0; i < kSteps.size(); ++i) {
            script += "dump " + Ready(i).string() + "\nawait 10041\n";
            for (const char* line : kSteps[i].expects) {
                script += std::string(line) + "\n";
            }
            script += "shot " + (mWork / (std::string(kSteps[i].name) + ".png")).string() + "\n";
        }
        return script;
    }
    fs::path Ready(size_t step) const { return mWork / ("ready-" + std::to_string(step)); }

    void StartSimulator() {
        const fs::path script = mWork / "run.script";
        std::ofstream(script) << Script();
        std::vector<std::string> words = {kBin + "calendar-sim",
                                          "--headless",
                                          "--app",
                                          CAL_CALENDAR_APP,
                                          "--root",
                                          mRoot,
                                          "--now",
                                          "2026-11-21 09:41",
                                          "--script",
                                          script.string()};
        std::vector<char*> argv;
        for (std::string& word : words) {
            argv.push_back(word.data());
        }
        argv.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        const std::string errors = (mWork / "sim-stderr").string();
        posix_spawn_file_actions_addopen(&actions, 2, errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                         0644);
        ASSERT_EQ(posix_spawn(&mSim, argv[0], &actions, nullptr, argv.data(), environ), 0);
        posix_spawn_file_actions_destroy(&actions);
    }

    // Waits for the file, or for the simulator to end (then the file never comes).
    bool WaitFor(const fs::path& path) {
        for (auto end = std::chrono::steady_clock::now() + 30s;
             std::chrono::steady_clock::now() < end; std::this_thread::sleep_for(10ms)) {
            if (fs::exists(path)) {
                return true;
            }
            if (SimulatorEnded(false)) {
                return false;
            }
        }
        return false;
    }

    bool SimulatorEnded(bool wait) {
        int status = 0;
        if (mSim > 0 && ::waitpid(mSim, &status, wait ? 0 : WNOHANG) == mSim) {
            mSim = 0;
            mStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        }
        return mSim == 0;
    }

    // Runs calendar-ctl on the root; its standard output.
    std::string Ctl(const std::vector<std::string>& words) {
        std::string command = "TZ=UTC '" + kBin + "calendar-ctl' --root '" + mRoot + "'";
        for (const std::string& word : words) {
            command += " '" + word + "'";
        }
        const fs::path out = mWork / "ctl-out";
        const int status = std::system((command + " >'" + out.string() + "'").c_str());
        EXPECT_EQ(status, 0) << command;
        return ReadFile(out);
    }

    void Run(const Action& action) {
        if (action.add) {
            std::vector<std::string> words = {"event", "add", "--subject", action.subject};
            words.insert(words.end(), action.words.begin(), action.words.end());
            mIds[action.subject] = std::to_string(std::stoi(Ctl(words)));
        } else {
            Ctl({"event", "delete", mIds.at(action.subject)});
        }
    }

    fs::path mWork;
    std::string mRoot;
    pid_t mSim = 0;
    int mStatus = -1;
    std::map<std::string, std::string> mIds;
};

TEST_F(SimAndCtlTest, TheShownMonthFollowsWhatCalendarCtlChanges) {
    StartSimulator();
    for (size_t i = 0; i < kSteps.size(); ++i) {
        SCOPED_TRACE(kSteps[i].name);
        ASSERT_TRUE(WaitFor(Ready(i))) << ReadFile(mWork / "sim-stderr");
        for (const Action& action : kSteps[i].actions) {
            Run(action);
        }
        Ctl({"send", "10041"});
    }
    SimulatorEnded(true);
    EXPECT_EQ(mStatus, 0) << ReadFile(mWork / "sim-stderr");
}

}  // namespace

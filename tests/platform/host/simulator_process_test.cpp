// The simulator as a process: messages from another process through the socket, one simulator
// per device root, stale and taken sockets, signals, screenshots and the system time format.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "PLBitmap.h"
#include "PLDeviceRoot.h"
#include "PLHostMessageClient.h"
#include "PLHostMessageCodec.h"
#include "PLHostSocketAddress.h"

#if CAL_HAVE_SERVICES
#include "APConfig.h"
#endif

extern char** environ;

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

const std::string kSimulator = std::string(CAL_BINARY_DIR) + "/bin/calendar-sim";
const std::string kSample = std::string(CAL_BINARY_DIR) + "/apps/sample.so";

std::string ReadFile(const fs::path& path) {
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

// A running calendar-sim with its standard error in a file.
class Simulator {
public:
    Simulator(const fs::path& work, const std::string& root, std::vector<std::string> extra)
        : mErrors(work / ("stderr-" + std::to_string(++sCount) + ".txt")) {
        std::vector<std::string> arguments{kSimulator, "--headless", "--app", kSample,
                                           "--root",   root,         "--now", "2026-11-21 09:41"};
        arguments.insert(arguments.end(), extra.begin(), extra.end());
        std::vector<char*> argv;
        for (std::string& argument : arguments) {
            argv.push_back(argument.data());
        }
        argv.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 2, mErrors.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                         0644);
        posix_spawn_file_actions_addchdir_np(&actions, work.c_str());
        if (posix_spawn(&mPid, kSimulator.c_str(), &actions, nullptr, argv.data(), environ) != 0) {
            mPid = -1;
        }
        posix_spawn_file_actions_destroy(&actions);
    }
    ~Simulator() {
        if (mPid > 0 && mStatus < 0) {
            ::kill(mPid, SIGKILL);
            ::waitpid(mPid, nullptr, 0);
        }
    }
    pid_t Pid() const { return mPid; }
    // The exit status, or -1 when it is still running after `limit`.
    int Wait(std::chrono::milliseconds limit = 10s) {
        auto end = std::chrono::steady_clock::now() + limit;
        while (mStatus < 0 && mPid > 0) {
            int status = 0;
            if (::waitpid(mPid, &status, WNOHANG) == mPid) {
                mStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
                break;
            }
            if (std::chrono::steady_clock::now() > end) {
                break;
            }
            std::this_thread::sleep_for(10ms);
        }
        return mStatus;
    }
    std::string Errors() const { return ReadFile(mErrors); }

private:
    static inline int sCount = 0;
    fs::path mErrors;
    pid_t mPid = -1;
    int mStatus = -1;
};

class SimulatorProcess : public ::testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(fs::path(CAL_BINARY_DIR) / "tests-tmp");
        std::string pattern = std::string(CAL_BINARY_DIR) + "/tests-tmp/host-XXXXXX";
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        mWork = pattern;
        mRoot = (mWork / "root").string();
    }
    void TearDown() override { fs::remove_all(mWork); }

    std::string Socket() const { return PLHostMessageCodec::SocketPath(mRoot); }
    // Waits for a started simulator to listen on its socket.
    bool WaitForSocket() const { return WaitForSocket(mRoot); }
    static bool WaitForSocket(const std::string& root) {
        for (int i = 0; i < 500; ++i) {
            if (fs::exists(PLHostMessageCodec::SocketPath(root))) {
                return true;
            }
            std::this_thread::sleep_for(10ms);
        }
        return false;
    }
    fs::path WriteScript(const std::string& text) const {
        fs::path path = mWork / "run.script";
        std::ofstream(path) << text;
        return path;
    }
    // A datagram socket bound at the simulator's socket path; `keep` leaves it open (taken),
    // otherwise the file stays behind with nobody reading it (stale).
    int BindSocketFile(bool keep) const {
        fs::create_directories(fs::path(Socket()).parent_path());
        PLHostSocketAddress address;
        std::string error;
        EXPECT_TRUE(address.Set(Socket(), error)) << error;
        int fd = ::socket(AF_UNIX, SOCK_DGRAM, 0);
        EXPECT_EQ(::bind(fd, address.Get(), address.Size()), 0);
        if (!keep) {
            ::close(fd);
            return -1;
        }
        return fd;
    }

    fs::path mWork;
    std::string mRoot;
};

TEST_F(SimulatorProcess, MessagesFromAnotherProcessReachTheApplication) {
    // A socket address holds at most 107 bytes of path; a root in a deep checkout goes past it.
    const std::string deep = (mWork / std::string(120, 'd') / "root").string();
    ASSERT_GT(PLHostMessageCodec::SocketPath(deep).size(), 107u);
    for (const std::string& root : {mRoot, deep}) {
        SCOPED_TRACE(root);
        const std::string socket = PLHostMessageCodec::SocketPath(root);
        Simulator simulator(mWork, root, {});
        ASSERT_TRUE(WaitForSocket(root)) << simulator.Errors();
        std::string error;
        ASSERT_TRUE(PLHostSendMessage(root, 10041, 0x3F3F3F3F, 0x3F3F3F3F, "", "test", error))
            << error;
        EXPECT_EQ(simulator.Wait(300ms), -1) << "10041 must not end the application";
        ASSERT_TRUE(PLHostSendMessage(root, 5005, 0x3F3F3F3F, 0x3F3F3F3F, "", "test", error))
            << error;
        EXPECT_EQ(simulator.Wait(), 0) << simulator.Errors();
        std::string log = ReadFile(fs::path(root) / "var/log/messages.jsonl");
        EXPECT_NE(log.find("\"id\":5010,"), std::string::npos) << log;
        EXPECT_FALSE(fs::exists(socket)) << "a clean end removes the socket";
    }
}

TEST_F(SimulatorProcess, OneSimulatorPerDeviceRoot) {
    Simulator first(mWork, mRoot, {});
    ASSERT_TRUE(WaitForSocket()) << first.Errors();
    Simulator second(mWork, mRoot, {"--script", WriteScript("").string()});
    EXPECT_EQ(second.Wait(), 3);
    EXPECT_EQ(second.Errors(), "calendar-sim: another simulator (pid " +
                                   std::to_string(first.Pid()) +
                                   ") is running on the device root " + mRoot + "\n");
    // A simulator on another root is not disturbed by the first.
    Simulator elsewhere(mWork, (mWork / "other").string(), {"--script", WriteScript("").string()});
    EXPECT_EQ(elsewhere.Wait(), 0) << elsewhere.Errors();

    std::string error;
    ASSERT_TRUE(PLHostSendMessage(mRoot, 5005, 0, 0, "", "", error)) << error;
    EXPECT_EQ(first.Wait(), 0) << first.Errors();
}

TEST_F(SimulatorProcess, AStaleSocketIsReplaced) {
    BindSocketFile(false);
    ASSERT_TRUE(fs::exists(Socket()));
    Simulator simulator(mWork, mRoot, {"--script", WriteScript("send 10041\n").string()});
    EXPECT_EQ(simulator.Wait(), 0) << simulator.Errors();
    EXPECT_FALSE(fs::exists(Socket()));
}

TEST_F(SimulatorProcess, ATakenSocketIsReported) {
    int taken = BindSocketFile(true);
    Simulator simulator(mWork, mRoot, {"--script", WriteScript("").string()});
    EXPECT_EQ(simulator.Wait(), 3);
    EXPECT_EQ(simulator.Errors(), "calendar-sim: the message socket " + Socket() +
                                      " is taken by another running process\n");
    EXPECT_TRUE(fs::exists(Socket())) << "someone else's socket stays";
    ::close(taken);
}

TEST_F(SimulatorProcess, SignalsEndAHeadlessRunCleanly) {
    for (int signal : {SIGTERM, SIGINT}) {
        SCOPED_TRACE(signal);
        Simulator simulator(mWork, mRoot, {});
        ASSERT_TRUE(WaitForSocket()) << simulator.Errors();
        ::kill(simulator.Pid(), signal);
        EXPECT_EQ(simulator.Wait(), 0) << simulator.Errors();
        EXPECT_FALSE(fs::exists(Socket()));
    }
}

TEST_F(SimulatorProcess, SendingWithoutASimulatorSaysSo) {
    std::string error;
    EXPECT_FALSE(PLHostSendMessage(mRoot, 5005, 0, 0, "", "", error));
    EXPECT_EQ(error, "no simulator is running on " + mRoot);
}

TEST_F(SimulatorProcess, ShotIsTheScreenAsPNG) {
    Simulator simulator(mWork, mRoot,
                        {"--script", WriteScript("tap 62 75\nshot out.png\n").string()});
    ASSERT_EQ(simulator.Wait(), 0) << simulator.Errors();
    PLBitmap* shot = nullptr;
    std::string error;
    ASSERT_TRUE(PLBitmap::LoadPNG((mWork / "out.png").string(), shot, error)) << error;
    std::unique_ptr<PLBitmap> owned(shot);
    EXPECT_EQ(shot->GetWidth(), 240);
    EXPECT_EQ(shot->GetHeight(), 320);
    struct Probe {
        const char* name;
        int x, y;
        uint32_t rgb;
    };
    const Probe probes[] = {
        {"StatusArea", 2, 2, 0x1C2430},
        {"BatteryFill", 215, 22, 0x78C88C},
        {"ButtonTurnedOn", 20, 60, 0xDC781E},
        {"Background", 200, 300, 0xEBEEF2},
    };
    for (const Probe& probe : probes) {
        SCOPED_TRACE(probe.name);
        EXPECT_EQ(shot->GetPixel(probe.x, probe.y) & 0xFFFFFF, probe.rgb);
    }
    for (const auto& entry : fs::directory_iterator(mWork)) {
        EXPECT_EQ(entry.path().string().find(".tmp."), std::string::npos)
            << "left behind: " << entry.path();
    }
}

#if CAL_HAVE_SERVICES
TEST_F(SimulatorProcess, StatusAreaFollowsTheSystemTimeFormat) {
    struct Row {
        const char* name;
        long format;
        const char* shown;
    };
    const Row rows[] = {{"TwentyFourHour", 2, "13:05"}, {"TwelveHour", 1, "1:05 PM"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLDeviceRoot::SetRoot(mRoot);
        fs::create_directories(fs::path(mRoot) / "var/lib");
        ASSERT_TRUE(APConfigSystem_SetTimeFormat(row.format) & 0xFF);
        PLDeviceRoot::SetRoot("");
        std::string script =
            "clock \"2026-11-21 13:05\"\nexpect text 9001 \"" + std::string(row.shown) + "\"\n";
        Simulator simulator(mWork, mRoot, {"--script", WriteScript(script).string()});
        EXPECT_EQ(simulator.Wait(), 0) << simulator.Errors();
    }
}
#endif

}  // namespace

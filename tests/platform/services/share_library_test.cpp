// The share library as the calendar uses it: loaded with dlopen, its sheet driven by a scripted
// event source that taps the buttons or presses keys, files saved into the device's outbox.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <deque>
#include <fstream>
#include <sstream>

#include "PLAppContext.h"
#include "PLDeviceRoot.h"
#include "PLEvent.h"
#include "PLEventLoop.h"
#include "PLEventSource.h"
#include "PLScreen.h"
#include "PLView.h"
#include "VtShare.h"
#include "store_support.h"

namespace {

class ScriptedSource : public PLEventSource {
public:
    explicit ScriptedSource(std::deque<PLEvent> events) : mEvents(std::move(events)) {}
    bool NextEvent(PLEventLoop&, PLEvent& event) override {
        if (mEvents.empty()) {
            return false;
        }
        event = mEvents.front();
        mEvents.pop_front();
        return true;
    }

private:
    std::deque<PLEvent> mEvents;
};

std::deque<PLEvent> Tap(int x, int y) {
    PLEvent down;
    down.kind = PLEvent::Kind::PenDown;
    down.point = PLPoint{static_cast<int16_t>(y), static_cast<int16_t>(x)};
    PLEvent up = down;
    up.kind = PLEvent::Kind::PenUp;
    return {down, up};
}

std::deque<PLEvent> Key(uint8_t code) {
    PLEvent key;
    key.kind = PLEvent::Kind::Key;
    key.key = code;
    return {key};
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

class ShareLibraryTest : public StoreRootTest {
protected:
    void SetUp() override {
        StoreRootTest::SetUp();
        std::string path = std::string(CAL_BINARY_DIR) + "/lib/libVtShare_shareui.so";
        mHandle = dlopen(path.c_str(), RTLD_LAZY);
        ASSERT_NE(mHandle, nullptr) << dlerror();
        mMake = reinterpret_cast<MakeVtShareDlgFn>(dlsym(mHandle, "MakeVtShareDlg"));
        mDestroy = reinterpret_cast<DestroyShareViewFn>(dlsym(mHandle, "DestroyShareView"));
        ASSERT_NE(mMake, nullptr);
        ASSERT_NE(mDestroy, nullptr);
        mRoot = new PLView(1, PLPoint{0, 0}, PLSize{320, 240});
        PLAppContext::GetInstance()->GetScreen().SetRoot(mRoot);
        PLDeviceRoot::MakeParentDirectories("/tmp/x");
    }
    void TearDown() override {
        PLEventLoop& loop = PLAppContext::GetInstance()->GetEventLoop();
        loop.SetSource(nullptr);
        loop.Reset();
        PLAppContext::GetInstance()->GetScreen().SetRoot(nullptr);
        delete mRoot;
        if (mHandle != nullptr) {
            mDestroy();
            dlclose(mHandle);
        }
        StoreRootTest::TearDown();
    }
    int Share(const std::vector<std::string>& files, std::deque<PLEvent> script) {
        ScriptedSource source(std::move(script));
        PLEventLoop& loop = PLAppContext::GetInstance()->GetEventLoop();
        loop.SetSource(&source);
        PLVector<PLBasicString<char>> paths;
        for (const std::string& f : files) {
            paths.Append(PLBasicString<char>(f));
        }
        int result = mMake(paths);
        loop.SetSource(nullptr);
        loop.Reset();
        return result;
    }

    void* mHandle = nullptr;
    MakeVtShareDlgFn mMake = nullptr;
    DestroyShareViewFn mDestroy = nullptr;
    PLView* mRoot = nullptr;
};

// Screen points of the sheet's two buttons (the sheet sits below the 45-pixel status area).
constexpr int kSaveX = 120, kCancelX = 218, kBarY = 45 + 239 + 18;

TEST_F(ShareLibraryTest, SheetSavesOrCancels) {
    struct Row {
        const char* name;
        std::deque<PLEvent> script;
        int expected;
    };
    const Row rows[] = {
        {"tap_save", Tap(kSaveX, kBarY), 2},
        {"tap_cancel", Tap(kCancelX, kBarY), 0},
        {"key_ok_saves", Key(18), 2},
        {"key_left_cancels", Key(28), 0},
        {"tap_outside_buttons_then_cancel",
         [] {
             auto s = Tap(120, 150);
             for (auto& e : Tap(kCancelX, kBarY)) {
                 s.push_back(e);
             }
             return s;
         }(),
         0},
        {"script_ends_without_a_choice", {}, 0},
    };
    std::ofstream(HostPath("/tmp/17.vcs")) << "event 17";
    std::ofstream(HostPath("/tmp/18.vcs")) << "event 18";
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::system(("rm -rf '" + HostPath("/var/outbox") + "'").c_str());
        EXPECT_EQ(Share({"/tmp/17.vcs", "/tmp/18.vcs"}, row.script), row.expected);
        EXPECT_EQ(mRoot->FindPane(13000), nullptr) << "the sheet is gone after the call";
        struct stat info {};
        bool saved = stat(HostPath("/var/outbox/17.vcs").c_str(), &info) == 0;
        EXPECT_EQ(saved, row.expected > 0);
        if (saved) {
            EXPECT_EQ(ReadFile(HostPath("/var/outbox/18.vcs")), "event 18");
        }
    }
}

TEST_F(ShareLibraryTest, OutboxFilesAreNeverOverwrittenAndMissingFilesNotCounted) {
    std::ofstream(HostPath("/tmp/17.vcs")) << "second export";
    PLDeviceRoot::MakeParentDirectories("/var/outbox/x");
    std::ofstream(HostPath("/var/outbox/17.vcs")) << "first export";
    EXPECT_EQ(Share({"/tmp/17.vcs", "/tmp/missing.vcs"}, Tap(kSaveX, kBarY)), 1);
    EXPECT_EQ(ReadFile(HostPath("/var/outbox/17.vcs")), "first export");
    EXPECT_EQ(ReadFile(HostPath("/var/outbox/17_1.vcs")), "second export");
    EXPECT_EQ(Share({}, Tap(kSaveX, kBarY)), 0) << "an empty list shows no sheet";
}

}  // namespace

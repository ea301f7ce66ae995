// The share library as the calendar uses it: loaded with dlopen, its sheet driven by a scripted
// event source that taps the buttons or presses keys, files saved into the device's outbox and
// never over one saved before.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <deque>
#include <filesystem>

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

// Screen points of the sheet's two buttons (the sheet sits below the 45-pixel status area).
constexpr int kSaveX = 120, kCancelX = 218, kBarY = 45 + 239 + 18;

// Pen taps at (x, y) pairs, or a key press for a single value.
std::deque<PLEvent> Script(std::initializer_list<std::pair<int, int>> taps, int key = -1) {
    std::deque<PLEvent> events;
    for (const auto& [x, y] : taps) {
        PLEvent down;
        down.kind = PLEvent::Kind::PenDown;
        down.point = PLPoint{int16_t(y), int16_t(x)};
        PLEvent up = down;
        up.kind = PLEvent::Kind::PenUp;
        events.insert(events.end(), {down, up});
    }
    if (key >= 0) {
        PLEvent press;
        press.kind = PLEvent::Kind::Key;
        press.key = uint8_t(key);
        events.push_back(press);
    }
    return events;
}

class ShareLibraryTest : public StoreRootTest {
protected:
    void SetUp() override {
        StoreRootTest::SetUp();
        const std::string path = std::string(CAL_BINARY_DIR) + "/lib/libVtShare_shareui.so";
        mHandle = dlopen(path.c_str(), RTLD_LAZY);
        ASSERT_NE(mHandle, nullptr) << dlerror();
        mMake = reinterpret_cast<MakeVtShareDlgFn>(dlsym(mHandle, "MakeVtShareDlg"));
        mDestroy = reinterpret_cast<DestroyShareViewFn>(dlsym(mHandle, "DestroyShareView"));
        ASSERT_TRUE(mMake && mDestroy);
        PLAppContext::GetInstance()->GetScreen().SetRoot(mRoot.get());
        PLDeviceRoot::MakeParentDirectories("/tmp/x");
    }
    void TearDown() override {
        PLAppContext::GetInstance()->GetScreen().SetRoot(nullptr);
        mRoot.reset();  // before the library whose panes it may have held goes
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
        const int result = mMake(paths);
        loop.SetSource(nullptr);
        loop.Reset();
        EXPECT_EQ(mRoot->FindPane(13000), nullptr) << "the sheet is gone after the call";
        return result;
    }

    void* mHandle = nullptr;
    MakeVtShareDlgFn mMake = nullptr;
    DestroyShareViewFn mDestroy = nullptr;
    std::unique_ptr<PLView> mRoot = std::make_unique<PLView>(1, PLPoint{0, 0}, PLSize{320, 240});
};

TEST_F(ShareLibraryTest, SheetSavesOrCancels) {
    struct Row {
        const char* name;
        std::deque<PLEvent> script;
        int expected;
    };
    const Row rows[] = {
        {"tap_save", Script({{kSaveX, kBarY}}), 2},
        {"tap_cancel", Script({{kCancelX, kBarY}}), 0},
        {"key_ok_saves", Script({}, 18), 2},
        {"key_left_cancels", Script({}, 28), 0},
        {"tap_outside_buttons_then_cancel", Script({{120, 150}, {kCancelX, kBarY}}), 0},
        {"script_ends_without_a_choice", {}, 0},
    };
    WriteFile(HostPath("/tmp/17.vcs"), "event 17");
    WriteFile(HostPath("/tmp/18.vcs"), "event 18");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::filesystem::remove_all(HostPath("/var/outbox"));
        EXPECT_EQ(Share({"/tmp/17.vcs", "/tmp/18.vcs"}, row.script), row.expected);
        EXPECT_EQ(ReadFile(HostPath("/var/outbox/18.vcs")), row.expected ? "event 18" : "");
    }
}

TEST_F(ShareLibraryTest, OutboxFilesAreNeverOverwrittenAndMissingFilesNotCounted) {
    WriteFile(HostPath("/tmp/17.vcs"), "second export");
    PLDeviceRoot::MakeParentDirectories("/var/outbox/x");
    WriteFile(HostPath("/var/outbox/17.vcs"), "first export");
    EXPECT_EQ(Share({"/tmp/17.vcs", "/tmp/missing.vcs"}, Script({{kSaveX, kBarY}})), 1);
    EXPECT_EQ(ReadFile(HostPath("/var/outbox/17.vcs")), "first export");
    EXPECT_EQ(ReadFile(HostPath("/var/outbox/17_1.vcs")), "second export");
    EXPECT_EQ(Share({}, Script({{kSaveX, kBarY}})), 0) << "an empty list shows no sheet";
}

}  // namespace

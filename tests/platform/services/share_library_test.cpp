// The share library as the calendar uses it: loaded with dlopen, its sheet driven by a scripted
// event source that taps the buttons or presses keys, files saved into the device's outbox and
// never over one saved before.
#include <dlfcn.h>

#include <deque>
#include <filesystem>
#include <tuple>

#include "PLDeviceRoot.h"
#include "VtShare.h"
#include "platform/toolkit/gui_support.h"
#include "store_support.h"

namespace {

// Screen points of the sheet's two buttons (the sheet sits below the 45-pixel status area).
constexpr int kSaveX = 120, kCancelX = 218, kBarY = 45 + 239 + 18;

// Pen taps at (x, y), then a key press when `key` is given.
std::deque<PLEvent> Script(std::initializer_list<std::pair<int, int>> taps, int key = -1) {
    std::deque<PLEvent> events;
    for (const auto& [x, y] : taps) {
        events.insert(events.end(),
                      {Pen(PLEvent::Kind::PenDown, x, y), Pen(PLEvent::Kind::PenUp, x, y)});
    }
    if (key >= 0) {
        events.push_back(Key(uint8_t(key)));
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
        FakeEventSource source;
        source.events = std::move(script);
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

// In order on one device: what each sheet returns and how many files the outbox holds after it.
TEST_F(ShareLibraryTest, SheetSavesIntoTheOutboxBesideEarlierFilesOrCancels) {
    WriteFile(HostPath("/tmp/17.vcs"), "event 17");
    WriteFile(HostPath("/tmp/18.vcs"), "event 18");
    const std::vector<std::string> both = {"/tmp/17.vcs", "/tmp/18.vcs"};
    const std::deque<PLEvent> save = Script({{kSaveX, kBarY}}),
                              cancel = Script({{kCancelX, kBarY}});
    // Name, files, script, what the sheet returns, files in the outbox afterwards.
    const std::tuple<const char*, std::vector<std::string>, std::deque<PLEvent>, int, long> rows[] =
        {
            {"tap_cancel", both, cancel, 0, 0},
            {"key_left_cancels", both, Script({}, 28), 0, 0},
            {"tap_outside_buttons_then_cancel", both, Script({{120, 150}, {kCancelX, kBarY}}), 0,
             0},
            {"script_ends_without_a_choice", both, {}, 0, 0},
            {"empty_list_shows_no_sheet", {}, save, 0, 0},
            {"tap_save", both, save, 2, 2},
            {"key_ok_saves_without_overwriting", both, Script({}, 18), 2, 4},
            {"missing_file_not_counted", {"/tmp/missing.vcs", "/tmp/18.vcs"}, save, 1, 5},
        };
    const std::string outbox = HostPath("/var/outbox");
    for (const auto& [name, files, script, saved, inOutbox] : rows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(Share(files, script), saved);
        std::error_code none;  // an outbox not made yet holds no files
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(outbox, none), {}), inOutbox);
    }
    EXPECT_EQ(ReadFile(outbox + "/17.vcs"), "event 17");
    EXPECT_EQ(ReadFile(outbox + "/18_1.vcs"), "event 18");
    EXPECT_EQ(ReadFile(outbox + "/18_2.vcs"), "event 18");
}

}  // namespace

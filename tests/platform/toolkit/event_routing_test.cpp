// The event loop: pen routing by hit, tracking and pen-down pane; keys to the target and then the
// application; main and nested loops; timers on the pinned clock.
#include <gtest/gtest.h>

#include <functional>

#include "PLApplication.h"
#include "PLClock.h"
#include "PLEventDispatcher.h"
#include "gui_support.h"

namespace {

// Takes every key it is offered, and shuts the application down on key 31.
class RecordingApp : public PLApplication {
public:
    explicit RecordingApp(std::vector<std::string>* log) : mLog(log) {}
    bool DoKeyCommand(char key, short, PLKeyModifiers) override {
        mLog->push_back("app key " + std::to_string(int(uint8_t(key))));
        if (uint8_t(key) == 31) {
            PLEventDispatcher::ShutdownEventLoops();
        }
        return true;
    }

private:
    std::vector<std::string>* mLog;
};

constexpr auto kDown = PLEvent::Kind::PenDown;
constexpr auto kMove = PLEvent::Kind::PenMove;
constexpr auto kUp = PLEvent::Kind::PenUp;

std::vector<PLEvent> Tap(int x, int y) {
    return {Pen(kDown, x, y), Pen(kUp, x, y)};
}

// back (0,0)-(100,100); front (50,50)-(150,150) above it with child (60,60)-(80,80);
// locked (x 0..50, y 200..250) is disabled and holds an enabled pane. Rebuilt for every row.
class PenRoutingTest : public GuiTest {
public:
    void Build() {
        ClearRoot();
        back = Add(root.get(), Recording("back", 1, {0, 0}, {100, 100}));
        front = Add(root.get(), Recording("front", 2, {50, 50}, {100, 100}));
        Add(front, Recording("child", 3, {10, 10}, {20, 20}));
        RecordingPane* locked = Add(root.get(), Recording("locked", 4, {200, 0}, {50, 50}));
        Add(locked, Recording("inLocked", 5, {5, 5}, {20, 20}));
        locked->SetEnabled(false, false);
    }
    RecordingPane* back = nullptr;
    RecordingPane* front = nullptr;
};

using Hook = std::function<void(PenRoutingTest&)>;

TEST_F(PenRoutingTest, PenGoesToTheTopmostHitThenToThePenDownOrTrackingPane) {
    struct Row {
        const char* name;
        std::vector<PLEvent> events;
        std::vector<std::string> expected;
        Hook before;      // before the first event
        Hook afterFirst;  // between the first and the second event
    };
    const Hook track = [](PenRoutingTest& t) { t.front->StartTracking(); };
    // clang-format off
    const std::vector<Row> rows = {
        {"only the back pane", Tap(10, 20), {"back down 10,20", "back up 10,20"}},
        {"overlap: the front pane is on top", Tap(55, 52), {"front down 5,2", "front up 5,2"}},
        {"a sub-pane before its parent", Tap(65, 70), {"child down 5,10", "child up 5,10"}},
        {"the root where nothing else is", Tap(200, 300), {"root down 200,300", "root up 200,300"}},
        {"a disabled pane swallows the pen", Tap(20, 220), {}},
        {"so does a pane inside a disabled one", Tap(10, 210), {}},
        {"outside the screen", Tap(-5, 10), {}},
        {"below the screen", Tap(10, 320), {}},
        {"hidden panes are not hit", Tap(65, 70), {"back down 65,70", "back up 65,70"},
         [](PenRoutingTest& t) { t.front->Hide(false); }},
        {"moves and pen-up go to the pen-down pane wherever the pen is",
         {Pen(kDown, 10, 10), Pen(kMove, 120, 130), Pen(kUp, 200, 300)},
         {"back down 10,10", "back move 120,130", "back up 200,300"}},
        {"a tracking pane takes moves and the pen-up",
         {Pen(kDown, 10, 10), Pen(kMove, 60, 60), Pen(kUp, 70, 75)},
         {"back down 10,10", "front move 10,10", "front up 20,25"}, nullptr, track},
        {"tracking ends with the pen-up",
         {Pen(kDown, 10, 10), Pen(kUp, 70, 75), Pen(kDown, 20, 20), Pen(kUp, 21, 21)},
         {"back down 10,10", "front up 20,25", "back down 20,20", "back up 21,21"}, nullptr, track},
        {"a swallowed pen-down leaves nobody to get the pen-up",
         {Pen(kDown, 20, 220), Pen(kMove, 10, 10), Pen(kUp, 10, 10)}, {}},
        {"a pen-up without a pen-down goes nowhere", {Pen(kUp, 10, 10)}, {}},
        {"a pane deleted between pen-down and pen-up is forgotten",
         Tap(10, 10), {"back down 10,10"}, nullptr, [](PenRoutingTest& t) { delete t.back; }},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Build();
        if (row.before) {
            row.before(*this);
        }
        for (size_t i = 0; i < row.events.size(); ++i) {
            Loop().Dispatch(row.events[i]);
            if (i == 0 && row.afterFirst) {
                row.afterFirst(*this);
            }
        }
        EXPECT_EQ(log, row.expected);
        EXPECT_EQ(Loop().GetTrackingPane(), nullptr);
    }
}

TEST_F(GuiTest, KeysGoToTheTargetThenToTheApplicationAndEndLoops) {
    RecordingApp app(&log);
    PLAppContext::GetInstance()->SetApplication(&app);
    RecordingPane* view = Add(root.get(), Recording("view", 1, {0, 0}, {10, 10}));
    const std::vector<std::tuple<const char*, bool, bool, std::vector<std::string>>> rows = {
        {"handled by the target", true, true, {"view key 17"}},
        {"not handled: the application gets it", true, false, {"view key 17", "app key 17"}},
        {"no target: the application only", false, false, {"app key 17"}},
    };
    for (const auto& [name, hasTarget, targetHandles, expected] : rows) {
        SCOPED_TRACE(name);
        log.clear();
        Loop().SetTarget(hasTarget ? view : nullptr);
        view->handlesKeys = targetHandles;
        Loop().Dispatch(Key(kPLKeyUp));
        EXPECT_EQ(log, expected);
    }

    // A nested loop runs until key 18 has arrived; key 31 shuts every loop down.
    Loop().SetTarget(nullptr);
    auto answered = [this] { return !log.empty() && log.back() == "app key 18"; };
    const std::vector<std::tuple<const char*, bool, std::vector<uint8_t>, bool, size_t>> loops = {
        {"nested, answered: later events stay queued", true, {17, 18, 19, 20}, true, 2},
        {"nested, source runs dry first", true, {17, 19}, false, 0},
        {"nested, shutdown ends it", true, {17, 31, 18}, false, 1},
        {"main loop, shutdown ends it", false, {17, 31, 18}, false, 1},
        {"main loop, source runs dry", false, {17, 18}, false, 0},
    };
    for (const auto& [name, nested, keys, result, left] : loops) {
        SCOPED_TRACE(name);
        log.clear();
        source.events.clear();
        for (uint8_t k : keys) {
            source.events.push_back(Key(k));
        }
        if (nested) {
            EXPECT_EQ(Loop().RunNested(answered), result);
        } else {
            Loop().Run();
        }
        EXPECT_EQ(source.events.size(), left);
        Loop().Reset();
    }
    PLAppContext::GetInstance()->SetApplication(nullptr);
}

TEST_F(GuiTest, TimersFireFromTheIdleWorkWhenThePinnedClockReachesThem) {
    const int64_t start = 1'750'000'000'000;
    PLClock::Pin(start);
    std::vector<std::string> fired;
    Loop().AddTimer(500, [&] { fired.push_back("half"); });
    const uint32_t cancelled = Loop().AddTimer(700, [&] { fired.push_back("cancelled"); });
    Loop().AddTimer(1000, [&] {
        fired.push_back("one");
        // Re-arming with no delay waits for the next idle round.
        Loop().AddTimer(0, [&] { fired.push_back("again"); });
    });
    Loop().CancelTimer(cancelled);
    EXPECT_EQ(Loop().NextTimerDeadline(), start + 500);
    const std::vector<std::tuple<const char*, int64_t, std::vector<std::string>>> rows = {
        {"nothing due yet", 499, {}},
        {"the first deadline reached", 1, {"half"}},
        {"a cancelled timer never fires", 300, {"half"}},
        {"the second deadline", 200, {"half", "one"}},
        {"the re-armed timer on the next round", 0, {"half", "one", "again"}},
    };
    for (const auto& [name, advanceMs, firedSoFar] : rows) {
        SCOPED_TRACE(name);
        PLClock::Advance(advanceMs);
        Loop().ProcessIdle();
        EXPECT_EQ(fired, firedSoFar);
    }
    EXPECT_EQ(Loop().NextTimerDeadline(), -1);
    PLClock::Unpin();
}

}  // namespace

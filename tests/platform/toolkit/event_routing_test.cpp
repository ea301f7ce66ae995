// The event loop: pen routing by hit, tracking and pen-down pane; keys to the target and then the
// application; messages and text; nested loops; timers on the pinned clock; posted work.
#include <gtest/gtest.h>

#include <thread>

#include "PLApplication.h"
#include "PLClock.h"
#include "PLEventDispatcher.h"
#include "PLListener.h"
#include "PLMessage.h"
#include "gui_support.h"

namespace {

class RecordingApp : public PLApplication {
public:
    explicit RecordingApp(std::vector<std::string>* log) : mLog(log) {}
    bool DoKeyCommand(char key, short, PLKeyModifiers) override {
        mLog->push_back("app key " + std::to_string(int(uint8_t(key))));
        if (shutdownKey != 0 && uint8_t(key) == shutdownKey) {
            PLEventDispatcher::ShutdownEventLoops();
        }
        return true;
    }
    uint8_t shutdownKey = 0;

private:
    std::vector<std::string>* mLog;
};

class MessageRecorder : public PLListener {
public:
    void Listen(PLMessage* message) override { ids.push_back(message->GetMessageID()); }
    std::vector<uint32_t> ids;
};

PLEvent Pen(PLEvent::Kind kind, int x, int y) {
    PLEvent e;
    e.kind = kind;
    e.point = {y, x};
    return e;
}

PLEvent Key(uint8_t code) {
    PLEvent e;
    e.kind = PLEvent::Kind::Key;
    e.key = code;
    return e;
}

constexpr auto kDown = PLEvent::Kind::PenDown;
constexpr auto kMove = PLEvent::Kind::PenMove;
constexpr auto kUp = PLEvent::Kind::PenUp;

// back (0,0)-(100,100); front (50,50)-(150,150) above it with child (60,60)-(80,80);
// locked (x 0..50, y 200..250) is disabled and holds an enabled pane.
class PenRoutingTest : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        back = new RecordingPane("back", &log, 1, {0, 0}, {100, 100});
        front = new RecordingPane("front", &log, 2, {50, 50}, {100, 100});
        child = new RecordingPane("child", &log, 3, {10, 10}, {20, 20});
        locked = new RecordingPane("locked", &log, 4, {200, 0}, {50, 50});
        inLocked = new RecordingPane("inLocked", &log, 5, {5, 5}, {20, 20});
        root->AddSubPane(back, false);
        root->AddSubPane(front, false);
        front->AddSubPane(child, false);
        root->AddSubPane(locked, false);
        locked->AddSubPane(inLocked, false);
        locked->SetEnabled(false, false);
    }

public:
    void Send(const std::vector<PLEvent>& events) {
        for (const PLEvent& e : events) {
            Loop().Dispatch(e);
        }
    }
    RecordingPane* back = nullptr;
    RecordingPane* front = nullptr;
    RecordingPane* child = nullptr;
    RecordingPane* locked = nullptr;
    RecordingPane* inLocked = nullptr;
};

TEST_F(PenRoutingTest, TapGoesToTheDeepestTopmostPaneInLocalCoordinates) {
    struct Row {
        const char* name;
        int x;
        int y;
        std::vector<std::string> expected;
    };
    const std::vector<Row> rows = {
        {"only the back pane", 10, 20, {"back down 10,20", "back up 10,20"}},
        {"overlap: the front pane is on top", 55, 52, {"front down 5,2", "front up 5,2"}},
        {"a sub-pane before its parent", 65, 70, {"child down 5,10", "child up 5,10"}},
        {"the root where nothing else is", 200, 300, {"root down 200,300", "root up 200,300"}},
        {"a disabled pane swallows the pen", 20, 220, {}},
        {"so does a pane inside a disabled one", 10, 210, {}},
        {"outside the screen", -5, 10, {}},
        {"below the screen", 10, 320, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        log.clear();
        Send({Pen(kDown, row.x, row.y), Pen(kUp, row.x, row.y)});
        EXPECT_EQ(log, row.expected);
    }
}

TEST_F(PenRoutingTest, HiddenPanesAreNotHit) {
    front->Hide(false);
    Send({Pen(kDown, 65, 70), Pen(kUp, 65, 70)});
    EXPECT_EQ(log, (std::vector<std::string>{"back down 65,70", "back up 65,70"}));
}

TEST_F(PenRoutingTest, GesturesFollowThePenDownPaneOrTheTrackingPane) {
    struct Row {
        const char* name;
        std::function<void(PenRoutingTest&)> before;
        std::vector<PLEvent> events;
        std::vector<std::string> expected;
    };
    const std::vector<Row> rows = {
        {"moves and pen-up go to the pen-down pane wherever the pen is",
         nullptr,
         {Pen(kDown, 10, 10), Pen(kMove, 120, 130), Pen(kUp, 200, 300)},
         {"back down 10,10", "back move 120,130", "back up 200,300"}},
        {"a tracking pane takes moves and the pen-up",
         [](PenRoutingTest& t) { t.front->StartTracking(); },
         {Pen(kDown, 10, 10), Pen(kMove, 60, 60), Pen(kUp, 70, 75)},
         {"back down 10,10", "front move 10,10", "front up 20,25"}},
        {"tracking ends with the pen-up",
         [](PenRoutingTest& t) { t.front->StartTracking(); },
         {Pen(kDown, 10, 10), Pen(kUp, 70, 75), Pen(kDown, 20, 20), Pen(kUp, 21, 21)},
         {"back down 10,10", "front up 20,25", "back down 20,20", "back up 21,21"}},
        {"a swallowed pen-down leaves nobody to get the pen-up",
         nullptr,
         {Pen(kDown, 20, 220), Pen(kMove, 10, 10), Pen(kUp, 10, 10)},
         {}},
        {"a pen-up without a pen-down goes nowhere", nullptr, {Pen(kUp, 10, 10)}, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        log.clear();
        if (row.before) {
            row.before(*this);
        }
        Send(row.events);
        EXPECT_EQ(log, row.expected);
        EXPECT_EQ(Loop().GetTrackingPane(), nullptr);
    }
}

TEST_F(PenRoutingTest, PaneDeletedBetweenPenDownAndUpIsForgotten) {
    Send({Pen(kDown, 10, 10)});
    root->RemoveSubPane(back);
    delete back;
    back = nullptr;
    log.clear();
    Send({Pen(kUp, 10, 10)});
    EXPECT_TRUE(log.empty());
}

TEST_F(GuiTest, KeysGoToTheTargetThenToTheApplication) {
    RecordingApp app(&log);
    PLAppContext::GetInstance()->SetApplication(&app);
    auto* view = new RecordingPane("view", &log, 1, {0, 0}, {10, 10});
    root->AddSubPane(view, false);
    struct Row {
        const char* name;
        bool hasTarget;
        bool targetHandles;
        std::vector<std::string> expected;
    };
    const std::vector<Row> rows = {
        {"handled by the target", true, true, {"view key 17"}},
        {"not handled: the application gets it", true, false, {"view key 17", "app key 17"}},
        {"no target: the application only", false, false, {"app key 17"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        log.clear();
        Loop().SetTarget(row.hasTarget ? view : nullptr);
        view->handlesKeys = row.targetHandles;
        Loop().Dispatch(Key(kPLKeyUp));
        EXPECT_EQ(log, row.expected);
    }
    PLAppContext::GetInstance()->SetApplication(nullptr);
}

TEST_F(GuiTest, MessagesGoToTheDispatcherAndTextToTheSink) {
    MessageRecorder recorder;
    PLAppContext::GetInstance()->GetEventDispatcher().AddListener(&recorder);
    PLEvent message;
    message.kind = PLEvent::Kind::Message;
    message.message = std::make_shared<PLMessage>(10041, 0, 0, kEmptyString, kEmptyString);
    Loop().Dispatch(message);
    EXPECT_EQ(recorder.ids, std::vector<uint32_t>{10041});

    std::string typed;
    PLEvent text;
    text.kind = PLEvent::Kind::Text;
    text.text = "日本";
    Loop().Dispatch(text);  // no sink yet: dropped
    Loop().SetTextSink([&typed](const std::string& t) { typed += t; });
    text.text = "abc";
    Loop().Dispatch(text);
    EXPECT_EQ(typed, "abc");
    PLAppContext::GetInstance()->GetEventDispatcher().RemoveListener(&recorder);
}

// A modal dialog's loop: ends when its condition holds, leaving later events to the outer loop.
// Its pane answers on key 18 and shuts the application down on key 31.
class DialogPane : public PLView {
public:
    explicit DialogPane(bool* answered) : PLView(9, {0, 0}, {10, 10}), mAnswered(answered) {}
    bool DoKeyCommand(char key, short, PLKeyModifiers) override {
        if (uint8_t(key) == 18) {
            *mAnswered = true;
        } else if (uint8_t(key) == 31) {
            PLEventDispatcher::ShutdownEventLoops();
        }
        return true;
    }

private:
    bool* mAnswered;
};

TEST_F(GuiTest, NestedLoopEndsOnItsConditionShutdownOrADrySource) {
    struct Row {
        const char* name;
        std::vector<uint8_t> keys;
        bool expectedResult;
        size_t expectedLeft;
    };
    const std::vector<Row> rows = {
        {"answered: later events stay queued", {17, 18, 19, 20}, true, 2},
        {"source runs dry first", {17, 19}, false, 0},
        {"shutdown ends it", {17, 31, 18}, false, 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        bool answered = false;
        auto* dialog = new DialogPane(&answered);
        root->AddSubPane(dialog, false);
        Loop().SetTarget(dialog);
        source.events.clear();
        for (uint8_t k : row.keys) {
            source.Key(k);
        }
        EXPECT_EQ(Loop().RunNested([&] { return answered; }), row.expectedResult);
        EXPECT_EQ(source.events.size(), row.expectedLeft);
        EXPECT_EQ(Loop().GetNestingDepth(), 0);
        Loop().Reset();
        delete dialog;
    }
}

TEST_F(GuiTest, RunEndsOnShutdownAndLeavesTheRestQueued) {
    RecordingApp app(&log);
    PLAppContext::GetInstance()->SetApplication(&app);
    source.Key(17);
    source.Key(18);
    source.Key(19);
    app.shutdownKey = 18;
    Loop().Run();
    EXPECT_EQ(log, (std::vector<std::string>{"app key 17", "app key 18"}));
    EXPECT_EQ(source.events.size(), 1u);
    EXPECT_TRUE(Loop().IsShuttingDown());
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
    struct Row {
        const char* name;
        int64_t advanceMs;
        std::vector<std::string> firedSoFar;
    };
    const std::vector<Row> rows = {
        {"nothing due yet", 499, {}},
        {"the first deadline reached", 1, {"half"}},
        {"a cancelled timer never fires", 300, {"half"}},
        {"the second deadline", 200, {"half", "one"}},
        {"the re-armed timer on the next round", 0, {"half", "one", "again"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLClock::Advance(row.advanceMs);
        Loop().ProcessIdle();
        EXPECT_EQ(fired, row.firedSoFar);
    }
    EXPECT_EQ(Loop().NextTimerDeadline(), -1);
    PLClock::Unpin();
}

TEST_F(GuiTest, WorkPostedFromAnotherThreadRunsOnTheIdleWork) {
    int ran = 0;
    std::thread poster([&] { Loop().Post([&] { ++ran; }); });
    poster.join();
    EXPECT_EQ(ran, 0);
    Loop().ProcessIdle();
    EXPECT_EQ(ran, 1);
    Loop().ProcessIdle();
    EXPECT_EQ(ran, 1);
}

}  // namespace

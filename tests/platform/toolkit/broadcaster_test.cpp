// Broadcasting: order, duplicates, listeners that change the audience during a broadcast, lifetimes
// on both sides, and components forwarding to their parent.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "PLComponent.h"
#include "PLMessage.h"

namespace {

// A listener that records its name in a shared log and runs an optional action when called.
class Recorder : public PLListener {
public:
    Recorder(std::string name, std::string& log) : mName(std::move(name)), mLog(log) {}
    void Listen(PLMessage*) override {
        mLog += mName;
        if (action) {
            action();
        }
    }
    std::function<void()> action;

private:
    std::string mName;
    std::string& mLog;
};

struct Scene {
    std::string log;
    std::unique_ptr<PLBroadcaster> broadcaster = std::make_unique<PLBroadcaster>();
    std::unique_ptr<Recorder> a = std::make_unique<Recorder>("a", log);
    std::unique_ptr<Recorder> b = std::make_unique<Recorder>("b", log);
    std::unique_ptr<Recorder> c = std::make_unique<Recorder>("c", log);
    std::unique_ptr<Recorder> late = std::make_unique<Recorder>("L", log);
    Scene() {
        for (Recorder* r : {a.get(), b.get(), c.get()}) {
            broadcaster->AddListener(r);
        }
    }
    void Remove(Recorder* r) { broadcaster->RemoveListener(r); }
};

TEST(PLBroadcasterTest, ChangesDuringABroadcast) {
    // clang-format off
    // What the first broadcast reaches, and a second one (when the broadcaster survives).
    struct Row {
        const char* name; std::function<void(Scene&)> arrange; const char *firstLog, *secondLog;
    } rows[] = {
        {"in order of addition", [](Scene&) {}, "abc", "abc"},
        {"adding twice keeps one", [](Scene& s) { s.broadcaster->AddListener(s.a.get()); }, "abc", "abc"},
        {"removes itself", [](Scene& s) { s.a->action = [&s] { s.Remove(s.a.get()); }; }, "abc", "bc"},
        {"removes a later one", [](Scene& s) { s.a->action = [&s] { s.Remove(s.c.get()); }; }, "ab", "ab"},
        {"destroys a later one", [](Scene& s) { s.a->action = [&s] { s.b.reset(); }; }, "ac", "ac"},
        {"destroys itself", [](Scene& s) { s.b->action = [&s] { s.b.reset(); }; }, "abc", "ac"},
        {"adds a listener", [](Scene& s) {
             s.a->action = [&s] {
                 s.broadcaster->AddListener(s.late.get());
                 s.a->action = nullptr;
             };
         }, "abc", "abcL"},
        // The re-added one is new to this broadcast, even though it was there when it began.
        {"removes and re-adds a later one", [](Scene& s) {
             s.a->action = [&s] { s.Remove(s.c.get()); s.broadcaster->AddListener(s.c.get()); };
         }, "ab", "ab"},
        {"deletes the broadcaster", [](Scene& s) { s.b->action = [&s] { s.broadcaster.reset(); }; }, "ab", ""},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Scene scene;
        row.arrange(scene);
        PLMessage message(kPLMsgControl, 1, 2, "", "");
        scene.broadcaster->BroadcastMessage(&message);
        EXPECT_EQ(scene.log, row.firstLog);
        scene.log.clear();
        if (scene.broadcaster) {
            scene.broadcaster->BroadcastMessage(&message);
        }
        EXPECT_EQ(scene.log, row.secondLog);
    }
}

// (A listener that outlives its broadcaster is the last row above: the scene's listeners go
// after it, and must not touch it.)
TEST(PLBroadcasterTest, ADestroyedListenerLeavesEveryBroadcaster) {
    std::string log;
    PLBroadcaster first, second;
    {
        Recorder listener("x", log);
        first.AddListener(&listener);
        second.AddListener(&listener);
    }
    EXPECT_EQ(first.GetListenerCount() + second.GetListenerCount(), 0u);
}

// A component that forwards to a fixed target, standing in for a pane's parent.
class Forwarding : public PLComponent {
public:
    PLListener* target = nullptr;

protected:
    PLListener* GetForwardTarget() override { return target; }
};

TEST(PLComponentTest, ForwardingAfterListeners) {
    std::string log;
    Recorder listener("l", log), parent("p", log);
    auto component = std::make_unique<Forwarding>();
    component->target = &parent;
    PLMessage message(kPLMsgUp, 1, 2, "", "");
    component->SetComponentListener(&listener, true, false);
    component->BroadcastMessage(&message);
    EXPECT_EQ(log, "l");

    component->SetComponentListener(nullptr, false, true);
    component->BroadcastMessage(&message);
    EXPECT_EQ(log, "llp");

    // The listener deletes the component: nothing is forwarded to the parent afterwards.
    listener.action = [&component] { component.reset(); };
    component->BroadcastMessage(&message);
    EXPECT_EQ(log, "llpl");
}

}  // namespace

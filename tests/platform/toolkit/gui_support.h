// Helpers for the toolkit's GUI tests: a scripted event source, a pane that records what reaches
// it, and a fixture that gives every test a fresh context with a root pane on the screen.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "PLAppContext.h"
#include "PLDrawContext.h"
#include "PLEvent.h"
#include "PLEventLoop.h"
#include "PLEventSource.h"
#include "PLScreen.h"
#include "PLView.h"

inline PLEvent Pen(PLEvent::Kind kind, int x, int y) {
    PLEvent e;
    e.kind = kind;
    e.point = {y, x};
    return e;
}

inline PLEvent Key(uint8_t code) {
    PLEvent e;
    e.kind = PLEvent::Kind::Key;
    e.key = code;
    return e;
}

// Hands out queued events; runs dry when the queue is empty.
class FakeEventSource : public PLEventSource {
public:
    bool NextEvent(PLEventLoop&, PLEvent& event) override {
        if (events.empty()) {
            return false;
        }
        event = events.front();
        events.pop_front();
        return true;
    }
    std::deque<PLEvent> events;
};

// Records every pen and key call as a line "<name> <what> <x>,<y>" in a shared log; paints its
// bounds in its colour and counts its paints.
class RecordingPane : public PLView {
public:
    RecordingPane(std::string name, std::vector<std::string>* log, uint32_t id, PLPoint at,
                  PLSize size, PLRGBColor color = PLRGBColor(255, 0, 0))
        : PLView(id, at, size), mName(std::move(name)), mLog(log), mColor(color) {}

    void MouseDown(PLPoint where, PLMouseButton) override { Note("down", where); }
    void MouseMove(PLPoint where, PLMouseButton) override { Note("move", where); }
    void MouseUp(PLPoint where, PLMouseButton) override { Note("up", where); }
    bool DoKeyCommand(char key, short, PLKeyModifiers) override {
        mLog->push_back(mName + " key " + std::to_string(int(uint8_t(key))));
        return handlesKeys;
    }
    void Draw(PLDrawContext& context) override {
        ++paints;
        context.FillRect(GetBounds(), mColor);
    }

    bool handlesKeys = false;
    int paints = 0;

private:
    void Note(const char* what, PLPoint where) {
        mLog->push_back(mName + " " + what + " " + std::to_string(where.h) + "," +
                        std::to_string(where.v));
    }
    std::string mName;
    std::vector<std::string>* mLog;
    PLRGBColor mColor;
};

// A fresh application context whose screen shows `root` (the whole screen, painted white).
class GuiTest : public ::testing::Test {
public:
    void SetUp() override {
        PLAppContext::ResetInstance();
        root = std::make_unique<RecordingPane>("root", &log, 0, PLPoint{0, 0},
                                               PLSize{kPLScreenHeight, kPLScreenWidth},
                                               PLRGBColor(255, 255, 255));
        Screen().SetRoot(root.get());
        Loop().SetSource(&source);
        Screen().PaintAll();
    }
    void TearDown() override {
        detached.reset();
        root.reset();
        PLAppContext::ResetInstance();
        Loop().SetSource(nullptr);
    }
    static PLScreen& Screen() { return PLAppContext::GetInstance()->GetScreen(); }
    static PLEventLoop& Loop() { return PLAppContext::GetInstance()->GetEventLoop(); }
    static uint32_t ScreenPixel(int x, int y) {
        return Screen().GetFramebuffer().GetPixel(x, y) & 0x00FFFFFF;
    }
    // Adds `pane` to `parent` without painting and hands it back.
    template <typename Pane>
    static Pane* Add(PLPane* parent, Pane* pane) {
        parent->AddSubPane(pane, false);
        return pane;
    }
    RecordingPane* Recording(const char* name, uint32_t id, PLPoint at, PLSize size) {
        return new RecordingPane(name, &log, id, at, size);
    }
    // Deletes every pane on the root and repaints the screen white.
    void ClearRoot() {
        while (!root->GetSubPanes().empty()) {
            delete root->GetSubPanes().back();
        }
        Screen().PaintAll();
        log.clear();
    }

    std::vector<std::string> log;
    FakeEventSource source;
    std::unique_ptr<RecordingPane> root;
    std::unique_ptr<PLPane> detached;  // a pane a test took off the tree
};

// The event tests' device: a scratch root populated from the build (texts, share library), the
// widget theme, a pinned clock, a screen whose root view holds the view under test, and an event
// source that plays pen taps and keys and writes screenshots on the way.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "APDeviceSetup.h"
#include "APEventAlertDB.h"
#include "APEventRec.h"
#include "PLAppContext.h"
#include "PLBitmap.h"
#include "PLClock.h"
#include "PLEvent.h"
#include "PLEventLoop.h"
#include "PLEventSource.h"
#include "PLListener.h"
#include "PLMessage.h"
#include "PLResourceFileManager.h"
#include "PLScreen.h"
#include "PLView.h"
#include "VtTheme.h"
#include "calendar/calendar_support.h"

// Plays steps: an event, or a screenshot of the screen as it stands (written under the build's
// screenshots/ folder), then runs dry.
class ScriptedEvents : public PLEventSource {
public:
    ScriptedEvents& Tap(int x, int y) {
        const PLPoint at{int16_t(y), int16_t(x)};
        mSteps.push_back({{PLEvent::Kind::PenDown, at}, ""});
        mSteps.push_back({{PLEvent::Kind::PenUp, at}, ""});
        return *this;
    }
    ScriptedEvents& Key(uint8_t code) {
        mSteps.push_back({{PLEvent::Kind::Key, {}, code}, ""});
        return *this;
    }
    ScriptedEvents& Shot(const std::string& name) {
        mSteps.push_back({{}, name});
        return *this;
    }
    bool NextEvent(PLEventLoop&, PLEvent& event) override {
        while (!mSteps.empty()) {
            Step step = mSteps.front();
            mSteps.pop_front();
            if (step.shot.empty()) {
                event = step.event;
                return true;
            }
            SaveShot(step.shot);
        }
        return false;
    }
    bool Done() const { return mSteps.empty(); }
    static void SaveShot(const std::string& name) {
        PLScreen& screen = PLAppContext::GetInstance()->GetScreen();
        screen.PaintAll();
        const std::string folder = std::string(CAL_BINARY_DIR) + "/screenshots";
        std::filesystem::create_directories(folder);
        std::string error;
        EXPECT_TRUE(screen.GetFramebuffer().SavePNG(folder + "/" + name + ".png", error)) << error;
    }

private:
    struct Step {
        PLEvent event;
        std::string shot;
    };
    std::deque<Step> mSteps;
};

// Notes every message it hears as (kind, sender).
class HeardMessages : public PLListener {
public:
    void Listen(PLMessage* message) override {
        heard.emplace_back(message->GetMessageID(), message->GetSenderID());
    }
    bool Heard(uint32_t kind, uint32_t sender) const {
        for (const auto& [k, s] : heard) {
            if (k == kind && s == sender) {
                return true;
            }
        }
        return false;
    }
    std::vector<std::pair<uint32_t, uint32_t>> heard;
};

// What a test says about an event; the rest of the record stays as InitEventRecInfo leaves it.
struct EventFields {
    std::string subject = "Team meeting";
    std::string location;
    std::string notes;
    long start = Stamp(2026, 11, 23, 10);
    long end = Stamp(2026, 11, 23, 11);
    bool allDay = false;
    int32_t kind = 0, a = 0, b = 0, c = 0;
    long last = 0;  // 0: the end
    uint32_t colour = 11545;
    uint32_t classChoice = 11560;
    int32_t leadAmount = 0, leadUnit = 0;  // unit 0: no alarm
};

class EventTest : public ::testing::Test {
protected:
    void SetUp() override {
        setenv("CAL_INSTALL_DIR", CAL_BINARY_DIR, 1);
        std::string error;
        ASSERT_TRUE(APDeviceSetup_Populate(error)) << error;
        PLClock::Pin(int64_t(Stamp(2026, 11, 23, 9)) * 1000);
        InitVantorTheme(PLRGBColor(), 0, true, true, true, false);
        auto* manager = new PLResourceFileManager(10003, true);
        ASSERT_TRUE(manager->LoadFromFile("/root/resource/calendar.rsc", true));
        PLAppContext::GetInstance()->AddResourceManager(manager, true);
        Screen().SetRoot(&mRoot);
        Loop().SetSource(&events);
    }
    void TearDown() override {
        while (!mRoot.GetSubPanes().empty()) {
            delete mRoot.GetSubPanes().back();
        }
        Screen().SetRoot(nullptr);
        Loop().SetSource(nullptr);
        PLClock::Unpin();
    }

    static PLScreen& Screen() { return PLAppContext::GetInstance()->GetScreen(); }
    static PLEventLoop& Loop() { return PLAppContext::GetInstance()->GetEventLoop(); }
    PLView& Root() { return mRoot; }

    static int AddEvent(const EventFields& f) {
        _EventRecInfo record;
        InitEventRecInfo(&record);
        Fill(record.subject, f.subject);
        Fill(record.location, f.location);
        Fill(record.notes, f.notes);
        record.startStamp = int32_t(f.start);
        record.endStamp = int32_t(f.end);
        record.lastStamp = int32_t(f.last != 0 ? f.last : f.end);
        record.allDay = f.allDay ? 1 : 0;
        record.recurKind = f.kind;
        record.recurring = f.kind != 0 ? 1 : 0;
        record.recurValueA = f.a;
        record.recurValueB = f.b;
        record.recurValueC = f.c;
        record.colour = f.colour;
        record.classChoice = f.classChoice;
        if (f.leadUnit != 0) {
            _EventAlertInfo alert{};
            alert.enabled = 1;
            alert.eventTime = record.startStamp;
            alert.leadAmount = f.leadAmount;
            alert.leadUnit = f.leadUnit;
            record.alertInfoId = APEventAlertDB().Add(&alert);
            record.alarm = 1;
        }
        return APEventRec().AddEventRec(&record);
    }
    // The stored bytes of a text: as many as fit, then zeros (a 601-byte text has no terminator).
    template <size_t N>
    static void Fill(char (&field)[N], const std::string& text) {
        std::memset(field, 0, N);
        std::memcpy(field, text.data(), std::min(text.size(), N));
    }
    static bool Stored(int id) {
        _EventRecInfo record;
        return APEventRec().GetEventRec(id, &record) == 1;
    }

    ScratchRoot mScratch;
    ScriptedEvents events;

private:
    PLView mRoot{1, PLPoint(0, 0), PLSize(kPLScreenHeight, kPLScreenWidth)};
};

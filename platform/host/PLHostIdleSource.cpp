// Waiting for timers and messages in a headless run without a script.
#include "PLHostIdleSource.h"

#include <algorithm>
#include <climits>

#include "PLClock.h"
#include "PLEvent.h"
#include "PLEventLoop.h"
#include "PLHostWakeup.h"

PLHostIdleSource::PLHostIdleSource(PLHostWakeup& wakeup, std::function<bool()> interrupted)
    : mWakeup(wakeup), mInterrupted(std::move(interrupted)) {}

bool PLHostIdleSource::NextEvent(PLEventLoop& loop, PLEvent& event) {
    event = PLEvent{};
    if (loop.IsShuttingDown() || (mInterrupted && mInterrupted())) {
        return false;
    }
    // A pinned clock never reaches a timer by itself: then only a message can wake us.
    int timeoutMs = -1;
    int64_t deadline = loop.NextTimerDeadline();
    if (deadline >= 0 && !PLClock::IsPinned()) {
        timeoutMs = int(std::clamp<int64_t>(deadline - PLClock::NowMs(), 0, INT_MAX));
    }
    mWakeup.Wait(timeoutMs);
    // Woken or timed out: an empty event lets the loop run its idle work (posted messages,
    // due timers) and come back.
    return !(mInterrupted && mInterrupted());
}

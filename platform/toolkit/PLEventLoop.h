// The event loop: takes events from its source and routes them.
//
// - Keys go to the target pane (SetTarget); a key the target does not handle goes to the
//   application object.
// - Pen events go to the topmost shown, enabled pane under the point; after a pane starts
//   tracking, moves and the pen-up go to it wherever the pen is.
// - Typed text goes to the text sink (the input method), if one is set.
// - Messages from other applications go to the event dispatcher's listeners.
// Between events the loop deletes closed panes, fires due timers, runs posted work and repaints.
// Modal dialogs run nested loops on the same source (RunNested).
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <vector>

#include "PLEvent.h"

class PLEventSource;
class PLPane;

class PLEventLoop {
public:
    PLEventLoop();
    ~PLEventLoop();

    void SetSource(PLEventSource* source) { mSource = source; }
    PLEventSource* GetSource() const { return mSource; }

    // The pane that receives keys; null sends keys to the application object only.
    void SetTarget(PLPane* target);
    PLPane* GetTarget() const { return mTarget; }

    // Runs until ShutdownEventLoops (or the source runs dry).
    void Run();
    // Runs a nested loop until `done()` is true, shutdown is requested or the source runs dry.
    // Returns false when it ended for any reason other than `done()`.
    bool RunNested(const std::function<bool()>& done);
    int GetNestingDepth() const { return mDepth; }
    // Ends every running loop, nested ones first.
    void Shutdown();
    bool IsShuttingDown() const { return mShutdown; }
    // Allows Run again after a shutdown (tests, and the simulator between applications).
    void Reset();
    // Back to a fresh loop: pending deletes done, timers and posted work dropped, no target,
    // tracking or text sink, shutdown cleared (PLAppContext::ResetInstance).
    void ResetState();

    // Routes one event at once (the loop's own dispatch, usable from tests and sources).
    void Dispatch(const PLEvent& event);
    // The idle work: deferred deletes, due timers, posted work, repaint.
    void ProcessIdle();

    // Timers on the platform clock. A timer fires once, from the idle work, when the clock has
    // reached its deadline. Returns its id (never 0).
    uint32_t AddTimer(int64_t delayMs, std::function<void()> callback);
    void CancelTimer(uint32_t id);
    // The deadline of the earliest timer, or -1 when none (sources use it to sleep).
    int64_t NextTimerDeadline() const;

    // Work to run on the loop's thread at the next idle moment; safe to call from any thread.
    void Post(std::function<void()> work);
    // Deletes `pane` at the next idle moment (how a pane closes itself).
    void DeleteLater(PLPane* pane);
    // A pane that is about to be deleted: the loop forgets it (target, tracking, pen routing).
    void ForgetPane(PLPane* pane);

    // Pen tracking (PLPane::StartTracking).
    void SetTrackingPane(PLPane* pane) { mTracking = pane; }
    PLPane* GetTrackingPane() const { return mTracking; }

    // Typed text goes here (the input method installs it).
    void SetTextSink(std::function<void(const std::string&)> sink) { mTextSink = std::move(sink); }
    bool HasTextSink() const { return static_cast<bool>(mTextSink); }

private:
    void DispatchPen(const PLEvent& event);
    void DispatchKey(const PLEvent& event);
    bool FireDueTimers();

    PLEventSource* mSource = nullptr;
    PLPane* mTarget = nullptr;
    PLPane* mTracking = nullptr;
    PLPane* mPenPane = nullptr;  // the pane that got the pen-down, for its pen-up
    bool mShutdown = false;
    int mDepth = 0;
    std::function<void(const std::string&)> mTextSink;

    struct Timer {
        int64_t deadlineMs;
        std::function<void()> callback;
    };
    std::map<uint32_t, Timer> mTimers;
    uint32_t mNextTimerID = 1;

    std::mutex mPostedMutex;
    std::deque<std::function<void()>> mPosted;
    std::vector<PLPane*> mDeleteLater;
};

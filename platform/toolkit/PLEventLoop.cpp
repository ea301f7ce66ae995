// The event loop: routes pen, key, text and message events and does the idle work between them.
#include "PLEventLoop.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "PLAppContext.h"
#include "PLApplication.h"
#include "PLClock.h"
#include "PLEventDispatcher.h"
#include "PLEventSource.h"
#include "PLPane.h"
#include "PLScreen.h"

PLEventLoop::PLEventLoop() = default;

PLEventLoop::~PLEventLoop() {
    // Panes closed with destroy belong to the loop until it deletes them.
    std::vector<PLPane*> pending;
    pending.swap(mDeleteLater);
    for (PLPane* pane : pending) {
        delete pane;
    }
}

void PLEventLoop::SetTarget(PLPane* target) {
    mTarget = target;
}

void PLEventLoop::Run() {
    ++mDepth;
    while (!mShutdown) {
        ProcessIdle();
        if (mShutdown) {
            break;
        }
        PLEvent event;
        if (mSource == nullptr || !mSource->NextEvent(*this, event)) {
            break;
        }
        Dispatch(event);
    }
    --mDepth;
}

bool PLEventLoop::RunNested(const std::function<bool()>& done) {
    assert(done && "a nested loop needs an end condition");
    ++mDepth;
    bool ended = false;
    while (true) {
        if (done && done()) {
            ended = true;
            break;
        }
        if (mShutdown) {
            break;
        }
        ProcessIdle();
        if (done && done()) {
            ended = true;
            break;
        }
        if (mShutdown) {
            break;
        }
        PLEvent event;
        if (mSource == nullptr || !mSource->NextEvent(*this, event)) {
            break;
        }
        Dispatch(event);
    }
    --mDepth;
    return ended;
}

void PLEventLoop::Shutdown() {
    mShutdown = true;
}

void PLEventLoop::Reset() {
    mShutdown = false;
}

void PLEventLoop::ResetState() {
    while (!mDeleteLater.empty()) {
        PLPane* pane = mDeleteLater.front();
        mDeleteLater.erase(mDeleteLater.begin());
        delete pane;
    }
    mTimers.clear();
    {
        std::lock_guard<std::mutex> lock(mPostedMutex);
        mPosted.clear();
    }
    mTarget = nullptr;
    mTracking = nullptr;
    mPenPane = nullptr;
    mTextSink = nullptr;
    mShutdown = false;
}

// --- routing

void PLEventLoop::Dispatch(const PLEvent& event) {
    switch (event.kind) {
        case PLEvent::Kind::PenDown:
        case PLEvent::Kind::PenMove:
        case PLEvent::Kind::PenUp:
            DispatchPen(event);
            break;
        case PLEvent::Kind::Key:
            DispatchKey(event);
            break;
        case PLEvent::Kind::Text:
            if (mTextSink) {
                // A copy: the sink may replace itself while it runs.
                auto sink = mTextSink;
                sink(event.text);
            }
            break;
        case PLEvent::Kind::Message:
            if (event.message) {
                PLAppContext::GetInstance()->GetEventDispatcher().DispatchMessage(
                    event.message.get());
            }
            break;
        case PLEvent::Kind::None:
            break;
    }
}

void PLEventLoop::DispatchPen(const PLEvent& event) {
    if (event.kind == PLEvent::Kind::PenDown) {
        PLPane* hit = PLAppContext::GetInstance()->GetScreen().PaneAt(event.point);
        // A disabled pane, or one inside a disabled pane, swallows the pen.
        if (hit == nullptr || !hit->IsActive()) {
            mPenPane = nullptr;
            return;
        }
        mPenPane = hit;
        hit->MouseDown(hit->ScreenToLocal(event.point), kPLPen);
        return;
    }
    PLPane* receiver = mTracking != nullptr ? mTracking : mPenPane;
    if (event.kind == PLEvent::Kind::PenUp) {
        // The gesture is over before the handler runs: a dialog that it opens starts clean.
        mTracking = nullptr;
        mPenPane = nullptr;
        if (receiver != nullptr) {
            receiver->MouseUp(receiver->ScreenToLocal(event.point), kPLPen);
        }
        return;
    }
    if (receiver != nullptr) {
        receiver->MouseMove(receiver->ScreenToLocal(event.point), kPLPen);
    }
}

void PLEventLoop::DispatchKey(const PLEvent& event) {
    const char key = static_cast<char>(event.key);
    bool handled = false;
    if (mTarget != nullptr) {
        handled = mTarget->DoKeyCommand(key, 0, event.modifiers);
    }
    if (!handled) {
        if (PLApplication* application = PLAppContext::GetInstance()->GetApplication()) {
            application->DoKeyCommand(key, 0, event.modifiers);
        }
    }
}

// --- idle work

void PLEventLoop::ProcessIdle() {
    // One at a time: a destructor may close or forget other panes of the list.
    while (!mDeleteLater.empty()) {
        PLPane* pane = mDeleteLater.front();
        mDeleteLater.erase(mDeleteLater.begin());
        delete pane;
    }
    FireDueTimers();
    std::deque<std::function<void()>> work;
    {
        std::lock_guard<std::mutex> lock(mPostedMutex);
        work.swap(mPosted);
    }
    for (auto& job : work) {
        job();
    }
    PLAppContext::GetInstance()->GetScreen().Update();
}

bool PLEventLoop::FireDueTimers() {
    const int64_t now = PLClock::NowMs();
    // Only the timers due now: one that re-arms itself with no delay waits for the next round.
    std::vector<std::pair<int64_t, uint32_t>> due;
    for (const auto& [id, timer] : mTimers) {
        if (timer.deadlineMs <= now) {
            due.emplace_back(timer.deadlineMs, id);
        }
    }
    std::sort(due.begin(), due.end());
    for (const auto& entry : due) {
        auto found = mTimers.find(entry.second);
        if (found == mTimers.end()) {
            continue;  // cancelled by an earlier callback
        }
        std::function<void()> callback = std::move(found->second.callback);
        mTimers.erase(found);
        if (callback) {
            callback();
        }
    }
    return !due.empty();
}

uint32_t PLEventLoop::AddTimer(int64_t delayMs, std::function<void()> callback) {
    uint32_t id = mNextTimerID++;
    if (id == 0) {
        id = mNextTimerID++;
    }
    mTimers[id] = Timer{PLClock::NowMs() + std::max<int64_t>(0, delayMs), std::move(callback)};
    return id;
}

void PLEventLoop::CancelTimer(uint32_t id) {
    mTimers.erase(id);
}

int64_t PLEventLoop::NextTimerDeadline() const {
    int64_t earliest = -1;
    for (const auto& entry : mTimers) {
        if (earliest < 0 || entry.second.deadlineMs < earliest) {
            earliest = entry.second.deadlineMs;
        }
    }
    return earliest;
}

void PLEventLoop::Post(std::function<void()> work) {
    std::lock_guard<std::mutex> lock(mPostedMutex);
    mPosted.push_back(std::move(work));
}

void PLEventLoop::DeleteLater(PLPane* pane) {
    if (pane == nullptr ||
        std::find(mDeleteLater.begin(), mDeleteLater.end(), pane) != mDeleteLater.end()) {
        return;
    }
    mDeleteLater.push_back(pane);
}

void PLEventLoop::ForgetPane(PLPane* pane) {
    if (mTarget == pane) {
        mTarget = nullptr;
    }
    if (mTracking == pane) {
        mTracking = nullptr;
    }
    if (mPenPane == pane) {
        mPenPane = nullptr;
    }
    // Deleted some other way: it must not be deleted a second time.
    mDeleteLater.erase(std::remove(mDeleteLater.begin(), mDeleteLater.end(), pane),
                       mDeleteLater.end());
}

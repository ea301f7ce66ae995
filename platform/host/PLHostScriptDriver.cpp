// The script-driven event source of the simulator.
#include "PLHostScriptDriver.h"

#include <chrono>
#include <ostream>

#include "PLAppContext.h"
#include "PLBitmap.h"
#include "PLClock.h"
#include "PLEvent.h"
#include "PLEventLoop.h"
#include "PLHostFiles.h"
#include "PLHostPaneDump.h"
#include "PLHostWakeup.h"
#include "PLPane.h"
#include "PLScreen.h"

namespace {

// A wait steps the clock from timer to timer so that a timer started by another one fires at its
// own moment; a timer that keeps re-arming itself at once must not hold the script forever.
constexpr int kMaxWaitSteps = 100000;

int64_t SteadyMs() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

PLEvent PenEvent(PLEvent::Kind kind, const PLHostScriptCommand& command) {
    PLEvent event;
    event.kind = kind;
    event.point = PLPoint(command.y, command.x);
    return event;
}

std::string Quoted(std::string_view text) {
    std::string out;
    PLHostPaneDump::AppendString(out, text);
    return out;
}

std::string RectText(const PLRect& rect) {
    return "[" + std::to_string(rect.top) + ", " + std::to_string(rect.left) + ", " +
           std::to_string(rect.bottom) + ", " + std::to_string(rect.right) + "]";
}

}  // namespace

PLHostScriptDriver::PLHostScriptDriver(std::vector<PLHostScriptCommand> commands, Hooks hooks,
                                       std::ostream& errors)
    : mCommands(std::move(commands)), mHooks(std::move(hooks)), mErrors(errors) {}

int PLHostScriptDriver::GetPendingLine() const {
    return mNext < mCommands.size() ? mCommands[mNext].line : 0;
}

void PLHostScriptDriver::ReportEndedEarly() {
    if (mStopped || mNext >= mCommands.size()) {
        return;
    }
    Fail(kExitExpectFailed, GetPendingLine(),
         "the application ended before this command could run");
}

PLHostScriptDriver::Outcome PLHostScriptDriver::Fail(int status, int line,
                                                     const std::string& message) {
    mErrors << "script:" << line << ": " << message << std::endl;
    mExitStatus = status;
    mStopped = true;
    return Outcome::Stop;
}

bool PLHostScriptDriver::NextEvent(PLEventLoop& loop, PLEvent& event) {
    event = PLEvent{};
    if (mStopped || loop.IsShuttingDown()) {
        return false;
    }
    if (mHooks.interrupted && mHooks.interrupted()) {
        Fail(kExitScriptError, mCurrentLine, "interrupted");
        return false;
    }
    if (!mQueued.empty()) {
        event = mQueued.front();
        mQueued.erase(mQueued.begin());
        return true;
    }
    if (mWaiting) {
        return StepWait(loop, event);
    }
    if (mSending) {
        return StepSend(event);
    }
    if (mAwaiting) {
        return StepAwait(event);
    }
    while (mNext < mCommands.size()) {
        const PLHostScriptCommand& command = mCommands[mNext++];
        mCurrentLine = command.line;
        if (mHooks.beforeCommand) {
            mHooks.beforeCommand();
        }
        switch (Execute(command, loop, event)) {
            case Outcome::Event:
                return true;
            case Outcome::Stop:
                return false;
            case Outcome::Continue:
                break;
        }
    }
    mFinished = true;
    mStopped = true;
    return false;
}

PLHostScriptDriver::Outcome PLHostScriptDriver::Execute(const PLHostScriptCommand& command,
                                                        PLEventLoop& loop, PLEvent& event) {
    switch (command.kind) {
        case PLHostCommandKind::Tap:
            event = PenEvent(PLEvent::Kind::PenDown, command);
            mQueued.push_back(PenEvent(PLEvent::Kind::PenUp, command));
            return Outcome::Event;
        case PLHostCommandKind::Down:
            event = PenEvent(PLEvent::Kind::PenDown, command);
            return Outcome::Event;
        case PLHostCommandKind::Move:
            event = PenEvent(PLEvent::Kind::PenMove, command);
            return Outcome::Event;
        case PLHostCommandKind::Up:
            event = PenEvent(PLEvent::Kind::PenUp, command);
            return Outcome::Event;
        case PLHostCommandKind::Key:
            event.kind = PLEvent::Kind::Key;
            event.key = command.key;
            return Outcome::Event;
        case PLHostCommandKind::Type:
            if (!loop.HasTextSink()) {
                mErrors << "script:" << command.line
                        << ": note: no input method is taking text; it goes nowhere" << std::endl;
            }
            event.kind = PLEvent::Kind::Text;
            event.text = command.text;
            return Outcome::Event;
        case PLHostCommandKind::Wait:
            return StartWait(command, loop, event);
        case PLHostCommandKind::Clock:
            PLClock::Pin(command.number);
            if (mHooks.clockChanged) {
                mHooks.clockChanged();
            }
            return Outcome::Event;  // an empty event: the idle work fires what is now due
        case PLHostCommandKind::Send:
            return StartSend(command, event);
        case PLHostCommandKind::Await:
            return StartAwait(command, event);
        case PLHostCommandKind::Shot:
        case PLHostCommandKind::Dump:
            return Save(command);
        case PLHostCommandKind::ExpectShown:
        case PLHostCommandKind::ExpectHidden:
        case PLHostCommandKind::ExpectPixel:
        case PLHostCommandKind::ExpectText:
            return Expect(command);
    }
    return Fail(kExitScriptError, command.line, "unknown command");
}

PLHostScriptDriver::Outcome PLHostScriptDriver::StartWait(const PLHostScriptCommand& command,
                                                          PLEventLoop& loop, PLEvent& event) {
    int64_t now = PLClock::NowMs();
    PLClock::Pin(now);
    mWaiting = true;
    mWaitUntilMs = now + command.number;
    mWaitSteps = 0;
    StepWait(loop, event);
    return Outcome::Event;
}

bool PLHostScriptDriver::StepWait(PLEventLoop& loop, PLEvent& event) {
    event = PLEvent{};  // empty: the idle work fires what the clock has reached
    int64_t next = loop.NextTimerDeadline();
    if (next >= 0 && next <= mWaitUntilMs && mWaitSteps < kMaxWaitSteps) {
        ++mWaitSteps;
        if (next > PLClock::NowMs()) {
            PLClock::Pin(next);
        }
        return true;  // an empty event: the idle work fires the timer
    }
    PLClock::Pin(mWaitUntilMs);
    mWaiting = false;
    return true;
}

PLHostScriptDriver::Outcome PLHostScriptDriver::StartSend(const PLHostScriptCommand& command,
                                                          PLEvent& event) {
    if (!mHooks.send || !mHooks.deliveredCount) {
        return Fail(kExitScriptError, command.line, "messages cannot be sent in this run");
    }
    uint64_t before = mHooks.deliveredCount();
    std::string error;
    if (!mHooks.send(uint32_t(command.number), error)) {
        return Fail(kExitScriptError, command.line,
                    "cannot send message " + std::to_string(command.number) + ": " + error);
    }
    mSending = true;
    mSendID = uint32_t(command.number);
    mSendTarget = before + 1;
    mSendDeadline = SteadyMs() + mHooks.sendTimeoutMs;
    StepSend(event);
    return mStopped ? Outcome::Stop : Outcome::Event;
}

bool PLHostScriptDriver::StepSend(PLEvent& event) {
    event = PLEvent{};
    if (mHooks.deliveredCount() >= mSendTarget) {
        mSending = false;
        ++mAccounted[mSendID];
        return true;  // delivered; the idle work has run, go on with the next command
    }
    int64_t left = mSendDeadline - SteadyMs();
    if (left <= 0) {
        mSending = false;
        Fail(kExitScriptError, mCurrentLine, "the message did not arrive through the socket");
        return false;
    }
    if (mHooks.wakeup) {
        mHooks.wakeup->Wait(int(left));
    }
    return true;  // an empty event: the idle work runs the posted delivery
}

bool PLHostScriptDriver::HasUnaccounted(uint32_t id) const {
    if (!mHooks.deliveredOf) {
        return false;
    }
    const auto claimed = mAccounted.find(id);
    return mHooks.deliveredOf(id) > (claimed == mAccounted.end() ? 0 : claimed->second);
}

PLHostScriptDriver::Outcome PLHostScriptDriver::StartAwait(const PLHostScriptCommand& command,
                                                           PLEvent& event) {
    mAwaiting = true;
    mAwaitID = uint32_t(command.number);
    mAwaitDeadline = SteadyMs() + mHooks.awaitTimeoutMs;
    StepAwait(event);
    return mStopped ? Outcome::Stop : Outcome::Event;
}

bool PLHostScriptDriver::StepAwait(PLEvent& event) {
    event = PLEvent{};
    if (HasUnaccounted(mAwaitID)) {
        mAwaiting = false;
        ++mAccounted[mAwaitID];
        return true;  // handled by the application; the idle work has run its reaction
    }
    const int64_t left = mAwaitDeadline - SteadyMs();
    if (left <= 0) {
        mAwaiting = false;
        Fail(kExitExpectFailed, mCurrentLine,
             "message " + std::to_string(mAwaitID) + " did not arrive from another process");
        return false;
    }
    if (mHooks.wakeup) {
        mHooks.wakeup->Wait(int(left));
    }
    return true;  // an empty event: the idle work runs a posted delivery
}

PLHostScriptDriver::Outcome PLHostScriptDriver::Save(const PLHostScriptCommand& command) {
    PLScreen& screen = PLAppContext::GetInstance()->GetScreen();
    std::string error;
    bool saved = command.kind == PLHostCommandKind::Shot
                     ? PLHostFiles::SavePNGAtomically(screen.GetFramebuffer(), command.text, error)
                     : PLHostFiles::WriteAtomically(
                           command.text, PLHostPaneDump::ToJSON(screen.GetRoot()), error);
    if (!saved) {
        return Fail(kExitScriptError, command.line, error);
    }
    return Outcome::Continue;
}

bool PLHostScriptDriver::CheckText(const PLHostScriptCommand& command, PLPane* root,
                                   std::string& found) {
    PLPane* pane = PLHostPaneDump::FindVisible(root, command.paneID);
    if (!pane) {
        pane = PLHostPaneDump::FindAny(root, command.paneID);
    }
    if (!pane) {
        found = "no pane " + std::to_string(command.paneID) + " on the screen";
        return false;
    }
    const std::string& text = pane->GetString().str();
    found = "found " + Quoted(text);
    return text == command.text;
}

PLHostScriptDriver::Outcome PLHostScriptDriver::Expect(const PLHostScriptCommand& command) {
    PLScreen& screen = PLAppContext::GetInstance()->GetScreen();
    PLPane* root = screen.GetRoot();
    std::string id = std::to_string(command.paneID);
    std::string what;
    std::string found;
    bool passed = false;
    switch (command.kind) {
        case PLHostCommandKind::ExpectShown: {
            what = "expect shown " + id;
            passed = PLHostPaneDump::FindVisible(root, command.paneID) != nullptr;
            found = PLHostPaneDump::FindAny(root, command.paneID)
                        ? "pane " + id + " is there but hidden"
                        : "no pane " + id + " on the screen";
            break;
        }
        case PLHostCommandKind::ExpectHidden: {
            what = "expect hidden " + id;
            PLPane* pane = PLHostPaneDump::FindVisible(root, command.paneID);
            passed = pane == nullptr;
            found = pane ? "pane " + id + " is shown at " + RectText(pane->GetScreenRect()) : "";
            break;
        }
        case PLHostCommandKind::ExpectPixel: {
            what = "expect pixel " + std::to_string(command.x) + " " + std::to_string(command.y) +
                   " " + std::to_string(command.red) + " " + std::to_string(command.green) + " " +
                   std::to_string(command.blue);
            PLRGBColor pixel =
                PLRGBColor::FromARGB(screen.GetFramebuffer().GetPixel(command.x, command.y));
            passed = pixel.red == command.red && pixel.green == command.green &&
                     pixel.blue == command.blue;
            found = "found " + std::to_string(pixel.red) + " " + std::to_string(pixel.green) + " " +
                    std::to_string(pixel.blue);
            break;
        }
        default:
            what = "expect text " + id + " " + Quoted(command.text);
            passed = CheckText(command, root, found);
            break;
    }
    if (passed) {
        return Outcome::Continue;
    }
    return Fail(kExitExpectFailed, command.line, what + " failed: " + found);
}

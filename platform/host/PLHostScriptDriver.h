// Feeds the event loop from a script: pen, key and text commands become events; clock, shot,
// dump and expect commands run inside NextEvent, when the loop is idle and the screen is up to
// date. Modal dialogs run nested loops on the same source, so they read the same script.
//
// Failures are reported as "script:LINE: message" on the error stream; the driver then stops
// feeding events and every loop ends.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "PLEventSource.h"
#include "PLHostScript.h"

class PLHostWakeup;
class PLPane;

class PLHostScriptDriver : public PLEventSource {
public:
    static constexpr int kExitOK = 0;
    static constexpr int kExitExpectFailed = 1;
    static constexpr int kExitScriptError = 2;

    struct Hooks {
        // Sends message `id` the way another process would (through the socket).
        std::function<bool(uint32_t id, std::string& error)> send;
        // Messages from the socket that have reached the application so far.
        std::function<uint64_t()> deliveredCount;
        // The same for one message id.
        std::function<uint64_t(uint32_t id)> deliveredOf;
        // The clock was set (`clock`): the status area redraws at once.
        std::function<void()> clockChanged;
        // Before each command (the window pumps its own events there).
        std::function<void()> beforeCommand;
        // True when the run must stop (a signal, the window was closed).
        std::function<bool()> interrupted;
        // Woken when a message has been posted to the loop.
        PLHostWakeup* wakeup = nullptr;
        // How long a sent message may take to arrive, in real milliseconds.
        int sendTimeoutMs = 5000;
        // How long `await` waits for another process's message, in real milliseconds.
        int awaitTimeoutMs = 20000;
    };

    PLHostScriptDriver(std::vector<PLHostScriptCommand> commands, Hooks hooks,
                       std::ostream& errors);

    bool NextEvent(PLEventLoop& loop, PLEvent& event) override;

    // kExitOK while running and after the last command, else the failure's status.
    int GetExitStatus() const { return mExitStatus; }
    // Every command has run.
    bool IsFinished() const { return mFinished; }
    // The line of the first command that has not run (0 when none is left).
    int GetPendingLine() const;
    // Reports that the application ended before the script did (a failure: what the remaining
    // commands would have checked was never checked).
    void ReportEndedEarly();

private:
    enum class Outcome { Event, Continue, Stop };

    Outcome Execute(const PLHostScriptCommand& command, PLEventLoop& loop, PLEvent& event);
    Outcome StartWait(const PLHostScriptCommand& command, PLEventLoop& loop, PLEvent& event);
    bool StepWait(PLEventLoop& loop, PLEvent& event);
    Outcome StartSend(const PLHostScriptCommand& command, PLEvent& event);
    bool StepSend(PLEvent& event);
    Outcome StartAwait(const PLHostScriptCommand& command, PLEvent& event);
    bool StepAwait(PLEvent& event);
    // Messages of `id` from the socket that no `send` or `await` has accounted for yet.
    bool HasUnaccounted(uint32_t id) const;
    Outcome Save(const PLHostScriptCommand& command);
    Outcome Expect(const PLHostScriptCommand& command);
    bool CheckText(const PLHostScriptCommand& command, PLPane* root, std::string& found);
    Outcome Fail(int status, int line, const std::string& message);

    std::vector<PLHostScriptCommand> mCommands;
    Hooks mHooks;
    std::ostream& mErrors;
    size_t mNext = 0;
    int mCurrentLine = 0;
    std::vector<PLEvent> mQueued;  // the pen-up of a tap
    bool mStopped = false;
    bool mFinished = false;
    int mExitStatus = kExitOK;

    bool mWaiting = false;
    int64_t mWaitUntilMs = 0;
    int mWaitSteps = 0;

    bool mSending = false;
    uint32_t mSendID = 0;
    uint64_t mSendTarget = 0;
    int64_t mSendDeadline = 0;  // steady clock, milliseconds

    bool mAwaiting = false;
    uint32_t mAwaitID = 0;
    int64_t mAwaitDeadline = 0;  // steady clock, milliseconds
    // Per message id, the deliveries that sends and awaits have already claimed, so that each
    // await is answered by a message of its own, even one that arrived before it started.
    std::map<uint32_t, uint64_t> mAccounted;
};

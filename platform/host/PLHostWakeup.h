// Wakes a waiting event source from another thread or a signal handler: a self-pipe that the
// source polls while it waits for its next event.
#pragma once

#include <functional>

class PLHostWakeup {
public:
    PLHostWakeup();
    ~PLHostWakeup();
    PLHostWakeup(const PLHostWakeup&) = delete;
    PLHostWakeup& operator=(const PLHostWakeup&) = delete;

    // Safe from any thread. Also calls the hook (the window uses it to wake its own event queue).
    void Notify();
    // Waits until notified or `timeoutMs` passed (negative: no limit). True when notified; the
    // notification is consumed.
    bool Wait(int timeoutMs);
    // A hook called by Notify on the notifying thread; set it before other threads start.
    void SetHook(std::function<void()> hook) { mHook = std::move(hook); }
    // The pipe's write end, for a signal handler (write one byte: async-signal-safe).
    int GetWriteFD() const { return mWriteFD; }

private:
    int mReadFD = -1;
    int mWriteFD = -1;
    std::function<void()> mHook;
};

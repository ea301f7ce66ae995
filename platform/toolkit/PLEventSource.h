// Where the event loop gets its events: the simulator's window, its script, or a test.
#pragma once

class PLEventLoop;
struct PLEvent;

class PLEventSource {
public:
    virtual ~PLEventSource() = default;
    // Waits for the next event. Called only when the loop is idle: the screen is up to date and
    // due timers have fired, so a source may inspect the screen before answering. Returns false
    // when there will be no more events (the loops then end).
    virtual bool NextEvent(PLEventLoop& loop, PLEvent& event) = 0;
};

// The event source of a headless run without a script: there is no user, so it only waits for
// timers and for messages from other processes, until the application ends or the run is
// interrupted (SIGINT, SIGTERM).
#pragma once

#include <functional>

#include "PLEventSource.h"

class PLHostWakeup;

class PLHostIdleSource : public PLEventSource {
public:
    PLHostIdleSource(PLHostWakeup& wakeup, std::function<bool()> interrupted);
    bool NextEvent(PLEventLoop& loop, PLEvent& event) override;

private:
    PLHostWakeup& mWakeup;
    std::function<bool()> mInterrupted;
};

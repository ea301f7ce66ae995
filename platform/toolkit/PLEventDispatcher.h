// Delivers messages from other applications to the listeners of this one (the application object
// registers itself at start), and ends the event loops when the application exits.
#pragma once

#include "PLBroadcaster.h"

class PLMessage;

class PLEventDispatcher : public PLBroadcaster {
public:
    // Hands a message to every listener, on the event-loop thread.
    void DispatchMessage(PLMessage* message) { BroadcastMessage(message); }
    // Ends every running event loop of the application context.
    static void ShutdownEventLoops();
};

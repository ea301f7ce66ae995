// Delivers messages from other applications to the listeners of this one (the application object
// registers itself at start), and ends the event loops when the application exits.
#pragma once

#include "PLBroadcaster.h"
#include "PLListener.h"

class PLMessage;

// It is also a listener, so that the platform's message service can hand it the messages that
// other applications address to this one.
class PLEventDispatcher : public PLBroadcaster, public PLListener {
public:
    void Listen(PLMessage* message) override { DispatchMessage(message); }
    // Hands a message to every listener, on the event-loop thread.
    void DispatchMessage(PLMessage* message) { BroadcastMessage(message); }
    // Ends every running event loop of the application context.
    static void ShutdownEventLoops();
};

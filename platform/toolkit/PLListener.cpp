// Listeners: leave every broadcaster on destruction so that none calls a dead listener.
#include "PLListener.h"

#include "PLBroadcaster.h"

PLListener::~PLListener() {
    // Forget() edits our list through the friend interface; work on a copy.
    const std::vector<PLBroadcaster*> broadcasters = mBroadcasters;
    for (PLBroadcaster* broadcaster : broadcasters) {
        broadcaster->Forget(this);
    }
}

void PLListener::Listen(PLMessage* /*message*/) {}

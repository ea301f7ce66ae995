// Something that receives messages. A listener remembers the broadcasters it is registered with
// and leaves them when it is destroyed, so that no broadcaster ever calls a dead listener.
#pragma once

#include <vector>

class PLBroadcaster;
class PLMessage;

class PLListener {
public:
    PLListener() = default;
    PLListener(const PLListener&) = delete;
    PLListener& operator=(const PLListener&) = delete;
    virtual ~PLListener();

    virtual void Listen(PLMessage* message);

private:
    friend class PLBroadcaster;
    std::vector<PLBroadcaster*> mBroadcasters;
};

// Sends messages to its listeners, synchronously and in the order they were added.
//
// Broadcasting is safe against listeners that add or remove listeners while it runs (a listener
// removed during a broadcast is not called afterwards; one added is called from the next
// broadcast on) and against a listener that destroys the broadcaster itself: the broadcast then
// stops at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class PLListener;
class PLMessage;

class PLBroadcaster {
public:
    PLBroadcaster();
    PLBroadcaster(const PLBroadcaster&) = delete;
    PLBroadcaster& operator=(const PLBroadcaster&) = delete;
    virtual ~PLBroadcaster();

    // Adding a listener twice keeps one registration.
    void AddListener(PLListener* listener);
    void RemoveListener(PLListener* listener);
    bool HasListener(const PLListener* listener) const;
    size_t GetListenerCount() const { return mListeners.size(); }
    void BroadcastMessage(PLMessage* message);

private:
    friend class PLListener;
    void Forget(PLListener* listener);

    // Each registration carries a serial number, so that a broadcast calls only listeners that were
    // registered when it began, even if one was removed and a new one took its address meanwhile.
    struct Registration {
        PLListener* listener;
        uint64_t serial;
    };
    bool IsRegistered(const Registration& registration) const;

    std::vector<Registration> mListeners;
    uint64_t mNextSerial = 0;
    std::shared_ptr<bool> mAlive;
};

// Synchronous delivery of messages to listeners in the order they were added.
#include "PLBroadcaster.h"

#include <algorithm>

#include "PLListener.h"

PLBroadcaster::PLBroadcaster() : mAlive(std::make_shared<bool>(true)) {}

PLBroadcaster::~PLBroadcaster() {
    *mAlive = false;
    for (const Registration& registration : mListeners) {
        std::vector<PLBroadcaster*>& list = registration.listener->mBroadcasters;
        list.erase(std::remove(list.begin(), list.end(), this), list.end());
    }
}

void PLBroadcaster::AddListener(PLListener* listener) {
    if (listener == nullptr || HasListener(listener)) {
        return;
    }
    mListeners.push_back({listener, mNextSerial++});
    listener->mBroadcasters.push_back(this);
}

void PLBroadcaster::RemoveListener(PLListener* listener) {
    if (listener == nullptr || !HasListener(listener)) {
        return;
    }
    Forget(listener);
    std::vector<PLBroadcaster*>& list = listener->mBroadcasters;
    list.erase(std::remove(list.begin(), list.end(), this), list.end());
}

bool PLBroadcaster::HasListener(const PLListener* listener) const {
    return std::any_of(mListeners.begin(), mListeners.end(),
                       [listener](const Registration& r) { return r.listener == listener; });
}

bool PLBroadcaster::IsRegistered(const Registration& registration) const {
    return std::any_of(
        mListeners.begin(), mListeners.end(), [&registration](const Registration& r) {
            return r.listener == registration.listener && r.serial == registration.serial;
        });
}

void PLBroadcaster::BroadcastMessage(PLMessage* message) {
    // Listeners may add, remove or destroy listeners, or destroy this broadcaster, while we run:
    // walk a snapshot, check each entry is still registered, and stop once we are gone.
    const std::shared_ptr<bool> alive = mAlive;
    const std::vector<Registration> snapshot = mListeners;
    for (const Registration& registration : snapshot) {
        if (!IsRegistered(registration)) {
            continue;
        }
        registration.listener->Listen(message);
        if (!*alive) {
            return;
        }
    }
}

void PLBroadcaster::Forget(PLListener* listener) {
    mListeners.erase(
        std::remove_if(mListeners.begin(), mListeners.end(),
                       [listener](const Registration& r) { return r.listener == listener; }),
        mListeners.end());
}

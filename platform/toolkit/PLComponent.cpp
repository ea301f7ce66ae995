// Components: listeners that broadcast through a broadcaster of their own or a given one.
#include "PLComponent.h"

PLComponent::~PLComponent() {
    *mAlive = false;
}

void PLComponent::SetBroadcaster(PLBroadcaster* broadcaster, bool owned) {
    if (broadcaster == mOwnedBroadcaster.get()) {
        if (!owned) {
            // The caller takes the broadcaster over.
            static_cast<void>(mOwnedBroadcaster.release());
        }
        mBroadcaster = broadcaster;
        return;
    }
    mBroadcaster = broadcaster;
    mOwnedBroadcaster.reset(owned ? broadcaster : nullptr);
}

PLBroadcaster* PLComponent::GetBroadcaster() {
    if (mBroadcaster == nullptr) {
        mOwnedBroadcaster = std::make_unique<PLBroadcaster>();
        mBroadcaster = mOwnedBroadcaster.get();
    }
    return mBroadcaster;
}

void PLComponent::SetComponentListener(PLListener* listener, bool ownBroadcaster,
                                       bool forwardToParent) {
    if (ownBroadcaster && (mBroadcaster == nullptr || mBroadcaster != mOwnedBroadcaster.get())) {
        SetBroadcaster(new PLBroadcaster(), true);
    }
    if (listener != nullptr) {
        GetBroadcaster()->AddListener(listener);
    }
    mForwardToParent = forwardToParent;
}

void PLComponent::AddListener(PLListener* listener) {
    if (listener != nullptr) {
        GetBroadcaster()->AddListener(listener);
    }
}

void PLComponent::RemoveListener(PLListener* listener) {
    if (mBroadcaster != nullptr) {
        mBroadcaster->RemoveListener(listener);
    }
}

void PLComponent::BroadcastMessage(PLMessage* message) {
    const std::shared_ptr<bool> alive = mAlive;
    if (mBroadcaster != nullptr) {
        mBroadcaster->BroadcastMessage(message);
    }
    if (!*alive || !mForwardToParent) {
        return;
    }
    if (PLListener* target = GetForwardTarget()) {
        target->Listen(message);
    }
}

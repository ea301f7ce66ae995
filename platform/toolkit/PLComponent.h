// A listener that can also broadcast: panes, views and the application are components.
//
// A component broadcasts through a broadcaster of its own (made on first use, or given with
// SetBroadcaster). SetComponentListener names one extra listener that hears everything the
// component broadcasts.
#pragma once

#include <memory>

#include "PLBroadcaster.h"
#include "PLListener.h"

class PLComponent : public PLListener {
public:
    PLComponent() = default;
    ~PLComponent() override;

    // Uses `broadcaster` (owned when `owned`) instead of the component's own.
    void SetBroadcaster(PLBroadcaster* broadcaster, bool owned = true);
    PLBroadcaster* GetBroadcaster();
    // `listener` (may be null) is added to the broadcaster; `ownBroadcaster` makes sure the
    // component has a broadcaster of its own; `forwardToParent` also hands every broadcast to the
    // parent pane's Listen (panes only).
    void SetComponentListener(PLListener* listener, bool ownBroadcaster, bool forwardToParent);
    bool ForwardsToParent() const { return mForwardToParent; }

    void AddListener(PLListener* listener);
    void RemoveListener(PLListener* listener);
    virtual void BroadcastMessage(PLMessage* message);

protected:
    // Where a forwarding component hands its broadcasts after its listeners have heard them: a
    // pane returns its parent. Null means nowhere.
    virtual PLListener* GetForwardTarget() { return nullptr; }

private:
    PLBroadcaster* mBroadcaster = nullptr;
    std::unique_ptr<PLBroadcaster> mOwnedBroadcaster;
    bool mForwardToParent = false;
    // False once the component is destroyed, so that a broadcast during which a listener deletes
    // the component does not go on to forward.
    std::shared_ptr<bool> mAlive = std::make_shared<bool>(true);
};

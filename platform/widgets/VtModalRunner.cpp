// Modal panes in nested event loops.
#include "VtModalRunner.h"

#include "PLAppContext.h"
#include "PLEventLoop.h"
#include "PLPane.h"
#include "PLScreen.h"

PLPane* VtModalRunner::Root() {
    return PLAppContext::GetInstance()->GetScreen().GetRoot();
}

bool VtModalRunner::Run(PLPane& pane, const std::function<bool()>& done) {
    PLPane* root = Root();
    if (root == nullptr) {
        return false;
    }
    PLEventLoop& loop = PLAppContext::GetInstance()->GetEventLoop();
    PLPane* previousTarget = loop.GetTarget();
    root->AddSubPane(&pane, true);
    loop.SetTarget(&pane);
    const bool finished = loop.RunNested(done);
    if (loop.GetTarget() == &pane) {
        loop.SetTarget(previousTarget);
    }
    if (pane.GetParent() != nullptr) {
        pane.Close(false, true);
    }
    return finished;
}

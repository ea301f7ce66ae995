// The process-wide application context: screen, event loop, dispatcher and resource managers.
#include "PLAppContext.h"

#include <algorithm>
#include <cassert>

#include "PLBitmap.h"
#include "PLBitmapFamily.h"
#include "PLEventDispatcher.h"
#include "PLEventLoop.h"
#include "PLPMEClient.h"
#include "PLResourceManager.h"
#include "PLScreen.h"
#include "PLTypes.h"

PLAppContext* PLAppContext::GetInstance() {
    // Made once and never destroyed: panes deleted during process exit still reach the loop and
    // the screen through it, whatever the order of static destruction.
    static PLAppContext* instance = new PLAppContext();
    return instance;
}

void PLAppContext::ResetInstance() {
    PLAppContext* context = GetInstance();
    context->mApplication = nullptr;
    context->mApplicationName.clear();
    // The dispatcher outlives the application; it must not keep hearing messages addressed to an
    // application that has gone.
    PLPMEClient::GetInstance()->UnregisterListener(context->mDispatcher.get());
    for (const Manager& entry : context->mManagers) {
        if (entry.owned) {
            delete entry.manager;
        }
    }
    context->mManagers.clear();
    context->mEventLoop->ResetState();
    context->mScreen->SetRoot(nullptr);
}

PLAppContext::PLAppContext()
    : mScreen(std::make_unique<PLScreen>()),
      mEventLoop(std::make_unique<PLEventLoop>()),
      mDispatcher(std::make_unique<PLEventDispatcher>()) {}

PLAppContext::~PLAppContext() {
    for (const Manager& entry : mManagers) {
        if (entry.owned) {
            delete entry.manager;
        }
    }
}

void PLAppContext::AddResourceManager(PLResourceManager* manager, bool owned) {
    assert(manager != nullptr && "cannot register a null resource manager");
    if (manager == nullptr) {
        return;
    }
    auto same = [manager](const Manager& entry) { return entry.manager == manager; };
    if (std::any_of(mManagers.begin(), mManagers.end(), same)) {
        return;
    }
    mManagers.push_back({manager, owned});
}

// The caller gets the manager back, owned or not.
void PLAppContext::RemoveResourceManager(PLResourceManager* manager) {
    auto same = [manager](const Manager& entry) { return entry.manager == manager; };
    mManagers.erase(std::remove_if(mManagers.begin(), mManagers.end(), same), mManagers.end());
}

const void* PLAppContext::GetResource(uint32_t type, uint32_t id, uint32_t selector) const {
    // Newest first, so that an application's own file overrides the platform's resources.
    for (auto it = mManagers.rbegin(); it != mManagers.rend(); ++it) {
        if (const void* found = it->manager->GetResource(type, id, selector)) {
            return found;
        }
    }
    return nullptr;
}

PLBitmap* PLAppContext::GetBitmap(uint32_t id) const {
    return static_cast<PLBitmap*>(const_cast<void*>(GetResource(kPLResBitmap, id, kPLWildcard)));
}

PLBitmapFamily* PLAppContext::GetBitmapFamily(uint32_t id) const {
    return static_cast<PLBitmapFamily*>(
        const_cast<void*>(GetResource(kPLResBitmapFamily, id, kPLWildcard)));
}

bool PLAppContext::GetText(uint32_t id, PLBasicString<char>& text) const {
    for (auto it = mManagers.rbegin(); it != mManagers.rend(); ++it) {
        if (it->manager->GetText(id, text)) {
            return true;
        }
    }
    return false;
}

// The running application's context: the application object, its resources, the screen, the event
// loop and the event dispatcher. There is one per process (GetInstance).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "PLBasicString.h"

class PLApplication;
class PLBitmap;
class PLBitmapFamily;
class PLEventDispatcher;
class PLEventLoop;
class PLResourceManager;
class PLScreen;

class PLAppContext {
public:
    static PLAppContext* GetInstance();
    // Drops the application's state (application pointer, resource managers, timers), keeping the
    // screen; the simulator calls it after CleanupApplication, tests between cases.
    static void ResetInstance();

    void SetApplication(PLApplication* application) { mApplication = application; }
    PLApplication* GetApplication() const { return mApplication; }
    // The running module's name (its GetApplicationName), set by the application loader; messages
    // between applications are addressed by it.
    void SetApplicationName(const std::string& name) { mApplicationName = name; }
    const std::string& GetApplicationName() const { return mApplicationName; }

    // Registers a resource manager; lookups ask the managers newest first. With `owned` the
    // context deletes it.
    void AddResourceManager(PLResourceManager* manager, bool owned);
    void RemoveResourceManager(PLResourceManager* manager);
    // A resource by type ('bitm', 'bitf', 'text'), id and selector ('????' matches any); null
    // when no manager has it. The manager keeps ownership.
    const void* GetResource(uint32_t type, uint32_t id, uint32_t selector) const;
    PLBitmap* GetBitmap(uint32_t id) const;
    PLBitmapFamily* GetBitmapFamily(uint32_t id) const;
    // A text by id; false when no manager has it.
    bool GetText(uint32_t id, PLBasicString<char>& text) const;

    PLScreen& GetScreen() { return *mScreen; }
    PLEventLoop& GetEventLoop() { return *mEventLoop; }
    PLEventDispatcher& GetEventDispatcher() { return *mDispatcher; }

private:
    PLAppContext();
    ~PLAppContext();

    PLApplication* mApplication = nullptr;
    std::string mApplicationName;
    struct Manager {
        PLResourceManager* manager;
        bool owned;
    };
    std::vector<Manager> mManagers;
    std::unique_ptr<PLScreen> mScreen;
    std::unique_ptr<PLEventLoop> mEventLoop;
    std::unique_ptr<PLEventDispatcher> mDispatcher;
};

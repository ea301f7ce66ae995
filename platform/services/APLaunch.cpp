// Registering an application for inter-application messages addressed to it.
#include "APLaunch.h"

#include "PLAppContext.h"
#include "PLEventDispatcher.h"
#include "PLPMEClient.h"

void RegisterForIPC_APLaunchAppMsg() {
    PLAppContext* context = PLAppContext::GetInstance();
    const std::string& name = context->GetApplicationName();
    if (name.empty()) {
        return;
    }
    PLPMEClient* client = PLPMEClient::GetInstance();
    PLEventDispatcher* dispatcher = &context->GetEventDispatcher();
    // Unregister first so that a second call does not deliver every message twice.
    client->UnregisterListener(dispatcher);
    client->RegisterListener(name, dispatcher);
}

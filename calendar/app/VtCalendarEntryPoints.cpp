// The three entry points through which the platform's application loader starts, names and
// cleans up the calendar.
#include "PLAppContext.h"
#include "PLAppModule.h"
#include "PLEventDispatcher.h"
#include "PLPane.h"
#include "app/VtCalendarApp.h"
#include "app/VtCalendarBroadcasts.h"

extern "C" {

int InitApplication(PLAppContext* context) {
    if (context == nullptr) {
        return -1;
    }
    auto* application = new VtCalendarApp();
    application->Initialize();
    context->SetApplication(application);
    context->GetEventDispatcher().AddListener(application);
    PLPane::SuppressDrawing();
    application->Startup();
    PLPane::RemoveDrawingSuppression();
    return 0;
}

int CleanupApplication(const PLAppContext* context) {
    if (context == nullptr) {
        return -1;
    }
    auto* application = static_cast<VtCalendarApp*>(context->GetApplication());
    if (application == nullptr) {
        return 0;
    }
    application->Cleanup();
    // The object's code lives in this module: it goes before the module is unloaded.
    PLAppContext::GetInstance()->SetApplication(nullptr);
    delete application;
    return 0;
}

int GetApplicationName(PLBasicString<char>& name) {
    name.Assign(kCalendarSignature);
    return 0;
}
}

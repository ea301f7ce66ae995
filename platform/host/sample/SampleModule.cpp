// The sample application's entry points, as the platform's loader finds them.
#include "PLAppContext.h"
#include "PLAppModule.h"
#include "PLEventDispatcher.h"
#include "PLView.h"
#include "SampleApp.h"

extern "C" int InitApplication(PLAppContext* context) {
    auto* application = new SampleApp();
    application->Initialize();
    context->SetApplication(application);
    context->GetEventDispatcher().AddListener(application);
    PLPane::SuppressDrawing();
    application->GetRootView()->Redraw();
    PLPane::RemoveDrawingSuppression();
    return 0;
}

extern "C" int CleanupApplication(const PLAppContext* context) {
    // The loader passes the context it started us with; ours is the process-wide one.
    PLAppContext* own = PLAppContext::GetInstance();
    if (context != own) {
        return -1;
    }
    delete own->GetApplication();
    own->SetApplication(nullptr);
    return 0;
}

extern "C" int GetApplicationName(PLBasicString<char>& name) {
    name.Assign(SampleApp::kName);
    return 0;
}

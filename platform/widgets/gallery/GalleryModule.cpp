// The gallery's entry points for the platform's application loader.
#include "GalleryApp.h"
#include "PLAppContext.h"
#include "PLAppModule.h"
#include "PLEventDispatcher.h"

extern "C" int InitApplication(PLAppContext* context) {
    auto* application = new GalleryApp();
    context->SetApplication(application);
    application->Initialize();
    context->GetEventDispatcher().AddListener(application);
    return 0;
}

extern "C" int CleanupApplication(const PLAppContext* context) {
    // The loader hands a const context; the application object is this module's to delete.
    auto* own = const_cast<PLAppContext*>(context);
    delete own->GetApplication();
    own->SetApplication(nullptr);
    return 0;
}

extern "C" int GetApplicationName(PLBasicString<char>& name) {
    name = PLBasicString<char>("com.mdz.widgets.gallery");
    return 0;
}

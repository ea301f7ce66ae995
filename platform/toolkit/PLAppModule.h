// The three entry points every application module exports; the platform's application loader
// finds them with dlsym by these names.
#pragma once

#include "PLAppContext.h"
#include "PLApplication.h"
#include "PLBasicString.h"
#include "PLEventDispatcher.h"

extern "C" {
int InitApplication(PLAppContext* context);
int CleanupApplication(const PLAppContext* context);
int GetApplicationName(PLBasicString<char>& name);
}

using PLInitApplicationFn = int (*)(PLAppContext*);
using PLCleanupApplicationFn = int (*)(const PLAppContext*);
using PLGetApplicationNameFn = int (*)(PLBasicString<char>&);

// The usual body of InitApplication: makes the application object, installs it in the context,
// initializes it and lets it hear the event dispatcher.
template <class App>
App* PLInstallApplication(PLAppContext* context) {
    auto* application = new App();
    context->SetApplication(application);
    application->Initialize();
    context->GetEventDispatcher().AddListener(application);
    return application;
}

// The usual body of CleanupApplication: the loader hands a const context, but the application
// object is the module's to delete.
inline void PLRemoveApplication(const PLAppContext* context) {
    auto* own = const_cast<PLAppContext*>(context);
    delete own->GetApplication();
    own->SetApplication(nullptr);
}

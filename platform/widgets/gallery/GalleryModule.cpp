// The gallery's entry points for the platform's application loader.
#include "GalleryApp.h"
#include "PLAppContext.h"
#include "PLAppModule.h"
#include "PLEventDispatcher.h"

extern "C" int InitApplication(PLAppContext* context) {
    PLInstallApplication<GalleryApp>(context);
    return 0;
}

extern "C" int CleanupApplication(const PLAppContext* context) {
    PLRemoveApplication(context);
    return 0;
}

extern "C" int GetApplicationName(PLBasicString<char>& name) {
    name = PLBasicString<char>("com.mdz.widgets.gallery");
    return 0;
}

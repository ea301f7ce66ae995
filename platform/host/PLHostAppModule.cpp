// Loading, starting, cleaning up and unloading application modules.
#include "PLHostAppModule.h"

#include <dlfcn.h>

#include "PLAppContext.h"
#include "PLApplication.h"
#include "PLEventLoop.h"
#include "PLHostFiles.h"
#include "PLScreen.h"

namespace {

bool EndsWith(const std::string& text, const std::string& suffix) {
    return text.size() >= suffix.size() &&
           text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

}  // namespace

PLHostAppModule::~PLHostAppModule() {
    if (mHandle) {
        Unload(PLAppContext::GetInstance());
    }
}

std::string PLHostAppModule::ResolvePath(const std::string& app, const std::string& appsDir) {
    if (app.empty()) {
        std::string calendar = appsDir + "/calendar.so";
        return PLHostFiles::Exists(calendar) ? calendar : appsDir + "/sample.so";
    }
    if (app.find('/') != std::string::npos || EndsWith(app, ".so")) {
        return app;
    }
    return appsDir + "/" + app + ".so";
}

bool PLHostAppModule::Load(const std::string& path, std::string& error) {
    if (mHandle) {
        error = "an application is already loaded";
        return false;
    }
    if (!PLHostFiles::Exists(path)) {
        error = "no application module at " + path;
        return false;
    }
    // dlopen searches the library path for names without a slash; a module is always a file.
    std::string file = path.find('/') == std::string::npos ? "./" + path : path;
    void* handle = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        const char* why = ::dlerror();
        error = "cannot load " + path + ": " + (why ? why : "unknown error");
        return false;
    }
    auto init = reinterpret_cast<PLInitApplicationFn>(::dlsym(handle, "InitApplication"));
    auto cleanup = reinterpret_cast<PLCleanupApplicationFn>(::dlsym(handle, "CleanupApplication"));
    auto getName = reinterpret_cast<PLGetApplicationNameFn>(::dlsym(handle, "GetApplicationName"));
    if (!init || !cleanup || !getName) {
        error = path + " is not an application module: it lacks " +
                (!init      ? "InitApplication"
                 : !cleanup ? "CleanupApplication"
                            : "GetApplicationName");
        ::dlclose(handle);
        return false;
    }
    PLBasicString<char> name;
    getName(name);
    mPath = path;
    mName = name.str();
    mHandle = handle;
    mInit = init;
    mCleanup = cleanup;
    mInitialized = false;
    return true;
}

int PLHostAppModule::Initialize(PLAppContext* context) {
    if (!mHandle || mInitialized) {
        return -1;
    }
    mInitialized = true;
    return mInit(context);
}

void PLHostAppModule::Unload(PLAppContext* context) {
    if (!mHandle) {
        return;
    }
    if (mInitialized) {
        mCleanup(context);
        // The application object's code is in the module: it must go before the module does,
        // and so must everything else that may call into it (timers, posted work, the text sink).
        PLEventLoop& loop = context->GetEventLoop();
        loop.SetTarget(nullptr);
        loop.SetTextSink(nullptr);
        if (PLApplication* left = context->GetApplication()) {
            context->SetApplication(nullptr);
            context->GetScreen().SetRoot(nullptr);
            delete left;
        }
        context->GetScreen().SetRoot(nullptr);
        PLAppContext::ResetInstance();
    }
    ::dlclose(mHandle);
    mHandle = nullptr;
    mInit = nullptr;
    mCleanup = nullptr;
    mInitialized = false;
}

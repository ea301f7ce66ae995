// The platform's application loader: an application is a shared object exporting the three entry
// points of PLAppModule.h. The loader opens it, starts it through InitApplication, and after the
// event loop has ended calls CleanupApplication and unloads it.
//
// A module's CleanupApplication either deletes its application object and clears the context's
// pointer, or leaves both to the loader, which then deletes the object before unloading (its code
// lives in the module).
#pragma once

#include <string>

#include "PLAppModule.h"

class PLHostAppModule {
public:
    PLHostAppModule() = default;
    ~PLHostAppModule();
    PLHostAppModule(const PLHostAppModule&) = delete;
    PLHostAppModule& operator=(const PLHostAppModule&) = delete;

    // Where `--app` points: a bare name ("gallery") is <apps>/<name>.so, anything with a '/' or a
    // ".so" ending is a path; empty chooses the calendar when it is built, else the sample.
    static std::string ResolvePath(const std::string& app, const std::string& appsDir);

    // Opens the module and finds its entry points. False with one line saying why.
    bool Load(const std::string& path, std::string& error);
    bool IsLoaded() const { return mHandle != nullptr; }
    // The application's name (GetApplicationName), known once loaded.
    const std::string& GetName() const { return mName; }
    const std::string& GetPath() const { return mPath; }

    // Starts the application; returns InitApplication's result.
    int Initialize(PLAppContext* context);
    // Cleans the application up (once, only after Initialize), drops what the context still holds
    // of it (PLAppContext::ResetInstance) and unloads the module.
    void Unload(PLAppContext* context);

private:
    std::string mPath;
    std::string mName;
    void* mHandle = nullptr;
    PLInitApplicationFn mInit = nullptr;
    PLCleanupApplicationFn mCleanup = nullptr;
    bool mInitialized = false;
};

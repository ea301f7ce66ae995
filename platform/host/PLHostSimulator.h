// The phone on a desktop: takes the device root, loads the application module, starts it, shows
// the status area, and runs the event loop from the window, the script or (headless, without a
// script) from messages alone; then cleans the application up and releases everything.
//
// Exit statuses: 0 the run ended normally (the script ran to its end), 1 an expectation failed,
// 2 a script or usage error, 3 the simulator could not start (module, root, socket).
#pragma once

#include <atomic>
#include <cstdint>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>

#include "PLHostAppModule.h"
#include "PLHostDevice.h"
#include "PLHostMessageServer.h"
#include "PLHostOptions.h"
#include "PLHostWakeup.h"

class PLEventSource;
class PLHostIdleSource;
class PLHostScriptDriver;
class PLHostStatusBar;
class PLHostWindow;

class PLHostSimulator {
public:
    static constexpr int kExitStartFailed = 3;

    explicit PLHostSimulator(PLHostOptions options);
    ~PLHostSimulator();
    PLHostSimulator(const PLHostSimulator&) = delete;
    PLHostSimulator& operator=(const PLHostSimulator&) = delete;

    // Everything up to the first painted frame. False with the line to print and the status to
    // exit with.
    bool Start(std::string& error, int& exitStatus);
    // Runs the event loop until the application or the script ends; returns the exit status.
    int Run();
    // Cleans the application up, unloads it and releases the root. Harmless when called twice.
    void Stop();

    const std::string& GetRoot() const { return mRoot; }
    const PLHostAppModule& GetModule() const { return mModule; }

private:
    bool LoadScript(std::string& error);
    bool OpenDevice(std::string& error);
    bool StartServer(std::string& error);
    void ChooseSource();
    void StartApplication();
    bool SendThroughSocket(uint32_t messageID, std::string& error);

    PLHostOptions mOptions;
    std::string mRoot;
    PLHostDevice mDevice;
    PLHostWakeup mWakeup;
    PLHostMessageServer mServer;
    std::shared_ptr<std::atomic<uint64_t>> mDelivered;
    // Deliveries per message id, for the script's `await`; only the loop's thread touches it.
    std::shared_ptr<std::map<uint32_t, uint64_t>> mDeliveredPerID =
        std::make_shared<std::map<uint32_t, uint64_t>>();
    PLHostAppModule mModule;
    std::unique_ptr<PLHostWindow> mWindow;
    std::unique_ptr<PLHostScriptDriver> mDriver;
    std::unique_ptr<PLHostIdleSource> mIdle;
    PLEventSource* mSource = nullptr;
    PLHostStatusBar* mStatusBar = nullptr;  // owned by the root view
    bool mPinnedClock = false;
    bool mStarted = false;
};

// The simulator's start-up, run and shutdown.
#include "PLHostSimulator.h"

#include <unistd.h>
#include <csignal>
#include <cstdio>
#include <iostream>

#include "PLAppContext.h"
#include "PLApplication.h"
#include "PLClock.h"
#include "PLDeviceRoot.h"
#include "PLEventDispatcher.h"
#include "PLEventLoop.h"
#include "PLHostFiles.h"
#include "PLHostIdleSource.h"
#include "PLHostMessageClient.h"
#include "PLHostScript.h"
#include "PLHostScriptDriver.h"
#include "PLHostStatusBar.h"
#include "PLHostWindow.h"
#include "PLMessage.h"
#include "PLPMEClient.h"
#include "PLScreen.h"
#include "PLTypes.h"
#include "PLView.h"

namespace {

// What a signal handler may touch: a flag and the wake-up pipe.
volatile std::sig_atomic_t gInterrupted = 0;
int gWakeFD = -1;

void OnSignal(int) {
    gInterrupted = 1;
    if (gWakeFD >= 0) {
        char byte = 1;
        [[maybe_unused]] ssize_t ignored = ::write(gWakeFD, &byte, 1);
    }
}

void InstallSignalHandlers(int wakeFD) {
    gInterrupted = 0;
    gWakeFD = wakeFD;
    struct sigaction action {};
    action.sa_handler = OnSignal;
    sigemptyset(&action.sa_mask);
    ::sigaction(SIGINT, &action, nullptr);
    ::sigaction(SIGTERM, &action, nullptr);
}

void RestoreSignalHandlers() {
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    gWakeFD = -1;
}

constexpr const char* kSenderName = "calendar-sim";

}  // namespace

PLHostSimulator::PLHostSimulator(PLHostOptions options)
    : mOptions(std::move(options)), mDelivered(std::make_shared<std::atomic<uint64_t>>(0)) {}

PLHostSimulator::~PLHostSimulator() {
    Stop();
}

bool PLHostSimulator::LoadScript(std::string& error) {
    std::string text;
    std::string why;
    if (!PLHostFiles::ReadAll(mOptions.script, text, why)) {
        error = "calendar-sim: " + why;
        return false;
    }
    std::vector<PLHostScriptCommand> commands;
    PLHostScript::Error parseError;
    if (!PLHostScript::Parse(text, commands, parseError)) {
        error = "script:" + std::to_string(parseError.line) + ": " + parseError.message;
        return false;
    }
    PLHostScriptDriver::Hooks hooks;
    hooks.send = [this](uint32_t id, std::string& why) { return SendThroughSocket(id, why); };
    hooks.deliveredCount = [delivered = mDelivered] { return delivered->load(); };
    hooks.deliveredOf = [perID = mDeliveredPerID](uint32_t id) {
        const auto found = perID->find(id);
        return found == perID->end() ? uint64_t(0) : found->second;
    };
    hooks.clockChanged = [this] {
        if (mStatusBar) {
            mStatusBar->Refresh();
        }
    };
    hooks.beforeCommand = [this] {
        if (mWindow) {
            mWindow->Pump();
        }
    };
    hooks.interrupted = [this] { return gInterrupted != 0 || (mWindow && mWindow->IsClosed()); };
    hooks.wakeup = &mWakeup;
    mDriver =
        std::make_unique<PLHostScriptDriver>(std::move(commands), std::move(hooks), std::cerr);
    return true;
}

bool PLHostSimulator::OpenDevice(std::string& error) {
    mRoot =
        PLHostFiles::Absolute(mOptions.root.empty() ? PLDeviceRoot::DefaultRoot() : mOptions.root);
    while (mRoot.size() > 1 && mRoot.back() == '/') {
        mRoot.pop_back();
    }
    PLDeviceRoot::SetRoot(mRoot);
    std::string why;
    if (!mDevice.Open(mRoot, why) || !mDevice.Populate(why)) {
        error = "calendar-sim: " + why;
        return false;
    }
    return true;
}

bool PLHostSimulator::StartServer(std::string& error) {
    PLEventLoop* loop = &PLAppContext::GetInstance()->GetEventLoop();
    PLHostWakeup* wakeup = &mWakeup;
    auto delivered = mDelivered;
    auto perID = mDeliveredPerID;
    auto receive = [loop, wakeup, delivered, perID](const PLHostMessageFields& fields) {
        loop->Post([fields, delivered, perID] {
            PLMessage message(fields.messageID, fields.a, fields.b, fields.s1, fields.s2);
            PLAppContext::GetInstance()->GetEventDispatcher().DispatchMessage(&message);
            // Counted on the loop's thread, where the script driver reads it.
            ++(*perID)[fields.messageID];
            delivered->fetch_add(1);
        });
        wakeup->Notify();
    };
    std::string why;
    if (!mServer.Start(PLHostMessageCodec::SocketPath(mRoot), receive, why)) {
        error = "calendar-sim: " + why;
        return false;
    }
    return true;
}

bool PLHostSimulator::SendThroughSocket(uint32_t messageID, std::string& error) {
    // As another process would: log the broadcast, then carry it to the running simulator.
    const std::string& recipient = mModule.GetName();
    PLMessage message(messageID, kPLWildcard, kPLWildcard, recipient, kSenderName);
    PLPMEClient::GetInstance()->LogMessage(message);
    return PLHostSendMessage(mRoot, messageID, kPLWildcard, kPLWildcard, recipient, kSenderName,
                             error);
}

void PLHostSimulator::ChooseSource() {
    if (!mOptions.headless) {
        std::string why;
        mWindow = PLHostWindow::Open(mOptions.scale, why);
        if (!mWindow) {
            std::fprintf(stderr, "calendar-sim: %s; running headless\n", why.c_str());
        }
    }
    PLScreen& screen = PLAppContext::GetInstance()->GetScreen();
    if (mWindow) {
        PLHostWindow* window = mWindow.get();
        mWakeup.SetHook([window] { window->Wake(); });
        screen.SetPresenter([window](const PLRect&) {
            window->Present(PLAppContext::GetInstance()->GetScreen().GetFramebuffer());
        });
    } else {
        InstallSignalHandlers(mWakeup.GetWriteFD());
    }
    if (mDriver) {
        mSource = mDriver.get();
    } else if (mWindow) {
        mSource = mWindow.get();
    } else {
        mIdle = std::make_unique<PLHostIdleSource>(mWakeup, [] { return gInterrupted != 0; });
        mSource = mIdle.get();
    }
}

void PLHostSimulator::StartApplication() {
    PLAppContext* context = PLAppContext::GetInstance();
    PLEventLoop& loop = context->GetEventLoop();
    loop.Reset();
    loop.SetSource(mSource);
    context->SetApplicationName(mModule.GetName());
    mModule.Initialize(context);
    PLApplication* application = context->GetApplication();
    PLView* rootView = application ? application->GetRootView() : nullptr;
    if (rootView) {
        // At the bottom of the z-order: whatever the application puts over it stays on top.
        mStatusBar = new PLHostStatusBar();
        rootView->InsertSubPane(mStatusBar, 0, false);
    } else {
        std::fprintf(stderr, "calendar-sim: %s made no root view; nothing to show\n",
                     mModule.GetPath().c_str());
    }
    context->GetScreen().InvalidateAll();
    loop.ProcessIdle();
}

bool PLHostSimulator::Start(std::string& error, int& exitStatus) {
    if (mStarted) {
        error = "calendar-sim: already started";
        exitStatus = kExitStartFailed;
        return false;
    }
    exitStatus = PLHostScriptDriver::kExitScriptError;
    if (!mOptions.script.empty() && !LoadScript(error)) {
        return false;
    }
    exitStatus = kExitStartFailed;
    if (!OpenDevice(error)) {
        return false;
    }
    if (mOptions.hasNow) {
        PLClock::Pin(mOptions.nowMs);
    }
    mPinnedClock = mOptions.hasNow || mDriver;
    std::string why;
    std::string apps = PLHostFiles::InstallDir() + "/apps";
    if (!mModule.Load(PLHostAppModule::ResolvePath(mOptions.app, apps), why)) {
        error = "calendar-sim: " + why;
        return false;
    }
    ChooseSource();
    if (!StartServer(error)) {
        return false;
    }
    StartApplication();
    mStarted = true;
    exitStatus = 0;
    return true;
}

int PLHostSimulator::Run() {
    if (!mStarted) {
        return kExitStartFailed;
    }
    PLAppContext::GetInstance()->GetEventLoop().Run();
    if (!mDriver) {
        return 0;
    }
    if (!mDriver->IsFinished()) {
        mDriver->ReportEndedEarly();
    }
    return mDriver->GetExitStatus();
}

void PLHostSimulator::Stop() {
    PLAppContext* context = PLAppContext::GetInstance();
    mStatusBar = nullptr;
    mModule.Unload(context);
    context->GetScreen().SetPresenter(nullptr);
    PLEventLoop& loop = context->GetEventLoop();
    if (loop.GetSource() == mSource) {
        loop.SetSource(nullptr);
    }
    mServer.Stop();
    mWakeup.SetHook(nullptr);
    mSource = nullptr;
    mDriver.reset();
    mIdle.reset();
    mWindow.reset();
    RestoreSignalHandlers();
    mDevice.Close();
    if (mPinnedClock) {
        PLClock::Unpin();
        mPinnedClock = false;
    }
    mStarted = false;
}

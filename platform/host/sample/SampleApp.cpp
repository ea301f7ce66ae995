// The sample application's panes and its messages.
#include "SampleApp.h"

#include "PLAppContext.h"
#include "PLEventDispatcher.h"
#include "PLEventLoop.h"
#include "PLMessage.h"
#include "PLPMEClient.h"
#include "PLTypes.h"
#include "PLView.h"
#include "SampleBox.h"
#include "SampleButton.h"
#include "SampleDialogOpener.h"
#include "SampleDragPane.h"
#include "SampleKeyPane.h"

namespace {

constexpr uint32_t kMsgExit = 5005;
constexpr uint32_t kMsgExited = 5010;

// Removes the last UTF-8 character of `text`.
void EraseLastCharacter(std::string& text) {
    while (!text.empty()) {
        bool continuation = (uint8_t(text.back()) & 0xC0) == 0x80;
        text.pop_back();
        if (!continuation) {
            return;
        }
    }
}

}  // namespace

void SampleApp::Initialize() {
    PLApplication::Initialize();
    PLView* root = GetRootView();
    auto* view = new SampleBox(kViewID, PLPoint(kPLStatusHeight, 0),
                               PLSize(kPLScreenHeight - kPLStatusHeight, kPLScreenWidth),
                               PLRGBColor(235, 238, 242), "");
    auto* key = new SampleKeyPane(kKeyID, PLPoint(10, 125), PLSize(40, 105));
    mTyped =
        new SampleBox(kTypedID, PLPoint(60, 10), PLSize(32, 220), PLRGBColor(255, 255, 255), "");
    mMessages = new SampleBox(kMessageID, PLPoint(102, 125), PLSize(40, 105),
                              PLRGBColor(200, 205, 215), "Msg -");
    view->AddSubPane(new SampleButton(kButtonID, PLPoint(10, 10), PLSize(40, 105), "Tap me"),
                     false);
    view->AddSubPane(key, false);
    view->AddSubPane(mTyped, false);
    view->AddSubPane(new SampleDialogOpener(kDialogOpenerID, PLPoint(102, 10), PLSize(40, 105)),
                     false);
    view->AddSubPane(mMessages, false);
    view->AddSubPane(new SampleDragPane(kDragID, PLPoint(160, 10), PLSize(40, 60)), false);
    root->AddSubPane(view, true);

    PLEventLoop& loop = PLAppContext::GetInstance()->GetEventLoop();
    loop.SetTarget(key);
    loop.SetTextSink([this](const std::string& text) { TakeText(text); });
}

void SampleApp::TakeText(const std::string& text) {
    std::string typed = mTyped->GetString().str();
    for (char c : text) {
        if (c == '\b') {
            EraseLastCharacter(typed);
        } else {
            typed += c;
        }
    }
    mTyped->SetString(typed);
}

void SampleApp::Exit() {
    PLMessage exited(kMsgExited, kPLWildcard, kPLWildcard, "Server", kName);
    PLPMEClient::GetInstance()->BroadcastMessage(&exited);
    PLEventDispatcher::ShutdownEventLoops();
}

void SampleApp::Listen(PLMessage* message) {
    if (!message) {
        return;
    }
    uint32_t id = message->GetMessageID();
    if (id == kMsgExit) {
        Exit();
        return;
    }
    ++mMessageCount;
    mMessages->SetString("Msg " + std::to_string(id) + " #" + std::to_string(mMessageCount));
}

// The sample application: a few panes that exercise the platform's loader and event routing.
//
//   10  the background view            100 a button that changes colour when tapped
//   200 a pane to drag                 300 the key target, shows the last key
//   310 the typed text                 400 opens a modal dialog (500, closed by 501)
//   600 the last message from another application
//
// Message 5005 ends it (broadcasting 5010 first); every other message is shown in pane 600.
#pragma once

#include <string>

#include "PLApplication.h"

class SampleBox;

class SampleApp : public PLApplication {
public:
    static constexpr const char* kName = "com.platform.sample";
    static constexpr uint32_t kViewID = 10;
    static constexpr uint32_t kButtonID = 100;
    static constexpr uint32_t kDragID = 200;
    static constexpr uint32_t kKeyID = 300;
    static constexpr uint32_t kTypedID = 310;
    static constexpr uint32_t kDialogOpenerID = 400;
    static constexpr uint32_t kMessageID = 600;

    SampleApp() = default;
    // Builds the panes, makes the key pane the event loop's target and takes typed text.
    void Initialize() override;
    void Listen(PLMessage* message) override;

private:
    void Exit();
    void TakeText(const std::string& text);

    SampleBox* mTyped = nullptr;
    SampleBox* mMessages = nullptr;
    int mMessageCount = 0;
};

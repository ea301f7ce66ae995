// The simulator's window: the 240x320 screen scaled up, the mouse as the pen, the phone's keys on
// the keyboard (Up 17, Enter 18, Down 19, Left 28, Right 29, Page Up 30, Page Down 31), typed
// text to the input method (Backspace erases), F12 saves a screenshot in the current directory.
// Built on SDL2; a build without SDL2 simply has no window.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "PLEventSource.h"

class PLBitmap;

class PLHostWindow : public PLEventSource {
public:
    ~PLHostWindow() override;
    PLHostWindow(const PLHostWindow&) = delete;
    PLHostWindow& operator=(const PLHostWindow&) = delete;

    // Opens the window; null with the reason when there is no display (or no SDL2).
    static std::unique_ptr<PLHostWindow> Open(int scale, std::string& error);

    // Shows a frame.
    void Present(const PLBitmap& framebuffer);
    // Handles the window's own events without blocking (used while a script drives the run):
    // pen and keys are ignored then, closing the window and F12 are not.
    void Pump();
    bool IsClosed() const { return mClosed; }
    // Wakes a waiting NextEvent; safe from any thread.
    void Wake();

    bool NextEvent(PLEventLoop& loop, PLEvent& event) override;

private:
    PLHostWindow() = default;
    // Turns a window event into a phone event; false for events that are not input.
    bool Translate(const void* sdlEvent, PLEvent& event);
    void SaveScreenshot();

    void* mWindow = nullptr;
    void* mRenderer = nullptr;
    void* mTexture = nullptr;
    uint32_t mWakeEventType = 0;
    bool mPenDown = false;
    bool mClosed = false;
};

// SDL2 window of the simulator.
#include "PLHostWindow.h"

#include "PLAppContext.h"
#include "PLBitmap.h"
#include "PLClock.h"
#include "PLEvent.h"
#include "PLEventLoop.h"
#include "PLHostFiles.h"
#include "PLScreen.h"
#include "PLTypes.h"

#if PL_HOST_HAVE_SDL

#include <SDL.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

SDL_Window* AsWindow(void* p) {
    return static_cast<SDL_Window*>(p);
}
SDL_Renderer* AsRenderer(void* p) {
    return static_cast<SDL_Renderer*>(p);
}
SDL_Texture* AsTexture(void* p) {
    return static_cast<SDL_Texture*>(p);
}

// The phone key for a desktop key, or 0.
uint8_t PhoneKey(SDL_Keycode key) {
    switch (key) {
        case SDLK_UP:
            return kPLKeyUp;
        case SDLK_RETURN:
        case SDLK_KP_ENTER:
            return kPLKeyOk;
        case SDLK_DOWN:
            return kPLKeyDown;
        case SDLK_LEFT:
            return kPLKeyLeft;
        case SDLK_RIGHT:
            return kPLKeyRight;
        case SDLK_PAGEUP:
            return kPLKeyPageUp;
        case SDLK_PAGEDOWN:
            return kPLKeyPageDown;
        default:
            return 0;
    }
}

PLPoint ScreenPoint(int x, int y) {
    return PLPoint(std::clamp(y, 0, kPLScreenHeight - 1), std::clamp(x, 0, kPLScreenWidth - 1));
}

bool HasEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value && *value;
}

// SDL falls back to drivers that draw nowhere when there is no display; a window there would be
// invisible, so they count as no display unless asked for by name.
bool DrawsNowhere(const char* driver) {
    std::string name = driver ? driver : "";
    return !HasEnvironment("SDL_VIDEODRIVER") && (name == "offscreen" || name == "dummy");
}

}  // namespace

std::unique_ptr<PLHostWindow> PLHostWindow::Open(int scale, std::string& error) {
    if (!HasEnvironment("DISPLAY") && !HasEnvironment("WAYLAND_DISPLAY") &&
        !HasEnvironment("SDL_VIDEODRIVER")) {
        error = "no display (neither DISPLAY nor WAYLAND_DISPLAY is set)";
        return nullptr;
    }
    if (SDL_Init(SDL_INIT_VIDEO) != 0) {
        error = std::string("no display (") + SDL_GetError() + ")";
        return nullptr;
    }
    if (DrawsNowhere(SDL_GetCurrentVideoDriver())) {
        error = std::string("no display (only SDL's ") + SDL_GetCurrentVideoDriver() + " driver)";
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
        return nullptr;
    }
    std::unique_ptr<PLHostWindow> window(new PLHostWindow());
    window->mWindow =
        SDL_CreateWindow("calendar-sim", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED,
                         kPLScreenWidth * scale, kPLScreenHeight * scale, 0);
    if (window->mWindow) {
        window->mRenderer = SDL_CreateRenderer(AsWindow(window->mWindow), -1, 0);
    }
    if (window->mRenderer) {
        SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "0");
        SDL_RenderSetLogicalSize(AsRenderer(window->mRenderer), kPLScreenWidth, kPLScreenHeight);
        window->mTexture =
            SDL_CreateTexture(AsRenderer(window->mRenderer), SDL_PIXELFORMAT_ARGB8888,
                              SDL_TEXTUREACCESS_STREAMING, kPLScreenWidth, kPLScreenHeight);
    }
    if (!window->mTexture) {
        error = std::string("no display (") + SDL_GetError() + ")";
        return nullptr;
    }
    window->mWakeEventType = SDL_RegisterEvents(1);
    SDL_StartTextInput();
    return window;
}

PLHostWindow::~PLHostWindow() {
    if (mTexture) {
        SDL_DestroyTexture(AsTexture(mTexture));
    }
    if (mRenderer) {
        SDL_DestroyRenderer(AsRenderer(mRenderer));
    }
    if (mWindow) {
        SDL_DestroyWindow(AsWindow(mWindow));
    }
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

void PLHostWindow::Present(const PLBitmap& framebuffer) {
    if (framebuffer.GetWidth() != kPLScreenWidth || framebuffer.GetHeight() != kPLScreenHeight) {
        return;
    }
    SDL_UpdateTexture(AsTexture(mTexture), nullptr, framebuffer.Pixels(),
                      kPLScreenWidth * int(sizeof(uint32_t)));
    SDL_RenderClear(AsRenderer(mRenderer));
    SDL_RenderCopy(AsRenderer(mRenderer), AsTexture(mTexture), nullptr, nullptr);
    SDL_RenderPresent(AsRenderer(mRenderer));
}

void PLHostWindow::Wake() {
    SDL_Event event{};
    event.type = mWakeEventType;
    SDL_PushEvent(&event);
}

void PLHostWindow::SaveScreenshot() {
    std::string path;
    for (int n = 1; n < 10000; ++n) {
        path = PLHostFiles::Absolute("calendar-sim-screenshot-" + std::to_string(n) + ".png");
        if (!PLHostFiles::Exists(path)) {
            break;
        }
    }
    std::string error;
    const PLBitmap& frame = PLAppContext::GetInstance()->GetScreen().GetFramebuffer();
    if (PLHostFiles::SavePNGAtomically(frame, path, error)) {
        std::printf("screenshot: %s\n", path.c_str());
        std::fflush(stdout);
    } else {
        std::fprintf(stderr, "calendar-sim: %s\n", error.c_str());
    }
}

bool PLHostWindow::Translate(const void* sdlEvent, PLEvent& event) {
    const SDL_Event& e = *static_cast<const SDL_Event*>(sdlEvent);
    switch (e.type) {
        case SDL_QUIT:
            mClosed = true;
            return false;
        case SDL_WINDOWEVENT:
            if (e.window.event == SDL_WINDOWEVENT_EXPOSED) {
                Present(PLAppContext::GetInstance()->GetScreen().GetFramebuffer());
            }
            return false;
        case SDL_MOUSEBUTTONDOWN:
            if (e.button.button != SDL_BUTTON_LEFT) {
                return false;
            }
            mPenDown = true;
            event.kind = PLEvent::Kind::PenDown;
            event.point = ScreenPoint(e.button.x, e.button.y);
            return true;
        case SDL_MOUSEMOTION:
            if (!mPenDown) {
                return false;
            }
            event.kind = PLEvent::Kind::PenMove;
            event.point = ScreenPoint(e.motion.x, e.motion.y);
            return true;
        case SDL_MOUSEBUTTONUP:
            if (e.button.button != SDL_BUTTON_LEFT || !mPenDown) {
                return false;
            }
            mPenDown = false;
            event.kind = PLEvent::Kind::PenUp;
            event.point = ScreenPoint(e.button.x, e.button.y);
            return true;
        case SDL_KEYDOWN:
            if (e.key.keysym.sym == SDLK_F12) {
                SaveScreenshot();
                return false;
            }
            if (e.key.keysym.sym == SDLK_BACKSPACE) {
                event.kind = PLEvent::Kind::Text;
                event.text = "\b";
                return true;
            }
            event.key = PhoneKey(e.key.keysym.sym);
            event.kind = PLEvent::Kind::Key;
            return event.key != 0;
        case SDL_TEXTINPUT:
            event.kind = PLEvent::Kind::Text;
            event.text = e.text.text;
            return true;
        default:
            return false;
    }
}

void PLHostWindow::Pump() {
    SDL_Event e;
    while (SDL_PollEvent(&e)) {
        PLEvent ignored;
        Translate(&e, ignored);
    }
}

bool PLHostWindow::NextEvent(PLEventLoop& loop, PLEvent& event) {
    for (;;) {
        event = PLEvent{};
        if (mClosed || loop.IsShuttingDown()) {
            return false;
        }
        int timeoutMs = -1;
        int64_t deadline = loop.NextTimerDeadline();
        if (deadline >= 0 && !PLClock::IsPinned()) {
            timeoutMs = int(std::clamp<int64_t>(deadline - PLClock::NowMs(), 0, INT_MAX));
        }
        SDL_Event e;
        int got = timeoutMs < 0 ? SDL_WaitEvent(&e) : SDL_WaitEventTimeout(&e, timeoutMs);
        if (!got || e.type == mWakeEventType) {
            return true;  // a timer is due or a message was posted: let the idle work run
        }
        if (Translate(&e, event)) {
            return true;
        }
    }
}

#else  // no SDL2 in this build

std::unique_ptr<PLHostWindow> PLHostWindow::Open(int, std::string& error) {
    error = "no display (this build has no SDL2)";
    return nullptr;
}
PLHostWindow::~PLHostWindow() = default;
void PLHostWindow::Present(const PLBitmap&) {}
void PLHostWindow::Wake() {}
void PLHostWindow::SaveScreenshot() {}
bool PLHostWindow::Translate(const void*, PLEvent&) {
    return false;
}
void PLHostWindow::Pump() {}
bool PLHostWindow::NextEvent(PLEventLoop&, PLEvent&) {
    return false;
}

#endif

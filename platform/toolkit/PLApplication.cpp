// The application object's defaults: a root view covering the screen, no keys handled.
#include "PLApplication.h"

#include "PLAppContext.h"
#include "PLScreen.h"
#include "PLView.h"

PLApplication::PLApplication() = default;

// The root view's destructor takes itself off the screen and deletes the views still on it.
PLApplication::~PLApplication() = default;

void PLApplication::Initialize() {
    PLScreen& screen = PLAppContext::GetInstance()->GetScreen();
    mRootView = std::make_unique<PLView>(0, PLPoint{0, 0}, PLSize{kPLScreenHeight, kPLScreenWidth});
    screen.SetRoot(mRootView.get());
    // A new application owns the whole screen: nothing of what was there before stays.
    screen.InvalidateAll();
}

void PLApplication::Listen(PLMessage*) {}

bool PLApplication::DoKeyCommand(char, short, PLKeyModifiers) {
    return false;
}

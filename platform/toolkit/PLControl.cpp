// Controls: report their use to listeners with a "ctrl" message and repaint on press changes.
#include "PLControl.h"

#include "PLMessage.h"

void PLControl::BroadcastControl(long value) {
    PLMessage used(kPLMsgControl, GetID(), static_cast<uint32_t>(value), kEmptyString,
                   kEmptyString);
    BroadcastMessage(&used);
}

void PLControl::SetPressed(bool pressed) {
    if (pressed == mPressed) {
        return;
    }
    mPressed = pressed;
    Redraw();
}

// The sample's tappable button.
#include "SampleButton.h"

SampleButton::SampleButton(uint32_t id, PLPoint location, PLSize size, const char* text)
    : SampleBox(id, location, size, kOffColor, text) {}

void SampleButton::SetOnState(long state, bool redraw) {
    SampleBox::SetOnState(state, redraw);
    SetFill(state ? kOnColor : kOffColor);
}

void SampleButton::MouseDown(PLPoint, PLMouseButton) {
    mPressed = true;
}

void SampleButton::MouseUp(PLPoint where, PLMouseButton) {
    // A pen lifted away from the button is a change of mind, not a tap.
    bool tapped = mPressed && GetBounds().Contains(where);
    mPressed = false;
    if (!tapped) {
        return;
    }
    SetOnState(GetOnState() ? 0 : 1);
    if (mAction) {
        mAction();
    }
}

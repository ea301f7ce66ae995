// A pane that the user operates: it reports use with a "ctrl" message (sender = its command id,
// value = its value) to its listeners.
#pragma once

#include "PLPane.h"

class PLControl : public PLPane {
public:
    PLControl(uint32_t id, PLPoint location, PLSize size) : PLPane(id, location, size) {}

    // Broadcasts "ctrl" with the control's id and the given value.
    void BroadcastControl(long value);
    bool IsPressed() const { return mPressed; }
    const char* GetClassName() const override { return "PLControl"; }

protected:
    void SetPressed(bool pressed);

private:
    bool mPressed = false;
};

// A radio button with its label. A tap turns it on (it stays on when tapped again) and sends
// "ctrl" with value 1; turning the others of its group off is the owner's business
// (SetOnState(0, true)).
#pragma once

#include "PLControl.h"

class PLBitmapFamily;

class VtRadioButton : public PLControl {
public:
    VtRadioButton(uint32_t id, PLPoint location, PLSize size, const PLBasicString<char>& text,
                  bool on, PLBitmapFamily* family);

    bool IsOn() const { return GetOnState() != 0; }

    void Draw(PLDrawContext& context) override;
    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseMove(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "VtRadioButton"; }

private:
    PLBitmapFamily* mFamily;
};

// A radio button with its label. A tap turns it on (it stays on when tapped again) and sends
// "ctrl" with value 1; turning the others of its group off is the owner's business
// (SetOnState(0, true)).
#pragma once

#include "VtToggleButton.h"

class VtRadioButton : public VtToggleButton {
public:
    VtRadioButton(uint32_t id, PLPoint location, PLSize size, const PLBasicString<char>& text,
                  bool on, PLBitmapFamily* family)
        : VtToggleButton(id, location, size, text, on, family) {}

    bool IsOn() const { return GetOnState() != 0; }
    const char* GetClassName() const override { return "VtRadioButton"; }

protected:
    void DrawMark(const VtTheme& theme, PLDrawContext& context, const PLRect& mark) const override;
    long StateAfterTap() const override { return 1; }
};

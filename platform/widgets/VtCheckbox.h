// A check box with its label. A tap toggles it and sends "ctrl" with the new on state (1 or 0).
#pragma once

#include "VtToggleButton.h"

class VtCheckbox : public VtToggleButton {
public:
    VtCheckbox(uint32_t id, PLPoint location, PLSize size, const PLBasicString<char>& text,
               bool checked, PLBitmapFamily* family)
        : VtToggleButton(id, location, size, text, checked, family) {}

    bool IsChecked() const { return GetOnState() != 0; }
    const char* GetClassName() const override { return "VtCheckbox"; }

protected:
    void DrawMark(const VtTheme& theme, PLDrawContext& context, const PLRect& mark) const override;
    long StateAfterTap() const override { return IsChecked() ? 0 : 1; }
};

// A check box with its label. A tap toggles it and sends "ctrl" with the new on state (1 or 0).
#pragma once

#include "PLControl.h"

class PLBitmapFamily;

class VtCheckbox : public PLControl {
public:
    VtCheckbox(uint32_t id, PLPoint location, PLSize size, const PLBasicString<char>& text,
               bool checked, PLBitmapFamily* family);

    bool IsChecked() const { return GetOnState() != 0; }

    void Draw(PLDrawContext& context) override;
    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseMove(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "VtCheckbox"; }

private:
    PLBitmapFamily* mFamily;
};

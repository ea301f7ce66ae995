// A button of the sample application: a tap (pen down and up on it) toggles its on state and
// colour and calls its action.
#pragma once

#include <functional>

#include "SampleBox.h"

class SampleButton : public SampleBox {
public:
    static constexpr PLRGBColor kOffColor{40, 90, 160};
    static constexpr PLRGBColor kOnColor{220, 120, 30};

    SampleButton(uint32_t id, PLPoint location, PLSize size, const char* text);

    void SetAction(std::function<void()> action) { mAction = std::move(action); }
    void SetOnState(long state, bool redraw = true) override;
    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "SampleButton"; }

private:
    std::function<void()> mAction;
    bool mPressed = false;
};

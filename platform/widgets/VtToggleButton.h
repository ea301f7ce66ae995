// The shared base of check boxes and radio buttons: a mark (the theme's or a bitmap family's) at
// the left, the label after it, and the pen handling that ends a completed tap in a new on state
// and a "ctrl" with that state.
#pragma once

#include "PLControl.h"

class PLBitmapFamily;
class VtTheme;

class VtToggleButton : public PLControl {
public:
    void Draw(PLDrawContext& context) override;
    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseMove(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;

    // Side of the theme's mark.
    static constexpr int kMarkSize = 16;

protected:
    // A family, when given, replaces the theme's mark by its bitmaps (normal off, selected on,
    // pressed, disabled).
    VtToggleButton(uint32_t id, PLPoint location, PLSize size, const PLBasicString<char>& text,
                   bool on, PLBitmapFamily* family);

    // Paints the theme's mark into `mark` for the current state.
    virtual void DrawMark(const VtTheme& theme, PLDrawContext& context,
                          const PLRect& mark) const = 0;
    // The on state that a completed tap leaves.
    virtual long StateAfterTap() const = 0;

private:
    PLBitmapFamily* mFamily;
};

// Radio buttons: a circle (theme or bitmaps) and a label; a tap turns it on.
#include "VtRadioButton.h"

#include "PLBitmap.h"
#include "PLBitmapFamily.h"
#include "PLDrawContext.h"
#include "VtTheme.h"

namespace {
constexpr int kCircleSize = 16;
}

VtRadioButton::VtRadioButton(uint32_t id, PLPoint location, PLSize size,
                             const PLBasicString<char>& text, bool on, PLBitmapFamily* family)
    : PLControl(id, location, size), mFamily(family) {
    PLPane::SetString(text, false);
    PLPane::SetOnState(on ? 1 : 0, false);
    PLPane::SetTextColor(PLRGBColor(-1, false), false);
}

void VtRadioButton::Draw(PLDrawContext& context) {
    const VtTheme& theme = VtTheme::Current();
    const int top = (GetSize().v - kCircleSize) / 2;
    const PLRect circle{top, 3, top + kCircleSize, 3 + kCircleSize};
    int textLeft = circle.right + 5;
    const PLBitmap* bitmap = nullptr;
    if (mFamily != nullptr) {
        PLBitmapState state = IsOn() ? kPLBitmapSelected : kPLBitmapNormal;
        state = IsPressed() ? kPLBitmapPressed : state;
        state = IsActive() ? state : kPLBitmapDisabled;
        bitmap = mFamily->GetBitmap(state);
    }
    if (bitmap != nullptr) {
        context.DrawBitmap(*bitmap, PLPoint((GetSize().v - bitmap->GetHeight()) / 2, 3));
        textLeft = 3 + bitmap->GetWidth() + 5;
    } else {
        theme.DrawRadio(context, circle, IsOn(), IsPressed(), IsActive());
    }
    const PLRGBColor color = IsActive() ? VtTheme::Resolve(GetTextColor(), theme.TextColor())
                                        : theme.DisabledTextColor();
    theme.DrawText(context, GetString().view(), {0, textLeft, GetSize().v, GetSize().h}, color,
                   kPLJustifyLeft, GetFont(), 0);
}

void VtRadioButton::MouseDown(PLPoint where, PLMouseButton) {
    SetPressed(IsActive() && GetBounds().Contains(where));
}

void VtRadioButton::MouseMove(PLPoint where, PLMouseButton) {
    if (IsPressed() && !GetBounds().Contains(where)) {
        SetPressed(false);
    }
}

void VtRadioButton::MouseUp(PLPoint where, PLMouseButton) {
    const bool completed = IsPressed() && GetBounds().Contains(where) && IsActive();
    SetPressed(false);
    if (completed) {
        SetOnState(1, true);
        BroadcastControl(1);
    }
}

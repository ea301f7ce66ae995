// Check boxes and radio buttons alike: the mark, the label and the tap.
#include "VtToggleButton.h"

#include "PLBitmap.h"
#include "PLBitmapFamily.h"
#include "PLDrawContext.h"
#include "VtTheme.h"

VtToggleButton::VtToggleButton(uint32_t id, PLPoint location, PLSize size,
                               const PLBasicString<char>& text, bool on, PLBitmapFamily* family)
    : PLControl(id, location, size), mFamily(family) {
    PLPane::SetString(text, false);
    PLPane::SetOnState(on ? 1 : 0, false);
    PLPane::SetTextColor(PLRGBColor(-1, false), false);
}

void VtToggleButton::Draw(PLDrawContext& context) {
    const VtTheme& theme = VtTheme::Current();
    const int top = (GetSize().v - kMarkSize) / 2;
    const PLRect mark{top, 3, top + kMarkSize, 3 + kMarkSize};
    int textLeft = mark.right + 5;
    const PLBitmap* bitmap = nullptr;
    if (mFamily != nullptr) {
        PLBitmapState state = GetOnState() != 0 ? kPLBitmapSelected : kPLBitmapNormal;
        state = IsPressed() ? kPLBitmapPressed : state;
        state = IsActive() ? state : kPLBitmapDisabled;
        bitmap = mFamily->GetBitmap(state);
    }
    if (bitmap != nullptr) {
        context.DrawBitmap(*bitmap, PLPoint((GetSize().v - bitmap->GetHeight()) / 2, 3));
        textLeft = 3 + bitmap->GetWidth() + 5;
    } else {
        DrawMark(theme, context, mark);
    }
    const PLRGBColor color = IsActive() ? VtTheme::Resolve(GetTextColor(), theme.TextColor())
                                        : theme.DisabledTextColor();
    theme.DrawText(context, GetString().view(), {0, textLeft, GetSize().v, GetSize().h}, color,
                   kPLJustifyLeft, GetFont(), 0);
}

void VtToggleButton::MouseDown(PLPoint where, PLMouseButton) {
    SetPressed(IsActive() && GetBounds().Contains(where));
}

void VtToggleButton::MouseMove(PLPoint where, PLMouseButton) {
    if (IsPressed() && !GetBounds().Contains(where)) {
        SetPressed(false);
    }
}

void VtToggleButton::MouseUp(PLPoint where, PLMouseButton) {
    const bool completed = IsPressed() && GetBounds().Contains(where) && IsActive();
    SetPressed(false);
    if (completed) {
        SetOnState(StateAfterTap(), true);
        BroadcastControl(GetOnState());
    }
}

// Check boxes: a box (theme or bitmaps) and a label; a tap flips the state.
#include "VtCheckbox.h"

#include "PLBitmap.h"
#include "PLBitmapFamily.h"
#include "PLDrawContext.h"
#include "VtTheme.h"

namespace {
constexpr int kBoxSize = 16;
}

VtCheckbox::VtCheckbox(uint32_t id, PLPoint location, PLSize size, const PLBasicString<char>& text,
                       bool checked, PLBitmapFamily* family)
    : PLControl(id, location, size), mFamily(family) {
    PLPane::SetString(text, false);
    PLPane::SetOnState(checked ? 1 : 0, false);
    PLPane::SetTextColor(PLRGBColor(-1, false), false);
}

void VtCheckbox::Draw(PLDrawContext& context) {
    const VtTheme& theme = VtTheme::Current();
    const int top = (GetSize().v - kBoxSize) / 2;
    const PLRect box{top, 3, top + kBoxSize, 3 + kBoxSize};
    int textLeft = box.right + 5;
    const PLBitmap* bitmap = nullptr;
    if (mFamily != nullptr) {
        PLBitmapState state = IsChecked() ? kPLBitmapSelected : kPLBitmapNormal;
        state = IsPressed() ? kPLBitmapPressed : state;
        state = IsActive() ? state : kPLBitmapDisabled;
        bitmap = mFamily->GetBitmap(state);
    }
    if (bitmap != nullptr) {
        context.DrawBitmap(*bitmap, PLPoint((GetSize().v - bitmap->GetHeight()) / 2, 3));
        textLeft = 3 + bitmap->GetWidth() + 5;
    } else {
        theme.DrawCheckBox(context, box, IsChecked(), IsPressed(), IsActive());
    }
    const PLRGBColor color = IsActive() ? VtTheme::Resolve(GetTextColor(), theme.TextColor())
                                        : theme.DisabledTextColor();
    theme.DrawText(context, GetString().view(), {0, textLeft, GetSize().v, GetSize().h}, color,
                   kPLJustifyLeft, GetFont(), 0);
}

void VtCheckbox::MouseDown(PLPoint where, PLMouseButton) {
    SetPressed(IsActive() && GetBounds().Contains(where));
}

void VtCheckbox::MouseMove(PLPoint where, PLMouseButton) {
    if (IsPressed() && !GetBounds().Contains(where)) {
        SetPressed(false);
    }
}

void VtCheckbox::MouseUp(PLPoint where, PLMouseButton) {
    const bool completed = IsPressed() && GetBounds().Contains(where) && IsActive();
    SetPressed(false);
    if (completed) {
        SetOnState(IsChecked() ? 0 : 1, true);
        BroadcastControl(GetOnState());
    }
}

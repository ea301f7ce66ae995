// Buttons: theme or bitmap faces, push and toggle behaviour, bottom-bar icons.
#include "VtButton.h"

#include "PLBitmap.h"
#include "PLBitmapFamily.h"
#include "PLDrawContext.h"
#include "VtTheme.h"

namespace {

bool IsBarStyle(VtButtonStyle style) {
    return style == VtButtonStyle::Bar || style == VtButtonStyle::Options ||
           style == VtButtonStyle::Exit || style == VtButtonStyle::Back;
}

}  // namespace

VtButton::VtButton(uint32_t id, PLPoint location, PLSize size, VtButtonStyle style,
                   PLBitmapFamily* family, const PLBasicString<char>& text, long behaviour)
    : PLControl(id, location, size),
      mStyle(style),
      mFamily(family),
      mBehaviour(behaviour == kVtButtonToggle ? kVtButtonToggle : kVtButtonPush) {
    PLPane::SetString(text, false);
    const VtTheme& theme = VtTheme::Current();
    PLPane::SetTextColor(IsBarStyle(style) ? VtTheme::kWhite : theme.TextColor(), false);
}

void VtButton::SetAppearance(const VtAppearance* appearance) {
    mHasAppearance = appearance != nullptr;
    if (appearance == nullptr) {
        return;
    }
    mAppearance = *appearance;
    if (!appearance->text.isDefault) {
        PLPane::SetTextColor(appearance->text, false);
    }
    if (appearance->font != nullptr) {
        SetFont(appearance->font, false);
    }
}

void VtButton::Draw(PLDrawContext& context) {
    DrawFace(context);
    DrawIcon(context);
    DrawLabel(context);
}

void VtButton::DrawFace(PLDrawContext& context) {
    const bool on = IsToggle() && GetOnState() != 0;
    const bool pressed = IsPressed();
    const bool active = IsActive();
    if (mFamily != nullptr) {
        PLBitmapState state = kPLBitmapNormal;
        if (!active) {
            state = kPLBitmapDisabled;
        } else if (pressed) {
            state = kPLBitmapPressed;
        } else if (on) {
            // A family without its own "selected" picture shows an on toggle pressed in.
            state = mFamily->GetBitmap(kPLBitmapSelected) != mFamily->GetBitmap(kPLBitmapNormal)
                        ? kPLBitmapSelected
                        : kPLBitmapPressed;
        }
        if (const PLBitmap* bitmap = mFamily->GetBitmap(state)) {
            const int w = bitmap->GetWidth();
            const int h = bitmap->GetHeight();
            const int top = h < GetSize().v ? (GetSize().v - h) / 2 : 0;
            // Narrow pictures are strips: tile them across the button.
            for (int x = 0; w > 0 && x < GetSize().h; x += w) {
                context.DrawBitmap(*bitmap, PLPoint(top, x));
            }
            return;
        }
    }
    VtFaceState face = VtFaceState::Normal;
    if (!active) {
        face = VtFaceState::Disabled;
    } else if (pressed) {
        face = VtFaceState::Pressed;
    } else if (on) {
        face = VtFaceState::On;
    }
    const VtTheme& theme = VtTheme::Current();
    if (IsBarStyle(mStyle)) {
        theme.DrawBarButton(context, GetBounds(), face);
    } else {
        theme.DrawLightButton(context, GetBounds(), face);
    }
    if (mHasAppearance && !mAppearance.face.isDefault && face == VtFaceState::Normal) {
        theme.DrawFace(context, GetBounds(), mAppearance.face, mAppearance.face,
                       theme.BorderColor());
    }
}

void VtButton::DrawLabel(PLDrawContext& context) {
    if (GetString().IsEmpty()) {
        return;
    }
    const VtTheme& theme = VtTheme::Current();
    PLRGBColor color = GetTextColor();
    if (!IsActive()) {
        color = IsBarStyle(mStyle) ? PLRGBColor{136, 140, 148} : theme.DisabledTextColor();
    }
    theme.DrawText(context, GetString().view(), GetBounds(), color, kPLJustifyCenter,
                   GetFont() != nullptr ? GetFont() : theme.TextFont(), 2);
}

void VtButton::DrawIcon(PLDrawContext& context) {
    const PLRGBColor color = IsActive() ? VtTheme::kWhite : PLRGBColor{136, 140, 148};
    const int cv = GetSize().v / 2;
    const int ch = GetSize().h / 2;
    switch (mStyle) {
        case VtButtonStyle::Options:
            // Three bars: the menu.
            for (int i = -1; i <= 1; ++i) {
                context.FillRect({cv + i * 6 - 1, ch - 9, cv + i * 6 + 2, ch + 9}, color);
            }
            break;
        case VtButtonStyle::Exit:
            // A cross, two pixels thick.
            for (int d = -7; d <= 7; ++d) {
                context.FillRect({cv + d - 1, ch + d - 1, cv + d + 1, ch + d + 1}, color);
                context.FillRect({cv + d - 1, ch - d - 1, cv + d + 1, ch - d + 1}, color);
            }
            break;
        case VtButtonStyle::Back:
            // An arrow pointing left: the shaft and the head.
            context.FillRect({cv - 1, ch - 8, cv + 2, ch + 9}, color);
            for (int d = 0; d <= 7; ++d) {
                context.FillRect({cv - d - 1, ch - 8 + d, cv - d + 1, ch - 6 + d}, color);
                context.FillRect({cv + d, ch - 8 + d, cv + d + 2, ch - 6 + d}, color);
            }
            break;
        default:
            break;
    }
}

void VtButton::MouseDown(PLPoint where, PLMouseButton) {
    if (!IsActive()) {
        return;
    }
    mArmed = GetBounds().Contains(where);
    SetPressed(mArmed);
}

void VtButton::MouseMove(PLPoint where, PLMouseButton) {
    if (!IsActive()) {
        return;
    }
    // Only a press that began here is followed; sliding off releases the look, back on restores.
    if (mArmed) {
        SetPressed(GetBounds().Contains(where));
    }
}

void VtButton::MouseUp(PLPoint where, PLMouseButton) {
    const bool completed = mArmed && GetBounds().Contains(where) && IsActive();
    mArmed = false;
    SetPressed(false);
    if (completed) {
        Activate();
    }
}

void VtButton::Press() {
    if (IsActive()) {
        Activate();
    }
}

void VtButton::Activate() {
    if (IsToggle()) {
        SetOnState(GetOnState() != 0 ? 0 : 1, true);
        BroadcastControl(GetOnState());
        return;
    }
    BroadcastControl(GetValue());
}

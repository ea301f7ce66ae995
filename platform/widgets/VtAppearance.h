// Per-control overrides of the theme's look. Factories take a pointer to one; null (the usual
// case) means "as the theme draws it".
#pragma once

#include "PLRGBColor.h"

class PLFont;

struct VtAppearance {
    // Face colour of buttons and boxes; a colour made from -1 keeps the theme's.
    PLRGBColor face{-1, false};
    // Text colour; a colour made from -1 keeps the theme's.
    PLRGBColor text{-1, false};
    // Font of the control's text; null keeps the theme's 16-pixel font.
    PLFont* font = nullptr;
};

// Gives a pane the text colour and font that an appearance overrides; null changes nothing.
template <class Pane>
Pane* VtApplyAppearance(Pane* pane, const VtAppearance* appearance) {
    if (appearance != nullptr) {
        if (!appearance->text.isDefault) {
            pane->SetTextColor(appearance->text, false);
        }
        if (appearance->font != nullptr) {
            pane->SetFont(appearance->font, false);
        }
    }
    return pane;
}

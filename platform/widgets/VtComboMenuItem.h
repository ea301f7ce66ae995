// A menu entry with a colour swatch drawn before its label (the colour choices of event forms).
#pragma once

#include "PLMenuItem.h"
#include "PLRGBColor.h"

class VtComboMenuItem : public PLMenuItem {
public:
    VtComboMenuItem(const PLBasicString<char>& label, uint32_t id, const PLRGBColor& swatch)
        : PLMenuItem(label, id), mSwatch(swatch) {}

    const PLRGBColor& GetSwatch() const { return mSwatch; }
    void SetSwatch(const PLRGBColor& swatch) { mSwatch = swatch; }

private:
    PLRGBColor mSwatch;
};

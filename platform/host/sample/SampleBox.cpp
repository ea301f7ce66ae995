// A coloured, framed box with centred text.
#include "SampleBox.h"

#include "PLDrawContext.h"
#include "PLFont.h"

namespace {

// Dark text on light boxes, light text on dark ones.
PLRGBColor TextColorOn(const PLRGBColor& fill) {
    int luminance = (fill.red * 3 + fill.green * 6 + fill.blue) / 10;
    return luminance > 140 ? PLRGBColor(30, 30, 30) : PLRGBColor(255, 255, 255);
}

}  // namespace

SampleBox::SampleBox(uint32_t id, PLPoint location, PLSize size, PLRGBColor fill, const char* text)
    : PLPane(id, location, size), mFill(fill) {
    SetString(text, false);
}

void SampleBox::SetFill(const PLRGBColor& fill) {
    mFill = fill;
    Redraw();
}

void SampleBox::Draw(PLDrawContext& context) {
    PLRect bounds = GetBounds();
    context.FillRect(bounds, mFill);
    context.FrameRect(bounds, PLRGBColor(60, 60, 70));
    if (!GetString().IsEmpty()) {
        context.SetFont(PLFont::GetDefaultFont());
        context.SetTextColor(TextColorOn(mFill));
        context.DrawString(GetString(), bounds, PLPoint(0, 0), 0, true, kPLJustifyCenter);
    }
}

// A text of the status area.
#include "PLHostStatusLabel.h"

#include "PLDrawContext.h"
#include "PLFont.h"
#include "PLHostStatusBar.h"

PLHostStatusLabel::PLHostStatusLabel(uint32_t id, PLPoint location, PLSize size, uint32_t fontCode,
                                     long justification)
    : PLPane(id, location, size), mFontCode(fontCode), mJustification(justification) {}

void PLHostStatusLabel::Draw(PLDrawContext& context) {
    context.SetFont(PLFont::GetFont(mFontCode));
    context.SetTextColor(PLHostStatusBar::kTextColor);
    context.DrawString(GetString(), GetBounds(), PLPoint(0, 0), 0, true, mJustification);
}

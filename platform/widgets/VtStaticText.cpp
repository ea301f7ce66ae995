// Labels: one line or wrapped lines in the theme's (or the given) colour and font.
#include "VtStaticText.h"

#include "PLDrawContext.h"
#include "PLFont.h"
#include "VtTextLayout.h"
#include "VtTheme.h"

VtStaticText::VtStaticText(uint32_t id, PLPoint location, PLSize size,
                           const PLBasicString<char>& text, long justification, bool multiLine)
    : PLPane(id, location, size),
      mJustification(justification < 0 || justification > 2 ? kPLJustifyLeft : justification),
      mMultiLine(multiLine) {
    PLPane::SetString(text, false);
    PLPane::SetTextColor(PLRGBColor(-1, false), false);
}

void VtStaticText::Draw(PLDrawContext& context) {
    const VtTheme& theme = VtTheme::Current();
    PLFont* font = GetFont() != nullptr ? GetFont() : theme.TextFont();
    const PLRGBColor color = VtTheme::Resolve(GetTextColor(), theme.TextColor());
    const std::string_view text = GetString().view();
    if (!mMultiLine) {
        theme.DrawText(context, text, GetBounds(), color, mJustification, font, 2);
        return;
    }
    const int lineHeight = font->GetLineHeight() + 2;
    const int width = GetSize().h - 4;
    int top = 1;
    for (const VtTextLayout::Line& line : VtTextLayout::Wrap(text, width, *font)) {
        if (top >= GetSize().v) {
            break;
        }
        theme.DrawText(context, text.substr(line.start, line.length),
                       {top, 0, top + lineHeight, GetSize().h}, color, mJustification, font, 2);
        top += lineHeight;
    }
}

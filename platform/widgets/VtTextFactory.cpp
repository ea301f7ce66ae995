// Factories of labels, edit fields, check boxes and radio buttons.
#include "VtTextFactory.h"

#include "PLFont.h"

VtStaticText* MakeStaticText(uint32_t id, PLPoint location, PLSize size,
                             const PLBasicString<char>& text, long justification, bool multiLine,
                             uint32_t fontCode, const PLRGBColor& color,
                             const VtAppearance* appearance) {
    auto* label = new VtStaticText(id, location, size, text, justification, multiLine);
    label->SetTextColor(color, false);
    if (fontCode != 0) {
        label->SetFont(PLFont::GetFont(fontCode), false);
    }
    return VtApplyAppearance(label, appearance);
}

VtEditField* MakeVtEditField(uint32_t id, PLPoint location, PLSize size,
                             const PLBasicString<char>& text, bool singleLine, long border,
                             long maxLines, long justification, long textLimit,
                             const PLBasicString<char>& caption, long captionJustification,
                             long captionWidth, PLFont* font, bool editable, const PLRect& margins,
                             long textColor, bool notifyPress) {
    VtEditField::Options options;
    options.singleLine = singleLine;
    options.border = border;
    options.maxLines = maxLines;
    options.justification = justification;
    options.textLimit = textLimit;
    options.caption = caption;
    options.captionJustification = captionJustification;
    options.captionWidth = captionWidth;
    options.font = font;
    options.editable = editable;
    options.margins = margins;
    options.textColor = textColor;
    options.notifyPress = notifyPress;
    return new VtEditField(id, location, size, text, options);
}

VtCheckbox* MakeCheckbox(uint32_t id, PLPoint location, PLSize size,
                         const PLBasicString<char>& text, bool checked, PLBitmapFamily* family,
                         const VtAppearance* appearance) {
    return VtApplyAppearance(new VtCheckbox(id, location, size, text, checked, family), appearance);
}

VtRadioButton* MakeRadioButton(uint32_t id, PLPoint location, PLSize size,
                               const PLBasicString<char>& text, bool on, PLBitmapFamily* family,
                               const VtAppearance* appearance) {
    return VtApplyAppearance(new VtRadioButton(id, location, size, text, on, family), appearance);
}

// Factories of labels, edit fields, check boxes and radio buttons. Each returns a new pane that
// the caller adds to a parent. Points and sizes are the toolkit's: vertical value first.
#pragma once

#include <cstdint>

#include "PLBasicString.h"
#include "PLPoint.h"
#include "PLRGBColor.h"
#include "PLRect.h"
#include "VtAppearance.h"
#include "VtCheckbox.h"
#include "VtEditField.h"
#include "VtRadioButton.h"
#include "VtStateMessage.h"
#include "VtStaticText.h"
#include "VtTextEditor.h"

class PLBitmapFamily;
class PLFont;

// A label.
// - `justification`: -1 the theme's (left), else 0 centre, 1 left, 2 right.
// - `multiLine`: wraps the text into lines (else one line, vertically centred, clipped).
// - `fontCode`: a font code such as PLFourCC("UC24"); 0 the theme's font.
// - `color`: the text colour; a colour made from -1 is the theme's.
VtStaticText* MakeStaticText(uint32_t id, PLPoint location, PLSize size,
                             const PLBasicString<char>& text, long justification, bool multiLine,
                             uint32_t fontCode, const PLRGBColor& color,
                             const VtAppearance* appearance);

// An edit field (see VtEditField for its messages).
// - `singleLine`: false makes a multi-line field whose text wraps.
// - `border`: -1 the theme's border, 0 none, 1..3 a frame of that many pixels.
// - `maxLines`: multi-line fields keep at most this many lines of input (0: as many as fit).
// - `justification`: 0 centre, 1 left, 2 right.
// - `textLimit`: the most bytes the text may hold (0: no limit); longer text is cut at a
//   character boundary.
// - `caption`, `captionJustification`, `captionWidth`: a caption in the first `captionWidth`
//   pixels, justified as given (-1 the theme's, left). An empty caption takes no room, whatever
//   its width.
// - `font`: null is the theme's.
// - `editable`: false ignores typing (presses are still reported).
// - `margins`: text insets in the box; kVtEditFieldRect is the standard.
// - `textColor`: 0xRRGGBB, -1 the theme's.
// - `notifyPress`: send "emup"/"pume" when the field is pressed.
// The inner editor (GetEditor) sets the accepted characters and the non-editable mode.
VtEditField* MakeVtEditField(uint32_t id, PLPoint location, PLSize size,
                             const PLBasicString<char>& text, bool singleLine, long border,
                             long maxLines, long justification, long textLimit,
                             const PLBasicString<char>& caption, long captionJustification,
                             long captionWidth, PLFont* font, bool editable, const PLRect& margins,
                             long textColor, bool notifyPress);

// A check box and a radio button with their label; a family, when given, replaces the theme's
// box or circle by its bitmaps (normal off, selected on, pressed, disabled).
VtCheckbox* MakeCheckbox(uint32_t id, PLPoint location, PLSize size,
                         const PLBasicString<char>& text, bool checked, PLBitmapFamily* family,
                         const VtAppearance* appearance);
VtRadioButton* MakeRadioButton(uint32_t id, PLPoint location, PLSize size,
                               const PLBasicString<char>& text, bool on, PLBitmapFamily* family,
                               const VtAppearance* appearance);

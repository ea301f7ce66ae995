// Factories of the library's buttons. Every factory returns a new pane that the caller adds to a
// parent (which then owns it). Points and sizes are the toolkit's: vertical value first.
//
// Arguments that several factories share:
// - `behaviour`: kVtButtonPush (1) or kVtButtonToggle (2).
// - `initiallyOn`: toggle buttons start pressed in.
// - `initiallyDisabled`: the button starts disabled (SetEnabled(false)).
// - `appearance`: colour and font overrides, null for the theme's.
#pragma once

#include <cstdint>

#include "PLBasicString.h"
#include "PLPoint.h"
#include "VtAppearance.h"
#include "VtButton.h"
#include "VtPopupButton.h"

class PLBitmapFamily;
class PLMenu;

// Size of the three bottom-bar buttons at the sides (options, exit, back): 36 high, 43 wide.
constexpr PLSize kVtBottomButtonSize{36, 43};

// A button over a bitmap family. Its size is that of the family's normal bitmap; without a family
// it is sized to its text (24 high). Text colour and font: SetTextColor / SetFont.
VtButton* MakeBmpViewButton(uint32_t id, PLPoint location, PLBitmapFamily* family,
                            const PLBasicString<char>& text, long behaviour, bool initiallyOn,
                            bool initiallyDisabled, const VtAppearance* appearance);

// A dark bar button of a given size (the centre button of the bottom bar); a family, when given,
// is drawn instead of the theme's face, tiled across when narrower than the button.
VtButton* MakeBmpBarButton(uint32_t id, PLPoint location, PLSize size, PLBitmapFamily* family,
                           const PLBasicString<char>& text, long behaviour, bool initiallyOn,
                           bool initiallyDisabled, const VtAppearance* appearance);

// A bar button with a label that opens `menu`.
// - `direction`: kVtPopupUp (1) opens above the button (bottom bars), kVtPopupDown (0) below.
// - `labelFollowsSelection`: the label becomes the chosen entry's label.
// - `initiallyDisabled`: as above.
// - `markSelected`: the popup shows the menu's selected entry with a tick.
VtPopupButton* MakeTextPopupButton(uint32_t id, PLPoint location, PLSize size, long behaviour,
                                   const PLBasicString<char>& text, PLMenu* menu, long direction,
                                   bool labelFollowsSelection, bool initiallyDisabled,
                                   bool markSelected, const VtAppearance* appearance);

// The options button of the bottom bar (43 by 36); a null menu makes it inert. The remaining
// arguments mean what they mean for MakeTextPopupButton.
VtPopupButton* MakeCSTMenuPopupButton(uint32_t id, PLPoint location, PLMenu* menu, long direction,
                                      bool labelFollowsSelection, bool initiallyDisabled,
                                      bool markSelected, const VtAppearance* appearance);

// The exit and back buttons of the bottom bar (43 by 36).
VtButton* MakeCSTExitButton(uint32_t id, PLPoint location);
VtButton* MakeCSTBackButton(uint32_t id, PLPoint location);

// A light push button 30 high and `width` wide, for rows of forms.
VtButton* MakeVtGeneralButton(uint32_t id, PLPoint location, long width,
                              const PLBasicString<char>& text,
                              const VtAppearance* appearance = nullptr);

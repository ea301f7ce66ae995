// Factories of menus and choice controls. Menus are not panes: the caller owns them (views keep
// their menus and delete them with themselves); popup buttons and choice controls only use them.
#pragma once

#include <cstdint>

#include "PLBasicString.h"
#include "PLPoint.h"
#include "VtAppearance.h"
#include "VtComboControl.h"
#include "VtComboMenuItem.h"
#include "VtMenu.h"
#include "VtMenuPopup.h"

// A popup menu showing up to `visibleRows` entries at once (more scroll). The title is kept for
// the caller; popups do not show it. `appearance` may give the font.
VtMenu* MakeVtMenu(const PLBasicString<char>& title, uint32_t id, long visibleRows,
                   const VtAppearance* appearance);

// The menu of a choice control (entries are values: their ids).
VtMenu* MakeVtComboMenu(const PLBasicString<char>& title, uint32_t id,
                        const VtAppearance* appearance);

// The same for colour choices: add VtComboMenuItems, whose swatches the popup and the control show.
VtMenu* MakeVtComboColorMenu(const PLBasicString<char>& title, uint32_t id,
                             const VtAppearance* appearance);

// A choice control over `menu` (not owned). `captionWidth` pixels at the left show `caption`
// (0: no caption); the box takes the rest.
VtComboControl* MakeVtComboControl(uint32_t id, PLPoint location, PLSize size, PLMenu* menu,
                                   long captionWidth, const PLBasicString<char>& caption);

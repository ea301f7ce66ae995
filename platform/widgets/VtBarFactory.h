// Factories of top bars, the date header and scroll containers. Points and sizes are the
// toolkit's: vertical value first.
#pragma once

#include <cstdint>

#include "PLBasicString.h"
#include "PLPoint.h"
#include "PLRect.h"
#include "VtAppearance.h"
#include "VtCalendarYearSelectControl.h"
#include "VtDateRange.h"
#include "VtScrollBar.h"
#include "VtScrollContainer.h"
#include "VtScrollPane.h"
#include "VtTopBarView.h"

struct PLDate;

// A title bar 29 high and `width` wide. `justification` places the title (0 centre, 1 left,
// 2 right); `style` 0 is the theme's band (other values are kept for later looks).
VtTopBarView* MakeVtTextTopBar(uint32_t id, PLPoint location, long width,
                               const PLBasicString<char>& title,
                               const PLBasicString<char>& secondText, long justification,
                               long style);

// A title bar with a check box at the right labelled `checkLabel`, starting in `checkStatus`
// (0 clear, 1 checked). `justification` and `style` as for MakeVtTextTopBar.
VtTopBarView* MakeVtCheckTopBar(uint32_t id, PLPoint location, long width,
                                const PLBasicString<char>& title,
                                const PLBasicString<char>& checkLabel, long checkStatus,
                                long justification, long style);

// A scroll container.
// - `vertical` must be true (the platform scrolls vertically); `horizontal` must be false.
// - `barWidth`: pixels of the scroll bar at the right.
// - `alwaysShowBar`: keep the bar even when everything fits (else it appears only when the
//   content is taller than the view, and the content takes its place otherwise).
// - `margins`: pixels between the container's edge and the content (top, left, bottom, right),
//   painted as a thin frame.
// - `followFocus`: fields in the content that get the input method are kept in view (the same as
//   SetAutoScroll(true)).
VtScrollContainer* MakeVtScrollContainer(uint32_t id, PLPoint location, PLSize size, bool vertical,
                                         bool horizontal, short barWidth, bool alwaysShowBar,
                                         const PLRect& margins, const VtAppearance* appearance,
                                         bool followFocus);

// The date header of a main view at the top of its parent, 240 by 29, on the shared `date`.
// - `type`: kVtHeaderMonth (11) or kVtHeaderDay (13).
// - `wrapAtLimits`: the arrows wrap from one end of 1970..2030 to the other instead of stopping.
VtCalendarYearSelectControl* MakeCalendarYearSelectControl(uint32_t id, long type, PLDate* date,
                                                           const VtAppearance* appearance,
                                                           bool wrapAtLimits);

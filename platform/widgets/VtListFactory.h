// Factories of lists and their rows. Points and sizes are the toolkit's: vertical value first.
#pragma once

#include <cstdint>

#include "PLBasicString.h"
#include "PLPoint.h"
#include "PLVector.h"
#include "VtListDataProvider.h"
#include "VtListModel.h"
#include "VtListRow.h"
#include "VtListView.h"
#include "VtListViewContainer.h"

class PLBitmap;

// A list with its scroll bar.
// - `checkMode`: kVtCheckOne (1) one checked row, kVtCheckMany (2) any number, 0 none.
// - `showScrollBar`: reserve `scrollBarWidth` pixels at the right for the bar.
// - `wrapFocus`: the focus keys wrap round from the last row to the first and back.
// - `rowHeight`: pixels per row.
// - `provider`: fills the list on Reload (null: rows are appended by the caller).
// - `tapChecks`: a tap on a row also checks it (else a tap only focuses; ok checks).
// - `sendNotices`: send 80002 / 80004 to the listeners.
VtListViewContainer* MakeVtListViewContainer(PLPoint location, PLSize size, long checkMode,
                                             bool showScrollBar, bool wrapFocus,
                                             short scrollBarWidth, unsigned short rowHeight,
                                             uint32_t id, VtListDataProvider* provider,
                                             bool tapChecks, bool sendNotices);

// Rows with a check box or a radio mark at the right. The list owns a row once appended.
// - `icon`, `secondIcon`: bitmaps (not owned) for the first and last columns, or null.
// - `text`, `secondText`: the texts of the second and third columns.
// - `extraTexts`: further texts after the second text, or null.
// - `id`: the row's id and value (an event id, a command id).
// - `textColor`: 0xRRGGBB, -1 the theme's.
// - `justification`: of the text column, -1 the theme's (left), else 0 centre, 1 left, 2 right.
// - `highlightChecked`: tint the row while checked.
// - `disabled`: the row is shown greyed and taps do not check it.
VtListRow* MakeCheckBoxListRow(PLBitmap* icon, const PLBasicString<char>& text,
                               const PLBasicString<char>& secondText, PLBitmap* secondIcon,
                               const PLVector<PLBasicString<char>>* extraTexts, uint32_t id,
                               long textColor, long justification, bool highlightChecked,
                               bool disabled);
VtListRow* MakeRadioButtonListRow(PLBitmap* icon, const PLBasicString<char>& text,
                                  const PLBasicString<char>& secondText, PLBitmap* secondIcon,
                                  const PLVector<PLBasicString<char>>* extraTexts, uint32_t id,
                                  long textColor, long justification, bool highlightChecked,
                                  bool disabled);

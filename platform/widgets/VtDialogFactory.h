// Factories of the modal dialogs. The caller runs the dialog with ModalDialog() and deletes it
// afterwards. Dialog boxes are centred in the application area below the status bar.
#pragma once

#include <cstdint>

#include "PLBasicString.h"
#include "PLDate.h"
#include "PLPoint.h"
#include "VtBaseDialog.h"
#include "VtCalendarDateDialog.h"
#include "VtInfoDialog.h"
#include "VtTimePickerDialog.h"

class PLBitmap;
class PLListener;

// Pane ids of the dialogs (for dumps and tests) where the caller gives none.
constexpr uint32_t kVtInfoDialogID = 50001;
constexpr uint32_t kVtTimePickerDialogID = 50009;

// A notice (one button) or a question (two buttons).
// - `extent`: the box's height and width (vertical first); width is cut to the screen, a height of
//   0 fits the box to its texts.
// - `icon`: drawn at the left (not owned), or null.
// - `secondButtonID` 0 with an empty `secondLabel` makes a one-button notice.
// - `displayTime`: milliseconds after which the dialog closes itself with kVtDialogNoButton;
//   0 waits for a button.
// - `handler`: a listener that hears the closing "ctrl", or null.
VtInfoDialog* MakeVtInfoDialog(PLPoint extent, const PLBitmap* icon,
                               const PLBasicString<char>& title, const PLBasicString<char>& message,
                               uint32_t firstButtonID, const PLBasicString<char>& firstLabel,
                               uint32_t secondButtonID, const PLBasicString<char>& secondLabel,
                               long displayTime, PLListener* handler);

// A date picker on `date` (moved into 1970-01-01..2030-12-31), the grid's first column being
// `firstWeekday` (1 Sunday .. 7 Saturday). ModalDialog returns `acceptID` or `cancelID`; the
// picked date is GetDate().
// - `extent`: the box's height and width.
// - `userMessageID`: the value of the closing "ctrl" to `handler`.
// - `title`: shown above the grid; empty shows only the month.
// - `paneID`: the dialog pane's id.
VtCalendarDateDialog* MakeVtCalendarDateDialog(
    PLPoint extent, const PLDate& date, long firstWeekday, uint32_t acceptID,
    const PLBasicString<char>& acceptLabel, uint32_t cancelID,
    const PLBasicString<char>& cancelLabel, uint32_t userMessageID,
    const PLBasicString<char>& title, uint32_t paneID, PLListener* handler);

// A time picker on `hour` (0..23) and `minute`. `format` 2 (kPLTimeFormat24) shows the 24-hour
// form, any other value the 12-hour form with AM/PM. `mode` kVtTimeHourOnly (2) edits the hour
// alone; any other mode hour and minute. ModalDialog returns `acceptID` or `cancelID`.
VtTimePickerDialog* MakeVtTimePickerDialog(long hour, long minute, long format,
                                           const PLBasicString<char>& title, uint32_t acceptID,
                                           const PLBasicString<char>& acceptLabel,
                                           uint32_t cancelID,
                                           const PLBasicString<char>& cancelLabel, long mode);

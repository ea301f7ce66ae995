// The helpers every calendar view shares: the date dialog, the time picker, the notice dialog,
// the configured first weekday and deleting one event. They keep no state: each builds its
// dialog or store object, uses it and lets it go before returning.
#pragma once

#include <cstdint>

#include "APEventRecords.h"
#include "PLBasicString.h"
#include "PLDate.h"
#include "PLPoint.h"
#include "PLTime.h"

class PLBitmap;

// Button ids of the date dialog and the notice dialog.
constexpr uint32_t kDateDialogAccept = 11004;
constexpr uint32_t kDateDialogCancel = 11005;
constexpr uint32_t kInfoDialogFirstButton = 21000;
constexpr uint32_t kInfoDialogSecondButton = 21001;

// Runs the date dialog on `date`; 1 when the user accepted (the date then holds the choice), 0
// when cancelled (the date is untouched).
int ShowDateDialog(PLDate& date);

// Replaces the year, month and day of `date`, re-normalising after each assignment. The day goes
// to 1 first: the platform carries an impossible day (31 February) into the next month, so moving
// the 31st of one month to another month would otherwise land a month late.
void SetDateFields(PLDate& date, int year, int month, int day);

// Runs the time picker on `time` (display format as PLTime::GetStr takes it; mode 2 edits the
// hour alone). Returns the dialog's result; 0 means accepted, and only then is the time changed.
long ShowTimePicker(PLTime& time, long format, long mode);

// The hour 0..23 that a time picker's answer stands for: in the 12-hour form `hour` is 1..12 with
// its "AM"/"PM" suffix, in the 24-hour form it is taken as it stands.
int TimePickerHour24(long hour, bool twelveHour, const char* suffix);

// The configured first day of the week, 1 (Sunday) .. 7 (Saturday), as the stored option id minus
// 11423 in 16 bits. A stored value outside 11424..11430 gives a number outside 1..7, which callers
// must read as Sunday.
uint16_t StartWeekDayIndex();

// Removes the event whose id is the record's first field from the event store.
void DeleteEvent(const _EventRecInfo& record);

// Runs a notice (button mode 0: one button, 21000) or a question (mode 1: 21000 and 21001) with
// a bitmap and a text by resource id. Size mode 0, 1 or other picks the box. `displayTime` (ms)
// closes the dialog by itself when not 0. Returns the id of the closing button; other button
// modes show nothing and return 0.
long ShowInfoDialog(uint32_t bitmapId, uint32_t textId, long buttonMode, long sizeMode,
                    long displayTime);
// A bitmap of the loaded resource files by id; null when there is none.
const PLBitmap* CalendarBitmap(uint32_t id);
// Asks a two-button question where every calendar question sits, (149, 228): the picture
// `iconId`, the texts `title` and `body` (either may be empty), a yes button (`yesId`, labelled
// with the text `yesLabel`) and a cancel button (`noId`). Returns the id of the closing button,
// kVtDialogNoButton when the dialog cannot be made.
long AskCalendarQuestion(uint32_t iconId, const PLBasicString<char>& title,
                         const PLBasicString<char>& body, uint32_t yesId, uint32_t yesLabel,
                         uint32_t noId);
// The dialog's point argument (vertical first) for a size mode.
PLPoint InfoDialogPoint(long sizeMode);

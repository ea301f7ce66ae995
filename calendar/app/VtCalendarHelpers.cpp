// The shared dialogs and small services of the calendar views.
#include "app/VtCalendarHelpers.h"

#include <cassert>
#include <cstring>
#include <memory>

#include "APConfig.h"
#include "APEventRec.h"
#include "APGetStr.h"
#include "PLAppContext.h"
#include "PLBitmap.h"
#include "PLTypes.h"
#include "VtDialogFactory.h"

namespace {

constexpr uint32_t kTextOk = 30002;
constexpr uint32_t kTextCancel = 30012;
constexpr uint32_t kTextTimeTitle = 30902;
constexpr uint32_t kDateDialogPaneId = 50008;
constexpr long kTimePickerAccept = 0;
constexpr long kTimePickerCancel = 3;
constexpr long kFirstWeekdayBase = 11423;

}  // namespace

int ShowDateDialog(PLDate& date) {
    std::unique_ptr<VtCalendarDateDialog> dialog(
        MakeVtCalendarDateDialog(PLPoint(266, 212), date, StartWeekDayIndex(), kDateDialogAccept,
                                 APGetStr(kTextOk), kDateDialogCancel, APGetStr(kTextCancel),
                                 kPLWildcard, kEmptyString, kDateDialogPaneId, nullptr));
    if (!dialog) {
        return 0;
    }
    dialog->SetModalOwned(true);
    if (dialog->ModalDialog() != long(kDateDialogAccept)) {
        return 0;
    }
    const PLDate chosen = dialog->GetDate();
    SetDateFields(date, chosen.year, chosen.month, chosen.day);
    return 1;
}

void SetDateFields(PLDate& date, int year, int month, int day) {
    date.day = 1;
    date.FixFromMDY();
    date.year = uint16_t(year);
    date.FixFromMDY();
    date.month = uint8_t(month);
    date.FixFromMDY();
    date.day = uint8_t(day);
    date.FixFromMDY();
}

int TimePickerHour24(long hour, bool twelveHour, const char* suffix) {
    if (!twelveHour) {
        return int(hour);
    }
    const bool am = suffix != nullptr && std::strcmp(suffix, "AM") == 0;
    const bool pm = suffix != nullptr && std::strcmp(suffix, "PM") == 0;
    if (hour == 12) {
        return am ? 0 : 12;
    }
    return int(pm ? hour + 12 : hour);
}

long ShowTimePicker(PLTime& time, long format, long mode) {
    std::unique_ptr<VtTimePickerDialog> dialog(MakeVtTimePickerDialog(
        time.GetHour(), time.GetMinute(), format, APGetStr(kTextTimeTitle), kTimePickerAccept,
        APGetStr(kTextOk), kTimePickerCancel, APGetStr(kTextCancel), mode));
    if (!dialog) {
        return kTimePickerCancel;
    }
    const long result = dialog->ModalDialog();
    if (result == kTimePickerAccept) {
        const PLBasicString<char> suffix = dialog->GetSuffix();
        time.SetHour(TimePickerHour24(dialog->GetHour(), dialog->Is12Hour() == 1, suffix.c_str()));
        time.SetMinute(int(dialog->GetMinute()));
    }
    return result;
}

uint16_t StartWeekDayIndex() {
    // Sunday until the store answers: a failed read leaves this value in place.
    long option = kFirstWeekdayBase + 1;
    APConfigCalendar_GetStartWeekDay(&option);
    // The stored option ids 11424..11430 give 1..7. Any other stored value wraps to a number
    // outside 1..7 and is handed on as it is: every user of the first weekday (the date dialog
    // among them) treats such a number as Sunday, so nothing here second-guesses the store.
    return uint16_t(option - kFirstWeekdayBase);
}

void DeleteEvent(const _EventRecInfo& record) {
    APEventRec store;
    store.DeleteEventRec(record.id);
}

PLPoint InfoDialogPoint(long sizeMode) {
    switch (sizeMode) {
        case 0:
            return {149, 228};
        case 1:
            return {239, 228};
        default:
            return {0, 228};
    }
}

long ShowInfoDialog(uint32_t bitmapId, uint32_t textId, long buttonMode, long sizeMode,
                    long displayTime) {
    if (buttonMode != 0 && buttonMode != 1) {
        return 0;
    }
    const bool question = buttonMode == 1;
    std::unique_ptr<VtInfoDialog> dialog(MakeVtInfoDialog(
        InfoDialogPoint(sizeMode), CalendarBitmap(bitmapId), kEmptyString, APGetStr(textId),
        kInfoDialogFirstButton, APGetStr(kTextOk), question ? kInfoDialogSecondButton : 0,
        question ? APGetStr(kTextCancel) : kEmptyString, displayTime, nullptr));
    if (!dialog) {
        return 0;
    }
    return dialog->ModalDialog();
}

const PLBitmap* CalendarBitmap(uint32_t id) {
    return static_cast<const PLBitmap*>(
        PLAppContext::GetInstance()->GetResource(kPLResBitmap, id, kPLWildcard));
}

long AskCalendarQuestion(uint32_t iconId, const PLBasicString<char>& title,
                         const PLBasicString<char>& body, uint32_t yesId, uint32_t yesLabel,
                         uint32_t noId) {
    std::unique_ptr<VtInfoDialog> dialog(MakeVtInfoDialog(PLPoint(149, 228), CalendarBitmap(iconId),
                                                          title, body, yesId, APGetStr(yesLabel),
                                                          noId, APGetStr(kTextCancel), 0, nullptr));
    return dialog ? dialog->ModalDialog() : kVtDialogNoButton;
}

// Factories of the modal dialogs.
#include "VtDialogFactory.h"

#include "PLListener.h"

namespace {

void AddButtons(VtBaseDialog& dialog, uint32_t firstID, const PLBasicString<char>& firstLabel,
                uint32_t secondID, const PLBasicString<char>& secondLabel) {
    dialog.AddButton(firstID, firstLabel);
    if (secondID != 0 || !secondLabel.IsEmpty()) {
        dialog.AddButton(secondID, secondLabel);
    }
}

}  // namespace

VtInfoDialog* MakeVtInfoDialog(PLPoint extent, const PLBitmap* icon,
                               const PLBasicString<char>& title, const PLBasicString<char>& message,
                               uint32_t firstButtonID, const PLBasicString<char>& firstLabel,
                               uint32_t secondButtonID, const PLBasicString<char>& secondLabel,
                               long displayTime, PLListener* handler) {
    auto* dialog = new VtInfoDialog(kVtInfoDialogID, extent, icon, title, message);
    AddButtons(*dialog, firstButtonID, firstLabel, secondButtonID, secondLabel);
    dialog->FitHeight();
    dialog->SetDisplayTime(displayTime < 0 ? 0 : displayTime);
    dialog->AddListener(handler);
    return dialog;
}

VtCalendarDateDialog* MakeVtCalendarDateDialog(
    PLPoint extent, const PLDate& date, long firstWeekday, uint32_t acceptID,
    const PLBasicString<char>& acceptLabel, uint32_t cancelID,
    const PLBasicString<char>& cancelLabel, uint32_t userMessageID,
    const PLBasicString<char>& title, uint32_t paneID, PLListener* handler) {
    auto* dialog = new VtCalendarDateDialog(paneID, extent, date, firstWeekday, title);
    dialog->AddButton(acceptID, acceptLabel);
    dialog->AddButton(cancelID, cancelLabel);
    dialog->SetAcceptID(acceptID);
    dialog->SetUserMessageID(userMessageID);
    dialog->AddListener(handler);
    return dialog;
}

VtTimePickerDialog* MakeVtTimePickerDialog(long hour, long minute, long format,
                                           const PLBasicString<char>& title, uint32_t acceptID,
                                           const PLBasicString<char>& acceptLabel,
                                           uint32_t cancelID,
                                           const PLBasicString<char>& cancelLabel, long mode) {
    auto* dialog = new VtTimePickerDialog(kVtTimePickerDialogID, hour, minute, format, title, mode);
    dialog->AddButton(acceptID, acceptLabel);
    dialog->AddButton(cancelID, cancelLabel);
    dialog->SetAcceptID(acceptID);
    return dialog;
}

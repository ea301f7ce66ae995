// The day-of-month or n-th-weekday choice of the monthly and yearly repeat editors.
#include "recur/VtCalendarRecurDayPicker.h"

#include <algorithm>
#include <cassert>
#include <string>

#include "APGetStr.h"
#include "PLFont.h"
#include "PLMenuItem.h"
#include "PLTimeStamp.h"
#include "VtWidgets.h"

namespace {

constexpr uint32_t kWeekLabels[] = {10602, 10612, 10622, 10632, 10642};
constexpr uint32_t kWeekdayLabels[] = {30462, 30472, 30482, 30492, 30502, 30512, 30522};

VtMenu* ChoiceMenu(uint32_t id, const uint32_t* labels, int count) {
    VtMenu* menu = MakeVtComboMenu(kEmptyString, id, nullptr);
    for (int i = 0; i < count; ++i) {
        menu->AddMenuItem(new PLMenuItem(APGetStr(labels[i]), uint32_t(i + 1)));
    }
    menu->SetSelectedItemByIndex(1);
    menu->SetFont(PLFont::GetFont(PLFourCC("UC16")));
    return menu;
}

VtComboControl* Choice(uint32_t id, int x, int width, VtMenu* menu) {
    VtComboControl* choice =
        MakeVtComboControl(id, PLPoint(63, x), PLSize(27, width), menu, 0, kEmptyString);
    choice->SetFont(PLFont::GetFont(PLFourCC("UC16")), false);
    choice->SetValue(1, false);
    return choice;
}

}  // namespace

VtCalendarRecurDayPicker::VtCalendarRecurDayPicker(const VtRecurDayPickerIds& ids,
                                                   VtRadioButton* onDay, VtEditField* dayField,
                                                   VtRadioButton* nth)
    : mWeekMenu(ChoiceMenu(ids.weekMenu, kWeekLabels, 5)),
      mWeekdayMenu(ChoiceMenu(ids.weekdayMenu, kWeekdayLabels, 7)),
      mOnDay(onDay),
      mDayField(dayField),
      mNth(nth),
      mWeekChoice(Choice(ids.weekChoice, 30, 80, mWeekMenu.get())),
      mWeekdayChoice(Choice(ids.weekdayChoice, 115, 102, mWeekdayMenu.get())) {
    assert(onDay != nullptr && dayField != nullptr && nth != nullptr &&
           "the editor makes the radios and the day field first");
}

// The choices are the editor's panes by now and are deleted with it, before the menus go.
VtCalendarRecurDayPicker::~VtCalendarRecurDayPicker() = default;

void VtCalendarRecurDayPicker::Select(VtMenu& menu, VtComboControl& choice, long value) {
    menu.SetSelectedItemByIndex(size_t(value));
    choice.SetValue(value, false);
}

void VtCalendarRecurDayPicker::ShowDefaults(int startDay) {
    mOnDay->SetOnState(1, false);
    mDayField->SetString(std::to_string(startDay).c_str(), false);
    mNth->SetOnState(0, false);
    Select(*mWeekMenu, *mWeekChoice, 1);
    Select(*mWeekdayMenu, *mWeekdayChoice, 1);
}

void VtCalendarRecurDayPicker::ShowPattern(int32_t pattern, const PLDate& start, int maxDay) {
    const int32_t week = pattern >> 8;
    const int32_t low = pattern & 0xFF;
    if (week == 0) {
        mOnDay->SetOnState(1, false);
        mNth->SetOnState(0, false);
        const int32_t day = low < 1 ? start.day : std::min<int32_t>(low, maxDay);
        mDayField->SetString(std::to_string(day).c_str(), false);
        return;
    }
    mOnDay->SetOnState(0, false);
    mNth->SetOnState(1, false);
    Select(*mWeekMenu, *mWeekChoice, std::clamp<int32_t>(week, 1, 5));
    Select(*mWeekdayMenu, *mWeekdayChoice, low >= 1 && low <= 7 ? low : start.Weekday());
}

bool VtCalendarRecurDayPicker::IsDayChosen() const {
    return mOnDay->GetOnState() != 0;
}

bool VtCalendarRecurDayPicker::IsNthChosen() const {
    return mNth->GetOnState() != 0;
}

int32_t VtCalendarRecurDayPicker::ChosenDay(int maxDay) const {
    const unsigned long typed = PLStringToUnsigned(mDayField->GetString());
    return typed < 1 ? 1 : int32_t(std::min<unsigned long>(typed, unsigned(maxDay)));
}

int32_t VtCalendarRecurDayPicker::ChosenNth() const {
    return int32_t(mWeekdayChoice->GetValue() + 256 * mWeekChoice->GetValue());
}

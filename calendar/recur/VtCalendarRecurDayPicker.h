// The choice between a day of the month and the n-th weekday of the month, shared by the monthly
// and yearly repeat editors: the two radios and the day field (made by the editor, which owns
// them as rows of its container) and the week and weekday choices with their menus (made and
// owned here). It reads and shows the rule's `pattern` (a day, or week * 256 + weekday).
#pragma once

#include <cstdint>
#include <memory>

#include "PLDate.h"

class VtComboControl;
class VtEditField;
class VtMenu;
class VtRadioButton;

struct VtRecurDayPickerIds {
    uint32_t weekMenu;
    uint32_t weekChoice;
    uint32_t weekdayMenu;
    uint32_t weekdayChoice;
};

class VtCalendarRecurDayPicker {
public:
    // The choices are placed in the container's second row, x 30 and x 115.
    VtCalendarRecurDayPicker(const VtRecurDayPickerIds& ids, VtRadioButton* onDay,
                             VtEditField* dayField, VtRadioButton* nth);
    ~VtCalendarRecurDayPicker();
    VtCalendarRecurDayPicker(const VtCalendarRecurDayPicker&) = delete;
    VtCalendarRecurDayPicker& operator=(const VtCalendarRecurDayPicker&) = delete;

    // The two choices, for the editor to add to its container (they stay its panes).
    VtComboControl* GetWeekChoice() const { return mWeekChoice; }
    VtComboControl* GetWeekdayChoice() const { return mWeekdayChoice; }

    // The day option on with `startDay`, the n-th option off at the first week and weekday.
    void ShowDefaults(int startDay);
    // Shows a stored pattern. Values no rule can hold (day 0 or above `maxDay`, week 0 or above
    // 5, weekday outside 1..7) are shown as the nearest that one can, the start's own day or
    // weekday where nothing is near.
    void ShowPattern(int32_t pattern, const PLDate& start, int maxDay);

    bool IsDayChosen() const;
    bool IsNthChosen() const;
    // The day field clamped to 1..maxDay.
    int32_t ChosenDay(int maxDay) const;
    // The n-th weekday as a pattern: week * 256 + weekday (at least 257).
    int32_t ChosenNth() const;

private:
    void Select(VtMenu& menu, VtComboControl& choice, long value);

    std::unique_ptr<VtMenu> mWeekMenu;
    std::unique_ptr<VtMenu> mWeekdayMenu;
    VtRadioButton* mOnDay;  // the editor's rows
    VtEditField* mDayField;
    VtRadioButton* mNth;
    VtComboControl* mWeekChoice;  // handed to the editor's container
    VtComboControl* mWeekdayChoice;
};

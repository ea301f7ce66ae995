// The weekly repeat editor: every N weeks on a set of weekdays, the day buttons ordered from the
// configured first day of the week.
#pragma once

#include <memory>

#include "recur/VtCalendarRecurEditorView.h"

class PLBitmapFamily;
class VtButton;
class VtEditField;

class VtCalendarRecurWeeklyView final : public VtCalendarRecurEditorView {
public:
    VtCalendarRecurWeeklyView(uint32_t id, const _EventRecInfo& recordCopy);
    ~VtCalendarRecurWeeklyView() override;

    void ShowRecur() override;
    int32_t Kind() const override { return kRecurWeekly; }
    const char* GetClassName() const override { return "VtCalendarRecurWeeklyView"; }

    // The weekday 1..7 shown by day button `index` 0..6 when the week starts on `firstWeekday`.
    static int WeekdayOfButton(int index, int firstWeekday);
    uint16_t GetFirstWeekday() const { return mFirstWeekday; }

protected:
    void ShowDefaults() override;
    Fill FillRule(VtRecurRefusal& refusal) override;
    void ListenControl(uint32_t sender) override;

private:
    void SetDay(int index, bool on);
    int32_t ChosenMask() const;

    std::unique_ptr<PLBitmapFamily> mDayFamily;
    VtEditField* mIntervalField = nullptr;  // rows in the frame's container
    VtButton* mDays[7] = {};
    uint16_t mFirstWeekday = 1;
};

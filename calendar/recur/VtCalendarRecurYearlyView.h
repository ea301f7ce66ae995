// The yearly repeat editor: every year in one month, on a day of it or on its n-th weekday. The
// rule's interval carries the month.
#pragma once

#include <memory>

#include "recur/VtCalendarRecurEditorView.h"

class VtCalendarRecurDayPicker;
class VtComboControl;
class VtMenu;

class VtCalendarRecurYearlyView final : public VtCalendarRecurEditorView {
public:
    VtCalendarRecurYearlyView(uint32_t id, const _EventRecInfo& recordCopy);
    ~VtCalendarRecurYearlyView() override;

    void ShowRecur() override;
    int32_t Kind() const override { return kRecurYearly; }
    const char* GetClassName() const override { return "VtCalendarRecurYearlyView"; }

protected:
    void ShowDefaults() override;
    Fill FillRule(VtRecurRefusal& refusal) override;
    bool CachesSeriesCount() const override { return true; }

private:
    void SelectMonth(long month);

    std::unique_ptr<VtMenu> mMonthMenu;
    VtComboControl* mMonthChoice = nullptr;  // a row in the frame's container
    std::unique_ptr<VtCalendarRecurDayPicker> mDayPicker;
};

// The monthly repeat editor: every N months on a day of the month or on its n-th weekday.
#pragma once

#include <memory>

#include "recur/VtCalendarRecurEditorView.h"

class VtCalendarRecurDayPicker;
class VtEditField;

class VtCalendarRecurMonthlyView final : public VtCalendarRecurEditorView {
public:
    VtCalendarRecurMonthlyView(uint32_t id, const _EventRecInfo& recordCopy);
    ~VtCalendarRecurMonthlyView() override;

    void ShowRecur() override;
    int32_t Kind() const override { return kRecurMonthly; }
    const char* GetClassName() const override { return "VtCalendarRecurMonthlyView"; }

protected:
    void ShowDefaults() override;
    Fill FillRule(VtRecurRefusal& refusal) override;
    bool CachesSeriesCount() const override { return true; }

private:
    // True when a series until the chosen date would have no occurrence at all.
    bool UntilMissesEveryDay() const;

    VtEditField* mIntervalField = nullptr;  // a row in the frame's container
    std::unique_ptr<VtCalendarRecurDayPicker> mDayPicker;
};

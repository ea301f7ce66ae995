// The daily repeat editor: every N days or every working day.
#pragma once

#include "recur/VtCalendarRecurEditorView.h"

class VtEditField;
class VtRadioButton;

class VtCalendarRecurDailyView final : public VtCalendarRecurEditorView {
public:
    VtCalendarRecurDailyView(uint32_t id, const _EventRecInfo& recordCopy);
    ~VtCalendarRecurDailyView() override;

    void ShowRecur() override;
    int32_t Kind() const override { return kRecurDaily; }
    const char* GetClassName() const override { return "VtCalendarRecurDailyView"; }

protected:
    void ShowDefaults() override;
    Fill FillRule(VtRecurRefusal& refusal) override;
    bool WritesDailyUntil() const override { return true; }

private:
    VtRadioButton* mEveryRadio = nullptr;  // rows in the frame's container
    VtEditField* mIntervalField = nullptr;
    VtRadioButton* mWorkdayRadio = nullptr;
};

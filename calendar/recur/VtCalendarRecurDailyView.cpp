// The daily repeat editor.
#include "recur/VtCalendarRecurDailyView.h"

#include "VtWidgets.h"

namespace {

VtRecurFrameIds Frame(uint32_t id) {
    return {id, 11644, 10462, 11645, 11642, 11643};
}

// The end heading and the "times" label share one id in this editor.
const VtRecurEndIds kEnd{11635, 11636, 11637, 11638, 11635, 11641, 11646, 60};

}  // namespace

VtCalendarRecurDailyView::VtCalendarRecurDailyView(uint32_t id, const _EventRecInfo& recordCopy)
    : VtCalendarRecurEditorView(Frame(id), kEnd) {
    mEveryRadio = AddRadio(11631, 5, 0, 70, 10502, true);
    mIntervalField = AddNumericField(11632, 75, 0, 60, "1");
    AddLabel(11633, 135, 0, 105, 10512);
    mWorkdayRadio = AddRadio(11634, 5, 30, 235, 10542, false);
    AddRadioGroup({mEveryRadio, mWorkdayRadio});
    FinishFrame(recordCopy);
}

VtCalendarRecurDailyView::~VtCalendarRecurDailyView() {
    TakeDownPanes();
}

void VtCalendarRecurDailyView::ShowDefaults() {
    mEveryRadio->SetOnState(1, false);
    mIntervalField->SetString("1", false);
    // An event that runs past midnight would overlap its next working day.
    mWorkdayRadio->SetEnabled(StartDate() >= EndDate(), false);
    mWorkdayRadio->SetOnState(0, false);
}

void VtCalendarRecurDailyView::ShowRecur() {
    // Any pattern but "working days" is read as every N days.
    const bool workdays = mSetting.pattern == 1;
    mEveryRadio->SetOnState(workdays ? 0 : 1, false);
    mWorkdayRadio->SetOnState(workdays ? 1 : 0, false);
    if (!workdays) {
        // A stored interval below 1 would turn the rule off on confirming: offer every day.
        ShowNumber(*mIntervalField, mSetting.interval < 1 ? 1 : mSetting.interval);
    }
    ShowEnd();
}

VtCalendarRecurEditorView::Fill VtCalendarRecurDailyView::FillRule(VtRecurRefusal& refusal) {
    const int days = EndDate() - StartDate();
    mSetting.kind = kRecurDaily;
    if (mWorkdayRadio->GetOnState() != 0) {
        mSetting.pattern = 1;
        mSetting.interval = 1;
        return Fill::CheckEnd;
    }
    mSetting.interval = FieldNumber(*mIntervalField);
    if (mSetting.interval < 1) {
        mSetting.kind = kRecurNone;
        return Fill::AcceptNow;
    }
    if (mSetting.interval <= days) {
        refusal = {32060, 11152, 0};
        return Fill::Refuse;
    }
    mSetting.pattern = 0;
    return Fill::CheckEnd;
}

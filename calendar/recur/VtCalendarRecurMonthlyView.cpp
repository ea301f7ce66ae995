// The monthly repeat editor.
#include "recur/VtCalendarRecurMonthlyView.h"

#include "VtWidgets.h"
#include "recur/VtCalendarRecurDayPicker.h"

namespace {

VtRecurFrameIds Frame(uint32_t id) {
    return {id, 11719, 10482, 11720, 11716, 11718};
}
const VtRecurEndIds kEnd{11710, 11711, 11712, 11713, 11714, 11715, 11721, 90};
const VtRecurDayPickerIds kPicker{11706, 11707, 11708, 11709};

constexpr int kLongestMonth = 31;
constexpr int32_t kSecondsPerDay = 86400;

}  // namespace

VtCalendarRecurMonthlyView::VtCalendarRecurMonthlyView(uint32_t id, const _EventRecInfo& recordCopy)
    : VtCalendarRecurEditorView(Frame(id), kEnd) {
    mIntervalField = AddNumericField(11702, 5, 0, 130, "1", 10502, 60);
    AddLabel(11701, 135, 0, 105, 10532);
    VtRadioButton* onDay = AddRadio(11703, 5, 30, 70, 10652, true);
    VtEditField* day = AddNumericField(11704, 75, 30, 60, "1");
    VtRadioButton* nth = AddRadio(11705, 5, 60, 25, 0, false);
    mDayPicker = std::make_unique<VtCalendarRecurDayPicker>(kPicker, onDay, day, nth);
    AddRow(mDayPicker->GetWeekChoice());
    AddRow(mDayPicker->GetWeekdayChoice());
    AddRadioGroup({onDay, nth});
    FinishFrame(recordCopy);
}

VtCalendarRecurMonthlyView::~VtCalendarRecurMonthlyView() {
    // The choices refer to the picker's menus: they go first.
    TakeDownPanes();
}

void VtCalendarRecurMonthlyView::ShowDefaults() {
    mIntervalField->SetString("1", false);
    mDayPicker->ShowDefaults(StartDate().day);
}

void VtCalendarRecurMonthlyView::ShowRecur() {
    ShowNumber(*mIntervalField, mSetting.interval < 1 ? 1 : mSetting.interval);
    mDayPicker->ShowPattern(mSetting.pattern, StartDate(), kLongestMonth);
    ShowEnd();
}

bool VtCalendarRecurMonthlyView::UntilMissesEveryDay() const {
    const PLDate start = StartDate();
    const PLDate& until = mUntilDate;
    if (start.day <= mSetting.pattern || until.year > start.year) {
        return false;
    }
    // A plain "next month": a December start is not compared with January.
    const bool nextMonthTooEarly = until.month == start.month + 1 && until.day < mSetting.pattern;
    return nextMonthTooEarly || until.month == start.month;
}

VtCalendarRecurEditorView::Fill VtCalendarRecurMonthlyView::FillRule(VtRecurRefusal& refusal) {
    mSetting.kind = kRecurMonthly;
    mSetting.interval = FieldNumber(*mIntervalField);
    if (mSetting.interval < 1) {
        mSetting.kind = kRecurNone;
        return Fill::AcceptNow;
    }
    if (mDayPicker->IsDayChosen()) {
        const int32_t day = mDayPicker->ChosenDay(kLongestMonth);
        mSetting.pattern = day;
        const int startDay = StartDate().day;
        if (day > startDay) {
            // The series begins on its first chosen day; the message carries that start.
            mSetting.startStamp += (day - startDay) * kSecondsPerDay;
        }
    } else if (mDayPicker->IsNthChosen()) {
        mSetting.pattern = mDayPicker->ChosenNth();
    }
    if (IsUntilMode() && UntilMissesEveryDay()) {
        refusal = {32060, 11012, 3000};
        return Fill::Refuse;
    }
    return Fill::CheckEnd;
}

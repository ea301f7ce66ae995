// The yearly repeat editor.
#include "recur/VtCalendarRecurYearlyView.h"

#include "APGetStr.h"
#include "PLFont.h"
#include "PLMenuItem.h"
#include "VtWidgets.h"
#include "recur/VtCalendarRecurDayPicker.h"

namespace {

VtRecurFrameIds Frame(uint32_t id) {
    return {id, 11749, 10492, 11750, 11746, 11748};
}
const VtRecurEndIds kEnd{11740, 11741, 11742, 11743, 11744, 11745, 11751, 90};
const VtRecurDayPickerIds kPicker{11736, 11737, 11738, 11739};

constexpr uint32_t kFirstMonthLabel = 30602;
// Days of a month are counted in a leap year, so that a yearly rule may fall on 29 February.
constexpr int kLeapYear = 2008;

VtMenu* MonthMenu() {
    VtMenu* menu = MakeVtComboMenu(kEmptyString, 11732, nullptr);
    for (uint32_t month = 1; month <= 12; ++month) {
        menu->AddMenuItem(new PLMenuItem(APGetStr(kFirstMonthLabel + 10 * (month - 1)), month));
    }
    menu->SetSelectedItemByIndex(1);
    menu->SetFont(PLFont::GetFont(PLFourCC("UC16")));
    return menu;
}

}  // namespace

VtCalendarRecurYearlyView::VtCalendarRecurYearlyView(uint32_t id, const _EventRecInfo& recordCopy)
    : VtCalendarRecurEditorView(Frame(id), kEnd), mMonthMenu(MonthMenu()) {
    AddLabel(11731, 5, 0, 60, 10502);
    mMonthChoice =
        MakeVtComboControl(11733, At(65, 3), Size(152, 27), mMonthMenu.get(), 0, kEmptyString);
    mMonthChoice->SetFont(PLFont::GetFont(PLFourCC("UC16")), false);
    mMonthChoice->SetValue(1, false);
    AddRow(mMonthChoice);
    VtRadioButton* onDay = AddRadio(11734, 5, 30, 70, 10652, true);
    VtEditField* day = AddNumericField(11747, 75, 30, 60, "1");
    VtRadioButton* nth = AddRadio(11735, 5, 60, 25, 0, false);
    mDayPicker = std::make_unique<VtCalendarRecurDayPicker>(kPicker, onDay, day, nth);
    AddRow(mDayPicker->GetWeekChoice());
    AddRow(mDayPicker->GetWeekdayChoice());
    AddRadioGroup({onDay, nth});
    FinishFrame(recordCopy);
}

VtCalendarRecurYearlyView::~VtCalendarRecurYearlyView() {
    // The choices refer to the menus: they go first.
    TakeDownPanes();
}

void VtCalendarRecurYearlyView::SelectMonth(long month) {
    mMonthMenu->SetSelectedItemByIndex(size_t(month));
    mMonthChoice->SetValue(month, false);
}

void VtCalendarRecurYearlyView::ShowDefaults() {
    SelectMonth(1);
    mDayPicker->ShowDefaults(StartDate().day);
}

void VtCalendarRecurYearlyView::ShowRecur() {
    // A month no calendar has is shown as the event's own month.
    const int32_t month = mSetting.interval;
    SelectMonth(month >= 1 && month <= 12 ? month : StartDate().month);
    mDayPicker->ShowPattern(mSetting.pattern, StartDate(),
                            PLDate::NumberOfDaysInMonth(int(mMonthChoice->GetValue()), kLeapYear));
    ShowEnd();
}

VtCalendarRecurEditorView::Fill VtCalendarRecurYearlyView::FillRule(VtRecurRefusal&) {
    mSetting.kind = kRecurYearly;
    mSetting.interval = int32_t(mMonthChoice->GetValue());
    if (mDayPicker->IsDayChosen()) {
        mSetting.pattern =
            mDayPicker->ChosenDay(PLDate::NumberOfDaysInMonth(mSetting.interval, kLeapYear));
    } else {
        mSetting.pattern = mDayPicker->ChosenNth();
    }
    return Fill::CheckEnd;
}

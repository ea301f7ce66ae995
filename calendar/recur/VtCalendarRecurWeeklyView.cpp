// The weekly repeat editor.
#include "recur/VtCalendarRecurWeeklyView.h"

#include "APGetStr.h"
#include "PLAppContext.h"
#include "PLBitmapFamily.h"
#include "VtWidgets.h"
#include "app/VtCalendarHelpers.h"

namespace {

VtRecurFrameIds Frame(uint32_t id) {
    return {id, 11679, 10472, 11680, 11677, 11678};
}
const VtRecurEndIds kEnd{11670, 11671, 11672, 11673, 11674, 11676, 11681, 60};

constexpr uint32_t kFirstDayButton = 11663;
const PLRGBColor kDayOn(25, 125, 255, 255);
const PLRGBColor kDayOff(0, 0, 0, 255);

// Short weekday names by weekday number 1 (Sunday) .. 7.
constexpr uint32_t kWeekdayLabels[7] = {30592, 30532, 30542, 30552, 30562, 30572, 30582};

// A mask bit stands for weekday bit + 1; bit 7 and up mean nothing.
constexpr int32_t kWeekdayBits = 0x7F;

}  // namespace

VtCalendarRecurWeeklyView::VtCalendarRecurWeeklyView(uint32_t id, const _EventRecInfo& recordCopy)
    : VtCalendarRecurEditorView(Frame(id), kEnd) {
    // The family refers to the resource file's bitmaps, which the resource service keeps.
    mDayFamily = std::make_unique<PLBitmapFamily>(0x3F3F3F3F, false);
    mDayFamily->SetAllBitmaps(PLAppContext::GetInstance()->GetBitmap(10380));
    mDayFamily->SetBitmap(kPLBitmapPressed, PLAppContext::GetInstance()->GetBitmap(10370));
    mIntervalField = AddNumericField(11662, 5, 0, 130, "1", 10502, 60);
    AddLabel(11661, 135, 0, 105, 10522);
    for (int i = 0; i < 7; ++i) {
        mDays[i] = MakeBmpViewButton(kFirstDayButton + uint32_t(i), At(5 + 28 * i, 30),
                                     mDayFamily.get(), APGetStr(30522 + 10 * uint32_t(i)),
                                     kVtButtonToggle, false, false, nullptr);
        AddRow(mDays[i]);
    }
    FinishFrame(recordCopy);
}

VtCalendarRecurWeeklyView::~VtCalendarRecurWeeklyView() {
    // The buttons draw from the family: they go first.
    TakeDownPanes();
}

int VtCalendarRecurWeeklyView::WeekdayOfButton(int index, int firstWeekday) {
    const int weekday = firstWeekday + index;
    return weekday > 7 ? weekday - 7 : weekday;
}

void VtCalendarRecurWeeklyView::SetDay(int index, bool on) {
    mDays[index]->SetOnState(on ? 1 : 0, false);
    mDays[index]->SetTextColor(on ? kDayOn : kDayOff, false);
}

void VtCalendarRecurWeeklyView::ShowDefaults() {
    const uint16_t configured = StartWeekDayIndex();
    // A damaged setting outside 1..7 is read as Sunday, as everywhere else.
    mFirstWeekday = configured >= 1 && configured <= 7 ? configured : 1;
    mIntervalField->SetString("1", false);
    for (int i = 0; i < 7; ++i) {
        mDays[i]->SetString(APGetStr(kWeekdayLabels[WeekdayOfButton(i, mFirstWeekday) - 1]), false);
        SetDay(i, false);
    }
    if (mSetting.kind != kRecurWeekly || (mSetting.pattern & kWeekdayBits) == 0) {
        // A new weekly rule (or one with no day left) starts on the event's own weekday.
        int index = StartDate().Weekday() - mFirstWeekday;
        if (index < 0) {
            index += 7;
        }
        SetDay(index, true);
    }
}

void VtCalendarRecurWeeklyView::ShowRecur() {
    ShowNumber(*mIntervalField, mSetting.interval < 1 ? 1 : mSetting.interval);
    if ((mSetting.pattern & kWeekdayBits) != 0) {
        for (int i = 0; i < 7; ++i) {
            const int weekday = WeekdayOfButton(i, mFirstWeekday);
            SetDay(i, (mSetting.pattern >> (weekday - 1) & 1) != 0);
        }
    }
    ShowEnd();
}

int32_t VtCalendarRecurWeeklyView::ChosenMask() const {
    int32_t mask = 0;
    for (int i = 0; i < 7; ++i) {
        if (mDays[i]->GetOnState() != 0) {
            mask |= 1 << (WeekdayOfButton(i, mFirstWeekday) - 1);
        }
    }
    return mask;
}

VtCalendarRecurEditorView::Fill VtCalendarRecurWeeklyView::FillRule(VtRecurRefusal&) {
    mSetting.kind = kRecurWeekly;
    mSetting.interval = FieldNumber(*mIntervalField);
    if (mSetting.interval < 1) {
        mSetting.kind = kRecurNone;
        return Fill::AcceptNow;
    }
    mSetting.pattern = ChosenMask();
    if (mSetting.pattern == 0) {
        // No day chosen: the event stops repeating, but an impossible end is still refused.
        mSetting.kind = kRecurNone;
    }
    return Fill::CheckEnd;
}

void VtCalendarRecurWeeklyView::ListenControl(uint32_t sender) {
    if (sender < kFirstDayButton || sender >= kFirstDayButton + 7) {
        return;
    }
    // The button has toggled itself already; its text follows its state.
    VtButton* day = mDays[sender - kFirstDayButton];
    day->SetTextColor(day->GetOnState() != 0 ? kDayOn : kDayOff, true);
}

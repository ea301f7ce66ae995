// The repeat editors' shared frame: building, loading the end rows, the keypad and the date
// dialog, radio groups, the check of the end of the series and the answer to the form.
#include "recur/VtCalendarRecurEditorView.h"

#include <algorithm>
#include <cassert>

#include "APGetStr.h"
#include "PLAppContext.h"
#include "PLMessage.h"
#include "PLTime.h"
#include "PLTimeStamp.h"
#include "VtWidgets.h"
#include "app/VtCalendarHelpers.h"
#include "recur/VtCalendarRecurDailyView.h"
#include "recur/VtCalendarRecurMonthlyView.h"
#include "recur/VtCalendarRecurText.h"
#include "recur/VtCalendarRecurWeeklyView.h"
#include "recur/VtCalendarRecurYearlyView.h"
#include "recur/VtCalendarSetRecurMsg.h"

namespace {

constexpr int kContainerTop = 29;
constexpr int kFullHeight = 210;
constexpr int kKeypadHeight = 106;
constexpr long kKeypadMode = kIMEDigits;
constexpr uint32_t kAnyResource = 0x3F3F3F3F;
constexpr uint32_t kConfirmLabel = 30102;

// The date shown for a stored series end. A stamp outside the dates the date dialog offers
// (a damaged record) is shown as the nearest date it does offer.
PLDate UntilDateOf(int32_t lastStamp) {
    PLDate date;
    PLTime time;
    TimeStamp2PLDate(lastStamp, &date, &time);
    const PLDate first(1970, 1, 1);
    const PLDate last(2030, 12, 31);
    if (date < first) {
        return first;
    }
    return date > last ? last : date;
}

PLDate DateOf(int32_t stamp) {
    PLDate date;
    PLTime time;
    TimeStamp2PLDate(stamp, &date, &time);
    return date;
}

}  // namespace

VtCalendarRecurEditorView::VtCalendarRecurEditorView(const VtRecurFrameIds& frame,
                                                     const VtRecurEndIds& end)
    : PLView(frame.view, PLPoint(0, 0), PLSize(275, 240)),
      mIds(frame),
      mScrollSize(Size(240, kFullHeight)),
      mIME(IMEManagerFactory::createIMEManager()) {
    SetBroadcaster(new PLBroadcaster(), true);
    SetComponentListener(nullptr, true, false);
    SetHasBmpBackground(true, true);
    mIME->RegisterView(this);
    mTitleBar = MakeVtTextTopBar(frame.titleBar, PLPoint(0, 0), 240, APGetStr(frame.titleText),
                                 kEmptyString, 0, 0);
    AddSubPane(mTitleBar, false);
    mContainer = MakeVtScrollContainer(frame.container, At(0, kContainerTop), mScrollSize, true,
                                       false, 20, false, PLRect(1, 1, 1, 1), nullptr, true);
    mContainer->GetContentPane()->SetScrollSteps(70, 30, 1);
    mContainer->GetContentPane()->SetHasBmpBackground(true, true);
    mContainer->GetScroller()->SetHasBmpBackground(true, true);
    mContainer->GetScroller()->SetAutoScroll(true);
    // The end rows are made now so that the editors' own rows can be loaded with them; they are
    // added to the container after those rows.
    BuildEndRows(end);
}

VtCalendarRecurEditorView::~VtCalendarRecurEditorView() {
    TakeDownPanes();
    mIME.reset();
}

void VtCalendarRecurEditorView::TakeDownPanes() {
    if (mIME) {
        mIME->ReleaseView(this);
    }
    while (!GetSubPanes().empty()) {
        PLPane* pane = GetSubPanes().back();
        RemoveSubPane(pane);
        delete pane;
    }
    mContainer = nullptr;
}

void VtCalendarRecurEditorView::BuildEndRows(const VtRecurEndIds& end) {
    const int y = end.top;
    mEndHeading = MakeStaticText(end.heading, At(5, y), Size(235, 30), APGetStr(10552), -1, false,
                                 0, PLRGBColor(-1, false), nullptr);
    mNoEnd = MakeRadioButton(end.noEnd, At(5, y + 30), Size(235, 30), APGetStr(10562), true,
                             nullptr, nullptr);
    mAfterCount = MakeRadioButton(end.afterCount, At(5, y + 60), Size(105, 30), APGetStr(10572),
                                  false, nullptr, nullptr);
    mCountField =
        MakeVtEditField(end.countField, At(105, y + 60), Size(50, 30), "10", true, -1, 0, 1, 2,
                        kEmptyString, 1, 0, nullptr, true, kVtEditFieldRect, -1, true);
    mCountField->GetEditor()->SetAcceptedChars("0123456789");
    mCountField->GetEditor()->Redraw();
    mTimesLabel = MakeStaticText(end.timesLabel, At(155, y + 60), Size(80, 30), APGetStr(10582), -1,
                                 false, 0, PLRGBColor(-1, false), nullptr);
    mUntilField =
        MakeVtEditField(end.untilField, At(95, y + 90), Size(110, 30), kEmptyString, true, -1, 0, 1,
                        10, "", -1, 65, nullptr, true, kVtEditFieldRect, -1, true);
    // The date is chosen in the date dialog, never typed.
    mUntilField->GetEditor()->SetEditable(false);
    mUntilRadio = MakeRadioButton(end.untilRadio, At(5, y + 90), Size(90, 30), APGetStr(10592),
                                  false, nullptr, nullptr);
}

VtEditField* VtCalendarRecurEditorView::AddNumericField(uint32_t id, int x, int y, int width,
                                                        const char* text, uint32_t caption,
                                                        long captionWidth) {
    const bool captioned = caption != 0;
    VtEditField* field = MakeVtEditField(
        id, At(x, y), Size(width, 30), text, true, -1, 0, 1, 2,
        captioned ? APGetStr(caption) : PLBasicString<char>(kEmptyString), captioned ? -1 : 1,
        captioned ? captionWidth : 0, nullptr, true, kVtEditFieldRect, -1, true);
    field->GetEditor()->SetAcceptedChars("0123456789");
    field->GetEditor()->Redraw();
    mNumericFields.push_back(field);
    AddRow(field);
    return field;
}

VtRadioButton* VtCalendarRecurEditorView::AddRadio(uint32_t id, int x, int y, int width,
                                                   uint32_t label, bool on) {
    VtRadioButton* radio =
        MakeRadioButton(id, At(x, y), Size(width, 30), label != 0 ? APGetStr(label) : kEmptyString,
                        on, nullptr, nullptr);
    AddRow(radio);
    return radio;
}

VtStaticText* VtCalendarRecurEditorView::AddLabel(uint32_t id, int x, int y, int width,
                                                  uint32_t label) {
    VtStaticText* text = MakeStaticText(id, At(x, y), Size(width, 30), APGetStr(label), -1, false,
                                        0, PLRGBColor(-1, false), nullptr);
    AddRow(text);
    return text;
}

void VtCalendarRecurEditorView::AddRow(PLPane* pane) {
    assert(mContainer != nullptr && "rows go into the container while the editor is built");
    pane->SetHasBmpBackground(true, true);
    pane->AddListener(this);
    mContainer->AddSubPane(pane, false);
}

void VtCalendarRecurEditorView::AddRadioGroup(std::vector<VtRadioButton*> group) {
    mRadioGroups.push_back(std::move(group));
}

void VtCalendarRecurEditorView::FinishFrame(const _EventRecInfo& recordCopy) {
    PLPane* rows[] = {mEndHeading, mNoEnd,      mAfterCount, mCountField,
                      mTimesLabel, mUntilField, mUntilRadio};
    for (PLPane* row : rows) {
        AddRow(row);
    }
    mNumericFields.push_back(mCountField);
    AddRadioGroup({mNoEnd, mAfterCount, mUntilRadio});
    // The count field sits lowest: the container scrolls to its caret above the keypad.
    mCountField->GetEditor()->AddListener(mContainer->GetScroller());
    mCountField->GetEditor()->SetScroller(mContainer->GetScroller());
    AddSubPane(mContainer, false);
    SetRecur(recordCopy);
    // Loaded now, as the chooser does, so that the bar's families are ready; not kept here.
    PLAppContext::GetInstance()->GetBitmapFamily(30371);
    PLAppContext::GetInstance()->GetBitmapFamily(30401);
    AddFrameButtons();
}

void VtCalendarRecurEditorView::AddFrameButtons() {
    VtPopupButton* options =
        MakeCSTMenuPopupButton(11810, PLPoint(239, 0), nullptr, 1, false, false, true, nullptr);
    options->SetEnabled(false, false);
    options->AddListener(this);
    AddSubPane(options, false);
    VtButton* confirm = MakeBmpBarButton(mIds.confirm, PLPoint(239, 43), PLSize(36, 154), nullptr,
                                         APGetStr(kConfirmLabel), 1, false, false, nullptr);
    confirm->AddListener(this);
    AddSubPane(confirm, false);
    VtButton* back = MakeCSTBackButton(mIds.back, PLPoint(239, 197));
    back->AddListener(this);
    AddSubPane(back, false);
}

void VtCalendarRecurEditorView::SetRecur(const _EventRecInfo& recordCopy) {
    mSetting = VtCalendarRecurOf(recordCopy);
    mLoadedStart = mSetting.startStamp;
    mSeriesCountCache = 0;
    mUntilDate = UntilDateOf(mSetting.lastStamp);
    ShowEndDefaults();
    ShowDefaults();
    if (mSetting.kind == Kind()) {
        ShowRecur();
    }
}

void VtCalendarRecurEditorView::ShowEndDefaults() {
    mNoEnd->SetOnState(1, false);
    mAfterCount->SetOnState(0, false);
    mCountField->SetString("10", false);
    mUntilRadio->SetOnState(0, false);
    ShowUntilDate();
}

void VtCalendarRecurEditorView::ShowUntilDate() {
    mUntilField->SetString(PLDate2PLString(mUntilDate, 1), false);
}

void VtCalendarRecurEditorView::ShowEnd() {
    const int32_t count = mSetting.count;
    mNoEnd->SetOnState(count == kRecurNoEnd ? 1 : 0, false);
    // Daily rules mean "until" by 0 and the others by -1; a count below 1 is no number of
    // occurrences in any kind, so both open on the until date.
    mUntilRadio->SetOnState(count != kRecurNoEnd && count < 1 ? 1 : 0, false);
    mAfterCount->SetOnState(count != kRecurNoEnd && count >= 1 ? 1 : 0, false);
    if (count != kRecurNoEnd && count >= 1) {
        ShowNumber(*mCountField, count);
    }
    ShowUntilDate();
}

int32_t VtCalendarRecurEditorView::FieldNumber(const VtEditField& field) {
    const unsigned long value = PLStringToUnsigned(field.GetString());
    return value > 99999 ? 99999 : int32_t(value);
}

void VtCalendarRecurEditorView::ShowNumber(VtEditField& field, int32_t value) {
    field.SetString(std::to_string(std::clamp(value, 0, 99)).c_str(), false);
}

PLDate VtCalendarRecurEditorView::StartDate() const {
    return DateOf(mSetting.startStamp);
}

PLDate VtCalendarRecurEditorView::EndDate() const {
    return DateOf(mSetting.endStamp);
}

bool VtCalendarRecurEditorView::IsUntilMode() const {
    return mNoEnd->GetOnState() == 0 && mAfterCount->GetOnState() == 0;
}

VtRecurEndInput VtCalendarRecurEditorView::EndInput() {
    VtRecurEndInput input;
    if (mNoEnd->GetOnState() != 0) {
        input.mode = VtRecurEndMode::NoEnd;
    } else if (mAfterCount->GetOnState() != 0) {
        input.mode = VtRecurEndMode::AfterCount;
    } else {
        input.mode = VtRecurEndMode::UntilDate;
    }
    input.countText = mCountField->GetString();
    input.untilDate = mUntilDate;
    input.daily = WritesDailyUntil();
    input.seriesCountCache = CachesSeriesCount() ? &mSeriesCountCache : nullptr;
    return input;
}

VtRecurRefusal VtCalendarRecurEditorView::EvaluateRecur() {
    // Each check starts from the event's own start: a refused check may have moved it to the
    // first occurrence, and a second check would otherwise move it again.
    mSetting.startStamp = mLoadedStart;
    VtRecurRefusal refusal;
    switch (FillRule(refusal)) {
        case Fill::Refuse:
            return refusal;
        case Fill::AcceptNow:
            return {};
        case Fill::CheckEnd:
            break;
    }
    const VtRecurEndInput input = EndInput();
    PLDate lastDay;
    if (CheckRecurEnd(mSetting, input, lastDay) == VtRecurEndResult::UntilBeforeStart) {
        return {32050, 10882, 0};
    }
    if (input.mode == VtRecurEndMode::AfterCount && mSetting.kind != kRecurNone) {
        mUntilDate = UntilDateOf(mSetting.lastStamp);
    }
    return {};
}

bool VtCalendarRecurEditorView::CheckRecur() {
    const VtRecurRefusal refusal = EvaluateRecur();
    if (refusal.IsRefused()) {
        ShowInfoDialog(refusal.bitmap, refusal.text, 0, 0, refusal.displayTime);
        return false;
    }
    return true;
}

void VtCalendarRecurEditorView::ListenControl(uint32_t) {}

void VtCalendarRecurEditorView::Listen(PLMessage* message) {
    assert(message != nullptr && "the editor handles a message");
    if (message == nullptr) {
        return;
    }
    const uint32_t type = message->GetMessageID();
    const uint32_t sender = message->GetSenderID();
    if (type == kPLMsgEditPressed) {
        for (VtEditField* field : mNumericFields) {
            if (field->GetID() == sender) {
                OpenKeypad(*field);
                return;
            }
        }
        if (sender == mUntilField->GetID()) {
            ChooseUntilDate();
        }
    } else if (type == kPLMsgInputMethod) {
        const auto* state = dynamic_cast<const VtStateMessage*>(message);
        if (state != nullptr && state->GetState() == kVtIMEClosed) {
            ResizeContainer(kFullHeight);
            Redraw();
        }
    } else if (type == kPLMsgControl) {
        if (sender == mIds.confirm) {
            Confirm();
        } else if (sender == mIds.back) {
            CloseKeypad();
            Close(false, true);
        } else if (!KeepOneOn(sender)) {
            ListenControl(sender);
        }
    }
}

void VtCalendarRecurEditorView::OpenKeypad(VtEditField& field) {
    ResizeContainer(kKeypadHeight);
    mIME->Open(kKeypadMode, this);
    mIME->Attach(field.GetEditor());
    Redraw();
}

void VtCalendarRecurEditorView::ChooseUntilDate() {
    if (ShowDateDialog(mUntilDate) == 1) {
        mUntilField->SetString(PLDate2PLString(mUntilDate, 1), true);
    }
    Redraw();
}

void VtCalendarRecurEditorView::CloseKeypad() {
    if (mIME && mIME->IsOpen()) {
        mIME->Close();
    }
}

void VtCalendarRecurEditorView::ResizeContainer(int height) {
    mScrollSize = Size(240, height);
    if (mContainer != nullptr) {
        mContainer->SetSize(mScrollSize, true);
    }
}

bool VtCalendarRecurEditorView::KeepOneOn(uint32_t tapped) {
    for (const auto& group : mRadioGroups) {
        const bool inGroup = std::any_of(group.begin(), group.end(), [tapped](VtRadioButton* r) {
            return r->GetID() == tapped;
        });
        if (inGroup) {
            for (VtRadioButton* radio : group) {
                radio->SetOnState(radio->GetID() == tapped ? 1 : 0, true);
            }
            return true;
        }
    }
    return false;
}

void VtCalendarRecurEditorView::Confirm() {
    if (!CheckRecur()) {
        return;
    }
    CloseKeypad();
    Close(false, true);
    VtCalendarSetRecurMsg answer(GetID(), mSetting, kRecurMessageID, kAnyResource);
    BroadcastMessage(&answer);
}

VtCalendarRecurEditorView* VtCalendarMakeRecurEditor(int kind, _EventRecInfo* recordCopy) {
    if (recordCopy == nullptr) {
        return nullptr;
    }
    switch (kind) {
        case kRecurDaily:
            return new VtCalendarRecurDailyView(kRecurDailyViewID, *recordCopy);
        case kRecurWeekly:
            return new VtCalendarRecurWeeklyView(kRecurWeeklyViewID, *recordCopy);
        case kRecurMonthly:
            return new VtCalendarRecurMonthlyView(kRecurMonthlyViewID, *recordCopy);
        case kRecurYearly:
            return new VtCalendarRecurYearlyView(kRecurYearlyViewID, *recordCopy);
        default:
            return nullptr;
    }
}

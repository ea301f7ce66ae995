// The repeat screens' stand-in form.
#include "RecurHarnessForm.h"

#include <cstdio>
#include <string>

#include "APEventRec.h"
#include "PLDrawContext.h"
#include "PLMessage.h"
#include "PLTheme.h"
#include "PLTime.h"
#include "PLTimeStamp.h"
#include "VtWidgets.h"
#include "recur/VtCalendarRecurEditorView.h"
#include "recur/VtCalendarRecurMainView.h"
#include "recur/VtCalendarSetRecurMsg.h"

namespace {

VtStaticText* Line(uint32_t id, int y) {
    return MakeStaticText(id, PLPoint(y, 5), PLSize(24, 230), kEmptyString, -1, false, 0,
                          PLRGBColor(-1, false), nullptr);
}

std::string LocalTime(int32_t stamp) {
    PLDate date;
    PLTime time;
    TimeStamp2PLDate(stamp, &date, &time);
    char text[40];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", date.year, date.month,
                  date.day, time.GetHour(), time.GetMinute(), time.GetSecond());
    return text;
}

}  // namespace

RecurHarnessForm::RecurHarnessForm() : PLView(11500, PLPoint(45, 0), PLSize(275, 240)) {
    SetHasBmpBackground(true, true);
    mRuleText = Line(kHarnessRuleText, 10);
    mLastText = Line(kHarnessLastText, 34);
    mStartText = Line(kHarnessStartText, 58);
    mSavedText = Line(kHarnessSavedText, 82);
    for (VtStaticText* line : {mRuleText, mLastText, mStartText, mSavedText}) {
        AddSubPane(line, false);
    }
    VtButton* repeat = MakeVtGeneralButton(kHarnessRepeatButton, PLPoint(120, 15), 210, "Repeat");
    repeat->AddListener(this);
    AddSubPane(repeat, false);
    VtButton* save = MakeVtGeneralButton(kHarnessSaveButton, PLPoint(170, 15), 210, "Save");
    save->AddListener(this);
    AddSubPane(save, false);
    LoadRecord();
    ShowRule();
}

RecurHarnessForm::~RecurHarnessForm() {
    // A shown chooser or editor is a sub-pane as well as owned here.
    if (mChooser) {
        RemoveSubPane(mChooser.get());
    }
    for (auto& [kind, editor] : mEditors) {
        RemoveSubPane(editor.get());
    }
}

void RecurHarnessForm::LoadRecord() {
    if (APEventRec().GetEventRec(1, &mRecord) == 1) {
        return;
    }
    InitEventRecInfo(&mRecord);
    PLDate today;
    PLDate::Today(today);
    mRecord.startStamp = int32_t(PLDate2TimeStamp(today, PLTime(10, 0, 0)));
    mRecord.endStamp = mRecord.lastStamp = mRecord.startStamp + 3600;
    std::snprintf(mRecord.subject, sizeof mRecord.subject, "Repeat");
}

void RecurHarnessForm::ShowRule() {
    char text[120];
    std::snprintf(text, sizeof text, "kind=%d a=%d b=%d c=%d", mRecord.recurKind,
                  mRecord.recurValueA, mRecord.recurValueB, mRecord.recurValueC);
    mRuleText->SetString(text, true);
    mLastText->SetString(("last=" + LocalTime(mRecord.lastStamp)).c_str(), true);
    mStartText->SetString(("start=" + LocalTime(mRecord.startStamp)).c_str(), true);
}

void RecurHarnessForm::OpenChooser() {
    if (!mChooser) {
        mChooser = std::make_unique<VtCalendarRecurMainView>(kRecurChooserID, mRecord.recurKind);
        mChooser->AddListener(this);
    }
    mChooser->SetKind(mRecord.recurKind);
    AddSubPane(mChooser.get(), true);
}

void RecurHarnessForm::ChooserReported() {
    const int kind = mChooser->GetKind();
    RemoveSubPane(mChooser.get());
    if (kind == 0) {
        mRecord.recurKind = 0;
        ShowRule();
        Redraw();
        return;
    }
    OpenEditor(kind);
}

void RecurHarnessForm::OpenEditor(int kind) {
    _EventRecInfo copy = mRecord;
    auto found = mEditors.find(kind);
    if (found == mEditors.end()) {
        VtCalendarRecurEditorView* made = VtCalendarMakeRecurEditor(kind, &copy);
        if (made == nullptr) {
            Redraw();
            return;
        }
        made->AddListener(this);
        found = mEditors.emplace(kind, made).first;
    } else {
        found->second->SetRecur(copy);
    }
    AddSubPane(found->second.get(), true);
}

void RecurHarnessForm::TakeRule(const PLMessage& message) {
    const auto* answer = dynamic_cast<const VtCalendarSetRecurMsg*>(&message);
    if (answer == nullptr) {
        return;
    }
    const _RecurInfo& rule = answer->GetSetting();
    mRecord.recurValueA = rule.interval;
    mRecord.recurValueB = rule.pattern;
    mRecord.lastStamp = rule.lastStamp;
    mRecord.recurValueC = rule.count;
    mRecord.recurKind = rule.kind;
    ShowRule();
}

void RecurHarnessForm::Save() {
    mRecord.recurring = mRecord.recurKind != 0 ? 1 : 0;
    APEventRec store;
    if (mRecord.id > 0) {
        store.UpdateEventRec(&mRecord);
    } else {
        mRecord.id = store.AddEventRec(&mRecord);
    }
    const bool saved = mRecord.id > 0;
    mSavedText->SetString(saved ? "saved" : "not saved", true);
}

void RecurHarnessForm::Listen(PLMessage* message) {
    if (message == nullptr) {
        return;
    }
    const uint32_t type = message->GetMessageID();
    const uint32_t sender = message->GetSenderID();
    if (type == kPLMsgControl && sender == kHarnessRepeatButton) {
        OpenChooser();
    } else if (type == kPLMsgControl && sender == kHarnessSaveButton) {
        Save();
    } else if (type == kPLMsgControl && sender == kRecurChooserID) {
        ChooserReported();
    } else if (type == kRecurMessageID) {
        TakeRule(*message);
    }
}

void RecurHarnessForm::Draw(PLDrawContext& context) {
    PLThemeManager::GetCurrentTheme()->DrawBmpBackground(context, *this);
}

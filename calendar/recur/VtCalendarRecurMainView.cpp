// The repeat kind chooser: list, bar button and the report to the form.
#include "recur/VtCalendarRecurMainView.h"

#include <cassert>

#include "APGetStr.h"
#include "PLAppContext.h"
#include "PLMessage.h"
#include "PLVector.h"
#include "VtWidgets.h"

namespace {

struct ChooserRow {
    uint32_t command;
    uint32_t label;
    int32_t kind;
};

constexpr ChooserRow kRows[] = {{11601, 10452, kRecurNone},
                                {11602, 10462, kRecurDaily},
                                {11603, 10472, kRecurWeekly},
                                {11604, 10482, kRecurMonthly},
                                {11605, 10492, kRecurYearly}};
constexpr size_t kRowCount = sizeof kRows / sizeof kRows[0];

constexpr uint32_t kLabelDone = 30092;
constexpr uint32_t kLabelNext = 11022;
constexpr uint32_t kAnyResource = 0x3F3F3F3F;

}  // namespace

VtCalendarRecurMainView::VtCalendarRecurMainView(unsigned long id, int kind)
    : PLView(uint32_t(id), PLPoint(0, 0), PLSize(275, 240)) {
    SetBroadcaster(new PLBroadcaster(), true);
    SetComponentListener(nullptr, true, false);
    SetHasBmpBackground(true, true);
    BuildList();
    // Loaded now so that the editors opened next find the families ready; not kept here.
    PLAppContext::GetInstance()->GetBitmapFamily(30371);
    PLAppContext::GetInstance()->GetBitmapFamily(30401);
    BuildBar();
    SetKind(kind);
}

void VtCalendarRecurMainView::BuildList() {
    mList = MakeVtListViewContainer(PLPoint(0, 0), PLSize(239, 240), kVtCheckOne, true, false, 20,
                                    30, kRecurChooserList, nullptr, true, true);
    AddSubPane(mList, false);
    mList->AddListener(this);
    for (const ChooserRow& row : kRows) {
        mList->AppendRow(MakeRadioButtonListRow(nullptr, APGetStr(row.label), kEmptyString, nullptr,
                                                nullptr, row.command, -1, 1, true, false),
                         false);
    }
    mList->GetRowByIndex(1)->SetColumnWidth(0, 120, 0, 0);
    mList->CheckRowByIndex(1, false);
    mList->FocusRowByIndex(1, false);
}

void VtCalendarRecurMainView::BuildBar() {
    mMenuButton =
        MakeCSTMenuPopupButton(11810, PLPoint(239, 0), nullptr, 1, false, false, true, nullptr);
    mMenuButton->SetEnabled(false, false);
    AddSubPane(mMenuButton, false);
    mBarButton =
        MakeBmpBarButton(kRecurChooserConfirm, PLPoint(239, (240 - 154) / 2), PLSize(36, 154),
                         nullptr, APGetStr(kLabelDone), 1, false, false, nullptr);
    mBarButton->AddListener(this);
    AddSubPane(mBarButton, false);
    mBackButton = MakeCSTBackButton(kRecurChooserBack, PLPoint(239, 197));
    mBackButton->AddListener(this);
    AddSubPane(mBackButton, false);
}

size_t VtCalendarRecurMainView::RowOfKind(int kind) {
    for (size_t i = 0; i < kRowCount; ++i) {
        if (kRows[i].kind == kind) {
            return i + 1;
        }
    }
    return 1;
}

int VtCalendarRecurMainView::KindOfRow(long row) {
    return row >= 1 && size_t(row) <= kRowCount ? kRows[row - 1].kind : -1;
}

void VtCalendarRecurMainView::SetKind(int kind) {
    mKind = kind;
    const size_t row = RowOfKind(kind);
    mList->CheckRowByIndex(row, false);
    mList->FocusRowByIndex(row, false);
    UpdateBarLabel();
}

long VtCalendarRecurMainView::CheckedRow() const {
    PLVector<long> rows;
    mList->GetCheckedRows(rows);
    return rows.IsEmpty() ? 0 : rows[0];
}

void VtCalendarRecurMainView::UpdateBarLabel() {
    const bool none = CheckedRow() == 1;
    mBarButton->SetString(APGetStr(none ? kLabelDone : kLabelNext), true);
}

void VtCalendarRecurMainView::Choose() {
    // No row checked keeps the kind the chooser was opened with.
    const int chosen = KindOfRow(CheckedRow());
    if (chosen >= 0) {
        mKind = chosen;
    }
    PLMessage report(kPLMsgControl, GetID(), kAnyResource, kEmptyString, kEmptyString);
    BroadcastMessage(&report);
}

void VtCalendarRecurMainView::Listen(PLMessage* message) {
    assert(message != nullptr && "the chooser handles a message");
    if (message == nullptr) {
        return;
    }
    const uint32_t type = message->GetMessageID();
    if (type == kPLMsgControl && message->GetSenderID() == kRecurChooserConfirm) {
        Choose();
    } else if (type == kPLMsgControl && message->GetSenderID() == kRecurChooserBack) {
        Close(false, true);
    } else if (type == kVtListCheckNotice || type == kVtListFocusNotice) {
        UpdateBarLabel();
    }
}

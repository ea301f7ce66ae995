// The delete dialog: filling the list, keeping the bar and the button in step with the checked
// rows, the recurring-event question, deleting and telling the others.
#include "day/VtCalendarDayViewDeleteDialog.h"

#include <cassert>
#include <cstring>
#include <memory>

#include "APAlertDB.h"
#include "APEventRec.h"
#include "APGetStr.h"
#include "PLAppContext.h"
#include "PLApplication.h"
#include "PLBitmap.h"
#include "PLEventLoop.h"
#include "PLMessage.h"
#include "PLPMEClient.h"
#include "VtWidgets.h"
#include "app/VtCalendarBroadcasts.h"
#include "app/VtCalendarEventStore.h"
#include "app/VtCalendarHelpers.h"
#include "day/VtCalendarDayViewItem.h"

namespace {

constexpr uint32_t kOptionsButtonID = 11810;
constexpr uint32_t kEmptyTextID = 11844;
constexpr uint32_t kRowIconID = 10130;
constexpr uint32_t kSeriesIconID = 32130;
constexpr uint32_t kSeriesText = 11162;
constexpr uint32_t kTextDelete = 30122;
constexpr uint32_t kTextSelectAll = 30142;
constexpr uint32_t kTextNoEvents = 30172;
constexpr uint32_t kTextOk = 30002;
constexpr uint32_t kEventsChangedValue = 111;

// The second names of the messages to the day view and the home screen; receivers read only the
// kinds and the first names.
const PLBasicString<char> kDeletedNotice("deleted");
const PLBasicString<char> kCalendarName("com.mdz.calendar.v1");

long AskDeleteSeries() {
    return AskCalendarQuestion(kSeriesIconID, APGetStr(kSeriesText), kEmptyString,
                               kDayDeleteSeriesYes, kTextOk, kDayDeleteSeriesNo);
}

// The main view on the application's root view, which takes the keys again.
PLPane* CurrentMainView() {
    PLApplication* application = PLAppContext::GetInstance()->GetApplication();
    if (application == nullptr || application->GetRootView() == nullptr) {
        return nullptr;
    }
    for (uint32_t id : {11300u, 11200u, 11100u}) {
        if (PLPane* view = application->GetRootView()->FindPane(id)) {
            return view;
        }
    }
    return nullptr;
}

}  // namespace

VtCalendarDayViewDeleteDialog::VtCalendarDayViewDeleteDialog(uint32_t id,
                                                             const APDayEventNode* events)
    : PLView(id, PLPoint(0, 0), PLSize(275, 240)),
      mEvents(events),
      mSeriesQuestion(AskDeleteSeries) {
    SetBroadcaster(new PLBroadcaster, true);
    SetComponentListener(nullptr, true, false);
    SetHasBmpBackground(true, true);
    mRowIcon = CalendarBitmap(kRowIconID);
    mTopBar = MakeVtCheckTopBar(kDayDeleteTopBar, PLPoint(0, 0), 240, APGetStr(kTextDelete),
                                APGetStr(kTextSelectAll), 0, 0, 0);
    AddSubPane(mTopBar, false);
    mTopBar->AddListener(this);
    mList = MakeVtListViewContainer(PLPoint(29, 0), mListSize, kVtCheckMany, true, false, 20, 30,
                                    kDayDeleteList, nullptr, true, true);
    AddSubPane(mList, false);
    mList->AddListener(this);
    mEmptyText =
        MakeStaticText(kEmptyTextID, PLPoint(120, 80), PLSize(30, 105), APGetStr(kTextNoEvents), -1,
                       false, 0, PLRGBColor(-1, false), nullptr);
    PLAppContext* context = PLAppContext::GetInstance();
    context->GetResource(kPLResBitmapFamily, 30371, kPLWildcard);
    context->GetResource(kPLResBitmapFamily, 30401, kPLWildcard);
    VtPopupButton* options = MakeCSTMenuPopupButton(kOptionsButtonID, PLPoint(239, 0), nullptr, 1,
                                                    false, false, true, nullptr);
    options->SetEnabled(false, false);
    AddSubPane(options, false);
    VtButton* remove =
        MakeBmpBarButton(kDayDeleteButton, PLPoint(239, 43), PLSize(36, 154), nullptr,
                         APGetStr(kTextDelete), kVtButtonPush, false, false, nullptr);
    AddSubPane(remove, false);
    remove->AddListener(this);
    remove->SetEnabled(false, false);
    VtButton* back = MakeCSTBackButton(kDayDeleteBack, PLPoint(239, 197));
    back->AddListener(this);
    AddSubPane(back, false);
    Fill(events);
}

VtCalendarDayViewDeleteDialog::~VtCalendarDayViewDeleteDialog() {
    delete mEmptyText;
}

VtCalendarDayViewDeleteDialog* VtCalendarDayViewDeleteDialog::Make(uint32_t id,
                                                                   const APDayEventNode* events) {
    return new VtCalendarDayViewDeleteDialog(id, events);
}

void VtCalendarDayViewDeleteDialog::Fill(const APDayEventNode* events) {
    mEvents = events;
    if (mList->GetRowCount() > 0) {
        mList->ClearAllRows(false);
    }
    mTopBar->SetCheckStatus(0, true);
    mDeleteEnabled = false;
    mAllChecked = false;
    SetDeleteButtonActive(false);
    mRowCount = 0;
    for (const APDayEventNode* node = events; node != nullptr; node = node->next) {
        ++mRowCount;
    }
    const APDayEventNode* node = events;
    for (int i = 0; i < mRowCount; ++i, node = node->next) {
        const bool icon = node->alarmIcon != 0;
        VtListRow* row =
            MakeCheckBoxListRow(icon ? const_cast<PLBitmap*>(mRowIcon) : nullptr,
                                VtCalendarDayViewItem::SubjectText(*node), kEmptyString, nullptr,
                                nullptr, uint32_t(node->id), -1, -1, false, false);
        row->SetColumnWidth(icon ? 50 : 0, 120, 0, 0);
        row->SetValue(node->id, false);
        mList->AppendRow(row, false);
    }
}

bool VtCalendarDayViewDeleteDialog::IsDeleteButtonActive() {
    PLPane* button = FindPane(kDayDeleteButton);
    return button != nullptr && button->IsEnabled();
}

void VtCalendarDayViewDeleteDialog::SetDeleteButtonActive(bool active) {
    if (PLPane* button = FindPane(kDayDeleteButton)) {
        button->SetEnabled(active, true);
    }
}

void VtCalendarDayViewDeleteDialog::KeepInStep() {
    PLVector<long> checked;
    const int count = int(mList->GetCheckedRows(checked));
    if (count == 0 && mDeleteEnabled) {
        mDeleteEnabled = false;
        SetDeleteButtonActive(false);
    } else if (count > 0 && !mDeleteEnabled) {
        mDeleteEnabled = true;
        SetDeleteButtonActive(true);
    }
    if (count < mRowCount && mAllChecked) {
        mTopBar->SetCheckStatus(0, true);
        mAllChecked = false;
    } else if (count >= mRowCount && !mAllChecked) {
        mTopBar->SetCheckStatus(1, true);
        mAllChecked = true;
    }
}

void VtCalendarDayViewDeleteDialog::SelectAll(uint32_t value) {
    if (value == uint32_t(kVtTopBarCheckAll)) {
        for (int i = 1; i <= mRowCount; ++i) {
            mList->CheckRowByIndex(size_t(i), true);
        }
        mAllChecked = true;
        // The flag stays as it was: with no rows the button is still made active.
        SetDeleteButtonActive(true);
    } else if (value == uint32_t(kVtTopBarClearAll)) {
        for (int i = 1; i <= mRowCount; ++i) {
            mList->UnCheckRowByIndex(size_t(i), true);
        }
        mDeleteEnabled = false;
        mAllChecked = false;
        SetDeleteButtonActive(false);
    }
}

bool VtCalendarDayViewDeleteDialog::ConfirmSeries() {
    for (int i = 1; i <= mRowCount; ++i) {
        if (!mList->IsRowIndexChecked(size_t(i))) {
            continue;
        }
        _EventRecInfo record;
        InitEventRecInfo(&record);
        if (!VtCalendarGetEvent(int(mList->GetRowByIndex(size_t(i))->GetValue()), &record) ||
            record.recurring == 0) {
            continue;
        }
        const long answer = mSeriesQuestion ? mSeriesQuestion() : kDayDeleteSeriesYes;
        if (answer == long(kDayDeleteSeriesNo)) {
            return false;
        }
        if (answer == long(kDayDeleteSeriesYes)) {
            break;
        }
    }
    return true;
}

bool VtCalendarDayViewDeleteDialog::DeleteChecked() {
    if (!ConfirmSeries()) {
        return false;
    }
    for (int i = 1; i <= mRowCount; ++i) {
        if (!mList->IsRowIndexChecked(size_t(i))) {
            continue;
        }
        const int id = int(mList->GetRowByIndex(size_t(i))->GetValue());
        APEventRec store;
        _EventRecInfo record;
        InitEventRecInfo(&record);
        store.GetEventRec(id, &record);
        store.DeleteEventRec(id);
    }
    APAlertDB_SendUpdateToDaemon();
    return true;
}

void VtCalendarDayViewDeleteDialog::AnnounceDeletion() {
    PLMessage deleted(kPLMsgControl, kDayDeleteButton, kPLWildcard, kEmptyString, kDeletedNotice);
    BroadcastMessage(&deleted);
    PLAppContext::GetInstance()->GetEventLoop().SetTarget(CurrentMainView());
    PLMessage changed(kMsgEventsChanged, kPLWildcard, kEventsChangedValue, kHomeSignature,
                      kCalendarName);
    PLPMEClient::GetInstance()->BroadcastMessage(&changed);
    PLMessage gone(kMsgEventsDeleted, kPLWildcard, kPLWildcard, kHomeSignature, kAlertSignature);
    PLPMEClient::GetInstance()->BroadcastMessage(&gone);
}

void VtCalendarDayViewDeleteDialog::GoBack() {
    mAllChecked = false;
    Close(false, true);
    PLAppContext::GetInstance()->GetEventLoop().SetTarget(CurrentMainView());
}

void VtCalendarDayViewDeleteDialog::Listen(PLMessage* message) {
    if (message == nullptr) {
        return;
    }
    const uint32_t kind = message->GetMessageID();
    const uint32_t sender = message->GetSenderID();
    if (kind == kPLMsgControl && sender == kDayDeleteButton) {
        if (DeleteChecked()) {
            AnnounceDeletion();
        }
    } else if (kind == kPLMsgControl && sender == kDayDeleteBack) {
        GoBack();
    } else if (kind == kPLMsgUp && sender == kDayDeleteTopBar) {
        SelectAll(message->GetUserMessageID());
    } else if (kind == kVtListCheckNotice || kind == kVtListFocusNotice) {
        KeepInStep();
    }
}

// The detail view: loading the event, laying out its lines, the option menu, editing, exporting
// and sharing, deleting and going back.
#include "event/VtCalendarDetailView.h"

#include <cassert>

#include "APAlertDB.h"
#include "APConfig.h"
#include "APEventAlertDB.h"
#include "APGetStr.h"
#include "PLAppContext.h"
#include "PLApplication.h"
#include "PLBitmap.h"
#include "PLDrawContext.h"
#include "PLEventLoop.h"
#include "PLMenuItem.h"
#include "PLMessage.h"
#include "VtWidgets.h"
#include "app/VtCalendarBroadcasts.h"
#include "app/VtCalendarEventStore.h"
#include "app/VtCalendarHelpers.h"
#include "day/VtCalendarDayView.h"
#include "event/VtCalendarDetailRowPane.h"
#include "event/VtCalendarDetailText.h"
#include "event/VtCalendarExport.h"
#include "event/VtCalendarShareLibrary.h"

namespace {

constexpr PLPoint kViewLocation{45, 0};
constexpr PLSize kViewSize{275, 240};
constexpr int kBarTop = 239;
constexpr int kBarWidth = 12;
constexpr int kRowsWidth = 240 - kBarWidth;
constexpr int kScrollLine = 20;

constexpr uint32_t kBarFamilyA = 30391;
constexpr uint32_t kBarFamilyB = 30401;
constexpr uint32_t kTextEdit = 12122;
constexpr uint32_t kTextShare = 12132;
constexpr uint32_t kTextDelete = 30122;
constexpr uint32_t kTextOk = 30002;
constexpr uint32_t kTextMissing = 12102;
constexpr uint32_t kBitmapSeries = 32130;
constexpr uint32_t kBitmapDelete = 32180;
constexpr uint32_t kTextChangeSeries = 11172;
constexpr uint32_t kTextDeleteSeries = 11162;
constexpr uint32_t kTextDeleteOne = 10832;

// The main views the detail view may have been opened from, in the order they are looked for.
constexpr uint32_t kMainViews[] = {11300, 11200, 11100};

constexpr uint8_t kKeyUp = 17;
constexpr uint8_t kKeyDown = 19;
constexpr uint8_t kKeyLeft = 28;
constexpr uint8_t kKeyPageUp = 30;
constexpr uint8_t kKeyPageDown = 31;

PLEventLoop& Loop() {
    return PLAppContext::GetInstance()->GetEventLoop();
}

}  // namespace

VtCalendarDetailView::VtCalendarDetailView(uint32_t id) : PLView(id, kViewLocation, kViewSize) {
    const uint32_t entries[][2] = {{kTextEdit, kDetailMenuEdit},
                                   {kTextShare, kDetailMenuShare},
                                   {kTextDelete, kDetailMenuDelete}};
    mOptionsMenu.reset(MakeVtMenu(kEmptyString, kDetailOptionsMenu, 6, nullptr));
    for (const auto& [label, entry] : entries) {
        mOptionsMenu->AddMenuItem(new PLMenuItem(APGetStr(label), entry));
    }
    mRows = MakeVtScrollContainer(kDetailRows, PLPoint(0, 0), PLSize(kBarTop, 240), true, false,
                                  kBarWidth, false, PLRect(0, 0, 0, 0), nullptr, false);
    AddSubPane(mRows, false);
    BuildBar();
}

VtCalendarDetailView::~VtCalendarDetailView() {
    VtCalendarShareLibrary::Unload();
}

VtCalendarDetailView* VtCalendarDetailView::Make(uint32_t id, int32_t eventID) {
    assert(id == kDetailViewID && "the detail view is known to its callers as 12100");
    auto* view = new VtCalendarDetailView(id);
    view->LoadEvent(eventID);
    return view;
}

void VtCalendarDetailView::BuildBar() {
    PLAppContext* context = PLAppContext::GetInstance();
    context->GetResource(kPLResBitmapFamily, kBarFamilyA, kPLWildcard);
    context->GetResource(kPLResBitmapFamily, kBarFamilyB, kPLWildcard);
    VtPopupButton* options =
        MakeCSTMenuPopupButton(kDetailOptionsMenu, PLPoint(kBarTop, 0), mOptionsMenu.get(), 1,
                               false, false, false, nullptr);
    options->AddListener(this);
    AddSubPane(options, false);
    mEditButton = MakeBmpBarButton(kDetailEditNotice, PLPoint(kBarTop, 43), PLSize(36, 154),
                                   nullptr, APGetStr(kTextEdit), 1, false, false, nullptr);
    mEditButton->AddListener(this);
    AddSubPane(mEditButton, false);
    VtButton* back = MakeCSTBackButton(kDetailBack, PLPoint(kBarTop, 197));
    back->AddListener(this);
    AddSubPane(back, false);
}

void VtCalendarDetailView::LoadEvent(int32_t eventID) {
    mEventID = eventID;
    InitEventRecInfo(&mRecord);
    mAlert = _EventAlertInfo{};
    mLoaded = eventID > 0 && VtCalendarGetEvent(eventID, &mRecord);
    if (mLoaded && mRecord.alertInfoId > 0) {
        // A missing alert record leaves the alarm switched off, which is how it rings.
        APEventAlertDB().GetEventAlertInfo(mRecord.alertInfoId, &mAlert);
    }
    Rebuild();
}

void VtCalendarDetailView::Rebuild() {
    while (!mRows->GetContentPane()->GetSubPanes().empty()) {
        PLPane* row = mRows->GetContentPane()->GetSubPanes().back();
        mRows->RemoveSubPane(row);
        delete row;
    }
    for (uint32_t entry : {kDetailMenuEdit, kDetailMenuShare, kDetailMenuDelete}) {
        mOptionsMenu->EnableItem(entry, mLoaded);
    }
    mEditButton->SetEnabled(mLoaded, false);
    if (!mLoaded) {
        mRows->AddSubPane(
            MakeStaticText(kDetailMissing, PLPoint(8, 8), PLSize(60, kRowsWidth - 16),
                           APGetStr(kTextMissing), 1, true, 0, PLRGBColor(-1, false), nullptr),
            false);
    } else {
        const VtCalendarDetailText text(mRecord, mAlert.id > 0 ? &mAlert : nullptr,
                                        VtCalendarDetailFormats::FromSettings());
        int top = 0;
        for (const VtCalendarDetailRow& row : text.Rows()) {
            auto* pane = new VtCalendarDetailRowPane(row, top, kRowsWidth);
            top += pane->GetSize().v;
            mRows->AddSubPane(pane, false);
        }
    }
    mRows->ScrollTo(0, false, false);
    mRows->Layout();
    Redraw();
}

void VtCalendarDetailView::AttachedToParent() {
    PLPane* parent = GetParent();
    if (parent == nullptr) {
        return;
    }
    // Whether the caller shows it on the root view or inside its own view, the view covers the
    // screen below the status area.
    const PLRect frame = parent->GetScreenRect();
    const PLPoint scroll = parent->GetScrollOffset();
    SetLocation(
        PLPoint(kViewLocation.v - frame.top + scroll.v, kViewLocation.h - frame.left + scroll.h),
        false);
    LoadEvent(mEventID);
    Loop().SetTarget(this);
}

void VtCalendarDetailView::Listen(PLMessage* message) {
    if (message == nullptr) {
        return;
    }
    const uint32_t kind = message->GetMessageID();
    const uint32_t sender = message->GetSenderID();
    if (kind == kPLMsgSelect && sender == kDetailOptionsMenu) {
        OnMenu(mOptionsMenu->GetSelectedItemID());
    } else if (kind == kPLMsgControl && sender == kDetailEditNotice) {
        Edit();
    } else if (kind == kPLMsgControl && sender == kDetailBack) {
        Back();
    }
}

void VtCalendarDetailView::OnMenu(uint32_t entry) {
    switch (entry) {
        case kDetailMenuEdit:
            Edit();
            break;
        case kDetailMenuShare:
            ExportAndShare();
            break;
        case kDetailMenuDelete:
            Delete();
            break;
        default:
            break;
    }
}

bool VtCalendarDetailView::Ask(uint32_t bitmapID, uint32_t textID, uint32_t yesID,
                               uint32_t yesLabel, uint32_t noID) {
    const bool yes = AskCalendarQuestion(bitmapID, kEmptyString, APGetStr(textID), yesID, yesLabel,
                                         noID) == long(yesID);
    Loop().SetTarget(this);
    return yes;
}

void VtCalendarDetailView::Notify(uint32_t command) {
    // The value names the event, so that the listener knows which one to edit or drop.
    PLMessage notice(kPLMsgControl, command, uint32_t(mEventID), kEmptyString, kEmptyString);
    BroadcastMessage(&notice);
}

void VtCalendarDetailView::Edit() {
    if (!mLoaded) {
        return;
    }
    if (mRecord.recurring != 0 &&
        !Ask(kBitmapSeries, kTextChangeSeries, kDetailEditYes, kTextOk, kDetailEditNo)) {
        return;
    }
    Notify(kDetailEditNotice);
}

PLBasicString<char> VtCalendarDetailView::ExportAndShare() {
    if (!mLoaded) {
        return {};
    }
    const PLBasicString<char> path = VtCalendarExportEvent(uint32_t(mEventID), mRecord);
    VtCalendarShareLibrary::ShareFile(path);
    Loop().SetTarget(this);
    Redraw();
    return path;
}

void VtCalendarDetailView::Delete() {
    if (!mLoaded) {
        return;
    }
    const bool series = mRecord.recurring != 0;
    if (!Ask(series ? kBitmapSeries : kBitmapDelete, series ? kTextDeleteSeries : kTextDeleteOne,
             kDetailDeleteYes, kTextDelete, kDetailDeleteNo)) {
        return;
    }
    DeleteEvent(mRecord);
    APAlertDB_SendUpdateToDaemon();
    Notify(kDetailDeleted);
    PLPane* current = CurrentView(GetParent());
    Close(true, true);
    if (current != nullptr) {
        Loop().SetTarget(current);
    }
    VtCalendarBroadcastEventsChanged();
    VtCalendarBroadcastEventsDeleted();
}

PLPane* VtCalendarDetailView::CurrentView(PLPane* formerParent) const {
    PLApplication* application = PLAppContext::GetInstance()->GetApplication();
    PLPane* root = application != nullptr ? application->GetRootView() : nullptr;
    for (uint32_t id : kMainViews) {
        PLPane* view = root != nullptr ? root->FindPane(id) : nullptr;
        if (view != nullptr && view != this) {
            return view;
        }
    }
    return formerParent;
}

void VtCalendarDetailView::Back() {
    PLPane* current = CurrentView(GetParent());
    const bool allDay = mLoaded && mRecord.allDay != 0;
    Close(false, true);
    if (current != nullptr) {
        long startHour = 0;
        auto* day = dynamic_cast<VtCalendarDayView*>(current);
        // An all-day event has no hour of its own: the day goes back to where the day starts.
        if (allDay && day != nullptr &&
            (APConfigCalendar_GetStartDayTime(&startHour) & 0xFF) != 0) {
            day->SetSelectHour(int(startHour));
            day->Rebuild();
        }
        Loop().SetTarget(current);
        current->Redraw();
    }
    Notify(kDetailBack);
}

bool VtCalendarDetailView::DoKeyCommand(char key, short, PLKeyModifiers) {
    const long page = mRows->GetVisibleHeight();
    switch (uint8_t(key)) {
        case kKeyUp:
            mRows->ScrollTo(mRows->GetScrollPosition() - kScrollLine, false);
            return true;
        case kKeyDown:
            mRows->ScrollTo(mRows->GetScrollPosition() + kScrollLine, false);
            return true;
        case kKeyPageUp:
            mRows->ScrollTo(mRows->GetScrollPosition() - page, false);
            return true;
        case kKeyPageDown:
            mRows->ScrollTo(mRows->GetScrollPosition() + page, false);
            return true;
        case kKeyLeft:
            Back();
            return true;
        default:
            return false;
    }
}

void VtCalendarDetailView::Draw(PLDrawContext& context) {
    context.FillRect(GetBounds(), VtTheme::Current().GetBackgroundColor());
}

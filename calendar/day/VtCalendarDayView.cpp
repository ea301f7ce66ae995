// The day view: loading the day, building and placing the rows, scrolling, keys, menus and the
// sub-screens it shows over itself.
#include "day/VtCalendarDayView.h"

#include <algorithm>
#include <cassert>

#include "APConfig.h"
#include "APLunar.h"
#include "PLAppContext.h"
#include "PLApplication.h"
#include "PLBitmap.h"
#include "PLDrawContext.h"
#include "PLEventLoop.h"
#include "PLMessage.h"
#include "PLTimeStamp.h"
#include "VtWidgets.h"
#include "app/VtCalendarEventStore.h"
#include "app/VtCalendarHelpers.h"
#include "app/VtCalendarMainViewBar.h"
#include "day/VtCalendarDayViewDeleteDialog.h"
#include "day/VtCalendarDayViewItem.h"
#include "event/VtCalendarDetailView.h"
#include "event/VtCalendarNewEventView.h"

namespace {

constexpr uint32_t kOptionsButtonID = 11810;
constexpr uint32_t kOptionsMenuID = 11820;
constexpr uint32_t kOptionGoToDate = 11812;
constexpr uint32_t kHeaderTitleTapped = 3;
constexpr uint32_t kEventDeleted = 12106;
constexpr uint32_t kDialogDeleted = 12203;
constexpr uint32_t kDetailEdit = 12101;
constexpr uint32_t kLunarStripID = 10340;
constexpr uint32_t kIconAID = 10130;
constexpr uint32_t kIconBID = 10240;
constexpr int kScrollBarWidth = 20;
constexpr int kScrollStep = 30;
// Moving down scrolls once the row's top passes this far below the offset, whatever the header
// and lunar rows take from the list.
constexpr int kKeyScrollLimit = 210;
constexpr int kWrapRowsFromEnd = 7;
constexpr PLRGBColor kBlack{0, 0, 0};

// The two names carried by the new-event request; the application reads only the kind.
const PLBasicString<char> kNewEventRecipient("calendar");
const PLBasicString<char> kNewEventSender("dayview");

// Whether a node belongs in a header row: all day, or its first and last day differ.
bool IsHeaderNode(const APDayEventNode& node) {
    return node.allDay != 0 || node.firstDay.dayNumber != node.lastDay.dayNumber;
}

PLListener* Application() {
    return PLAppContext::GetInstance()->GetApplication();
}

}  // namespace

VtCalendarDayView::VtCalendarDayView(uint32_t id, PLDate* selectDate, PLTime* selectTime,
                                     bool showLunar)
    : PLView(id, PLPoint(45, 0), PLSize(275, 240)),
      mShowLunar(showLunar),
      mSelectDate(selectDate),
      mSelectTime(selectTime) {
    assert(selectDate != nullptr && "the day view shows the shared selected date");
    SetBroadcaster(new PLBroadcaster, true);
    SetComponentListener(nullptr, true, false);
    mShownDate = *selectDate;
    mLunarStripBitmap = CalendarBitmap(kLunarStripID);
    mIconBitmapA = CalendarBitmap(kIconAID);
    mIconBitmapB = CalendarBitmap(kIconBID);
    const uint32_t options[][2] = {
        {10002, 11811}, {10012, kOptionGoToDate}, {30122, kDayOptionDeleteEvents}, {30262, 11816}};
    mOptionsMenu.reset(VtCalendarMakeMenu(kOptionsMenuID, options, 4));
    const uint32_t views[][2] = {{10032, 11821}, {10042, 11822}, {10052, 11823}};
    mViewMenu.reset(VtCalendarMakeMenu(kDayViewMenu, views, 3));
    mScrollContainer =
        MakeVtScrollContainer(kDayScrollContainer, PLPoint(0, 0), PLSize(0, 0), true, false,
                              kScrollBarWidth, true, PLRect(1, 1, 1, 1), nullptr, false);
    mScrollContainer->GetScrollBar()->SetStep(kScrollStep, 1);
    RebuildRows();
}

VtCalendarDayView::~VtCalendarDayView() {
    FreeDayEvents();
    if (mEditView != nullptr && mEditView->GetParent() == nullptr) {
        delete mEditView;
    }
    if (mDeleteDialog != nullptr && mDeleteDialog->GetParent() == nullptr) {
        delete mDeleteDialog;
    }
    if (mDetailView != nullptr && mDetailView->GetParent() == nullptr) {
        delete mDetailView;
    }
    // The rows go with the container, a sub-pane.
    mItems.clear();
}

VtCalendarDayView* VtCalendarDayView::Make(uint32_t id, PLDate* selectDate, PLTime* selectTime,
                                           bool showLunar, PLListener* application) {
    auto* view = new VtCalendarDayView(id, selectDate, selectTime, showLunar);
    PLAppContext* context = PLAppContext::GetInstance();
    context->GetResource(kPLResBitmapFamily, 30391, kPLWildcard);
    context->GetResource(kPLResBitmapFamily, 30401, kPLWildcard);
    VtCalendarAddBottomBar(view, {kDayViewSwitchButton, kDayExitButton, 10052},
                           view->mOptionsMenu.get(), view->mViewMenu.get(), application);
    VtCalendarYearSelectControl* header =
        MakeCalendarYearSelectControl(kDayDateHeader, kVtHeaderDay, selectDate, nullptr, false);
    header->AddListener(view);
    view->AddSubPane(header, false);
    return view;
}

// ------------------------------------------------------------------------ loading and rows

void VtCalendarDayView::FreeDayEvents() {
    VtCalendarFreeNodes(mDayEvents);
}

void VtCalendarDayView::LoadDay() {
    FreeDayEvents();
    const long start = PLDate2TimeStamp(mSelectDate, nullptr);
    const PLTime last(23, 59, 59);
    const long end = PLDate2TimeStamp(mSelectDate, &last);
    mDayEvents = VtCalendarQueryDay(start, end);
    mOptionsMenu->EnableItem(kDayOptionDeleteEvents, mDayEvents != nullptr);
}

void VtCalendarDayView::Reload(int) {
    mShownDate = *mSelectDate;
    RebuildRows();
    HandleDraw(nullptr, nullptr, nullptr, nullptr);
}

void VtCalendarDayView::RebuildRows() {
    for (uint32_t id = kDayHeaderRowFirstID; id < kDayHeaderRowFirstID + kDayMaxHeaderRows; ++id) {
        PLPane* header = FindPane(id);
        if (header != nullptr && header->GetParent() != nullptr) {
            header->GetParent()->RemoveSubPane(header);
            delete header;
        }
    }
    SuppressDrawing();
    RemoveRows();
    BuildRows();
    RemoveDrawingSuppression();
}

void VtCalendarDayView::RemoveRows() {
    for (VtCalendarDayViewItem* item : mItems) {
        if (item->GetParent() != nullptr) {
            mScrollContainer->RemoveSubPane(item);
        }
    }
    ScrollTo(0);
    for (VtCalendarDayViewItem* item : mItems) {
        delete item;
    }
    mItems.clear();
    mSelectedItem = nullptr;
    mContentHeight = kDayHours * kDayRowHeight;
}

void VtCalendarDayView::BuildRows() {
    long lunar = 0;
    APConfigCalendar_GetLunarCalendar(&lunar);
    mShowLunar = lunar != 0;
    long format = kAPTimeFormat12;
    if ((APConfigSystem_GetTimeFormat(&format) & 0xFF) != 0) {
        mTimeFormat = format;
    }
    LoadDay();
    const int headers = AddHeaderRows();
    AddSubPane(mScrollContainer, false);
    AddHourRows();
    PlaceTimedEvents();
    LayoutContainer(headers);
    mSelectedItem = HourRow(mSelectTime != nullptr ? mSelectTime->GetHour() : 0);
    if (mSelectedItem != nullptr) {
        mSelectedItem->SetSelected(true);
    }
    Rebuild();
}

int VtCalendarDayView::AddHeaderRows() {
    const int top = mShowLunar ? kDayListTop + kDayLunarRowHeight : kDayListTop;
    int count = 0;
    for (const APDayEventNode* node = mDayEvents; node != nullptr && count < kDayMaxHeaderRows;
         node = node->next) {
        if (!IsHeaderNode(*node)) {
            continue;
        }
        auto* row = new VtCalendarDayViewItem(node, 0, 0, this, false, true,
                                              kDayHeaderRowFirstID + uint32_t(count));
        row->SetLocation(PLPoint(top + kDayRowHeight * count, 0), false);
        row->SetSize(PLSize(kDayRowHeight, kDayHeaderRowWidth), false);
        AddSubPane(row, false);
        ++count;
    }
    return count;
}

void VtCalendarDayView::AddHourRows() {
    for (int hour = 0; hour < kDayHours; ++hour) {
        auto* row = new VtCalendarDayViewItem(nullptr, hour, kDayHourLabelFirstCommand + hour, this,
                                              false, false, kDayHourRowFirstID + uint32_t(hour));
        mItems.push_back(row);
        row->SetLocation(PLPoint(kDayRowHeight * hour, 0), false);
        row->SetSize(PLSize(kDayRowHeight, kDayRowWidth), false);
        mScrollContainer->AddSubPane(row, false);
    }
}

void VtCalendarDayView::PlaceTimedEvents() {
    for (const APDayEventNode* node = mDayEvents; node != nullptr; node = node->next) {
        if (IsHeaderNode(*node)) {
            continue;
        }
        auto first = std::find_if(mItems.begin(), mItems.end(),
                                  [node](auto* row) { return row->GetHour() == node->startHour; });
        if (first == mItems.end()) {
            continue;  // an hour that no row shows
        }
        if ((*first)->GetEvent() == nullptr) {
            (*first)->SetEvent(node);
        } else {
            InsertExtraRow(*node);
        }
    }
}

void VtCalendarDayView::InsertExtraRow(const APDayEventNode& node) {
    const int hour = node.startHour;
    auto place = std::find_if(mItems.begin(), mItems.end(),
                              [hour](auto* row) { return row->GetHour() > hour; });
    const int top =
        place != mItems.end() ? (*place)->GetLocation().v : kDayRowHeight * int(mItems.size());
    auto* row = new VtCalendarDayViewItem(&node, hour, kDayExtraRowFirstCommand + uint32_t(hour),
                                          this, true, false, kDayExtraRowID);
    mContentHeight += kDayRowHeight;
    place = mItems.insert(place, row);
    row->SetLocation(PLPoint(top, 0), false);
    row->SetSize(PLSize(kDayRowHeight, kDayRowWidth), false);
    mScrollContainer->AddSubPane(row, false);
    for (auto later = place + 1; later != mItems.end(); ++later) {
        const PLPoint at = (*later)->GetLocation();
        (*later)->SetLocation(PLPoint(at.v + kDayRowHeight, at.h), false);
    }
}

void VtCalendarDayView::LayoutContainer(int headerRows) {
    const int lunar = mShowLunar ? kDayLunarRowHeight : 0;
    const int top = kDayListTop + lunar + kDayRowHeight * headerRows;
    const int height = kDayListHeight - lunar - kDayRowHeight * headerRows;
    mScrollContainer->SetLocation(PLPoint(top, 0), true);
    mScrollContainer->SetSize(PLSize(height, kDayHeaderRowWidth), true);
    mScrollContainer->GetScrollBar()->SetPage(height);
}

VtCalendarDayViewItem* VtCalendarDayView::HourRow(int hour) {
    return dynamic_cast<VtCalendarDayViewItem*>(FindPane(kDayHourRowFirstID + uint32_t(hour)));
}

// ------------------------------------------------------------------- scrolling and selection

long VtCalendarDayView::GetScrollOffset() const {
    return mScrollContainer->GetContentPane()->GetScrollOffset().v;
}

void VtCalendarDayView::ScrollTo(int offset) {
    PLScrollerMessage scroll(GetID(), PLPoint(offset, 0), 0);
    mScrollContainer->GetContentPane()->Listen(&scroll);
}

void VtCalendarDayView::Rebuild() {
    if (mSelectTime == nullptr) {
        return;
    }
    VtCalendarDayViewItem* row = HourRow(mSelectTime->GetHour());
    if (row == nullptr) {
        return;
    }
    const int top = row->GetLocation().v;
    const int visible = int(mScrollContainer->GetVisibleHeight());
    ScrollTo(mContentHeight - top < visible ? mContentHeight - visible : top);
}

void VtCalendarDayView::SetSelectHour(int hour) {
    if (mSelectTime != nullptr) {
        mSelectTime->SetHour(hour);
    }
}

void VtCalendarDayView::ClearSelection() {
    for (VtCalendarDayViewItem* item : mItems) {
        if (item->IsSelected()) {
            item->SetSelected(false);
        }
    }
}

void VtCalendarDayView::SelectByTap(uint32_t id, int hour) {
    mSelectedItem = dynamic_cast<VtCalendarDayViewItem*>(FindPane(id));
    SetSelectHour(hour);
    if (id == kPLWildcard) {
        PLMessage ask(kPLMsgUp, GetID(), kPLWildcard, kNewEventRecipient, kNewEventSender);
        BroadcastMessage(&ask);
    }
}

void VtCalendarDayView::ShowDetailView(int32_t id) {
    if (mDetailView == nullptr) {
        mDetailView = VtCalendarDetailView::Make(kDetailViewID, id);
        mDetailView->AddListener(this);
    }
    mDetailView->LoadEvent(id);
    // The detail view covers this view: its place is this view's own top-left.
    mDetailView->SetLocation(PLPoint(0, 0), false);
    AddSubPane(mDetailView);
    // This view gives up the keys; the detail view may have taken them already when it was
    // attached, and keeps them then.
    PLEventLoop& loop = PLAppContext::GetInstance()->GetEventLoop();
    if (loop.GetTarget() != mDetailView) {
        loop.SetTarget(nullptr);
    }
}

void VtCalendarDayView::Highlight(VtCalendarDayViewItem* item) {
    item->SetSelected(true);
    mSelectedItem = item;
    SetSelectHour(item->GetHour());
}

void VtCalendarDayView::SelectPrevious() {
    auto at = std::find(mItems.begin(), mItems.end(), mSelectedItem);
    if (mSelectedItem == nullptr || at == mItems.end()) {
        return;
    }
    mSelectedItem->SetSelected(false);
    if (at == mItems.begin()) {
        Highlight(mItems.back());
        const size_t index =
            mItems.size() > kWrapRowsFromEnd ? mItems.size() - kWrapRowsFromEnd : 0;
        ScrollTo(mItems[index]->GetLocation().v);
        Redraw();
        return;
    }
    VtCalendarDayViewItem* row = *(at - 1);
    Highlight(row);
    const int top = row->GetLocation().v;
    if (top > GetScrollOffset()) {
        return;
    }
    ScrollTo(top);
    Redraw();
}

void VtCalendarDayView::SelectNext() {
    auto at = std::find(mItems.begin(), mItems.end(), mSelectedItem);
    if (mSelectedItem == nullptr || at == mItems.end()) {
        return;
    }
    mSelectedItem->SetSelected(false);
    if (at + 1 == mItems.end()) {
        Highlight(mItems.front());
        ScrollTo(mItems.front()->GetLocation().v);
        Redraw();
        return;
    }
    VtCalendarDayViewItem* row = *(at + 1);
    Highlight(row);
    const long offset = GetScrollOffset();
    if (row->GetLocation().v < offset + kKeyScrollLimit) {
        return;
    }
    ScrollTo(int(offset) + kScrollStep);
    Redraw();
}

bool VtCalendarDayView::DoKeyCommand(char key, short, PLKeyModifiers) {
    switch (uint8_t(key)) {
        case kPLKeyUp:
        case kPLKeyLeft:
        case kPLKeyPageUp:
            SelectPrevious();
            return true;
        case kPLKeyOk:
            if (mSelectedItem != nullptr) {
                mSelectedItem->MouseUp(kNullPoint, kPLPen);
            }
            return true;
        case kPLKeyDown:
        case kPLKeyRight:
        case kPLKeyPageDown:
            SelectNext();
            return true;
        default:
            return false;
    }
}

// ---------------------------------------------------------------------------------- painting

void VtCalendarDayView::Draw(PLDrawContext& context) {
    if (!mShowLunar) {
        return;
    }
    if (mLunarStripBitmap != nullptr) {
        for (int x = 0; x < GetSize().h; ++x) {
            context.DrawBitmap(*mLunarStripBitmap, PLPoint(kDayListTop, x));
        }
    }
    DATES solar;
    solar.year = mShownDate.year;
    solar.month = mShownDate.month;
    solar.day = mShownDate.day;
    DATES lunar;
    if (new2lunar(solar, &lunar) <= 0) {
        return;
    }
    const std::string text = std::to_string(lunar.month) + "-" + std::to_string(lunar.day);
    context.SetTextColor(kBlack);
    context.DrawString(text,
                       PLRect(kDayListTop, 0, kDayListTop + kDayLunarRowHeight - 1, GetSize().h),
                       kNullPoint, 0, true, kPLJustifyCenter);
}

// ---------------------------------------------------------------------------------- messages

void VtCalendarDayView::Listen(PLMessage* message) {
    if (message == nullptr) {
        return;
    }
    const uint32_t sender = message->GetSenderID();
    switch (message->GetMessageID()) {
        case kPLMsgUp:
            if (sender == kDayDateHeader) {
                OnHeader(message->GetUserMessageID());
            }
            break;
        case kPLMsgControl:
            OnControl(sender, message->GetUserMessageID());
            break;
        case kPLMsgSelect:
            if (sender == kOptionsButtonID) {
                OnOptions();
            }
            break;
        default:
            break;
    }
}

void VtCalendarDayView::OnHeader(uint32_t value) {
    if (value == kHeaderTitleTapped) {
        GoToDate();
        return;
    }
    long hour = 0;
    if ((APConfigCalendar_GetStartDayTime(&hour) & 0xFF) != 0) {
        SetSelectHour(int(hour));
    }
    Reload(0);
    TakeKeys();
}

void VtCalendarDayView::GoToDate() {
    if (ShowDateDialog(*mSelectDate) == 1) {
        Reload(0);
    }
    TakeKeys();
}

void VtCalendarDayView::OnControl(uint32_t sender, uint32_t value) {
    switch (sender) {
        case kDetailEdit:
            OpenEditForm(int32_t(value));
            break;
        case kEventDeleted:
        case kDialogDeleted:
            if (sender == kEventDeleted) {
                // The detail view closes and destroys itself after this notice.
                mDetailView = nullptr;
            }
            if (PLPane* dialog = FindPane(kDayDeleteDialogID)) {
                RemoveSubPane(dialog);
            }
            AfterChange();
            if (sender == kEventDeleted) {
                // The detail view told only this view: the application, which listens here,
                // reloads the other main views.
                PLMessage deleted(kPLMsgControl, kEventDeleted, value, kEmptyString, kEmptyString);
                BroadcastMessage(&deleted);
            }
            break;
        case kDayEditDone:
            if (PLPane* detail = FindPane(kDetailViewID)) {
                detail->Close(false, true);
            }
            if (mEditView != nullptr) {
                mEditView->Close(false, true);
            }
            AfterChange();
            break;
        default:
            break;
    }
}

void VtCalendarDayView::AfterChange() {
    RebuildRows();
    TakeKeys();
    Redraw();
}

void VtCalendarDayView::OpenEditForm(int32_t eventID) {
    // The notice may carry the wildcard instead of an id: the detail view knows its event.
    auto* detail = dynamic_cast<VtCalendarDetailView*>(FindPane(kDetailViewID));
    if (detail != nullptr) {
        RemoveSubPane(detail);
    }
    if (!mEventRec) {
        mEventRec = std::make_unique<_EventRecInfo>();
    }
    InitEventRecInfo(mEventRec.get());
    if (!VtCalendarGetEvent(eventID, mEventRec.get()) && detail != nullptr) {
        VtCalendarGetEvent(detail->GetEventID(), mEventRec.get());
    }
    if (mEditView == nullptr) {
        mEditView = VtCalendarNewEventView::Make(kDayEditViewID, mSelectDate, mSelectTime, this);
    }
    mEditView->Prepare(mEventRec.get());
    mEditView->AddListener(this);
    // The form covers this view: its place is this view's own top-left.
    mEditView->SetLocation(PLPoint(0, 0), false);
    AddSubPane(mEditView);
}

void VtCalendarDayView::OnOptions() {
    const uint32_t chosen = mOptionsMenu->GetSelectedItemID();
    if (chosen == kOptionGoToDate) {
        GoToDate();
    } else if (chosen == kDayOptionDeleteEvents) {
        OpenDeleteDialog();
    }
}

void VtCalendarDayView::OpenDeleteDialog() {
    if (mDeleteDialog == nullptr) {
        mDeleteDialog = VtCalendarDayViewDeleteDialog::Make(kDayDeleteDialogID, mDayEvents);
    }
    mDeleteDialog->Fill(mDayEvents);
    mDeleteDialog->AddListener(this);
    mDeleteDialog->AddListener(Application());
    AddSubPane(mDeleteDialog);
    PLAppContext::GetInstance()->GetEventLoop().SetTarget(mDeleteDialog->GetList());
    Redraw();
}

void VtCalendarDayView::TakeKeys() {
    PLAppContext::GetInstance()->GetEventLoop().SetTarget(this);
}

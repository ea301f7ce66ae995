// The week view: header buttons, the all-day strip, the scrolled hour table, menus and messages.
#include "week/VtCalendarWeekView.h"

#include <cassert>

#include "APAlertDB.h"
#include "APConfig.h"
#include "APGetStr.h"
#include "PLAppContext.h"
#include "PLDrawContext.h"
#include "PLEventLoop.h"
#include "PLMessage.h"
#include "PLTheme.h"
#include "PLTimeStamp.h"
#include "VtWidgets.h"
#include "app/VtCalendarBroadcasts.h"
#include "app/VtCalendarEventStore.h"
#include "app/VtCalendarHelpers.h"
#include "app/VtCalendarMainViewBar.h"
#include "event/VtCalendarColours.h"
#include "week/VtCalendarWeekViewHourTable.h"

namespace {

constexpr PLPoint kViewLocation{45, 0};
constexpr PLSize kViewSize{275, 240};

constexpr uint32_t kColumnStripA = 10310;  // day numbers, pressed
constexpr uint32_t kColumnStripB = 10320;  // day numbers
constexpr uint32_t kNameStripA = 10290;    // weekday names, pressed
constexpr uint32_t kNameStripB = 10300;    // weekday names
constexpr int kCellWidth = 26;
constexpr int kColumnHeight = 21;
constexpr int kNameHeight = 24;
constexpr int kNameTop = 29;
constexpr int kNumberTop = 53;
constexpr int kFirstColumnLeft = 37;
constexpr int kLastColumnRight = 219;
constexpr PLRect kStripArea{74, 0, 84, 240};
constexpr PLPoint kContainerLocation{84, 0};
constexpr PLSize kContainerSize{155, 240};

constexpr uint32_t kOptionsButton = 11810;
constexpr uint32_t kOptionsMenu = 11820;
constexpr uint32_t kOptionNewEvent = 11811;
constexpr uint32_t kOptionGoToDate = 11812;
constexpr uint32_t kOptionDeleteAll = 11815;
constexpr uint32_t kOptionSettings = 11816;
constexpr uint32_t kEventDeletedElsewhere = 12203;
constexpr long kHeaderTitleTapped = 3;

constexpr uint32_t kDeleteAllIcon = 32180;
constexpr uint32_t kDeleteAllText = 10852;
constexpr uint32_t kDeleteSeriesYes = 12206;
constexpr uint32_t kDeleteSeriesNo = 12207;
constexpr uint32_t kDeleteSeriesIcon = 32130;
constexpr uint32_t kDeleteSeriesText = 11162;
constexpr uint32_t kTextOk = 30002;

// Weekday names by weekday 1 (Sunday) .. 7 (Saturday).
constexpr uint32_t kWeekdayLabels[8] = {0, 30592, 30532, 30542, 30552, 30562, 30572, 30582};

constexpr PLRGBColor kWhite{255, 255, 255};
constexpr PLRGBColor kTodayBlue{0, 102, 255};
constexpr PLRGBColor kWeekendRed{204, 0, 0};

// A copy of a one-pixel strip, its single column repeated across a button's width.
PLBitmap* Widen(const PLBitmap* strip, int height) {
    auto* wide = new PLBitmap(kCellWidth, height);
    if (strip != nullptr) {
        for (int x = 0; x < kCellWidth; ++x) {
            wide->CopyPixels(*strip, PLRect(0, 0, height, 1), PLRect(0, x, height, x + 1));
        }
    }
    return wide;
}

// The family of a pair of strips: the second is every state's picture, the first the pressed one.
std::unique_ptr<PLBitmapFamily> MakeFamily(const PLBitmap* pressed, const PLBitmap* normal,
                                           int height) {
    auto family = std::make_unique<PLBitmapFamily>(kPLWildcard, true);
    family->SetAllBitmaps(Widen(normal, height));
    family->SetBitmap(kPLBitmapPressed, Widen(pressed, height));
    return family;
}

// Asks a two-button question, its text in the dialog's title; returns the closing button's id.
long AskQuestion(uint32_t iconID, uint32_t textID, uint32_t yesID, uint32_t noID) {
    return AskCalendarQuestion(iconID, APGetStr(textID), kEmptyString, yesID, kTextOk, noID);
}

}  // namespace

VtCalendarWeekView::VtCalendarWeekView(uint32_t id, PLDate* selectDate)
    : PLView(id, kViewLocation, kViewSize), mSelectDate(selectDate) {
    assert(selectDate != nullptr && "the week view shows the shared selected date");
    mShownDate = *selectDate;
    MakeBitmapFamilies();
    MakeHeaderButtons();
    MakeHourTable();
    BuildMenus();
    Refresh();
}

VtCalendarWeekView::~VtCalendarWeekView() {
    VtCalendarFreeNodes(mWeekEvents);
    // The buttons paint with the families: let them go first.
    for (VtButton* button : mDayButtons) {
        RemoveSubPane(button);
        delete button;
    }
    for (VtButton* button : mNameButtons) {
        RemoveSubPane(button);
        delete button;
    }
}

VtCalendarWeekView* VtCalendarWeekView::Make(uint32_t id, PLDate* selectDate,
                                             PLListener* application) {
    auto* view = new VtCalendarWeekView(id, selectDate);
    VtCalendarAddBottomBar(view, {kWeekViewSwitchButton, kWeekExitButton, 10042},
                           view->mOptionsMenu.get(), view->mViewMenu.get(), application);
    VtCalendarYearSelectControl* header =
        MakeCalendarYearSelectControl(kWeekDateHeader, kVtHeaderDay, selectDate, nullptr, false);
    header->AddListener(view);
    view->AddSubPane(header, false);
    if (application != nullptr) {
        view->mHourTable->AddListener(application);
    }
    return view;
}

// ------------------------------------------------------------------------------ construction

void VtCalendarWeekView::MakeBitmapFamilies() {
    mColumnBitmapA = CalendarBitmap(kColumnStripA);
    mColumnBitmapB = CalendarBitmap(kColumnStripB);
    mNameBitmapA = CalendarBitmap(kNameStripA);
    mNameBitmapB = CalendarBitmap(kNameStripB);
    mDayFamily = MakeFamily(mColumnBitmapA, mColumnBitmapB, kColumnHeight);
    mNameFamily = MakeFamily(mNameBitmapA, mNameBitmapB, kNameHeight);
}

void VtCalendarWeekView::MakeHeaderButtons() {
    for (int i = 0; i < kWeekDays; ++i) {
        const int left = kFirstColumnLeft + kCellWidth * i;
        VtButton* day =
            MakeBmpViewButton(kWeekDayButton + uint32_t(i), PLPoint(kNumberTop, left),
                              mDayFamily.get(), kEmptyString, kVtButtonPush, false, false, nullptr);
        day->SetTextColor(kWhite, false);
        day->AddListener(this);
        AddSubPane(day, false);
        mDayButtons[size_t(i)] = day;

        VtButton* name = MakeBmpViewButton(kWeekNameButton + uint32_t(i), PLPoint(kNameTop, left),
                                           mNameFamily.get(), APGetStr(30522 + 10 * uint32_t(i)),
                                           kVtButtonPush, false, false, nullptr);
        name->SetTextColor(kWhite, false);
        name->AddListener(this);
        AddSubPane(name, false);
        mNameButtons[size_t(i)] = name;
    }
}

void VtCalendarWeekView::MakeHourTable() {
    mScrollContainer =
        MakeVtScrollContainer(kWeekScrollContainer, kContainerLocation, kContainerSize, true, false,
                              20, true, PLRect(1, 1, 1, 1), nullptr, false);
    const long visible = mScrollContainer->GetVisibleHeight();
    mScrollContainer->GetScrollBar()->SetStep(kHourRowHeight);
    mScrollContainer->GetScrollBar()->SetPage(visible);
    AddSubPane(mScrollContainer, false);

    mHourTable = VtCalendarWeekViewHourTable::Make(mSelectDate, PLPoint(0, 0),
                                                   PLSize(kHourTableHeight, 240), kWeekHourTable);
    mScrollContainer->AddSubPane(mHourTable, false);
    mScrollContainer->SetScrollRange(kHourTableHeight - visible);
}

void VtCalendarWeekView::BuildMenus() {
    const uint32_t options[][2] = {{10002, kOptionNewEvent},
                                   {10012, kOptionGoToDate},
                                   {10022, kOptionDeleteAll},
                                   {30262, kOptionSettings}};
    mOptionsMenu.reset(VtCalendarMakeMenu(kOptionsMenu, options, 4));
    const uint32_t views[][2] = {{10032, 11821}, {10042, 11822}, {10052, 11823}};
    mViewMenu.reset(VtCalendarMakeMenu(kWeekViewMenu, views, 3));
}

PLPane* VtCalendarWeekView::GetHourTable() const {
    return mHourTable;
}

// ----------------------------------------------------------------------------------- refresh

void VtCalendarWeekView::Reload(int) {
    mShownDate = *mSelectDate;
    Refresh();
}

void VtCalendarWeekView::Rebuild() {
    ScrollToStartOfDay();
}

void VtCalendarWeekView::Refresh() {
    ScrollToStartOfDay();
    mStartWeekday = StartWeekDayIndex();
    if (mStartWeekday < 1 || mStartWeekday > 7) {
        mStartWeekday = 1;
    }
    mWeekStart = VtCalendarWeekModel::WeekStartOf(*mSelectDate, mStartWeekday);
    mModel.SetWeekStart(mWeekStart);
    UpdateDayButtons();
    UpdateNameButtons();
    LoadWeek();
    mModel.BuildStrip(mWeekEvents);
    mHourTable->Rebuild();
}

void VtCalendarWeekView::ScrollToStartOfDay() {
    long hour = 0;
    // A start hour that cannot be read leaves the table where it is.
    if ((APConfigCalendar_GetStartDayTime(&hour) & 0xFF) == 0) {
        return;
    }
    const long visible = mScrollContainer->GetVisibleHeight();
    long offset = hour * kHourRowHeight;
    if (kHourTableHeight - offset <= visible) {
        offset = kHourTableHeight - visible;
    }
    PLScrollerMessage scroll(GetID(), PLPoint(int(offset), 0), 0);
    mScrollContainer->GetContentPane()->Listen(&scroll);
}

void VtCalendarWeekView::UpdateDayButtons() {
    const PLDate today = PLDate::Today();
    for (int i = 0; i < kWeekDays; ++i) {
        const PLDate date = mWeekStart + i;
        PLRGBColor colour = kWhite;
        if (date == today) {
            colour = kTodayBlue;
        } else {
            const int weekday = VtCalendarWeekModel::WeekdayIndex(date.dayNumber);
            if (weekday == 6 || weekday == 0) {
                colour = kWeekendRed;
            }
        }
        VtButton* button = mDayButtons[size_t(i)];
        button->SetString(PLNumToString(date.day), true);
        button->SetTextColor(colour, true);
    }
}

void VtCalendarWeekView::UpdateNameButtons() {
    for (int i = 0; i < kWeekDays; ++i) {
        int weekday = mStartWeekday + i;
        if (weekday > 7) {
            weekday -= 7;
        }
        mNameButtons[size_t(i)]->SetString(APGetStr(kWeekdayLabels[weekday]), true);
        mDayDates[size_t(i)] = mWeekStart + i;
    }
}

void VtCalendarWeekView::LoadWeek() {
    VtCalendarFreeNodes(mWeekEvents);
    PLDate next = mWeekStart + kWeekDays;
    mWeekEvents = VtCalendarQueryWeek(PLDate2TimeStamp(&mWeekStart, nullptr),
                                      PLDate2TimeStamp(&next, nullptr));
    mOptionsMenu->EnableItem(kOptionDeleteAll, mWeekEvents != nullptr);
}

// ---------------------------------------------------------------------------------- painting

void VtCalendarWeekView::Draw(PLDrawContext& context) {
    context.FillRect(GetBounds(), PLThemeManager::GetCurrentTheme()->GetBackgroundColor());
    DrawMargins(context);
    context.FillRect(kStripArea, kWhite);
    DrawStrip(context);
}

void VtCalendarWeekView::DrawMargins(PLDrawContext& context) const {
    const int width = GetSize().h;
    for (const auto& [strip, top] :
         {std::pair{mNameBitmapA, kNameTop}, std::pair{mColumnBitmapA, kNumberTop}}) {
        if (strip == nullptr || strip->GetWidth() < 1) {
            continue;
        }
        for (int x = 0; x < kFirstColumnLeft; x += strip->GetWidth()) {
            context.DrawBitmap(*strip, PLPoint(top, x));
        }
        for (int x = kLastColumnRight; x < width; x += strip->GetWidth()) {
            context.DrawBitmap(*strip, PLPoint(top, x));
        }
    }
}

void VtCalendarWeekView::DrawStrip(PLDrawContext& context) const {
    for (int row = 1; row <= kWeekStripRows; ++row) {
        for (int column = 1; column <= kWeekDays; ++column) {
            const VtCalendarWeekCell& cell = mModel.StripCell(row, column);
            if (cell.used == 0) {
                continue;
            }
            const int x = kCellWidth * column;
            const int y = 3 * row;
            // A bar starts two pixels into its first column and ends two before its last.
            PLRect bar{72 + y, x + 11, 74 + y, x + 37};
            if (cell.kind == kWeekPieceFirst) {
                bar.left = x + 13;
            } else if (cell.kind == kWeekPieceLast) {
                bar.right = x + 35;
            }
            context.FillRect(bar, VtCalendarEventColour(cell.colour));
        }
    }
}

// ---------------------------------------------------------------------------------- commands

void VtCalendarWeekView::Listen(PLMessage* message) {
    assert(message != nullptr && "a message to handle");
    if (message == nullptr) {
        return;
    }
    const uint32_t kind = message->GetMessageID();
    const uint32_t sender = message->GetSenderID();
    if (kind == kPLMsgUp && sender == kWeekDateHeader) {
        if (message->GetUserMessageID() == kHeaderTitleTapped) {
            GoToDate();
        } else {
            Refresh();
            Redraw();
            TakeKeys();
        }
    } else if (kind == kPLMsgControl && sender >= kWeekNameButton &&
               sender < kWeekNameButton + kWeekDays) {
        OpenDay(mDayDates[sender - kWeekNameButton]);
    } else if (kind == kPLMsgControl && sender >= kWeekDayButton &&
               sender < kWeekDayButton + kWeekDays) {
        mShownDate = mWeekStart + int(sender - kWeekDayButton);
        OpenDay(mShownDate);
    } else if (kind == kPLMsgControl && sender == kEventDeletedElsewhere) {
        Refresh();
    } else if (kind == kPLMsgSelect && sender == kOptionsButton) {
        const uint32_t chosen = mOptionsMenu->GetSelectedItemID();
        if (chosen == kOptionGoToDate) {
            GoToDate();
        } else if (chosen == kOptionDeleteAll) {
            DeleteAllOfWeek();
        }
    }
}

void VtCalendarWeekView::OpenDay(const PLDate& date) {
    SetDateFields(*mSelectDate, date.year, date.month, date.day);
    PLMessage open(kPLMsgUp, GetID(), kPLWildcard, kEmptyString, kEmptyString);
    BroadcastMessage(&open);
}

void VtCalendarWeekView::TakeKeys() {
    PLAppContext::GetInstance()->GetEventLoop().SetTarget(mHourTable);
}

void VtCalendarWeekView::GoToDate() {
    if (ShowDateDialog(*mSelectDate) == 1) {
        mShownDate = *mSelectDate;
        Refresh();
        Redraw();
    }
    TakeKeys();
}

void VtCalendarWeekView::DeleteAllOfWeek() {
    if (AskQuestion(kDeleteAllIcon, kDeleteAllText, kWeekDeleteYes, kWeekDeleteNo) ==
            long(kWeekDeleteYes) &&
        DeleteWeekEvents()) {
        Refresh();
        VtCalendarBroadcastEventsChanged();
        Redraw();
    }
    TakeKeys();
}

bool VtCalendarWeekView::DeleteWeekEvents() {
    LoadWeek();
    bool asked = false;
    for (const APMonthEventNode* node = mWeekEvents; node != nullptr && !asked; node = node->next) {
        if (node->recurKind == 0) {
            continue;
        }
        // A repeating event goes with its whole series: ask before anything is deleted. Only a
        // clear yes ends the questions; a dialog closed otherwise asks again at the next series.
        const long answer =
            AskQuestion(kDeleteSeriesIcon, kDeleteSeriesText, kDeleteSeriesYes, kDeleteSeriesNo);
        if (answer == long(kDeleteSeriesNo)) {
            return false;
        }
        asked = answer == long(kDeleteSeriesYes);
    }
    for (const APMonthEventNode* node = mWeekEvents; node != nullptr; node = node->next) {
        _EventRecInfo record{};
        if (VtCalendarGetEvent(node->id, &record)) {
            DeleteEvent(record);
        }
    }
    APAlertDB_SendUpdateToDaemon();
    VtCalendarBroadcastEventsDeleted();
    return true;
}

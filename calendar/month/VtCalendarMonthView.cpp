// The month view: reload from the store, painting, keys, pen and menus.
#include "month/VtCalendarMonthView.h"

#include <cassert>

#include "APAlertDB.h"
#include "APConfig.h"
#include "APGetStr.h"
#include "PLAppContext.h"
#include "PLBitmap.h"
#include "PLDrawContext.h"
#include "PLEventLoop.h"
#include "PLMessage.h"
#include "PLScreen.h"
#include "PLTimeStamp.h"
#include "VtWidgets.h"
#include "app/VtCalendarBroadcasts.h"
#include "app/VtCalendarEventStore.h"
#include "app/VtCalendarHelpers.h"
#include "app/VtCalendarMainViewBar.h"
#include "event/VtCalendarColours.h"

namespace {

constexpr PLPoint kViewLocation{45, 0};
constexpr PLSize kViewSize{275, 240};

constexpr uint32_t kHeaderBitmapID = 10280;
constexpr int kBandTop = 29;
constexpr int kBandHeight = 29;
constexpr PLRect kGridArea{53, 0, 239, 240};

// Buttons of the two delete questions.
constexpr uint32_t kDeleteAllYes = 11107;
constexpr uint32_t kDeleteAllNo = 11108;
constexpr uint32_t kDeleteSeriesYes = 12206;
constexpr uint32_t kDeleteSeriesNo = 12207;
constexpr uint32_t kDeleteAllIcon = 32180;
constexpr uint32_t kDeleteAllText = 10862;
constexpr uint32_t kDeleteSeriesIcon = 32130;
constexpr uint32_t kDeleteSeriesText = 11162;
constexpr uint32_t kTextOk = 30002;
constexpr uint32_t kEventDeletedElsewhere = 12203;
constexpr long kHeaderTitleTapped = 3;

// Weekday names by weekday 1 (Sunday) .. 7 (Saturday).
constexpr uint32_t kWeekdayLabels[8] = {0, 30592, 30532, 30542, 30552, 30562, 30572, 30582};

constexpr PLRGBColor kWhite{255, 255, 255};
constexpr PLRGBColor kGridGrey{228, 228, 228};
constexpr PLRGBColor kAllDayTint{255, 214, 187};
constexpr PLRGBColor kSelectionOrange{255, 153, 0};
constexpr PLRGBColor kTodayBlue{0, 102, 255};
constexpr PLRGBColor kWeekendRed{204, 0, 0};
constexpr PLRGBColor kBlack{0, 0, 0};

// Asks a two-button question, its text in the dialog's body; returns the closing button's id.
long AskQuestion(uint32_t iconID, uint32_t textID, uint32_t yesID, uint32_t noID) {
    return AskCalendarQuestion(iconID, kEmptyString, APGetStr(textID), yesID, kTextOk, noID);
}

}  // namespace

VtCalendarMonthView::VtCalendarMonthView(uint32_t id, PLDate* selectDate)
    : PLView(id, kViewLocation, kViewSize), mSelectDate(selectDate) {
    assert(selectDate != nullptr && "the month view shows the shared selected date");
    mHeaderBitmap = CalendarBitmap(kHeaderBitmapID);
    BuildMenus();
}

VtCalendarMonthView::~VtCalendarMonthView() {
    FreeEvents();
}

VtCalendarMonthView* VtCalendarMonthView::Make(uint32_t id, PLDate* selectDate,
                                               PLListener* application) {
    auto* view = new VtCalendarMonthView(id, selectDate);
    VtCalendarAddBottomBar(view, {kMonthViewSwitchButton, kMonthExitButton, 10032},
                           view->mOptionsMenu.get(), view->mViewMenu.get(), application);
    VtCalendarYearSelectControl* header =
        MakeCalendarYearSelectControl(kMonthDateHeader, kVtHeaderMonth, selectDate, nullptr, false);
    header->AddListener(view);
    view->AddSubPane(header, false);
    return view;
}

void VtCalendarMonthView::BuildMenus() {
    const uint32_t options[][2] = {{10002, kOptionNewEvent},
                                   {10012, kOptionGoToDate},
                                   {10022, kOptionDeleteAll},
                                   {30262, kOptionSettings}};
    mOptionsMenu.reset(VtCalendarMakeMenu(kOptionsMenu, options, 4));
    // Nothing to delete until a reload found events.
    mOptionsMenu->EnableItem(kOptionDeleteAll, false);
    const uint32_t views[][2] = {{10032, kViewMonth}, {10042, kViewWeek}, {10052, kViewDay}};
    mViewMenu.reset(VtCalendarMakeMenu(kMonthViewMenu, views, 3));
}

void VtCalendarMonthView::FreeEvents() {
    VtCalendarFreeNodes(mEvents);
}

void VtCalendarMonthView::Reload(int mode) {
    if (mode < 2) {
        long option = 0;
        if ((APConfigCalendar_GetStartWeekDay(&option) & 0xFF) != 0) {
            mModel.SetStartWeekdayOption(option);
        }
    }
    mModel.SetShownDate(*mSelectDate);
    long start = 0;
    long end = 0;
    VtCalendarMonthRange(mModel.GetShownDate(), start, end);
    FreeEvents();
    mEvents = VtCalendarQueryMonth(start, end);
    mOptionsMenu->EnableItem(kOptionDeleteAll, mEvents != nullptr);
    mModel.Build(mEvents);
}

// ---------------------------------------------------------------------------------- painting

void VtCalendarMonthView::Draw(PLDrawContext& context) {
    DrawWeekdayBand(context);
    DrawWeekdayNames(context);
    DrawGrid(context);
    PLDate date = mModel.FirstOfMonth() - mModel.FirstOffset();
    const PLDate today = PLDate::Today();
    for (int cell = 0; cell < kMonthRows * kMonthColumns; ++cell) {
        DrawCell(context, cell, date, today);
        date += 1;
    }
}

void VtCalendarMonthView::DrawWeekdayBand(PLDrawContext& context) const {
    if (mHeaderBitmap == nullptr) {
        return;
    }
    const int width = GetBounds().Width();
    PLBitmap band(width, kBandHeight);
    const PLRect source{0, 0, mHeaderBitmap->GetHeight(), mHeaderBitmap->GetWidth()};
    // The picture is a narrow strip: copying it at every x stretches it across the band.
    for (int x = 0; x < width; ++x) {
        band.CopyPixels(*mHeaderBitmap, source,
                        PLRect{0, x, mHeaderBitmap->GetHeight(), x + mHeaderBitmap->GetWidth()});
    }
    context.DrawBitmap(band, PLPoint(kBandTop, 0));
}

void VtCalendarMonthView::DrawWeekdayNames(PLDrawContext& context) const {
    context.SetTextColor(kWhite);
    for (int i = 0; i < kMonthColumns; ++i) {
        int weekday = mModel.GetStartWeekday() + i;
        if (weekday > 7) {
            weekday -= 7;
        }
        const PLRect rect{kBandTop, kMonthColumnWidth * i, kMonthGridTop,
                          kMonthColumnWidth * i + kMonthColumnWidth};
        context.DrawString(APGetStr(kWeekdayLabels[weekday]), rect, PLPoint(0, 0), 0, true,
                           kPLJustifyCenter);
    }
}

void VtCalendarMonthView::DrawGrid(PLDrawContext& context) const {
    context.FillRect(kGridArea, kGridGrey);
    for (int k = 1; k < kMonthColumns; ++k) {
        const int x = kMonthColumnWidth * k;
        context.DrawLine(PLPoint(kMonthGridTop, x), PLPoint(kGridArea.bottom, x), kWhite);
    }
    for (int r = 0; r < kMonthRows; ++r) {
        const int y = kMonthGridTop + kMonthRowHeight * r;
        context.DrawLine(PLPoint(y, 0), PLPoint(y, kMonthColumnWidth * kMonthColumns), kWhite);
    }
}

void VtCalendarMonthView::DrawCell(PLDrawContext& context, int cell, const PLDate& date,
                                   const PLDate& today) const {
    const PLDate& shown = mModel.GetShownDate();
    if (date.month != shown.month || date.year != shown.year) {
        return;
    }
    const int row = cell / kMonthColumns;
    const int column = cell % kMonthColumns;
    const int top = kMonthGridTop + kMonthRowHeight * row;
    const int left = kMonthColumnWidth * column;
    const PLRect rect{top, left, top + kMonthRowHeight, left + kMonthColumnWidth};

    if (mModel.HasAllDayMark(date.day)) {
        context.FillRect(rect, kAllDayTint);
    }
    DrawMarks(context, row, column, date.day);
    if (date == shown) {
        context.FrameRect(rect.Insetted(1, 1), kSelectionOrange);
    }
    PLRGBColor colour = kBlack;
    if (date == today) {
        colour = kTodayBlue;
    } else if ((mModel.GetStartWeekday() + cell) % 7 <= 1) {
        colour = kWeekendRed;
    }
    context.SetTextColor(colour);
    context.DrawString(PLNumToString(date.day), rect.Offsetted(-6, 0), PLPoint(3, 3), 0, true,
                       kPLJustifyLeft);
}

void VtCalendarMonthView::DrawMarks(PLDrawContext& context, int row, int column, int day) const {
    const int left = kMonthColumnWidth * column;
    for (int k = 0; k < kMonthLanes; ++k) {
        const VtCalendarMonthLane& lane = mModel.Lane(day, k);
        if (lane.recordId == 0) {
            continue;
        }
        const int top = 50 + kMonthRowHeight * row + 30 - 3 * k;
        PLRect bar{top, left + 3, top + 2, left + 13};
        switch (lane.piece) {
            case kMonthPieceFirst:
                bar.left = left + 3;
                bar.right = left + kMonthColumnWidth;
                break;
            case kMonthPieceMiddle:
                bar.left = left;
                bar.right = left + kMonthColumnWidth;
                break;
            case kMonthPieceLast:
                bar.left = left;
                bar.right = left + 31;
                break;
            default:
                break;
        }
        context.FillRect(bar, VtCalendarEventColour(lane.colour));
    }
}

void VtCalendarMonthView::RepaintDay(int day) {
    if (!mModel.IsDayOfMonth(day)) {
        return;
    }
    const PLRect cell = mModel.CellRectOfDay(day);
    const PLPoint origin = LocalToScreen(PLPoint(cell.top, cell.left));
    PLAppContext::GetInstance()->GetScreen().Invalidate(PLRect::FromPointSize(origin, cell.Size()));
}

// --------------------------------------------------------------------------------- selection

void VtCalendarMonthView::SelectDate(const PLDate& date) {
    const PLDate old = mModel.GetShownDate();
    *mSelectDate = date;
    if (date.month == old.month && date.year == old.year) {
        mModel.SetShownDate(date);
        RepaintDay(old.day);
        RepaintDay(date.day);
        return;
    }
    Reload(0);
    Redraw();
}

void VtCalendarMonthView::StepMonth(int delta) {
    PLDate date = mModel.GetShownDate();
    int month = date.month + delta;
    int year = date.year;
    // The month keys browse January 1970 .. December 2030: at either end the month stays, and the
    // selection is still copied and the month reloaded as for any other step.
    if (month < 1) {
        month = year > 1970 ? 12 : 1;
        year = year > 1970 ? year - 1 : year;
    } else if (month > 12) {
        month = year < 2030 ? 1 : 12;
        year = year < 2030 ? year + 1 : year;
    }
    const int days = PLDate::NumberOfDaysInMonth(month, year);
    date.year = uint16_t(year);
    date.month = uint8_t(month);
    if (date.day > days) {
        date.day = uint8_t(days);
    }
    date.FixFromMDY();
    *mSelectDate = date;
    Reload(0);
    Redraw();
}

bool VtCalendarMonthView::DoKeyCommand(char key, short, PLKeyModifiers) {
    const PLDate shown = mModel.GetShownDate();
    switch (uint8_t(key)) {
        case kPLKeyUp:
            SelectDate(shown - 7);
            return true;
        case kPLKeyOk:
            AskForDay();
            return true;
        case kPLKeyDown:
            SelectDate(shown + 7);
            return true;
        case kPLKeyLeft:
            // From the 1st this lands on the last day of the month before.
            SelectDate(shown - 1);
            return true;
        case kPLKeyRight:
            SelectDate(shown + 1);
            return true;
        case kPLKeyPageUp:
            StepMonth(-1);
            return true;
        case kPLKeyPageDown:
            StepMonth(1);
            return true;
        default:
            return false;
    }
}

void VtCalendarMonthView::HighlightDayAt(PLPoint where) {
    const int day = mModel.DayAtPoint(where);
    PLDate& shown = mModel.ShownDate();
    if (!mModel.IsDayOfMonth(day) || day == shown.day) {
        return;
    }
    const int old = shown.day;
    shown.day = uint8_t(day);
    shown.FixFromMDY();
    RepaintDay(old);
    RepaintDay(day);
}

void VtCalendarMonthView::MouseDown(PLPoint where, PLMouseButton) {
    if (!IsTracking()) {
        StartTracking();
    }
    HighlightDayAt(where);
}

void VtCalendarMonthView::MouseMove(PLPoint where, PLMouseButton) {
    if (IsTracking()) {
        HighlightDayAt(where);
    }
}

void VtCalendarMonthView::MouseUp(PLPoint where, PLMouseButton) {
    StopTracking();
    const int day = mModel.DayAtPoint(where);
    if (!mModel.IsDayOfMonth(day)) {
        return;
    }
    const PLDate& shown = mModel.GetShownDate();
    SetDateFields(*mSelectDate, shown.year, shown.month, day);
    mModel.SetShownDate(*mSelectDate);
    AskForDay();
}

void VtCalendarMonthView::AskForDay() {
    PLMessage open(kPLMsgUp, GetID(), kPLWildcard, kEmptyString, kEmptyString);
    BroadcastMessage(&open);
}

// ----------------------------------------------------------------------------- menu commands

void VtCalendarMonthView::Listen(PLMessage* message) {
    assert(message != nullptr && "a message to handle");
    if (message == nullptr) {
        return;
    }
    const uint32_t kind = message->GetMessageID();
    const uint32_t sender = message->GetSenderID();
    if (kind == kPLMsgUp && sender == kMonthDateHeader) {
        if (message->GetUserMessageID() == kHeaderTitleTapped) {
            GoToDate();
        } else {
            Reload(0);
            Redraw();
        }
    } else if (kind == kPLMsgControl && sender == kEventDeletedElsewhere) {
        Reload(0);
    } else if (kind == kPLMsgSelect && sender == kOptionsButton) {
        const uint32_t chosen = mOptionsMenu->GetSelectedItemID();
        if (chosen == kOptionGoToDate) {
            GoToDate();
        } else if (chosen == kOptionDeleteAll) {
            DeleteAllOfMonth();
        }
    }
}

void VtCalendarMonthView::TakeKeys() {
    PLAppContext::GetInstance()->GetEventLoop().SetTarget(this);
}

void VtCalendarMonthView::GoToDate() {
    if (ShowDateDialog(*mSelectDate) == 1) {
        mModel.SetShownDate(*mSelectDate);
        Reload(0);
        Redraw();
    }
    TakeKeys();
}

void VtCalendarMonthView::DeleteAllOfMonth() {
    if (AskQuestion(kDeleteAllIcon, kDeleteAllText, kDeleteAllYes, kDeleteAllNo) ==
            long(kDeleteAllYes) &&
        DeleteMonthEvents()) {
        Reload(0);
        VtCalendarBroadcastEventsChanged();
        Redraw();
    }
    TakeKeys();
}

bool VtCalendarMonthView::DeleteMonthEvents() {
    long start = 0;
    long end = 0;
    VtCalendarMonthRange(mModel.GetShownDate(), start, end);
    APMonthEventNode* list = VtCalendarQueryMonth(start, end);
    // A repeating event goes with its whole series: ask once more before anything is deleted.
    for (const APMonthEventNode* node = list; node != nullptr; node = node->next) {
        if (node->recurKind != 0) {
            if (AskQuestion(kDeleteSeriesIcon, kDeleteSeriesText, kDeleteSeriesYes,
                            kDeleteSeriesNo) != long(kDeleteSeriesYes)) {
                VtCalendarFreeNodes(list);
                return false;
            }
            break;
        }
    }
    for (const APMonthEventNode* node = list; node != nullptr; node = node->next) {
        _EventRecInfo record{};
        if (VtCalendarGetEvent(node->id, &record)) {
            DeleteEvent(record);
        }
    }
    VtCalendarFreeNodes(list);
    APAlertDB_SendUpdateToDaemon();
    VtCalendarBroadcastEventsDeleted();
    return true;
}

// The week's hour table: rebuilding the bars from the store, painting, pen and keys.
#include "week/VtCalendarWeekViewHourTable.h"

#include <algorithm>
#include <cassert>
#include <string>

#include "APConfig.h"
#include "PLDrawContext.h"
#include "PLFont.h"
#include "PLMessage.h"
#include "PLTimeStamp.h"
#include "VtScrollContainer.h"
#include "VtScrollPane.h"
#include "app/VtCalendarEventStore.h"
#include "app/VtCalendarHelpers.h"
#include "event/VtCalendarColours.h"

namespace {

constexpr long kFirstWeekdayOption = 11424;
constexpr long kLastWeekdayOption = 11430;
constexpr int kGridRight = 219;  // the last day column's right edge
constexpr int kScrollBarWidth = 20;
constexpr int kBarInset = 4;  // from a day column's left edge to its first slot
constexpr int kSlotPitch = 7;
constexpr int kBarWidth = 5;
// The date header of the view around the table shows the selected date too.
constexpr uint32_t kDateHeader = 11204;

constexpr PLRGBColor kLabelGrey{187, 187, 187};
constexpr PLRGBColor kGridGrey{228, 228, 228};
constexpr PLRGBColor kWhite{255, 255, 255};
constexpr PLRGBColor kBlack{0, 0, 0};
constexpr PLRGBColor kSelectionOrange{255, 153, 0};

// The keys browse 1970-01-01 .. 2030-12-31.
const PLDate kFirstDate(1970, 1, 1);
const PLDate kLastDate(2030, 12, 31);

// The label of an hour, always in the 12-hour form: the hour, then "am" or "pm".
std::string HourNumber(int hour) {
    return std::to_string(hour % 12 == 0 ? 12 : hour % 12);
}

const char* HourSuffix(int hour) {
    return hour < 12 ? "am" : "pm";
}

}  // namespace

VtCalendarWeekViewHourTable::VtCalendarWeekViewHourTable(PLDate* selectDate, PLPoint location,
                                                         PLSize size, uint32_t id)
    : PLThemeView(id, location, size), mSelectDate(selectDate) {
    assert(selectDate != nullptr && "the hour table shows the shared selected date");
    mCellDate = *selectDate;
    mWeekStart = mCellDate;
    // Its messages go to its own listeners (the application), not up the pane tree.
    SetComponentListener(nullptr, true, false);
}

VtCalendarWeekViewHourTable::~VtCalendarWeekViewHourTable() {
    VtCalendarFreeNodes(mWeekEvents);
}

VtCalendarWeekViewHourTable* VtCalendarWeekViewHourTable::Make(PLDate* selectDate, PLPoint location,
                                                               PLSize size, uint32_t id) {
    return new VtCalendarWeekViewHourTable(selectDate, location, size, id);
}

void VtCalendarWeekViewHourTable::Rebuild() {
    long option = 0;
    if ((APConfigCalendar_GetStartWeekDay(&option) & 0xFF) != 0 && option >= kFirstWeekdayOption &&
        option <= kLastWeekdayOption) {
        mStartWeekday = uint16_t(option - (kFirstWeekdayOption - 1));
    }
    mCellDate = *mSelectDate;
    mWeekStart = VtCalendarWeekModel::WeekStartOf(mCellDate, mStartWeekday);
    mSelectedColumn = uint16_t(mCellDate - mWeekStart + 1);
    // The start hour is used even when it cannot be read: row 1 then.
    long hour = 0;
    APConfigCalendar_GetStartDayTime(&hour);
    mSelectedRow = uint16_t(std::clamp(hour, 0L, long(kWeekHours - 1)) + 1);

    VtCalendarFreeNodes(mWeekEvents);
    PLDate next = mWeekStart + kWeekDays;
    mWeekEvents = VtCalendarQueryWeek(PLDate2TimeStamp(&mWeekStart, nullptr),
                                      PLDate2TimeStamp(&next, nullptr));
    mModel.SetWeekStart(mWeekStart);
    mModel.BuildGrid(mWeekEvents);
    mDragArmed = false;
}

// ---------------------------------------------------------------------------------- painting

void VtCalendarWeekViewHourTable::Draw(PLDrawContext& context) {
    DrawLabels(context);
    DrawGrid(context);
    DrawBars(context);
    DrawSelection(context);
}

void VtCalendarWeekViewHourTable::DrawLabels(PLDrawContext& context) const {
    const int height = GetSize().v;
    context.FillRect(PLRect(0, 0, height, kHourLabelWidth), kLabelGrey);
    context.SetTextColor(kBlack);
    for (int hour = 0; hour < kWeekHours; ++hour) {
        const int top = kHourRowHeight * hour;
        context.SetFont(PLFont::GetFont(PLFourCC("UC16")));
        // "10am" is wider than the column in this font: the suffix goes under the hour, the two
        // lines overlapping in their empty space so that both fit in a row.
        context.DrawString(HourNumber(hour), PLRect(top, 0, top + 19, kHourLabelWidth),
                           PLPoint(0, 0), 0, true, kPLJustifyCenter);
        context.DrawString(HourSuffix(hour), PLRect(top + 12, 0, top + 30, kHourLabelWidth),
                           PLPoint(0, 0), 0, true, kPLJustifyCenter);
        context.SetFont(PLFont::GetFont(PLFourCC("UC24")));
    }
}

void VtCalendarWeekViewHourTable::DrawGrid(PLDrawContext& context) const {
    const int height = GetSize().v;
    context.FillRect(PLRect(0, kHourLabelWidth, height, kGridRight), kGridGrey);
    for (int i = 0; i <= kWeekDays; ++i) {
        const int x = kHourLabelWidth + kHourColumnWidth * i;
        context.DrawLine(PLPoint(0, x), PLPoint(height, x), kWhite);
    }
    const int right = GetSize().h - kScrollBarWidth;
    for (int row = 0; row < kWeekHours; ++row) {
        const int y = kHourRowHeight * row;
        context.DrawLine(PLPoint(y, kHourLabelWidth), PLPoint(y, right), kWhite);
    }
}

void VtCalendarWeekViewHourTable::DrawBars(PLDrawContext& context) const {
    for (int row = 1; row <= kWeekHours; ++row) {
        for (int slotColumn = 0; slotColumn < kWeekSlotColumns; ++slotColumn) {
            const VtCalendarWeekCell& cell = mModel.GridCell(row, slotColumn);
            if (cell.used == 0) {
                continue;
            }
            const int day = slotColumn / kWeekSlots;
            const int slot = slotColumn % kWeekSlots;
            const int top = kHourRowHeight * (row - 1);
            const int left =
                kHourLabelWidth + kBarInset + kHourColumnWidth * day + kSlotPitch * slot;
            // The first and last hour of a bar stop a pixel short, so that bars one after the
            // other stay apart.
            const PLRect bar{top + (cell.kind == kWeekPieceFirst ? 1 : 0), left,
                             top + kHourRowHeight - (cell.kind == kWeekPieceLast ? 1 : 0),
                             left + kBarWidth};
            context.FillRect(bar, VtCalendarEventColour(cell.colour));
        }
    }
}

void VtCalendarWeekViewHourTable::DrawSelection(PLDrawContext& context) const {
    const PLRect cell{kHourRowHeight * (mSelectedRow - 1), kHourColumnWidth * mSelectedColumn + 11,
                      kHourRowHeight * mSelectedRow, kHourColumnWidth * mSelectedColumn + 37};
    context.FrameRect(cell.Insetted(1, 1), kSelectionOrange);
}

// -------------------------------------------------------------------------------------- pen

void VtCalendarWeekViewHourTable::SelectCellAt(PLPoint where) {
    // A pen that left the table (it is tracked) still names the nearest cell.
    mSelectedRow = uint16_t(std::clamp(where.v / kHourRowHeight + 1, 1, kWeekHours));
    mSelectedColumn =
        uint16_t(std::clamp((where.h - kHourLabelWidth) / kHourColumnWidth + 1, 1, kWeekDays));
    mCellDate = mWeekStart + (mSelectedColumn - 1);
    Redraw();
}

void VtCalendarWeekViewHourTable::MouseDown(PLPoint where, PLMouseButton) {
    if (!IsTracking()) {
        StartTracking();
    }
    SelectCellAt(where);
}

void VtCalendarWeekViewHourTable::MouseMove(PLPoint where, PLMouseButton) {
    // The first move after a rebuild only arms the drag, so that a shaky tap does not move the
    // selection.
    if (!mDragArmed) {
        mDragArmed = true;
        return;
    }
    SelectCellAt(where);
}

void VtCalendarWeekViewHourTable::MouseUp(PLPoint where, PLMouseButton) {
    StopTracking();
    SelectCellAt(where);
    CopyCellToSelectDate();
    Send(kPLMsgUp);
}

// ------------------------------------------------------------------------------------- keys

bool VtCalendarWeekViewHourTable::DoKeyCommand(char key, short, PLKeyModifiers) {
    switch (uint8_t(key)) {
        case kPLKeyUp: {
            if (mSelectedRow > 1) {
                --mSelectedRow;
            }
            const long top = kHourRowHeight * (mSelectedRow - 1);
            if (ScrollOffset() > top) {
                ScrollTo(top);
            }
            RepaintHolder();
            return true;
        }
        case kPLKeyOk:
            Send(kPLMsgUp);
            return true;
        case kPLKeyDown: {
            if (mSelectedRow < kWeekHours) {
                ++mSelectedRow;
            }
            const long top = kHourRowHeight * (mSelectedRow - 1);
            if (ScrollOffset() + VisibleHeight() <= top) {
                ScrollTo(ScrollOffset() + kHourRowHeight);
            }
            RepaintHolder();
            return true;
        }
        case kPLKeyLeft:
            SelectColumn(mSelectedColumn - 1);
            return true;
        case kPLKeyRight:
            SelectColumn(mSelectedColumn + 1);
            return true;
        case kPLKeyPageUp:
            StepWeek(-kWeekDays);
            return true;
        case kPLKeyPageDown:
            StepWeek(kWeekDays);
            return true;
        default:
            return false;
    }
}

void VtCalendarWeekViewHourTable::SelectColumn(int column) {
    if (column < 1 || column > kWeekDays) {
        return;
    }
    mSelectedColumn = uint16_t(column);
    mCellDate = mWeekStart + (column - 1);
    CopyCellToSelectDate();
    Redraw();
    RepaintDateHeader();
}

void VtCalendarWeekViewHourTable::RepaintDateHeader() {
    PLPane* top = this;
    while (top->GetParent() != nullptr) {
        top = top->GetParent();
    }
    if (PLPane* header = top->FindPane(kDateHeader)) {
        header->Redraw();
    }
}

void VtCalendarWeekViewHourTable::StepWeek(int days) {
    mCellDate += days;
    if (mCellDate < kFirstDate) {
        mCellDate = kFirstDate;
    } else if (mCellDate > kLastDate) {
        // Past the last week the keys start again at the first day, unlike the first week,
        // which stays put.
        mCellDate = kFirstDate;
    }
    *mSelectDate = mCellDate;
    Send(kPLMsgValue);
}

void VtCalendarWeekViewHourTable::CopyCellToSelectDate() {
    SetDateFields(*mSelectDate, mCellDate.year, mCellDate.month, mCellDate.day);
}

void VtCalendarWeekViewHourTable::Send(uint32_t kind) {
    PLMessage message(kind, GetID(), kPLWildcard, kEmptyString, kEmptyString);
    BroadcastMessage(&message);
}

// -------------------------------------------------------------------------------- scrolling

long VtCalendarWeekViewHourTable::ScrollOffset() const {
    return GetParent() != nullptr ? GetParent()->GetScrollOffset().v : 0;
}

long VtCalendarWeekViewHourTable::VisibleHeight() const {
    const auto* holder = dynamic_cast<const VtScrollPane*>(GetParent());
    return holder != nullptr ? holder->GetContainer().GetVisibleHeight() : GetSize().v;
}

void VtCalendarWeekViewHourTable::ScrollTo(long offset) {
    if (GetParent() == nullptr) {
        return;
    }
    PLScrollerMessage scroll(GetID(), PLPoint(int(offset), 0), 0);
    GetParent()->Listen(&scroll);
}

void VtCalendarWeekViewHourTable::RepaintHolder() {
    PLPane* holder = GetParent() != nullptr ? GetParent()->GetParent() : nullptr;
    if (holder != nullptr) {
        holder->Redraw();
    } else {
        Redraw();
    }
}

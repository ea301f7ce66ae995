// Date dialogs: month header with arrows, weekday row, month grid; taps and keys pick a day.
#include "VtCalendarDateDialog.h"

#include <cstdio>

#include "PLDrawContext.h"
#include "VtDateRange.h"
#include "VtPlatformText.h"
#include "VtTheme.h"

namespace {
constexpr int kHeaderHeight = 26;
constexpr int kWeekdayHeight = 18;
constexpr int kArrowWidth = 30;
// The month arrows' glyphs are drawn this far towards the year arrows (their tap areas stay where
// they are), so that the longest month name fits between them.
constexpr int kMonthGlyphShift = 10;
// Room on each side of the header that the month title leaves to the arrows: the year column and
// the month column up to its shifted glyph (half a column, less the shift, plus the glyph's half
// width of 4 and a gap of 4).
constexpr int kTitleSideRoom = kArrowWidth + kArrowWidth / 2 - kMonthGlyphShift + 8;
}  // namespace

VtCalendarDateDialog::VtCalendarDateDialog(uint32_t id, PLSize extent, const PLDate& date,
                                           long firstWeekday, const PLBasicString<char>& title)
    : VtBaseDialog(id, extent),
      mDate(VtDateRange::Clamp(date)),
      mFirstWeekday(firstWeekday >= 1 && firstWeekday <= 7 ? firstWeekday : 1) {
    SetTitle(title);
}

void VtCalendarDateDialog::SetDate(const PLDate& date) {
    mDate = VtDateRange::Clamp(date);
    Redraw();
}

PLRect VtCalendarDateDialog::HeaderRect() const {
    const PLRect area = ContentArea();
    return {area.top, area.left, area.top + kHeaderHeight, area.right};
}

PLRect VtCalendarDateDialog::GridRect() const {
    const PLRect area = ContentArea();
    return {area.top + kHeaderHeight + kWeekdayHeight, area.left + 2, area.bottom - 2,
            area.right - 2};
}

PLRect VtCalendarDateDialog::CellRect(int cell) const {
    const PLRect grid = GridRect();
    const int width = grid.Width() / 7;
    const int height = grid.Height() / 6;
    const int left = grid.left + (grid.Width() - 7 * width) / 2 + (cell % 7) * width;
    const int top = grid.top + (cell / 7) * height;
    return {top, left, top + height, left + width};
}

PLDate VtCalendarDateDialog::CellDate(int cell) const {
    const PLDate first(mDate.year, mDate.month, 1);
    const int offset = (first.Weekday() - int(mFirstWeekday) + 7) % 7;
    return first + (cell - offset);
}

void VtCalendarDateDialog::Move(int days) {
    PLDate date = mDate;
    if (VtDateRange::AddDays(date, days)) {
        SetDate(date);
    }
}

void VtCalendarDateDialog::MoveMonths(int months) {
    PLDate date = mDate;
    if (!VtDateRange::AddMonths(date, months)) {
        // A year step past an end of the range stops at that end.
        date = months > 0 ? VtDateRange::Last() : VtDateRange::First();
    }
    SetDate(date);
}

PLBasicString<char> VtCalendarDateDialog::HeaderText() const {
    const int width = HeaderRect().Width() - 2 * kTitleSideRoom;
    PLBasicString<char> named = VtPlatformText::FitDateTitle(
        mDate, {VtPlatformText::kMonthTitleLong, VtPlatformText::kMonthTitleShort},
        VtTheme::Current().TextFont(), width);
    if (!named.IsEmpty()) {
        return named;
    }
    char month[16];
    std::snprintf(month, sizeof month, "%04d-%02d", int(mDate.year), int(mDate.month));
    return PLBasicString<char>(month);
}

PLBasicString<char> VtCalendarDateDialog::WeekdayLabel(int column) const {
    if (column < 0 || column > 6) {
        return {};
    }
    const int weekday = (int(mFirstWeekday) - 1 + column) % 7 + 1;  // 1 Sunday
    return VtPlatformText::WeekdayName(weekday, VtWeekdayForm::Initial);
}

VtCalendarDateDialog::Hit VtCalendarDateDialog::HitAt(PLPoint local, int& cell) const {
    cell = -1;
    const PLRect header = HeaderRect();
    if (header.Contains(local)) {
        const int x = local.h - header.left;
        if (x < kArrowWidth) {
            return Hit::PrevYear;
        }
        if (x < 2 * kArrowWidth) {
            return Hit::PrevMonth;
        }
        if (x >= header.Width() - kArrowWidth) {
            return Hit::NextYear;
        }
        if (x >= header.Width() - 2 * kArrowWidth) {
            return Hit::NextMonth;
        }
        return Hit::None;
    }
    for (int c = 0; c < 42; ++c) {
        if (CellRect(c).Contains(local)) {
            const PLDate date = CellDate(c);
            if (date.month == mDate.month && VtDateRange::Contains(date)) {
                cell = c;
                return Hit::Cell;
            }
            return Hit::None;
        }
    }
    return Hit::None;
}

void VtCalendarDateDialog::MouseDown(PLPoint where, PLMouseButton) {
    mPressed = HitAt(where, mPressedCell);
    Redraw();
}

void VtCalendarDateDialog::MouseUp(PLPoint where, PLMouseButton) {
    int cell = -1;
    const Hit hit = HitAt(where, cell);
    const Hit pressed = mPressed;
    mPressed = Hit::None;
    Redraw();
    if (hit != pressed || (hit == Hit::Cell && cell != mPressedCell)) {
        return;
    }
    switch (hit) {
        case Hit::PrevYear:
            MoveMonths(-12);
            break;
        case Hit::PrevMonth:
            MoveMonths(-1);
            break;
        case Hit::NextMonth:
            MoveMonths(1);
            break;
        case Hit::NextYear:
            MoveMonths(12);
            break;
        case Hit::Cell:
            SetDate(CellDate(cell));
            break;
        case Hit::None:
            break;
    }
}

bool VtCalendarDateDialog::HandleKey(uint8_t key) {
    switch (key) {
        case kPLKeyLeft:
            Move(-1);
            return true;
        case kPLKeyRight:
            Move(1);
            return true;
        case kPLKeyUp:
            Move(-7);
            return true;
        case kPLKeyDown:
            Move(7);
            return true;
        case kPLKeyPageUp:
            MoveMonths(-1);
            return true;
        case kPLKeyPageDown:
            MoveMonths(1);
            return true;
        case kPLKeyOk:
            return PressButton(GetAcceptID());
        default:
            return false;
    }
}

void VtCalendarDateDialog::DrawContent(PLDrawContext& context, const PLRect& area) {
    const VtTheme& theme = VtTheme::Current();
    const PLRect header = HeaderRect();
    theme.FillGradient(context, header, {244, 246, 250}, {226, 231, 240});
    context.DrawLine({header.bottom - 1, header.left}, {header.bottom - 1, header.right - 1},
                     {206, 210, 217});
    const PLRGBColor arrow{40, 44, 52};
    const PLRGBColor off{190, 194, 200};
    const bool canBack = !(mDate.year == 1970 && mDate.month == 1);
    const bool canOn = !(mDate.year == 2030 && mDate.month == 12);
    const int l = header.left;
    const int r = header.right;
    const auto lit = [&](Hit part, const PLRect& rect) {
        if (mPressed == part) {
            theme.FillGradient(context, rect.Insetted(2, 2), {255, 184, 72}, {240, 130, 0});
        }
    };
    const PLRect prevYear{header.top, l, header.bottom, l + kArrowWidth};
    const PLRect prevMonth{header.top, l + kArrowWidth, header.bottom, l + 2 * kArrowWidth};
    const PLRect nextMonth{header.top, r - 2 * kArrowWidth, header.bottom, r - kArrowWidth};
    const PLRect nextYear{header.top, r - kArrowWidth, header.bottom, r};
    lit(Hit::PrevYear, prevYear);
    lit(Hit::PrevMonth, prevMonth);
    lit(Hit::NextMonth, nextMonth);
    lit(Hit::NextYear, nextYear);
    // Year arrows are doubled, month arrows single.
    theme.DrawArrow(context, prevYear.Offsetted(0, -3), VtArrow::Left, canBack ? arrow : off);
    theme.DrawArrow(context, prevYear.Offsetted(0, 4), VtArrow::Left, canBack ? arrow : off);
    theme.DrawArrow(context, prevMonth.Offsetted(0, -kMonthGlyphShift), VtArrow::Left,
                    canBack ? arrow : off);
    theme.DrawArrow(context, nextMonth.Offsetted(0, kMonthGlyphShift), VtArrow::Right,
                    canOn ? arrow : off);
    theme.DrawArrow(context, nextYear.Offsetted(0, -3), VtArrow::Right, canOn ? arrow : off);
    theme.DrawArrow(context, nextYear.Offsetted(0, 4), VtArrow::Right, canOn ? arrow : off);
    theme.DrawText(context, HeaderText().view(), header, theme.TextColor(), kPLJustifyCenter,
                   nullptr, 0);

    const PLRect first = CellRect(0);
    for (int c = 0; c < 7; ++c) {
        const int weekday = (int(mFirstWeekday) - 1 + c) % 7;  // 0 Sunday
        const PLRect cell = CellRect(c);
        const PLRect label{header.bottom, cell.left, first.top, cell.right};
        const PLRGBColor color =
            weekday == 0 || weekday == 6 ? VtTheme::kRed : PLRGBColor{90, 94, 102};
        theme.DrawText(context, WeekdayLabel(c).view(), label, color, kPLJustifyCenter, nullptr, 0);
    }
    const PLDate today = PLDate::Today();
    for (int c = 0; c < 42; ++c) {
        const PLDate date = CellDate(c);
        if (date.month != mDate.month) {
            continue;
        }
        const PLRect cell = CellRect(c);
        const bool selected = date == mDate;
        const bool reachable = VtDateRange::Contains(date);
        if (selected) {
            theme.DrawFace(context, cell.Insetted(1, 1), {255, 178, 60}, {250, 140, 0},
                           {200, 110, 0});
        } else if (mPressed == Hit::Cell && c == mPressedCell) {
            theme.DrawFace(context, cell.Insetted(1, 1), {255, 232, 196}, {255, 214, 160},
                           VtTheme::kOrange);
        }
        const int weekday = date.Weekday();  // 1 Sunday .. 7 Saturday
        PLRGBColor color = theme.TextColor();
        if (!reachable) {
            color = theme.DisabledTextColor();
        } else if (selected) {
            color = VtTheme::kWhite;
        } else if (date == today) {
            color = VtTheme::kBlue;
        } else if (weekday == 1 || weekday == 7) {
            color = VtTheme::kRed;
        }
        char number[4];
        std::snprintf(number, sizeof number, "%d", int(date.day));
        theme.DrawText(context, number, cell, color, kPLJustifyCenter, nullptr, 0);
        if (date == today && !selected) {
            context.FrameRect(cell.Insetted(2, 3), VtTheme::kBlue);
        }
    }
    static_cast<void>(area);
}

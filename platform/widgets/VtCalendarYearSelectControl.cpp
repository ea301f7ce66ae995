// Date headers: the shown month or day between two arrows; arrows step, the title asks for the
// date dialog.
#include "VtCalendarYearSelectControl.h"

#include <cstdio>

#include "PLDate.h"
#include "PLDrawContext.h"
#include "PLMessage.h"
#include "PLTimeStamp.h"
#include "VtDateRange.h"
#include "VtPlatformText.h"
#include "VtTheme.h"

VtCalendarYearSelectControl::VtCalendarYearSelectControl(uint32_t id, long type, PLDate* date,
                                                         bool wrapAtLimits)
    : PLControl(id, PLPoint(0, 0), PLSize(29, kPLScreenWidth)),
      mType(type == kVtHeaderMonth ? kVtHeaderMonth : kVtHeaderDay),
      mDate(date),
      mWrap(wrapAtLimits) {
    PLPane::SetTextColor(VtTheme::kWhite, false);
    PLPane::SetString(TitleText(), false);
}

PLBasicString<char> VtCalendarYearSelectControl::TitleText() const {
    if (mDate == nullptr) {
        return {};
    }
    // The longest named title that fits between the arrows, in the font the title is drawn with.
    const PLFont* font = GetFont() != nullptr ? GetFont() : VtTheme::Current().TextFont();
    const int width = GetSize().h - 2 * kArrowWidth - 2 * kTitleMargin;
    PLBasicString<char> named =
        mType == kVtHeaderMonth
            ? VtPlatformText::FitDateTitle(
                  *mDate, {VtPlatformText::kMonthTitleLong, VtPlatformText::kMonthTitleShort}, font,
                  width)
            : VtPlatformText::FitDateTitle(
                  *mDate,
                  {VtPlatformText::kDayTitleLong, VtPlatformText::kDayTitleMedium,
                   VtPlatformText::kDayTitleShort},
                  font, width);
    if (!named.IsEmpty()) {
        return named;
    }
    if (mType == kVtHeaderMonth) {
        char text[16];
        std::snprintf(text, sizeof text, "%04d-%02d", int(mDate->year), int(mDate->month));
        return PLBasicString<char>(text);
    }
    return PLDate2PLString(*mDate, 0);
}

bool VtCalendarYearSelectControl::Step(int direction) {
    if (mDate == nullptr || direction == 0) {
        return false;
    }
    PLDate date = *mDate;
    bool moved = VtDateRange::Contains(date);
    if (!moved) {
        // A shared date outside the range is first brought back into it.
        date = VtDateRange::Clamp(date);
        moved = true;
    } else {
        moved = mType == kVtHeaderMonth ? VtDateRange::AddMonths(date, direction)
                                        : VtDateRange::AddDays(date, direction);
        if (!moved && mWrap) {
            date = direction > 0 ? VtDateRange::First() : VtDateRange::Last();
            moved = true;
        }
    }
    if (!moved) {
        return false;
    }
    *mDate = date;
    PLPane::SetString(TitleText(), false);
    Redraw();
    Send(direction < 0 ? kVtHeaderMovedBack : kVtHeaderMovedOn);
    return true;
}

void VtCalendarYearSelectControl::Send(long value) {
    PLMessage message(kPLMsgUp, GetID(), static_cast<uint32_t>(value), kEmptyString, kEmptyString);
    BroadcastMessage(&message);
}

VtCalendarYearSelectControl::Part VtCalendarYearSelectControl::PartAt(PLPoint local) const {
    if (!GetBounds().Contains(local)) {
        return Part::None;
    }
    if (local.h < kArrowWidth) {
        return Part::Left;
    }
    if (local.h >= GetSize().h - kArrowWidth) {
        return Part::Right;
    }
    return Part::Title;
}

void VtCalendarYearSelectControl::Draw(PLDrawContext& context) {
    const VtTheme& theme = VtTheme::Current();
    // The shared date may have been moved by its views since the last paint.
    PLPane::SetString(TitleText(), false);
    theme.DrawBand(context, GetBounds());
    const PLRect left{0, 0, GetSize().v, kArrowWidth};
    const PLRect right{0, GetSize().h - kArrowWidth, GetSize().v, GetSize().h};
    const PLRect title{0, kArrowWidth, GetSize().v, GetSize().h - kArrowWidth};
    const PLRect lit = mPressed == Part::Left    ? left
                       : mPressed == Part::Right ? right
                       : mPressed == Part::Title ? title
                                                 : PLRect();
    if (!lit.IsEmpty()) {
        theme.FillGradient(context, lit.Insetted(2, 2), {255, 184, 72}, {240, 130, 0});
    }
    bool canBack = mDate != nullptr;
    bool canOn = mDate != nullptr;
    if (mDate != nullptr && !mWrap && VtDateRange::Contains(*mDate)) {
        PLDate probe = *mDate;
        canBack = mType == kVtHeaderMonth ? VtDateRange::AddMonths(probe, -1)
                                          : VtDateRange::AddDays(probe, -1);
        probe = *mDate;
        canOn = mType == kVtHeaderMonth ? VtDateRange::AddMonths(probe, 1)
                                        : VtDateRange::AddDays(probe, 1);
    }
    const PLRGBColor enabled = VtTheme::kWhite;
    const PLRGBColor disabled{120, 160, 235};
    theme.DrawArrow(context, left, VtArrow::Left, canBack ? enabled : disabled);
    theme.DrawArrow(context, right, VtArrow::Right, canOn ? enabled : disabled);
    theme.DrawText(context, GetString().view(), title, VtTheme::Resolve(GetTextColor(), enabled),
                   kPLJustifyCenter, GetFont(), 0);
}

void VtCalendarYearSelectControl::MouseDown(PLPoint where, PLMouseButton) {
    mPressed = IsActive() ? PartAt(where) : Part::None;
    Redraw();
}

void VtCalendarYearSelectControl::MouseMove(PLPoint where, PLMouseButton) {
    if (mPressed != Part::None && PartAt(where) != mPressed) {
        mPressed = Part::None;
        Redraw();
    }
}

void VtCalendarYearSelectControl::MouseUp(PLPoint where, PLMouseButton) {
    const Part pressed = mPressed;
    mPressed = Part::None;
    Redraw();
    if (pressed == Part::None || PartAt(where) != pressed) {
        return;
    }
    if (pressed == Part::Left) {
        Step(-1);
    } else if (pressed == Part::Right) {
        Step(1);
    } else {
        Send(kVtHeaderTitle);
    }
}

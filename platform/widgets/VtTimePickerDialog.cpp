// Time pickers: hour, minute and AM/PM columns with step arrows.
#include "VtTimePickerDialog.h"

#include <algorithm>
#include <cstdio>

#include "PLDrawContext.h"
#include "PLFont.h"
#include "PLTime.h"
#include "VtPlatformText.h"
#include "VtTheme.h"

namespace {
constexpr int kColumnWidth = 52;
constexpr int kColumnGap = 10;
constexpr int kArrowHeight = 28;
constexpr int kValueHeight = 40;
}  // namespace

VtTimePickerDialog::VtTimePickerDialog(uint32_t id, long hour, long minute, long format,
                                       const PLBasicString<char>& title, long mode)
    : VtBaseDialog(
          id, PLSize(kTitleHeight + 2 * kArrowHeight + kValueHeight + 24 + kButtonRowHeight, 220)),
      mHour(std::clamp(hour, 0L, 23L)),
      mMinute(std::clamp(minute, 0L, 59L)),
      mTwelve(format != kPLTimeFormat24),
      mMode(mode == kVtTimeHourOnly ? kVtTimeHourOnly : kVtTimeHourMinute) {
    if (mMode == kVtTimeHourOnly) {
        // What the picker shows is what it answers: the hour alone, on the full hour.
        mMinute = 0;
    }
    SetTitle(title.IsEmpty() ? PLBasicString<char>(" ") : title);
}

long VtTimePickerDialog::GetHour() const {
    if (!mTwelve) {
        return mHour;
    }
    return mHour % 12 == 0 ? 12 : mHour % 12;
}

PLBasicString<char> VtTimePickerDialog::GetSuffix() const {
    return PLBasicString<char>(mHour >= 12 ? "PM" : "AM");
}

void VtTimePickerDialog::StepColumn(int column, int delta) {
    if (column == 0) {
        if (mTwelve) {
            // The 12-hour column turns within its half of the day; AM/PM is its own column.
            const long twelve = ((GetHour() - 1 + delta) % 12 + 12) % 12 + 1;
            mHour = twelve % 12 + (mHour >= 12 ? 12 : 0);
        } else {
            mHour = ((mHour + delta) % 24 + 24) % 24;
        }
    } else if (column == 1 && mMode != kVtTimeHourOnly) {
        mMinute = ((mMinute + delta) % 60 + 60) % 60;
    } else if (column == 2 && mTwelve) {
        mHour = (mHour + 12) % 24;
    }
    Redraw();
}

PLRect VtTimePickerDialog::ColumnRect(int column) const {
    const PLRect area = ContentArea();
    const int count = ColumnCount();
    const int total = count * kColumnWidth + (count - 1) * kColumnGap;
    const int left = area.left + (area.Width() - total) / 2 + column * (kColumnWidth + kColumnGap);
    const int top = area.top + 12;
    return {top, left, top + 2 * kArrowHeight + kValueHeight, left + kColumnWidth};
}

bool VtTimePickerDialog::HitAt(PLPoint local, int& column, int& part) const {
    for (int c = 0; c < ColumnCount(); ++c) {
        const PLRect rect = ColumnRect(c);
        if (!rect.Contains(local)) {
            continue;
        }
        column = c;
        const int y = local.v - rect.top;
        part = y < kArrowHeight ? -1 : (y >= kArrowHeight + kValueHeight ? 1 : 0);
        return true;
    }
    return false;
}

PLBasicString<char> VtTimePickerDialog::ColumnText(int column) const {
    char text[8];
    if (column == 0) {
        std::snprintf(text, sizeof text, mTwelve ? "%ld" : "%02ld", GetHour());
    } else if (column == 1) {
        std::snprintf(text, sizeof text, "%02ld", mMode == kVtTimeHourOnly ? 0L : mMinute);
    } else {
        // GetSuffix stays "AM"/"PM" for callers; what the column shows is the platform's label.
        return VtPlatformText::Get(mHour >= 12 ? VtPlatformText::kTimePM : VtPlatformText::kTimeAM);
    }
    return PLBasicString<char>(text);
}

void VtTimePickerDialog::MouseDown(PLPoint where, PLMouseButton) {
    mPressedColumn = -1;
    int column = -1;
    int part = 0;
    if (HitAt(where, column, part)) {
        mPressedColumn = column;
        mPressedPart = part;
    }
    Redraw();
}

void VtTimePickerDialog::MouseUp(PLPoint where, PLMouseButton) {
    int column = -1;
    int part = 0;
    const bool hit = HitAt(where, column, part);
    const bool same = hit && column == mPressedColumn && part == mPressedPart;
    mPressedColumn = -1;
    Redraw();
    if (!same || (column == 1 && mMode == kVtTimeHourOnly)) {
        return;
    }
    mFocus = column;
    // The up arrow counts up, the down arrow down; a tap on the AM/PM value switches it.
    if (part != 0) {
        StepColumn(column, -part);
    } else if (column == 2) {
        StepColumn(column, 1);
    }
}

bool VtTimePickerDialog::HandleKey(uint8_t key) {
    const bool hourOnly = mMode == kVtTimeHourOnly;
    switch (key) {
        case kPLKeyLeft:
            mFocus = std::max(0, mFocus - 1);
            if (mFocus == 1 && hourOnly) {
                mFocus = 0;
            }
            Redraw();
            return true;
        case kPLKeyRight:
            mFocus = std::min(ColumnCount() - 1, mFocus + 1);
            if (mFocus == 1 && hourOnly) {
                mFocus = mTwelve ? 2 : 0;
            }
            Redraw();
            return true;
        case kPLKeyUp:
            StepColumn(mFocus, 1);
            return true;
        case kPLKeyDown:
            StepColumn(mFocus, -1);
            return true;
        case kPLKeyOk:
            return PressButton(GetAcceptID());
        default:
            return false;
    }
}

void VtTimePickerDialog::DrawContent(PLDrawContext& context, const PLRect&) {
    const VtTheme& theme = VtTheme::Current();
    PLFont* large = theme.LargeFont();
    for (int c = 0; c < ColumnCount(); ++c) {
        const PLRect rect = ColumnRect(c);
        const bool disabled = c == 1 && mMode == kVtTimeHourOnly;
        const PLRect up{rect.top, rect.left, rect.top + kArrowHeight, rect.right};
        const PLRect value{up.bottom, rect.left, up.bottom + kValueHeight, rect.right};
        const PLRect down{value.bottom, rect.left, rect.bottom, rect.right};
        const VtFaceState upState = disabled ? VtFaceState::Disabled
                                    : (mPressedColumn == c && mPressedPart == -1)
                                        ? VtFaceState::Pressed
                                        : VtFaceState::Normal;
        const VtFaceState downState = disabled ? VtFaceState::Disabled
                                      : (mPressedColumn == c && mPressedPart == 1)
                                          ? VtFaceState::Pressed
                                          : VtFaceState::Normal;
        theme.DrawLightButton(context, up.Insetted(1, 0), upState);
        theme.DrawLightButton(context, down.Insetted(1, 0), downState);
        const PLRGBColor arrow = disabled ? theme.DisabledTextColor() : theme.TextColor();
        theme.DrawArrow(context, up, VtArrow::Up, arrow);
        theme.DrawArrow(context, down, VtArrow::Down, arrow);
        theme.DrawFieldBox(context, value, false, !disabled, -1);
        if (c == mFocus && !disabled) {
            theme.DrawFocusFrame(context, value);
        }
        theme.DrawText(context, ColumnText(c).view(), value,
                       disabled ? theme.DisabledTextColor() : theme.TextColor(), kPLJustifyCenter,
                       c == 2 ? theme.TextFont() : large, 0);
        if (c == 0) {
            const PLRect colon{value.top, rect.right, value.bottom, rect.right + kColumnGap};
            theme.DrawText(context, ":", colon, theme.TextColor(), kPLJustifyCenter, large, 0);
        }
    }
}

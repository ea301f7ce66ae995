// List rows: columns, icons, the check box or radio mark and the row's highlight.
#include "VtListRow.h"

#include <algorithm>

#include "PLBitmap.h"
#include "PLDrawContext.h"
#include "VtTheme.h"

namespace {
constexpr int kMarkColumn = 30;
constexpr int kMarkSize = 16;
}  // namespace

VtListRow::VtListRow(Kind kind, uint32_t id, PLBitmap* icon, const PLBasicString<char>& text,
                     const PLBasicString<char>& secondText, PLBitmap* secondIcon)
    : PLPane(id, PLPoint(0, 0), PLSize(30, 100)),
      mKind(kind),
      mIcon(icon),
      mSecondText(secondText),
      mSecondIcon(secondIcon) {
    PLPane::SetString(text, false);
    PLPane::SetValue(static_cast<long>(id), false);
    PLPane::SetTextColor(VtTheme::Current().TextColor(), false);
    mWidths = {icon != nullptr ? 34 : 0, 0, 0, secondIcon != nullptr ? 30 : 0};
}

void VtListRow::SetColumnWidth(long icon, long text, long secondText, long secondIcon) {
    auto clampWidth = [](long w) {
        return w < 0 ? 0L : (w > kPLScreenWidth ? long(kPLScreenWidth) : w);
    };
    mWidths = {clampWidth(icon), clampWidth(text), clampWidth(secondText), clampWidth(secondIcon)};
    Redraw();
}

void VtListRow::SetExtraTexts(const PLVector<PLBasicString<char>>* texts) {
    mExtra = PLBasicString<char>();
    if (texts == nullptr) {
        return;
    }
    for (const auto& text : *texts) {
        if (!mExtra.IsEmpty()) {
            mExtra.Append(' ');
        }
        mExtra.Append(text);
    }
}

void VtListRow::SetTextColor(const PLRGBColor& color, bool redraw) {
    mCustomColor = true;
    PLPane::SetTextColor(color, redraw);
}

void VtListRow::SetChecked(bool checked, bool redraw) {
    if (IsChecked() != checked) {
        PLPane::SetOnState(checked ? 1 : 0, redraw);
    }
}

void VtListRow::SetFocused(bool focused, bool redraw) {
    if (mFocused != focused) {
        mFocused = focused;
        if (redraw) {
            Redraw();
        }
    }
}

PLRect VtListRow::ColumnRect(size_t column) const {
    // Columns run from the left; the mark keeps the right end. A text column of width 0 takes
    // what the other columns leave.
    const int right = GetSize().h - (mKind == Kind::Plain ? 0 : kMarkColumn);
    int left = 4;
    for (size_t i = 0; i <= column && i < mWidths.size(); ++i) {
        int width = int(mWidths[i]);
        if (i == 1 && width == 0) {
            width = std::max(0, right - int(mWidths[2] + mWidths[3]) - left);
        }
        if (i == column) {
            return {0, left, GetSize().v, std::min(right, left + width)};
        }
        left += width;
    }
    return {};
}

void VtListRow::Draw(PLDrawContext& context) {
    const VtTheme& theme = VtTheme::Current();
    const PLRect bounds = GetBounds();
    const bool active = IsActive();
    context.FillRect(
        bounds, mHighlightChecked && IsChecked() ? theme.HighlightColor() : theme.FieldColor());
    context.DrawLine({bounds.bottom - 1, 4}, {bounds.bottom - 1, bounds.right - 5},
                     {232, 234, 238});
    if (mIcon != nullptr && mWidths[0] > 0) {
        const PLRect column = ColumnRect(0);
        context.DrawBitmap(*mIcon, PLPoint((bounds.Height() - mIcon->GetHeight()) / 2,
                                           column.left + (column.Width() - mIcon->GetWidth()) / 2));
    }
    const PLRGBColor color =
        active ? VtTheme::Resolve(GetTextColor(), theme.TextColor()) : theme.DisabledTextColor();
    const PLRect textColumn = ColumnRect(1);
    theme.DrawText(context, GetString().view(), textColumn, color, mJustification, GetFont(), 2);
    if (mWidths[2] > 0 || !mSecondText.IsEmpty() || !mExtra.IsEmpty()) {
        PLBasicString<char> second = mSecondText;
        if (!mExtra.IsEmpty()) {
            second = second.IsEmpty() ? mExtra : second + PLBasicString<char>(" ") + mExtra;
        }
        PLRect column = ColumnRect(2);
        if (column.IsEmpty()) {
            column = {0, textColumn.right, bounds.bottom, ColumnRect(3).left};
        }
        theme.DrawText(context, second.view(), column, theme.DisabledTextColor(), kPLJustifyRight,
                       GetFont(), 2);
    }
    if (mSecondIcon != nullptr && mWidths[3] > 0) {
        const PLRect column = ColumnRect(3);
        context.DrawBitmap(*mSecondIcon,
                           PLPoint((bounds.Height() - mSecondIcon->GetHeight()) / 2, column.left));
    }
    if (mKind != Kind::Plain) {
        const int top = (bounds.Height() - kMarkSize) / 2;
        const int left = bounds.right - kMarkColumn + (kMarkColumn - kMarkSize) / 2;
        const PLRect mark{top, left, top + kMarkSize, left + kMarkSize};
        if (mKind == Kind::CheckBox) {
            theme.DrawCheckBox(context, mark, IsChecked(), false, active);
        } else {
            theme.DrawRadio(context, mark, IsChecked(), false, active);
        }
    }
    if (mFocused) {
        theme.DrawFocusFrame(context, bounds);
    }
}

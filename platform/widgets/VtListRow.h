// One row of a list: up to four columns (an icon, the text, a second text, a second icon) and a
// check box or radio mark at its right. The list draws the row's checked and focused state; the
// row's id and value are the caller's data (an event id, a command id).
#pragma once

#include <array>

#include "PLPane.h"
#include "PLVector.h"

class PLBitmap;

class VtListRow : public PLPane {
public:
    enum class Kind { Plain, CheckBox, Radio };

    VtListRow(Kind kind, uint32_t id, PLBitmap* icon, const PLBasicString<char>& text,
              const PLBasicString<char>& secondText, PLBitmap* secondIcon);

    Kind GetKind() const { return mKind; }
    // Widths of the icon, text, second-text and second-icon columns. A width of 0 leaves the
    // icon and second columns out; the text column then takes what the others leave.
    void SetColumnWidth(long icon, long text, long secondText, long secondIcon);
    long GetColumnWidth(size_t column) const { return column < 4 ? mWidths[column] : 0; }
    // Further texts shown after the second text, separated by spaces.
    void SetExtraTexts(const PLVector<PLBasicString<char>>* texts);
    void SetTextColor(const PLRGBColor& color, bool redraw = true) override;
    void SetJustification(long justification) { mJustification = justification; }
    // Tints the row while it is checked (radio lists show the choice that way).
    void SetHighlightChecked(bool highlight) { mHighlightChecked = highlight; }
    const PLBasicString<char>& GetSecondText() const { return mSecondText; }

    bool IsChecked() const { return GetOnState() != 0; }
    bool IsFocused() const { return mFocused; }
    // Set by the list.
    void SetChecked(bool checked, bool redraw);
    void SetFocused(bool focused, bool redraw);

    void Draw(PLDrawContext& context) override;
    // The list takes the taps.
    bool HitTest(PLPoint) const override { return false; }
    const char* GetClassName() const override { return "VtListRow"; }

private:
    PLRect ColumnRect(size_t column) const;

    Kind mKind;
    PLBitmap* mIcon;
    PLBasicString<char> mSecondText;
    PLBitmap* mSecondIcon;
    PLBasicString<char> mExtra;
    std::array<long, 4> mWidths{};
    long mJustification = 1;
    bool mHighlightChecked = false;
    bool mCustomColor = false;
    bool mFocused = false;
};

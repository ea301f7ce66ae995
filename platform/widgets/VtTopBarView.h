// The title bar at the top of a screen (29 pixels high): a title on the theme's blue band and,
// for check top bars, a check box with its label at the right. Tapping the check box flips it and
// sends "msup" (sender = the bar's id) with value 0 when it became checked (check all) and 1 when
// it became clear (clear all).
#pragma once

#include "PLView.h"

constexpr int kVtTopBarHeight = 29;
constexpr long kVtTopBarCheckAll = 0;
constexpr long kVtTopBarClearAll = 1;

class VtTopBarView : public PLView {
public:
    VtTopBarView(uint32_t id, PLPoint location, long width, const PLBasicString<char>& title,
                 const PLBasicString<char>& secondText, bool hasCheckBox);

    bool HasCheckBox() const { return mHasCheckBox; }
    // 0 clear, 1 checked.
    void SetCheckStatus(long status, bool redraw = true);
    long GetCheckStatus() const { return GetOnState(); }
    void SetJustification(long justification) { mJustification = justification; }
    const PLBasicString<char>& GetSecondText() const { return mSecondText; }

    void Draw(PLDrawContext& context) override;
    void MouseDown(PLPoint where, PLMouseButton button) override;
    void MouseUp(PLPoint where, PLMouseButton button) override;
    const char* GetClassName() const override { return "VtTopBarView"; }

    // The check area (box and its label) in bar coordinates; empty without a check box.
    PLRect CheckRect() const;
    // Flips the check box as a tap does.
    void ToggleCheck();

private:
    PLBasicString<char> mSecondText;
    bool mHasCheckBox;
    long mJustification = 0;
    bool mPressed = false;
};

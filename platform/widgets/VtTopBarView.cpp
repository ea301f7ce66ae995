// Top bars: the title band and the check-all box.
#include "VtTopBarView.h"

#include <algorithm>

#include "PLDrawContext.h"
#include "PLFont.h"
#include "PLMessage.h"
#include "VtTheme.h"

namespace {
constexpr int kBoxSize = 16;
}

VtTopBarView::VtTopBarView(uint32_t id, PLPoint location, long width,
                           const PLBasicString<char>& title, const PLBasicString<char>& secondText,
                           bool hasCheckBox)
    : PLView(id, location,
             PLSize(kVtTopBarHeight, int(std::clamp<long>(width, 1, kPLScreenWidth)))),
      mSecondText(secondText),
      mHasCheckBox(hasCheckBox) {
    PLPane::SetString(title, false);
    PLPane::SetTextColor(VtTheme::kWhite, false);
}

void VtTopBarView::SetCheckStatus(long status, bool redraw) {
    SetOnState(status != 0 ? 1 : 0, redraw);
}

PLRect VtTopBarView::CheckRect() const {
    if (!mHasCheckBox) {
        return {};
    }
    const PLFont* font = GetFont() != nullptr ? GetFont() : VtTheme::Current().TextFont();
    const int width =
        std::min(GetSize().h / 2, font->MeasureText(mSecondText.view()) + kBoxSize + 18);
    return {0, GetSize().h - width, GetSize().v, GetSize().h};
}

void VtTopBarView::Draw(PLDrawContext& context) {
    const VtTheme& theme = VtTheme::Current();
    theme.DrawBand(context, GetBounds());
    PLFont* font = GetFont() != nullptr ? GetFont() : theme.TextFont();
    const PLRGBColor white = VtTheme::kWhite;
    PLRect titleRect = GetBounds();
    if (mHasCheckBox) {
        const PLRect check = CheckRect();
        titleRect.right = check.left;
        if (mPressed) {
            theme.FillGradient(context, check.Insetted(2, 0), {255, 184, 72}, {240, 130, 0});
        }
        const int top = (GetSize().v - kBoxSize) / 2;
        const PLRect box{top, check.right - kBoxSize - 6, top + kBoxSize, check.right - 6};
        theme.DrawFace(context, box, white, {232, 238, 250},
                       mPressed ? VtTheme::kOrange : PLRGBColor{0, 60, 160});
        if (GetCheckStatus() != 0) {
            // A blue tick in a white box: a blue box would vanish on the band.
            for (int d = 0; d < 2; ++d) {
                context.DrawLine({box.top + 8 + d, box.left + 3}, {box.top + 11 + d, box.left + 6},
                                 VtTheme::kBlue);
                context.DrawLine({box.top + 11 + d, box.left + 6}, {box.top + 4 + d, box.left + 12},
                                 VtTheme::kBlue);
            }
        }
        theme.DrawText(context, mSecondText.view(), {0, check.left, GetSize().v, box.left - 2},
                       white, kPLJustifyRight, font, 2);
    } else if (!mSecondText.IsEmpty()) {
        const int width = std::min(GetSize().h / 2, font->MeasureText(mSecondText.view()) + 8);
        theme.DrawText(context, mSecondText.view(),
                       {0, GetSize().h - width, GetSize().v, GetSize().h}, {214, 228, 255},
                       kPLJustifyRight, font, 4);
        titleRect.right -= width;
    }
    theme.DrawText(context, GetString().view(), titleRect, VtTheme::Resolve(GetTextColor(), white),
                   mJustification, font, 8);
}

void VtTopBarView::MouseDown(PLPoint where, PLMouseButton) {
    mPressed = mHasCheckBox && CheckRect().Contains(where);
    if (mPressed) {
        Redraw();
    }
}

void VtTopBarView::MouseUp(PLPoint where, PLMouseButton) {
    const bool completed = mPressed && CheckRect().Contains(where);
    if (mPressed) {
        mPressed = false;
        Redraw();
    }
    if (completed) {
        ToggleCheck();
    }
}

void VtTopBarView::ToggleCheck() {
    if (!mHasCheckBox) {
        return;
    }
    const bool nowChecked = GetCheckStatus() == 0;
    SetCheckStatus(nowChecked ? 1 : 0, true);
    PLMessage message(kPLMsgUp, GetID(),
                      static_cast<uint32_t>(nowChecked ? kVtTopBarCheckAll : kVtTopBarClearAll),
                      kEmptyString, kEmptyString);
    BroadcastMessage(&message);
}

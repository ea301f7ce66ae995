// Choice controls: the chosen entry in a box with an arrow, opening the menu below.
#include "VtComboControl.h"

#include "PLDrawContext.h"
#include "PLMenu.h"
#include "PLMessage.h"
#include "VtComboMenuItem.h"
#include "VtMenuPopup.h"
#include "VtTheme.h"

namespace {
constexpr int kArrowWidth = 22;
}

VtComboControl::VtComboControl(uint32_t id, PLPoint location, PLSize size, PLMenu* menu,
                               long captionWidth, const PLBasicString<char>& caption)
    : PLControl(id, location, size),
      mMenu(menu),
      mCaptionWidth(captionWidth < 0 ? 0 : captionWidth) {
    mCaption = caption;
    PLPane::SetTextColor(VtTheme::Current().TextColor(), false);
    SyncFromMenu(false);
}

void VtComboControl::SetMenu(PLMenu* menu, bool redraw) {
    mMenu = menu;
    SyncFromMenu(redraw);
}

void VtComboControl::SetValue(long value, bool redraw) {
    if (mMenu != nullptr) {
        const size_t index = mMenu->IndexOf(static_cast<uint32_t>(value));
        if (index != 0) {
            mMenu->SetSelectedItemByIndex(index);
        }
    }
    PLControl::SetValue(value, false);
    PLPane::SetString(GetShownLabel(), false);
    if (redraw) {
        Redraw();
    }
}

void VtComboControl::SyncFromMenu(bool redraw) {
    const PLMenuItem* item = mMenu != nullptr ? mMenu->GetSelectedItem() : nullptr;
    if (item != nullptr) {
        PLControl::SetValue(item->GetID(), false);
    }
    PLPane::SetString(GetShownLabel(), false);
    if (redraw) {
        Redraw();
    }
}

PLBasicString<char> VtComboControl::GetShownLabel() const {
    const PLMenuItem* item = mMenu != nullptr ? mMenu->GetSelectedItem() : nullptr;
    return item != nullptr ? item->GetLabel() : PLBasicString<char>();
}

PLRect VtComboControl::BoxRect() const {
    PLRect box = GetBounds();
    box.left = std::min<int>(box.right, box.left + int(mCaptionWidth));
    return box;
}

void VtComboControl::Draw(PLDrawContext& context) {
    const VtTheme& theme = VtTheme::Current();
    PLFont* font = GetFont() != nullptr ? GetFont() : theme.TextFont();
    const bool active = IsActive();
    const PLRGBColor textColor = active ? GetTextColor() : theme.DisabledTextColor();
    if (mCaptionWidth > 0) {
        theme.DrawText(context, mCaption.view(), {0, 0, GetSize().v, int(mCaptionWidth)}, textColor,
                       kPLJustifyLeft, font, 2);
    }
    const PLRect box = BoxRect();
    theme.DrawFieldBox(context, box, IsPressed(), active, -1);
    const PLRect arrow{box.top + 1, box.right - kArrowWidth, box.bottom - 1, box.right - 1};
    theme.DrawFace(context, arrow, {250, 250, 252}, {222, 226, 232}, {190, 194, 202});
    theme.DrawArrow(context, arrow, VtArrow::Down,
                    active ? theme.TextColor() : theme.DisabledTextColor());

    PLRect label{box.top, box.left + 6, box.bottom, box.right - kArrowWidth - 2};
    const PLMenuItem* item = mMenu != nullptr ? mMenu->GetSelectedItem() : nullptr;
    if (const auto* swatchItem = dynamic_cast<const VtComboMenuItem*>(item)) {
        const int size = std::min(14, box.Height() - 8);
        const int top = box.top + (box.Height() - size) / 2;
        const PLRect swatch{top, label.left, top + size, label.left + size};
        context.FillRect(swatch, swatchItem->GetSwatch());
        context.FrameRect(swatch, {90, 94, 102});
        label.left += size + 6;
    }
    if (item != nullptr) {
        theme.DrawText(context, item->GetLabel().view(), label, textColor, kPLJustifyLeft, font, 0);
    }
}

void VtComboControl::MouseDown(PLPoint where, PLMouseButton) {
    if (IsActive()) {
        mArmed = BoxRect().Contains(where);
        SetPressed(mArmed);
    }
}

void VtComboControl::MouseMove(PLPoint where, PLMouseButton) {
    if (mArmed) {
        SetPressed(BoxRect().Contains(where));
    }
}

void VtComboControl::MouseUp(PLPoint where, PLMouseButton) {
    const bool completed = mArmed && BoxRect().Contains(where) && IsActive();
    mArmed = false;
    SetPressed(false);
    if (completed) {
        OpenMenu();
    }
}

void VtComboControl::OpenMenu() {
    if (mMenu == nullptr || mMenu->GetItemCount() == 0) {
        return;
    }
    PLRect anchor = BoxRect();
    const PLRect screen = GetScreenRect();
    anchor.Offset(screen.top, screen.left);
    SetPressed(true);
    const size_t chosen = VtMenuPopup::Run(*mMenu, anchor, VtMenuPopup::Placement::Below, true);
    SetPressed(false);
    if (chosen == 0) {
        return;
    }
    const PLMenuItem* item = mMenu->GetItemByIndex(chosen);
    SetValue(item->GetID(), true);
    PLMessage selected(kPLMsgSelect, GetID(), item->GetID(), kEmptyString, kEmptyString);
    BroadcastMessage(&selected);
}

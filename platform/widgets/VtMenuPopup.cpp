// Menu popups: placement next to their anchor, drawing of entries, pen and key handling.
#include "VtMenuPopup.h"

#include <algorithm>

#include "PLDrawContext.h"
#include "PLFont.h"
#include "PLMenu.h"
#include "VtComboMenuItem.h"
#include "VtMenu.h"
#include "VtModalRunner.h"
#include "VtTheme.h"

namespace {

constexpr int kSwatchSize = 16;
constexpr int kPadding = 10;
constexpr int kMarkWidth = 20;
constexpr int kDragThreshold = 6;

bool HasSwatches(const PLMenu& menu) {
    for (size_t i = 1; i <= menu.GetItemCount(); ++i) {
        if (dynamic_cast<const VtComboMenuItem*>(menu.GetItemByIndex(i)) != nullptr) {
            return true;
        }
    }
    return false;
}

}  // namespace

VtMenuPopup::VtMenuPopup(PLMenu& menu, const PLRect& anchor, Placement placement, bool markSelected)
    : PLView(menu.GetID(), PLPoint(0, 0), PLSize(kPLScreenHeight, kPLScreenWidth)),
      mMenu(menu),
      mFont(nullptr),
      mMarkSelected(markSelected) {
    const auto* vtMenu = dynamic_cast<const VtMenu*>(&menu);
    mFont = vtMenu != nullptr && vtMenu->GetFont() != nullptr ? vtMenu->GetFont()
                                                              : VtTheme::Current().TextFont();
    Layout(anchor, placement);
}

size_t VtMenuPopup::Run(PLMenu& menu, const PLRect& anchor, Placement placement,
                        bool markSelected) {
    if (menu.GetItemCount() == 0) {
        return 0;
    }
    VtMenuPopup popup(menu, anchor, placement, markSelected);
    VtModalRunner::Run(popup, [&popup] { return popup.mDone; });
    return popup.mChosen;
}

void VtMenuPopup::Layout(const PLRect& anchor, Placement placement) {
    const size_t count = mMenu.GetItemCount();
    int textWidth = 0;
    for (size_t i = 1; i <= count; ++i) {
        textWidth =
            std::max(textWidth, mFont->MeasureText(mMenu.GetItemByIndex(i)->GetLabel().view()));
    }
    int width = textWidth + 2 * kPadding + (HasSwatches(mMenu) ? kSwatchSize + 8 : 0) +
                (mMarkSelected ? kMarkWidth : 0) + 2;
    width = std::clamp(std::max(width, anchor.Width()), 100, kPLScreenWidth);

    const auto* vtMenu = dynamic_cast<const VtMenu*>(&mMenu);
    const size_t wanted = std::min<size_t>(count, vtMenu != nullptr ? vtMenu->GetVisibleRows() : 6);
    const int above = std::max(0, anchor.top - kPLStatusHeight);
    const int below = std::max(0, kPLScreenHeight - anchor.bottom);
    const int needed = int(wanted) * kRowHeight + 2;
    // Open where asked unless the other side has room and this one has not.
    if (placement == Placement::Above && above < needed && below > above) {
        placement = Placement::Below;
    } else if (placement == Placement::Below && below < needed && above > below) {
        placement = Placement::Above;
    }
    const int room = placement == Placement::Above ? above : below;
    mVisible = std::clamp<size_t>(size_t(std::max(0, room - 2) / kRowHeight), 1, wanted);
    const int height = int(mVisible) * kRowHeight + 2;
    const int left = std::clamp(anchor.left, 0, kPLScreenWidth - width);
    const int top = placement == Placement::Above
                        ? std::max(0, anchor.top - height)
                        : std::min(anchor.bottom, kPLScreenHeight - height);
    mBox = PLRect(top, left, top + height, left + width);

    const size_t selected = mMenu.GetSelectedIndex();
    if (mMarkSelected && IsChoosable(selected)) {
        mHighlight = selected;
        ScrollToShow(selected);
    }
}

size_t VtMenuPopup::EntryAt(PLPoint local) const {
    const PLRect inner = mBox.Insetted(1, 1);
    if (!inner.Contains(local)) {
        return 0;
    }
    const size_t index = mFirst + size_t((local.v - inner.top) / kRowHeight);
    return index <= mMenu.GetItemCount() ? index : 0;
}

bool VtMenuPopup::IsChoosable(size_t index) const {
    const PLMenuItem* item = mMenu.GetItemByIndex(index);
    return item != nullptr && item->IsEnabled();
}

void VtMenuPopup::ScrollToShow(size_t index) {
    if (index == 0) {
        return;
    }
    if (index < mFirst) {
        mFirst = index;
    } else if (index >= mFirst + mVisible) {
        mFirst = index - mVisible + 1;
    }
}

void VtMenuPopup::Draw(PLDrawContext& context) {
    const VtTheme& theme = VtTheme::Current();
    // A soft shadow to the right and below lifts the box off the screen.
    context.FillRect({mBox.top + 3, mBox.right, mBox.bottom + 3, mBox.right + 3}, {120, 124, 132});
    context.FillRect({mBox.bottom, mBox.left + 3, mBox.bottom + 3, mBox.right + 3},
                     {120, 124, 132});
    context.FillRect(mBox, theme.FieldColor());
    context.FrameRect(mBox, {60, 64, 72});
    const PLRect inner = mBox.Insetted(1, 1);
    for (size_t i = 0; i < mVisible; ++i) {
        const size_t index = mFirst + i;
        if (index > mMenu.GetItemCount()) {
            break;
        }
        const int top = inner.top + int(i) * kRowHeight;
        DrawEntry(context, index, {top, inner.left, top + kRowHeight, inner.right});
    }
    const size_t count = mMenu.GetItemCount();
    if (count > mVisible) {
        // A thin thumb at the right edge tells that more entries scroll.
        const int track = inner.Height();
        const int thumb = std::max(8, track * int(mVisible) / int(count));
        const int at = inner.top + (track - thumb) * int(mFirst - 1) / int(count - mVisible);
        context.FillRect({at, inner.right - 3, at + thumb, inner.right}, {150, 154, 162});
    }
}

void VtMenuPopup::DrawEntry(PLDrawContext& context, size_t index, const PLRect& row) {
    const VtTheme& theme = VtTheme::Current();
    const PLMenuItem* item = mMenu.GetItemByIndex(index);
    const bool choosable = item->IsEnabled();
    const bool lit = choosable && (mPressed != 0 ? mPressed == index : mHighlight == index);
    if (lit) {
        theme.FillGradient(context, row, {255, 178, 60}, {255, 145, 0});
    } else if (index > mFirst) {
        context.DrawLine({row.top, row.left + 6}, {row.top, row.right - 7}, {232, 234, 238});
    }
    PLRect text = row;
    text.left += kPadding;
    if (const auto* swatchItem = dynamic_cast<const VtComboMenuItem*>(item)) {
        const int top = row.top + (row.Height() - kSwatchSize) / 2;
        const PLRect swatch{top, text.left, top + kSwatchSize, text.left + kSwatchSize};
        context.FillRect(swatch, swatchItem->GetSwatch());
        context.FrameRect(swatch, {90, 94, 102});
        text.left += kSwatchSize + 8;
    }
    if (mMarkSelected) {
        text.right -= kMarkWidth;
        if (index == mMenu.GetSelectedIndex()) {
            const PLRect mark{row.top + 8, row.right - kMarkWidth, row.bottom - 8, row.right - 6};
            theme.DrawCheckBox(context, mark, true, false, choosable);
        }
    }
    PLRGBColor color = theme.TextColor();
    if (!choosable) {
        color = theme.DisabledTextColor();
    } else if (lit) {
        color = VtTheme::kWhite;
    }
    theme.DrawText(context, item->GetLabel().view(), text, color, kPLJustifyLeft, mFont, 0);
}

void VtMenuPopup::Finish(size_t chosen) {
    mChosen = chosen;
    mDone = true;
}

void VtMenuPopup::MouseDown(PLPoint where, PLMouseButton) {
    mDragging = false;
    mDragStart = mBox.Contains(where) ? where.v : -1;
    mDragFirst = mFirst;
    mPressed = EntryAt(where);
    Redraw();
}

void VtMenuPopup::MouseMove(PLPoint where, PLMouseButton) {
    if (mDragStart < 0) {
        return;
    }
    const int dy = where.v - mDragStart;
    const size_t count = mMenu.GetItemCount();
    if (count > mVisible && (mDragging || dy > kDragThreshold || dy < -kDragThreshold)) {
        // Dragging the box scrolls the entries; a drag never chooses.
        mDragging = true;
        mPressed = 0;
        const long first = long(mDragFirst) - dy / kRowHeight;
        mFirst = size_t(std::clamp<long>(first, 1, long(count - mVisible + 1)));
    } else if (!mDragging) {
        mPressed = EntryAt(where);
    }
    Redraw();
}

void VtMenuPopup::MouseUp(PLPoint where, PLMouseButton) {
    const bool outside = mDragStart < 0 && !mBox.Contains(where);
    const size_t entry = mDragging ? 0 : EntryAt(where);
    const bool same = entry != 0 && entry == mPressed;
    mPressed = 0;
    mDragStart = -1;
    if (outside) {
        Finish(0);
    } else if (same && IsChoosable(entry)) {
        Finish(entry);
    }
    Redraw();
}

void VtMenuPopup::MoveHighlight(int delta) {
    const size_t count = mMenu.GetItemCount();
    size_t index = mHighlight;
    for (size_t step = 0; step < count; ++step) {
        if (index == 0) {
            index = delta > 0 ? 1 : count;
        } else if (delta > 0) {
            index = index >= count ? 1 : index + 1;
        } else {
            index = index <= 1 ? count : index - 1;
        }
        if (IsChoosable(index)) {
            mHighlight = index;
            ScrollToShow(index);
            Redraw();
            return;
        }
    }
}

bool VtMenuPopup::DoKeyCommand(char key, short, PLKeyModifiers) {
    switch (static_cast<uint8_t>(key)) {
        case kPLKeyUp:
            MoveHighlight(-1);
            break;
        case kPLKeyDown:
            MoveHighlight(1);
            break;
        case kPLKeyOk:
            if (IsChoosable(mHighlight)) {
                Finish(mHighlight);
            }
            break;
        case kPLKeyLeft:
        case kPLKeyRight:
            Finish(0);
            break;
        default:
            break;
    }
    // A modal popup keeps every key from the views below.
    return true;
}

// Popup buttons: open the menu, select the choice in it and report it with "msel".
#include "VtPopupButton.h"

#include "PLMenu.h"
#include "PLMessage.h"
#include "VtMenuPopup.h"

VtPopupButton::VtPopupButton(uint32_t id, PLPoint location, PLSize size, VtButtonStyle style,
                             const PLBasicString<char>& text, PLMenu* menu, long direction)
    : VtButton(id, location, size, style, nullptr, text, kVtButtonPush),
      mMenu(menu),
      mDirection(direction) {}

void VtPopupButton::Activate() {
    if (mMenu == nullptr || mMenu->GetItemCount() == 0) {
        return;
    }
    const auto placement =
        mDirection == kVtPopupDown ? VtMenuPopup::Placement::Below : VtMenuPopup::Placement::Above;
    // The button stays pressed in while its menu is open.
    SetPressed(true);
    const size_t chosen = VtMenuPopup::Run(*mMenu, GetScreenRect(), placement, mMarkSelected);
    SetPressed(false);
    if (chosen == 0 || !mMenu->SetSelectedItemByIndex(chosen)) {
        return;
    }
    const PLMenuItem* item = mMenu->GetItemByIndex(chosen);
    if (mLabelFollows) {
        SetString(item->GetLabel(), true);
    }
    PLMessage selected(kPLMsgSelect, GetID(), item->GetID(), kEmptyString, kEmptyString);
    BroadcastMessage(&selected);
}

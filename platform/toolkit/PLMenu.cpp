// Menus: an owned, ordered list of items with a 1-based selection.
#include "PLMenu.h"

void PLMenu::AddMenuItem(PLMenuItem* item) {
    if (item == nullptr) {
        return;
    }
    mItems.emplace_back(item);
}

PLMenuItem* PLMenu::GetItemByIndex(size_t index) const {
    if (index == 0 || index > mItems.size()) {
        return nullptr;
    }
    return mItems[index - 1].get();
}

PLMenuItem* PLMenu::FindItem(uint32_t id) const {
    return GetItemByIndex(IndexOf(id));
}

size_t PLMenu::IndexOf(uint32_t id) const {
    for (size_t i = 0; i < mItems.size(); ++i) {
        if (mItems[i]->GetID() == id) {
            return i + 1;
        }
    }
    return 0;
}

bool PLMenu::EnableItem(uint32_t id, bool enabled) {
    PLMenuItem* item = FindItem(id);
    if (item == nullptr) {
        return false;
    }
    item->SetEnabled(enabled);
    return true;
}

bool PLMenu::SetSelectedItemByIndex(size_t index) {
    if (index == 0 || index > mItems.size()) {
        return false;
    }
    mSelected = index;
    return true;
}

bool PLMenu::SetSelectedItemByID(uint32_t id) {
    return SetSelectedItemByIndex(IndexOf(id));
}

uint32_t PLMenu::GetSelectedItemID() const {
    const PLMenuItem* item = GetSelectedItem();
    return item == nullptr ? 0 : item->GetID();
}

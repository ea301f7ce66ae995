// A menu: an ordered list of items (owned), one of which is selected. Indexes are 1-based, as the
// platform numbers them; 0 means "none".
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "PLBasicString.h"
#include "PLMenuItem.h"

class PLMenu {
public:
    PLMenu(const PLBasicString<char>& title, uint32_t id) : mTitle(title), mID(id) {}
    virtual ~PLMenu() = default;

    uint32_t GetID() const { return mID; }
    const PLBasicString<char>& GetTitle() const { return mTitle; }

    // The menu owns the item from now on.
    void AddMenuItem(PLMenuItem* item);
    size_t GetItemCount() const { return mItems.size(); }
    // 1-based; null for 0 or past the end.
    PLMenuItem* GetItemByIndex(size_t index) const;
    PLMenuItem* FindItem(uint32_t id) const;
    // 1-based index of the item with the id; 0 when none.
    size_t IndexOf(uint32_t id) const;
    // Enables or disables the item with the id; false when there is none.
    bool EnableItem(uint32_t id, bool enabled);

    // Selects by 1-based index; an index out of range selects nothing and returns false.
    bool SetSelectedItemByIndex(size_t index);
    bool SetSelectedItemByID(uint32_t id);
    size_t GetSelectedIndex() const { return mSelected; }
    PLMenuItem* GetSelectedItem() const { return GetItemByIndex(mSelected); }
    // The id of the selected item; 0 when none.
    uint32_t GetSelectedItemID() const;

private:
    PLBasicString<char> mTitle;
    uint32_t mID;
    std::vector<std::unique_ptr<PLMenuItem>> mItems;
    size_t mSelected = 0;
};

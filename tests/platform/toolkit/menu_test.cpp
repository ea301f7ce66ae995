// Menus: 1-based selection by index and id, lookups and enabling.
#include <gtest/gtest.h>

#include "PLMenu.h"

namespace {

TEST(PLMenuTest, SelectionByIndexAndID) {
    PLMenu menu("", 11820);
    menu.AddMenuItem(new PLMenuItem("Month", 11101));
    menu.AddMenuItem(new PLMenuItem("Week", 11201));
    menu.AddMenuItem(new PLMenuItem("Day", 11301));
    menu.AddMenuItem(nullptr);  // ignored
    ASSERT_EQ(menu.GetItemCount(), 3u);
    // `selected` and `selectedID`: the selection afterwards.
    struct Row {
        const char* name;
        bool byID;
        size_t indexOrID;
        bool ok;
        size_t selected;
        uint32_t selectedID;
    } rows[] = {
        {"nothing yet", false, 0, false, 0, 0},
        {"first", false, 1, true, 1, 11101},
        {"last", false, 3, true, 3, 11301},
        {"past the end keeps last", false, 4, false, 3, 11301},
        {"zero keeps last", false, 0, false, 3, 11301},
        {"by id", true, 11201, true, 2, 11201},
        {"unknown id keeps", true, 99, false, 2, 11201},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const bool ok = row.byID ? menu.SetSelectedItemByID(uint32_t(row.indexOrID))
                                 : menu.SetSelectedItemByIndex(row.indexOrID);
        EXPECT_EQ(ok, row.ok);
        EXPECT_EQ(std::make_pair(menu.GetSelectedIndex(), menu.GetSelectedItemID()),
                  std::make_pair(row.selected, row.selectedID));
    }
    EXPECT_EQ(menu.IndexOf(11301), 3u);
    EXPECT_EQ(menu.IndexOf(5), 0u);
    EXPECT_EQ(menu.GetItemByIndex(4), nullptr);
    EXPECT_EQ(menu.FindItem(11201)->GetLabel(), "Week");
    EXPECT_TRUE(menu.EnableItem(11201, false));
    EXPECT_FALSE(menu.FindItem(11201)->IsEnabled());
    EXPECT_FALSE(menu.EnableItem(5, false));
}

}  // namespace

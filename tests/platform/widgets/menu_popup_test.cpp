// Menu popups: where the box opens against its button, how many entries it shows, which entry a
// point names, and that a menu without entries opens nothing.
#include <gtest/gtest.h>

#include <string>

#include "VtMenuFactory.h"

namespace {

std::unique_ptr<VtMenu> MakeMenu(size_t entries, long visibleRows) {
    std::unique_ptr<VtMenu> menu(MakeVtMenu(kEmptyString, 11820, visibleRows, nullptr));
    for (size_t i = 1; i <= entries; ++i) {
        menu->AddMenuItem(new PLMenuItem(("entry " + std::to_string(i)).c_str(), uint32_t(i)));
    }
    return menu;
}

struct PlacementCase {
    const char* name;
    size_t entries;
    long visibleRows;
    PLRect anchor;  // screen coordinates
    VtMenuPopup::Placement placement;
    int top;
    int bottom;
};

class MenuPopupPlacement : public ::testing::TestWithParam<PlacementCase> {};

TEST_P(MenuPopupPlacement, TheBoxOpensWhereThereIsRoom) {
    const PlacementCase& c = GetParam();
    auto menu = MakeMenu(c.entries, c.visibleRows);
    VtMenuPopup popup(*menu, c.anchor, c.placement, true);
    EXPECT_EQ(popup.GetBox().top, c.top);
    EXPECT_EQ(popup.GetBox().bottom, c.bottom);
    EXPECT_GE(popup.GetBox().left, 0);
    EXPECT_LE(popup.GetBox().right, kPLScreenWidth);
    EXPECT_EQ(popup.GetID(), 11820u) << "the popup carries the menu's id";
}

constexpr auto kAbove = VtMenuPopup::Placement::Above, kBelow = VtMenuPopup::Placement::Below;

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Placements, MenuPopupPlacement, ::testing::Values(
        // The options button of the bottom bar: four entries above it.
        PlacementCase{"above_the_bottom_bar", 4, 6, {284, 0, 320, 43}, kAbove, 284 - 122, 284},
        // Nine entries, six shown.
        PlacementCase{"six_rows_of_nine", 9, 6, {284, 43, 320, 197}, kAbove, 284 - 182, 284},
        // Below a control near the bottom there is no room: it opens above.
        PlacementCase{"flips_above_when_below_is_short", 3, 6, {280, 10, 300, 100}, kBelow, 280 - 92, 280},
        // Too little room either way: as many rows as fit on the roomier side (five above).
        PlacementCase{"fewer_rows_on_the_roomier_side", 8, 8, {200, 10, 230, 100}, kBelow, 200 - 152, 200}),
    [](const ::testing::TestParamInfo<PlacementCase>& info) { return std::string(info.param.name); });
// clang-format on

TEST(MenuPopup, PointsNameEntriesInsideTheBoxOnly) {
    auto menu = MakeMenu(3, 6);
    VtMenuPopup popup(*menu, PLRect(100, 20, 130, 120), kBelow, false);
    const PLRect box = popup.GetBox();
    EXPECT_EQ(popup.EntryAt(PLPoint(box.top + 1, box.left + 5)), 1u);
    EXPECT_EQ(popup.EntryAt(PLPoint(box.top + 1 + 30, box.left + 5)), 2u);
    EXPECT_EQ(popup.EntryAt(PLPoint(box.bottom - 2, box.left + 5)), 3u);
    EXPECT_EQ(popup.EntryAt(PLPoint(box.top - 1, box.left + 5)), 0u);
    EXPECT_EQ(popup.EntryAt(PLPoint(box.top + 5, box.right + 3)), 0u);
}

TEST(MenuPopup, AMenuWithoutEntriesOpensNothing) {
    auto menu = MakeMenu(0, 6);
    EXPECT_EQ(VtMenuPopup::Run(*menu, PLRect(284, 0, 320, 43), kAbove, true), 0u);
}

}  // namespace

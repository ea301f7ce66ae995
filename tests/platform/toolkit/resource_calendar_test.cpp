// The compiled calendar.rsc: its bitmaps and texts fit the controls that show them (that it holds
// every required id, the resource compiler checks when it builds the file).
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "PLBitmap.h"
#include "PLBitmapFamily.h"
#include "PLFont.h"
#include "PLResourceFileManager.h"
#include "PLTypes.h"

namespace {

class CalendarResourceTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(manager.LoadFromFile(CAL_BINARY_DIR "/share/calendar.rsc", false))
            << manager.GetLastError() << " (build the calendar_rsc target)";
    }
    PLResourceFileManager manager{10003, true};
};

TEST_F(CalendarResourceTest, BitmapsAndButtonFamiliesHaveTheSizesTheirViewsUse) {
    // A family's normal and pressed bitmaps both have the size, and pressing must show.
    // clang-format off
    struct Row { const char* name; uint32_t type, id; int minWidth, maxWidth, minHeight, maxHeight; };
    const uint32_t kBitmap = kPLResBitmap, kFamily = kPLResBitmapFamily;
    const Row rows[] = {
        {"month weekday band", kBitmap, 10280, 1, 1, 29, 29},
        {"week name strip, pressed", kBitmap, 10290, 1, 1, 24, 24},
        {"week name strip", kBitmap, 10300, 1, 1, 24, 24},
        {"week number strip, pressed", kBitmap, 10310, 1, 1, 21, 21},
        {"week number strip", kBitmap, 10320, 1, 1, 21, 21},
        {"lunar strip", kBitmap, 10340, 1, 1, 30, 30},
        {"alarm icon", kBitmap, 10130, 12, 24, 12, 24},
        {"repeat icon", kBitmap, 10240, 12, 24, 12, 24},
        {"day button pressed", kBitmap, 10370, 20, 28, 20, 30},
        {"day button", kBitmap, 10380, 20, 28, 20, 30},
        {"error icon", kBitmap, 32050, 24, 32, 24, 32},
        {"info icon", kBitmap, 32060, 24, 32, 24, 32},
        {"question icon", kBitmap, 32130, 24, 32, 24, 32},
        {"warning icon", kBitmap, 32180, 24, 32, 24, 32},
        {"hour label", kFamily, 10091, 42, 42, 24, 24},
        {"centre bar button", kFamily, 30371, 154, 154, 36, 36},
        {"centre popup button", kFamily, 30391, 154, 154, 36, 36},
        {"side button", kFamily, 30401, 43, 43, 36, 36},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const void* resource = manager.GetResource(row.type, row.id, kPLWildcard);
        ASSERT_NE(resource, nullptr);
        std::vector<const PLBitmap*> bitmaps = {static_cast<const PLBitmap*>(resource)};
        if (row.type == kFamily) {
            auto family = static_cast<const PLBitmapFamily*>(resource);
            bitmaps = {family->GetBitmap(kPLBitmapNormal), family->GetBitmap(kPLBitmapPressed)};
            ASSERT_NE(bitmaps[1], nullptr);
            const int x = row.minWidth / 2, y = row.minHeight / 2;
            EXPECT_NE(bitmaps[0]->GetPixel(x, y), bitmaps[1]->GetPixel(x, y)) << "pressing shows";
        }
        for (const PLBitmap* bitmap : bitmaps) {
            EXPECT_GE(bitmap->GetWidth(), row.minWidth);
            EXPECT_LE(bitmap->GetWidth(), row.maxWidth);
            EXPECT_GE(bitmap->GetHeight(), row.minHeight);
            EXPECT_LE(bitmap->GetHeight(), row.maxHeight);
        }
    }
}

TEST_F(CalendarResourceTest, TextsFitTheirControls) {
    // The widths a control leaves for its text at 16 pixels: cells and buttons less a small
    // margin, radio labels less the radio mark, choices less their arrow.
    // clang-format off
    struct Row { const char* name; std::vector<uint32_t> ids; int maxWidth; };
    const Row rows[] = {
        {"short weekday names in 26-px buttons", {30532, 30542, 30552, 30562, 30572, 30582, 30592}, 26},
        {"labels of 70-px radios", {10502, 10652}, 50},
        {"labels of 90- and 105-px radios", {10572, 10592}, 70},
        {"80-px labels", {10582}, 80},
        {"80-px week-of-month choice", {10602, 10612, 10622, 10632, 10642}, 64},
        {"102-px weekday choice", {30462, 30472, 30482, 30492, 30502, 30512, 30522}, 86},
        {"152-px month choice", {30602, 30612, 30622, 30632, 30642, 30652, 30662, 30672, 30682, 30692, 30702, 30712}, 136},
        {"centre buttons", {30092, 30102, 11022, 30122, 10032, 10042, 10052}, 140},
        {"chooser rows of 120 px", {10452, 10462, 10472, 10482, 10492}, 120},
    };
    // clang-format on
    for (const Row& row : rows) {
        for (uint32_t id : row.ids) {
            SCOPED_TRACE(std::string(row.name) + ": " + std::to_string(id));
            PLBasicString<char> text;
            ASSERT_TRUE(manager.GetText(id, text) && text.Length() > 0);
            EXPECT_LE(PLFont::GetFont(PLFourCC("UC16"))->MeasureText(text.str()), row.maxWidth)
                << text.str();
        }
    }
}

}  // namespace

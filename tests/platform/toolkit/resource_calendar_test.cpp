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
    // clang-format off
    struct Row { const char* name; uint32_t id; int minWidth, maxWidth, minHeight, maxHeight; };
    const Row bitmaps[] = {
        {"month weekday band", 10280, 1, 1, 29, 29},
        {"week name strip, pressed", 10290, 1, 1, 24, 24},
        {"week name strip", 10300, 1, 1, 24, 24},
        {"week number strip, pressed", 10310, 1, 1, 21, 21},
        {"week number strip", 10320, 1, 1, 21, 21},
        {"lunar strip", 10340, 1, 1, 30, 30},
        {"alarm icon", 10130, 12, 24, 12, 24},
        {"repeat icon", 10240, 12, 24, 12, 24},
        {"day button pressed", 10370, 20, 28, 20, 30},
        {"day button", 10380, 20, 28, 20, 30},
        {"error icon", 32050, 24, 32, 24, 32},
        {"info icon", 32060, 24, 32, 24, 32},
        {"question icon", 32130, 24, 32, 24, 32},
        {"warning icon", 32180, 24, 32, 24, 32},
    };
    // Families: exact sizes, and pressing must show.
    const Row families[] = {
        {"hour label", 10091, 42, 42, 24, 24},
        {"centre bar button", 30371, 154, 154, 36, 36},
        {"centre popup button", 30391, 154, 154, 36, 36},
        {"side button", 30401, 43, 43, 36, 36},
    };
    // clang-format on
    auto expectSize = [](const PLBitmap* bitmap, const Row& row) {
        ASSERT_NE(bitmap, nullptr);
        EXPECT_GE(bitmap->GetWidth(), row.minWidth);
        EXPECT_LE(bitmap->GetWidth(), row.maxWidth);
        EXPECT_GE(bitmap->GetHeight(), row.minHeight);
        EXPECT_LE(bitmap->GetHeight(), row.maxHeight);
    };
    for (const Row& row : bitmaps) {
        SCOPED_TRACE(row.name);
        expectSize(
            static_cast<const PLBitmap*>(manager.GetResource(kPLResBitmap, row.id, kPLWildcard)),
            row);
    }
    for (const Row& row : families) {
        SCOPED_TRACE(row.name);
        auto family = static_cast<const PLBitmapFamily*>(
            manager.GetResource(kPLResBitmapFamily, row.id, kPLWildcard));
        ASSERT_NE(family, nullptr);
        PLBitmap* normal = family->GetBitmap(kPLBitmapNormal);
        PLBitmap* pressed = family->GetBitmap(kPLBitmapPressed);
        expectSize(normal, row);
        expectSize(pressed, row);
        ASSERT_NE(normal, pressed);
        const int cx = row.minWidth / 2, cy = row.minHeight / 2;
        EXPECT_NE(normal->GetPixel(cx, cy), pressed->GetPixel(cx, cy)) << "pressing must show";
    }
}

TEST_F(CalendarResourceTest, TextsFitTheirControls) {
    // clang-format off
    struct Row { const char* name; std::vector<uint32_t> ids; int maxWidth; };
    // clang-format on
    // The widths a control leaves for its text at 16 pixels: cells and buttons less a small
    // margin, radio labels less the radio mark, choices less their arrow.
    // clang-format off
    const Row rows[] = {
        {"short weekday names in 26-px buttons", {30532, 30542, 30552, 30562, 30572, 30582, 30592}, 26},
        {"labels of 70-px radios", {10502, 10652}, 50},
        {"labels of 90- and 105-px radios", {10572, 10592}, 70},
        {"80-px labels", {10582}, 80},
        {"80-px week-of-month choice", {10602, 10612, 10622, 10632, 10642}, 64},
        {"102-px weekday choice", {30462, 30472, 30482, 30492, 30502, 30512, 30522}, 86},
        {"152-px month choice",
         {30602, 30612, 30622, 30632, 30642, 30652, 30662, 30672, 30682, 30692, 30702, 30712}, 136},
        {"centre buttons", {30092, 30102, 11022, 30122, 10032, 10042, 10052}, 140},
        {"chooser rows of 120 px", {10452, 10462, 10472, 10482, 10492}, 120},
    };
    // clang-format on
    PLFont* font = PLFont::GetFont(PLFourCC("UC16"));
    for (const Row& row : rows) {
        for (uint32_t id : row.ids) {
            PLBasicString<char> text;
            SCOPED_TRACE(std::string(row.name) + ": " + std::to_string(id));
            ASSERT_TRUE(manager.GetText(id, text) && text.Length() > 0);
            EXPECT_LE(font->MeasureText(text.str()), row.maxWidth) << text.str();
        }
    }
}

}  // namespace

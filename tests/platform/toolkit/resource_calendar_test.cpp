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
    static void SetUpTestSuite() {
        sManager = new PLResourceFileManager(10003, true);
        sLoaded = sManager->LoadFromFile(CAL_BINARY_DIR "/share/calendar.rsc", false);
    }
    static void TearDownTestSuite() {
        delete sManager;
        sManager = nullptr;
    }
    void SetUp() override {
        ASSERT_TRUE(sLoaded) << sManager->GetLastError() << " (build the calendar_rsc target)";
    }
    const PLBitmap* Bitmap(uint32_t id) const {
        return static_cast<const PLBitmap*>(sManager->GetResource(kPLResBitmap, id, kPLWildcard));
    }
    const PLBitmapFamily* Family(uint32_t id) const {
        return static_cast<const PLBitmapFamily*>(
            sManager->GetResource(kPLResBitmapFamily, id, kPLWildcard));
    }
    std::string Text(uint32_t id) const {
        PLBasicString<char> text;
        return sManager->GetText(id, text) ? text.str() : std::string();
    }

    static PLResourceFileManager* sManager;
    static bool sLoaded;
};
PLResourceFileManager* CalendarResourceTest::sManager = nullptr;
bool CalendarResourceTest::sLoaded = false;

TEST_F(CalendarResourceTest, BitmapsHaveTheSizesTheirViewsUse) {
    struct Row {
        const char* name;
        uint32_t id;
        int minWidth, maxWidth, minHeight, maxHeight;
    };
    const Row rows[] = {
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
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const PLBitmap* bitmap = Bitmap(row.id);
        ASSERT_NE(bitmap, nullptr);
        EXPECT_GE(bitmap->GetWidth(), row.minWidth);
        EXPECT_LE(bitmap->GetWidth(), row.maxWidth);
        EXPECT_GE(bitmap->GetHeight(), row.minHeight);
        EXPECT_LE(bitmap->GetHeight(), row.maxHeight);
    }
}

TEST_F(CalendarResourceTest, ButtonFamiliesFitTheBarAndShowAPressedState) {
    struct Row {
        const char* name;
        uint32_t id;
        int width, height;
    };
    const Row rows[] = {
        {"hour label", 10091, 42, 24},
        {"centre bar button", 30371, 154, 36},
        {"centre popup button", 30391, 154, 36},
        {"side button", 30401, 43, 36},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const PLBitmapFamily* family = Family(row.id);
        ASSERT_NE(family, nullptr);
        PLBitmap* normal = family->GetBitmap(kPLBitmapNormal);
        PLBitmap* pressed = family->GetBitmap(kPLBitmapPressed);
        ASSERT_NE(normal, nullptr);
        ASSERT_NE(pressed, nullptr);
        EXPECT_NE(normal, pressed);
        EXPECT_EQ(normal->GetWidth(), row.width);
        EXPECT_EQ(normal->GetHeight(), row.height);
        EXPECT_EQ(pressed->GetWidth(), row.width);
        int cx = row.width / 2, cy = row.height / 2;
        EXPECT_NE(normal->GetPixel(cx, cy), pressed->GetPixel(cx, cy)) << "pressing must show";
    }
}

TEST_F(CalendarResourceTest, TextsFitTheirControls) {
    struct Row {
        const char* name;
        std::vector<uint32_t> ids;
        int maxWidth;
    };
    // The widths a control leaves for its text at 16 pixels: cells and buttons less a small
    // margin, radio labels less the radio mark, choices less their arrow.
    const Row rows[] = {
        {"short weekday names in 26-px buttons",
         {30532, 30542, 30552, 30562, 30572, 30582, 30592},
         26},
        {"labels of 70-px radios", {10502, 10652}, 50},
        {"labels of 90- and 105-px radios", {10572, 10592}, 70},
        {"80-px labels", {10582}, 80},
        {"80-px week-of-month choice", {10602, 10612, 10622, 10632, 10642}, 64},
        {"102-px weekday choice", {30462, 30472, 30482, 30492, 30502, 30512, 30522}, 86},
        {"152-px month choice",
         {30602, 30612, 30622, 30632, 30642, 30652, 30662, 30672, 30682, 30692, 30702, 30712},
         136},
        {"centre buttons", {30092, 30102, 11022, 30122, 10032, 10042, 10052}, 140},
        {"chooser rows of 120 px", {10452, 10462, 10472, 10482, 10492}, 120},
    };
    PLFont* font = PLFont::GetFont(PLFourCC("UC16"));
    ASSERT_NE(font, nullptr);
    for (const Row& row : rows) {
        for (uint32_t id : row.ids) {
            SCOPED_TRACE(std::string(row.name) + ": " + std::to_string(id) + " " + Text(id));
            ASSERT_FALSE(Text(id).empty());
            EXPECT_LE(font->MeasureText(Text(id)), row.maxWidth);
        }
    }
}

}  // namespace

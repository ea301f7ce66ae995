// Text: UTF-8 decoding, measuring, and where DrawString puts the glyphs in which colour.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "PLDrawContext.h"
#include "PLFont.h"
#include "PLTheme.h"
#include "toolkit_support.h"

namespace {

constexpr uint32_t kPaper = 0xFFFFFFFF;

// The smallest rectangle holding every pixel that is not paper; empty when none.
PLRect InkBox(const PLBitmap& bitmap) {
    PLRect box;
    for (const PLPoint& p : Changed(bitmap, kPaper)) {
        box = box.Union({p.v, p.h, p.v + 1, p.h + 1});
    }
    return box;
}

// `text` drawn in black on white paper of the given size.
PLBitmap Drawn(const std::string& text, int width, int height, PLRect rect,
               PLPoint offset = kNullPoint, long length = -1, bool centred = true,
               long justification = kPLJustifyLeft) {
    PLBitmap paper = Filled(width, height, kPaper);
    PLDrawContext context(paper);
    context.SetTextColor(PLRGBColor(0, 0, 0));
    context.DrawString(text, rect, offset, length, centred, justification);
    return paper;
}

PLFont* const kSmall = PLFont::GetFont(PLFourCC("UC16"));
PLFont* const kLarge = PLFont::GetFont(PLFourCC("UC24"));

TEST(TextRender, DecodingTurnsEveryBadByteIntoAReplacementMark) {
    constexpr char32_t R = PLFont::kReplacementCharacter;
    const std::vector<std::tuple<const char*, std::string, std::vector<char32_t>>> rows = {
        {"ASCII", "Ab", {U'A', U'b'}},
        {"two-byte", "\xc3\xa9", {0xE9}},
        {"three-byte CJK", "\xe6\x97\xa5", {0x65E5}},
        {"four-byte", "\xf0\x9d\x84\x9e", {0x1D11E}},
        {"stray byte between letters", "a\377b", {U'a', R, U'b'}},
        {"continuation byte alone", "\x80", {R}},
        {"sequence cut at the end", "\xe6\x97", {R, R}},
        {"sequence cut by a letter", "\346a", {R, U'a'}},
        {"overlong slash", "\xc0\xaf", {R, R}},
        {"surrogate half", "\xed\xa0\x80", {R, R, R}},
        {"beyond Unicode", "\xf4\x90\x80\x80", {R, R, R, R}},
    };
    for (const auto& [name, text, expected] : rows) {
        SCOPED_TRACE(name);
        std::vector<char32_t> decoded;
        for (size_t pos = 0; pos < text.size();) {
            const size_t before = pos;
            decoded.push_back(PLFont::DecodeUTF8(text, pos));
            ASSERT_GT(pos, before) << "decoding must always advance";
        }
        EXPECT_EQ(decoded, expected);
    }
}

TEST(TextRender, FontsMeasureAndDrawLatinAndCjk) {
    EXPECT_EQ(PLFont::GetFont(PLFourCC("XXXX")), kSmall) << "an unknown code falls back";
    const std::string texts[] = {"Hello",
                                 "\xc3\x9c"
                                 "ber",
                                 "\xe6\x97\xa5\xe5\x8e\x86", "\xff\xfe\xfd"};
    for (const std::string& text : texts) {
        SCOPED_TRACE(text);
        const PLRect ink = InkBox(Drawn(text, 200, 40, {0, 0, 40, 200}));
        EXPECT_FALSE(ink.IsEmpty()) << "something was drawn";
        const int width = kSmall->MeasureText(text);
        EXPECT_GT(width, 0);
        EXPECT_LE(ink.Width(), width + 2) << "ink stays within the measured width";
        EXPECT_GT(kLarge->MeasureText(text), width) << "the larger font is wider";
    }
    const int cjkCharacter = kSmall->MeasureText("\xe6\x97\xa5");
    EXPECT_GT(cjkCharacter, kSmall->MeasureText(" "));
    EXPECT_GE(cjkCharacter, 12) << "a CJK character is about a square";
}

// Where DrawString puts a line: horizontally by justification and offset.h, vertically centred in
// the rectangle or at offset.v, always inside the rectangle; a length limits the bytes drawn.
TEST(TextRender, JustificationCentringLengthAndClipPlaceTheLine) {
    const PLRect rect{10, 20, 50, 180};  // 40 high, 160 wide
    PLFont* font = kSmall;
    const int width = font->MeasureText("Ag8");
    const int lineHeight = font->GetLineHeight();
    const int centredTop = rect.top + (rect.Height() - lineHeight) / 2;
    struct Row {
        const char* name;
        long justification;
        bool centred;
        PLPoint offset;
        int expectedLeft;     // where the line's advance box starts
        int expectedLineTop;  // where the line box (ascent + descent) starts
    };
    // clang-format off
    const std::vector<Row> rows = {
        {"left with offset", kPLJustifyLeft, true, {0, 4}, rect.left + 4, centredTop},
        {"right with offset", kPLJustifyRight, true, {0, 6}, rect.right - 6 - width, centredTop},
        {"centre ignores the offset", kPLJustifyCenter, true, {0, 9},
         rect.left + (rect.Width() - width) / 2, centredTop},
        {"not centred: top at offset.v", kPLJustifyLeft, false, {5, 0}, rect.left, rect.top + 5},
        {"not centred without offset", kPLJustifyRight, false, {0, 0}, rect.right - width, rect.top},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const PLRect ink =
            InkBox(Drawn("Ag8", 200, 60, rect, row.offset, -1, row.centred, row.justification));
        ASSERT_FALSE(ink.IsEmpty());
        // Glyphs may overhang their advance box by a pixel or two (side bearings).
        EXPECT_NEAR(ink.left, row.expectedLeft, 2);
        EXPECT_NEAR(ink.right, row.expectedLeft + width, 2);
        EXPECT_GE(ink.top, row.expectedLineTop);
        EXPECT_LE(ink.bottom, row.expectedLineTop + lineHeight);
        // "A" reaches up near the ascent and "g" down into the descent.
        EXPECT_LE(ink.top, row.expectedLineTop + font->GetAscent() / 2);
        EXPECT_GT(ink.bottom, row.expectedLineTop + font->GetAscent());
    }

    const int two = font->MeasureText("WW") + 1;
    const std::tuple<const char*, std::string, long, int, int> limits[] = {
        {"length draws only the first bytes", "WWWWWW", 2, 200, two},
        {"zero length means all of it", "WW", 0, 200, two},
        {"too long for the rectangle is clipped", "WWWWWWWWWWWW", -1, 25, 25},
        {"a length past the end is the whole text", "WW", 99, 200, two},
    };
    for (const auto& [name, text, length, rectRight, inkRightAtMost] : limits) {
        SCOPED_TRACE(name);
        const PLRect ink = InkBox(Drawn(text, 200, 30, {0, 0, 30, rectRight}, kNullPoint, length));
        ASSERT_FALSE(ink.IsEmpty());
        EXPECT_LE(ink.right, inkRightAtMost);
    }
}

// A theme whose text is green: a default text colour must follow it.
class GreenTextTheme : public PLTheme {
public:
    PLRGBColor GetTextColor() const override { return {0, 160, 0}; }
};

TEST(TextRender, TextColourComesFromTheContextOrTheTheme) {
    PLThemeManager::SetCurrentTheme(new GreenTextTheme);
    const std::tuple<const char*, PLRGBColor, PLRGBColor> rows[] = {
        {"explicit colour", PLRGBColor(0, 0, 200), PLRGBColor(0, 0, 200)},
        {"default colour uses the theme's", PLRGBColor(-1, false), PLRGBColor(0, 160, 0)},
    };
    for (const auto& [name, color, ink] : rows) {
        SCOPED_TRACE(name);
        PLBitmap paper = Filled(60, 30, kPaper);
        PLDrawContext context(paper);
        context.SetTextColor(color);
        context.DrawString("IHIH", {0, 0, 30, 60}, kNullPoint, -1, true, kPLJustifyLeft);
        const std::vector<PLPoint> inked = Changed(paper, kPaper);
        ASSERT_FALSE(inked.empty());
        // Neither ink has red, so a pixel's red gives its coverage away: the rest must be the
        // ink blended over white by that coverage.
        for (const PLPoint& p : inked) {
            const uint32_t pixel = paper.GetPixel(p.h, p.v);
            const double cover = 1.0 - double((pixel >> 16) & 0xFF) / 255.0;
            EXPECT_NEAR((pixel >> 8) & 0xFF, ink.green * cover + 255 * (1 - cover), 2.0);
            EXPECT_NEAR(pixel & 0xFF, ink.blue * cover + 255 * (1 - cover), 2.0);
        }
    }
    PLThemeManager::SetCurrentTheme(nullptr);
}

}  // namespace

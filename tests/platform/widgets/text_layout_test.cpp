// Line breaking: at spaces, inside words that are too wide, at line breaks, by whole characters.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "VtTextLayout.h"
#include "VtTextModel.h"

namespace {

// Every character is 10 pixels wide, whatever its bytes.
int Measure(std::string_view text) {
    int width = 0;
    for (size_t i = 0; i < text.size(); i += VtTextModel::CharLength(text, i)) {
        width += 10;
    }
    return width;
}

struct WrapCase {
    const char* name;
    std::string text;
    int width;
    std::vector<std::string> lines;
};

class TextWrap : public ::testing::TestWithParam<WrapCase> {};

TEST_P(TextWrap, BreaksWhereTheLineIsFull) {
    const WrapCase& c = GetParam();
    std::vector<std::string> lines;
    for (const auto& line : VtTextLayout::Wrap(c.text, c.width, Measure)) {
        ASSERT_LE(line.start + line.length, c.text.size());
        lines.push_back(c.text.substr(line.start, line.length));
    }
    EXPECT_EQ(lines, c.lines);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, TextWrap,
    ::testing::Values(
        WrapCase{"fits_on_one_line", "one two", 100, {"one two"}},
        WrapCase{"breaks_at_the_last_space", "one two three", 80, {"one two", "three"}},
        WrapCase{"long_word_broken_inside", "abcdefghij", 40, {"abcd", "efgh", "ij"}},
        WrapCase{"line_breaks_kept", "a\nb\n\nc", 100, {"a", "b", "", "c"}},
        WrapCase{"empty_text_is_one_empty_line", "", 100, {""}},
        WrapCase{"cjk_breaks_between_characters",
                 "\xE6\x97\xA5\xE6\x9C\x88\xE7\x81\xAB",
                 20,
                 {"\xE6\x97\xA5\xE6\x9C\x88", "\xE7\x81\xAB"}},
        WrapCase{"too_narrow_for_one_character", "ab", 5, {"a", "b"}},
        WrapCase{"invalid_bytes_are_characters", "\xFF\xFE\xFD", 20, {"\xFF\xFE", "\xFD"}}),
    [](const ::testing::TestParamInfo<WrapCase>& info) { return std::string(info.param.name); });

}  // namespace

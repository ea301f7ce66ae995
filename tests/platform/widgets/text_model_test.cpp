// The edit-field text model: limits cut at character boundaries, filters, erasing, caret moves
// and bytes that are not UTF-8.
#include <gtest/gtest.h>

#include <tuple>

#include <string>

#include "VtTextModel.h"

namespace {

// "é" is 2 bytes, "日" 3, "😀" 4.
const std::string kE = "\xC3\xA9";
const std::string kSun = "\xE6\x97\xA5";
const std::string kSmile = "\xF0\x9F\x98\x80";

struct FitCase {
    const char* name;
    std::string text;
    size_t limit;
    size_t bytes;
};

class TextFit : public ::testing::TestWithParam<FitCase> {};

TEST_P(TextFit, CutsOnlyBetweenCharacters) {
    const FitCase& c = GetParam();
    EXPECT_EQ(VtTextModel::FitBytes(c.text, c.limit), c.bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Limits, TextFit,
    ::testing::Values(FitCase{"ascii_under_the_limit", "abc", 5, 3},
                      FitCase{"ascii_over_the_limit", "abcdef", 4, 4},
                      FitCase{"no_limit_keeps_all", "abcdef", 0, 6},
                      FitCase{"two_byte_character_not_split", "a" + kE + "b", 2, 1},
                      FitCase{"two_byte_character_fits_whole", "a" + kE + "b", 3, 3},
                      FitCase{"cjk_character_not_split", kSun + kSun, 5, 3},
                      FitCase{"four_byte_character_not_split", kSmile + "x", 3, 0},
                      FitCase{"invalid_bytes_are_one_character_each", "\xFF\xFE\xFD", 2, 2},
                      FitCase{"cut_sequence_at_the_end_counts_bytewise", "ab\xE6\x97", 3, 3}),
    [](const ::testing::TestParamInfo<FitCase>& info) { return std::string(info.param.name); });

struct CharCase {
    const char* name;
    std::string text;
    size_t offset;
    size_t length;
};

class TextCharLength : public ::testing::TestWithParam<CharCase> {};

TEST_P(TextCharLength, ReadsNoFurtherThanTheSequence) {
    const CharCase& c = GetParam();
    EXPECT_EQ(VtTextModel::CharLength(c.text, c.offset), c.length);
}

INSTANTIATE_TEST_SUITE_P(
    Sequences, TextCharLength,
    ::testing::Values(CharCase{"ascii", "a", 0, 1}, CharCase{"two_bytes", kE, 0, 2},
                      CharCase{"three_bytes", kSun, 0, 3}, CharCase{"four_bytes", kSmile, 0, 4},
                      CharCase{"end_of_text", "a", 1, 0},
                      CharCase{"lone_continuation_byte", "\x80", 0, 1},
                      CharCase{"overlong_two_byte_form", "\xC0\xAF", 0, 1},
                      CharCase{"surrogate_half", "\xED\xA0\x80", 0, 1},
                      CharCase{"above_the_last_code_point", "\xF4\x90\x80\x80", 0, 1},
                      CharCase{"sequence_cut_by_the_end", "\xE6\x97", 0, 1},
                      CharCase{"sequence_broken_by_ascii",
                               "\xE6"
                               "a"
                               "\xA5",
                               0, 1}),
    [](const ::testing::TestParamInfo<CharCase>& info) { return std::string(info.param.name); });

struct InsertCase {
    const char* name;
    std::string start;
    size_t limit;
    std::string accepted;
    bool multiLine;
    std::string typed;
    std::string result;
};

class TextInsert : public ::testing::TestWithParam<InsertCase> {};

TEST_P(TextInsert, KeepsTheLimitAndTheFilter) {
    const InsertCase& c = GetParam();
    VtTextModel model(c.limit);
    model.SetAcceptedChars(c.accepted);
    model.SetMultiLine(c.multiLine);
    model.SetText(c.start);
    EXPECT_EQ(model.Insert(c.typed), c.result != c.start);
    EXPECT_EQ(model.GetText(), c.result);
    EXPECT_EQ(model.GetCaret(), c.result.size()) << "typing at the end leaves the caret there";
    if (c.limit != 0) {
        EXPECT_LE(model.GetText().size(), c.limit);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Typing, TextInsert,
    ::testing::Values(
        InsertCase{"plain_text", "", 10, "", false, "hello", "hello"},
        InsertCase{"cut_at_the_limit", "abc", 5, "", false, "defgh", "abcde"},
        InsertCase{"full_field_takes_nothing", "abcde", 5, "", false, "x", "abcde"},
        InsertCase{"cjk_cut_before_a_split_character", "ab", 6, "", false, kSun + kSun,
                   "ab" + kSun},
        InsertCase{"digits_only_drops_letters", "1", 3, "0123456789", false, "a2b3c4", "123"},
        InsertCase{"digits_only_drops_cjk", "", 2, "0123456789", false, kSun + "7", "7"},
        InsertCase{"single_line_drops_line_breaks", "a", 0, "", false, "b\nc", "abc"},
        InsertCase{"multi_line_keeps_line_breaks", "a", 0, "", true, "b\nc", "ab\nc"},
        InsertCase{"control_characters_dropped", "", 0, "", false,
                   "a\tb\x01"
                   "c",
                   "abc"},
        InsertCase{"invalid_bytes_kept_as_given", "", 0, "", false,
                   "a\xFF"
                   "b",
                   "a\xFF"
                   "b"},
        InsertCase{"nothing_typed", "abc", 5, "", false, "", "abc"}),
    [](const ::testing::TestParamInfo<InsertCase>& info) { return std::string(info.param.name); });

// Both limits hold at once: characters for what the user is told, bytes for what the record keeps.
TEST(TextCharacterLimit, TypedAndSetTextKeepBothLimits) {
    // clang-format off
    const std::tuple<const char*, size_t, size_t, std::string, std::string, std::string> rows[] = {
        {"latin_stops_at_the_characters", 600, 5, "abc", "defgh", "abcde"},
        {"cjk_counts_characters_not_bytes", 600, 3, "", kSun + kSun + kSun + kSun, kSun + kSun + kSun},
        {"the_tighter_byte_limit_wins", 6, 5, "", kSun + kSun + kSun, kSun + kSun},
        {"full_field_takes_nothing", 600, 2, "ab", "c", "ab"},
        {"invalid_bytes_count_one_each", 600, 3, "", "a\xFF\xFE" "b", "a\xFF\xFE"},
    };
    // clang-format on
    for (const auto& [name, bytes, characters, start, typed, result] : rows) {
        SCOPED_TRACE(name);
        VtTextModel model(bytes);
        model.SetCharacterLimit(characters);
        model.SetText(start);
        model.Insert(typed);
        EXPECT_EQ(model.GetText(), result);
        VtTextModel set(bytes);
        set.SetCharacterLimit(characters);
        set.SetText(start + typed);
        EXPECT_EQ(set.GetText(), result) << "text set by the program is cut the same way";
    }
    VtTextModel later(0);
    later.SetText(kSun + "abc");
    later.SetCharacterLimit(2);
    EXPECT_EQ(later.GetText(), kSun + "a") << "a limit set later cuts what is there";
    EXPECT_EQ(later.GetCaret(), later.GetText().size());
}

struct TypeCase {
    const char* name;
    std::string start;
    std::string input;
    std::string result;
};

class TextType : public ::testing::TestWithParam<TypeCase> {};

TEST_P(TextType, BackspacesEraseWholeCharacters) {
    const TypeCase& c = GetParam();
    VtTextModel model(0);
    model.SetText(c.start);
    model.Type(c.input);
    EXPECT_EQ(model.GetText(), c.result);
    EXPECT_TRUE(VtTextModel::IsValidUTF8(model.GetText()) || !VtTextModel::IsValidUTF8(c.start));
}

INSTANTIATE_TEST_SUITE_P(
    Erasing, TextType,
    ::testing::Values(TypeCase{"erase_ascii", "abc", "\b", "ab"},
                      TypeCase{"erase_two_byte_character", "a" + kE, "\b", "a"},
                      TypeCase{"erase_cjk_character", kSun + kSun, "\b", kSun},
                      TypeCase{"erase_four_byte_character", "x" + kSmile, "\b", "x"},
                      TypeCase{"erase_on_empty_text", "", "\b\b", ""},
                      TypeCase{"erase_then_type", "abc", "\b\bXY", "aXY"},
                      TypeCase{"type_then_erase", "a", "bc\b", "ab"},
                      TypeCase{"erase_invalid_byte_alone", "a" + kE + "\xFF", "\b", "a" + kE}),
    [](const ::testing::TestParamInfo<TypeCase>& info) { return std::string(info.param.name); });

// Bytes that are not valid UTF-8 count as one character each, until an edit puts a lead byte
// next to the continuation bytes it wants: then they read as one character and the caret must not
// stay inside it.
struct JoinCase {
    const char* name;
    std::string start;
    size_t caret;
    std::string input;
    std::string result;
    size_t resultCaret;
};

class TextJoin : public ::testing::TestWithParam<JoinCase> {};

TEST_P(TextJoin, CaretNeverInsideAJoinedCharacter) {
    const JoinCase& c = GetParam();
    VtTextModel model(0);
    model.SetText(c.start);
    model.SetCaret(c.caret);
    model.Type(c.input);
    EXPECT_EQ(model.GetText(), c.result);
    EXPECT_EQ(model.GetCaret(), c.resultCaret);
}

INSTANTIATE_TEST_SUITE_P(
    StrayBytes, TextJoin,
    ::testing::Values(JoinCase{"typed_bytes_join_stray_ones", "\xB1\x89\xE5\xAD", 0,
                               "\xB1\x89\xE5\xAD", "\xB1\x89\xE5\xAD\xB1\x89\xE5\xAD", 2},
                      JoinCase{"erase_joins_the_neighbours",
                               "\xE5"
                               "A"
                               "\xAD\xB1"
                               "z",
                               2, "\b",
                               "\xE5\xAD\xB1"
                               "z",
                               0},
                      JoinCase{"no_join_leaves_the_caret_after_the_typing",
                               "\xE5"
                               "z",
                               1, "A",
                               "\xE5"
                               "Az",
                               2}),
    [](const ::testing::TestParamInfo<JoinCase>& info) { return std::string(info.param.name); });

TEST(TextModel, SetTextCutsToTheLimitAndLoweringTheLimitCutsAgain) {
    VtTextModel model(4);
    EXPECT_TRUE(model.SetText("ab" + kSun));
    EXPECT_EQ(model.GetText(), "ab") << "the CJK character would pass the limit";
    model.SetLimit(0);
    model.SetText(kE + kE + kE);
    model.SetLimit(5);
    EXPECT_EQ(model.GetText(), kE + kE);
    EXPECT_EQ(model.GetCaret(), 4u);
    EXPECT_FALSE(model.SetText(kE + kE)) << "the same text is no change";
}

TEST(TextModel, CaretMovesAndInsertsByWholeCharacters) {
    VtTextModel model(0);
    model.SetText("a" + kSun + "b");
    model.MoveCaret(-1);
    EXPECT_EQ(model.GetCaret(), 4u);
    model.MoveCaret(-1);
    EXPECT_EQ(model.GetCaret(), 1u);
    model.SetCaret(2);  // inside the CJK character: moved back to its start
    EXPECT_EQ(model.GetCaret(), 1u);
    model.Insert("x");
    EXPECT_EQ(model.GetText(), "ax" + kSun + "b");
    model.MoveCaret(-10);
    EXPECT_EQ(model.GetCaret(), 0u);
    EXPECT_FALSE(model.EraseBack());
    model.MoveCaret(10);
    EXPECT_EQ(model.GetCaret(), model.GetText().size());
}

TEST(TextModel, PreviousBoundaryFindsTheStartOfEachCharacter) {
    const std::string text = "a" + kE + kSun + "\xFF" + kSmile;
    const size_t starts[] = {0, 1, 3, 6, 7};
    size_t offset = text.size();
    for (size_t i = std::size(starts); i-- > 0;) {
        offset = VtTextModel::PreviousBoundary(text, offset);
        EXPECT_EQ(offset, starts[i]) << "character " << i;
    }
    EXPECT_EQ(VtTextModel::PreviousBoundary(text, 0), 0u);
}

}  // namespace

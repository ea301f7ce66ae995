// The list model: check modes, 1-based indexes, answers for indexes that name no row, focus moves.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "VtListModel.h"

namespace {

enum class Op { Check, UnCheck, Choose };

struct Step {
    Op op;
    size_t index;
    bool changed;  // what the call answers
};

struct CheckCase {
    const char* name;
    long mode;
    size_t rows;
    std::vector<Step> steps;
    std::vector<size_t> checked;  // afterwards, ascending
};

bool Apply(VtListModel& model, const Step& step) {
    switch (step.op) {
        case Op::Check:
            return model.Check(step.index);
        case Op::UnCheck:
            return model.UnCheck(step.index);
        case Op::Choose:
            return model.Choose(step.index);
    }
    return false;
}

class ListModelChecks : public ::testing::TestWithParam<CheckCase> {};

TEST_P(ListModelChecks, CheckedRowsFollowTheMode) {
    const CheckCase& c = GetParam();
    VtListModel model(c.mode);
    for (size_t i = 0; i < c.rows; ++i) {
        model.Append();
    }
    for (size_t s = 0; s < c.steps.size(); ++s) {
        SCOPED_TRACE("step " + std::to_string(s + 1));
        EXPECT_EQ(Apply(model, c.steps[s]), c.steps[s].changed);
    }
    EXPECT_EQ(model.GetChecked(), c.checked);
    for (size_t i = 0; i <= c.rows + 1; ++i) {
        SCOPED_TRACE("row " + std::to_string(i));
        const bool expected = std::find(c.checked.begin(), c.checked.end(), i) != c.checked.end();
        EXPECT_EQ(model.IsChecked(i), expected);
    }
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Modes, ListModelChecks, ::testing::Values(
        CheckCase{"one_row_mode_keeps_the_last_checked", kVtCheckOne, 4,
                  {{Op::Check, 1, true}, {Op::Check, 3, true}, {Op::Check, 3, false}}, {3}},
        CheckCase{"one_row_mode_choose_never_clears", kVtCheckOne, 3,
                  {{Op::Choose, 2, true}, {Op::Choose, 2, false}}, {2}},
        CheckCase{"many_rows_mode_keeps_each", kVtCheckMany, 5,
                  {{Op::Check, 5, true}, {Op::Check, 1, true}, {Op::Check, 3, true}}, {1, 3, 5}},
        CheckCase{"many_rows_mode_choose_flips", kVtCheckMany, 3,
                  {{Op::Choose, 2, true}, {Op::Choose, 3, true}, {Op::Choose, 2, true}}, {3}},
        CheckCase{"uncheck_of_an_unchecked_row_changes_nothing", kVtCheckMany, 3,
                  {{Op::UnCheck, 2, false}, {Op::Check, 2, true}, {Op::UnCheck, 2, true}}, {}},
        CheckCase{"row_zero_and_past_the_end_name_no_row", kVtCheckMany, 3,
                  {{Op::Check, 0, false}, {Op::Check, 4, false}, {Op::UnCheck, 99, false},
                   {Op::Choose, 0, false}}, {}},
        CheckCase{"a_list_without_a_check_mode_checks_nothing", kVtCheckNone, 3,
                  {{Op::Check, 1, false}, {Op::Choose, 2, false}}, {}},
        CheckCase{"an_unknown_mode_checks_nothing", 7, 2, {{Op::Check, 1, false}}, {}},
        CheckCase{"an_empty_list_checks_nothing", kVtCheckOne, 0, {{Op::Check, 1, false}}, {}}),
    [](const ::testing::TestParamInfo<CheckCase>& info) { return std::string(info.param.name); });
// clang-format on

struct FocusCase {
    const char* name;
    size_t rows;
    size_t start;  // 0: no focus yet
    int delta;
    bool wrap;
    size_t focus;  // afterwards
    bool moved;
};

class ListModelFocus : public ::testing::TestWithParam<FocusCase> {};

TEST_P(ListModelFocus, MovesStopOrWrapAtTheEnds) {
    const FocusCase& c = GetParam();
    VtListModel model(kVtCheckOne);
    for (size_t i = 0; i < c.rows; ++i) {
        model.Append();
    }
    if (c.start != 0) {
        ASSERT_TRUE(model.SetFocus(c.start));
    }
    EXPECT_EQ(model.MoveFocus(c.delta, c.wrap), c.moved);
    EXPECT_EQ(model.GetFocus(), c.focus);
}

INSTANTIATE_TEST_SUITE_P(
    Moves, ListModelFocus,
    ::testing::Values(FocusCase{"down_from_the_first", 5, 1, 1, false, 2, true},
                      FocusCase{"down_stops_at_the_last", 5, 5, 1, false, 5, false},
                      FocusCase{"down_wraps_to_the_first", 5, 5, 1, true, 1, true},
                      FocusCase{"up_wraps_to_the_last", 5, 1, -1, true, 5, true},
                      FocusCase{"up_stops_at_the_first", 5, 1, -1, false, 1, false},
                      FocusCase{"a_page_down_stops_at_the_last", 5, 2, 7, false, 5, true},
                      FocusCase{"first_move_down_focuses_the_first", 5, 0, 1, false, 1, true},
                      FocusCase{"first_move_up_focuses_the_last", 5, 0, -1, false, 5, true},
                      FocusCase{"an_empty_list_has_no_focus", 0, 0, 1, true, 0, false}),
    [](const ::testing::TestParamInfo<FocusCase>& info) { return std::string(info.param.name); });

TEST(ListModel, FocusOnAnInvalidRowIsRefusedAndClearForgetsEverything) {
    VtListModel model(kVtCheckMany);
    model.Append();
    model.Append();
    EXPECT_FALSE(model.SetFocus(0));
    EXPECT_FALSE(model.SetFocus(3));
    EXPECT_TRUE(model.SetFocus(2));
    EXPECT_FALSE(model.SetFocus(2)) << "focusing the focused row is no move";
    model.Check(1);
    model.Clear();
    EXPECT_EQ(model.GetCount(), 0u);
    EXPECT_EQ(model.GetFocus(), 0u);
    EXPECT_TRUE(model.GetChecked().empty());
    model.Append();
    EXPECT_FALSE(model.IsChecked(1)) << "a row appended after a clear starts unchecked";
}

}  // namespace

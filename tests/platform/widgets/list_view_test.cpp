// The list pane over its model: rows by 1-based index, "none" for row 0 and past the end, and
// notices only for the user's changes, sent under the container's id.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "PLListener.h"
#include "PLMessage.h"
#include "VtListFactory.h"

namespace {

class NoticeLog : public PLListener {
public:
    void Listen(PLMessage* message) override {
        notices.push_back(std::to_string(message->GetMessageID()) + " " +
                          std::to_string(message->GetSenderID()) + " " +
                          std::to_string(message->GetUserMessageID()));
    }
    std::vector<std::string> notices;
};

std::unique_ptr<VtListViewContainer> MakeList(long mode, size_t rows) {
    std::unique_ptr<VtListViewContainer> list(MakeVtListViewContainer(
        PLPoint(0, 0), PLSize(90, 240), mode, true, false, 20, 30, 12201, nullptr, true, true));
    for (size_t i = 0; i < rows; ++i) {
        list->AppendRow(MakeCheckBoxListRow(nullptr, "row", kEmptyString, nullptr, nullptr,
                                            uint32_t(700 + i), -1, -1, false, i == 2),
                        false);
    }
    return list;
}

struct IndexCase {
    const char* name;
    size_t index;
    bool exists;
};

class ListViewIndexes : public ::testing::TestWithParam<IndexCase> {};

TEST_P(ListViewIndexes, RowsOutsideTheListAnswerNone) {
    const IndexCase& c = GetParam();
    auto list = MakeList(kVtCheckMany, 4);
    VtListRow* row = list->GetRowByIndex(c.index);
    EXPECT_EQ(row != nullptr, c.exists);
    if (row != nullptr) {
        EXPECT_EQ(row->GetValue(), long(700 + c.index - 1)) << "the row keeps its data value";
    }
    EXPECT_EQ(list->CheckRowByIndex(c.index), c.exists);
    EXPECT_EQ(list->IsRowIndexChecked(c.index), c.exists);
    EXPECT_EQ(list->UnCheckRowByIndex(c.index), c.exists);
    EXPECT_FALSE(list->IsRowIndexChecked(c.index));
}

INSTANTIATE_TEST_SUITE_P(
    Indexes, ListViewIndexes,
    ::testing::Values(IndexCase{"row_zero", 0, false}, IndexCase{"first_row", 1, true},
                      IndexCase{"last_row", 4, true}, IndexCase{"past_the_end", 5, false},
                      IndexCase{"far_past_the_end", 100000, false}),
    [](const ::testing::TestParamInfo<IndexCase>& info) { return std::string(info.param.name); });

TEST(ListView, ProgramChangesSendNothingAndUserChoicesSendFocusThenCheck) {
    auto list = MakeList(kVtCheckOne, 4);
    NoticeLog log;
    list->AddListener(&log);
    list->CheckRowByIndex(2);
    list->FocusRowByIndex(2);
    EXPECT_TRUE(log.notices.empty());

    list->GetListView()->UserChoose(4);
    EXPECT_EQ(log.notices, (std::vector<std::string>{"80004 12201 4", "80002 12201 4"}));
    PLVector<long> checked;
    EXPECT_EQ(list->GetCheckedRows(checked), 1u);
    EXPECT_EQ(checked[0], 4);
    EXPECT_TRUE(list->GetRowByIndex(4)->IsChecked());
    EXPECT_FALSE(list->GetRowByIndex(2)->IsChecked()) << "one row at a time";

    log.notices.clear();
    list->GetListView()->UserChoose(3);  // a disabled row
    EXPECT_TRUE(log.notices.empty());
    EXPECT_FALSE(list->IsRowIndexChecked(3));
}

TEST(ListView, KeysMoveTheFocusAndOkChoosesAndClearingEmptiesTheList) {
    auto list = MakeList(kVtCheckMany, 5);
    NoticeLog log;
    list->AddListener(&log);
    EXPECT_TRUE(list->DoKeyCommand(char(kPLKeyDown), 0, kPLModNone));
    EXPECT_TRUE(list->DoKeyCommand(char(kPLKeyDown), 0, kPLModNone));
    EXPECT_TRUE(list->DoKeyCommand(char(kPLKeyOk), 0, kPLModNone));
    EXPECT_FALSE(list->DoKeyCommand(char(kPLKeyLeft), 0, kPLModNone)) << "not a list key";
    EXPECT_EQ(list->GetFocusedRowIndex(), 2u);
    EXPECT_TRUE(list->IsRowIndexChecked(2));
    EXPECT_EQ(log.notices.back(), "80002 12201 2");
    // Five rows of 30 in a 90-high list: focusing the last scrolls it into view.
    list->DoKeyCommand(char(kPLKeyPageDown), 0, kPLModNone);
    list->DoKeyCommand(char(kPLKeyPageDown), 0, kPLModNone);
    EXPECT_EQ(list->GetFocusedRowIndex(), 5u);
    EXPECT_EQ(list->GetListView()->GetScrollPosition(), 60);

    list->ClearAllRows();
    EXPECT_EQ(list->GetRowCount(), 0u);
    EXPECT_EQ(list->GetRowByIndex(1), nullptr);
    EXPECT_EQ(list->GetListView()->GetScrollPosition(), 0);
    EXPECT_FALSE(list->DoKeyCommand(char(kPLKeyLeft), 0, kPLModNone));
}

}  // namespace

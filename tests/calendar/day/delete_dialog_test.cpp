// The delete dialog against a scratch store: the bar and button bookkeeping as rows are checked,
// select all (also on an empty list), and the repeating-event question's outcomes.
#include <gtest/gtest.h>

#include <vector>

#include "PLMessage.h"
#include "VtWidgets.h"
#include "day/VtCalendarDayViewDeleteDialog.h"
#include "day_support.h"

namespace {

const DayEvent kOneOff{"Call", 21, 9, 0, 21, 9, 30};
const DayEvent kOtherOneOff{"Lunch", 21, 12, 0, 21, 13, 0};
const DayEvent kDaily{"Gym", 21, 18, 0, 21, 19, 0, false, true};
const DayEvent kOtherDaily{"Walk", 21, 7, 0, 21, 7, 30, false, true};

class DeleteDialogTest : public ::testing::Test {
protected:
    // Stores the events and opens the dialog on the day's list, rows in list order.
    void Open(const std::vector<DayEvent>& events) {
        for (const DayEvent& event : events) {
            ids.push_back(StoreEvent(event));
            ASSERT_GT(ids.back(), 0);
        }
        day = std::make_unique<DayFixture>(8);
        dialog.reset(VtCalendarDayViewDeleteDialog::Make(12200, day->view->GetDayEvents()));
        dialog->SetSeriesQuestion([this] {
            ++asked;
            if (answers.empty()) {
                return long(kVtDialogNoButton);
            }
            const long answer = answers.front();
            answers.erase(answers.begin());
            return answer;
        });
    }
    // Checks or unchecks a row as a tap does, with the list's notice.
    void Tap(size_t row) {
        VtListViewContainer* list = dialog->GetList();
        if (list->IsRowIndexChecked(row)) {
            list->UnCheckRowByIndex(row);
        } else {
            list->CheckRowByIndex(row);
        }
        PLMessage notice(kVtListCheckNotice, 12201, uint32_t(row), kEmptyString, kEmptyString);
        dialog->Listen(&notice);
    }
    // Taps the top bar's check box, which flips itself and tells the dialog.
    void TopBar(long value) {
        ASSERT_EQ(dialog->GetTopBar()->GetCheckStatus(), value)
            << "the box flips to the other state";
        dialog->GetTopBar()->ToggleCheck();
    }
    int StoredCount() {
        int count = 0;
        for (int id : ids) {
            count += EventStored(id) ? 1 : 0;
        }
        return count;
    }

    ScratchRoot root;
    std::vector<int> ids;
    std::unique_ptr<DayFixture> day;
    std::unique_ptr<VtCalendarDayViewDeleteDialog> dialog;
    std::vector<long> answers;
    int asked = 0;
};

TEST_F(DeleteDialogTest, BarAndButtonFollowTheCheckedRows) {
    Open({kOneOff, kOtherOneOff, kDaily});
    EXPECT_EQ(dialog->GetRowCount(), 3);
    EXPECT_EQ(dialog->GetList()->GetRowCount(), 3u);
    EXPECT_FALSE(dialog->IsDeleteButtonActive());
    const struct {
        const char* step;
        size_t row;  // 0: select all in the top bar; 99: clear all
        bool active, all;
        long status;
    } steps[] = {
        {"check one", 1, true, false, 0},
        {"check a second", 2, true, false, 0},
        {"check the last one: all are checked", 3, true, true, 1},
        {"uncheck one clears the bar", 2, true, false, 0},
        {"uncheck the others: nothing to delete", 1, true, false, 0},
        {"... the last", 3, false, false, 0},
        {"select all", 0, true, true, 1},
        {"clear all", 99, false, false, 0},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.step);
        if (step.row == 0) {
            TopBar(kVtTopBarCheckAll);
        } else if (step.row == 99) {
            TopBar(kVtTopBarClearAll);
        } else {
            Tap(step.row);
        }
        EXPECT_EQ(dialog->IsDeleteButtonActive(), step.active);
        EXPECT_EQ(dialog->IsAllChecked(), step.all);
        EXPECT_EQ(dialog->GetTopBar()->GetCheckStatus(), step.status);
    }
    // Filling again starts over.
    Tap(1);
    dialog->Fill(day->view->GetDayEvents());
    EXPECT_FALSE(dialog->IsDeleteButtonActive());
    EXPECT_FALSE(dialog->GetList()->IsRowIndexChecked(1));
}

// Select all on an empty list makes the button active while nothing can be checked; pressing it
// deletes nothing and still tells the listeners.
TEST_F(DeleteDialogTest, SelectAllOnAnEmptyList) {
    Open({});
    TopBar(kVtTopBarCheckAll);
    EXPECT_TRUE(dialog->IsDeleteButtonActive());
    EXPECT_FALSE(dialog->IsDeleteEnabled());
    struct : PLListener {
        void Listen(PLMessage* message) override { heard.push_back(message->GetSenderID()); }
        std::vector<uint32_t> heard;
    } listener;
    dialog->AddListener(&listener);
    PLMessage press(kPLMsgControl, kDayDeleteButton, 0, kEmptyString, kEmptyString);
    dialog->Listen(&press);
    EXPECT_EQ(listener.heard, std::vector<uint32_t>{kDayDeleteButton});
    EXPECT_EQ(asked, 0);
}

// Rows 1..n in the day's list order: all-day first, then by start (Walk 7:00, Call 9:00, Lunch
// 12:00, Gym 18:00 with the events below).
TEST_F(DeleteDialogTest, RepeatingEventQuestion) {
    const struct {
        const char* name;
        std::vector<size_t> checked;
        std::vector<long> answers;
        bool deleted;
        int asked, left;
    } cases[] = {
        // OK on one repeating event and cancel are day_delete_series' and day_delete_cancel's.
        {"one-off events are not asked about", {2, 3}, {}, true, 0, 2},
        {"OK ends the questions for a second repeating event", {1, 4}, {12206}, true, 1, 2},
        {"closed otherwise: the next repeating event asks again", {1, 4}, {-1, 12207}, false, 2, 4},
        {"closed otherwise both times: everything checked goes", {1, 2, 4}, {-1, -1}, true, 2, 1},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        ScratchRoot scratch;
        ids.clear();
        asked = 0;
        answers = row.answers;
        Open({kOneOff, kOtherOneOff, kDaily, kOtherDaily});
        for (size_t index : row.checked) {
            Tap(index);
        }
        EXPECT_EQ(dialog->DeleteChecked(), row.deleted);
        EXPECT_EQ(asked, row.asked);
        EXPECT_EQ(StoredCount(), row.left);
        for (size_t index : row.checked) {
            const int id = int(dialog->GetList()->GetRowByIndex(index)->GetValue());
            EXPECT_EQ(EventStored(id), !row.deleted) << "row " << index;
        }
        dialog.reset();
        day.reset();
    }
}

}  // namespace

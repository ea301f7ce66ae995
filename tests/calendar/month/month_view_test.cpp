// The month view's keys, pen and menu state on a scratch device root.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

#include "APEventRec.h"
#include "PLAppContext.h"
#include "PLDeviceRoot.h"
#include "PLMenuItem.h"
#include "PLMessage.h"
#include "PLTimeStamp.h"
#include "month/VtCalendarMonthView.h"

namespace {

class MonthViewTest : public ::testing::Test, public PLListener {
protected:
    void SetUp() override {
        std::string pattern = (std::filesystem::temp_directory_path() / "calmonth-XXXXXX").string();
        mRoot = mkdtemp(pattern.data());
        PLDeviceRoot::SetRoot(mRoot);
        PLAppContext::ResetInstance();
    }
    void TearDown() override {
        view.reset();
        PLAppContext::ResetInstance();
        PLDeviceRoot::SetRoot("");
        std::error_code ignored;
        std::filesystem::remove_all(mRoot, ignored);
    }
    void Show(const PLDate& date) {
        selected = date;
        view.reset(new VtCalendarMonthView(11100, &selected));
        view->AddListener(this);
        view->Reload(0);
    }
    void Listen(PLMessage* message) override {
        if (message->GetMessageID() == kPLMsgUp) {
            ++dayRequests;
            requestSender = message->GetSenderID();
        }
    }

    std::string mRoot;
    PLDate selected;
    std::unique_ptr<VtCalendarMonthView> view;
    int dayRequests = 0;
    uint32_t requestSender = 0;
};

TEST_F(MonthViewTest, KeysMoveTheSelection) {
    const struct {
        const char* name;
        PLDate from;
        uint8_t key;
        PLDate to;
    } rows[] = {
        {"previous day", PLDate(2026, 3, 15), 28, PLDate(2026, 3, 14)},
        {"previous day from the 1st", PLDate(2026, 3, 1), 28, PLDate(2026, 2, 28)},
        {"previous day from new year", PLDate(2026, 1, 1), 28, PLDate(2025, 12, 31)},
        {"next day from new year's eve", PLDate(2026, 12, 31), 29, PLDate(2027, 1, 1)},
        {"a week back into february", PLDate(2026, 3, 3), 17, PLDate(2026, 2, 24)},
        {"a week on keeps the weekday", PLDate(2026, 3, 28), 19, PLDate(2026, 4, 4)},
        {"previous month clamps the day", PLDate(2026, 3, 31), 30, PLDate(2026, 2, 28)},
        {"previous month in a leap year", PLDate(2024, 3, 31), 30, PLDate(2024, 2, 29)},
        {"next month clamps the day", PLDate(2026, 1, 31), 31, PLDate(2026, 2, 28)},
        {"december to january", PLDate(2026, 12, 15), 31, PLDate(2027, 1, 15)},
        {"january 1970 stays", PLDate(1970, 1, 15), 30, PLDate(1970, 1, 15)},
        {"december 2030 stays", PLDate(2030, 12, 10), 31, PLDate(2030, 12, 10)},
        {"the day keys pass 1970", PLDate(1970, 1, 1), 28, PLDate(1969, 12, 31)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Show(row.from);
        EXPECT_TRUE(view->DoKeyCommand(char(row.key), 0, kPLModNone));
        EXPECT_EQ(selected, row.to);
        EXPECT_EQ(view->GetModel().GetShownDate(), row.to);
    }
}

TEST_F(MonthViewTest, AMonthKeyAtTheBrowsingLimitTakesTheHighlightedDay) {
    const struct {
        const char* name;
        PLDate from;
        PLPoint pen;  // a cell of the 20th
        uint8_t key;
        PLDate to;
    } rows[] = {
        {"january 1970 back", PLDate(1970, 1, 15), PLPoint(160, 80), 30, PLDate(1970, 1, 20)},
        {"december 2030 on", PLDate(2030, 12, 10), PLPoint(130, 180), 31, PLDate(2030, 12, 20)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Show(row.from);
        view->MouseDown(row.pen, kPLPen);
        ASSERT_EQ(view->GetModel().GetShownDate(), row.to);
        ASSERT_EQ(selected, row.from);
        EXPECT_TRUE(view->DoKeyCommand(char(row.key), 0, kPLModNone));
        EXPECT_EQ(selected, row.to);
        EXPECT_EQ(view->GetModel().GetShownDate(), row.to);
    }
}

TEST_F(MonthViewTest, OkAsksForTheDayAndOtherKeysAreLeft) {
    Show(PLDate(2026, 3, 15));
    EXPECT_TRUE(view->DoKeyCommand(char(18), 0, kPLModNone));
    EXPECT_EQ(dayRequests, 1);
    EXPECT_EQ(requestSender, 11100u);
    for (int key : {16, 20, 27, 32, 65}) {
        SCOPED_TRACE(key);
        EXPECT_FALSE(view->DoKeyCommand(char(key), 0, kPLModNone));
    }
    EXPECT_EQ(selected, PLDate(2026, 3, 15));
}

TEST_F(MonthViewTest, PenHighlightsAndOpensOnlyDaysOfTheMonth) {
    // March 2026 with Sunday first: the 1st in column 0, the 31st in row 4, column 2.
    Show(PLDate(2026, 3, 15));
    view->MouseDown(PLPoint(60, 210), kPLPen);  // the 7th
    EXPECT_EQ(view->GetModel().GetShownDate(), PLDate(2026, 3, 7));
    EXPECT_EQ(selected, PLDate(2026, 3, 15));
    view->MouseMove(PLPoint(190, 100), kPLPen);  // the 31st
    EXPECT_EQ(view->GetModel().GetShownDate(), PLDate(2026, 3, 31));
    view->MouseMove(PLPoint(190, 120), kPLPen);  // an empty cell: the highlight stays
    EXPECT_EQ(view->GetModel().GetShownDate(), PLDate(2026, 3, 31));
    view->MouseUp(PLPoint(220, 100), kPLPen);  // empty cell of the sixth row
    EXPECT_EQ(dayRequests, 0);
    EXPECT_EQ(selected, PLDate(2026, 3, 15));

    view->MouseDown(PLPoint(100, 40), kPLPen);  // the 9th
    view->MouseUp(PLPoint(100, 40), kPLPen);
    EXPECT_EQ(dayRequests, 1);
    EXPECT_EQ(selected, PLDate(2026, 3, 9));
}

TEST_F(MonthViewTest, DeleteAllIsOfferedOnlyWithEvents) {
    Show(PLDate(2026, 3, 15));
    PLMenuItem* deleteAll = view->GetOptionsMenu()->FindItem(11815);
    ASSERT_NE(deleteAll, nullptr);
    EXPECT_FALSE(deleteAll->IsEnabled());

    _EventRecInfo record;
    InitEventRecInfo(&record);
    const PLDate day(2026, 3, 20);
    const PLTime ten(10, 0, 0);
    record.startStamp = int32_t(PLDate2TimeStamp(&day, &ten));
    record.endStamp = record.startStamp + 3600;
    record.lastStamp = record.endStamp;
    record.colour = 11545;
    {
        APEventRec store;
        ASSERT_GT(store.AddEventRec(&record), 0);
    }
    // An event deleted or added elsewhere: the control message makes the view reload.
    PLMessage changed(kPLMsgControl, 12203, 0, kEmptyString, kEmptyString);
    view->Listen(&changed);
    EXPECT_TRUE(deleteAll->IsEnabled());
    EXPECT_NE(view->GetModel().Lane(20, 0).recordId, 0);

    selected = PLDate(2026, 4, 1);
    view->Reload(0);
    EXPECT_FALSE(deleteAll->IsEnabled());
}

}  // namespace

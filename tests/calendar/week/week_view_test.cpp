// The week view and its hour table on a scratch device root with a pinned clock: the keys and
// their limits, the pen, the header after a reload and the scroll to the start of the day.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "APConfig.h"
#include "APEventRec.h"
#include "APGetStr.h"
#include "PLClock.h"
#include "PLMessage.h"
#include "VtScrollContainer.h"
#include "app/VtCalendarGlobals.h"
#include "calendar/calendar_support.h"
#include "week/VtCalendarWeekView.h"
#include "week/VtCalendarWeekViewHourTable.h"
#include "week_support.h"

namespace {

// Keeps the kinds of the messages it hears.
class Recorder : public PLListener {
public:
    void Listen(PLMessage* message) override { kinds.push_back(message->GetMessageID()); }
    std::vector<uint32_t> kinds;
};

class WeekTest : public ::testing::Test {
protected:
    void SetUp() override { PLClock::Pin(int64_t(Stamp(2026, 11, 21, 9, 41)) * 1000); }
    void TearDown() override { PLClock::Unpin(); }

    void WriteSettings(int32_t weekday, int32_t hour) {
        APCONFIG_CALENDAR_S config{11414, weekday, hour, 11457};
        ASSERT_EQ(APConfigCalendar_Write(&config) & 0xFF, 1);
    }

    ScratchRoot root;
};

TEST_F(WeekTest, KeysMoveTheCellAndKeepToTheRange) {
    const struct {
        const char* name;
        PLDate selected;
        char key;
        bool handled;
        PLDate after;
        int column;
        int row;
        std::vector<uint32_t> sent;
    } rows[] = {
        // Paging across 1970 and 2030, left, right, up, down and ok are walked by week_keys and
        // week_scrolled; these are the limits a script does not reach.
        // clang-format off
        {"page up: a week back", D(2026, 11, 18), kPLKeyPageUp, true, D(2026, 11, 11), 4, 9, {kPLMsgValue}},
        {"page down onto the last day of 2030", D(2030, 12, 24), kPLKeyPageDown, true, D(2030, 12, 31), 3, 9, {kPLMsgValue}},
        {"left stays in the first column", D(2026, 11, 15), kPLKeyLeft, true, D(2026, 11, 15), 1, 9, {}},
        {"right stays in the last column", D(2026, 11, 21), kPLKeyRight, true, D(2026, 11, 21), 7, 9, {}},
        {"other keys are not the table's", D(2026, 11, 18), 20, false, D(2026, 11, 18), 4, 9, {}},
        // clang-format on
    };
    WriteSettings(11424, 8);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        PLDate selected = row.selected;
        VtCalendarWeekViewHourTable table(&selected, PLPoint(0, 0), PLSize(744, 240), 11207);
        Recorder recorder;
        table.AddListener(&recorder);
        table.Rebuild();
        EXPECT_EQ(table.DoKeyCommand(row.key, 1, PLKeyModifiers{}), row.handled);
        EXPECT_EQ(selected, row.after);
        EXPECT_EQ(table.GetSelectedColumn(), row.column);
        EXPECT_EQ(table.GetSelectedRow(), row.row);
        EXPECT_EQ(recorder.kinds, row.sent);
    }
}

// A tap, the drag that the first move only arms and the day opened on lifting are walked by
// week_pen and week_pen_drag; what they cannot see is the date held back during the drag and a pen
// lifted beside the table.
TEST_F(WeekTest, ThePenLiftedBesideTheTableStillNamesACell) {
    WriteSettings(11425, 8);
    PLDate selected = D(2026, 11, 21);
    VtCalendarWeekViewHourTable table(&selected, PLPoint(0, 0), PLSize(744, 240), 11207);
    Recorder recorder;
    table.AddListener(&recorder);
    table.Rebuild();
    table.MouseDown(PLPoint(31 * 13 + 5, 37 + 26 * 2 + 5), PLMouseButton{});
    table.MouseMove(PLPoint(31 * 15 + 5, 37 + 26 * 4 + 5), PLMouseButton{});
    table.MouseMove(PLPoint(31 * 15 + 5, 37 + 26 * 4 + 5), PLMouseButton{});
    EXPECT_EQ(table.GetSelectedRow(), 16);
    EXPECT_EQ(selected, D(2026, 11, 21)) << "the selected date waits for the pen to lift";
    EXPECT_TRUE(recorder.kinds.empty());

    table.MouseUp(PLPoint(2000, -40), PLMouseButton{});
    EXPECT_EQ(table.GetSelectedRow(), 24);
    EXPECT_EQ(table.GetSelectedColumn(), 1);
    EXPECT_EQ(selected, D(2026, 11, 16));
    EXPECT_EQ(recorder.kinds, std::vector<uint32_t>{kPLMsgUp});
}

TEST_F(WeekTest, ReloadShowsTheWeekOfTheSelectedDate) {
    const struct {
        const char* name;
        int32_t weekday;
        int32_t hour;
        PLDate selected;
        PLDate weekStart;
        uint32_t firstName;  // weekday text id
        long scroll;
    } rows[] = {
        // Sunday first from 8 and Monday first from 0 are week_busy's and week_monday's.
        {"saturday first", 11430, 8, D(2026, 11, 20), D(2026, 11, 14), 30582, 8 * 31},
        {"late start: the table's end shows", 11424, 22, D(2026, 11, 21), D(2026, 11, 15), 30592,
         744 - 153},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        WriteSettings(row.weekday, row.hour);
        PLDate selected = row.selected;
        std::unique_ptr<VtCalendarWeekView> view(
            VtCalendarWeekView::Make(11200, &selected, nullptr));
        EXPECT_EQ(view->GetWeekStart(), row.weekStart);
        EXPECT_EQ(view->FindPane(11220)->GetString().str(), APGetStr(row.firstName).str());
        EXPECT_EQ(view->FindPane(11230)->GetString().str(), std::to_string(row.weekStart.day));
        EXPECT_EQ(view->GetTable()->GetModel().GetWeekStart(), row.weekStart);
        auto* container = static_cast<VtScrollContainer*>(view->FindPane(11205));
        EXPECT_EQ(container->GetScrollPosition(), row.scroll);
        EXPECT_EQ(view->GetTable()->GetSelectedRow(), row.hour + 1);
    }
}

TEST_F(WeekTest, DayNumbersShowTodayAndTheWeekend) {
    WriteSettings(11424, 8);
    PLDate selected = D(2026, 11, 19);
    std::unique_ptr<VtCalendarWeekView> view(VtCalendarWeekView::Make(11200, &selected, nullptr));
    const PLRGBColor white{255, 255, 255};
    const PLRGBColor red{204, 0, 0};
    const PLRGBColor blue{0, 102, 255};
    // Sunday the 15th .. Saturday the 21st, which is today.
    const PLRGBColor expected[7] = {red, white, white, white, white, white, blue};
    for (int i = 0; i < 7; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(view->FindPane(11230 + uint32_t(i))->GetTextColor(), expected[i]);
    }
}

TEST_F(WeekTest, TheDeleteEntryNeedsEvents) {
    WriteSettings(11424, 8);
    _EventRecInfo record;
    InitEventRecInfo(&record);
    record.startStamp = int32_t(Stamp(2026, 11, 24, 10));
    record.endStamp = record.lastStamp = record.startStamp + 3600;
    ASSERT_GT(APEventRec().AddEventRec(&record), 0);
    PLDate selected = D(2026, 11, 21);
    std::unique_ptr<VtCalendarWeekView> view(VtCalendarWeekView::Make(11200, &selected, nullptr));
    EXPECT_FALSE(view->HasEvents());
    EXPECT_FALSE(view->GetOptionsMenu()->FindItem(11815)->IsEnabled());
    selected = D(2026, 11, 22);
    view->Reload(0);
    EXPECT_TRUE(view->HasEvents());
    EXPECT_TRUE(view->GetOptionsMenu()->FindItem(11815)->IsEnabled());
}

}  // namespace

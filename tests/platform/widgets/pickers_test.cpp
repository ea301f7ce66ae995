// The time picker's hours in both forms, the date dialog's grid and range, the date header's
// steps and messages: the logic behind the modal widgets, without running them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "PLListener.h"
#include "PLMessage.h"
#include "PLTime.h"
#include "VtBarFactory.h"
#include "VtDialogFactory.h"

namespace {

class ValueLog : public PLListener {
public:
    void Listen(PLMessage* message) override {
        values.push_back(long(message->GetUserMessageID()));
    }
    std::vector<long> values;
};

struct TimeCase {
    const char* name;
    long hour;
    long format;
    int column;
    int delta;
    long shownHour;
    const char* suffix;
    long hour24;
};

class TimePickerSteps : public ::testing::TestWithParam<TimeCase> {};

TEST_P(TimePickerSteps, HoursTurnWithinTheirForm) {
    const TimeCase& c = GetParam();
    std::unique_ptr<VtTimePickerDialog> picker(
        MakeVtTimePickerDialog(c.hour, 30, c.format, "Start", 0, "OK", 3, "Cancel", 1));
    picker->StepColumn(c.column, c.delta);
    EXPECT_EQ(picker->Is12Hour(), c.format == kPLTimeFormat24 ? 0 : 1);
    EXPECT_EQ(picker->GetHour(), c.shownHour);
    EXPECT_EQ(picker->GetSuffix().str(), c.suffix);
    EXPECT_EQ(picker->GetHour24(), c.hour24);
    EXPECT_EQ(picker->GetMinute(), 30);
}

INSTANTIATE_TEST_SUITE_P(
    Hours, TimePickerSteps,
    ::testing::Values(TimeCase{"midnight_reads_12_am", 0, 1, 0, 0, 12, "AM", 0},
                      TimeCase{"noon_reads_12_pm", 12, 1, 0, 0, 12, "PM", 12},
                      TimeCase{"eleven_am_up_to_12_am", 11, 1, 0, 1, 12, "AM", 0},
                      TimeCase{"12_am_up_to_1_am", 0, 1, 0, 1, 1, "AM", 1},
                      TimeCase{"12_pm_up_to_1_pm", 12, 1, 0, 1, 1, "PM", 13},
                      TimeCase{"1_pm_down_to_12_pm", 13, 1, 0, -1, 12, "PM", 12},
                      TimeCase{"am_pm_switch_from_12_am", 0, 1, 2, 1, 12, "PM", 12},
                      TimeCase{"am_pm_switch_from_9_pm", 21, 1, 2, 1, 9, "AM", 9},
                      TimeCase{"24_hour_wraps_up", 23, 2, 0, 1, 0, "AM", 0},
                      TimeCase{"24_hour_wraps_down", 0, 2, 0, -1, 23, "PM", 23},
                      TimeCase{"24_hour_has_no_am_pm_column", 10, 2, 2, 1, 10, "AM", 10},
                      TimeCase{"hour_out_of_range_is_held", 99, 2, 0, 0, 23, "PM", 23}),
    [](const ::testing::TestParamInfo<TimeCase>& info) { return std::string(info.param.name); });

TEST(TimePicker, MinutesWrapAndTheHourOnlyModeKeepsThemAtZero) {
    std::unique_ptr<VtTimePickerDialog> picker(
        MakeVtTimePickerDialog(8, 59, 2, "Start", 0, "OK", 3, "Cancel", 1));
    picker->StepColumn(1, 1);
    EXPECT_EQ(picker->GetMinute(), 0);
    EXPECT_EQ(picker->GetHour24(), 8) << "the minute column does not carry into the hour";
    std::unique_ptr<VtTimePickerDialog> hourOnly(
        MakeVtTimePickerDialog(8, 45, 2, "Day start", 0, "OK", 3, "Cancel", kVtTimeHourOnly));
    hourOnly->StepColumn(1, 1);
    EXPECT_EQ(hourOnly->GetMinute(), 0);
}

struct GridCase {
    const char* name;
    int year, month;
    long firstWeekday;
    int firstCell;  // the cell of day 1
};

class DateDialogGrid : public ::testing::TestWithParam<GridCase> {};

TEST_P(DateDialogGrid, DayOneSitsUnderItsWeekday) {
    const GridCase& c = GetParam();
    std::unique_ptr<VtCalendarDateDialog> dialog(MakeVtCalendarDateDialog(
        PLPoint(266, 212), PLDate(c.year, c.month, 15), c.firstWeekday, 11004, "OK", 11005,
        "Cancel", 0x3F3F3F3F, kEmptyString, 50008, nullptr));
    EXPECT_EQ(dialog->CellDate(c.firstCell), PLDate(c.year, c.month, 1));
    for (int cell = 0; cell < 41; ++cell) {
        EXPECT_EQ(dialog->CellDate(cell + 1) - dialog->CellDate(cell), 1) << "cell " << cell;
    }
    const int first = c.firstWeekday >= 1 && c.firstWeekday <= 7 ? int(c.firstWeekday) : 1;
    EXPECT_EQ(dialog->CellDate(0).Weekday(), first);
}

INSTANTIATE_TEST_SUITE_P(
    Months, DateDialogGrid,
    ::testing::Values(GridCase{"november_2026_from_sunday", 2026, 11, 1, 0},
                      GridCase{"november_2026_from_monday", 2026, 11, 2, 6},
                      GridCase{"january_1970_from_sunday", 1970, 1, 1, 4},
                      GridCase{"january_1970_from_saturday", 1970, 1, 7, 5},
                      GridCase{"december_2030_from_monday", 2030, 12, 2, 6},
                      GridCase{"weekday_out_of_range_is_sunday", 2026, 11, 9, 0}),
    [](const ::testing::TestParamInfo<GridCase>& info) { return std::string(info.param.name); });

TEST(DateDialog, StartsInsideTheRange) {
    std::unique_ptr<VtCalendarDateDialog> early(
        MakeVtCalendarDateDialog(PLPoint(266, 212), PLDate(1901, 5, 5), 1, 1, "OK", 2, "Cancel", 0,
                                 kEmptyString, 50008, nullptr));
    EXPECT_EQ(early->GetDate(), PLDate(1970, 1, 1));
    early->SetDate(PLDate(2040, 1, 1));
    EXPECT_EQ(early->GetDate(), PLDate(2030, 12, 31));
    EXPECT_EQ(early->GetID(), 50008u);
}

struct HeaderCase {
    const char* name;
    long type;
    int year, month, day;
    bool wrap;
    int direction;
    bool moved;
    const char* title;  // afterwards
    std::vector<long> messages;
};

class DateHeaderSteps : public ::testing::TestWithParam<HeaderCase> {};

TEST_P(DateHeaderSteps, ArrowsMoveTheSharedDate) {
    const HeaderCase& c = GetParam();
    PLDate date(c.year, c.month, c.day);
    std::unique_ptr<VtCalendarYearSelectControl> header(
        MakeCalendarYearSelectControl(11104, c.type, &date, nullptr, c.wrap));
    ValueLog log;
    header->AddListener(&log);
    EXPECT_EQ(header->Step(c.direction), c.moved);
    EXPECT_EQ(header->TitleText().str(), c.title);
    EXPECT_EQ(log.values, c.messages);
}

INSTANTIATE_TEST_SUITE_P(
    Steps, DateHeaderSteps,
    ::testing::Values(
        HeaderCase{"month_back", 11, 2026, 3, 31, false, -1, true, "2026-02", {1}},
        HeaderCase{"month_on", 11, 2026, 12, 1, false, 1, true, "2027-01", {2}},
        HeaderCase{"month_stops_at_the_end", 11, 2030, 12, 1, false, 1, false, "2030-12", {}},
        HeaderCase{"month_wraps_when_asked", 11, 2030, 12, 1, true, 1, true, "1970-01", {2}},
        HeaderCase{"day_back_over_a_year", 13, 2027, 1, 1, false, -1, true, "2026-12-31", {1}},
        HeaderCase{"day_stops_at_the_start", 13, 1970, 1, 1, false, -1, false, "1970-01-01", {}},
        HeaderCase{
            "date_outside_is_brought_in", 13, 1960, 6, 1, false, 1, true, "1970-01-01", {2}}),
    [](const ::testing::TestParamInfo<HeaderCase>& info) { return std::string(info.param.name); });

TEST(DateHeader, ANullDateShowsNothingAndNeverMoves) {
    std::unique_ptr<VtCalendarYearSelectControl> header(
        MakeCalendarYearSelectControl(11304, 13, nullptr, nullptr, false));
    EXPECT_FALSE(header->Step(1));
    EXPECT_TRUE(header->TitleText().IsEmpty());
}

}  // namespace

// The reachable dates of the date header and the date dialog: 1970-01-01..2030-12-31.
#include <gtest/gtest.h>

#include <string>

#include "VtDateRange.h"

namespace {

struct StepCase {
    const char* name;
    int year, month, day;
    bool byMonths;
    int amount;
    bool moved;
    int toYear, toMonth, toDay;
};

class DateRangeSteps : public ::testing::TestWithParam<StepCase> {};

TEST_P(DateRangeSteps, StepsStayInsideTheRange) {
    const StepCase& c = GetParam();
    PLDate date(c.year, c.month, c.day);
    const bool moved =
        c.byMonths ? VtDateRange::AddMonths(date, c.amount) : VtDateRange::AddDays(date, c.amount);
    EXPECT_EQ(moved, c.moved);
    EXPECT_EQ(date, PLDate(c.toYear, c.toMonth, c.toDay));
}

INSTANTIATE_TEST_SUITE_P(
    Steps, DateRangeSteps,
    ::testing::Values(StepCase{"month_on", 2026, 11, 21, true, 1, true, 2026, 12, 21},
                      StepCase{"month_on_into_next_year", 2026, 12, 5, true, 1, true, 2027, 1, 5},
                      StepCase{"month_back_cuts_the_day", 2026, 3, 31, true, -1, true, 2026, 2, 28},
                      StepCase{"leap_february_keeps_29", 2024, 1, 31, true, 1, true, 2024, 2, 29},
                      StepCase{"year_back", 2026, 5, 1, true, -12, true, 2025, 5, 1},
                      StepCase{"last_month_stays", 2030, 12, 15, true, 1, false, 2030, 12, 15},
                      StepCase{"first_month_stays", 1970, 1, 15, true, -1, false, 1970, 1, 15},
                      StepCase{"day_on", 2030, 12, 30, false, 1, true, 2030, 12, 31},
                      StepCase{"last_day_stays", 2030, 12, 31, false, 1, false, 2030, 12, 31},
                      StepCase{"first_day_stays", 1970, 1, 1, false, -1, false, 1970, 1, 1},
                      StepCase{"a_week_back_over_new_year", 2027, 1, 3, false, -7, true, 2026, 12,
                               27}),
    [](const ::testing::TestParamInfo<StepCase>& info) { return std::string(info.param.name); });

TEST(DateRange, ClampBringsOutsideDatesToTheEnds) {
    EXPECT_EQ(VtDateRange::Clamp(PLDate(1969, 12, 31)), PLDate(1970, 1, 1));
    EXPECT_EQ(VtDateRange::Clamp(PLDate(2031, 1, 1)), PLDate(2030, 12, 31));
    EXPECT_EQ(VtDateRange::Clamp(PLDate(2000, 2, 29)), PLDate(2000, 2, 29));
    EXPECT_FALSE(VtDateRange::Contains(PLDate(1, 1, 1)));
}

}  // namespace

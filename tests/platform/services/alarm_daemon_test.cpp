// Alarm daemon and alert store: when the rules of every builder ring (expanded by libical, in
// zones east and west), bad rule texts, and the daemon's and the alert store's records.
#include <cstring>
#include <string>
#include <vector>

#include "APAlertDB.h"
#include "APEventAlertDB.h"
#include "store_support.h"

namespace {

using AlarmDaemonTest = StoreRootTest;

enum class Builder { kDaily, kWorkdays, kWeekly, kMonthDay, kMonthNth, kYearDay, kYearNth };

// One rule builder call: (a, x, y) are its arguments between the time and value C (interval,
// mask, day, week, weekday, month as the builder takes them), `until` the last-occurrence day
// (YYYYMMDD, 0 for none) at 23:59. The first ring is at `hour`:`minute` local on `first`, and
// so are all the rings listed, from the day `from` on (every ring of a series that ends within
// six; none: the builder refuses and leaves an empty rule). A row with `rule` replaces the built
// rule with that text (none: the text is refused).
struct RuleRow {
    const char* name;
    const char* zone;
    Builder builder;
    int a, x, y, c, until, first, hour, minute;
    std::vector<int> rings;
    int from = 0;
    const char* rule = nullptr;
};

long Local(int ymd, int hour, int minute) {
    return ymd == 0 ? 0 : At(ymd, hour, minute);
}

bool Build(const RuleRow& r, AP_ALERT_CONTEXT* context, long time) {
    const long last = Local(r.until, 23, 59);
    switch (r.builder) {
        case Builder::kDaily:
            return APAlertDB_MakeDailyRecur(context, time, r.a, r.c, last);
        case Builder::kWorkdays:
            return APAlertDB_MakeWeekdayRecur(context, time, r.c, last);
        case Builder::kWeekly:
            return APAlertDB_MakeWeeklyRecur(context, time, r.a, r.x, r.c, last);
        case Builder::kMonthDay:
            return APAlertDB_MakeMonthlyRecur(context, time, r.a, r.x, r.c, last);
        case Builder::kMonthNth:
            return APAlertDB_MakeMonthlyRecur(context, time, r.a, r.x, r.y, r.c, last);
        case Builder::kYearDay:
            return APAlertDB_MakeYearlyRecur(context, time, r.a, r.x, r.c, last);
        case Builder::kYearNth:
            return APAlertDB_MakeYearlyRecur(context, time, r.a, r.x, r.y, r.c, last);
    }
    return false;
}

TEST_F(AlarmDaemonTest, BuildersWriteRulesThatRingWhenMeant) {
    using B = Builder;
    const std::string full(sizeof(AP_ALERT_CONTEXT::rule), 'F');
    // clang-format off
    const std::vector<RuleRow> rows = {
        {"daily_count", "UTC", B::kDaily, 2, 0, 0, 5, 0, 20250310, 9, 30,
         {20250310, 20250312, 20250314, 20250316, 20250318}},
        {"workdays_until", "UTC", B::kWorkdays, 0, 0, 0, -1, 20250314, 20250313, 8, 0, {20250313, 20250314}},
        // Mask bits: Sunday 6 .. Saturday 0; bit 7 is ignored. Weeks start on Sunday.
        {"weekly_every_second", "UTC", B::kWeekly, 2, 0x28 | 0x80, 0, 0xFFFFF, 20301231, 20250310, 7, 15,
         {20250310, 20250312, 20250324, 20250326, 20250407, 20250409}},
        {"monthly_day", "UTC", B::kMonthDay, 1, 15, 0, 3, 0, 20250315, 12, 0, {20250315, 20250415, 20250515}},
        // Weekdays in the daemon's numbering: 3 Tuesday, 7 Friday, 5 Sunday.
        {"monthly_second_tuesday", "UTC", B::kMonthNth, 1, 2, 3, 3, 0, 20250311, 6, 0,
         {20250311, 20250408, 20250513}},
        {"monthly_last_friday", "UTC", B::kMonthNth, 1, -1, 7, 3, 0, 20250328, 6, 0,
         {20250328, 20250425, 20250530}},
        {"yearly_day", "UTC", B::kYearDay, 6, 15, 0, 2, 0, 20250615, 10, 0, {20250615, 20260615}},
        {"yearly_second_sunday", "UTC", B::kYearNth, 5, 2, 5, 2, 0, 20250511, 10, 0, {20250511, 20260510}},
        // East of Greenwich a morning alarm on the 1st rings on the last day of the month before
        // in UTC; the rings still fall on the local 1st.
        {"monthly_first_east", "Asia/Tokyo", B::kMonthDay, 1, 1, 0, 3, 0, 20250401, 8, 0,
         {20250401, 20250501, 20250601}},
        // Friday 08:00 in Tokyo is Thursday 23:00 in UTC.
        {"workdays_east_shifted", "Asia/Tokyo", B::kWorkdays, 0, 0, 0, 2, 0, 20250314, 8, 0,
         {20250314, 20250317}},
        // A day's lead in Shanghai: the ring on the 19th at local midnight is the 18th in UTC.
        {"monthly_day_lead_of_a_day", "Asia/Shanghai", B::kMonthDay, 1, 20, 0, 3, 0, 20250319, 0, 0,
         {20250319, 20250419, 20250519}},
        // A window just before the end of a series; an empty rule rings once; bad rule texts.
        {"window_before_the_end", "UTC", B::kDaily, 1, 0, 0, 0xFFFFF, 20301231, 20250101, 9, 0,
         {20301231}, 20301230},
        {"no_rule_rings_once", "UTC", B::kDaily, 1, 0, 0, 0, 0, 20250101, 9, 0, {20250101}, 0, ""},
        {"not_a_rule", "UTC", B::kDaily, 1, 0, 0, 0, 0, 20250101, 9, 0, {}, 0, "FREQ=SOMETIMES;BYDAY=XX"},
        {"rule_without_nul", "UTC", B::kDaily, 1, 0, 0, 0, 0, 20250101, 9, 0, {}, 0, full.c_str()},
        {"daily_interval_zero", "UTC", B::kDaily, 0, 0, 0, 5, 0, 0, 0, 0, {}},
        {"weekly_no_day", "UTC", B::kWeekly, 1, 0x80, 0, 5, 0, 0, 0, 0, {}},
        {"monthly_day_45", "UTC", B::kMonthDay, 1, 45, 0, 5, 0, 0, 0, 0, {}},
        {"yearly_month_13", "UTC", B::kYearDay, 13, 1, 0, 5, 0, 0, 0, 0, {}},
        {"nth_weekday_9", "UTC", B::kMonthNth, 1, 2, 9, 5, 0, 0, 0, 0, {}},
    };
    // clang-format on
    for (const RuleRow& row : rows) {
        SCOPED_TRACE(row.name);
        UseZone(row.zone);
        const long time = Local(row.first, row.hour, row.minute);
        AP_ALERT_CONTEXT context;
        std::memset(&context, 0x41, sizeof context);
        context.alertTime = int32_t(time);
        const bool ok = !row.rings.empty();
        if (row.rule == nullptr) {
            EXPECT_EQ(Build(row, &context, time), ok);
            if (!ok) {
                EXPECT_STREQ(context.rule, "");
                continue;
            }
        } else {
            FillFixedField(context.rule, row.rule);
        }
        std::vector<long> want, times;
        for (int day : row.rings) {
            want.push_back(Local(day, row.hour, row.minute));
        }
        std::string error;
        const bool rings = APAlertDB_NextRingTimes(
            context, row.from ? Local(row.from, 12, 0) : time, 6, times, error);
        EXPECT_EQ(rings, ok) << error;
        EXPECT_EQ(error.empty(), rings);
        EXPECT_EQ(times, want) << context.rule;
    }
}

// Both stores keep their records byte for byte, refuse unknown ids (the save path reads a failed
// update from the id), and deleting an alert record takes its daemon alarm with it.
TEST_F(AlarmDaemonTest, RecordsKeepEveryByteAndMissingIdsFail) {
    AP_ALERT_CONTEXT first;
    std::memset(&first, 0x5C, sizeof first);
    first.alertId = 0;
    std::strcpy(first.rule, "FREQ=DAILY;INTERVAL=1;COUNT=1;BYHOUR=8;BYMINUTE=0;BYSECOND=0");
    AP_ALERT_CONTEXT second = first;
    EXPECT_EQ(APAlertDB_AddAlert(&first), 1);
    EXPECT_EQ(APAlertDB_AddAlert(&second), 2);
    first.alertTime = 1234;
    EXPECT_EQ(APAlertDB_UpdateAlert(&first), 1);
    std::vector<AP_ALERT_CONTEXT> all;
    std::string error;
    ASSERT_TRUE(APAlertDB_ListAlerts(all, error) && all.size() == 2) << error;
    EXPECT_EQ(std::memcmp(&all[0], &first, sizeof first), 0);
    EXPECT_EQ(std::memcmp(&all[1], &second, sizeof second), 0);
    first.alertId = 99;
    EXPECT_EQ(APAlertDB_UpdateAlert(&first), 0);
    EXPECT_EQ(first.alertId, 0);
    EXPECT_EQ(APAlertDB_GetGeneration(), 0);
    EXPECT_EQ(APAlertDB_SendUpdateToDaemon() + APAlertDB_SendUpdateToDaemon(), 2);
    EXPECT_EQ(APAlertDB_GetGeneration(), 2);

    // Lead 3 hours: kept as given, even a pair the form does not offer.
    _EventAlertInfo info{0, 2, 1, {}, 1000, 3, 2}, back{};
    EXPECT_EQ(APEventAlertDB().Add(&info), 1);
    EXPECT_EQ(info.id, 1);
    info.leadAmount = 12;
    EXPECT_EQ(APEventAlertDB().UpdateAlertInfo(&info), 1);
    ASSERT_EQ(APEventAlertDB().GetEventAlertInfo(1, &back), 1);
    EXPECT_EQ(std::memcmp(&back, &info, sizeof info), 0);
    info.id = 5;
    EXPECT_EQ(APEventAlertDB().UpdateAlertInfo(&info), 0);
    EXPECT_EQ(APEventAlertDB().Delete(1), 1);
    EXPECT_EQ(APEventAlertDB().Delete(1), 0);
    EXPECT_EQ(APEventAlertDB().GetEventAlertInfo(1, &back), 0);
    EXPECT_FALSE(APAlertDB_GetAlert(2, &second)) << "the record's alarm goes with it";
    EXPECT_EQ(APAlertDB_DeleteAlert(1), 1);
    EXPECT_EQ(APAlertDB_DeleteAlert(1), 0);
}

}  // namespace

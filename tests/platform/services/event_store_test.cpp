// Event store: byte-exact round trips, ids, the month/week and day queries, deletion cascades,
// purging, damaged files and a full disk.
#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <random>
#include <vector>

#include "APAlertDB.h"
#include "APDatabase.h"
#include "APEventAlertDB.h"
#include "APEventRec.h"
#include "PLDeviceRoot.h"
#include "store_support.h"

namespace {

using EventStoreTest = StoreRootTest;

std::vector<int> MonthIds(long start, long end, bool week = false) {
    APEventRec store;
    PLBasicString<char> text;
    APMonthEventNode* head = week ? store.QueryWeekEventView(start, end, text)
                                  : store.QueryMonthEventView(start, end, text);
    std::vector<int> ids;
    for (APMonthEventNode* n = head; n; n = n->next) {
        ids.push_back(n->id);
    }
    APFreeEventNodes(head);
    return ids;
}

int Add(_EventRecInfo record) {
    APEventRec store;
    return store.AddEventRec(&record);
}

_EventRecInfo Filled(uint32_t seed) {
    _EventRecInfo record;
    std::mt19937 random(seed);
    auto* bytes = reinterpret_cast<uint8_t*>(&record);
    for (size_t i = 0; i < sizeof record; ++i) {
        bytes[i] = uint8_t(random());
    }
    return record;
}

struct RoundTripRow {
    const char* name;
    std::function<_EventRecInfo()> make;
};

TEST_F(EventStoreTest, RoundTripKeepsEveryByteAndNumbersFromOne) {
    const RoundTripRow rows[] = {
        {"plain",
         [] {
             return TimedEvent("Dentist", LocalStamp(2025, 3, 10, 9), LocalStamp(2025, 3, 10, 10));
         }},
        {"all_bytes_random", [] { return Filled(7); }},
        {"texts_without_nul",
         [] {
             _EventRecInfo r = TimedEvent("x", 100, 200);
             std::memset(r.subject, 'S', sizeof r.subject);
             std::memset(r.location, 'L', sizeof r.location);
             std::memset(r.notes, 0xE4, sizeof r.notes);
             return r;
         }},
        {"impossible_fields",
         [] {
             _EventRecInfo r =
                 TimedEvent("bad", LocalStamp(2025, 3, 10, 9), LocalStamp(2025, 3, 9));
             MakeRepeating(r, 3, 0, (45 << 8) | 13, -5, 0);
             r.colour = 99;
             r.classChoice = 0xFFFFFFFF;
             return r;
         }},
        {"all_zero",
         [] {
             _EventRecInfo r;
             InitEventRecInfo(&r);
             return r;
         }},
    };
    int expectedId = 1;
    for (const RoundTripRow& row : rows) {
        SCOPED_TRACE(row.name);
        _EventRecInfo original = row.make();
        original.id = 0;
        APEventRec store;
        ASSERT_TRUE(store.IsOpen()) << store.GetLastError();
        const int id = store.AddEventRec(&original);
        EXPECT_EQ(id, expectedId++);
        _EventRecInfo back;
        std::memset(&back, 0x5A, sizeof back);
        ASSERT_EQ(store.GetEventRec(id, &back), 1);
        EXPECT_EQ(back.id, id);
        back.id = 0;
        EXPECT_EQ(std::memcmp(&back, &original, sizeof back), 0);

        _EventRecInfo changed = Filled(uint32_t(id) * 31);
        changed.id = id;
        EXPECT_EQ(store.UpdateEventRec(&changed), id);
        ASSERT_EQ(store.GetEventRec(id, &back), 1);
        EXPECT_EQ(std::memcmp(&back, &changed, sizeof back), 0);
    }
}

TEST_F(EventStoreTest, MissingIdsFailWithoutTouchingTheRecord) {
    APEventRec store;
    _EventRecInfo record = TimedEvent("a", 100, 200);
    const int first = store.AddEventRec(&record);
    ASSERT_EQ(first, 1);
    EXPECT_EQ(store.DeleteEventRec(first), 1);
    EXPECT_EQ(store.AddEventRec(&record), 2) << "ids are never reused";

    _EventRecInfo untouched = Filled(3);
    _EventRecInfo copy = untouched;
    EXPECT_EQ(store.GetEventRec(first, &untouched), 0);
    EXPECT_EQ(std::memcmp(&copy, &untouched, sizeof copy), 0);

    record.id = 77;
    EXPECT_EQ(store.UpdateEventRec(&record), 0);
    EXPECT_EQ(record.id, 0) << "a failed update reports itself through the id";
    EXPECT_EQ(store.DeleteEventRec(77), 0);
}

struct WhichRow {
    const char* name;
    std::function<_EventRecInfo()> make;
    bool inMarch2025;
};

TEST_F(EventStoreTest, MonthQueryReturnsEveryEventThatTouchesTheRangeOnce) {
    const long lastOf2030 = LocalStamp(2030, 12, 31, 23, 59, 59);
    const WhichRow rows[] = {
        {"inside",
         [] { return TimedEvent("in", LocalStamp(2025, 3, 10, 10), LocalStamp(2025, 3, 10, 11)); },
         true},
        {"ends_at_first_midnight",
         [] { return TimedEvent("e", LocalStamp(2025, 2, 28, 22), LocalStamp(2025, 3, 1)); },
         false},
        {"starts_at_next_midnight",
         [] { return TimedEvent("s", LocalStamp(2025, 4, 1), LocalStamp(2025, 4, 1, 1)); }, false},
        {"spans_into",
         [] { return TimedEvent("si", LocalStamp(2025, 2, 27, 8), LocalStamp(2025, 3, 2, 8)); },
         true},
        {"spans_over",
         [] { return TimedEvent("so", LocalStamp(2025, 2, 1), LocalStamp(2025, 4, 30)); }, true},
        {"before",
         [] { return TimedEvent("b", LocalStamp(2025, 2, 10), LocalStamp(2025, 2, 10, 1)); },
         false},
        {"all_day_first", [] { return AllDayEvent("ad1", 2025, 3, 1); }, true},
        {"all_day_before", [] { return AllDayEvent("ad0", 2025, 2, 28); }, false},
        {"all_day_after", [] { return AllDayEvent("ad2", 2025, 4, 1); }, false},
        {"series_from_last_year",
         [&] {
             _EventRecInfo r =
                 TimedEvent("daily", LocalStamp(2024, 1, 5, 7), LocalStamp(2024, 1, 5, 8));
             MakeRepeating(r, 1, 1, 0, lastOf2030);
             return r;
         },
         true},
        {"series_ended_before",
         [] {
             _EventRecInfo r =
                 TimedEvent("wk", LocalStamp(2024, 1, 1, 7), LocalStamp(2024, 1, 1, 8));
             MakeRepeating(r, 2, 1, 2, LocalStamp(2025, 2, 20, 7), 30);
             return r;
         },
         false},
        {"series_starts_after",
         [&] {
             _EventRecInfo r =
                 TimedEvent("mo", LocalStamp(2025, 4, 3, 7), LocalStamp(2025, 4, 3, 8));
             MakeRepeating(r, 4, 1, 3, lastOf2030);
             return r;
         },
         false},
        {"unknown_kind_as_single",
         [&] {
             _EventRecInfo r =
                 TimedEvent("k3", LocalStamp(2025, 3, 20, 7), LocalStamp(2025, 3, 20, 8));
             MakeRepeating(r, 3, 0, 0, lastOf2030);
             return r;
         },
         true},
        {"end_before_start",
         [] { return TimedEvent("ebs", LocalStamp(2025, 3, 15, 10), LocalStamp(2025, 3, 14)); },
         true},
        {"same_start_as_inside",
         [] { return TimedEvent("tie", LocalStamp(2025, 3, 10, 10), LocalStamp(2025, 3, 10, 12)); },
         true},
    };
    for (const char* zone : {"UTC", "America/New_York", "Asia/Tokyo"}) {
        SCOPED_TRACE(zone);
        TearDown();
        SetUp();
        UseZone(zone);
        std::vector<std::pair<long, int>> expected;
        for (const WhichRow& row : rows) {
            const _EventRecInfo record = row.make();
            const int id = Add(record);
            ASSERT_GT(id, 0);
            if (row.inMarch2025) {
                expected.emplace_back(record.startStamp, id);
            }
        }
        std::sort(expected.begin(), expected.end());
        std::vector<int> wantIds;
        for (const auto& e : expected) {
            wantIds.push_back(e.second);
        }
        EXPECT_EQ(MonthIds(LocalStamp(2025, 3, 1), LocalStamp(2025, 4, 1)), wantIds);
        EXPECT_EQ(MonthIds(LocalStamp(2025, 3, 1), LocalStamp(2025, 4, 1), true), wantIds);
    }
}

TEST_F(EventStoreTest, MonthNodeFieldsAtTheirOffsets) {
    _EventRecInfo midnight = TimedEvent("m", LocalStamp(2025, 3, 10, 10), LocalStamp(2025, 3, 11));
    midnight.colour = 11550;
    _EventRecInfo series =
        TimedEvent("s", LocalStamp(2025, 3, 3, 9), LocalStamp(2025, 3, 3, 17, 30));
    MakeRepeating(series, 4, 2, (2 << 8) | 3, LocalStamp(2026, 1, 13, 9), 6);
    _EventRecInfo allDay = AllDayEvent("a", 2025, 3, 20, 2);
    const int idMidnight = Add(midnight);
    const int idSeries = Add(series);
    const int idAllDay = Add(allDay);

    APEventRec store;
    PLBasicString<char> text;
    APMonthEventNode* head =
        store.QueryMonthEventView(LocalStamp(2025, 3, 1), LocalStamp(2025, 4, 1), text);
    ASSERT_NE(head, nullptr);
    const auto* bytes = reinterpret_cast<const uint8_t*>(head);
    auto word = [&](const uint8_t* base, int offset) {
        int32_t value;
        std::memcpy(&value, base + offset, 4);
        return value;
    };
    // Series (starts Mar 3) first, then the midnight event, then the all-day one.
    EXPECT_EQ(word(bytes, 52), idSeries);
    EXPECT_EQ(word(bytes, 0), PLDate(2025, 3, 3).dayNumber);
    EXPECT_EQ(word(bytes, 8), PLDate(2025, 3, 3).dayNumber);
    EXPECT_EQ(word(bytes, 16), PLDate(2026, 1, 13).dayNumber) << "limit is the last-occurrence day";
    EXPECT_EQ(bytes[28], 17);
    EXPECT_EQ(bytes[29], 30);
    EXPECT_EQ(word(bytes, 36), 2);
    EXPECT_EQ(word(bytes, 40), (2 << 8) | 3);
    EXPECT_EQ(word(bytes, 48), 4);

    const APMonthEventNode* second = head->next;
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->id, idMidnight);
    EXPECT_EQ(second->lastDay, PLDate(2025, 3, 11)) << "the end's day as stored; the view moves it";
    EXPECT_EQ(second->limitDay, second->lastDay);
    EXPECT_EQ(second->endTime, PLTime(0, 0, 0));
    EXPECT_EQ(second->colour, 11550u);

    const APMonthEventNode* third = second->next;
    ASSERT_NE(third, nullptr);
    EXPECT_EQ(third->id, idAllDay);
    EXPECT_EQ(third->allDay, 1);
    EXPECT_EQ(third->firstDay, PLDate(2025, 3, 20));
    EXPECT_EQ(third->lastDay, PLDate(2025, 3, 21));
    EXPECT_EQ(third->next, nullptr);
    APFreeEventNodes(head);

    EXPECT_EQ(store.QueryMonthEventView(LocalStamp(2027, 5, 1), LocalStamp(2027, 6, 1), text),
              nullptr);
}

struct DayRow {
    const char* name;
    std::function<_EventRecInfo()> make;
    PLDate day;
    int occurrences;  // nodes expected for the day
    PLDate first;     // of the first node
    PLDate last;
    int hour;
};

_EventRecInfo Series(int kind, int a, int b, PLDate start, int startHour, int durationHours,
                     PLDate limit) {
    const long begin = LocalStamp(start.year, start.month, start.day, startHour);
    _EventRecInfo r = TimedEvent("series", begin, begin + durationHours * 3600L);
    MakeRepeating(r, kind, a, b, LocalStamp(limit.year, limit.month, limit.day, startHour));
    return r;
}

TEST_F(EventStoreTest, DayQueryExpandsEveryKindLikeTheMonthView) {
    const PLDate far(2030, 12, 31);
    const DayRow rows[] = {
        {"daily_every_second_hit",
         [&] {
             return Series(1, 2, 0, {2025, 3, 10}, 9, 1, far);
         },
         {2025, 3, 12},
         1,
         {2025, 3, 12},
         {2025, 3, 12},
         9},
        {"daily_every_second_miss",
         [&] {
             return Series(1, 2, 0, {2025, 3, 10}, 9, 1, far);
         },
         {2025, 3, 13},
         0,
         {},
         {},
         0},
        {"workdays_saturday",
         [&] {
             return Series(1, 1, 1, {2025, 3, 10}, 9, 1, far);
         },
         {2025, 3, 15},
         0,
         {},
         {},
         0},
        {"workdays_monday",
         [&] {
             return Series(1, 1, 1, {2025, 3, 10}, 9, 1, far);
         },
         {2025, 3, 17},
         1,
         {2025, 3, 17},
         {2025, 3, 17},
         9},
        {"weekly_every_second_hit",
         [&] {
             return Series(2, 2, 0x04, {2025, 3, 4}, 8, 1, far);
         },
         {2025, 3, 18},
         1,
         {2025, 3, 18},
         {2025, 3, 18},
         8},
        {"weekly_every_second_miss",
         [&] {
             return Series(2, 2, 0x04, {2025, 3, 4}, 8, 1, far);
         },
         {2025, 3, 11},
         0,
         {},
         {},
         0},
        {"weekly_sunday_starts_week",
         [&] {
             return Series(2, 2, 0x41, {2025, 3, 8}, 8, 1, far);
         },
         {2025, 3, 9},
         0,
         {},
         {},
         0},
        {"weekly_sunday_two_weeks_on",
         [&] {
             return Series(2, 2, 0x41, {2025, 3, 8}, 8, 1, far);
         },
         {2025, 3, 16},
         1,
         {2025, 3, 16},
         {2025, 3, 16},
         8},
        {"monthly_31_hit",
         [&] {
             return Series(4, 1, 31, {2025, 1, 31}, 8, 1, far);
         },
         {2025, 3, 31},
         1,
         {2025, 3, 31},
         {2025, 3, 31},
         8},
        {"monthly_31_not_clamped",
         [&] {
             return Series(4, 1, 31, {2025, 1, 31}, 8, 1, far);
         },
         {2025, 4, 30},
         0,
         {},
         {},
         0},
        {"monthly_nth_interval_hit",
         [&] {
             return Series(4, 2, 0x0203, {2025, 1, 14}, 8, 1, far);
         },
         {2025, 3, 11},
         1,
         {2025, 3, 11},
         {2025, 3, 11},
         8},
        {"monthly_nth_interval_miss",
         [&] {
             return Series(4, 2, 0x0203, {2025, 1, 14}, 8, 1, far);
         },
         {2025, 2, 11},
         0,
         {},
         {},
         0},
        {"yearly_feb_29_clamped",
         [&] {
             return Series(8, 2, 29, {2024, 2, 29}, 8, 1, far);
         },
         {2025, 2, 28},
         1,
         {2025, 2, 28},
         {2025, 2, 28},
         8},
        {"yearly_last_friday",
         [&] {
             return Series(8, 5, 0x0506, {2025, 1, 3}, 8, 1, far);
         },
         {2025, 5, 30},
         1,
         {2025, 5, 30},
         {2025, 5, 30},
         8},
        {"after_limit",
         [&] {
             return Series(1, 1, 0, {2025, 3, 10}, 9, 1, {2025, 3, 12});
         },
         {2025, 3, 13},
         0,
         {},
         {},
         0},
        {"before_first",
         [&] {
             return Series(1, 1, 0, {2025, 3, 10}, 9, 1, far);
         },
         {2025, 3, 9},
         0,
         {},
         {},
         0},
        {"interval_zero",
         [&] {
             return Series(1, 0, 0, {2025, 3, 10}, 9, 1, far);
         },
         {2025, 3, 10},
         0,
         {},
         {},
         0},
        {"month_13",
         [&] {
             return Series(8, 13, 10, {2025, 3, 10}, 9, 1, far);
         },
         {2025, 3, 10},
         0,
         {},
         {},
         0},
        {"day_45",
         [&] {
             return Series(4, 1, 45, {2025, 3, 10}, 9, 1, far);
         },
         {2025, 3, 10},
         0,
         {},
         {},
         0},
        {"weekday_9",
         [&] {
             return Series(4, 1, 0x0209, {2025, 3, 10}, 9, 1, far);
         },
         {2025, 3, 11},
         0,
         {},
         {},
         0},
        {"huge_week_number",
         [&] {
             return Series(4, 1, 0x7FFF0103, {2025, 3, 10}, 9, 1, far);
         },
         {2025, 3, 25},
         1,
         {2025, 3, 25},
         {2025, 3, 25},
         9},
        {"kind_3_is_single",
         [&] {
             return Series(3, 1, 0, {2025, 3, 10}, 9, 1, far);
         },
         {2025, 3, 11},
         0,
         {},
         {},
         0},
        {"kind_3_own_day",
         [&] {
             return Series(3, 1, 0, {2025, 3, 10}, 9, 1, far);
         },
         {2025, 3, 10},
         1,
         {2025, 3, 10},
         {2025, 3, 10},
         9},
        {"weekly_two_day_occurrence",
         [&] {
             return Series(2, 1, 0x02, {2025, 3, 3}, 22, 12, far);
         },
         {2025, 3, 11},
         1,
         {2025, 3, 10},
         {2025, 3, 11},
         22},
        {"daily_three_day_occurrences",
         [&] {
             return Series(1, 1, 0, {2025, 3, 3}, 10, 50, far);
         },
         {2025, 3, 11},
         3,
         {2025, 3, 9},
         {2025, 3, 11},
         10},
        {"midnight_end_not_next_day",
         [] { return TimedEvent("m", LocalStamp(2025, 3, 10, 22), LocalStamp(2025, 3, 11)); },
         {2025, 3, 11},
         0,
         {},
         {},
         0},
        {"midnight_end_one_day",
         [] { return TimedEvent("m", LocalStamp(2025, 3, 10, 22), LocalStamp(2025, 3, 11)); },
         {2025, 3, 10},
         1,
         {2025, 3, 10},
         {2025, 3, 10},
         22},
        {"multi_day_single",
         [] { return TimedEvent("md", LocalStamp(2025, 3, 9, 10), LocalStamp(2025, 3, 11, 12)); },
         {2025, 3, 10},
         1,
         {2025, 3, 9},
         {2025, 3, 11},
         10},
        {"all_day_two_days",
         [] { return AllDayEvent("ad", 2025, 3, 10, 2); },
         {2025, 3, 11},
         1,
         {2025, 3, 10},
         {2025, 3, 11},
         0},
    };
    for (const DayRow& row : rows) {
        SCOPED_TRACE(row.name);
        TearDown();
        SetUp();
        UseZone("Europe/Berlin");
        const int id = Add(row.make());
        ASSERT_EQ(id, 1);
        APEventRec store;
        PLBasicString<char> text;
        const PLDate& d = row.day;
        APDayEventNode* head =
            store.GetDayEventView(LocalStamp(d.year, d.month, d.day),
                                  LocalStamp(d.year, d.month, d.day, 23, 59, 59), text);
        int count = 0;
        for (APDayEventNode* n = head; n; n = n->next) {
            ++count;
        }
        EXPECT_EQ(count, row.occurrences);
        if (head && row.occurrences > 0) {
            EXPECT_EQ(head->id, id);
            EXPECT_EQ(head->firstDay, row.first);
            EXPECT_EQ(head->lastDay, row.last);
            EXPECT_EQ(head->startHour, row.hour);
        }
        APFreeEventNodes(head);
    }
}

TEST_F(EventStoreTest, DayQueryOrderAndIcons) {
    const long day = LocalStamp(2025, 3, 10);
    _EventRecInfo allDay = AllDayEvent("all day", 2025, 3, 10);
    allDay.alarm = 1;
    _EventRecInfo afternoon = TimedEvent("afternoon", day + 14 * 3600, day + 15 * 3600);
    _EventRecInfo morning = TimedEvent("morning", day + 9 * 3600, day + 10 * 3600);
    MakeRepeating(morning, 1, 1, 0, LocalStamp(2030, 12, 31, 9));
    _EventRecInfo longer = TimedEvent("", day - 2 * 3600, day + 2 * 3600);
    _EventRecInfo sameTime = TimedEvent("same", day + 9 * 3600, day + 11 * 3600);
    std::memset(sameTime.subject, 'x', sizeof sameTime.subject);  // no NUL at all
    const int idAllDay = Add(allDay);
    const int idAfternoon = Add(afternoon);
    const int idMorning = Add(morning);
    const int idLonger = Add(longer);
    const int idSame = Add(sameTime);

    APEventRec store;
    PLBasicString<char> text;
    APDayEventNode* head = store.GetDayEventView(day, day + 86399, text);
    std::vector<int> order;
    for (APDayEventNode* n = head; n; n = n->next) {
        order.push_back(n->id);
    }
    EXPECT_EQ(order, (std::vector<int>{idLonger, idAllDay, idMorning, idSame, idAfternoon}));
    ASSERT_EQ(order.size(), 5u);
    const APDayEventNode* longerNode = head;
    const APDayEventNode* allDayNode = longerNode->next;
    const APDayEventNode* morningNode = allDayNode->next;
    const APDayEventNode* sameNode = morningNode->next;
    const auto* raw = reinterpret_cast<const uint8_t*>(allDayNode);
    EXPECT_EQ(raw[633], 1) << "all-day flag";
    EXPECT_EQ(raw[635], 1) << "first icon: alarm";
    EXPECT_EQ(raw[634], 0);
    EXPECT_STREQ(allDayNode->subject, "all day");
    EXPECT_EQ(morningNode->repeatIcon, 1) << "second icon: repeats";
    EXPECT_EQ(morningNode->alarmIcon, 0);
    EXPECT_EQ(longerNode->subject[0], '\0');
    EXPECT_EQ(strlen(sameNode->subject), 600u) << "subject cut to 600 bytes and terminated";
    APFreeEventNodes(head);
}

// An event with an alert record and a daemon alarm, as the save path leaves it.
struct AlarmedEvent {
    int eventId;
    int alertId;
    int daemonId;
};

AlarmedEvent AddAlarmed(long start, long last) {
    AP_ALERT_CONTEXT context;
    std::memset(&context, 0, sizeof context);
    context.alertTime = int32_t(start - 300);
    APAlertDB_MakeDailyRecur(&context, context.alertTime, 1, 0xFFFFF, last);
    const int daemonId = APAlertDB_AddAlert(&context);
    _EventAlertInfo info{};
    info.daemonId = daemonId;
    info.enabled = 1;
    info.eventTime = int32_t(start);
    info.leadAmount = 5;
    info.leadUnit = 1;
    APEventAlertDB alerts;
    const int alertId = alerts.Add(&info);
    _EventRecInfo record = TimedEvent("alarmed", start, start + 3600);
    MakeRepeating(record, 1, 1, 0, last);
    record.alarm = 1;
    record.alertInfoId = alertId;
    const int eventId = Add(record);
    return {eventId, alertId, daemonId};
}

bool AlertExists(int id) {
    APEventAlertDB alerts;
    _EventAlertInfo info{};
    return alerts.GetEventAlertInfo(id, &info) == 1;
}

bool AlarmExists(int id) {
    AP_ALERT_CONTEXT context;
    return APAlertDB_GetAlert(id, &context);
}

bool EventExists(int id) {
    APEventRec store;
    _EventRecInfo record;
    return store.GetEventRec(id, &record) == 1;
}

// Runs SQL on a store file directly, as another program on the device could.
void RawExec(const std::string& path, const std::string& sql) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sql;
    sqlite3_close(db);
}

TEST_F(EventStoreTest, DeletingAnEventRemovesItsAlertAndAlarmInOneTransaction) {
    // A failure at any of the three steps rolls back the other two.
    for (const char* refusing : {"alarms", "alerts", "events"}) {
        SCOPED_TRACE(refusing);
        TearDown();
        SetUp();
        const AlarmedEvent event = AddAlarmed(LocalStamp(2025, 3, 11, 9), LocalStamp(2026, 1, 1));
        ASSERT_GT(event.daemonId, 0);
        RawExec(HostPath(kAPEventStoreDevicePath),
                std::string("CREATE TRIGGER refuse BEFORE DELETE ON ") + refusing +
                    " BEGIN SELECT RAISE(ABORT, 'refused'); END");
        EXPECT_EQ(APEventRec().DeleteEventRec(event.eventId), 0);
        EXPECT_TRUE(EventExists(event.eventId));
        EXPECT_TRUE(AlertExists(event.alertId));
        EXPECT_TRUE(AlarmExists(event.daemonId));
    }
    TearDown();
    SetUp();
    const AlarmedEvent kept = AddAlarmed(LocalStamp(2025, 3, 10, 9), LocalStamp(2026, 1, 1, 9));
    const AlarmedEvent gone = AddAlarmed(LocalStamp(2025, 3, 11, 9), LocalStamp(2026, 1, 1, 9));
    EXPECT_EQ(APEventRec().DeleteEventRec(gone.eventId), 1);
    EXPECT_FALSE(EventExists(gone.eventId));
    EXPECT_FALSE(AlertExists(gone.alertId));
    EXPECT_FALSE(AlarmExists(gone.daemonId));
    EXPECT_TRUE(EventExists(kept.eventId));
    EXPECT_TRUE(AlertExists(kept.alertId));
    EXPECT_TRUE(AlarmExists(kept.daemonId));

    // Atomic across a crash too: SQLite commits one WAL file at once, but attached files one by
    // one. So the three tables share the events file and no other store file exists.
    for (const auto& entry : std::filesystem::recursive_directory_iterator(Root())) {
        const std::string name = entry.path().filename().string();
        EXPECT_TRUE(name.rfind("events.db", 0) == 0 || !entry.is_regular_file()) << name;
    }
}

TEST_F(EventStoreTest, AlarmsOfAnOlderRootMoveIntoTheStore) {
    struct Row {
        const char* name;
        bool readable;
        const char* keptAs;
    };
    const Row rows[] = {{"old_alarm_file", true, ".migrated"}, {"garbage", false, ".unreadable"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TearDown();
        SetUp();
        const std::string legacy = HostPath("/var/lib/alarmd/alarms.db");
        PLDeviceRoot::MakeParentDirectories("/var/lib/alarmd/alarms.db");
        AP_ALERT_CONTEXT context;
        std::memset(&context, 0, sizeof context);
        context.alertTime = 1234;
        std::strcpy(context.rule, "FREQ=DAILY;INTERVAL=1;COUNT=2");
        if (row.readable) {
            RawExec(legacy,
                    "CREATE TABLE alarms(id INTEGER PRIMARY KEY AUTOINCREMENT, alert_time INTEGER, "
                    "owner TEXT, rule TEXT, context BLOB);"
                    "CREATE TABLE daemon_state(key TEXT PRIMARY KEY, value INTEGER);"
                    "INSERT INTO daemon_state VALUES('generation', 3);");
            sqlite3* db = nullptr;
            ASSERT_EQ(sqlite3_open(legacy.c_str(), &db), SQLITE_OK);
            sqlite3_stmt* stmt = nullptr;
            sqlite3_prepare_v2(db, "INSERT INTO alarms VALUES(7, 1234, '5', ?1, ?2)", -1, &stmt,
                               nullptr);
            sqlite3_bind_text(stmt, 1, context.rule, -1, SQLITE_STATIC);
            sqlite3_bind_blob(stmt, 2, &context, sizeof context, SQLITE_STATIC);
            EXPECT_EQ(sqlite3_step(stmt), SQLITE_DONE);
            sqlite3_finalize(stmt);
            sqlite3_close(db);
        } else {
            std::ofstream(legacy, std::ios::binary) << std::string(3000, '\x7f');
        }
        std::ifstream before(legacy, std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(before)), {});

        AP_ALERT_CONTEXT back;
        EXPECT_EQ(APAlertDB_GetAlert(7, &back), row.readable);
        if (row.readable) {
            EXPECT_EQ(std::memcmp(back.rule, context.rule, sizeof back.rule), 0);
            EXPECT_EQ(APAlertDB_GetGeneration(), 3);
        }
        EXPECT_FALSE(std::filesystem::exists(legacy));
        std::ifstream after(legacy + row.keptAs, std::ios::binary);
        const std::string kept((std::istreambuf_iterator<char>(after)), {});
        EXPECT_TRUE(row.readable ? !kept.empty() : kept == bytes) << "the old file is kept";
        EXPECT_EQ(APAlertDB_AddAlert(&context), row.readable ? 8 : 1)
            << "new alarms number after the moved ones";
    }
}

TEST_F(EventStoreTest, PurgeRemovesFinishedEventsWithTheirAlarms) {
    const AlarmedEvent oldSeries = AddAlarmed(LocalStamp(2024, 1, 1, 9), LocalStamp(2024, 6, 1, 9));
    const AlarmedEvent liveSeries =
        AddAlarmed(LocalStamp(2024, 1, 1, 9), LocalStamp(2026, 6, 1, 9));
    const int oldSingle =
        Add(TimedEvent("old", LocalStamp(2024, 12, 1), LocalStamp(2024, 12, 1, 1)));
    const int boundary =
        Add(TimedEvent("edge", LocalStamp(2024, 12, 31, 23), LocalStamp(2025, 1, 1)));
    APEventRec store;
    EXPECT_EQ(store.DeleteFinshedEventRec(LocalStamp(2025, 1, 1)), 2);
    EXPECT_FALSE(EventExists(oldSeries.eventId));
    EXPECT_FALSE(AlertExists(oldSeries.alertId));
    EXPECT_FALSE(AlarmExists(oldSeries.daemonId));
    EXPECT_FALSE(EventExists(oldSingle));
    EXPECT_TRUE(EventExists(boundary)) << "ends exactly at the limit: not finished before it";
    EXPECT_TRUE(EventExists(liveSeries.eventId));
    EXPECT_TRUE(AlarmExists(liveSeries.daemonId));
}

struct DamageRow {
    const char* name;
    const char* devicePath;
    std::function<void(const std::string&)> damage;
};

TEST_F(EventStoreTest, DamagedStoreIsSetAsideAndANewOneMade) {
    auto truncate = [](const std::string& path) {
        const auto size = std::filesystem::file_size(path);
        std::filesystem::resize_file(path, size / 2);
    };
    auto garbage = [](const std::string& path) {
        std::ofstream(path, std::ios::binary | std::ios::trunc) << std::string(5000, '\x7f');
    };
    auto header = [](const std::string& path) {
        std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(100);
        file << std::string(3000, '\x01');
    };
    const DamageRow rows[] = {
        {"events_truncated", kAPEventStoreDevicePath, truncate},
        {"events_garbage", kAPEventStoreDevicePath, garbage},
        {"events_pages_overwritten", kAPEventStoreDevicePath, header},
    };
    for (const DamageRow& row : rows) {
        SCOPED_TRACE(row.name);
        TearDown();
        SetUp();
        {
            APEventRec store;
            for (int i = 0; i < 40; ++i) {
                _EventRecInfo filler = Filled(uint32_t(i));
                ASSERT_GT(store.AddEventRec(&filler), 0);
            }
        }
        AddAlarmed(LocalStamp(2025, 3, 10, 9), LocalStamp(2026, 1, 1, 9));
        const std::string host = HostPath(row.devicePath);
        {
            // Fold the write-ahead log into the file so that the damage hits the real data.
            sqlite3* db = nullptr;
            ASSERT_EQ(sqlite3_open(host.c_str(), &db), SQLITE_OK);
            sqlite3_exec(db, "PRAGMA wal_checkpoint(TRUNCATE)", nullptr, nullptr, nullptr);
            sqlite3_close(db);
        }
        row.damage(host);
        std::string damagedBytes;
        {
            std::ifstream in(host, std::ios::binary);
            damagedBytes.assign(std::istreambuf_iterator<char>(in), {});
        }
        APDatabase::ForgetChecks();
        APEventRec store;
        ASSERT_TRUE(store.IsOpen()) << store.GetLastError();
        _EventRecInfo record = TimedEvent("fresh", 5, 6);
        if (std::string(row.devicePath) == kAPEventStoreDevicePath) {
            EXPECT_EQ(store.AddEventRec(&record), 1) << "a new store numbers from 1 again";
        }
        int setAside = 0;
        for (const auto& entry :
             std::filesystem::directory_iterator(std::filesystem::path(host).parent_path())) {
            const std::string name = entry.path().filename().string();
            if (name.find(".corrupt-") != std::string::npos &&
                name.find("-wal") == std::string::npos && name.find("-shm") == std::string::npos) {
                ++setAside;
                std::ifstream in(entry.path(), std::ios::binary);
                const std::string kept((std::istreambuf_iterator<char>(in)), {});
                EXPECT_EQ(kept, damagedBytes) << "the damaged file is kept byte for byte";
            }
        }
        EXPECT_EQ(setAside, 1);
    }
}

TEST_F(EventStoreTest, FullDiskFailsTheWriteAndKeepsTheStore) {
    std::vector<int> stored;
    for (int i = 0; i < 20; ++i) {
        stored.push_back(Add(TimedEvent("before the quota", LocalStamp(2025, 3, 1 + i, 9),
                                        LocalStamp(2025, 3, 1 + i, 10))));
    }
    long pages = 0;
    {
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(HostPath(kAPEventStoreDevicePath).c_str(), &db), SQLITE_OK);
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(db, "PRAGMA page_count", -1, &stmt, nullptr);
        ASSERT_EQ(sqlite3_step(stmt), SQLITE_ROW);
        pages = sqlite3_column_int(stmt, 0);
        sqlite3_finalize(stmt);
        sqlite3_close(db);
    }
    APDatabase::SetPageQuota(pages + 2);
    std::mt19937 random(11);
    auto noisy = [&](int day) {
        _EventRecInfo record =
            TimedEvent("", LocalStamp(2025, 4, day, 9), LocalStamp(2025, 4, day, 10));
        for (char& c : record.notes) {
            c = char('a' + random() % 26);
        }
        record.notes[600] = 0;
        return record;
    };
    int failedAt = -1;
    for (int i = 0; i < 40 && failedAt < 0; ++i) {
        APEventRec store;
        _EventRecInfo record = noisy(1 + i % 28);
        const int id = store.AddEventRec(&record);
        if (id <= 0) {
            failedAt = i;
        } else {
            stored.push_back(id);
        }
    }
    ASSERT_GE(failedAt, 0) << "the quota was never reached";

    // What each id must hold afterwards: its last successful write.
    std::map<int, _EventRecInfo> expected;
    {
        APEventRec store;
        for (int id : stored) {
            ASSERT_EQ(store.GetEventRec(id, &expected[id]), 1);
        }
        bool updateFailed = false;
        for (int i = 0; i < 50 && !updateFailed; ++i) {
            _EventRecInfo bigger = noisy(2);
            std::memset(bigger.platform3, 0x33 + i, sizeof bigger.platform3);
            const int id = stored[size_t(i) % stored.size()];
            bigger.id = id;
            if (store.UpdateEventRec(&bigger) == id) {
                expected[id] = bigger;
            } else {
                EXPECT_EQ(bigger.id, 0) << "a failed update reports itself through the id";
                updateFailed = true;
            }
        }
        EXPECT_TRUE(updateFailed) << "an update past the quota fails";
    }
    APDatabase::SetPageQuota(0);
    APDatabase::ForgetChecks();
    APEventRec store;
    std::vector<int> ids = store.ListEventIds(0, 0);
    std::sort(ids.begin(), ids.end());
    EXPECT_EQ(ids, stored);
    for (const auto& [id, want] : expected) {
        SCOPED_TRACE(id);
        _EventRecInfo got;
        ASSERT_EQ(store.GetEventRec(id, &got), 1);
        EXPECT_EQ(std::memcmp(&got, &want, sizeof got), 0);
    }
}

}  // namespace

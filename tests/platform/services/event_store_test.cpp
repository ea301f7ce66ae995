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

// An event as local start and end (y, m, d, h); all-day events cover start..end dates; a series
// (kind > 0) runs until `last`.
struct WhichRow {
    const char* name;
    int start[4];
    int end[4];
    bool allDay;
    int kind, b;
    int last[3];
    bool inMarch2025;
};

_EventRecInfo Make(const WhichRow& row) {
    const int* s = row.start;
    const int* e = row.end;
    _EventRecInfo r = row.allDay
                          ? AllDayEvent(row.name, s[0], s[1], s[2],
                                        PLDate(e[0], e[1], e[2]) - PLDate(s[0], s[1], s[2]) + 1)
                          : TimedEvent(row.name, LocalStamp(s[0], s[1], s[2], s[3]),
                                       LocalStamp(e[0], e[1], e[2], e[3]));
    if (row.kind != 0) {
        MakeRepeating(r, row.kind, 1, row.b, LocalStamp(row.last[0], row.last[1], row.last[2], 23));
    }
    return r;
}

TEST_F(EventStoreTest, MonthQueryReturnsEveryEventThatTouchesTheRangeOnce) {
    const WhichRow rows[] = {
        {"inside", {2025, 3, 10, 10}, {2025, 3, 10, 11}, false, 0, 0, {}, true},
        {"ends_at_first_midnight", {2025, 2, 28, 22}, {2025, 3, 1, 0}, false, 0, 0, {}, false},
        {"starts_at_next_midnight", {2025, 4, 1, 0}, {2025, 4, 1, 1}, false, 0, 0, {}, false},
        {"spans_into", {2025, 2, 27, 8}, {2025, 3, 2, 8}, false, 0, 0, {}, true},
        {"spans_over", {2025, 2, 1, 0}, {2025, 4, 30, 0}, false, 0, 0, {}, true},
        {"before", {2025, 2, 10, 0}, {2025, 2, 10, 1}, false, 0, 0, {}, false},
        {"all_day_first", {2025, 3, 1}, {2025, 3, 1}, true, 0, 0, {}, true},
        {"all_day_before", {2025, 2, 28}, {2025, 2, 28}, true, 0, 0, {}, false},
        {"all_day_after", {2025, 4, 1}, {2025, 4, 1}, true, 0, 0, {}, false},
        {"series_from_2024", {2024, 1, 5, 7}, {2024, 1, 5, 8}, false, 1, 0, {2030, 12, 31}, true},
        {"series_ended", {2024, 1, 1, 7}, {2024, 1, 1, 8}, false, 2, 2, {2025, 2, 20}, false},
        {"series_later", {2025, 4, 3, 7}, {2025, 4, 3, 8}, false, 4, 3, {2030, 12, 31}, false},
        {"kind_3_single", {2025, 3, 20, 7}, {2025, 3, 20, 8}, false, 3, 0, {2030, 12, 31}, true},
        {"end_before_start", {2025, 3, 15, 10}, {2025, 3, 14, 0}, false, 0, 0, {}, true},
        {"same_start_as_inside", {2025, 3, 10, 10}, {2025, 3, 10, 12}, false, 0, 0, {}, true},
    };
    for (const char* zone : {"UTC", "America/New_York", "Asia/Tokyo"}) {
        SCOPED_TRACE(zone);
        TearDown();
        SetUp();
        UseZone(zone);
        std::vector<std::pair<long, int>> expected;
        for (const WhichRow& row : rows) {
            const _EventRecInfo record = Make(row);
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

// One event for the day query: a series of `kind` (or, with kind -1, a single event) starting on
// `start` (YYYYMMDD) at `hour`, lasting `hours`, whose series ends on `limit`. The first node of
// the day asked for covers `first` .. `last` (0: the same day as `first`).
struct DayRow {
    const char* name;
    int kind, a, b, start, hour, hours, limit, day, occurrences, first, last;
};

PLDate DateOf(int ymd) {
    return PLDate(ymd / 10000, ymd / 100 % 100, ymd % 100);
}

TEST_F(EventStoreTest, DayQueryExpandsEveryKindLikeTheMonthView) {
    const int kFar = 20301231;
    const DayRow rows[] = {
        {"daily_every_second_hit", 1, 2, 0, 20250310, 9, 1, kFar, 20250312, 1, 20250312},
        {"daily_every_second_miss", 1, 2, 0, 20250310, 9, 1, kFar, 20250313, 0},
        {"workdays_saturday", 1, 1, 1, 20250310, 9, 1, kFar, 20250315, 0},
        {"workdays_monday", 1, 1, 1, 20250310, 9, 1, kFar, 20250317, 1, 20250317},
        {"weekly_every_second_hit", 2, 2, 0x04, 20250304, 8, 1, kFar, 20250318, 1, 20250318},
        {"weekly_every_second_miss", 2, 2, 0x04, 20250304, 8, 1, kFar, 20250311, 0},
        // Weeks begin on Sunday: the Sunday after a Saturday start is already the second week.
        {"weekly_sunday_starts_week", 2, 2, 0x41, 20250308, 8, 1, kFar, 20250309, 0},
        {"weekly_sunday_two_weeks_on", 2, 2, 0x41, 20250308, 8, 1, kFar, 20250316, 1, 20250316},
        {"monthly_31_hit", 4, 1, 31, 20250131, 8, 1, kFar, 20250331, 1, 20250331},
        {"monthly_31_not_clamped", 4, 1, 31, 20250131, 8, 1, kFar, 20250430, 0},
        {"monthly_nth_interval_hit", 4, 2, 0x0203, 20250114, 8, 1, kFar, 20250311, 1, 20250311},
        {"monthly_nth_interval_miss", 4, 2, 0x0203, 20250114, 8, 1, kFar, 20250211, 0},
        {"yearly_feb_29_clamped", 8, 2, 29, 20240229, 8, 1, kFar, 20250228, 1, 20250228},
        {"yearly_last_friday", 8, 5, 0x0506, 20250103, 8, 1, kFar, 20250530, 1, 20250530},
        {"after_limit", 1, 1, 0, 20250310, 9, 1, 20250312, 20250313, 0},
        {"before_first", 1, 1, 0, 20250310, 9, 1, kFar, 20250309, 0},
        // Impossible fields: an interval below 1 reads as 1 (as the month view reads it), the
        // rest has no occurrence; a week number above 5 is the last week.
        {"interval_zero", 1, 0, 0, 20250310, 9, 1, kFar, 20250311, 1, 20250311},
        {"month_13", 8, 13, 10, 20250310, 9, 1, kFar, 20250310, 0},
        {"day_45", 4, 1, 45, 20250310, 9, 1, kFar, 20250310, 0},
        {"weekday_9", 4, 1, 0x0209, 20250310, 9, 1, kFar, 20250311, 0},
        {"huge_week_number", 4, 1, 0x7FFF0103, 20250310, 9, 1, kFar, 20250325, 1, 20250325},
        {"kind_3_is_single", 3, 1, 0, 20250310, 9, 1, kFar, 20250311, 0},
        {"kind_3_own_day", 3, 1, 0, 20250310, 9, 1, kFar, 20250310, 1, 20250310},
        // Occurrences longer than a day are found from the days they cover.
        {"weekly_two_day_occurrence", 2, 1, 0x02, 20250303, 22, 12, kFar, 20250311, 1, 20250310,
         20250311},
        {"daily_three_day_occurrences", 1, 1, 0, 20250303, 10, 50, kFar, 20250311, 3, 20250309,
         20250311},
        // An end at exactly midnight does not touch the day that begins then.
        {"midnight_end_not_next_day", -1, 0, 0, 20250310, 22, 2, 0, 20250311, 0},
        {"midnight_end_one_day", -1, 0, 0, 20250310, 22, 2, 0, 20250310, 1, 20250310},
        {"multi_day_single", -1, 0, 0, 20250309, 10, 50, 0, 20250310, 1, 20250309, 20250311},
    };
    for (const DayRow& row : rows) {
        SCOPED_TRACE(row.name);
        TearDown();
        SetUp();
        UseZone("Europe/Berlin");
        const PLDate start = DateOf(row.start);
        const long begin = LocalStamp(start.year, start.month, start.day, row.hour);
        _EventRecInfo record = TimedEvent("series", begin, begin + row.hours * 3600L);
        if (row.kind >= 0) {
            const PLDate limit = DateOf(row.limit);
            MakeRepeating(record, row.kind, row.a, row.b,
                          LocalStamp(limit.year, limit.month, limit.day, row.hour));
        }
        ASSERT_EQ(Add(record), 1);
        APEventRec store;
        PLBasicString<char> text;
        const PLDate d = DateOf(row.day);
        APDayEventNode* head =
            store.GetDayEventView(LocalStamp(d.year, d.month, d.day),
                                  LocalStamp(d.year, d.month, d.day, 23, 59, 59), text);
        int count = 0;
        for (APDayEventNode* n = head; n; n = n->next) {
            ++count;
        }
        EXPECT_EQ(count, row.occurrences);
        if (head && row.occurrences > 0) {
            EXPECT_EQ(head->id, 1);
            EXPECT_EQ(head->firstDay, DateOf(row.first));
            EXPECT_EQ(head->lastDay, DateOf(row.last ? row.last : row.first));
            EXPECT_EQ(head->startHour, row.hour);
        }
        APFreeEventNodes(head);
    }
    // All-day events are dates coded as UTC: in any zone they cover exactly their dates.
    for (const char* zone : {"Pacific/Auckland", "America/Los_Angeles"}) {
        SCOPED_TRACE(zone);
        TearDown();
        SetUp();
        UseZone(zone);
        ASSERT_EQ(Add(AllDayEvent("ad", 2025, 3, 10, 2)), 1);
        APEventRec store;
        PLBasicString<char> text;
        for (int day = 9; day <= 12; ++day) {
            APDayEventNode* head = store.GetDayEventView(
                LocalStamp(2025, 3, day), LocalStamp(2025, 3, day, 23, 59, 59), text);
            EXPECT_EQ(head != nullptr, day == 10 || day == 11) << day;
            if (head) {
                EXPECT_EQ(head->firstDay, PLDate(2025, 3, 10));
                EXPECT_EQ(head->lastDay, PLDate(2025, 3, 11));
            }
            APFreeEventNodes(head);
        }
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

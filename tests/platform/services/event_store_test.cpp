// Event store: byte-exact records across reopening, ids, the month/week and day queries, deletion
// cascades, purging, damaged files and a full disk.
#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <functional>
#include <map>
#include <random>
#include <regex>
#include <tuple>
#include <vector>

#include "APAlertDB.h"
#include "APDatabase.h"
#include "APEventAlertDB.h"
#include "APEventRec.h"
#include "PLDeviceRoot.h"
#include "store_support.h"

namespace {

using EventStoreTest = StoreRootTest;

// A query's list copied out and freed as the views free it.
template <class Node>
std::vector<Node> Copy(Node* head) {
    std::vector<Node> nodes;
    for (Node* n = head; n; n = n->next) {
        nodes.push_back(*n);
    }
    APFreeEventNodes(head);
    return nodes;
}

std::vector<APMonthEventNode> Month(long start, long end, bool week = false) {
    APEventRec store;
    PLBasicString<char> text;
    return Copy(week ? store.QueryWeekEventView(start, end, text)
                     : store.QueryMonthEventView(start, end, text));
}

std::vector<APDayEventNode> Day(int ymd) {
    APEventRec store;
    PLBasicString<char> text;
    return Copy(store.GetDayEventView(At(ymd), At(ymd, 23, 59, 59), text));
}

template <class Node>
std::vector<int> Ids(const std::vector<Node>& nodes) {
    std::vector<int> ids(nodes.size());
    std::transform(nodes.begin(), nodes.end(), ids.begin(), [](const Node& n) { return n.id; });
    return ids;
}

int Add(_EventRecInfo record) {
    return APEventRec().AddEventRec(&record);
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

// A freshly opened store holds `want` byte for byte under `id` (the id word is the row's).
bool Holds(int id, _EventRecInfo want) {
    _EventRecInfo back;
    std::memset(&back, 0x5A, sizeof back);
    want.id = id;
    return APEventRec().GetEventRec(id, &back) == 1 && std::memcmp(&back, &want, sizeof back) == 0;
}

// Runs SQL on a store file directly, as another program on the device could; returns the first
// column of the last row it yields (-1 when none).
long RawExec(const std::string& path, const std::string& sql) {
    sqlite3* db = nullptr;
    long value = -1;
    EXPECT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
    auto first = [](void* out, int, char** columns, char**) {
        *static_cast<long*>(out) = columns[0] ? std::atol(columns[0]) : 0;
        return 0;
    };
    EXPECT_EQ(sqlite3_exec(db, sql.c_str(), first, &value, nullptr), SQLITE_OK) << sql;
    sqlite3_close(db);
    return value;
}

// Records read back byte for byte from a freshly opened store, through updates, a full disk
// (a write past the quota fails and changes nothing) and deletions (ids are never reused).
TEST_F(EventStoreTest, RecordsKeepEveryByteAcrossReopeningAndAFullDisk) {
    _EventRecInfo noNul = TimedEvent("x", 100, 200);
    std::memset(noNul.subject, 'S', sizeof noNul.subject);
    std::memset(noNul.location, 'L', sizeof noNul.location);
    std::memset(noNul.notes, 0xE4, sizeof noNul.notes);
    _EventRecInfo impossible = TimedEvent("", At(20250310, 9), At(20250309));
    MakeRepeating(impossible, 3, 0, (45 << 8) | 13, -5, 0);
    impossible.colour = 99;
    impossible.classChoice = 0xFFFFFFFF;
    _EventRecInfo zero;
    InitEventRecInfo(&zero);
    std::map<int, _EventRecInfo> expected;
    for (const _EventRecInfo& record : {noNul, impossible, zero}) {
        expected[Add(record)] = record;
    }
    ASSERT_EQ(expected.rbegin()->first, 3) << "ids from 1: no NUL, impossible fields, all zero";
    for (auto& [id, record] : expected) {
        EXPECT_TRUE(Holds(id, record)) << id;
        record = Filled(uint32_t(id) * 31);
        record.id = id;
        EXPECT_EQ(APEventRec().UpdateEventRec(&record), id);
    }
    bool failed = false;
    for (uint32_t i = 0; i < 60 && !failed; ++i) {
        if (i == 20) {
            APDatabase::SetPageQuota(
                RawExec(HostPath(kAPEventStoreDevicePath), "PRAGMA page_count") + 2);
        }
        const _EventRecInfo record = Filled(i);
        const int id = Add(record);
        failed = id <= 0;
        if (!failed) {
            expected[id] = record;
        }
    }
    EXPECT_TRUE(failed && expected.size() >= 23) << "a write past the quota fails";
    APDatabase::SetPageQuota(0);
    APDatabase::ForgetChecks();
    for (const auto& [id, want] : expected) {
        EXPECT_TRUE(Holds(id, want)) << id;
    }
    // Missing ids fail and leave the caller's record alone.
    APEventRec store;
    EXPECT_EQ(store.DeleteEventRec(1), 1);
    EXPECT_EQ(store.DeleteEventRec(1), 0);
    EXPECT_EQ(Add(zero), int(expected.rbegin()->first) + 1);
    const _EventRecInfo noise = Filled(3);
    _EventRecInfo untouched = noise;
    EXPECT_EQ(store.GetEventRec(1, &untouched), 0);
    EXPECT_EQ(std::memcmp(&untouched, &noise, sizeof noise), 0);
    untouched.id = 77;
    EXPECT_EQ(store.UpdateEventRec(&untouched), 0);
    EXPECT_EQ(untouched.id, 0) << "a failed update reports itself through the id";
}

// An event from `start` to `end` (YYYYMMDD and hour; all-day events cover the dates); a series of
// `kind` runs until 23:00 on `last`.
struct WhichRow {
    const char* name;
    int start, startHour, end, endHour;
    bool allDay;
    int kind, b, last;
    bool inMarch2025;
};

TEST_F(EventStoreTest, MonthQueryReturnsEveryEventThatTouchesTheRangeOnce) {
    // clang-format off
    const WhichRow rows[] = {
        {"inside", 20250310, 10, 20250310, 11, false, 0, 0, 0, true},
        {"ends_at_first_midnight", 20250228, 22, 20250301, 0, false, 0, 0, 0, false},
        {"starts_at_next_midnight", 20250401, 0, 20250401, 1, false, 0, 0, 0, false},
        {"spans_into", 20250227, 8, 20250302, 8, false, 0, 0, 0, true},
        {"spans_over", 20250201, 0, 20250430, 0, false, 0, 0, 0, true},
        {"before", 20250210, 0, 20250210, 1, false, 0, 0, 0, false},
        {"all_day_first", 20250301, 0, 20250301, 0, true, 0, 0, 0, true},
        {"all_day_before", 20250228, 0, 20250228, 0, true, 0, 0, 0, false},
        {"all_day_after", 20250401, 0, 20250401, 0, true, 0, 0, 0, false},
        {"series_from_2024", 20240105, 7, 20240105, 8, false, 1, 0, 20301231, true},
        {"series_ended", 20240101, 7, 20240101, 8, false, 2, 2, 20250220, false},
        {"series_later", 20250403, 7, 20250403, 8, false, 4, 3, 20301231, false},
        {"kind_3_single", 20250320, 7, 20250320, 8, false, 3, 0, 20301231, true},
        {"end_before_start", 20250315, 10, 20250314, 0, false, 0, 0, 0, true},
        {"same_start_as_inside", 20250310, 10, 20250310, 12, false, 0, 0, 0, true},
    };
    // clang-format on
    for (const char* zone : {"UTC", "America/New_York", "Asia/Tokyo"}) {
        SCOPED_TRACE(zone);
        Restart(zone);
        std::map<std::pair<long, int>, int> expected;  // ascending start, ties by id
        for (const WhichRow& row : rows) {
            _EventRecInfo record =
                row.allDay
                    ? AllDayEvent(row.name, row.start, DateOf(row.end) - DateOf(row.start) + 1)
                    : TimedEvent(row.name, At(row.start, row.startHour), At(row.end, row.endHour));
            if (row.kind != 0) {
                MakeRepeating(record, row.kind, 1, row.b, At(row.last, 23));
            }
            const int id = Add(record);
            if (row.inMarch2025) {
                expected[{record.startStamp, id}] = id;
            }
        }
        std::vector<int> want;
        for (const auto& entry : expected) {
            want.push_back(entry.second);
        }
        for (bool week : {false, true}) {
            EXPECT_EQ(Ids(Month(At(20250301), At(20250401), week)), want);
        }
    }
}

// One event for the day query: a series of `kind` (or, with kind -1, a single event) starting on
// `start` (YYYYMMDD) at `hour`, lasting `hours`, whose series ends on `limit`. The first node of
// the day asked for covers `first` .. `last` (0: the same day as `first`).
struct DayRow {
    const char* name;
    int kind, a, b, start, hour, hours, limit, day, occurrences, first, last;
};

TEST_F(EventStoreTest, DayQueryExpandsEveryKindLikeTheMonthView) {
    const int kFar = 20301231;
    // clang-format off
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
        {"weekly_two_day_occurrence", 2, 1, 0x02, 20250303, 22, 12, kFar, 20250311, 1, 20250310, 20250311},
        {"daily_three_day_occurrences", 1, 1, 0, 20250303, 10, 50, kFar, 20250311, 3, 20250309, 20250311},
        // An end at exactly midnight does not touch the day that begins then.
        {"midnight_end_not_next_day", -1, 0, 0, 20250310, 22, 2, 0, 20250311, 0},
        {"midnight_end_one_day", -1, 0, 0, 20250310, 22, 2, 0, 20250310, 1, 20250310},
        {"multi_day_single", -1, 0, 0, 20250309, 10, 50, 0, 20250310, 1, 20250309, 20250311},
    };
    // clang-format on
    for (const DayRow& row : rows) {
        SCOPED_TRACE(row.name);
        Restart("Europe/Berlin");
        const long begin = At(row.start, row.hour);
        _EventRecInfo record = TimedEvent("series", begin, begin + row.hours * 3600L);
        if (row.kind >= 0) {
            MakeRepeating(record, row.kind, row.a, row.b, At(row.limit, row.hour));
        }
        ASSERT_EQ(Add(record), 1);
        const std::vector<APDayEventNode> nodes = Day(row.day);
        ASSERT_EQ(int(nodes.size()), row.occurrences);
        if (!nodes.empty()) {
            EXPECT_EQ(nodes[0].firstDay, DateOf(row.first));
            EXPECT_EQ(nodes[0].lastDay, DateOf(row.last ? row.last : row.first));
            EXPECT_EQ(nodes[0].startHour, row.hour);
        }
    }
    // All-day events are dates coded as UTC: in any zone they cover exactly their dates.
    for (const char* zone : {"Pacific/Auckland", "America/Los_Angeles"}) {
        SCOPED_TRACE(zone);
        Restart(zone);
        ASSERT_EQ(Add(AllDayEvent("ad", 20250310, 2)), 1);
        for (int day = 9; day <= 12; ++day) {
            const std::vector<APDayEventNode> nodes = Day(20250300 + day);
            ASSERT_EQ(nodes.size(), day == 10 || day == 11 ? 1u : 0u) << day;
            for (const APDayEventNode& node : nodes) {
                EXPECT_EQ(std::tie(node.firstDay, node.lastDay),
                          std::make_tuple(DateOf(20250310), DateOf(20250311)));
            }
        }
    }
}

TEST_F(EventStoreTest, NodesCarryWhatTheViewsPlaceAndShow) {
    const long day = At(20250310);
    _EventRecInfo midnight = TimedEvent("m", day + 10 * 3600, At(20250311));
    midnight.colour = 11550;
    _EventRecInfo series = TimedEvent("s", At(20250303, 9), At(20250303, 17, 30));
    MakeRepeating(series, 4, 2, (2 << 8) | 3, At(20260113, 9), 6);
    _EventRecInfo allDay = AllDayEvent("all day", 20250310, 2);
    allDay.alarm = 1;
    _EventRecInfo morning = TimedEvent("morning", day + 9 * 3600, day + 10 * 3600);
    MakeRepeating(morning, 1, 1, 0, At(20301231, 9));
    _EventRecInfo sameTime = TimedEvent("", day + 9 * 3600, day + 11 * 3600);
    std::memset(sameTime.subject, 'x', sizeof sameTime.subject);  // no NUL at all
    const int idMidnight = Add(midnight), idSeries = Add(series), idAllDay = Add(allDay);
    const int idAfternoon = Add(TimedEvent("afternoon", day + 14 * 3600, day + 15 * 3600));
    const int idMorning = Add(morning), idSame = Add(sameTime);
    const int idLonger = Add(TimedEvent("", day - 2 * 3600, day + 2 * 3600));

    std::map<int, APMonthEventNode> month;
    for (const APMonthEventNode& n : Month(At(20250301), At(20250401))) {
        month[n.id] = n;
    }
    ASSERT_EQ(month.size(), 7u);
    // The limit is the last occurrence's day; a midnight end is the end's day as stored (the view
    // moves it).
    const APMonthEventNode& s = month[idSeries];
    EXPECT_EQ(std::tie(s.firstDay, s.lastDay, s.limitDay, s.endTime, s.recurKind, s.recurValueA,
                       s.recurValueB),
              std::make_tuple(DateOf(20250303), DateOf(20250303), DateOf(20260113),
                              PLTime(17, 30, 0), 4, 2, (2 << 8) | 3));
    const APMonthEventNode& m = month[idMidnight];
    EXPECT_EQ(std::tie(m.lastDay, m.limitDay, m.endTime, m.colour),
              std::make_tuple(DateOf(20250311), DateOf(20250311), PLTime(0, 0, 0), 11550u));
    const APMonthEventNode& a = month[idAllDay];
    EXPECT_EQ(std::tie(a.allDay, a.firstDay, a.lastDay),
              std::make_tuple(uint8_t(1), DateOf(20250310), DateOf(20250311)));

    // The day: multi-day and all-day occurrences first, then by start time, ties by id; the first
    // icon is the alarm, the second the repeat; the subject is cut to 600 bytes and terminated.
    const std::vector<APDayEventNode> d = Day(20250310);
    ASSERT_EQ(Ids(d),
              (std::vector<int>{idLonger, idAllDay, idMorning, idSame, idMidnight, idAfternoon}));
    EXPECT_EQ(
        std::make_tuple(std::string(d[0].subject), std::string(d[1].subject), strlen(d[3].subject)),
        std::make_tuple(std::string(), std::string("all day"), size_t(600)));
    EXPECT_EQ(std::make_tuple(d[1].allDay, d[1].alarmIcon, d[1].repeatIcon, d[2].alarmIcon,
                              d[2].repeatIcon),
              std::make_tuple(1, 1, 0, 0, 1));
}

// An event with an alert record and a daemon alarm, as the save path leaves it.
struct AlarmedEvent {
    int eventId, alertId, daemonId;
    // Whether each of the three records is there (or none of them).
    bool Exists(bool present) const {
        _EventRecInfo record;
        _EventAlertInfo info{};
        AP_ALERT_CONTEXT context;
        return (APEventRec().GetEventRec(eventId, &record) == 1) == present &&
               (APEventAlertDB().GetEventAlertInfo(alertId, &info) == 1) == present &&
               APAlertDB_GetAlert(daemonId, &context) == present;
    }
};

AlarmedEvent AddAlarmed(long start, long last) {
    AP_ALERT_CONTEXT context{0, int32_t(start - 300)};
    APAlertDB_MakeDailyRecur(&context, context.alertTime, 1, 0xFFFFF, last);
    _EventAlertInfo info{0, APAlertDB_AddAlert(&context), 1, {}, int32_t(start), 5, 1};
    _EventRecInfo record = TimedEvent("alarmed", start, start + 3600);
    MakeRepeating(record, 1, 1, 0, last);
    record.alarm = 1;
    record.alertInfoId = APEventAlertDB().Add(&info);
    return {Add(record), info.id, info.daemonId};
}

TEST_F(EventStoreTest, DeletingOrPurgingRemovesAlertsAndAlarmsInOneTransaction) {
    // A failure at any of the three steps rolls back the other two.
    for (const char* refusing : {"alarms", "alerts", "events"}) {
        SCOPED_TRACE(refusing);
        Restart();
        const AlarmedEvent event = AddAlarmed(At(20250311, 9), At(20260101));
        RawExec(HostPath(kAPEventStoreDevicePath),
                std::string("CREATE TRIGGER refuse BEFORE DELETE ON ") + refusing +
                    " BEGIN SELECT RAISE(ABORT, 'refused'); END");
        EXPECT_EQ(APEventRec().DeleteEventRec(event.eventId), 0);
        EXPECT_TRUE(event.Exists(true));
    }
    Restart();
    const AlarmedEvent kept = AddAlarmed(At(20250310, 9), At(20260101, 9));
    const AlarmedEvent gone = AddAlarmed(At(20250311, 9), At(20260101, 9));
    EXPECT_EQ(APEventRec().DeleteEventRec(gone.eventId), 1);
    EXPECT_TRUE(gone.Exists(false));
    EXPECT_TRUE(kept.Exists(true));

    // Atomic across a crash too: SQLite commits one WAL file at once, but attached files one by
    // one. So the three tables share the events file and no other store file exists.
    for (const auto& entry : std::filesystem::recursive_directory_iterator(Root())) {
        const std::string name = entry.path().filename().string();
        EXPECT_TRUE(name.rfind("events.db", 0) == 0 || !entry.is_regular_file()) << name;
    }

    // Purging finished events takes their alerts and alarms too; an event that ends exactly at
    // the limit is not finished before it.
    const AlarmedEvent oldSeries = AddAlarmed(At(20240101, 9), At(20240601, 9));
    const AlarmedEvent liveSeries = AddAlarmed(At(20240101, 9), At(20260601, 9));
    const int oldSingle = Add(TimedEvent("old", At(20241201), At(20241201, 1)));
    const _EventRecInfo edge = TimedEvent("edge", At(20241231, 23), At(20250101));
    const int boundary = Add(edge);
    EXPECT_EQ(APEventRec().DeleteFinshedEventRec(At(20250101)), 2);
    EXPECT_TRUE(oldSeries.Exists(false));
    _EventRecInfo unused;
    EXPECT_EQ(APEventRec().GetEventRec(oldSingle, &unused), 0);
    EXPECT_TRUE(Holds(boundary, edge));
    EXPECT_TRUE(liveSeries.Exists(true));
}

TEST_F(EventStoreTest, AlarmsOfAnOlderRootMoveIntoTheStore) {
    AP_ALERT_CONTEXT context{7, 1234, "FREQ=DAILY;INTERVAL=1;COUNT=2"};
    char blob[2 * sizeof context + 1];
    for (size_t i = 0; i < sizeof context; ++i) {
        std::snprintf(blob + 2 * i, 3, "%02X", reinterpret_cast<const uint8_t*>(&context)[i]);
    }
    for (bool readable : {true, false}) {
        SCOPED_TRACE(readable ? "old_alarm_file" : "garbage");
        Restart();
        const std::string legacy = HostPath("/var/lib/alarmd/alarms.db");
        PLDeviceRoot::MakeParentDirectories("/var/lib/alarmd/alarms.db");
        if (readable) {
            RawExec(legacy,
                    "CREATE TABLE alarms(id INTEGER PRIMARY KEY AUTOINCREMENT, alert_time INTEGER, "
                    "owner TEXT, rule TEXT, context BLOB);"
                    "CREATE TABLE daemon_state(key TEXT PRIMARY KEY, value INTEGER);"
                    "INSERT INTO daemon_state VALUES('generation', 3);"
                    "INSERT INTO alarms VALUES(7, 1234, '', '" +
                        std::string(context.rule) + "', X'" + blob + "');");
        } else {
            WriteFile(legacy, std::string(3000, '\x7f'));
        }
        AP_ALERT_CONTEXT back;
        EXPECT_EQ(APAlertDB_GetAlert(7, &back), readable);
        EXPECT_TRUE(!readable || std::memcmp(&back, &context, sizeof back) == 0);
        EXPECT_EQ(APAlertDB_GetGeneration(), readable ? 3 : 0);
        EXPECT_FALSE(std::filesystem::exists(legacy));
        const std::string kept = ReadFile(legacy + (readable ? ".migrated" : ".unreadable"));
        EXPECT_TRUE(readable ? !kept.empty() : kept == std::string(3000, '\x7f'))
            << "the old file is kept";
        AP_ALERT_CONTEXT next{};
        EXPECT_EQ(APAlertDB_AddAlert(&next), readable ? 8 : 1) << "numbered after the moved ones";
    }
}

// A damaged file is set aside byte for byte and a new store made; where the damaged file still
// shows its id counter, the new store goes on from it, so no id names two different events.
TEST_F(EventStoreTest, DamagedStoreIsSetAsideAndANewOneMade) {
    const std::tuple<const char*, std::function<std::string(std::string)>, int> rows[] = {
        {"truncated", [](std::string bytes) { return bytes.substr(0, bytes.size() / 2); }, 1},
        {"garbage", [](std::string) { return std::string(5000, '\x7f'); }, 1},
        {"pages_overwritten",
         [](std::string bytes) { return bytes.replace(100, 3000, std::string(3000, '\x01')); }, 1},
        {"last_page_overwritten",
         [](std::string bytes) {
             return bytes.replace(bytes.size() - 4096, 4096, std::string(4096, '\x01'));
         },
         42},
    };
    for (const auto& [name, damage, firstId] : rows) {
        SCOPED_TRACE(name);
        Restart();
        const std::string host = HostPath(kAPEventStoreDevicePath);
        for (int i = 0; i < 40; ++i) {
            ASSERT_GT(Add(Filled(uint32_t(i))), 0);
        }
        AddAlarmed(At(20250310, 9), At(20260101, 9));
        // Fold the write-ahead log into the file so that the damage hits the real data.
        RawExec(host, "PRAGMA wal_checkpoint(TRUNCATE)");
        const std::string damaged = damage(ReadFile(host));
        WriteFile(host, damaged);
        APDatabase::ForgetChecks();
        APEventRec store;
        _EventRecInfo record = TimedEvent("fresh", 5, 6);
        EXPECT_EQ(store.AddEventRec(&record), firstId) << store.GetLastError();
        int setAside = 0;
        for (const auto& entry :
             std::filesystem::directory_iterator(std::filesystem::path(host).parent_path())) {
            const std::string file = entry.path().filename().string();
            if (std::regex_search(file, std::regex("\\.corrupt-[0-9-]+$"))) {
                ++setAside;
                EXPECT_EQ(ReadFile(entry.path()), damaged) << "kept byte for byte";
            }
        }
        EXPECT_EQ(setAside, 1);
    }
}

}  // namespace

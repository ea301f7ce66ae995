// The in-memory copy of the long-reaching rows: every change made between two queries, by another
// store object, another connection or another process, is seen by the next query; a write that is
// rolled back changes nothing; and the copy answers exactly what the store itself answers.
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "APEventRec.h"
#include "APSeriesCache.h"
#include "store_support.h"

namespace {

using SeriesCacheTest = StoreRootTest;

// What the views read of a month or day list, one tuple per node.
using MonthRow = std::tuple<int, uint32_t, int, int, int, int32_t, int32_t, int32_t>;
using DayRow = std::tuple<int, int32_t, int32_t, std::string>;

std::vector<MonthRow> MonthOf(long start, long end) {
    APEventRec store;
    PLBasicString<char> text;
    APMonthEventNode* head = store.QueryMonthEventView(start, end, text);
    std::vector<MonthRow> rows;
    for (APMonthEventNode* n = head; n; n = n->next) {
        rows.emplace_back(n->id, n->colour, n->recurKind, n->recurValueA, n->recurValueB,
                          n->firstDay.dayNumber, n->lastDay.dayNumber, n->limitDay.dayNumber);
    }
    APFreeEventNodes(head);
    return rows;
}

std::vector<DayRow> DayOf(int ymd) {
    APEventRec store;
    PLBasicString<char> text;
    APDayEventNode* head = store.GetDayEventView(At(ymd), At(ymd, 23, 59, 59), text);
    std::vector<DayRow> rows;
    for (APDayEventNode* n = head; n; n = n->next) {
        rows.emplace_back(n->id, n->firstDay.dayNumber, n->lastDay.dayNumber, Stored(n->subject));
    }
    APFreeEventNodes(head);
    return rows;
}

_EventRecInfo Series(const char* subject, int ymd, int hour) {
    _EventRecInfo record = TimedEvent(subject, At(ymd, hour), At(ymd, hour + 1));
    MakeRepeating(record, 1, 1, 0, At(20301231, 23));
    return record;
}

void RawSql(const std::string& path, const std::string& sql) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sql;
    sqlite3_close(db);
}

// Runs `work` in a child process, as another program of the device would.
void InAnotherProcess(const std::function<bool()>& work) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        _exit(work() ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "the other process failed";
}

// Two series and a single event in November 2026; id 1 is the morning series.
void Seed() {
    APEventRec store;
    for (_EventRecInfo record : {Series("morning", 20200105, 8), Series("evening", 20240310, 19),
                                 TimedEvent("lunch", At(20261118, 12), At(20261118, 13))}) {
        ASSERT_GT(store.AddEventRec(&record), 0);
    }
}

struct Change {
    const char* name;
    std::function<void(const std::string& storePath)> make;
    bool changesResult;
};

// Each row makes one change between a warm query and the next one of the same month and day.
TEST_F(SeriesCacheTest, NextQuerySeesEveryCommittedChangeAndNoRolledBackOne) {
    const std::vector<Change> changes = {
        {"another store object adds a series",
         [](const std::string&) {
             _EventRecInfo record = Series("added", 20100101, 6);
             EXPECT_GT(APEventRec().AddEventRec(&record), 0);
         },
         true},
        {"another store object edits a series",
         [](const std::string&) {
             APEventRec store;
             _EventRecInfo record;
             ASSERT_EQ(store.GetEventRec(1, &record), 1);
             FillFixedField(record.subject, "edited");
             record.colour += 1;
             EXPECT_EQ(store.UpdateEventRec(&record), 1);
         },
         true},
        {"another store object deletes a series",
         [](const std::string&) { EXPECT_EQ(APEventRec().DeleteEventRec(1), 1); }, true},
        {"another process adds a series",
         [](const std::string&) {
             InAnotherProcess([] {
                 _EventRecInfo record = Series("other process", 20150601, 7);
                 return APEventRec().AddEventRec(&record) > 0;
             });
         },
         true},
        {"another process deletes a series",
         [](const std::string&) {
             InAnotherProcess([] { return APEventRec().DeleteEventRec(1) == 1; });
         },
         true},
        {"another connection removes a series in SQL",
         [](const std::string& path) { RawSql(path, "DELETE FROM events WHERE id = 2"); }, true},
        {"the file is replaced by a fresh store with other series",
         [](const std::string& path) {
             for (const char* suffix : {"", "-wal", "-shm"}) {
                 std::filesystem::remove(path + suffix);
             }
             APEventRec store;
             for (_EventRecInfo record :
                  {Series("fresh a", 20220202, 9), Series("fresh b", 20230303, 10)}) {
                 EXPECT_GT(store.AddEventRec(&record), 0);
             }
         },
         true},
        {"another connection's write is rolled back",
         [](const std::string& path) {
             RawSql(path,
                    "BEGIN IMMEDIATE; UPDATE events SET colour = 7, a = 3; DELETE FROM events "
                    "WHERE id = 1; ROLLBACK;");
         },
         false},
        {"an update of a missing event fails",
         [](const std::string&) {
             _EventRecInfo record = Series("nobody", 20200105, 8);
             record.id = 99;
             EXPECT_EQ(APEventRec().UpdateEventRec(&record), 0);
         },
         false},
        {"a batch with a failing record stores nothing",
         [](const std::string& path) {
             // A trigger that fails the second insert makes the whole batch roll back.
             RawSql(path,
                    "CREATE TRIGGER refuse AFTER INSERT ON events WHEN NEW.id > 4 BEGIN "
                    "SELECT RAISE(ABORT, 'refused'); END;");
             const _EventRecInfo batch[] = {Series("one", 20190101, 5), Series("two", 20190101, 6)};
             int ids[2] = {0, 0};
             EXPECT_EQ(APEventRec().AddEventRecs(batch, 2, ids), 0);
             RawSql(path, "DROP TRIGGER refuse");
         },
         false},
    };
    const long monthStart = At(20261101);
    const long monthEnd = At(20261201);
    for (const Change& change : changes) {
        SCOPED_TRACE(change.name);
        Restart();
        Seed();
        const std::string path = HostPath(kAPEventStoreDevicePath);
        const std::vector<MonthRow> monthBefore = MonthOf(monthStart, monthEnd);
        const std::vector<DayRow> dayBefore = DayOf(20261118);
        ASSERT_EQ(monthBefore.size(), 3u);
        change.make(path);
        const std::vector<MonthRow> month = MonthOf(monthStart, monthEnd);
        const std::vector<DayRow> day = DayOf(20261118);
        EXPECT_EQ(month != monthBefore, change.changesResult);
        EXPECT_EQ(day != dayBefore, change.changesResult);
        // Whatever the copy held, the answers are the store's own: read again without it.
        APSeriesCache::Clear();
        EXPECT_EQ(MonthOf(monthStart, monthEnd), month);
        EXPECT_EQ(DayOf(20261118), day);
    }
}

// Ranges at, inside and beyond the reach of short and long events: the answers from the copy equal
// those of a store without a change stamp, which reads every level from SQLite.
TEST_F(SeriesCacheTest, CopyAnswersWhatTheStoreAnswers) {
    APEventRec store;
    std::vector<_EventRecInfo> records = {
        Series("daily since 2020", 20200105, 8),
        Series("daily from the 20th", 20261120, 6),
        TimedEvent("short", At(20261118, 12), At(20261118, 13)),
        TimedEvent("eight months", At(20260301, 9), At(20261110, 9)),
        AllDayEvent("all day", 20261130, 3),
    };
    _EventRecInfo ended = Series("ended", 20100101, 7);
    ended.lastStamp = int32_t(At(20261115, 23));
    records.push_back(ended);
    for (_EventRecInfo& record : records) {
        ASSERT_GT(store.AddEventRec(&record), 0);
    }
    const struct {
        const char* name;
        long start;
        long end;
    } ranges[] = {
        {"november", At(20261101), At(20261201)},
        {"week of the 15th", At(20261115), At(20261122)},
        {"week of the 22nd", At(20261122), At(20261129)},
        {"december", At(20261201), At(20270101)},
        {"january 2031", At(20310101), At(20310201)},
        {"january 2000", At(20000101), At(20000201)},
    };
    std::vector<std::vector<MonthRow>> cached;
    for (const auto& range : ranges) {
        cached.push_back(MonthOf(range.start, range.end));
    }
    const std::vector<DayRow> day = DayOf(20261116);
    RawSql(HostPath(kAPEventStoreDevicePath), "DELETE FROM event_changes");
    APSeriesCache::Clear();
    for (size_t i = 0; i < std::size(ranges); ++i) {
        EXPECT_EQ(MonthOf(ranges[i].start, ranges[i].end), cached[i]) << ranges[i].name;
    }
    EXPECT_EQ(DayOf(20261116), day);
    EXPECT_EQ(cached[0].size(), 6u) << "november shows every event";
}

// A store made before the change stamp existed gets it (and its triggers) on the next open.
TEST_F(SeriesCacheTest, OlderStoreGainsTheChangeStamp) {
    Seed();
    const std::string path = HostPath(kAPEventStoreDevicePath);
    RawSql(path,
           "DROP TRIGGER events_added; DROP TRIGGER events_changed; DROP TRIGGER events_removed; "
           "DROP TABLE event_changes; PRAGMA user_version = 0;");
    const std::vector<MonthRow> before = MonthOf(At(20261101), At(20261201));
    EXPECT_EQ(before.size(), 3u);
    EXPECT_EQ(APEventRec().DeleteEventRec(2), 1);
    const std::vector<MonthRow> after = MonthOf(At(20261101), At(20261201));
    ASSERT_EQ(after.size(), 2u) << "the delete is seen through the migrated triggers";
    EXPECT_NE(std::get<0>(after[0]), 2);
    EXPECT_NE(std::get<0>(after[1]), 2);
}

}  // namespace

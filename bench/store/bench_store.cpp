// Month query of the event store on stores of 10^4, 10^5 and 10^6 events (10% repeating), each
// built once into a cache under the build directory. The target month always returns 300 nodes;
// the rest of the store is spread over 1902..2037 around it, so a query whose cost follows the
// store's size shows it. Beside it: the same question asked in plain SQL on the same file.
// The series kept in memory by the store count here too: MonthQuery reads its long rows from
// memory whenever the change stamp has not moved since the last query of the process, except on
// the 10^6 store, whose 10^5 series are more than the copy keeps and are read from SQLite as
// before.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <random>
#include <string>
#include <vector>

#include "APDatabase.h"
#include "APEventRec.h"
#include "APStoreFiles.h"
#include "BenchPlainSql.h"
#include "BenchStoreCache.h"
#include "PLTimeStamp.h"

namespace {

constexpr int kTargetNodes = 300;
constexpr int kTargetRepeating = 30;

long Utc(int y, int m, int d, int hour = 0) {
    const PLDate date(y, m, d);
    const PLTime time(hour, 0, 0);
    return PLDateUTC2TimeStamp(&date, &time);
}

const long kMonthStart = Utc(2025, 3, 1);
const long kMonthEnd = Utc(2025, 4, 1);
// Background events stay out of this window, so the target month keeps its 300.
const long kQuietStart = Utc(2025, 1, 15);
const long kQuietEnd = Utc(2025, 5, 15);

_EventRecInfo Event(std::mt19937& random, long start, long duration) {
    _EventRecInfo record;
    InitEventRecInfo(&record);
    std::snprintf(record.subject, sizeof record.subject, "Event %u", unsigned(random() % 100000));
    record.startStamp = int32_t(start);
    record.endStamp = int32_t(start + duration);
    record.lastStamp = record.endStamp;
    record.colour = 11544 + random() % 10;
    record.classChoice = 11561;
    return record;
}

void Repeat(std::mt19937& random, _EventRecInfo& record, long seriesDays) {
    const int kinds[] = {1, 2, 4, 8};
    record.recurKind = kinds[random() % 4];
    record.recurValueA = record.recurKind == 8 ? 1 + int(random() % 12) : 1 + int(random() % 2);
    record.recurValueB = record.recurKind == 2 ? 1 + int(random() % 127) : 1 + int(random() % 28);
    record.recurValueC = 0xFFFFF;
    record.lastStamp = int32_t(record.startStamp + seriesDays * 86400);
    record.recurring = 1;
}

std::vector<_EventRecInfo> MakeEvents(int total) {
    std::mt19937 random(20250301);
    std::vector<_EventRecInfo> events;
    events.reserve(size_t(total));
    for (int i = 0; i < kTargetNodes; ++i) {
        const long start =
            kMonthStart + long(random() % uint32_t(kMonthEnd - kMonthStart - 4 * 3600));
        _EventRecInfo record = Event(random, start, 1800 + long(random() % (3 * 3600)));
        if (i < kTargetRepeating) {
            record.startStamp = int32_t(start - 20 * 86400);
            record.endStamp = int32_t(record.startStamp + 3600);
            Repeat(random, record, 25 + long(random() % 30));
        }
        events.push_back(record);
    }
    const long first = Utc(1902, 1, 1);
    const long last = Utc(2037, 12, 1);
    while (int(events.size()) < total) {
        const long start = first + long(random() % uint32_t(last - first));
        _EventRecInfo record = Event(random, start, 1800 + long(random() % (2 * 86400)));
        const bool repeating = random() % 10 == 0;
        long seriesDays = 0;
        if (repeating) {
            seriesDays = 1 + long(random() % 60);
            Repeat(random, record, seriesDays);
        }
        const long reach = record.endStamp + seriesDays * 86400 + 3 * 86400;
        if (reach > kQuietStart && start < kQuietEnd) {
            continue;
        }
        events.push_back(record);
    }
    return events;
}

// Points the device root at the cached store of the benchmark's size (its argument), building it
// on first use; false, with the benchmark marked skipped and why, when the store cannot be made.
bool UseStore(benchmark::State& state) {
    const int total = int(state.range(0));
    std::string error;
    if (BenchStoreCache::Use(
            "store-" + std::to_string(total), [total] { return MakeEvents(total); }, error)) {
        return true;
    }
    state.SkipWithError(error.c_str());
    return false;
}

// Length of a node list (month or day nodes alike).
template <class Node>
long CountNodes(const Node* head) {
    long nodes = 0;
    for (const Node* n = head; n != nullptr; n = n->next) {
        ++nodes;
    }
    return nodes;
}

void MonthQuery(benchmark::State& state) {
    if (!UseStore(state)) {
        return;
    }
    APEventRec store;
    PLBasicString<char> text;
    long nodes = 0;
    for (auto _ : state) {
        APMonthEventNode* head = store.QueryMonthEventView(kMonthStart, kMonthEnd, text);
        nodes = CountNodes(head);
        APFreeEventNodes(head);
    }
    state.counters["nodes"] = double(nodes);
    state.counters["store"] = double(state.range(0));
}

// The same rows asked for the plain way: every event whose span or series overlaps the month,
// in start order, straight from the table on the same file.
void PlainSqlMonthQuery(benchmark::State& state) {
    if (!UseStore(state)) {
        return;
    }
    const long rows = BenchPlainSqlRange(
        state,
        "SELECT id, start_ts, end_ts, last_ts, kind, a, b, colour, all_day "
        "FROM events WHERE start_ts < ?2 AND "
        "(CASE WHEN kind IN (1, 2, 4, 8) THEN max(end_ts, last_ts + 1) ELSE end_ts END) > ?1 "
        "ORDER BY start_ts, id",
        kMonthStart, kMonthEnd, 0);
    state.counters["nodes"] = double(rows);
    state.counters["store"] = double(state.range(0));
}

void DayQuery(benchmark::State& state) {
    if (!UseStore(state)) {
        return;
    }
    APEventRec store;
    PLBasicString<char> text;
    const long day = Utc(2025, 3, 14);
    long nodes = 0;
    for (auto _ : state) {
        APDayEventNode* head = store.GetDayEventView(day, day + 86399, text);
        nodes = CountNodes(head);
        APFreeEventNodes(head);
    }
    state.counters["nodes"] = double(nodes);
}

void Sizes(benchmark::internal::Benchmark* b) {
    b->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
    b->Repetitions(5)->ReportAggregatesOnly(true);
}

BENCHMARK(MonthQuery)->Apply(Sizes);
BENCHMARK(PlainSqlMonthQuery)->Apply(Sizes);
BENCHMARK(DayQuery)->Apply(Sizes);

}  // namespace

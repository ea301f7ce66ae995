// Event adds per second on one shared store: one writer, and four writers at once (each thread
// its own connections and its own hold on the store's lock, as separate processes have), each
// add opening the store as a short-lived tool does, or through a store kept open as the
// calendar keeps its own.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "APDatabase.h"
#include "APEventRec.h"
#include "PLDeviceRoot.h"

namespace {

// 2026-11-01 00:00 UTC.
constexpr long kNovember = 1793491200L;

_EventRecInfo Event(long i) {
    _EventRecInfo record;
    InitEventRecInfo(&record);
    std::snprintf(record.subject, sizeof record.subject, "Event %ld", i);
    record.startStamp = int32_t(kNovember + (i % 720) * 3600);
    record.endStamp = record.startStamp + 1800;
    record.lastStamp = record.endStamp;
    return record;
}

// A fresh root for each run, set up by the first thread before the others start their loops.
void FreshRoot(benchmark::State& state) {
    if (state.thread_index() != 0) {
        return;
    }
    std::string pattern = (std::filesystem::temp_directory_path() / "bench-shared-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        state.SkipWithError("no temporary folder");
        return;
    }
    PLDeviceRoot::SetRoot(pattern);
    APDatabase::ForgetChecks();
    APEventRec warmUp;  // creates the file, so that the runs time adds, not set-up
}

void RemoveRoot(benchmark::State& state) {
    if (state.thread_index() == 0) {
        std::error_code ignored;
        std::filesystem::remove_all(PLDeviceRoot::GetRoot(), ignored);
    }
}

void BM_AddsOpeningEachTime(benchmark::State& state) {
    FreshRoot(state);
    long i = state.thread_index() * 1000000L;
    for (auto _ : state) {
        _EventRecInfo record = Event(i++);
        APEventRec store;
        if (store.AddEventRec(&record) <= 0) {
            state.SkipWithError(store.GetLastError().c_str());
            break;
        }
    }
    state.SetItemsProcessed(state.iterations());
    RemoveRoot(state);
}
BENCHMARK(BM_AddsOpeningEachTime)->Threads(1)->Threads(4)->UseRealTime();

void BM_AddsThroughAnOpenStore(benchmark::State& state) {
    FreshRoot(state);
    long i = state.thread_index() * 1000000L;
    APEventRec store;
    for (auto _ : state) {
        _EventRecInfo record = Event(i++);
        if (store.AddEventRec(&record) <= 0) {
            state.SkipWithError(store.GetLastError().c_str());
            break;
        }
    }
    state.SetItemsProcessed(state.iterations());
    RemoveRoot(state);
}
BENCHMARK(BM_AddsThroughAnOpenStore)->Threads(1)->Threads(4)->UseRealTime();

}  // namespace

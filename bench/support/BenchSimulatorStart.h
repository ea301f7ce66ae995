// Timing the simulator's start-up in the benchmark's own process: from constructing the simulator
// to its first painted frame, stopped again after each iteration.
#pragma once

#include <benchmark/benchmark.h>

#include "PLHostOptions.h"

// Runs the iterations of `state` (manual time) on a simulator made from `options`; skips the
// benchmark with the simulator's reason when it cannot start.
void BenchTimeStartToFirstFrame(benchmark::State& state, const PLHostOptions& options);

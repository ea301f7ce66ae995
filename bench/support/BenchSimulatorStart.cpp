// One start-up timing loop for every benchmark that starts the simulator.
#include "BenchSimulatorStart.h"

#include <chrono>
#include <string>

#include "PLHostSimulator.h"

void BenchTimeStartToFirstFrame(benchmark::State& state, const PLHostOptions& options) {
    for (auto _ : state) {
        auto begin = std::chrono::steady_clock::now();
        PLHostSimulator simulator(options);
        std::string error;
        int status = 0;
        bool started = simulator.Start(error, status);
        auto end = std::chrono::steady_clock::now();
        simulator.Stop();
        if (!started) {
            state.SkipWithError(error.c_str());
            break;
        }
        state.SetIterationTime(std::chrono::duration<double>(end - begin).count());
    }
}

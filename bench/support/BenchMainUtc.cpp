// The main of the store and calendar benchmarks: they read local dates and stamps, so every run
// uses UTC, whatever the machine's zone, to stay comparable across machines.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <ctime>

int main(int argc, char** argv) {
    setenv("TZ", "UTC", 1);
    tzset();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

// The calendar's start-up and memory on a busy phone: 10^4 events, 10^3 of them repeating.
//  - ColdStartToFirstFrame: the simulator loads the calendar module, which reads its settings and
//    resources, queries the store and paints its first view (target: under 50 ms).
//  - ProcessStartToExit: the same as a whole calendar-sim process, for comparison.
//  - PeakMemoryEveryScreen: one headless process that visits every screen of the calendar; its
//    peak resident memory (target: under 32 MB) is the counter peak_rss_MB.
#include <benchmark/benchmark.h>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "BenchEvents.h"
#include "BenchSimulatorStart.h"
#include "BenchStoreCache.h"
#include "PLHostOptions.h"

extern char** environ;

namespace {

const std::string kBinary = CAL_BINARY_DIR;
const std::string kSource = CAL_SOURCE_DIR;
constexpr int64_t kNowMs = 1795254060000;  // 2026-11-21 09:41 UTC

// The busy store, written once under the build directory; its device root in `root`.
bool UseBusyStore(std::string& root, std::string& error) {
    BenchEventsShape shape;
    shape.shownStart = BenchUtc(2026, 11, 1);
    root = kBinary + "/bench-cache/calendar-start";
    return BenchStoreCache::Use(
        "calendar-start", [shape] { return BenchMakeEvents(shape); }, error);
}

void ColdStartToFirstFrame(benchmark::State& state) {
    std::string root;
    std::string error;
    if (!UseBusyStore(root, error)) {
        state.SkipWithError(error.c_str());
        return;
    }
    PLHostOptions options;
    options.headless = true;
    options.app = kBinary + "/apps/calendar.so";
    options.root = root;
    options.script = kSource + "/bench/calendar/nothing.script";
    options.hasNow = true;
    options.nowMs = kNowMs;
    BenchTimeStartToFirstFrame(state, options);
}
BENCHMARK(ColdStartToFirstFrame)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

// Runs calendar-sim on the busy store with `script` under peak_rss; its peak memory in `peakKb`.
bool RunSimulator(const std::string& root, const std::string& script, long& peakKb) {
    std::vector<std::string> arguments{kBinary + "/bin/peak_rss",
                                       kBinary + "/bin/calendar-sim",
                                       "--headless",
                                       "--app",
                                       kBinary + "/apps/calendar.so",
                                       "--root",
                                       root,
                                       "--now",
                                       "2026-11-21 09:41",
                                       "--script",
                                       script};
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    int channel[2];
    if (::pipe(channel) != 0) {
        return false;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, channel[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, channel[0]);
    pid_t pid = -1;
    const bool spawned = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    ::close(channel[1]);
    std::string output;
    char buffer[256];
    for (ssize_t n; spawned && (n = ::read(channel[0], buffer, sizeof buffer)) > 0;) {
        output.append(buffer, size_t(n));
    }
    ::close(channel[0]);
    int status = 0;
    if (!spawned || ::waitpid(pid, &status, 0) != pid) {
        return false;
    }
    // The last line is peak_rss's; anything before it is the simulator's own output.
    const size_t lineStart = output.find_last_of('\n', output.size() >= 2 ? output.size() - 2 : 0);
    peakKb = std::strtol(output.c_str() + (lineStart == std::string::npos ? 0 : lineStart + 1),
                         nullptr, 10);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// Whole calendar-sim processes on the busy store running bench/calendar/`script`; the peak memory
// of the last one is the counter peak_rss_MB.
void RunScript(benchmark::State& state, const char* script) {
    std::string root;
    std::string error;
    if (!UseBusyStore(root, error)) {
        state.SkipWithError(error.c_str());
        return;
    }
    long peakKb = 0;
    for (auto _ : state) {
        if (!RunSimulator(root, kSource + "/bench/calendar/" + script, peakKb)) {
            state.SkipWithError((std::string("calendar-sim failed on ") + script).c_str());
            break;
        }
    }
    state.counters["peak_rss_MB"] = double(peakKb) / 1024.0;
}

void ProcessStartToExit(benchmark::State& state) {
    RunScript(state, "nothing.script");
}
BENCHMARK(ProcessStartToExit)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(5)
    ->Repetitions(3)
    ->ReportAggregatesOnly(true);

void PeakMemoryEveryScreen(benchmark::State& state) {
    RunScript(state, "every-screen.script");
}
BENCHMARK(PeakMemoryEveryScreen)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

}  // namespace

// Start-up of the simulator, headless, with the sample application: in the process up to the
// first painted frame (the target: under 50 ms), and a whole calendar-sim process from exec to
// exit for comparison.
#include <benchmark/benchmark.h>

#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "BenchSimulatorStart.h"
#include "PLHostOptions.h"

extern char** environ;

namespace {

namespace fs = std::filesystem;

const std::string kBinary = CAL_BINARY_DIR;

// A device root and an empty script that live as long as the benchmark.
struct Workspace {
    fs::path directory;
    std::string script;
    Workspace() {
        fs::create_directories(kBinary + "/tests-tmp");
        std::string pattern = kBinary + "/tests-tmp/bench-host-XXXXXX";
        directory = ::mkdtemp(pattern.data()) ? fs::path(pattern) : fs::path();
        script = (directory / "empty.script").string();
        std::ofstream(script) << "# nothing\n";
    }
    ~Workspace() {
        std::error_code ignored;
        fs::remove_all(directory, ignored);
    }
};

void BM_StartToFirstFrame(benchmark::State& state) {
    Workspace workspace;
    PLHostOptions options;
    options.headless = true;
    options.app = kBinary + "/apps/sample.so";
    options.root = (workspace.directory / "root").string();
    options.script = workspace.script;
    options.hasNow = true;
    options.nowMs = 1795254060000;  // 2026-11-21 09:41 UTC
    BenchTimeStartToFirstFrame(state, options);
}
BENCHMARK(BM_StartToFirstFrame)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);

void BM_ProcessStartToExit(benchmark::State& state) {
    Workspace workspace;
    std::vector<std::string> arguments{kBinary + "/bin/calendar-sim",
                                       "--headless",
                                       "--app",
                                       kBinary + "/apps/sample.so",
                                       "--root",
                                       (workspace.directory / "root").string(),
                                       "--now",
                                       "2026-11-21 09:41",
                                       "--script",
                                       workspace.script};
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    for (auto _ : state) {
        pid_t pid = -1;
        if (posix_spawn(&pid, argv[0], nullptr, nullptr, argv.data(), environ) != 0) {
            state.SkipWithError("cannot start calendar-sim");
            break;
        }
        int status = 0;
        ::waitpid(pid, &status, 0);
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            state.SkipWithError("calendar-sim failed");
            break;
        }
    }
}
BENCHMARK(BM_ProcessStartToExit)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(10)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

}  // namespace

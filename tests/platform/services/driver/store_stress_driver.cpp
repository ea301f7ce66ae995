// A process that uses the shared event store the way the device's programs do, for the
// multi-process store tests: it runs until a stop file appears and prints on standard output one
// line per write that the store acknowledged, flushed at once, so that a process killed at any
// moment has printed exactly what it may rely on.
//
//   store_stress_driver ROOT STOP writer TAG            add events with alarms, delete some
//   store_stress_driver ROOT STOP ctl-writer TAG CTL    the same adds through calendar-ctl
//   store_stress_driver ROOT STOP reader                open and query in a loop
//
// Lines: "add ID SUBJECT START" and "del ID"; a reader ends with "reads N failures M". Failures
// are reported on standard error, one line each.
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

#include "APAlertDB.h"
#include "APDatabase.h"
#include "APEventAlertDB.h"
#include "APEventQueryNodes.h"
#include "APEventRec.h"
#include "PLDeviceRoot.h"

extern char** environ;

namespace {

// 2026-11-01 00:00 UTC: the events of every writer land in November so that readers see them.
constexpr long kNovember = 1793491200L;

bool Exists(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0;
}

long StartOf(int i) {
    return kNovember + long(i % 600) * 3600L;
}

// What the calendar does for an event with an alarm ten minutes ahead: the event, the daemon's
// alarm, the alert record, and the event rewritten to name it. 0 when any step failed.
int AddWithAlarm(_EventRecInfo& record) {
    APEventRec store;
    record.id = store.AddEventRec(&record);
    if (record.id <= 0) {
        std::fprintf(stderr, "add: %s\n", store.GetLastError().c_str());
        return 0;
    }
    AP_ALERT_CONTEXT context;
    std::memset(&context, 0, sizeof context);
    context.alertTime = record.startStamp - 600;
    context.sourceKind = 5;
    context.state = 1;
    const int daemonId = APAlertDB_AddAlert(&context);
    _EventAlertInfo info{};
    info.daemonId = daemonId;
    info.enabled = 1;
    info.eventTime = record.startStamp;
    info.leadAmount = 10;
    info.leadUnit = 1;
    APEventAlertDB alerts;
    if (daemonId <= 0 || alerts.Add(&info) <= 0) {
        std::fprintf(stderr, "alarm: %s\n", alerts.GetLastError().c_str());
        return 0;
    }
    record.alertInfoId = info.id;
    record.alarm = 1;
    if (store.UpdateEventRec(&record) <= 0) {
        std::fprintf(stderr, "update: %s\n", store.GetLastError().c_str());
        return 0;
    }
    return record.id;
}

void Acknowledge(int id, const std::string& subject, long start) {
    std::printf("add %d %s %ld\n", id, subject.c_str(), start);
    std::fflush(stdout);
}

int RunWriter(const std::string& stop, const std::string& tag) {
    int previous = 0;
    for (int i = 0; !Exists(stop); ++i) {
        // Every round opens the store as a new process would, quick check included.
        APDatabase::ForgetChecks();
        const std::string subject = tag + "-" + std::to_string(i);
        _EventRecInfo record;
        InitEventRecInfo(&record);
        std::snprintf(record.subject, sizeof record.subject, "%s", subject.c_str());
        record.startStamp = int32_t(StartOf(i));
        record.endStamp = record.startStamp + 1800;
        record.lastStamp = record.endStamp;
        const int id = AddWithAlarm(record);
        if (id > 0) {
            Acknowledge(id, subject, record.startStamp);
        }
        // Every third event is deleted again, so that deletes interleave with the others' adds.
        if (i % 3 == 2 && previous > 0) {
            // Said first: a writer killed between the delete and "del" leaves its id in doubt.
            std::printf("deleting %d\n", previous);
            std::fflush(stdout);
            APEventRec store;
            if (store.DeleteEventRec(previous) == 1) {
                std::printf("del %d\n", previous);
                std::fflush(stdout);
            } else {
                std::fprintf(stderr, "delete %d: %s\n", previous, store.GetLastError().c_str());
            }
        }
        previous = id;
    }
    return 0;
}

// One `calendar-ctl event add`; the id it printed, or 0.
int CtlAdd(const std::string& ctl, const std::string& root, const std::string& subject,
           long start) {
    char when[32];
    const time_t stamp = time_t(start);
    std::tm fields{};
    gmtime_r(&stamp, &fields);
    std::strftime(when, sizeof when, "%Y-%m-%d %H:%M", &fields);
    const time_t endStamp = stamp + 1800;
    gmtime_r(&endStamp, &fields);
    char until[32];
    std::strftime(until, sizeof until, "%Y-%m-%d %H:%M", &fields);
    std::vector<std::string> words = {ctl,         "--root",  root,      "event", "add",
                                      "--subject", subject,   "--start", when,    "--end",
                                      until,       "--alarm", "11534"};
    std::vector<char*> argv;
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    int pipeFds[2];
    if (::pipe(pipeFds) != 0) {
        return 0;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipeFds[1], 1);
    posix_spawn_file_actions_addclose(&actions, pipeFds[0]);
    pid_t child = 0;
    const int spawned = posix_spawn(&child, ctl.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipeFds[1]);
    std::string out;
    char buffer[64];
    for (ssize_t n; (n = ::read(pipeFds[0], buffer, sizeof buffer)) > 0;) {
        out.append(buffer, size_t(n));
    }
    ::close(pipeFds[0]);
    int status = 0;
    if (spawned != 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status) ||
        WEXITSTATUS(status) != 0) {
        return 0;
    }
    return std::atoi(out.c_str());
}

int RunCtlWriter(const std::string& root, const std::string& stop, const std::string& tag,
                 const std::string& ctl) {
    for (int i = 0; !Exists(stop); ++i) {
        const std::string subject = tag + "-" + std::to_string(i);
        const int id = CtlAdd(ctl, root, subject, StartOf(i));
        if (id > 0) {
            Acknowledge(id, subject, StartOf(i));
        }
    }
    return 0;
}

int RunReader(const std::string& stop) {
    long reads = 0, failures = 0;
    PLBasicString<char> unused;
    while (!Exists(stop)) {
        APDatabase::ForgetChecks();
        APEventRec store;
        ++reads;
        if (!store.IsOpen()) {
            ++failures;
            std::fprintf(stderr, "open: %s\n", store.GetLastError().c_str());
            continue;
        }
        APFreeEventNodes(store.QueryMonthEventView(kNovember, kNovember + 30 * 86400L, unused));
        store.ListEventIds(0, 0);
    }
    std::printf("reads %ld failures %ld\n", reads, failures);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fprintf(stderr, "usage: %s ROOT STOP writer TAG | ctl-writer TAG CTL | reader\n",
                     argv[0]);
        return 2;
    }
    setenv("TZ", "UTC", 1);
    tzset();
    const std::string root = argv[1], stop = argv[2], mode = argv[3];
    PLDeviceRoot::SetRoot(root);
    if (mode == "writer" && argc == 5) {
        return RunWriter(stop, argv[4]);
    }
    if (mode == "ctl-writer" && argc == 6) {
        return RunCtlWriter(root, stop, argv[4], argv[5]);
    }
    if (mode == "reader") {
        return RunReader(stop);
    }
    std::fprintf(stderr, "unknown mode %s\n", mode.c_str());
    return 2;
}

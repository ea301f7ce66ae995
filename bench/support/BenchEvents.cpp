// The benchmarks' busy calendar. The seed depends on the shape only, so a cached store built from
// it on one run is the store every later run expects.
#include "BenchEvents.h"

#include <cstdio>
#include <ctime>
#include <random>

#include "BenchStoreCache.h"
#include "recur/_RecurInfo.h"

long BenchUtc(int year, int month, int day, int hour) {
    std::tm t{};
    t.tm_year = year - 1900;
    t.tm_mon = month - 1;
    t.tm_mday = day;
    t.tm_hour = hour;
    return long(timegm(&t));
}

namespace {

void MakeRepeating(std::mt19937& random, _EventRecInfo& record, int index) {
    switch (index % 4) {
        case 0:
            record.recurKind = kRecurDaily;
            record.recurValueB = random() % 4 == 0 ? 1 : 0;
            record.recurValueA = record.recurValueB == 1 ? 1 : 1 + int(random() % 3);
            break;
        case 1:
            record.recurKind = kRecurWeekly;
            record.recurValueA = 1 + int(random() % 2);
            record.recurValueB = 1 + int(random() % 127);
            break;
        case 2:
            record.recurKind = kRecurMonthly;
            record.recurValueA = 1 + int(random() % 3);
            record.recurValueB = random() % 2
                                     ? 1 + int(random() % 28)
                                     : (1 + int(random() % 5)) * 256 + 1 + int(random() % 7);
            break;
        default:
            record.recurKind = kRecurYearly;
            record.recurValueA = 1 + int(random() % 12);
            record.recurValueB = random() % 2
                                     ? 1 + int(random() % 28)
                                     : (1 + int(random() % 4)) * 256 + 1 + int(random() % 7);
            break;
    }
    record.recurring = 1;
    record.recurValueC = kRecurNoEnd;
    record.lastStamp = int32_t(BenchUtc(2030, 12, 31, 23) + 3599);
}

}  // namespace

std::vector<_EventRecInfo> BenchMakeEvents(const BenchEventsShape& shape) {
    std::mt19937 random(20261121u + unsigned(shape.ageYears == 0 ? 20 : shape.ageYears));
    std::vector<_EventRecInfo> events;
    events.reserve(size_t(shape.events));
    const long first = BenchUtc(2006, 1, 1);
    const long last = BenchUtc(2030, 12, 1);
    for (int i = 0; i < shape.events; ++i) {
        _EventRecInfo record;
        InitEventRecInfo(&record);
        long start = first + long(random() % uint32_t(last - first));
        if (i < shape.repeating) {
            const long back = shape.ageYears == 0 ? long(random() % (20u * 365u)) * 86400
                                                  : long(shape.ageYears) * 365 * 86400;
            start = shape.shownStart - back - long(random() % 28) * 86400;
            start -= start % 3600;
        }
        record.startStamp = int32_t(start);
        record.endStamp = int32_t(start + 1800 + long(random() % (2 * 86400)));
        record.lastStamp = record.endStamp;
        record.colour = 11544 + uint32_t(random() % 10);
        record.classChoice = 11561;
        std::snprintf(record.subject, sizeof record.subject, "event %d", i);
        if (i < shape.repeating) {
            record.endStamp = record.startStamp + 3600;
            MakeRepeating(random, record, i);
        }
        events.push_back(record);
    }
    return events;
}

std::vector<_EventRecInfo> BenchNovemberEvents(BenchAge age) {
    BenchEventsShape shape;
    shape.ageYears = age == kBenchUpToTwenty ? 0 : int(age);
    shape.shownStart = BenchUtc(2026, 11, 1);
    return BenchMakeEvents(shape);
}

bool BenchUseNovemberStore(BenchAge age, std::string& error) {
    return BenchStoreCache::Use(
        "calendar-month-" + std::to_string(int(age)), [age] { return BenchNovemberEvents(age); },
        error);
}

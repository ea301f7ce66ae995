// A reproducible busy calendar for the benchmarks: 10^4 events spread over 2006-2030, of which the
// first 10^3 repeat (daily, working days, weekly, monthly, yearly), all of them still running in
// the shown month. Stamps are UTC; the benchmarks run with TZ=UTC.
#pragma once

#include <vector>

#include "APEventRecords.h"

struct BenchEventsShape {
    int events = 10000;
    int repeating = 1000;
    // How far the repeating series began before `shownStart`: this many years exactly, or, when 0,
    // anywhere up to twenty years.
    int ageYears = 0;
    // The first second of the month the benchmark shows.
    long shownStart = 0;
};

// The same events for the same shape on every run and machine.
std::vector<_EventRecInfo> BenchMakeEvents(const BenchEventsShape& shape);

// Seconds since the epoch of a UTC date and hour.
long BenchUtc(int year, int month, int day, int hour = 0);

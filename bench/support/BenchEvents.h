// A reproducible busy calendar for the benchmarks: 10^4 events spread over 2006-2030, of which the
// first 10^3 repeat (daily, working days, weekly, monthly, yearly), all of them still running in
// the shown month. Stamps are UTC; the benchmarks run with TZ=UTC.
#pragma once

#include <string>
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

// How long before November 2026 the repeating series of the month and week benchmarks' store
// began: exactly one or ten years, or anywhere up to twenty.
enum BenchAge { kBenchOneYear = 1, kBenchTenYears = 10, kBenchUpToTwenty = 20 };

// The events of that store: 10^4, of which 10^3 repeat, all running through November 2026.
std::vector<_EventRecInfo> BenchNovemberEvents(BenchAge age);
// Points the device root at that store (one per age, shared by the benchmarks that show
// November 2026), writing it on first use. False with the reason in `error`.
bool BenchUseNovemberStore(BenchAge age, std::string& error);

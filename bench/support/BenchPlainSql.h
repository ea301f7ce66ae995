// The plain way of reading a range of events, timed beside the store's own queries: one SQL
// statement over the store's file as it is, read row by row.
#pragma once

#include <benchmark/benchmark.h>

// Runs `sql` (binding ?1 = from, ?2 = to) over the current device root's event store once per
// iteration, reading column `touched` of every row so that SQLite really fetches it. Returns the
// rows of the last run (-1 when the statement cannot be prepared).
long BenchPlainSqlRange(benchmark::State& state, const char* sql, long from, long to, int touched);

// The long-reaching rows of the event store (repeating series and events of half a year or more),
// kept in memory between range queries of this process.
//
// Every month, week and day query reads every series that runs through its range, which on a store
// with many series is most of the query's work, yet they rarely change. Each copy is tagged with
// the store's change stamp, a random number that triggers on the events table set anew inside every
// write's own transaction. A query reads the stamp in the same read transaction as its other rows
// and uses the copy only when the stamps agree, so a write of any process or store object (or a
// file replaced underneath) is seen by the next query, and a rolled-back write changes nothing.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

class APDatabase;
struct sqlite3;
struct sqlite3_stmt;

// The columns a range query reads of a row: what a node needs, without the record.
struct APRangeRow {
    int32_t id;
    int32_t start;
    int32_t end;
    int32_t last;
    int32_t kind;
    int32_t a;
    int32_t b;
    uint32_t colour;
    uint8_t allDay;
};

// The range columns of the current row of a statement that selects them first, in that order
// (id, start_ts, end_ts, last_ts, kind, a, b, colour, all_day).
APRangeRow APReadRangeRow(sqlite3_stmt* stmt);

// One long-reaching row: the range query's columns, its reach and its level's length.
struct APSeriesRow {
    APRangeRow columns;
    int64_t reach;
    int64_t len;
};

class APSeriesCache {
public:
    using Rows = std::shared_ptr<const std::vector<APSeriesRow>>;

    // Rows of this level and above are kept: spans of 2^24 s (about 194 days) or more.
    static constexpr int kFirstLevel = 24;
    // A store with more long rows than this is not copied (the memory would outweigh the gain).
    static constexpr size_t kMaxRows = 50000;

    // Inside a read transaction on `db`: the long rows of its store in start order (then id), from
    // memory when the store's change stamp is the one they were read at, else read afresh. Null
    // when the store has no stamp, holds too many long rows, or cannot be read; the caller then
    // reads every level.
    static Rows Get(APDatabase& db);
    // Drops every copy (tests, and a process that changes its device root).
    static void Clear();

private:
    struct Entry {
        std::string hostPath;
        int64_t stamp = 0;
        Rows rows;
    };

    static bool ReadStamp(APDatabase& db, int64_t& stamp);
    // Null on a failed read, or with `tooMany` set when the store has more than kMaxRows.
    static Rows ReadRows(sqlite3* db, bool& tooMany);

    static std::mutex sMutex;
    static std::vector<Entry> sEntries;
};

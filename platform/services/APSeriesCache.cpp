// In-memory copies of the store's long-reaching rows, checked against the change stamp on every
// use.
#include "APSeriesCache.h"

#include <sqlite3.h>

#include <algorithm>
#include <cassert>

#include "APDatabase.h"

std::mutex APSeriesCache::sMutex;
std::vector<APSeriesCache::Entry> APSeriesCache::sEntries;

void APSeriesCache::Clear() {
    std::lock_guard<std::mutex> lock(sMutex);
    sEntries.clear();
}

bool APSeriesCache::ReadStamp(APDatabase& db, int64_t& stamp) {
    // Read on every query: the connection keeps it prepared.
    sqlite3_stmt* const stmt = db.Cached("SELECT stamp FROM event_changes WHERE id = 1");
    const bool found = stmt && sqlite3_step(stmt) == SQLITE_ROW;
    if (found) {
        stamp = sqlite3_column_int64(stmt, 0);
    }
    if (stmt) {
        sqlite3_reset(stmt);
    }
    return found;
}

APSeriesCache::Rows APSeriesCache::ReadRows(sqlite3* db, bool& tooMany) {
    // The range query's own join, so that a row is kept exactly when that query could return it.
    static const char* const kSql =
        "SELECT e.id, e.start_ts, e.end_ts, e.last_ts, e.kind, e.a, e.b, e.colour, e.all_day, "
        "e.reach, l.len FROM event_levels AS l CROSS JOIN events AS e INDEXED BY events_span "
        "WHERE l.lvl >= ?1 AND e.lvl = l.lvl ORDER BY e.start_ts, e.id LIMIT ?2";
    sqlite3_stmt* s = nullptr;
    if (sqlite3_prepare_v2(db, kSql, -1, &s, nullptr) != SQLITE_OK) {
        sqlite3_finalize(s);
        return nullptr;
    }
    sqlite3_bind_int(s, 1, kFirstLevel);
    sqlite3_bind_int64(s, 2, int64_t(kMaxRows) + 1);
    auto rows = std::make_shared<std::vector<APSeriesRow>>();
    int rc;
    while ((rc = sqlite3_step(s)) == SQLITE_ROW) {
        rows->push_back(
            {APReadRangeRow(s), sqlite3_column_int64(s, 9), sqlite3_column_int64(s, 10)});
    }
    sqlite3_finalize(s);
    tooMany = rows->size() > kMaxRows;
    if (rc != SQLITE_DONE || tooMany) {
        return nullptr;
    }
    return rows;
}

APRangeRow APReadRangeRow(sqlite3_stmt* s) {
    return {sqlite3_column_int(s, 0),         sqlite3_column_int(s, 1),
            sqlite3_column_int(s, 2),         sqlite3_column_int(s, 3),
            sqlite3_column_int(s, 4),         sqlite3_column_int(s, 5),
            sqlite3_column_int(s, 6),         uint32_t(sqlite3_column_int64(s, 7)),
            uint8_t(sqlite3_column_int(s, 8))};
}

APSeriesCache::Rows APSeriesCache::Get(APDatabase& store) {
    assert(store.IsOpen() && "the series cache reads an open store");
    sqlite3* const db = store.Handle();
    const std::string& hostPath = store.GetHostPath();
    int64_t stamp = 0;
    if (!db || !ReadStamp(store, stamp)) {
        return nullptr;
    }
    {
        std::lock_guard<std::mutex> lock(sMutex);
        for (const Entry& entry : sEntries) {
            if (entry.hostPath == hostPath && entry.stamp == stamp) {
                return entry.rows;
            }
        }
    }
    // Read outside the lock: other threads' queries of other stores need not wait for it. A store
    // with too many long rows is remembered as such (no rows) until its stamp moves, so that its
    // queries do not read the rows again and again only to drop them.
    bool tooMany = false;
    Rows rows = ReadRows(db, tooMany);
    if (!rows && !tooMany) {
        return nullptr;
    }
    std::lock_guard<std::mutex> lock(sMutex);
    auto it = std::find_if(sEntries.begin(), sEntries.end(),
                           [&](const Entry& entry) { return entry.hostPath == hostPath; });
    if (it == sEntries.end()) {
        sEntries.push_back({hostPath, stamp, rows});
    } else {
        it->stamp = stamp;
        it->rows = rows;
    }
    return rows;
}

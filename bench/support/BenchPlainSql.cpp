// Timing a plain SQL range read (see the header).
#include "BenchPlainSql.h"

#include <sqlite3.h>

#include "APEventRec.h"
#include "PLDeviceRoot.h"

long BenchPlainSqlRange(benchmark::State& state, const char* sql, long from, long to, int touched) {
    sqlite3* db = nullptr;
    sqlite3_open_v2(PLDeviceRoot::Resolve(kAPEventStoreDevicePath).c_str(), &db,
                    SQLITE_OPEN_READONLY, nullptr);
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr) != SQLITE_OK) {
        state.SkipWithError(sqlite3_errmsg(db));
        sqlite3_close(db);
        return -1;
    }
    long rows = 0;
    for (auto _ : state) {
        sqlite3_reset(stmt);
        sqlite3_bind_int64(stmt, 1, from);
        sqlite3_bind_int64(stmt, 2, to);
        rows = 0;
        while (sqlite3_step(stmt) == SQLITE_ROW) {
            benchmark::DoNotOptimize(sqlite3_column_bytes(stmt, touched));
            ++rows;
        }
    }
    sqlite3_finalize(stmt);
    sqlite3_close(db);
    return rows;
}

// The prepared statements of one SQLite connection, kept for as long as the connection lives.
//
// Preparing a statement parses and plans its SQL, which costs more than running a small query; a
// store asks the same few statements again and again, so each is prepared once per connection
// and handed out reset, with its bindings cleared, every time it is asked for.
#pragma once

#include <string>
#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

class APStatementCache {
public:
    APStatementCache() = default;
    ~APStatementCache();
    APStatementCache(const APStatementCache&) = delete;
    APStatementCache& operator=(const APStatementCache&) = delete;
    APStatementCache(APStatementCache&& other) noexcept;
    APStatementCache& operator=(APStatementCache&& other) noexcept;

    // The statement for `sql` on `db`, ready to bind and step; null when it cannot be prepared.
    // A statement must be finished (stepped to the end or reset) before its SQL is asked again.
    sqlite3_stmt* Get(sqlite3* db, const char* sql);
    // True when `stmt` is one of the kept statements.
    bool Holds(const sqlite3_stmt* stmt) const;
    // Resets every kept statement, releasing any snapshot they hold.
    void ResetAll();
    // Finalizes every kept statement (before its connection closes).
    void FinalizeAll();

private:
    std::vector<std::pair<std::string, sqlite3_stmt*>> mEntries;
};

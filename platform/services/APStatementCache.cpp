// Prepared statements kept per connection (see the header).
#include "APStatementCache.h"

#include <sqlite3.h>

#include <cassert>

APStatementCache::~APStatementCache() {
    FinalizeAll();
}

APStatementCache::APStatementCache(APStatementCache&& other) noexcept
    : mEntries(std::move(other.mEntries)) {
    other.mEntries.clear();
}

APStatementCache& APStatementCache::operator=(APStatementCache&& other) noexcept {
    if (this != &other) {
        FinalizeAll();
        mEntries = std::move(other.mEntries);
        other.mEntries.clear();
    }
    return *this;
}

sqlite3_stmt* APStatementCache::Get(sqlite3* db, const char* sql) {
    assert(db && sql && "a cached statement needs a connection and its SQL");
    if (!db || !sql) {
        return nullptr;
    }
    // A store uses a handful of statements: a linear search beats hashing their long texts.
    for (auto& [text, stmt] : mEntries) {
        if (text == sql) {
            sqlite3_reset(stmt);
            sqlite3_clear_bindings(stmt);
            return stmt;
        }
    }
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v3(db, sql, -1, SQLITE_PREPARE_PERSISTENT, &stmt, nullptr) != SQLITE_OK) {
        sqlite3_finalize(stmt);
        return nullptr;
    }
    mEntries.emplace_back(sql, stmt);
    return stmt;
}

bool APStatementCache::Holds(const sqlite3_stmt* stmt) const {
    for (const auto& entry : mEntries) {
        if (entry.second == stmt) {
            return true;
        }
    }
    return false;
}

void APStatementCache::ResetAll() {
    for (auto& entry : mEntries) {
        sqlite3_reset(entry.second);
        sqlite3_clear_bindings(entry.second);
    }
}

void APStatementCache::FinalizeAll() {
    for (auto& entry : mEntries) {
        sqlite3_finalize(entry.second);
    }
    mEntries.clear();
}

// The alert store: 24-byte alert records in the event store's file, kept byte for byte.
#include "APEventAlertDB.h"

#include <sqlite3.h>

#include <cassert>
#include <cstring>

#include "APDatabase.h"
#include "APStoreFiles.h"

struct APEventAlertDB::Impl {
    APDatabase db;
    bool open = false;

    bool Write(const char* sql, _EventAlertInfo& info, bool insert);
};

bool APEventAlertDB::Impl::Write(const char* sql, _EventAlertInfo& info, bool insert) {
    sqlite3_stmt* const stmt = db.Cached(sql);
    if (!stmt) {
        db.NoteError("cannot prepare the alert write");
        return false;
    }
    _EventAlertInfo stored = info;
    stored.id = 0;  // the row id is the record's id
    sqlite3_bind_blob(stmt, 1, &stored, sizeof stored, SQLITE_TRANSIENT);
    if (!insert) {
        sqlite3_bind_int(stmt, 2, info.id);
    }
    const int written = sqlite3_step(stmt);
    sqlite3_reset(stmt);
    if (written != SQLITE_DONE) {
        db.NoteError("cannot write the alert record");
        return false;
    }
    if (insert) {
        info.id = int32_t(sqlite3_last_insert_rowid(db.Handle()));
        return true;
    }
    return sqlite3_changes(db.Handle()) == 1;
}

APEventAlertDB::APEventAlertDB() : mImpl(std::make_unique<Impl>()) {
    mImpl->open = APOpenEventStore(mImpl->db);
}

APEventAlertDB::~APEventAlertDB() = default;

bool APEventAlertDB::IsOpen() const {
    return mImpl->open;
}

const std::string& APEventAlertDB::GetLastError() const {
    return mImpl->db.GetLastError();
}

int APEventAlertDB::Add(_EventAlertInfo* info) {
    assert(info && "Add needs an alert record");
    if (!info || !mImpl->open) {
        return 0;
    }
    _EventAlertInfo copy = *info;
    const bool ok = mImpl->db.Transaction(
        [&] { return mImpl->Write("INSERT INTO alerts(record) VALUES(?1)", copy, true); });
    if (!ok) {
        return 0;
    }
    info->id = copy.id;
    return copy.id;
}

int APEventAlertDB::UpdateAlertInfo(_EventAlertInfo* info) {
    assert(info && "UpdateAlertInfo needs an alert record");
    if (!info || !mImpl->open || info->id <= 0) {
        return 0;
    }
    const bool ok = mImpl->db.Transaction(
        [&] { return mImpl->Write("UPDATE alerts SET record = ?1 WHERE id = ?2", *info, false); });
    return ok ? 1 : 0;
}

int APEventAlertDB::GetEventAlertInfo(int id, _EventAlertInfo* info) {
    assert(info && "GetEventAlertInfo needs an alert record");
    if (!info || !mImpl->open || id <= 0) {
        return 0;
    }
    APStatement stmt(mImpl->db.Handle(), "SELECT record FROM alerts WHERE id = ?1");
    if (!stmt.Ok()) {
        return 0;
    }
    sqlite3_bind_int(stmt.Get(), 1, id);
    if (sqlite3_step(stmt.Get()) != SQLITE_ROW ||
        sqlite3_column_bytes(stmt.Get(), 0) != int(sizeof(_EventAlertInfo))) {
        return 0;
    }
    std::memcpy(info, sqlite3_column_blob(stmt.Get(), 0), sizeof *info);
    info->id = id;
    return 1;
}

int APEventAlertDB::Delete(int id) {
    if (!mImpl->open || id <= 0) {
        return 0;
    }
    bool removed = false;
    const bool ok = mImpl->db.Transaction([&] {
        APStatement stmt(mImpl->db.Handle(), "SELECT 1 FROM alerts WHERE id = ?1");
        if (!stmt.Ok()) {
            return false;
        }
        sqlite3_bind_int(stmt.Get(), 1, id);
        removed = sqlite3_step(stmt.Get()) == SQLITE_ROW;
        // The alarm that the record names goes with it: an alarm whose record is gone would ring
        // for an event that no longer asks for it.
        return !removed || APDeleteAlertAndAlarm(mImpl->db, id);
    });
    return ok && removed ? 1 : 0;
}

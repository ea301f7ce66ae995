// Schemas and opening of the service stores (see the header).
#include "APStoreFiles.h"

#include <sqlite3.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstring>

#include "APAlertDB.h"
#include "APDatabase.h"
#include "APEventRec.h"
#include "APEventRecords.h"
#include "PLDeviceRoot.h"

const char* const kAPEventStoreDevicePath = "/var/lib/calendar/events.db";

namespace {

// Where older builds kept the daemon's alarms.
const char* const kLegacyAlarmFile = "/var/lib/alarmd/alarms.db";

// Events keep the whole record (zero-run coded) plus the columns the queries need. `reach` is the
// first moment after which nothing of the event (or of its series) can touch a day, and `lvl` the
// binary order of reach - start: a range query looks, per level, only at events that start at most
// 2^lvl seconds before the range, so its cost follows the rows it returns, not the store's size.
// `event_changes` holds one stamp that every change of the events table sets to a new random number
// in the same transaction; the in-memory copies of the long rows (APSeriesCache) are checked
// against it. A random stamp rather than a counter: a file replaced by a fresh or older one cannot
// come back to a number an old copy was tagged with.
const char* const kEventSchema = R"sql(
CREATE TABLE IF NOT EXISTS events(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    start_ts INTEGER NOT NULL,
    end_ts INTEGER NOT NULL,
    last_ts INTEGER NOT NULL,
    reach INTEGER NOT NULL,
    lvl INTEGER NOT NULL,
    kind INTEGER NOT NULL,
    a INTEGER NOT NULL,
    b INTEGER NOT NULL,
    colour INTEGER NOT NULL,
    all_day INTEGER NOT NULL,
    alert_id INTEGER NOT NULL,
    record BLOB NOT NULL);
CREATE INDEX IF NOT EXISTS events_span
    ON events(lvl, start_ts, reach, end_ts, last_ts, kind, a, b, colour, all_day);
CREATE INDEX IF NOT EXISTS events_last ON events(last_ts);
CREATE TABLE IF NOT EXISTS event_levels(lvl INTEGER PRIMARY KEY, len INTEGER NOT NULL);
CREATE TABLE IF NOT EXISTS alerts(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    record BLOB NOT NULL);
CREATE TABLE IF NOT EXISTS alarms(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    alert_time INTEGER NOT NULL,
    owner TEXT NOT NULL,
    rule TEXT NOT NULL,
    context BLOB NOT NULL);
CREATE TABLE IF NOT EXISTS daemon_state(key TEXT PRIMARY KEY, value INTEGER NOT NULL);
CREATE TABLE IF NOT EXISTS event_changes(
    id INTEGER PRIMARY KEY CHECK (id = 1),
    stamp INTEGER NOT NULL);
INSERT OR IGNORE INTO event_changes(id, stamp) VALUES(1, random());
CREATE TRIGGER IF NOT EXISTS events_added AFTER INSERT ON events
    BEGIN UPDATE event_changes SET stamp = random() WHERE id = 1; END;
CREATE TRIGGER IF NOT EXISTS events_changed AFTER UPDATE ON events
    BEGIN UPDATE event_changes SET stamp = random() WHERE id = 1; END;
CREATE TRIGGER IF NOT EXISTS events_removed AFTER DELETE ON events
    BEGIN UPDATE event_changes SET stamp = random() WHERE id = 1; END;
)sql";

// Moves the alarms of an older root, kept in a file of their own, into the store's table (same
// ids, so the alert records still name them) and renames the old file so that this runs once.
// A file that cannot be read is kept, renamed, and the store opens without it.
bool MigrateLegacyAlarms(APDatabase& db) {
    const std::string legacy = PLDeviceRoot::Resolve(kLegacyAlarmFile);
    struct stat info {};
    if (::stat(legacy.c_str(), &info) != 0) {
        return true;
    }
    APStatement attach(db.Handle(), "ATTACH DATABASE ?1 AS legacy");
    sqlite3_bind_text(attach.Get(), 1, legacy.c_str(), -1, SQLITE_TRANSIENT);
    const bool attached = attach.Ok() && sqlite3_step(attach.Get()) == SQLITE_DONE;
    attach.Reset();
    const bool moved = attached && db.Transaction([&] {
        return db.Exec(
                   "INSERT OR IGNORE INTO alarms(id, alert_time, owner, rule, context) "
                   "SELECT id, alert_time, owner, rule, context FROM legacy.alarms") &&
               db.Exec(
                   "INSERT INTO daemon_state(key, value) SELECT key, value FROM "
                   "legacy.daemon_state WHERE true ON CONFLICT(key) DO UPDATE SET "
                   "value = max(value, excluded.value)");
    });
    if (attached) {
        db.Exec("DETACH DATABASE legacy");
    }
    const std::string renamed = legacy + (moved ? ".migrated" : ".unreadable");
    if (!moved) {
        std::fprintf(stderr, "alarm file %s cannot be read; kept as %s\n", legacy.c_str(),
                     renamed.c_str());
    }
    for (const char* suffix : {"", "-wal", "-shm"}) {
        const std::string from = legacy + suffix;
        std::rename(from.c_str(), (renamed + suffix).c_str());
    }
    return true;
}

}  // namespace

bool APOpenEventStore(APDatabase& db) {
    // A connection from the idle pool was opened, and the old file looked for, by this process.
    return db.Open(kAPEventStoreDevicePath, kEventSchema) &&
           (db.WasAdopted() || MigrateLegacyAlarms(db));
}

bool APDeleteAlertAndAlarm(APDatabase& db, int alertId) {
    if (alertId <= 0) {
        return true;
    }
    APStatement read(db.Handle(), "SELECT record FROM alerts WHERE id = ?1");
    APStatement dropAlarm(db.Handle(), "DELETE FROM alarms WHERE id = ?1");
    APStatement dropAlert(db.Handle(), "DELETE FROM alerts WHERE id = ?1");
    if (!read.Ok() || !dropAlarm.Ok() || !dropAlert.Ok()) {
        db.NoteError("cannot prepare the alert removal");
        return false;
    }
    sqlite3_bind_int(read.Get(), 1, alertId);
    if (sqlite3_step(read.Get()) == SQLITE_ROW &&
        sqlite3_column_bytes(read.Get(), 0) == int(sizeof(_EventAlertInfo))) {
        _EventAlertInfo info;
        std::memcpy(&info, sqlite3_column_blob(read.Get(), 0), sizeof info);
        if (info.daemonId > 0) {
            sqlite3_bind_int(dropAlarm.Get(), 1, info.daemonId);
            if (sqlite3_step(dropAlarm.Get()) != SQLITE_DONE) {
                db.NoteError("cannot remove the alarm");
                return false;
            }
        }
    }
    sqlite3_bind_int(dropAlert.Get(), 1, alertId);
    if (sqlite3_step(dropAlert.Get()) != SQLITE_DONE) {
        db.NoteError("cannot remove the alert record");
        return false;
    }
    return true;
}

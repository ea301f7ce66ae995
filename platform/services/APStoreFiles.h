// Where the service stores live and how they are opened. Events, their alert records and the alarm
// daemon's alarms are tables of one SQLite file, so that deleting an event removes its alert record
// and its alarm in one atomic transaction.
//
// Why one file: SQLite can span a transaction over ATTACHed files, but in WAL mode each file
// commits on its own, so a crash between them could leave an alarm ringing for a deleted event (or
// an event whose alarm is gone). A single WAL file commits all three tables at once. The daemon
// still keeps its contexts in its own table; a root made by an older build, whose alarms sit in a
// separate file, has them moved over on first open (the old file is kept, renamed).
#pragma once

#include <string>

class APDatabase;

// Opens the store of events, alert records and alarms of the current device root.
bool APOpenEventStore(APDatabase& db);

// Inside an open transaction: removes the alert record `alertId` and the daemon alarm it names.
// False on a failed statement.
bool APDeleteAlertAndAlarm(APDatabase& db, int alertId);

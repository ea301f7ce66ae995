// Where the service stores live and how they are opened: the event store (events and their alert
// records) with the alarm daemon's store attached as "alarmd", so that deleting an event removes
// its alert record and its alarm in one transaction.
#pragma once

#include <string>

class APDatabase;

// Opens the event store with the daemon's store attached.
bool APOpenEventStore(APDatabase& db);
// Opens the daemon's store alone (as "main").
bool APOpenAlarmStore(APDatabase& db);

// Inside an open transaction: removes the alert record `alertId` and the daemon alarm it names.
// False on a failed statement.
bool APDeleteAlertAndAlarm(APDatabase& db, int alertId);

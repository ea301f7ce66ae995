// Reads calendar files for `calendar-ctl event import`: vCalendar 1.0 (.vcs, read here line by
// line) and iCalendar (.ics, read through libical). Each event becomes either a filled event record
// with its alarm lead, or an error naming the line and why the record cannot hold it.
#pragma once

#include <memory>
#include <string>
#include <vector>

struct _EventRecInfo;

struct APImportedEvent {
    int line = 0;         // line of the event's BEGIN:VEVENT (1-based)
    std::string error;    // empty when `record` holds the event
    std::string warning;  // what was adapted to fit the record (text cut, ...), if anything
    std::shared_ptr<_EventRecInfo> record;  // id 0: not stored yet
    bool hasAlarm = false;
    long leadSeconds = 0;  // how long before the start the alarm rings
    int leadAmount = 0;    // the lead as the alert record keeps it: amount and unit
    int leadUnit = 0;      // 1 minutes, 2 hours, 3 days
};

// A rule that ends after a count gets the series limit (2030-12-31 23:59:59 local) as its
// last-occurrence stamp: the caller replaces it with its own series-end computation. A rule that
// ends on a date gets that date at 23:59:59 local, and value C 0 (daily) or -1 (other kinds).
//
// Reads a host file; the format follows the content (VERSION:1.0 or 2.0), else the extension.
// False with `error` set when the file cannot be read or holds no calendar at all; otherwise one
// entry per VEVENT, in file order.
bool APCalendarImport_File(const std::string& hostPath, std::vector<APImportedEvent>& events,
                           std::string& error);
// The same on text already in memory.
bool APCalendarImport_Text(const std::string& text, std::vector<APImportedEvent>& events,
                           std::string& error);

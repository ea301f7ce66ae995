// Reads calendar files for `calendar-ctl event import`: vCalendar 1.0 (.vcs, read here line by
// line) and iCalendar (.ics, read through libical). Each event becomes either a filled event record
// with its alarm lead, or an error naming the line and why the record cannot hold it.
#pragma once

#include <memory>
#include <string>
#include <vector>

struct _EventRecInfo;

struct APImportedEvent {
    int line = 0;                           // line of the event's BEGIN:VEVENT (1-based)
    std::string error;                      // empty when `record` holds the event
    std::shared_ptr<_EventRecInfo> record;  // id 0: not stored yet
    bool hasAlarm = false;
    long leadSeconds = 0;  // how long before the start the alarm rings
    int leadAmount = 0;    // the lead as the alert record keeps it: amount and unit
    int leadUnit = 0;      // 1 minutes, 2 hours, 3 days
};

// Reads a host file; the format follows the content (VERSION:1.0 or 2.0), else the extension.
// False with `error` set when the file cannot be read or holds no calendar at all; otherwise one
// entry per VEVENT, in file order.
bool APCalendarImport_File(const std::string& hostPath, std::vector<APImportedEvent>& events,
                           std::string& error);
// The same on text already in memory.
bool APCalendarImport_Text(const std::string& text, std::vector<APImportedEvent>& events,
                           std::string& error);

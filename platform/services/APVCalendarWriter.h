// Writes one event as a vCalendar 1.0 file (the export and share path of the detail view).
#pragma once

#include <string>

#include "PLBasicString.h"

struct _EventRecInfo;

// Writes `event` to the device path `path` (resolved under the device root). The alarm lead is
// taken from the event's alert record when it has one. `flags` is reserved and must be 0.
// Returns 1 when the file was written, 0 otherwise.
int MakeQnvCalendar(const std::string& path, _EventRecInfo* event, int flags);
int MakeQnvCalendar(const PLBasicString<char>& path, _EventRecInfo* event, int flags);
// The same with the alarm lead given in seconds (used when no alert record exists yet).
int MakeQnvCalendarWithLead(const std::string& path, const _EventRecInfo* event, long leadSeconds);
// The file's text, for callers that write it elsewhere.
std::string APVCalendar_Format(const _EventRecInfo& event, long leadSeconds);

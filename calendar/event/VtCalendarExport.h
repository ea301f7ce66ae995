// Writing one event as a vCalendar file in "/tmp/", named by its id. Earlier exports of the same
// event stay where they are (the share sheet may still be reading them), so a later export takes
// the next free numbered name: 17.vcs, 17_1.vcs, 17_2.vcs, ...
#pragma once

#include <cstdint>

#include "PLBasicString.h"

struct _EventRecInfo;

// The first of "/tmp/ID.vcs", "/tmp/ID_1.vcs", "/tmp/ID_2.vcs", ... that the file probe does not
// find. A probe that fails for another reason than a missing file (an unreadable "/tmp/") settles
// on the first name: the writer then fails on it quietly.
PLBasicString<char> VtCalendarExportPath(uint32_t eventID);

// Writes `record` to the path chosen for `eventID` and returns that path. The writer's result is
// not looked at: a failed write leaves nothing to share, and the share sheet says so itself.
PLBasicString<char> VtCalendarExportEvent(uint32_t eventID, _EventRecInfo& record);

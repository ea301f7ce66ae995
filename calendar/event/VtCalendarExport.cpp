// The export file's name and the call of the platform's vCalendar writer.
#include "event/VtCalendarExport.h"

#include <cassert>

#include "APEventRecords.h"
#include "APVCalendarWriter.h"
#include "PLFile.h"
#include "PLTimeStamp.h"

namespace {

constexpr const char* kExportFolder = "/tmp/";
constexpr const char* kExportExtension = ".vcs";

long Probe(const PLBasicString<char>& path) {
    PLFile file;
    file.SetFilename(path);
    return file.OpenFile(PLFile::kRead, nullptr);
}

}  // namespace

PLBasicString<char> VtCalendarExportPath(uint32_t eventID) {
    const PLBasicString<char> base =
        PLBasicString<char>(kExportFolder) + PLUnsignedIntToString(eventID);
    const PLBasicString<char> first = base + kExportExtension;
    if (Probe(first) != PLFile::kOK) {
        return first;
    }
    // No upper bound: every earlier export of this event is kept, however many there are.
    for (unsigned long n = 1;; ++n) {
        PLBasicString<char> candidate = base + "_" + PLUnsignedIntToString(n) + kExportExtension;
        if (Probe(candidate) != PLFile::kOK) {
            return candidate;
        }
    }
}

PLBasicString<char> VtCalendarExportEvent(uint32_t eventID, _EventRecInfo& record) {
    const PLBasicString<char> path = VtCalendarExportPath(eventID);
    MakeQnvCalendar(path, &record, 0);
    return path;
}

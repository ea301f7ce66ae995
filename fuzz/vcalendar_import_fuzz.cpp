// Fuzz target: calendar file import (.vcs read line by line, .ics through libical). The bytes are
// imported as text, which picks the reader by its VERSION line, and again as an .ics file, which
// sends text without a version to the iCalendar reader. Every imported record must be one the
// store can take as it stands.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "APEventRecords.h"
#include "APVCalendarImport.h"
#include "FuzzCheck.h"
#include "FuzzTempDir.h"
#include "PLResourceFileManager.h"

namespace {

void CheckText(const char* field, bool sourceValid) {
    const void* nul = std::memchr(field, '\0', kAPEventTextSize);
    FuzzCheck(nul != nullptr, "an imported text ends inside its field");
    if (sourceValid) {
        FuzzCheck(PLResourceFileManager::IsValidUTF8(std::string_view(field)),
                  "valid UTF-8 stays valid when cut to the field");
    }
}

void CheckEvents(const std::vector<APImportedEvent>& events, bool sourceValid) {
    int previousLine = 0;
    for (const APImportedEvent& event : events) {
        FuzzCheck(event.line >= 1 && event.line >= previousLine, "events come in file order");
        previousLine = event.line;
        FuzzCheck(event.error.empty() == (event.record != nullptr),
                  "an event is either a record or an error");
        if (event.record == nullptr) {
            continue;
        }
        const _EventRecInfo& record = *event.record;
        FuzzCheck(record.id == 0, "an imported record is not stored yet");
        CheckText(record.subject, sourceValid);
        CheckText(record.location, sourceValid);
        CheckText(record.notes, sourceValid);
        FuzzCheck(record.allDay <= 1 && record.alarm <= 1, "flags are 0 or 1");
        FuzzCheck(record.colour >= kAPColourFirst && record.colour <= kAPColourLast,
                  "the colour is one the form offers");
        if (event.hasAlarm) {
            FuzzCheck(event.leadUnit >= kAPLeadMinutes && event.leadUnit <= kAPLeadDays,
                      "an alarm lead has a known unit");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const bool sourceValid = PLResourceFileManager::IsValidUTF8(text);
    std::vector<APImportedEvent> events;
    std::string error;
    if (APCalendarImport_Text(text, events, error)) {
        CheckEvents(events, sourceValid);
    } else {
        FuzzCheck(!error.empty(), "a refused text comes with a reason");
    }

    FuzzTempDir dir;
    const std::string path = dir.WriteFile("import.ics", data, size);
    if (path.empty()) {
        return 0;
    }
    events.clear();
    error.clear();
    if (APCalendarImport_File(path, events, error)) {
        CheckEvents(events, sourceValid);
    } else {
        FuzzCheck(!error.empty(), "a refused file comes with a reason");
    }
    return 0;
}

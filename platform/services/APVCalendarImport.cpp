// Calendar file import: picks the reader by the file's VERSION (1.0 vCalendar, 2.0 iCalendar) or
// else its extension, and turns every event into a record or a reasoned error.
#include "APVCalendarImport.h"

#include <cctype>

#include "APAtomicFile.h"
#include "APICalendarReader.h"
#include "APVCalendarReader.h"

namespace {

bool LooksLikeICalendar(const std::string& text) {
    std::string upper;
    upper.reserve(text.size());
    for (char c : text) {
        upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    if (upper.find("VERSION:2.0") != std::string::npos) {
        return true;
    }
    return false;
}

bool Import(const std::string& text, bool iCalendar, std::vector<APImportedEvent>& events,
            std::string& error) {
    if (text.find('\0') != std::string::npos) {
        error = "binary data: not a calendar file";
        return false;
    }
    std::vector<APImportDraft> drafts;
    bool ok = iCalendar ? APICalendarReader::Read(text, drafts, error)
                        : APVCalendarReader::Read(text, drafts, error);
    if (!ok) {
        return false;
    }
    events.clear();
    for (const APImportDraft& draft : drafts) {
        events.push_back(APImport_Finish(draft));
    }
    return true;
}

bool HasVersionOne(const std::string& text) {
    return text.find("VERSION:1.0") != std::string::npos;
}

}  // namespace

bool APCalendarImport_Text(const std::string& text, std::vector<APImportedEvent>& events,
                           std::string& error) {
    return Import(text, LooksLikeICalendar(text), events, error);
}

bool APCalendarImport_File(const std::string& hostPath, std::vector<APImportedEvent>& events,
                           std::string& error) {
    std::string text;
    switch (APAtomicFile_Read(hostPath, text, error)) {
        case APReadResult::kMissing:
            error = "no such file: " + hostPath;
            return false;
        case APReadResult::kError:
            return false;
        case APReadResult::kOk:
            break;
    }
    bool ics = hostPath.size() >= 4 && hostPath.compare(hostPath.size() - 4, 4, ".ics") == 0;
    bool iCalendar = LooksLikeICalendar(text) || (ics && !HasVersionOne(text));
    return Import(text, iCalendar, events, error);
}

// calendar-ctl event add|list|show|delete|import|export.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

#include "APAlertDB.h"
#include "APConfig.h"
#include "APEventAlertDB.h"
#include "APEventRec.h"
#include "APVCalendarImport.h"
#include "APVCalendarWriter.h"
#include "CtlArgs.h"
#include "CtlCommands.h"
#include "CtlEventBuilder.h"
#include "CtlFormat.h"
#include "PLTimeStamp.h"
#include "event/VtCalendarSaveRules.h"
#include "recur/VtCalendarRecurText.h"

namespace {

// As the save path copies a field: at most 600 bytes, never half a character.
void CopyText(char (&field)[kAPEventTextSize], const std::string& text) {
    std::memset(field, 0, sizeof field);
    VtCalendarCopyRecordText(field, PLBasicString<char>(text.c_str()));
}

bool ParseId(const std::string& text, int& id) {
    long value = 0;
    if (!CtlParseInt(text, value) || value <= 0 || value > 0x7FFFFFFF) {
        return false;
    }
    id = int(value);
    return true;
}

// Dates whose stamps fit the stored signed 32-bit seconds in every zone.
bool WithinStamps(const PLDate& date) {
    return date.year >= 1902 && date.year <= 2037;
}

// Fills the record's stamps from the command line as the form does.
bool ReadTimes(const CtlArgs& args, _EventRecInfo& record, std::string& error) {
    const bool allDay = args.Has("--all-day");
    PLDate startDate, endDate;
    PLTime startTime, endTime;
    if (!CtlParseDateTime(args.Get("--start"), startDate, startTime, allDay)) {
        error = "--start must be \"YYYY-MM-DD HH:MM\"";
        return false;
    }
    const std::string endText = args.Get("--end", allDay ? args.Get("--start") : "");
    if (!CtlParseDateTime(endText, endDate, endTime, allDay)) {
        error = "--end must be \"YYYY-MM-DD HH:MM\"";
        return false;
    }
    if (!WithinStamps(startDate) || !WithinStamps(endDate)) {
        error = "--start and --end must lie in the years 1902..2037 (32-bit time stamps)";
        return false;
    }
    record.allDay = allDay ? 1 : 0;
    if (allDay) {
        VtCalendarAllDayStamps(startDate, endDate, record.startStamp, record.endStamp);
    } else {
        record.startStamp = int32_t(PLDate2TimeStamp(&startDate, &startTime));
        record.endStamp = int32_t(PLDate2TimeStamp(&endDate, &endTime));
        if (record.startStamp > record.endStamp) {
            error = "the event ends before it starts";
            return false;
        }
    }
    record.lastStamp = record.endStamp;
    return true;
}

bool ReadRepeat(const CtlArgs& args, CtlRepeat& repeat, std::string& error) {
    if (!args.Has("--repeat")) {
        return true;
    }
    // The editors' fields hold three digits; larger values would only overflow the
    // series arithmetic.
    long interval = 1;
    if (args.Has("--interval") &&
        (!CtlParseInt(args.Get("--interval"), interval) || interval > 999)) {
        error = "--interval takes a number up to 999";
        return false;
    }
    if (!CtlParseRepeat(args.Get("--repeat"), int(interval), repeat, error)) {
        return false;
    }
    if (args.Has("--count") && args.Has("--until")) {
        error = "give --count or --until, not both";
        return false;
    }
    if (args.Has("--count")) {
        long count = 0;
        if (!CtlParseInt(args.Get("--count"), count) || count > 999) {
            error = "--count takes a number up to 999";
            return false;
        }
        repeat.hasCount = true;
        repeat.count = int(count);
    }
    if (args.Has("--until")) {
        // No series runs past the end of 2030, and the date dialog offers no later day.
        if (!CtlParseDate(args.Get("--until"), repeat.until) ||
            repeat.until > PLDate(2030, 12, 31)) {
            error = "--until must be YYYY-MM-DD, at the latest 2030-12-31";
            return false;
        }
        repeat.hasUntil = true;
    }
    return true;
}

bool ReadChoice(const CtlArgs& args, const char* option, long low, long high, long fallback,
                long& value, std::string& error) {
    value = fallback;
    if (args.Has(option) &&
        (!CtlParseInt(args.Get(option), value) || value < low || value > high)) {
        error = std::string(option) + " takes " + std::to_string(low) + ".." + std::to_string(high);
        return false;
    }
    return true;
}

int Add(const std::vector<std::string>& words) {
    const CtlArgs args(words,
                       {"--subject", "--start", "--end", "--location", "--notes", "--colour",
                        "--class", "--alarm", "--repeat", "--interval", "--count", "--until"},
                       {"--all-day"});
    if (!args.Ok() || !args.Positional().empty()) {
        return CtlFail(kCtlUsage, args.Ok() ? "unexpected " + args.Positional()[0] : args.Error());
    }
    _EventRecInfo record;
    InitEventRecInfo(&record);
    CopyText(record.subject, args.Get("--subject"));
    CopyText(record.location, args.Get("--location"));
    CopyText(record.notes, args.Get("--notes"));
    std::string error;
    long colour = 0, classChoice = 0, alarm = 0;
    CtlRepeat repeat;
    if (!ReadTimes(args, record, error) || !ReadRepeat(args, repeat, error) ||
        !ReadChoice(args, "--colour", kAPColourFirst, kAPColourLast, kAPColourFirst, colour,
                    error) ||
        !ReadChoice(args, "--class", kAPClassFirst, kAPClassLast, kAPClassDefault, classChoice,
                    error) ||
        !ReadChoice(args, "--alarm", 11530, 11540, 11530, alarm, error)) {
        return CtlFail(kCtlUsage, error);
    }
    record.colour = uint32_t(colour);
    record.classChoice = uint32_t(classChoice);
    if (!CtlApplyRepeat(record, repeat, error)) {
        return CtlFail(kCtlFailed, error);
    }
    APEventRec store;
    if (!store.IsOpen()) {
        return CtlFail(kCtlFailed, "event store: " + store.GetLastError());
    }
    record.id = store.AddEventRec(&record);
    if (record.id <= 0) {
        return CtlFail(kCtlFailed, "cannot store the event: " + store.GetLastError());
    }
    long lead = 0;
    int amount = 0, unit = 0;
    if (CtlAlarmLead(int(alarm), lead, amount, unit) &&
        !CtlRegisterAlarm(record, lead, amount, unit, error)) {
        return CtlFail(kCtlFailed, error);
    }
    std::printf("%d\n", record.id);
    return kCtlOk;
}

CtlJson EventJson(const _EventRecInfo& r) {
    _EventAlertInfo alert{};
    if (r.alertInfoId > 0) {
        APEventAlertDB().GetEventAlertInfo(r.alertInfoId, &alert);
    }
    CtlJson json;
    json.Add("id", long(r.id))
        .Add("subject", CtlFieldText(r.subject, sizeof r.subject))
        .Add("location", CtlFieldText(r.location, sizeof r.location))
        .Add("notes", CtlFieldText(r.notes, sizeof r.notes))
        .Add("start", long(r.startStamp))
        .Add("end", long(r.endStamp))
        .Add("last", long(r.lastStamp))
        .Add("start_local", CtlStampText(r.startStamp, r.allDay != 0))
        .Add("end_local", CtlStampText(r.endStamp, r.allDay != 0))
        // A single all-day event's last stamp is its end, a date coded as UTC like the start.
        .Add("last_local", CtlStampText(r.lastStamp, r.allDay != 0 && !r.recurring))
        .Add("all_day", long(r.allDay))
        .Add("recurring", long(r.recurring))
        .Add("alarm", long(r.alarm))
        .Add("kind", long(r.recurKind))
        .Add("a", long(r.recurValueA))
        .Add("b", long(r.recurValueB))
        .Add("c", long(r.recurValueC))
        .Add("colour", long(r.colour))
        .Add("class", long(r.classChoice))
        .Add("alert_id", long(r.alertInfoId))
        .Add("lead_amount", long(alert.leadAmount))
        .Add("lead_unit", long(alert.leadUnit));
    return json;
}

void PrintEvent(const _EventRecInfo& record, bool json) {
    const CtlJson object = EventJson(record);
    std::printf("%s\n", json ? object.Text().c_str() : object.Plain().c_str());
}

// [--from DATE --to DATE] as a half-open range of local midnights; from == to for everything.
bool ReadRange(const CtlArgs& args, long& from, long& to, std::string& error) {
    from = to = 0;
    if (!args.Has("--from") && !args.Has("--to")) {
        return true;
    }
    PLDate first, last;
    if (!CtlParseDate(args.Get("--from"), first) || !CtlParseDate(args.Get("--to"), last) ||
        last < first) {
        error = "--from and --to take YYYY-MM-DD, the first not after the second";
        return false;
    }
    const PLDate after = last + 1;
    from = PLDate2TimeStamp(&first, nullptr);
    to = PLDate2TimeStamp(&after, nullptr);
    return true;
}

int List(const std::vector<std::string>& words) {
    const CtlArgs args(words, {"--from", "--to"}, {"--json"});
    long from = 0, to = 0;
    std::string error;
    if (!args.Ok() || !ReadRange(args, from, to, error)) {
        return CtlFail(kCtlUsage, args.Ok() ? error : args.Error());
    }
    APEventRec store;
    if (!store.IsOpen()) {
        return CtlFail(kCtlFailed, "event store: " + store.GetLastError());
    }
    for (int id : store.ListEventIds(from, to)) {
        _EventRecInfo record;
        if (store.GetEventRec(id, &record)) {
            PrintEvent(record, args.Has("--json"));
        } else {
            std::fprintf(stderr, "calendar-ctl: event %d cannot be read: %s\n", id,
                         store.GetLastError().c_str());
        }
    }
    return kCtlOk;
}

int Show(const std::vector<std::string>& words) {
    const CtlArgs args(words, {}, {"--json"});
    int id = 0;
    if (!args.Ok() || args.Positional().size() != 1 || !ParseId(args.Positional()[0], id)) {
        return CtlFail(kCtlUsage, "event show ID [--json]");
    }
    _EventRecInfo record;
    if (!APEventRec().GetEventRec(id, &record)) {
        return CtlFail(kCtlFailed, "no event " + std::to_string(id));
    }
    CtlJson object = EventJson(record);
    // The rule in the words of the detail view, from the same texts and the same code.
    long dateFormat = 0;
    APConfigSystem_GetDateFormat(&dateFormat);
    std::string textError;
    if (CtlLoadCalendarTexts(textError)) {
        object.Add("repeat_text", VtCalendarRecurText(record, dateFormat).str());
    } else {
        std::fprintf(stderr, "calendar-ctl: no repeat_text: %s\n", textError.c_str());
    }
    std::printf("%s\n", args.Has("--json") ? object.Text().c_str() : object.Plain().c_str());
    return kCtlOk;
}

int Delete(const std::vector<std::string>& words) {
    int id = 0;
    if (words.size() != 1 || !ParseId(words[0], id)) {
        return CtlFail(kCtlUsage, "event delete ID");
    }
    if (!APEventRec().DeleteEventRec(id)) {
        return CtlFail(kCtlFailed, "no event " + std::to_string(id) + " was deleted");
    }
    APAlertDB_SendUpdateToDaemon();
    return kCtlOk;
}

// "FILE:LINE: not imported: WHY", with the line the reader names (else the event's first line).
void ReportRefusal(const std::string& file, int eventLine, const std::string& why) {
    int line = eventLine;
    std::string reason = why;
    const size_t colon = why.find(": ");
    if (why.rfind("line ", 0) == 0 && colon != std::string::npos) {
        line = std::atoi(why.c_str() + 5);
        reason = why.substr(colon + 2);
    }
    std::fprintf(stderr, "%s:%d: not imported: %s\n", file.c_str(), line, reason.c_str());
}

int Import(const std::vector<std::string>& words) {
    if (words.size() != 1) {
        return CtlFail(kCtlUsage, "event import FILE.vcs|FILE.ics");
    }
    std::vector<APImportedEvent> events;
    std::string error;
    if (!APCalendarImport_File(words[0], events, error)) {
        return CtlFail(kCtlFailed, words[0] + ": " + error);
    }
    int stored = 0, refused = 0;
    for (APImportedEvent& event : events) {
        if (!event.error.empty() || !event.record) {
            ReportRefusal(words[0], event.line, event.error.empty() ? "no event" : event.error);
            ++refused;
            continue;
        }
        _EventRecInfo& record = *event.record;
        // A series of N occurrences ends where the application's own series rule says.
        if (record.recurring && record.recurValueC >= 1 && record.recurValueC < kRecurNoEnd) {
            CtlEndAfterCount(record, record.recurValueC);
        }
        record.id = APEventRec().AddEventRec(&record);
        if (record.id <= 0) {
            ReportRefusal(words[0], event.line, "the store refused the event");
            ++refused;
            continue;
        }
        if (event.hasAlarm &&
            !CtlRegisterAlarm(record, event.leadSeconds, event.leadAmount, event.leadUnit, error)) {
            ReportRefusal(words[0], event.line, error);
            ++refused;
            continue;
        }
        std::printf("%d\n", record.id);
        ++stored;
    }
    std::fprintf(stderr, "calendar-ctl: %d imported, %d not imported\n", stored, refused);
    return refused ? kCtlFailed : kCtlOk;
}

int Export(const std::vector<std::string>& words) {
    int id = 0;
    if (words.size() != 2 || !ParseId(words[0], id)) {
        return CtlFail(kCtlUsage, "event export ID FILE");
    }
    _EventRecInfo record;
    if (!APEventRec().GetEventRec(id, &record)) {
        return CtlFail(kCtlFailed, "no event " + std::to_string(id));
    }
    long lead = 0;
    _EventAlertInfo alert{};
    if (record.alarm && record.alertInfoId > 0 &&
        APEventAlertDB().GetEventAlertInfo(record.alertInfoId, &alert)) {
        const long unitSeconds = alert.leadUnit == 2 ? 3600 : alert.leadUnit == 3 ? 86400 : 60;
        lead = long(alert.leadAmount) * unitSeconds;
    }
    const std::string text = APVCalendar_Format(record, lead);
    std::ofstream out(words[1], std::ios::binary | std::ios::trunc);
    if (!(out << text) || !out.flush()) {
        return CtlFail(kCtlFailed, "cannot write " + words[1]);
    }
    return kCtlOk;
}

}  // namespace

int CtlEventCommand(const std::vector<std::string>& words) {
    const std::string verb = words.empty() ? "" : words[0];
    const std::vector<std::string> rest(words.begin() + (words.empty() ? 0 : 1), words.end());
    if (verb == "add")
        return Add(rest);
    if (verb == "list")
        return List(rest);
    if (verb == "show")
        return Show(rest);
    if (verb == "delete")
        return Delete(rest);
    if (verb == "import")
        return Import(rest);
    if (verb == "export")
        return Export(rest);
    return CtlFail(kCtlUsage, "event add|list|show|delete|import|export");
}

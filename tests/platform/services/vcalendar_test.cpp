// Calendar files: every export follows the file rules, reads back with two independent readers
// (libical's vCalendar reader and Python's vobject) and imports back field for field; malformed
// or unholdable input is reported by line without stopping the other events.
#include <libical/ical.h>
#include <libical/vcc.h>
extern "C" {
#include <libical/icalvcal.h>
}

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <tuple>

#include "APVCalendarImport.h"
#include "APVCalendarWriter.h"
#include "store_support.h"

namespace {

constexpr int kNoEnd = 0xFFFFF;

// One event to export, with what an independent reader must find in the written file.
struct ExportCase {
    std::string name;
    _EventRecInfo record;
    std::string dtstart, dtend;  // as libical prints them
    std::string rule;            // vCalendar 1.0 RRULE text, empty for none
    std::string alarm;           // the alarm's run time in UTC, empty for none
    std::string category = "PERSONAL";
    long lead = 0;  // alarm lead in seconds, and as the alert record keeps it (1 minutes .. 3 days)
    int leadAmount = 0, leadUnit = 0;
    bool countedRule = false;  // the rule ends after a count
};

void SetText(char* field, const std::string& text) {
    std::memset(field, 0, kAPEventTextSize);
    std::strncpy(field, text.c_str(), kAPEventTextMax);
}

ExportCase Timed(const std::string& name, const char* subject) {
    return {name, TimedEvent(subject, UtcAt(20260315, 9), UtcAt(20260315, 10, 30)),
            "20260315T090000Z", "20260315T103000Z"};
}

ExportCase Repeating(const std::string& name, int kind, int a, int b, int count, long last,
                     const char* rule) {
    ExportCase c = Timed(name, "Series");
    MakeRepeating(c.record, kind, a, b, last, count);
    c.rule = rule;
    c.countedRule = count > 0 && count != kNoEnd;
    return c;
}

// Every repeat kind and end mode, all-day and timed, alarms, non-ASCII, multi-line and overlong
// text. Built for TZ=UTC.
std::vector<ExportCase> ExportCases() {
    std::vector<ExportCase> cases;
    const long limit = At(20301231, 23, 59, 59);
    // A lead of 90 minutes stays in minutes; a day's lead is kept in days.
    // clang-format off
    ExportCase plain{"timed_single_business_alarm_90_minutes",
                     TimedEvent("Dentist", UtcAt(20260315, 9), UtcAt(20260315, 10, 30)),
                     "20260315T090000Z", "20260315T103000Z", "", "20260315T073000Z", "BUSINESS", 5400, 90, 1};
    // clang-format on
    SetText(plain.record.location, "Main Street 4");
    SetText(plain.record.notes, "Bring the card");
    plain.record.classChoice = 11560;
    // clang-format off
    ExportCase allDay{"all_day_two_days_holiday_alarm_a_day_before", AllDayEvent("Spring break", 20260315, 2),
                      "20260315T000000", "20260316T235900", "", "20260314T000000Z", "HOLIDAY", 86400, 1, 3};
    // clang-format on
    allDay.record.classChoice = 11562;
    plain.record.alarm = allDay.record.alarm = 1;
    cases.insert(cases.end(), {plain, allDay});
    cases.push_back(Repeating("daily_every_2_count_10", 1, 2, 0, 10, limit, "D2 #10"));
    cases.push_back(
        Repeating("daily_until_date", 1, 1, 0, 0, At(20260401, 23, 59, 59), "D1 20260401T235959"));
    cases.push_back(
        Repeating("working_days_no_end", 1, 1, 1, kNoEnd, limit, "W1 MO TU WE TH FR #0"));
    cases.push_back(Repeating("weekly_mon_wed_fri_until", 2, 1, 0x2A, -1, limit,
                              "W1 MO WE FR 20301231T235959"));
    cases.push_back(
        Repeating("weekly_every_3_sunday_saturday_count", 2, 3, 0x41, 4, limit, "W3 SU SA #4"));
    cases.push_back(Repeating("monthly_day_15_no_end", 4, 1, 15, kNoEnd, limit, "MD1 15 #0"));
    cases.push_back(Repeating("monthly_second_tuesday_no_end", 4, 1, 2 * 256 + 3, kNoEnd, limit,
                              "MP1 2+ TU #0"));
    cases.push_back(Repeating("monthly_last_sunday_every_2_count", 4, 2, 5 * 256 + 1, 3, limit,
                              "MP2 1- SU #3"));
    cases.push_back(Repeating("monthly_day_until", 4, 1, 15, -1, At(20270115, 23, 59, 59),
                              "MD1 15 20270115T235959"));
    cases.push_back(Repeating("yearly_march_15_no_end", 8, 3, 15, kNoEnd, limit, "YM1 3 #0"));
    cases.push_back(Repeating("yearly_third_sunday_of_march_count", 8, 3, 3 * 256 + 1, 5, limit,
                              "MP12 3+ SU #5"));
    ExportCase text = Timed("non_ascii_multi_line_and_600_byte_text", "");
    SetText(text.record.subject, std::string(598, 'x') + "é");  // a two-byte character ends it
    SetText(text.record.location, "Café 会议 ✓, Zürich; Gleis 3");
    SetText(text.record.notes, "First line\nSecond line = more\nThird \\ line ");
    cases.push_back(text);
    return cases;
}

// What libical's vCalendar reader finds in the file's one event: summary, location, description,
// categories, start, end and rule (nothing when it finds no event).
std::vector<std::string> ReadWithLibical(const std::string& path) {
    std::vector<std::string> fields;
    VObject* object = Parse_MIME_FromFileName(path.c_str());
    icalcomponent* calendar = object ? icalvcal_convert(object) : nullptr;
    if (object) {
        cleanVObject(object);
    }
    icalcomponent* event =
        calendar ? icalcomponent_get_first_component(calendar, ICAL_VEVENT_COMPONENT) : nullptr;
    if (event != nullptr) {
        auto text = [](const char* s) { return std::string(s != nullptr ? s : ""); };
        auto rule = [](icalproperty* r) {
            icalrecurrencetype value = icalproperty_get_rrule(r);
            return std::string(icalrecurrencetype_as_string(&value));
        };
        icalproperty* c = icalcomponent_get_first_property(event, ICAL_CATEGORIES_PROPERTY);
        icalproperty* r = icalcomponent_get_first_property(event, ICAL_RRULE_PROPERTY);
        fields = {text(icalcomponent_get_summary(event)),
                  text(icalcomponent_get_location(event)),
                  std::regex_replace(text(icalcomponent_get_description(event)), std::regex("\r\n"),
                                     "\n"),
                  c ? text(icalproperty_get_categories(c)) : "",
                  icaltime_as_ical_string(icalcomponent_get_dtstart(event)),
                  icaltime_as_ical_string(icalcomponent_get_dtend(event)),
                  r ? rule(r) : ""};
    }
    if (calendar) {
        icalcomponent_free(calendar);
    }
    return fields;
}

using VCalendarTest = StoreRootTest;

TEST_F(VCalendarTest, ExportsFollowTheFileRulesReadBackAndImportFieldForField) {
    for (ExportCase& c : ExportCases()) {
        SCOPED_TRACE(c.name);
        const std::string path = "/tmp/" + c.name + ".vcs";
        ASSERT_EQ(MakeQnvCalendarWithLead(path, &c.record, c.lead), 1);
        const std::string text = ReadFile(HostPath(path));
        EXPECT_EQ(text.rfind("BEGIN:VCALENDAR\r\nVERSION:1.0\r\n", 0), 0u);
        EXPECT_NE(text.find("\r\nUID:"), std::string::npos);
        EXPECT_FALSE(std::regex_search(text, std::regex("[^\r]\n"))) << "CRLF line ends only";
        EXPECT_EQ(text.find("\r\n "), std::string::npos) << "no folding";
        EXPECT_FALSE(std::regex_search(text, std::regex("=[0-9A-F][a-f]|=[a-f]"))) << "upper hex";
        EXPECT_EQ(text.find("\r\nRRULE:" + c.rule + "\r\n") != std::string::npos, !c.rule.empty());
        EXPECT_EQ(text.find("\r\nDALARM:" + c.alarm + ";") != std::string::npos, !c.alarm.empty());
        EXPECT_EQ(text.find("\r\nAALARM:" + c.alarm + ";") != std::string::npos, !c.alarm.empty());
        const bool plain = c.name.find("non_ascii") == std::string::npos;  // the one such subject
        EXPECT_EQ(
            text.find("SUMMARY;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:") != std::string::npos,
            !plain);

        std::vector<std::string> read = ReadWithLibical(HostPath(path));
        ASSERT_EQ(read.size(), 7u);
        read.pop_back();  // the rule as libical reads it: its text was checked above
        EXPECT_EQ(read, (std::vector<std::string>{Stored(c.record.subject),
                                                  Stored(c.record.location), Stored(c.record.notes),
                                                  c.category, c.dtstart, c.dtend}));

        std::vector<APImportedEvent> events;
        std::string error;
        ASSERT_TRUE(APCalendarImport_File(HostPath(path), events, error)) << error;
        ASSERT_EQ(events.size(), 1u);
        ASSERT_NE(events[0].record, nullptr) << events[0].error;
        // Byte for byte, but for a counted series: it comes with the series limit, for the caller
        // to cut.
        _EventRecInfo want = c.record;
        want.lastStamp = int32_t(c.countedRule ? At(20301231, 23, 59, 59) : want.lastStamp);
        EXPECT_EQ(std::memcmp(events[0].record.get(), &want, sizeof want), 0) << "record differs";
        EXPECT_EQ(events[0].hasAlarm, c.record.alarm != 0);
        EXPECT_EQ(std::make_tuple(events[0].leadSeconds, events[0].leadAmount, events[0].leadUnit),
                  std::make_tuple(c.lead, c.leadAmount, c.leadUnit));
    }
}

// Python's vobject, the second independent reader: prints each file's fields as hex so that any
// byte survives the pipe.
const char* kVobjectScript = R"(
import sys, vobject
for path in sys.argv[1:]:
    event = vobject.readOne(open(path, encoding='utf-8').read()).vevent
    print('FILE', path)
    for name in ['summary', 'location', 'description', 'categories', 'dtstart', 'rrule', 'dalarm']:
        items = event.contents.get(name)
        value = items[0].value if items else ''
        value = value[0] if isinstance(value, list) else value
        value = value.isoformat() if hasattr(value, 'isoformat') else str(value)
        print(name, value.replace('\r\n', '\n').encode('utf-8').hex() or '-')
)";

// libical's "20260315T090000Z" as vobject's isoformat: "2026-03-15T09:00:00+00:00".
std::string IsoFromICal(const std::string& t) {
    std::string iso = t.substr(0, 4) + "-" + t.substr(4, 2) + "-" + t.substr(6, 2) + "T" +
                      t.substr(9, 2) + ":" + t.substr(11, 2) + ":" + t.substr(13, 2);
    return t.back() == 'Z' ? iso + "+00:00" : iso;
}

// Field name -> value, per file, as vobject reads them.
std::map<std::string, std::map<std::string, std::string>> ReadWithVobject(
    const std::string& script, const std::vector<std::string>& files) {
    std::string command = "/usr/bin/python3 '" + script + "'";
    for (const std::string& file : files) {
        command += " '" + file + "'";
    }
    std::map<std::string, std::map<std::string, std::string>> result;
    FILE* pipe = popen(command.c_str(), "r");
    char line[8192];
    std::string current;
    while (pipe != nullptr && std::fgets(line, sizeof line, pipe) != nullptr) {
        std::istringstream words(line);
        std::string key, hex, value;
        words >> key >> hex;
        if (key == "FILE") {
            current = hex;  // the path itself
            continue;
        }
        for (size_t i = 0; hex != "-" && i + 1 < hex.size(); i += 2) {
            value += char(std::stoi(hex.substr(i, 2), nullptr, 16));
        }
        result[current][key] = value;
    }
    if (pipe != nullptr) {
        pclose(pipe);
    }
    return result;
}

TEST_F(VCalendarTest, VobjectReadsEveryExportBack) {
    ASSERT_EQ(std::system("/usr/bin/python3 -c 'import vobject' 2>/dev/null"), 0)
        << "the tests need Debian's python3-vobject (scripts/setup.sh installs it)";
    std::vector<ExportCase> cases = ExportCases();
    std::vector<std::string> files;
    for (ExportCase& c : cases) {
        files.push_back(HostPath("/tmp/" + c.name + ".vcs"));
        ASSERT_EQ(MakeQnvCalendarWithLead("/tmp/" + c.name + ".vcs", &c.record, c.lead), 1);
    }
    const std::string script = HostPath("/tmp/read_vcs.py");
    std::ofstream(script) << kVobjectScript;
    auto read = ReadWithVobject(script, files);
    ASSERT_EQ(read.size(), cases.size()) << "vobject read every file";
    for (size_t i = 0; i < cases.size(); ++i) {
        const ExportCase& c = cases[i];
        SCOPED_TRACE(c.name);
        auto& f = read[files[i]];
        EXPECT_EQ(
            std::tie(f["summary"], f["location"], f["description"], f["categories"], f["dtstart"],
                     f["rrule"]),
            std::make_tuple(Stored(c.record.subject), Stored(c.record.location),
                            Stored(c.record.notes), c.category, IsoFromICal(c.dtstart), c.rule));
        EXPECT_EQ(f["dalarm"].substr(0, c.alarm.size()), c.alarm);
    }
}

std::string Calendar(const std::string& body, const char* version = "1.0") {
    return std::string("BEGIN:VCALENDAR\r\nVERSION:") + version + "\r\n" + body +
           "END:VCALENDAR\r\n";
}

std::string Event(const std::string& lines) {
    return "BEGIN:VEVENT\r\nSUMMARY:x\r\n" + lines + "END:VEVENT\r\n";
}

std::vector<APImportedEvent> Import(const std::string& text) {
    std::vector<APImportedEvent> events;
    std::string error;
    EXPECT_TRUE(APCalendarImport_Text(text, events, error)) << error;
    return events;
}

// Line 0: the whole text is refused as no calendar.
TEST_F(VCalendarTest, MalformedOrUnholdableInputIsReportedByLine) {
    const std::string start = "DTSTART:20260315T090000Z\r\n";
    // Name, text, line of the reported error, part of the reason.
    // clang-format off
    const std::tuple<const char*, std::string, int, const char*> rows[] = {
        {"bad_date", Calendar(Event("DTSTART:2026-03-15\r\n")), 5, "bad date-time"},
        {"month_13", Calendar(Event("DTSTART:20261315T090000Z\r\n")), 5, "bad date-time"},
        {"no_start", Calendar(Event("LOCATION:x\r\n")), 3, "no DTSTART"},
        {"end_before_start", Calendar(Event(start + "DTEND:20260314T090000Z\r\n")), 3, "before DTSTART"},
        {"yearly_by_day_of_year", Calendar(Event(start + "RRULE:YD1 100 #0\r\n")), 6, "cannot be held"},
        {"last_day_of_month", Calendar(Event(start + "RRULE:MD1 LD #0\r\n")), 6, "cannot be held"},
        {"two_weekdays_by_position", Calendar(Event(start + "RRULE:MP1 2+ MO TU #0\r\n")), 6, "cannot be held"},
        {"second_last_week", Calendar(Event(start + "RRULE:MP1 2- MO #0\r\n")), 6, "week position"},
        {"times_in_daily_rule", Calendar(Event(start + "RRULE:D1 0800 1200 #5\r\n")), 6, "cannot be held"},
        {"interval_zero", Calendar(Event(start + "RRULE:D0 #5\r\n")), 6, "bad frequency"},
        {"every_second_year", Calendar(Event(start + "RRULE:YM2 6 #0\r\n")), 6, "every year"},
        {"excluded_dates", Calendar(Event(start + "EXDATE:20260316T090000Z\r\n")), 6, "EXDATE"},
        {"bad_quoted_printable", Calendar(Event(start + "LOCATION;ENCODING=QUOTED-PRINTABLE:a=ZZ\r\n")), 6,
         "quoted-printable"},
        {"not_a_property", Calendar(Event(start + "garbage line\r\n")), 6, "not a property"},
        {"missing_end", Calendar("BEGIN:VEVENT\r\n" + start), 3, "without END:VEVENT"},
        {"ics_hourly", Calendar(Event(start + "RRULE:FREQ=HOURLY\r\n"), "2.0"), 3, "cannot be held"},
        {"ics_every_second_year",
         Calendar(Event(start + "RRULE:FREQ=YEARLY;INTERVAL=2\r\n"), "2.0"), 3, "every year"},
        {"ics_last_day_of_month",
         Calendar(Event(start + "RRULE:FREQ=MONTHLY;BYMONTHDAY=-1\r\n"), "2.0"), 3, "from the end"},
        {"ics_two_rules", Calendar(Event(start + "RRULE:FREQ=DAILY\r\nRRULE:FREQ=WEEKLY\r\n"), "2.0"), 3,
         "more than one RRULE"},
        {"ics_begin_line_with_a_stray_carriage_return",
         Calendar("BEGIN:VEVENT\rX\r\nLOCATION:x\r\nEND:VEVENT\r\n", "2.0"), 3, "no DTSTART"},
        {"ics_folded_begin_line",
         Calendar("BEGIN:VEV\r\n ENT\r\nLOCATION:x\r\nEND:VEVENT\r\n", "2.0"), 1, "no DTSTART"},
        {"plain_text", "hello\nworld\n", 0, ""},
        {"binary", std::string("\x00\x01\x02\xff", 4), 0, ""},
        {"empty", "", 0, ""},
    };
    // clang-format on
    for (const auto& [name, text, line, says] : rows) {
        SCOPED_TRACE(name);
        std::vector<APImportedEvent> events;
        std::string error;
        ASSERT_EQ(APCalendarImport_Text(text, events, error), line > 0) << error;
        if (line == 0) {
            EXPECT_FALSE(error.empty());
            continue;
        }
        ASSERT_EQ(events.size(), 1u);
        EXPECT_EQ(events[0].record, nullptr);
        EXPECT_EQ(events[0].error.rfind("line " + std::to_string(line), 0), 0u) << events[0].error;
        EXPECT_NE(events[0].error.find(says), std::string::npos) << events[0].error;
    }
    std::vector<APImportedEvent> events;
    std::string error;
    EXPECT_FALSE(APCalendarImport_File(HostPath("/missing.ics"), events, error));
    EXPECT_NE(error.find("no such file"), std::string::npos) << error;
}

// A bad event does not stop the others; folded lines, charsets, bare dates and overlong text.
TEST_F(VCalendarTest, GoodEventsAroundABadOneAreReadWhole) {
    const std::vector<APImportedEvent> events =
        Import(Calendar(Event("DTSTART:20260315T090000\r\nDTEND:20260315T100000\r\n"
                              "LOCATION;CHARSET=ISO-8859-1;QUOTED-PRINTABLE:M=FCnchen=\r\n Hbf\r\n"
                              "DESCRIPTION:first\r\n  second\r\nCATEGORIES:HOLIDAY;BUSINESS\r\n"
                              "SUMMARY:" +
                              std::string(700, 'a') + "\r\n") +
                        Event("DTSTART:20260316T090000Z\r\nRRULE:YD1 5 #0\r\n") +
                        Event("DTSTART:20260317\r\nDTEND:20260317\r\n")));
    ASSERT_EQ(events.size(), 3u);
    ASSERT_TRUE(events[0].record && events[2].record) << events[0].error << events[2].error;
    // Floating times are local; a bare date is an all-day event; the overlong subject is cut.
    const _EventRecInfo& r = *events[0].record;
    EXPECT_EQ(std::make_tuple(Stored(r.location), Stored(r.notes), r.classChoice, Stored(r.subject),
                              r.startStamp, int(r.allDay)),
              std::make_tuple(std::string("M\xC3\xBCnchen Hbf"), std::string("first second"),
                              11562u, std::string(600, 'a'), int32_t(At(20260315, 9)), 0));
    EXPECT_NE(events[0].warning.find("SUMMARY"), std::string::npos);
    EXPECT_EQ(events[1].record, nullptr);
    EXPECT_EQ(events[1].line, 14) << "file lines, folds counted";
    EXPECT_EQ(std::make_tuple(int(events[2].record->allDay), events[2].record->startStamp),
              std::make_tuple(1, int32_t(UtcAt(20260317))));
}

TEST_F(VCalendarTest, ICalendarEventsThroughLibical) {
    const std::vector<APImportedEvent> events = Import(
        Calendar("BEGIN:VEVENT\r\nUID:1\r\nSUMMARY:Team\r\nDTSTART:20260310T080000Z\r\n"
                 "DTEND:20260310T090000Z\r\nRRULE:FREQ=MONTHLY;BYDAY=2TU;COUNT=5\r\n"
                 "BEGIN:VALARM\r\nACTION:DISPLAY\r\nDESCRIPTION:x\r\nTRIGGER:-PT15M\r\n"
                 "END:VALARM\r\nEND:VEVENT\r\n"
                 "BEGIN:VEVENT\r\nUID:2\r\nSUMMARY:Trip\r\nDTSTART;VALUE=DATE:20260401\r\n"
                 "DTEND;VALUE=DATE:20260404\r\nRRULE:FREQ=YEARLY;UNTIL=20280401\r\nEND:VEVENT\r\n",
                 "2.0"));
    ASSERT_EQ(events.size(), 2u);
    ASSERT_TRUE(events[0].record && events[1].record) << events[0].error << events[1].error;
    const _EventRecInfo& team = *events[0].record;
    EXPECT_EQ(std::make_tuple(team.recurKind, team.recurValueB, team.recurValueC,
                              events[0].leadSeconds, events[0].line),
              std::make_tuple(4, 2 * 256 + 3, 5, 900L, 3));
    // DTEND dates are exclusive; an UNTIL date ends the series at its end.
    const _EventRecInfo& trip = *events[1].record;
    EXPECT_EQ(std::make_tuple(int(trip.allDay), trip.startStamp, trip.endStamp, trip.recurKind,
                              trip.recurValueA, trip.recurValueB, trip.recurValueC, trip.lastStamp),
              std::make_tuple(1, int32_t(UtcAt(20260401)), int32_t(UtcAt(20260403, 23, 59, 59)), 8,
                              4, 1, -1, int32_t(At(20280401, 23, 59, 59))));
}

TEST_F(VCalendarTest, ImpossibleRecordsStillGiveAReadableFile) {
    const std::tuple<const char*, int, int, int> rows[] = {
        {"unknown_kind_3", 3, 1, 0},
        {"weekly_empty_mask", 2, 1, 0},
        {"monthly_weekday_9", 4, 1, 0x209},
        {"yearly_month_13", 8, 13, 45},
        {"interval_0", 1, 0, 0},
    };
    for (const auto& [name, kind, a, b] : rows) {
        SCOPED_TRACE(name);
        _EventRecInfo record = TimedEvent("odd", UtcAt(20260101, 8), UtcAt(20260101, 9));
        MakeRepeating(record, kind, a, b, UtcAt(20260601));
        std::memset(record.notes, 'n', sizeof record.notes);  // no NUL anywhere
        const std::string path = std::string("/tmp/") + name + ".vcs";
        ASSERT_EQ(MakeQnvCalendar(path, &record, 0), 1);
        const std::vector<std::string> read = ReadWithLibical(HostPath(path));
        ASSERT_EQ(read.size(), 7u);
        EXPECT_EQ(read[2], std::string(600, 'n')) << "notes cut at 600 bytes";
        EXPECT_EQ(read[6].find("INTERVAL=0"), std::string::npos) << read[6];
    }
    EXPECT_EQ(MakeQnvCalendar(std::string("/tmp/none.vcs"), nullptr, 0), 0);
}

}  // namespace

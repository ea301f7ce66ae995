// Calendar file import: every exported event comes back field for field, and malformed or
// unholdable input is reported by line without stopping the other events.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>

#include "APVCalendarImport.h"
#include "APVCalendarWriter.h"
#include "store_support.h"
#include "vcalendar_support.h"

namespace {

std::string Stored(const char* field) {
    return std::string(field, strnlen(field, kAPEventTextSize));
}

class CalendarImportTest : public StoreRootTest {};

TEST_F(CalendarImportTest, ExportedEventsComeBackFieldForField) {
    for (ExportCase& c : ExportCases()) {
        SCOPED_TRACE(c.name);
        std::string path = "/tmp/" + c.name + ".vcs";
        ASSERT_EQ(MakeQnvCalendarWithLead(path, &c.record, c.lead), 1);
        std::vector<APImportedEvent> events;
        std::string error;
        ASSERT_TRUE(APCalendarImport_File(HostPath(path), events, error)) << error;
        ASSERT_EQ(events.size(), 1u);
        const APImportedEvent& e = events[0];
        ASSERT_TRUE(e.error.empty()) << e.error;
        ASSERT_NE(e.record, nullptr);
        const _EventRecInfo& in = c.record;
        const _EventRecInfo& out = *e.record;
        EXPECT_EQ(out.id, 0);
        EXPECT_EQ(out.startStamp, in.startStamp);
        EXPECT_EQ(out.endStamp, in.endStamp) << "an all-day end is the last day's 23:59:59";
        EXPECT_EQ(out.allDay, in.allDay);
        EXPECT_EQ(out.recurKind, in.recurKind);
        EXPECT_EQ(out.recurring, in.recurKind != 0 ? 1 : 0);
        if (in.recurKind != 0) {
            EXPECT_EQ(out.recurValueA, in.recurValueA);
            EXPECT_EQ(out.recurValueB, in.recurValueB);
            EXPECT_EQ(out.recurValueC, in.recurValueC);
            EXPECT_EQ(out.lastStamp,
                      c.countedRule ? LocalStamp(2030, 12, 31, 23, 59, 59) : in.lastStamp);
        }
        EXPECT_EQ(Stored(out.subject), Stored(in.subject));
        EXPECT_EQ(Stored(out.location), Stored(in.location));
        EXPECT_EQ(Stored(out.notes), Stored(in.notes));
        EXPECT_EQ(out.classChoice, in.classChoice);
        EXPECT_EQ(out.colour, in.colour);
        EXPECT_EQ(out.alarm, in.alarm);
        EXPECT_EQ(e.hasAlarm, in.alarm != 0);
        if (in.alarm) {
            EXPECT_EQ(e.leadSeconds, c.lead);
        }
    }
}

TEST_F(CalendarImportTest, AlarmLeadsMapToAlertUnits) {
    struct Row {
        const char* name;
        long lead;
        int amount, unit;
    };
    const Row rows[] = {
        {"at_start", 0, 0, 1},      {"five_minutes", 300, 5, 1}, {"ninety_minutes", 5400, 90, 1},
        {"six_hours", 21600, 6, 2}, {"one_day", 86400, 1, 3},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        _EventRecInfo record = TimedEvent("A", UtcStamp(2026, 5, 1, 12), UtcStamp(2026, 5, 1, 13));
        record.alarm = 1;
        std::vector<APImportedEvent> events;
        std::string error;
        ASSERT_TRUE(APCalendarImport_Text(APVCalendar_Format(record, row.lead), events, error));
        ASSERT_EQ(events.size(), 1u);
        EXPECT_EQ(events[0].leadAmount, row.amount);
        EXPECT_EQ(events[0].leadUnit, row.unit);
    }
}

std::string Calendar(const std::string& body, const char* version = "1.0") {
    return std::string("BEGIN:VCALENDAR\r\nVERSION:") + version + "\r\n" + body +
           "END:VCALENDAR\r\n";
}

std::string Event(const std::string& lines) {
    return "BEGIN:VEVENT\r\nSUMMARY:x\r\n" + lines + "END:VEVENT\r\n";
}

TEST_F(CalendarImportTest, MalformedOrUnholdableEventsAreReportedByLine) {
    const std::string start = "DTSTART:20260315T090000Z\r\n";
    struct Row {
        const char* name;
        std::string text;
        int line;          // of the reported error
        const char* says;  // part of the reason
    };
    const Row rows[] = {
        {"bad_date", Calendar(Event("DTSTART:2026-03-15\r\n")), 5, "bad date-time"},
        {"month_13", Calendar(Event("DTSTART:20261315T090000Z\r\n")), 5, "bad date-time"},
        {"no_start", Calendar(Event("LOCATION:x\r\n")), 3, "no DTSTART"},
        {"end_before_start", Calendar(Event(start + "DTEND:20260314T090000Z\r\n")), 3,
         "before DTSTART"},
        {"yearly_by_day_of_year", Calendar(Event(start + "RRULE:YD1 100 #0\r\n")), 6,
         "cannot be held"},
        {"last_day_of_month", Calendar(Event(start + "RRULE:MD1 LD #0\r\n")), 6, "cannot be held"},
        {"two_weekdays_by_position", Calendar(Event(start + "RRULE:MP1 2+ MO TU #0\r\n")), 6,
         "cannot be held"},
        {"second_last_week", Calendar(Event(start + "RRULE:MP1 2- MO #0\r\n")), 6, "week position"},
        {"times_in_daily_rule", Calendar(Event(start + "RRULE:D1 0800 1200 #5\r\n")), 6,
         "cannot be held"},
        {"interval_zero", Calendar(Event(start + "RRULE:D0 #5\r\n")), 6, "bad frequency"},
        {"every_second_year", Calendar(Event(start + "RRULE:YM2 6 #0\r\n")), 6, "every year"},
        {"excluded_dates", Calendar(Event(start + "EXDATE:20260316T090000Z\r\n")), 6, "EXDATE"},
        {"bad_quoted_printable",
         Calendar(Event(start + "LOCATION;ENCODING=QUOTED-PRINTABLE:a=ZZ\r\n")), 6,
         "quoted-printable"},
        {"not_a_property", Calendar(Event(start + "garbage line\r\n")), 6, "not a property"},
        {"missing_end", Calendar("BEGIN:VEVENT\r\n" + start), 3, "without END:VEVENT"},
        {"ics_hourly", Calendar(Event(start + "RRULE:FREQ=HOURLY\r\n"), "2.0"), 3,
         "cannot be held"},
        {"ics_every_second_year",
         Calendar(Event(start + "RRULE:FREQ=YEARLY;INTERVAL=2\r\n"), "2.0"), 3, "every year"},
        {"ics_last_day_of_month",
         Calendar(Event(start + "RRULE:FREQ=MONTHLY;BYMONTHDAY=-1\r\n"), "2.0"), 3, "from the end"},
        {"ics_two_rules",
         Calendar(Event(start + "RRULE:FREQ=DAILY\r\nRRULE:FREQ=WEEKLY\r\n"), "2.0"), 3,
         "more than one RRULE"},
        {"ics_begin_line_with_a_stray_carriage_return",
         Calendar("BEGIN:VEVENT\rX\r\nLOCATION:x\r\nEND:VEVENT\r\n", "2.0"), 3, "no DTSTART"},
        {"ics_folded_begin_line",
         Calendar("BEGIN:VEV\r\n ENT\r\nLOCATION:x\r\nEND:VEVENT\r\n", "2.0"), 1, "no DTSTART"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<APImportedEvent> events;
        std::string error;
        ASSERT_TRUE(APCalendarImport_Text(row.text, events, error)) << error;
        ASSERT_EQ(events.size(), 1u);
        EXPECT_EQ(events[0].record, nullptr);
        EXPECT_EQ(events[0].error.rfind("line " + std::to_string(row.line), 0), 0u)
            << events[0].error;
        EXPECT_NE(events[0].error.find(row.says), std::string::npos) << events[0].error;
    }
}

TEST_F(CalendarImportTest, OneBadEventDoesNotStopTheOthers) {
    std::string text = Calendar(Event("DTSTART:20260315T090000Z\r\n") +
                                Event("DTSTART:20260316T090000Z\r\nRRULE:YD1 5 #0\r\n") +
                                Event("DTSTART:20260317\r\nDTEND:20260317\r\n"));
    std::vector<APImportedEvent> events;
    std::string error;
    ASSERT_TRUE(APCalendarImport_Text(text, events, error));
    ASSERT_EQ(events.size(), 3u);
    EXPECT_NE(events[0].record, nullptr);
    EXPECT_EQ(events[1].record, nullptr);
    EXPECT_EQ(events[1].line, 7);
    ASSERT_NE(events[2].record, nullptr);
    EXPECT_EQ(events[2].record->allDay, 1) << "a bare date is an all-day event";
    EXPECT_EQ(events[2].record->startStamp, UtcStamp(2026, 3, 17));
}

TEST_F(CalendarImportTest, FoldedLinesCharsetsAndOverlongText) {
    std::string longSubject(700, 'a');
    std::string text =
        Calendar(Event("DTSTART:20260315T090000\r\nDTEND:20260315T100000\r\n"
                       "LOCATION;CHARSET=ISO-8859-1;QUOTED-PRINTABLE:M=FCnchen=\r\n Hbf\r\n"
                       "DESCRIPTION:first\r\n  second\r\n"
                       "CATEGORIES:HOLIDAY;BUSINESS\r\n"
                       "SUMMARY:" +
                       longSubject + "\r\n"));
    std::vector<APImportedEvent> events;
    std::string error;
    ASSERT_TRUE(APCalendarImport_Text(text, events, error));
    ASSERT_EQ(events.size(), 1u);
    ASSERT_NE(events[0].record, nullptr) << events[0].error;
    const _EventRecInfo& r = *events[0].record;
    EXPECT_EQ(Stored(r.location), "M\xC3\xBCnchen Hbf");
    EXPECT_EQ(Stored(r.notes), "first second");
    EXPECT_EQ(r.classChoice, 11562u);
    EXPECT_EQ(Stored(r.subject), std::string(600, 'a'));
    EXPECT_NE(events[0].warning.find("SUMMARY"), std::string::npos);
    EXPECT_EQ(r.startStamp, LocalStamp(2026, 3, 15, 9)) << "floating times are local";
    EXPECT_EQ(r.allDay, 0);
}

TEST_F(CalendarImportTest, ICalendarEventsThroughLibical) {
    std::string text = Calendar(
        "BEGIN:VEVENT\r\nUID:1\r\nSUMMARY:Team\r\nDTSTART:20260310T080000Z\r\n"
        "DTEND:20260310T090000Z\r\nRRULE:FREQ=MONTHLY;BYDAY=2TU;COUNT=5\r\n"
        "BEGIN:VALARM\r\nACTION:DISPLAY\r\nDESCRIPTION:x\r\nTRIGGER:-PT15M\r\nEND:VALARM\r\n"
        "END:VEVENT\r\n"
        "BEGIN:VEVENT\r\nUID:2\r\nSUMMARY:Trip\r\nDTSTART;VALUE=DATE:20260401\r\n"
        "DTEND;VALUE=DATE:20260404\r\nRRULE:FREQ=YEARLY;UNTIL=20280401\r\nEND:VEVENT\r\n",
        "2.0");
    std::vector<APImportedEvent> events;
    std::string error;
    ASSERT_TRUE(APCalendarImport_Text(text, events, error)) << error;
    ASSERT_EQ(events.size(), 2u);
    ASSERT_NE(events[0].record, nullptr) << events[0].error;
    const _EventRecInfo& team = *events[0].record;
    EXPECT_EQ(team.recurKind, 4);
    EXPECT_EQ(team.recurValueB, 2 * 256 + 3);
    EXPECT_EQ(team.recurValueC, 5);
    EXPECT_EQ(events[0].leadSeconds, 900);
    EXPECT_EQ(events[0].line, 3);
    ASSERT_NE(events[1].record, nullptr) << events[1].error;
    const _EventRecInfo& trip = *events[1].record;
    EXPECT_EQ(trip.allDay, 1);
    EXPECT_EQ(trip.startStamp, UtcStamp(2026, 4, 1));
    EXPECT_EQ(trip.endStamp, UtcStamp(2026, 4, 3, 23, 59, 59)) << "DTEND dates are exclusive";
    EXPECT_EQ(trip.recurKind, 8);
    EXPECT_EQ(trip.recurValueA, 4);
    EXPECT_EQ(trip.recurValueB, 1);
    EXPECT_EQ(trip.recurValueC, -1);
    EXPECT_EQ(trip.lastStamp, LocalStamp(2028, 4, 1, 23, 59, 59));
}

TEST_F(CalendarImportTest, FilesThatAreNoCalendarAreRefused) {
    struct Row {
        const char* name;
        std::string content;
    };
    const Row rows[] = {
        {"plain_text", "hello\nworld\n"},
        {"binary", std::string("\x00\x01\x02\xff", 4)},
        {"empty", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::string path = HostPath("/f.vcs");
        std::ofstream(path, std::ios::binary) << row.content;
        std::vector<APImportedEvent> events;
        std::string error;
        EXPECT_FALSE(APCalendarImport_File(path, events, error));
        EXPECT_FALSE(error.empty());
    }
    std::vector<APImportedEvent> events;
    std::string error;
    EXPECT_FALSE(APCalendarImport_File(HostPath("/missing.ics"), events, error));
    EXPECT_NE(error.find("no such file"), std::string::npos) << error;
}

}  // namespace

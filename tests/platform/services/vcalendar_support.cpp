// The export cases: every repeat kind and end mode, all-day and timed, alarms, non-ASCII and
// multi-line text.
#include "vcalendar_support.h"

#include <cstring>

#include "store_support.h"

namespace {

constexpr int kNoEnd = 0xFFFFF;

void SetText(char* field, const char* text) {
    std::memset(field, 0, kAPEventTextSize);
    std::strncpy(field, text, kAPEventTextMax);
}

ExportCase Timed(const std::string& name, const char* subject) {
    ExportCase c;
    c.name = name;
    c.record =
        TimedEvent(subject, UtcStamp(2026, 3, 15, 9, 0, 0), UtcStamp(2026, 3, 15, 10, 30, 0));
    c.dtstart = "20260315T090000Z";
    c.dtend = "20260315T103000Z";
    c.dtstartIso = "2026-03-15T09:00:00+00:00";
    c.category = "PERSONAL";
    return c;
}

ExportCase Repeating(const std::string& name, int kind, int a, int b, int count, long last,
                     const char* rule, const char* icalRule) {
    ExportCase c = Timed(name, "Series");
    MakeRepeating(c.record, kind, a, b, last, count);
    c.rule = rule;
    c.icalRule = icalRule;
    c.countedRule = count > 0 && count != kNoEnd;
    return c;
}

}  // namespace

std::vector<ExportCase> ExportCases() {
    std::vector<ExportCase> cases;
    const long limit = LocalStamp(2030, 12, 31, 23, 59, 59);

    ExportCase plain = Timed("timed_single_business", "Dentist");
    SetText(plain.record.location, "Main Street 4");
    SetText(plain.record.notes, "Bring the card");
    plain.record.classChoice = 11560;
    plain.category = "BUSINESS";
    cases.push_back(plain);

    ExportCase allDay;
    allDay.name = "all_day_two_days_holiday";
    allDay.record = AllDayEvent("Spring break", 2026, 3, 15, 2);
    allDay.record.classChoice = 11562;
    allDay.dtstart = "20260315T000000";
    allDay.dtend = "20260316T235900";
    allDay.dtstartIso = "2026-03-15T00:00:00";
    allDay.category = "HOLIDAY";
    cases.push_back(allDay);

    cases.push_back(Repeating("daily_every_2_count_10", 1, 2, 0, 10, limit, "D2 #10",
                              "FREQ=DAILY;COUNT=10;INTERVAL=2"));
    cases.push_back(Repeating("daily_until_date", 1, 1, 0, 0, LocalStamp(2026, 4, 1, 23, 59, 59),
                              "D1 20260401T235959", "FREQ=DAILY;UNTIL=20260401T235959Z"));
    cases.push_back(Repeating("working_days_no_end", 1, 1, 1, kNoEnd, limit, "W1 MO TU WE TH FR #0",
                              "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR"));
    cases.push_back(Repeating("weekly_mon_wed_fri_until", 2, 1, 0x2A, -1, limit,
                              "W1 MO WE FR 20301231T235959",
                              "FREQ=WEEKLY;UNTIL=20301231T235959Z;BYDAY=MO,WE,FR"));
    cases.push_back(Repeating("weekly_every_3_sunday_saturday_count", 2, 3, 0x41, 4, limit,
                              "W3 SU SA #4", "FREQ=WEEKLY;COUNT=4;INTERVAL=3;BYDAY=SU,SA"));
    cases.push_back(Repeating("monthly_day_15_no_end", 4, 1, 15, kNoEnd, limit, "MD1 15 #0",
                              "FREQ=MONTHLY;BYMONTHDAY=15"));
    cases.push_back(Repeating("monthly_second_tuesday_no_end", 4, 1, 2 * 256 + 3, kNoEnd, limit,
                              "MP1 2+ TU #0", "FREQ=MONTHLY;BYDAY=TU;BYSETPOS=2"));
    cases.push_back(Repeating("monthly_last_sunday_every_2_count", 4, 2, 5 * 256 + 1, 3, limit,
                              "MP2 1- SU #3",
                              "FREQ=MONTHLY;COUNT=3;INTERVAL=2;BYDAY=SU;BYSETPOS=-1"));
    cases.push_back(Repeating("monthly_day_until", 4, 1, 15, -1,
                              LocalStamp(2027, 1, 15, 23, 59, 59), "MD1 15 20270115T235959",
                              "FREQ=MONTHLY;UNTIL=20270115T235959Z;BYMONTHDAY=15"));
    cases.push_back(Repeating("yearly_march_15_no_end", 8, 3, 15, kNoEnd, limit, "YM1 3 #0",
                              "FREQ=YEARLY;BYMONTH=3"));
    cases.push_back(Repeating("yearly_third_sunday_of_march_count", 8, 3, 3 * 256 + 1, 5, limit,
                              "MP12 3+ SU #5",
                              "FREQ=MONTHLY;COUNT=5;INTERVAL=12;BYDAY=SU;BYSETPOS=3"));

    ExportCase alarm = Timed("timed_alarm_15_minutes", "Call Bob");
    alarm.record.alarm = 1;
    alarm.lead = 900;
    alarm.alarm = "20260315T084500Z";
    cases.push_back(alarm);

    ExportCase allDayAlarm = allDay;
    allDayAlarm.name = "all_day_alarm_one_day_before";
    allDayAlarm.record.alarm = 1;
    allDayAlarm.lead = 86400;
    allDayAlarm.alarm = "20260314T000000Z";
    cases.push_back(allDayAlarm);

    ExportCase text = Timed("non_ascii_and_multi_line_text", "Café 会议 ✓");
    SetText(text.record.location, "Zürich, Bahnhof; Gleis 3");
    SetText(text.record.notes, "First line\nSecond line = more\nThird \\ line ");
    cases.push_back(text);

    ExportCase longText = Timed("six_hundred_byte_subject", "");
    std::string subject(598, 'x');
    subject += "é";  // 600 bytes with a two-byte character at the end
    SetText(longText.record.subject, subject.c_str());
    cases.push_back(longText);
    return cases;
}

// calendar-ctl end to end: the program, run on a temporary root, stores events of every kind as the
// application would, exports and imports them whole, answers queries and refuses bad input with
// its status and a message that names the fault.
#include <sys/wait.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "store_support.h"

namespace {

struct CtlRun {
    int status;
    std::string out, err;
};

std::string Quote(const std::string& word) {
    return "'" + std::regex_replace(word, std::regex("'"), "'\\''") + "'";
}

size_t LineCount(const std::string& text) {
    return size_t(std::count(text.begin(), text.end(), '\n'));
}

// Whether a line of `key=value` words holds the word `pair`.
bool HasWord(const std::string& line, const std::string& pair) {
    return (" " + line.substr(0, line.find('\n')) + " ").find(" " + pair + " ") !=
           std::string::npos;
}

// A line without the words that a second store numbers itself.
std::string WithoutIds(const std::string& line) {
    return std::regex_replace(line, std::regex("\\b(alert_id|id|daemon_id|owner)=\\S+ "), "");
}

class CalendarCtlTest : public StoreRootTest {
protected:
    void SetUp() override {
        StoreRootTest::SetUp();
        if (!std::filesystem::exists(mProgram)) {
            GTEST_SKIP() << "calendar-ctl is not built in " << CAL_BINARY_DIR;
        }
    }
    CtlRun Ctl(const std::vector<std::string>& words, const std::string& root = "") {
        std::string command = "TZ=Europe/Berlin " + Quote(mProgram) + " --root " +
                              Quote(root.empty() ? Root() : root);
        for (const std::string& word : words) {
            command += " " + Quote(word);
        }
        const std::string out = Root() + "/ctl-out", err = Root() + "/ctl-err";
        const int status = std::system((command + " >" + out + " 2>" + err).c_str());
        CtlRun run{WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(out), ReadFile(err)};
        // The tool finds the program files in the build it runs from: no set-up complaint.
        EXPECT_EQ(run.err.find("device set-up"), std::string::npos) << run.err;
        return run;
    }

private:
    const std::string mProgram = std::string(CAL_BINARY_DIR) + "/bin/calendar-ctl";
};

std::vector<std::string> Timed(const char* start, const char* end,
                               std::vector<std::string> more = {}) {
    std::vector<std::string> args = {"event",   "add", "--subject", "S",
                                     "--start", start, "--end",     end};
    args.insert(args.end(), more.begin(), more.end());
    return args;
}

// Events of every kind are stored as the application stores them (series end, first occurrence,
// 2030 cut, alarm lead), and each one exported and imported into a fresh root comes back equal,
// its alarm ringing as the original's.
TEST_F(CalendarCtlTest, AddsEventsAsTheApplicationStoresThemAndExportsThemWhole) {
    // Name, command, words of `event show` split at '|'.
    const std::vector<std::tuple<const char*, std::vector<std::string>, std::string>> rows = {
        {"single_texts_choices",
         Timed("2025-03-10 09:00", "2025-03-10 10:00",
               {"--subject", "Grüße", "--location", "Café", "--notes", "one\ntwo", "--colour",
                "11550", "--class", "11562", "--alarm", "11531"}),
         "kind=0|a=0|recurring=0|subject=Grüße|notes=\"one\\ntwo\"|last_local=\"2025-03-10 "
         "10:00:00\"|colour=11550|"
         "class=11562|lead_amount=0"},
        {"daily_count",
         Timed("2025-03-10 09:00", "2025-03-10 10:00",
               {"--repeat", "daily", "--interval", "2", "--count", "5"}),
         "kind=1|c=5|last_local=\"2025-03-18 09:00:00\""},
        {"workdays_until",
         Timed("2025-03-10 09:00", "2025-03-10 10:00",
               {"--repeat", "workdays", "--until", "2025-04-30"}),
         "b=1|c=0|last_local=\"2025-04-30 23:59:59\""},
        {"weekly_moves_start",
         Timed("2025-03-09 18:00", "2025-03-09 19:00",
               {"--repeat", "weekly:2,4", "--count", "4", "--alarm", "11537"}),
         "kind=2|b=10|start_local=\"2025-03-10 18:00:00\"|end_local=\"2025-03-10 19:00:00\"|"
         "last_local=\"2025-03-19 18:00:00\"|lead_amount=1|lead_unit=2"},
        {"monthly_31_clamped",
         Timed("2025-04-10 08:00", "2025-04-10 09:00",
               {"--repeat", "monthly:31", "--count", "2", "--colour", "11545"}),
         "start_local=\"2025-04-30 08:00:00\"|last_local=\"2025-05-30 08:00:00\""},
        {"monthly_nth_until",
         Timed("2025-03-01 08:00", "2025-03-01 08:30",
               {"--repeat", "monthly:2/3", "--until", "2025-12-31", "--class", "11563"}),
         "b=515|c=-1|start_local=\"2025-03-11 08:00:00\"|last_local=\"2025-12-31 23:59:59\""},
        {"yearly_feb_29",
         Timed("2024-01-10 08:00", "2024-01-10 09:00", {"--repeat", "yearly:2/29", "--count", "2"}),
         "a=2|start_local=\"2024-02-29 08:00:00\"|last_local=\"2025-02-28 08:00:00\""},
        // As the phone's save path has it: the second Sunday is found in the start month (12
        // January) and that day is put into May.
        {"yearly_nth_no_end",
         Timed("2025-01-01 08:00", "2025-01-01 09:00", {"--repeat", "yearly:5/2/1"}),
         "c=1048575|start_local=\"2025-05-12 08:00:00\"|last_local=\"2030-12-31 23:59:59\""},
        {"cut_at_2030",
         Timed("2030-12-25 08:00", "2030-12-25 09:00", {"--repeat", "daily", "--count", "10"}),
         "c=7|last_local=\"2030-12-31 08:00:00\""},
        // Counts far beyond 2030 are cut to what fits, without walking the series for centuries.
        {"weekly_huge_interval",
         Timed("2025-03-01 10:00", "2025-03-01 11:00",
               {"--repeat", "weekly:1,7", "--interval", "999", "--count", "999"}),
         "c=1|last_local=\"2025-03-01 10:00:00\""},
        {"multi_day_yearly",
         Timed("2025-03-20 22:00", "2025-03-23 00:00", {"--repeat", "yearly:3/20", "--count", "3"}),
         "last_local=\"2027-03-20 22:00:00\""},
        {"all_day_alarm",
         {"event", "add", "--subject", "Holiday", "--all-day", "--start", "2025-03-20", "--end",
          "2025-03-21", "--alarm", "11540"},
         "all_day=1|start_local=\"2025-03-20 00:00:00\"|end_local=\"2025-03-21 23:59:59\"|"
         "last_local=\"2025-03-21 23:59:59\"|alarm=1|lead_amount=1|lead_unit=3"},
        {"all_day_yearly",
         {"event", "add", "--subject", "Bday", "--all-day", "--start", "2025-06-15", "--repeat",
          "yearly:6/15", "--alarm", "11540"},
         "kind=8|c=1048575"},
    };
    const std::string second = Root() + "/second";
    for (size_t i = 0; i < rows.size(); ++i) {
        const auto& [name, words, expected] = rows[i];
        SCOPED_TRACE(name);
        const std::string id = std::to_string(i + 1);
        const CtlRun added = Ctl(words);  // prints the id only when the event is stored
        ASSERT_EQ(added.out, id + "\n") << added.err;
        const std::string shown = Ctl({"event", "show", id}).out;
        std::stringstream wanted(expected);
        for (std::string word; std::getline(wanted, word, '|');) {
            EXPECT_TRUE(HasWord(shown, word)) << word << " in " << shown;
        }
        const std::string file = Root() + "/" + id + ".vcs";
        ASSERT_EQ(Ctl({"event", "export", id, file}).status, 0);
        const CtlRun imported = Ctl({"event", "import", file}, second);  // numbered alike
        ASSERT_EQ(imported.out, id + "\n") << imported.err;
        EXPECT_EQ(WithoutIds(Ctl({"event", "show", id}, second).out), WithoutIds(shown));
    }
    EXPECT_EQ(LineCount(Ctl({"event", "list", "--from", "2030-12-01", "--to", "2030-12-31"}).out),
              3u)
        << "the 2030 series and the two without end";
    const std::vector<std::string> window = {"alarm",      "list", "--from",
                                             "2025-01-01", "--to", "2030-12-31"};
    const std::string alarms = Ctl(window).out;
    EXPECT_EQ(LineCount(alarms), 4u);
    EXPECT_EQ(WithoutIds(Ctl(window, second).out), WithoutIds(alarms));
}

// Commands in order on one root, which comes to hold a monthly series on the second Tuesday and
// an all-day event with an alarm a day before: what each answers (stdout on success, else stderr).
TEST_F(CalendarCtlTest, CommandsAnswerWithTheirStatusAndText) {
    const std::string file = Root() + "/two.ics";
    WriteFile(file,
              "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VEVENT\r\nUID:a\r\n"
              "DTSTART:20250310T090000Z\r\nDTEND:20250310T100000Z\r\nSUMMARY:kept\r\n"
              "RRULE:FREQ=WEEKLY;BYDAY=MO;COUNT=3\r\nEND:VEVENT\r\n"
              "BEGIN:VEVENT\r\nUID:b\r\nDTSTART:20250310T090000Z\r\nDTEND:20250310T100000Z\r\n"
              "SUMMARY:hourly\r\nRRULE:FREQ=HOURLY\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
    auto timed = [](std::vector<std::string> more) {
        return Timed("2025-03-02 10:00", "2025-03-02 11:00", more);
    };
    const std::string N = "[^\n]*";
    // Name, command, status, a pattern searched in what the command printed.
    const std::vector<std::tuple<const char*, std::vector<std::string>, int, std::string>> rows = {
        {"add_series",
         Timed("2025-03-11 08:00", "2025-03-11 08:30", {"--repeat", "monthly:2/3", "--count", "3"}),
         0, "^1\n$"},
        {"add_all_day",
         {"event", "add", "--subject", "Holiday", "--all-day", "--start", "2025-03-20", "--end",
          "2025-03-21", "--alarm", "11540"},
         0,
         "^2\n$"},
        {"month_query",
         {"query", "month", "2025-03-15"},
         0,
         "^id=1 " + N + "limit=2025-05-13" + N + "\nid=2 " + N + "last=2025-03-21 " + N +
             "end_time=23:59:59" + N + "\n$"},
        // A week holds every series that overlaps it, placed by the view.
        {"week_with_both",
         {"query", "week", "2025-03-19"},
         0,
         "^id=1 " + N + "\nid=2 " + N + "\n$"},
        {"week_before_both", {"query", "week", "2025-03-05"}, 0, "^$"},
        {"day_of_second_occurrence",
         {"query", "day", "2025-04-08"},
         0,
         "^id=1 " + N + "hour=8 subject=S " + N + "repeat_icon=1\n$"},
        {"day_between", {"query", "day", "2025-04-09"}, 0, "^$"},
        {"alarm_a_day_before_at_local_midnight",
         {"alarm", "list", "--from", "2025-03-01", "--to", "2025-03-31"},
         0,
         "^daemon_id=1 " + N + "local_time_flag=1 next=\"2025-03-19 00:00:00\"\n$"},
        {"delete", {"event", "delete", "2"}, 0, "^$"},
        {"alarm_gone_with_its_event",
         {"alarm", "list", "--from", "2025-03-01", "--to", "2025-03-31"},
         0,
         "^$"},
        {"delete_again", {"event", "delete", "2"}, 1, "no event 2"},
        // One event imported, the other reported by its file line, and the status says so.
        {"import_reports_the_unholdable",
         {"event", "import", file},
         1,
         "two.ics:10: not imported: RRULE"},
        {"import_series_ends_on_third_monday",
         {"event", "show", "3"},
         0,
         "last_local=\"2025-03-24 10:00:00\" " + N + "kind=2 "},
        {"text", {"text", "10032"}, 0, "."},
        {"lunar", {"lunar", "2025-07-25", "2025-01-29"}, 0, "^2025-07-25 L6-1\n2025-01-29 1-1\n$"},
        {"unknown_command", {"frobnicate"}, 2, "frobnicate"},
        {"unknown_option", {"event", "list", "--colour"}, 2, "--colour"},
        {"missing_value", {"event", "add", "--subject"}, 2, "--subject"},
        {"bad_start", {"event", "add", "--start", "2025-02-30 10:00"}, 2, "--start"},
        {"ends_before_start", Timed("2025-03-02 10:00", "2025-03-01 10:00"), 2, "ends before"},
        {"weekday_out_of_range", timed({"--repeat", "weekly:9"}), 2, "weekdays"},
        {"until_before_start", timed({"--repeat", "daily", "--until", "2025-03-01"}), 1, "until"},
        {"count_and_until", timed({"--repeat", "daily", "--count", "2", "--until", "2025-04-01"}),
         2, "not both"},
        {"colour_unknown", timed({"--colour", "5"}), 2, "--colour"},
        {"beyond_32_bit_stamps", Timed("2038-02-01 10:00", "2038-02-01 11:00"), 2, "1902..2037"},
        {"until_after_2030", timed({"--repeat", "daily", "--until", "2031-01-01"}), 2,
         "2030-12-31"},
        {"interval_overflowing", timed({"--repeat", "daily", "--interval", "2147483647"}), 2,
         "--interval"},
        {"show_missing", {"event", "show", "999"}, 1, "no event 999"},
        {"show_not_a_number", {"event", "show", "x1"}, 2, "ID"},
        {"query_bad_period", {"query", "year", "2025-03-01"}, 2, "month\\|week\\|day"},
        {"import_missing_file", {"event", "import", "/nonexistent/file.vcs"}, 1, "file\\.vcs"},
        {"config_unknown_key", {"config", "set", "colour", "1"}, 1, "colour"},
        {"text_missing", {"text", "99999"}, 1, "99999"},
        {"lunar_not_a_date", {"lunar", "2025-02-30"}, 2, "2025-02-30"},
        {"refused_commands_stored_nothing",
         {"event", "list"},
         0,
         "^id=3 " + N + "\nid=1 " + N + "\n$"},
    };
    for (const auto& [name, words, status, says] : rows) {
        SCOPED_TRACE(name);
        const CtlRun run = Ctl(words);
        EXPECT_EQ(run.status, status) << run.err;
        const std::string& text = status == 0 ? run.out : run.err;
        EXPECT_TRUE(std::regex_search(text, std::regex(says))) << text;
    }
}

}  // namespace

// calendar-ctl end to end: the program run on a temporary root adds events of every kind as the
// application would store them, lists, queries, shows alarms and deletes.
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "store_support.h"

namespace {

struct CtlRun {
    int status;
    std::string out;
    std::string err;
};

std::string Quote(const std::string& word) {
    std::string quoted = "'";
    for (char c : word) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

class CalendarCtlTest : public StoreRootTest {
protected:
    void SetUp() override {
        StoreRootTest::SetUp();
        mProgram = std::string(CAL_BINARY_DIR) + "/bin/calendar-ctl";
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
        const std::string errFile = Root() + "/ctl-stderr";
        command += " 2>" + Quote(errFile);
        CtlRun run{-1, "", ""};
        FILE* pipe = popen(command.c_str(), "r");
        if (!pipe) {
            return run;
        }
        char buffer[4096];
        size_t got;
        while ((got = fread(buffer, 1, sizeof buffer, pipe)) > 0) {
            run.out.append(buffer, got);
        }
        const int status = pclose(pipe);
        run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        std::ifstream err(errFile, std::ios::binary);
        run.err.assign(std::istreambuf_iterator<char>(err), {});
        // A normal build carries its resource file and share library: no set-up complaint.
        EXPECT_EQ(run.err.find("device set-up"), std::string::npos) << run.err;
        return run;
    }

private:
    std::string mProgram;
};

// The raw text of a member of a one-line JSON object ("" when absent).
std::string Member(const std::string& object, const std::string& key) {
    const std::string needle = "\"" + key + "\":";
    const size_t at = object.find(needle);
    if (at == std::string::npos) {
        return "";
    }
    size_t from = at + needle.size();
    size_t to = from;
    if (object[from] == '"') {
        to = object.find('"', from + 1) + 1;
    } else if (object[from] == '[') {
        to = object.find(']', from) + 1;
    } else {
        to = object.find_first_of(",}", from);
    }
    return object.substr(from, to - from);
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    size_t from = 0;
    for (size_t at; (at = text.find('\n', from)) != std::string::npos; from = at + 1) {
        lines.push_back(text.substr(from, at - from));
    }
    return lines;
}

// Every event member but the ids, which a second store numbers itself.
std::string WithoutIds(const std::string& object) {
    std::string out = object;
    for (const char* key : {"\"id\":", "\"alert_id\":"}) {
        const size_t at = out.find(key);
        if (at != std::string::npos) {
            out.erase(at, out.find_first_of(",}", at) - at);
        }
    }
    return out;
}

struct AddRow {
    const char* name;
    std::vector<std::string> args;
    std::vector<std::pair<const char*, const char*>> want;  // JSON members of `event show`
};

// Events of every kind are stored as the application stores them (series end, first occurrence,
// 2030 cut, alarm lead), and each one exported and imported into a fresh root comes back equal.
TEST_F(CalendarCtlTest, AddsEventsAsTheApplicationStoresThemAndExportsThemWhole) {
    const auto timed = [](const char* start, const char* end, std::vector<std::string> more) {
        std::vector<std::string> args = {"--subject", "S", "--start", start, "--end", end};
        args.insert(args.end(), more.begin(), more.end());
        return args;
    };
    // clang-format off
    const std::vector<AddRow> rows = {
        {"single_texts_choices", timed("2025-03-10 09:00", "2025-03-10 10:00",
             {"--subject", "Grüße", "--location", "Café", "--notes", "one\ntwo", "--colour",
              "11550", "--class", "11562", "--alarm", "11531"}),
         {{"kind", "0"}, {"a", "0"}, {"recurring", "0"}, {"subject", "\"Grüße\""},
          {"notes", "\"one\\ntwo\""}, {"last_local", "\"2025-03-10 10:00:00\""},
          {"colour", "11550"}, {"class", "11562"}, {"lead_amount", "0"}}},
        {"daily_count", timed("2025-03-10 09:00", "2025-03-10 10:00",
             {"--repeat", "daily", "--interval", "2", "--count", "5"}),
         {{"kind", "1"}, {"c", "5"}, {"last_local", "\"2025-03-18 09:00:00\""}}},
        {"workdays_until", timed("2025-03-10 09:00", "2025-03-10 10:00",
             {"--repeat", "workdays", "--until", "2025-04-30"}),
         {{"b", "1"}, {"c", "0"}, {"last_local", "\"2025-04-30 23:59:59\""}}},
        {"weekly_moves_start", timed("2025-03-09 18:00", "2025-03-09 19:00",
             {"--repeat", "weekly:2,4", "--count", "4", "--alarm", "11537"}),
         {{"kind", "2"}, {"b", "10"}, {"start_local", "\"2025-03-10 18:00:00\""},
          {"end_local", "\"2025-03-10 19:00:00\""}, {"last_local", "\"2025-03-19 18:00:00\""},
          {"lead_amount", "1"}, {"lead_unit", "2"}}},
        {"monthly_31_clamped", timed("2025-04-10 08:00", "2025-04-10 09:00",
             {"--repeat", "monthly:31", "--count", "2", "--colour", "11545"}),
         {{"start_local", "\"2025-04-30 08:00:00\""}, {"last_local", "\"2025-05-30 08:00:00\""}}},
        {"monthly_nth_until", timed("2025-03-01 08:00", "2025-03-01 08:30",
             {"--repeat", "monthly:2/3", "--until", "2025-12-31", "--class", "11563"}),
         {{"b", "515"}, {"c", "-1"}, {"start_local", "\"2025-03-11 08:00:00\""},
          {"last_local", "\"2025-12-31 23:59:59\""}}},
        {"yearly_feb_29", timed("2024-01-10 08:00", "2024-01-10 09:00",
             {"--repeat", "yearly:2/29", "--count", "2"}),
         {{"a", "2"}, {"start_local", "\"2024-02-29 08:00:00\""},
          {"last_local", "\"2025-02-28 08:00:00\""}}},
        {"yearly_nth_no_end", timed("2025-01-01 08:00", "2025-01-01 09:00",
             {"--repeat", "yearly:5/2/1"}),
         {{"c", "1048575"}, {"start_local", "\"2025-05-11 08:00:00\""},
          {"last_local", "\"2030-12-31 23:59:59\""}}},
        {"cut_at_2030", timed("2030-12-25 08:00", "2030-12-25 09:00",
             {"--repeat", "daily", "--count", "10"}),
         {{"c", "7"}, {"last_local", "\"2030-12-31 08:00:00\""}}},
        // Counts far beyond 2030 are cut to what fits, without walking the series for centuries.
        {"weekly_huge_interval", timed("2025-03-01 10:00", "2025-03-01 11:00",
             {"--repeat", "weekly:1,7", "--interval", "999", "--count", "999"}),
         {{"c", "1"}, {"last_local", "\"2025-03-01 10:00:00\""}}},
        {"multi_day_yearly", timed("2025-03-20 22:00", "2025-03-23 00:00",
             {"--repeat", "yearly:3/20", "--count", "3"}),
         {{"last_local", "\"2027-03-20 22:00:00\""}}},
        {"all_day_alarm", {"--subject", "Holiday", "--all-day", "--start", "2025-03-20", "--end",
                           "2025-03-21", "--alarm", "11540"},
         {{"all_day", "1"}, {"start_local", "\"2025-03-20 00:00:00\""},
          {"end_local", "\"2025-03-21 23:59:59\""}, {"last_local", "\"2025-03-21 23:59:59\""},
          {"alarm", "1"}, {"lead_amount", "1"}, {"lead_unit", "3"}}},
        {"all_day_yearly", {"--subject", "Bday", "--all-day", "--start", "2025-06-15", "--repeat",
                            "yearly:6/15", "--alarm", "11540"},
         {{"kind", "8"}, {"c", "1048575"}}},
    };
    // clang-format on
    const std::string second = Root() + "/second";
    for (size_t i = 0; i < rows.size(); ++i) {
        const AddRow& row = rows[i];
        SCOPED_TRACE(row.name);
        std::vector<std::string> words = {"event", "add"};
        words.insert(words.end(), row.args.begin(), row.args.end());
        const CtlRun added = Ctl(words);
        ASSERT_EQ(added.status, 0);
        const std::string id = std::to_string(i + 1);
        EXPECT_EQ(added.out, id + "\n");
        const CtlRun shown = Ctl({"event", "show", id, "--json"});
        ASSERT_EQ(shown.status, 0);
        for (const auto& [key, value] : row.want) {
            EXPECT_EQ(Member(shown.out, key), value) << key;
        }
        const std::string file = Root() + "/" + id + ".vcs";
        ASSERT_EQ(Ctl({"event", "export", id, file}).status, 0);
        const CtlRun imported = Ctl({"event", "import", file}, second);
        ASSERT_EQ(imported.status, 0) << imported.err;
        const std::string newId = imported.out.substr(0, imported.out.find('\n'));
        EXPECT_EQ(WithoutIds(Ctl({"event", "show", newId, "--json"}, second).out),
                  WithoutIds(shown.out));
    }
    EXPECT_EQ(Lines(Ctl({"event", "list", "--json"}).out).size(), rows.size());
    EXPECT_EQ(
        Lines(Ctl({"event", "list", "--from", "2030-12-01", "--to", "2030-12-31"}).out).size(), 3u)
        << "the 2030 series and the two without end";
    // The alarms registered on import ring exactly as the originals.
    const std::vector<std::string> window = {"alarm",      "list", "--json",    "--from",
                                             "2025-01-01", "--to", "2030-12-31"};
    const std::vector<std::string> alarms = Lines(Ctl(window).out);
    const std::vector<std::string> imported = Lines(Ctl(window, second).out);
    ASSERT_EQ(alarms.size(), 4u);
    ASSERT_EQ(imported.size(), alarms.size());
    for (size_t i = 0; i < alarms.size(); ++i) {
        for (const char* key : {"time", "rule", "local_time_flag", "next"}) {
            EXPECT_EQ(Member(imported[i], key), Member(alarms[i], key)) << key;
        }
    }
}

TEST_F(CalendarCtlTest, QueriesAlarmsAndDeletion) {
    ASSERT_EQ(Ctl({"event", "add", "--subject", "Rent", "--start", "2025-03-11 08:00", "--end",
                   "2025-03-11 08:30", "--repeat", "monthly:2/3", "--count", "3"})
                  .status,
              0);
    ASSERT_EQ(Ctl({"event", "add", "--subject", "Holiday", "--all-day", "--start", "2025-03-20",
                   "--end", "2025-03-21", "--alarm", "11540"})
                  .status,
              0);

    const std::vector<std::string> month =
        Lines(Ctl({"query", "month", "2025-03-15", "--json"}).out);
    ASSERT_EQ(month.size(), 2u);
    EXPECT_EQ(Member(month[0], "id"), "1");
    EXPECT_EQ(Member(month[0], "limit"), "\"2025-05-13\"");
    EXPECT_EQ(Member(month[1], "last"), "\"2025-03-21\"");
    EXPECT_EQ(Member(month[1], "end_time"), "\"23:59:59\"");
    // A week holds every series that overlaps it, placed by the view.
    EXPECT_EQ(Lines(Ctl({"query", "week", "2025-03-19", "--json"}).out).size(), 2u);
    EXPECT_TRUE(Ctl({"query", "week", "2025-03-05", "--json"}).out.empty());

    const std::vector<std::string> day = Lines(Ctl({"query", "day", "2025-04-08", "--json"}).out);
    ASSERT_EQ(day.size(), 1u);
    EXPECT_EQ(Member(day[0], "subject"), "\"Rent\"");
    EXPECT_EQ(Member(day[0], "hour"), "8");
    EXPECT_EQ(Member(day[0], "repeat_icon"), "1");
    EXPECT_TRUE(Ctl({"query", "day", "2025-04-09", "--json"}).out.empty());

    const std::vector<std::string> alarms =
        Lines(Ctl({"alarm", "list", "--json", "--from", "2025-03-01", "--to", "2025-03-31"}).out);
    ASSERT_EQ(alarms.size(), 1u);
    EXPECT_EQ(Member(alarms[0], "local_time_flag"), "1");
    EXPECT_EQ(Member(alarms[0], "next"), "[\"2025-03-19 00:00:00\"]")
        << "a day before, at local midnight";

    EXPECT_EQ(Ctl({"event", "delete", "2"}).status, 0);
    EXPECT_TRUE(
        Ctl({"alarm", "list", "--json", "--from", "2025-03-01", "--to", "2025-03-31"}).out.empty());
    EXPECT_EQ(Ctl({"event", "delete", "2"}).status, 1);
}

TEST_F(CalendarCtlTest, ImportReportsWhatTheRecordCannotHold) {
    const std::string file = Root() + "/two.ics";
    std::ofstream(file, std::ios::binary)
        << "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VEVENT\r\nUID:a\r\n"
           "DTSTART:20250310T090000Z\r\nDTEND:20250310T100000Z\r\nSUMMARY:kept\r\n"
           "RRULE:FREQ=WEEKLY;BYDAY=MO;COUNT=3\r\nEND:VEVENT\r\n"
           "BEGIN:VEVENT\r\nUID:b\r\nDTSTART:20250310T090000Z\r\nDTEND:20250310T100000Z\r\n"
           "SUMMARY:hourly\r\nRRULE:FREQ=HOURLY\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
    const CtlRun imported = Ctl({"event", "import", file});
    EXPECT_EQ(imported.status, 1) << "one event could not be held";
    EXPECT_EQ(imported.out, "1\n");
    EXPECT_NE(imported.err.find("two.ics:10: not imported: RRULE"), std::string::npos)
        << imported.err;
    const std::string shown = Ctl({"event", "show", "1", "--json"}).out;
    EXPECT_EQ(Member(shown, "kind"), "2");
    EXPECT_EQ(Member(shown, "last_local"), "\"2025-03-24 10:00:00\"") << "the third Monday";
}

TEST_F(CalendarCtlTest, SettingsTextsAndLunarDates) {
    const std::vector<std::pair<const char*, const char*>> settings = {
        {"default_view", "11416"},
        {"first_weekday", "11425"},
        {"day_start", "0"},
        {"keep_time", "11452"},
        {"lunar", "1"},
        {"time_format", "24"},
        {"date_format", "2"},
    };
    std::string want;
    for (const auto& [key, value] : settings) {
        EXPECT_EQ(Ctl({"config", "set", key, value}).status, 0) << key;
        EXPECT_EQ(Ctl({"config", "get", key}).out, std::string(key) + " " + value + "\n");
        want += std::string(key) + " " + value + "\n";
    }
    EXPECT_EQ(Ctl({"config", "get"}).out, want);
    EXPECT_FALSE(Ctl({"text", "10032"}).out.empty());
    EXPECT_EQ(Ctl({"lunar", "2025-07-25", "2025-01-29"}).out, "2025-07-25 L6-1\n2025-01-29 1-1\n");
}

struct RefusalRow {
    const char* name;
    std::vector<std::string> words;
    int status;
    const char* says;  // the message names what is wrong
};

TEST_F(CalendarCtlTest, BadInputIsRefusedWithItsStatus) {
    const std::vector<std::string> timed = {
        "event", "add", "--start", "2025-03-02 10:00", "--end", "2025-03-02 11:00"};
    auto with = [&](std::vector<std::string> more) {
        more.insert(more.begin(), timed.begin(), timed.end());
        return more;
    };
    const std::vector<RefusalRow> rows = {
        {"unknown_command", {"frobnicate"}, 2, "frobnicate"},
        {"unknown_option", {"event", "list", "--colour"}, 2, "--colour"},
        {"missing_value", {"event", "add", "--subject"}, 2, "--subject"},
        {"bad_start", {"event", "add", "--start", "2025-02-30 10:00"}, 2, "--start"},
        {"ends_before_start",
         {"event", "add", "--start", "2025-03-02 10:00", "--end", "2025-03-01 10:00"},
         2,
         "ends before"},
        {"weekday_out_of_range", with({"--repeat", "weekly:9"}), 2, "weekdays"},
        {"until_before_start", with({"--repeat", "daily", "--until", "2025-03-01"}), 1, "until"},
        {"count_and_until", with({"--repeat", "daily", "--count", "2", "--until", "2025-04-01"}), 2,
         "not both"},
        {"colour_unknown", with({"--colour", "5"}), 2, "--colour"},
        {"beyond_32_bit_stamps",
         {"event", "add", "--start", "2038-02-01 10:00", "--end", "2038-02-01 11:00"},
         2,
         "1902..2037"},
        {"until_after_2030", with({"--repeat", "daily", "--until", "2031-01-01"}), 2, "2030-12-31"},
        {"interval_overflowing", with({"--repeat", "daily", "--interval", "2147483647"}), 2,
         "--interval"},
        {"show_missing", {"event", "show", "999"}, 1, "no event 999"},
        {"show_not_a_number", {"event", "show", "x1"}, 2, "ID"},
        {"query_bad_period", {"query", "year", "2025-03-01"}, 2, "month|week|day"},
        {"import_missing_file", {"event", "import", "/nonexistent/file.vcs"}, 1, "file.vcs"},
        {"config_unknown_key", {"config", "set", "colour", "1"}, 1, "colour"},
        {"text_missing", {"text", "99999"}, 1, "99999"},
        {"lunar_not_a_date", {"lunar", "2025-02-30"}, 2, "2025-02-30"},
    };
    for (const RefusalRow& row : rows) {
        SCOPED_TRACE(row.name);
        const CtlRun run = Ctl(row.words);
        EXPECT_EQ(run.status, row.status);
        EXPECT_NE(run.err.find(row.says), std::string::npos) << run.err;
    }
    EXPECT_TRUE(Ctl({"event", "list"}).out.empty()) << "nothing was stored by a refused command";
}

}  // namespace

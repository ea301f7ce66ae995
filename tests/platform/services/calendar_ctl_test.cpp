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
    CtlRun Ctl(const std::vector<std::string>& words) {
        std::string command = "TZ=Europe/Berlin " + Quote(mProgram) + " --root " + Quote(Root());
        for (const std::string& word : words) {
            command += " " + Quote(word);
        }
        command += " 2>/dev/null";
        CtlRun run{-1, ""};
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

struct AddRow {
    const char* name;
    std::vector<std::string> args;
    std::vector<std::pair<const char*, const char*>> want;  // JSON members of `event show`
};

TEST_F(CalendarCtlTest, AddsEventsAsTheApplicationStoresThem) {
    const auto timed = [](const char* start, const char* end) {
        return std::vector<std::string>{"--subject", "S", "--start", start, "--end", end};
    };
    auto with = [](std::vector<std::string> base, std::vector<std::string> more) {
        base.insert(base.end(), more.begin(), more.end());
        return base;
    };
    const std::vector<AddRow> rows = {
        {"single",
         timed("2025-03-10 09:00", "2025-03-10 10:00"),
         {{"kind", "0"}, {"recurring", "0"}, {"last_local", "\"2025-03-10 10:00:00\""}}},
        {"daily_count",
         with(timed("2025-03-10 09:00", "2025-03-10 10:00"), {"--repeat", "daily", "--count", "5"}),
         {{"kind", "1"}, {"c", "5"}, {"last_local", "\"2025-03-14 09:00:00\""}}},
        {"workdays",
         with(timed("2025-03-10 09:00", "2025-03-10 10:00"),
              {"--repeat", "workdays", "--count", "6"}),
         {{"b", "1"}, {"last_local", "\"2025-03-17 09:00:00\""}}},
        {"weekly_moves_start",
         with(timed("2025-03-09 18:00", "2025-03-09 19:00"),
              {"--repeat", "weekly:2,4", "--count", "4"}),
         {{"kind", "2"},
          {"b", "10"},
          {"start_local", "\"2025-03-10 18:00:00\""},
          {"end_local", "\"2025-03-10 19:00:00\""},
          {"last_local", "\"2025-03-19 18:00:00\""}}},
        {"monthly_31_clamped",
         with(timed("2025-04-10 08:00", "2025-04-10 09:00"),
              {"--repeat", "monthly:31", "--count", "2"}),
         {{"start_local", "\"2025-04-30 08:00:00\""}, {"last_local", "\"2025-05-30 08:00:00\""}}},
        {"monthly_nth_until",
         with(timed("2025-03-01 08:00", "2025-03-01 08:30"),
              {"--repeat", "monthly:2/3", "--until", "2025-12-31"}),
         {{"b", "515"},
          {"c", "-1"},
          {"start_local", "\"2025-03-11 08:00:00\""},
          {"last_local", "\"2025-12-31 23:59:59\""}}},
        {"yearly_feb_29",
         with(timed("2024-01-10 08:00", "2024-01-10 09:00"),
              {"--repeat", "yearly:2/29", "--count", "2"}),
         {{"a", "2"},
          {"start_local", "\"2024-02-29 08:00:00\""},
          {"last_local", "\"2025-02-28 08:00:00\""}}},
        {"yearly_no_end",
         with(timed("2025-01-01 08:00", "2025-01-01 09:00"), {"--repeat", "yearly:5/2/1"}),
         {{"c", "1048575"},
          {"start_local", "\"2025-05-11 08:00:00\""},
          {"last_local", "\"2030-12-31 23:59:59\""}}},
        {"cut_at_2030",
         with(timed("2030-12-25 08:00", "2030-12-25 09:00"),
              {"--repeat", "daily", "--count", "10"}),
         {{"c", "7"}, {"last_local", "\"2030-12-31 08:00:00\""}}},
        {"all_day_alarm",
         {"--subject", "Holiday", "--all-day", "--start", "2025-03-20", "--end", "2025-03-21",
          "--alarm", "11540"},
         {{"all_day", "1"},
          {"start_local", "\"2025-03-20 00:00:00\""},
          {"end_local", "\"2025-03-21 23:59:59\""},
          {"alarm", "1"},
          {"lead_amount", "1"},
          {"lead_unit", "3"}}},
    };
    int expectedId = 1;
    for (const AddRow& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<std::string> words = {"event", "add"};
        words.insert(words.end(), row.args.begin(), row.args.end());
        const CtlRun added = Ctl(words);
        ASSERT_EQ(added.status, 0);
        EXPECT_EQ(added.out, std::to_string(expectedId) + "\n");
        const CtlRun shown = Ctl({"event", "show", std::to_string(expectedId), "--json"});
        ASSERT_EQ(shown.status, 0);
        for (const auto& [key, value] : row.want) {
            EXPECT_EQ(Member(shown.out, key), value) << key;
        }
        ++expectedId;
    }
    EXPECT_EQ(Lines(Ctl({"event", "list", "--json"}).out).size(), rows.size());
    EXPECT_EQ(
        Lines(Ctl({"event", "list", "--from", "2030-12-01", "--to", "2030-12-31"}).out).size(), 2u)
        << "the 2030 series and the one without end";
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

TEST_F(CalendarCtlTest, ImportStoresWhatTheRecordHoldsAndExportsItBack) {
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
    const std::string shown = Ctl({"event", "show", "1", "--json"}).out;
    EXPECT_EQ(Member(shown, "subject"), "\"kept\"");
    EXPECT_EQ(Member(shown, "kind"), "2");
    const std::string exported = Root() + "/one.vcs";
    ASSERT_EQ(Ctl({"event", "export", "1", exported}).status, 0);
    std::ifstream in(exported, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(in)), {});
    EXPECT_NE(text.find("SUMMARY:kept"), std::string::npos);
    EXPECT_NE(text.find("RRULE:W1 MO"), std::string::npos);
}

struct RefusalRow {
    const char* name;
    std::vector<std::string> words;
    int status;
};

TEST_F(CalendarCtlTest, BadInputIsRefusedWithItsStatus) {
    const std::vector<RefusalRow> rows = {
        {"unknown_command", {"frobnicate"}, 2},
        {"unknown_option", {"event", "list", "--colour"}, 2},
        {"missing_value", {"event", "add", "--subject"}, 2},
        {"bad_start",
         {"event", "add", "--start", "2025-02-30 10:00", "--end", "2025-03-01 10:00"},
         2},
        {"ends_before_start",
         {"event", "add", "--start", "2025-03-02 10:00", "--end", "2025-03-01 10:00"},
         2},
        {"weekday_out_of_range",
         {"event", "add", "--start", "2025-03-02 10:00", "--end", "2025-03-02 11:00", "--repeat",
          "weekly:9"},
         2},
        {"until_before_start",
         {"event", "add", "--start", "2025-03-02 10:00", "--end", "2025-03-02 11:00", "--repeat",
          "daily", "--until", "2025-03-01"},
         1},
        {"colour_unknown",
         {"event", "add", "--start", "2025-03-02 10:00", "--end", "2025-03-02 11:00", "--colour",
          "5"},
         2},
        {"show_missing", {"event", "show", "999"}, 1},
        {"show_not_a_number", {"event", "show", "x1"}, 2},
        {"query_bad_period", {"query", "year", "2025-03-01"}, 2},
        {"import_missing_file", {"event", "import", "/nonexistent/file.vcs"}, 1},
    };
    for (const RefusalRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Ctl(row.words).status, row.status);
    }
    EXPECT_TRUE(Ctl({"event", "list"}).out.empty()) << "nothing was stored by a refused command";
}

}  // namespace

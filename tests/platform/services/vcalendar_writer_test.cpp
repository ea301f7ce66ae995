// The vCalendar writer, checked by reading every written file back with two independent readers:
// libical's vCalendar 1.0 reader through its C API, and Python's vobject.
#include <gtest/gtest.h>
#include <libical/ical.h>
#include <libical/vcc.h>
extern "C" {
#include <libical/icalvcal.h>
}

#include <cstdio>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>

#include "APVCalendarWriter.h"
#include "store_support.h"
#include "vcalendar_support.h"

namespace {

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

std::string Unix(std::string text) {
    for (size_t at; (at = text.find("\r\n")) != std::string::npos;) {
        text.replace(at, 2, "\n");
    }
    return text;
}

std::string Stored(const char* field) {
    return std::string(field, strnlen(field, kAPEventTextSize));
}

// What libical's vCalendar reader finds in the file's one event.
struct LibicalView {
    bool ok = false;
    std::string summary, location, description, categories, dtstart, dtend, rule, alarm;
};

LibicalView ReadWithLibical(const std::string& path) {
    LibicalView view;
    VObject* object = Parse_MIME_FromFileName(path.c_str());
    if (object == nullptr) {
        return view;
    }
    icalcomponent* calendar = icalvcal_convert(object);
    cleanVObject(object);
    if (calendar == nullptr) {
        return view;
    }
    icalcomponent* event = icalcomponent_get_first_component(calendar, ICAL_VEVENT_COMPONENT);
    if (event != nullptr) {
        view.ok = true;
        auto text = [](const char* s) { return std::string(s != nullptr ? s : ""); };
        view.summary = text(icalcomponent_get_summary(event));
        view.location = text(icalcomponent_get_location(event));
        view.description = text(icalcomponent_get_description(event));
        view.dtstart = icaltime_as_ical_string(icalcomponent_get_dtstart(event));
        view.dtend = icaltime_as_ical_string(icalcomponent_get_dtend(event));
        if (icalproperty* c = icalcomponent_get_first_property(event, ICAL_CATEGORIES_PROPERTY)) {
            view.categories = text(icalproperty_get_categories(c));
        }
        if (icalproperty* r = icalcomponent_get_first_property(event, ICAL_RRULE_PROPERTY)) {
            icalrecurrencetype rule = icalproperty_get_rrule(r);
            view.rule = icalrecurrencetype_as_string(&rule);
        }
        if (icalcomponent* a = icalcomponent_get_first_component(event, ICAL_VALARM_COMPONENT)) {
            if (icalproperty* t = icalcomponent_get_first_property(a, ICAL_TRIGGER_PROPERTY)) {
                view.alarm = icaltime_as_ical_string(icalproperty_get_trigger(t).time);
            }
        }
    }
    icalcomponent_free(calendar);
    return view;
}

const char* kVobjectScript = R"(
import sys
import vobject
for path in sys.argv[1:]:
    event = vobject.readOne(open(path, encoding='utf-8').read()).vevent
    print('FILE', path)
    for name in ['summary', 'location', 'description', 'categories', 'dtstart', 'rrule', 'dalarm']:
        items = event.contents.get(name)
        value = items[0].value if items else ''
        if isinstance(value, list):
            value = value[0]
        if hasattr(value, 'isoformat'):
            value = value.isoformat()
        print(name, str(value).replace('\r\n', '\n').encode('utf-8').hex() or '-')
)";

std::string Python() {
    // Debian's interpreter carries python3-vobject; another python3 first on PATH may not.
    for (const char* candidate : {"/usr/bin/python3", "python3"}) {
        std::string probe = std::string(candidate) + " -c 'import vobject' 2>/dev/null";
        if (std::system(probe.c_str()) == 0) {
            return candidate;
        }
    }
    return "";
}

std::string FromHex(const std::string& hex) {
    std::string out;
    for (size_t i = 0; i + 1 < hex.size(); i += 2) {
        out += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    }
    return out;
}

// Field values per file, as vobject reads them.
std::map<std::string, std::map<std::string, std::string>> ReadWithVobject(
    const std::string& python, const std::string& scriptPath,
    const std::vector<std::string>& files) {
    std::string command = python + " " + scriptPath;
    for (const std::string& f : files) {
        command += " '" + f + "'";
    }
    std::map<std::string, std::map<std::string, std::string>> result;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return result;
    }
    char line[8192];
    std::string current;
    while (std::fgets(line, sizeof line, pipe) != nullptr) {
        std::istringstream words(line);
        std::string key, value;
        words >> key >> value;
        if (key == "FILE") {
            current = value;
        } else {
            result[current][key] = value == "-" ? "" : FromHex(value);
        }
    }
    pclose(pipe);
    return result;
}

class VCalendarWriterTest : public StoreRootTest {};

TEST_F(VCalendarWriterTest, FilesFollowTheExportRulesAndLibicalReadsEveryFieldBack) {
    for (ExportCase& c : ExportCases()) {
        SCOPED_TRACE(c.name);
        std::string path = "/tmp/" + c.name + ".vcs";
        ASSERT_EQ(MakeQnvCalendarWithLead(path, &c.record, c.lead), 1);
        std::string text = ReadFile(HostPath(path));
        EXPECT_EQ(text.rfind("BEGIN:VCALENDAR\r\nVERSION:1.0\r\n", 0), 0u);
        EXPECT_NE(text.find("\r\nUID:"), std::string::npos);
        EXPECT_EQ(std::regex_search(text, std::regex("[^\r]\n")), false) << "CRLF line ends only";
        EXPECT_EQ(text.find("\r\n "), std::string::npos) << "no folding";
        EXPECT_EQ(std::regex_search(text, std::regex("=[0-9A-F][a-f]|=[a-f]")), false)
            << "uppercase hex";
        EXPECT_EQ(text.find("\r\nRRULE:" + c.rule + "\r\n") != std::string::npos, !c.rule.empty());
        if (!c.alarm.empty()) {
            EXPECT_NE(text.find("\r\nDALARM:" + c.alarm + ";"), std::string::npos);
            EXPECT_NE(text.find("\r\nAALARM:" + c.alarm + ";"), std::string::npos);
        }
        bool plain = Stored(c.record.subject).find_first_of("\n;,\\\x80\x81\xC3\xE4\xE2\xE9") ==
                     std::string::npos;
        EXPECT_EQ(
            text.find("SUMMARY;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:") != std::string::npos,
            !plain);

        LibicalView view = ReadWithLibical(HostPath(path));
        ASSERT_TRUE(view.ok);
        EXPECT_EQ(view.summary, Stored(c.record.subject));
        EXPECT_EQ(view.location, Stored(c.record.location));
        EXPECT_EQ(Unix(view.description), Stored(c.record.notes));
        EXPECT_EQ(view.categories, c.category);
        EXPECT_EQ(view.dtstart, c.dtstart);
        EXPECT_EQ(view.dtend, c.dtend);
        EXPECT_EQ(view.rule, c.icalRule);
        EXPECT_EQ(view.alarm, c.alarm);
    }
}

TEST_F(VCalendarWriterTest, VobjectReadsEveryFieldBack) {
    std::string python = Python();
    if (python.empty()) {
        GTEST_SKIP() << "python3 with the vobject module (Debian python3-vobject) is not installed";
    }
    std::vector<std::string> files;
    std::vector<ExportCase> cases = ExportCases();
    for (ExportCase& c : cases) {
        std::string path = "/tmp/" + c.name + ".vcs";
        ASSERT_EQ(MakeQnvCalendarWithLead(path, &c.record, c.lead), 1);
        files.push_back(HostPath(path));
    }
    std::string script = HostPath("/tmp/read_vcs.py");
    std::ofstream(script) << kVobjectScript;
    auto read = ReadWithVobject(python, script, files);
    ASSERT_EQ(read.size(), cases.size()) << "vobject read every file";
    for (size_t i = 0; i < cases.size(); ++i) {
        const ExportCase& c = cases[i];
        SCOPED_TRACE(c.name);
        auto& fields = read[files[i]];
        EXPECT_EQ(fields["summary"], Stored(c.record.subject));
        EXPECT_EQ(fields["location"], Stored(c.record.location));
        EXPECT_EQ(fields["description"], Stored(c.record.notes));
        EXPECT_EQ(fields["categories"], c.category);
        EXPECT_EQ(fields["dtstart"], c.dtstartIso);
        EXPECT_EQ(fields["rrule"], c.rule);
        EXPECT_EQ(fields["dalarm"].substr(0, c.alarm.size()), c.alarm);
    }
}

TEST_F(VCalendarWriterTest, ImpossibleRecordsStillGiveAReadableFile) {
    struct Row {
        const char* name;
        int kind, a, b;
    };
    const Row rows[] = {
        {"unknown_kind_3", 3, 1, 0},
        {"weekly_empty_mask", 2, 1, 0},
        {"monthly_weekday_9", 4, 1, 0x209},
        {"yearly_month_13", 8, 13, 45},
        {"interval_0", 1, 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        _EventRecInfo record = TimedEvent("odd", UtcStamp(2026, 1, 1, 8), UtcStamp(2026, 1, 1, 9));
        MakeRepeating(record, row.kind, row.a, row.b, UtcStamp(2026, 6, 1));
        std::memset(record.notes, 'n', sizeof record.notes);  // no NUL anywhere
        std::string path = std::string("/tmp/") + row.name + ".vcs";
        ASSERT_EQ(MakeQnvCalendar(path, &record, 0), 1);
        LibicalView view = ReadWithLibical(HostPath(path));
        ASSERT_TRUE(view.ok);
        EXPECT_EQ(view.description, std::string(600, 'n')) << "notes cut at 600 bytes";
        EXPECT_TRUE(view.rule.empty() || view.rule.find("INTERVAL=0") == std::string::npos)
            << view.rule;
    }
    EXPECT_EQ(MakeQnvCalendar(std::string("/tmp/none.vcs"), nullptr, 0), 0);
}

}  // namespace

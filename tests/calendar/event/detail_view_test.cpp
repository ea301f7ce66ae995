// The detail view against a real store and a headless screen: the lines of every kind of event,
// scrolling, an event that is gone, the export file's name and contents, the share library's
// states, and going back to the day. The menu and its questions are walked by the scenarios.
#include <sys/stat.h>

#include <fstream>
#include <map>
#include <memory>
#include <tuple>

#include "APConfig.h"
#include "APVCalendarImport.h"
#include "PLDeviceRoot.h"
#include "PLTimeStamp.h"
#include "VtMenu.h"
#include "VtScrollContainer.h"
#include "day/VtCalendarDayView.h"
#include "event/VtCalendarDetailText.h"
#include "event/VtCalendarDetailView.h"
#include "event/VtCalendarExport.h"
#include "event/VtCalendarShareLibrary.h"
#include "event_support.h"
#include "recur/_RecurInfo.h"

namespace {

// The back button of the bottom bar, below the 45-pixel status area. (The menu, the questions and
// the share sheet are walked by the scenarios from the day view.)
constexpr int kBarY = 45 + 239 + 18;
constexpr int kBackX = 218;
constexpr uint8_t kKeyDown = 19, kKeyPageDown = 31, kKeyLeft = 28;
const PLTime kEndOfDay(23, 59, 59);

std::string Text(PLPane* root, uint32_t id) {
    PLPane* pane = root->FindPane(id);
    return pane != nullptr ? pane->GetString().str() : "<no pane " + std::to_string(id) + ">";
}

class DetailViewTest : public EventTest {
protected:
    void SetUp() override {
        EventTest::SetUp();
        VtCalendarShareLibrary::SetLibraryPath("/usr/lib/libVtShare_shareui.so");
    }
    void TearDown() override {
        EventTest::TearDown();
        VtCalendarShareLibrary::Unload();
    }
    // The view on the screen, heard by `heard`, as the day view shows it.
    VtCalendarDetailView* Show(int id) {
        VtCalendarDetailView* view = VtCalendarDetailView::Make(kDetailViewID, id);
        view->AddListener(&heard);
        Root().AddSubPane(view, false);
        return view;
    }
    void Play() {
        Loop().Run();
        Loop().Reset();
        EXPECT_TRUE(events.Done());
    }
    static bool HostFileExists(const std::string& devicePath) {
        struct stat info {};
        return ::stat(PLDeviceRoot::Resolve(devicePath).c_str(), &info) == 0;
    }
    static void Touch(const std::string& devicePath) {
        std::ofstream(PLDeviceRoot::Resolve(devicePath)) << "earlier export";
    }

    HeardMessages heard;
};

using Lines = std::map<uint32_t, std::string>;

TEST_F(DetailViewTest, LinesOfEveryKindOfEvent) {
    const std::string longNotes =
        "Bring the printed agenda, the budget sheets for the first quarter and the signed "
        "contracts. We will go through every open point one by one.\nSecond paragraph.";
    const std::string overlong(700, 'x');
    const EventFields allDay{.start = PLDateUTC2TimeStamp(PLDate(2026, 11, 24), nullptr),
                             .end = PLDateUTC2TimeStamp(PLDate(2026, 11, 25), &kEndOfDay),
                             .allDay = true};
    const EventFields multiDay{.start = Stamp(2026, 11, 23, 22), .end = Stamp(2026, 11, 25, 7, 30)};
    const EventFields weekly{.kind = 2,
                             .a = 2,
                             .b = 0b0001010,
                             .c = -1,
                             .last = Stamp(2030, 12, 31, 23, 59, 59),
                             .leadAmount = 15,
                             .leadUnit = 1};
    const EventFields monthly{
        .kind = 4, .a = 1, .b = 2 * 256 + 3, .c = 10, .leadAmount = 6, .leadUnit = 2};
    const EventFields impossible{.kind = 3, .c = 45, .colour = 0, .classChoice = 99};
    const EventFields chinese{.subject = "项目评审会议",
                              .location = "北京会议室",
                              .notes = longNotes,
                              .colour = 11553,
                              .classChoice = 11563};
    const EventFields tooLong{
        .subject = overlong, .location = "\xff\xfe bad bytes", .notes = overlong};

    // Name, event, the lines looked at, a screenshot name or "".
    const std::tuple<const char*, EventFields, Lines, const char*> rows[] = {
        {"one_off",
         EventFields{.location = "Room 4"},
         {{kDetailSubjectText, "Team meeting"},
          {kDetailLocationText, "Room 4"},
          {kDetailStartText, "2026-11-23\n10:00 AM"},
          {kDetailEndText, "2026-11-23\n11:00 AM"},
          {kDetailAllDayText, "No"},
          {kDetailRepeatText, "Does not repeat"},
          {kDetailAlarmText, "None"},
          {kDetailColourText, "Red"},
          {kDetailClassText, "Business"},
          {kDetailNotesText, ""}},
         "detail-one-off"},
        {"all_day_shows_dates_only",
         allDay,
         {{kDetailStartText, "2026-11-24"},
          {kDetailEndText, "2026-11-25"},
          {kDetailAllDayText, "Yes"}},
         "detail-all-day"},
        {"multi_day",
         multiDay,
         {{kDetailStartText, "2026-11-23\n10:00 PM"}, {kDetailEndText, "2026-11-25  7:30 AM"}},
         ""},
        {"weekly_with_reminder",
         weekly,
         {{kDetailRepeatText, "Every 2 weeks on Mo, We, until 2030-12-31"},
          {kDetailAlarmText, "15 minutes before"}},
         "detail-repeating"},
        {"monthly_hours_lead",
         monthly,
         {{kDetailRepeatText, "Monthly on the Second Tuesday, 10 times"},
          {kDetailAlarmText, "6 hours before"}},
         ""},
        {"lead_the_menu_lacks_reads_5_minutes",
         {.leadAmount = 3, .leadUnit = 2},
         {{kDetailAlarmText, "5 minutes before"}},
         ""},
        {"day_lead", {.leadAmount = 1, .leadUnit = 3}, {{kDetailAlarmText, "1 day before"}}, ""},
        {"impossible_colour_class_kind",
         impossible,
         {{kDetailColourText, "Amber"},
          {kDetailClassText, "Personal"},
          {kDetailRepeatText, "Does not repeat"}},
         ""},
        {"empty_subject", {.subject = ""}, {{kDetailSubjectText, "(No subject)"}}, ""},
        {"chinese_and_long_notes",
         chinese,
         {{kDetailSubjectText, "项目评审会议"},
          {kDetailLocationText, "北京会议室"},
          {kDetailNotesText, longNotes},
          {kDetailColourText, "Dark green"},
          {kDetailClassText, "Other"}},
         "detail-long-notes"},
        {"overlong_texts_without_terminator",
         tooLong,
         {{kDetailSubjectText, overlong.substr(0, 600)},
          {kDetailNotesText, overlong.substr(0, 600)},
          {kDetailLocationText, "\xff\xfe bad bytes"}},
         "detail-overlong"},
    };
    for (const auto& [name, fields, lines, shot] : rows) {
        SCOPED_TRACE(name);
        const int id = AddEvent(fields);
        ASSERT_GT(id, 0);
        VtCalendarDetailView* view = Show(id);
        EXPECT_TRUE(view->HasEvent());
        for (const auto& [pane, text] : lines) {
            EXPECT_EQ(Text(view, pane), text) << "pane " << pane;
        }
        if (*shot != '\0') {
            ScriptedEvents::SaveShot(shot);
        }
        delete view;
    }
}

// An alert id whose record is gone reads as no alarm; nothing is written back.
TEST_F(DetailViewTest, AlertIdWithoutRecord) {
    EventFields fields;
    fields.leadAmount = 10, fields.leadUnit = 1;
    const int id = AddEvent(fields);
    _EventRecInfo record;
    APEventRec().GetEventRec(id, &record);
    APEventAlertDB().Delete(record.alertInfoId);
    std::unique_ptr<VtCalendarDetailView> view(VtCalendarDetailView::Make(kDetailViewID, id));
    EXPECT_EQ(Text(view.get(), kDetailAlarmText), "None");
    _EventRecInfo after;
    APEventRec().GetEventRec(id, &after);
    EXPECT_EQ(std::memcmp(&record, &after, sizeof record), 0);
}

// Notes that do not fit make the lines scroll; the down key moves them, page down shows the end.
TEST_F(DetailViewTest, LongLinesScroll) {
    EventFields fields;
    fields.notes = "Agenda: " + std::string(40, 'w') + " " + std::string(300, 'n') +
                   "\n会议记录：请带上打印好的议程和预算表。";
    VtCalendarDetailView* view = Show(AddEvent(fields));
    auto* rows = static_cast<VtScrollContainer*>(view->FindPane(kDetailRows));
    ASSERT_NE(rows, nullptr);
    EXPECT_GT(rows->GetScrollRange(), 0);
    events.Key(kKeyDown).Key(kKeyDown);
    Play();
    EXPECT_EQ(rows->GetScrollPosition(), 40);
    events.Key(kKeyPageDown).Key(kKeyPageDown).Key(kKeyPageDown).Shot("detail-long-notes-end");
    Play();
    EXPECT_EQ(rows->GetScrollPosition(), rows->GetScrollRange());
}

// An id that names no event (never stored, deleted meanwhile, impossible) gets a plain notice and
// nothing to act on; the menu's actions do nothing.
TEST_F(DetailViewTest, EventThatIsGone) {
    const int deleted = AddEvent({});
    APEventRec().DeleteEventRec(deleted);
    for (int id : {deleted, 9999, 0, -5}) {
        SCOPED_TRACE(id);
        VtCalendarDetailView* view = Show(id);
        EXPECT_FALSE(view->HasEvent());
        EXPECT_EQ(Text(view, kDetailMissing), "This event no longer exists.");
        EXPECT_EQ(view->FindPane(kDetailSubjectText), nullptr);
        for (uint32_t entry : {kDetailMenuEdit, kDetailMenuShare, kDetailMenuDelete}) {
            EXPECT_FALSE(view->GetOptionsMenu()->FindItem(entry)->IsEnabled());
        }
        EXPECT_TRUE(view->ExportAndShare().IsEmpty());
        view->Edit();
        view->Delete();
        EXPECT_TRUE(heard.heard.empty());
        delete view;
    }
    // Still loaded, then deleted by someone else: the next load says so.
    const int id = AddEvent({});
    std::unique_ptr<VtCalendarDetailView> view(VtCalendarDetailView::Make(kDetailViewID, id));
    APEventRec().DeleteEventRec(id);
    view->LoadEvent(id);
    EXPECT_FALSE(view->HasEvent());
}

TEST_F(DetailViewTest, ExportFileNames) {
    std::vector<std::string> thousand = {"/tmp/17.vcs"};
    for (int n = 1; n < 1000; ++n) {
        thousand.push_back("/tmp/17_" + std::to_string(n) + ".vcs");
    }
    // Name, files already in /tmp/, the name chosen for event 17.
    const std::tuple<const char*, std::vector<std::string>, const char*> rows[] = {
        {"first_export", {}, "/tmp/17.vcs"},
        {"one_earlier", {"/tmp/17.vcs"}, "/tmp/17_1.vcs"},
        {"two_earlier", {"/tmp/17.vcs", "/tmp/17_1.vcs"}, "/tmp/17_2.vcs"},
        {"a_gap_is_filled", {"/tmp/17.vcs", "/tmp/17_2.vcs"}, "/tmp/17_1.vcs"},
        {"numbered_only_does_not_count", {"/tmp/17_1.vcs"}, "/tmp/17.vcs"},
        {"other_events_do_not_count", {"/tmp/171.vcs", "/tmp/1.vcs"}, "/tmp/17.vcs"},
        {"a_thousand_earlier", thousand, "/tmp/17_1000.vcs"},
    };
    for (const auto& [name, files, chosen] : rows) {
        SCOPED_TRACE(name);
        std::filesystem::remove_all(PLDeviceRoot::Resolve("/tmp"));
        std::filesystem::create_directories(PLDeviceRoot::Resolve("/tmp"));
        for (const std::string& file : files) {
            Touch(file);
        }
        EXPECT_EQ(VtCalendarExportPath(17).str(), chosen);
    }
    // "/tmp/" that cannot hold files (here a plain file): the probe fails otherwise than "missing",
    // the first name is taken, the write fails quietly and the event stays as it was.
    std::filesystem::remove_all(PLDeviceRoot::Resolve("/tmp"));
    Touch("/tmp");
    EXPECT_EQ(VtCalendarExportPath(17).str(), "/tmp/17.vcs");
    const int id = AddEvent({});
    _EventRecInfo before;
    APEventRec().GetEventRec(id, &before);
    VtCalendarDetailView* view = Show(id);
    EXPECT_EQ(view->ExportAndShare().str(), "/tmp/" + std::to_string(id) + ".vcs");
    _EventRecInfo after;
    APEventRec().GetEventRec(id, &after);
    EXPECT_EQ(std::memcmp(&before, &after, sizeof before), 0);
    EXPECT_FALSE(HostFileExists("/var/outbox/" + std::to_string(id) + ".vcs"));
}

// The file holds the stored event, its alarm lead read from the alert record included; how the
// writer spells each kind of event for other readers is the vCalendar tests' business.
TEST_F(DetailViewTest, ExportReadsBackTheSame) {
    EventFields timed{.location = "Room 4", .notes = "Line one\nLine two"};
    timed.leadAmount = 15, timed.leadUnit = 1;
    EventFields allDay{.subject = "会议"};
    allDay.allDay = true;
    allDay.start = PLDateUTC2TimeStamp(PLDate(2026, 12, 24), nullptr);
    allDay.end = PLDateUTC2TimeStamp(PLDate(2026, 12, 26), &kEndOfDay);
    EventFields weekly;
    weekly.kind = 2, weekly.a = 1, weekly.b = 0b0101010, weekly.c = kRecurNoEnd;
    weekly.last = Stamp(2030, 12, 31, 23, 59, 59);
    const std::tuple<const char*, EventFields> rows[] = {
        {"timed_with_alarm_and_two_lines", timed}, {"all_day_chinese", allDay}, {"weekly", weekly}};
    for (const auto& [name, fields] : rows) {
        SCOPED_TRACE(name);
        const int id = AddEvent(fields);
        _EventRecInfo record;
        ASSERT_TRUE(APEventRec().GetEventRec(id, &record));
        const std::string path = VtCalendarExportEvent(uint32_t(id), record).str();
        EXPECT_EQ(path, "/tmp/" + std::to_string(id) + ".vcs");
        std::vector<APImportedEvent> imported;
        std::string error;
        ASSERT_TRUE(APCalendarImport_File(PLDeviceRoot::Resolve(path), imported, error)) << error;
        ASSERT_EQ(imported.size(), 1u);
        ASSERT_TRUE(imported[0].record) << imported[0].error;
        const _EventRecInfo& back = *imported[0].record;
        EXPECT_EQ(std::make_tuple(std::string(back.subject), std::string(back.location),
                                  std::string(back.notes)),
                  std::make_tuple(std::string(record.subject), std::string(record.location),
                                  std::string(record.notes)));
        EXPECT_EQ(std::tie(back.startStamp, back.endStamp, back.allDay, back.recurKind,
                           back.recurValueA, back.recurValueB, back.classChoice),
                  std::tie(record.startStamp, record.endStamp, record.allDay, record.recurKind,
                           record.recurValueA, record.recurValueB, record.classChoice));
        EXPECT_EQ(std::make_pair(imported[0].hasAlarm, imported[0].leadSeconds),
                  std::make_pair(fields.leadUnit != 0, long(fields.leadAmount) * 60));
    }
}

TEST_F(DetailViewTest, ShareLibraryStates) {
    std::filesystem::copy_file(
        std::string(CAL_BINARY_DIR) + "/lib/libcalendar_test_share_incomplete.so",
        PLDeviceRoot::Resolve("/usr/lib/libincomplete.so"));
    // Name, library, Load's answer, whether a handle is kept, what sharing an empty path and a
    // missing file answer (the incomplete library's dialog would answer 99).
    const std::tuple<const char*, const char*, int, bool, int> rows[] = {
        {"missing", "/usr/lib/libmissing.so", -1, false, 0},
        {"without_destroy_view", "/usr/lib/libincomplete.so", -1, false, 0},
        {"complete", "/usr/lib/libVtShare_shareui.so", 0, true, 0},
    };
    for (const auto& [name, library, load, loaded, shared] : rows) {
        SCOPED_TRACE(name);
        VtCalendarShareLibrary::SetLibraryPath(library);
        EXPECT_EQ(VtCalendarShareLibrary::Load(), load);
        EXPECT_EQ(VtCalendarShareLibrary::IsLoaded(), loaded);
        // Looked up again on a second call with the handle held.
        EXPECT_EQ(VtCalendarShareLibrary::Load(), load);
        EXPECT_EQ(VtCalendarShareLibrary::ShareFile(""), 0);
        PLVector<PLBasicString<char>> none;
        EXPECT_EQ(VtCalendarShareLibrary::ShareFiles(none), 0);
        // No screen events: the sheet (when there is one) ends unanswered, nothing saved.
        EXPECT_EQ(VtCalendarShareLibrary::ShareFile("/tmp/missing.vcs"), shared);
        VtCalendarShareLibrary::Unload();
        EXPECT_FALSE(VtCalendarShareLibrary::IsLoaded());
    }
}

// Back: the view leaves its parent, the day view gets the keys again and, for an all-day event,
// goes to the hour at which the day starts (8 in the default settings).
TEST_F(DetailViewTest, BackReturnsToTheDay) {
    EventFields allDay;
    allDay.allDay = true;
    allDay.start = PLDateUTC2TimeStamp(PLDate(2026, 11, 24), nullptr);
    allDay.end = PLDateUTC2TimeStamp(PLDate(2026, 11, 24), &kEndOfDay);
    const std::tuple<const char*, EventFields, bool, int> rows[] = {
        {"timed_keeps_the_hour", {}, false, 14},
        {"all_day_goes_to_the_day_start", allDay, false, 8},
        {"left_key", {}, true, 14},
    };
    for (const auto& [name, fields, byKey, hour] : rows) {
        SCOPED_TRACE(name);
        heard.heard.clear();
        PLDate date(2026, 11, 24);
        PLTime time(14, 0, 0);
        auto* day = new VtCalendarDayView(11300, &date, &time, false);
        Root().AddSubPane(day, false);
        VtCalendarDetailView* view = VtCalendarDetailView::Make(kDetailViewID, AddEvent(fields));
        view->AddListener(&heard);
        day->AddSubPane(view, false);
        EXPECT_EQ(Loop().GetTarget(), view);
        if (byKey) {
            events.Key(kKeyLeft);
        } else {
            events.Tap(kBackX, kBarY);
        }
        Play();
        EXPECT_TRUE(heard.Heard(kPLMsgControl, kDetailBack));
        EXPECT_EQ(view->GetParent(), nullptr);
        EXPECT_EQ(Loop().GetTarget(), day);
        EXPECT_EQ(time.GetHour(), hour);
        delete view;
        delete day;
    }
}

}  // namespace

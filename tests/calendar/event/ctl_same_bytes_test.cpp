// An event added with calendar-ctl and the same fields saved through the form's save path are
// stored the same: every byte of the event record but its ids, the alert record's lead and time,
// and the daemon alarm's time, flags and rule text.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "APAlertDB.h"
#include "APEventAlertDB.h"
#include "APEventRec.h"
#include "PLDeviceRoot.h"
#include "calendar/calendar_support.h"
#include "event/VtCalendarEventSaver.h"
#include "event/VtCalendarSaveRules.h"

namespace {

const std::string kCtl = std::string(CAL_BINARY_DIR) + "/bin/calendar-ctl";

std::string Quote(const std::string& word) {
    std::string quoted = "'";
    for (char c : word) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

bool CtlAdd(const std::vector<std::string>& words) {
    std::string command = Quote(kCtl) + " --root " + Quote(PLDeviceRoot::GetRoot()) + " event add";
    for (const std::string& word : words) {
        command += " " + Quote(word);
    }
    return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

_EventRecInfo Stored(int id) {
    _EventRecInfo record;
    InitEventRecInfo(&record);
    EXPECT_EQ(APEventRec().GetEventRec(id, &record), 1);
    return record;
}

AP_ALERT_CONTEXT AlarmOf(const _EventRecInfo& record) {
    _EventAlertInfo alert{};
    AP_ALERT_CONTEXT alarm{};
    EXPECT_EQ(APEventAlertDB().GetEventAlertInfo(record.alertInfoId, &alert), 1);
    EXPECT_TRUE(APAlertDB_GetAlert(alert.daemonId, &alarm));
    return alarm;
}

// The form's input for what calendar-ctl was told: "--start"/"--end" as "YYYY-MM-DD[ HH:MM]".
VtCalendarFormInput FormInputOf(const std::vector<std::string>& words, uint32_t alarm) {
    VtCalendarFormInput input;
    for (size_t i = 0; i < words.size(); ++i) {
        int y = 0, mo = 0, d = 0, h = 0, mi = 0;
        const bool start = words[i] == "--start";
        if ((start || words[i] == "--end") && i + 1 < words.size()) {
            std::sscanf(words[i + 1].c_str(), "%d-%d-%d %d:%d", &y, &mo, &d, &h, &mi);
            (start ? input.startDate : input.endDate) = PLDate(y, mo, d);
            (start ? input.startTime : input.endTime) = PLTime(h, mi, 0);
        }
        input.allDay = input.allDay || words[i] == "--all-day";
    }
    input.location = "Clinic";
    input.notes = "Line";
    input.colour = 11548;
    input.classChoice = 11562;
    input.alarmChoice = alarm;
    return input;
}

TEST(CtlSameBytes, ShellAndFormStoreTheSameEvent) {
    if (!std::filesystem::exists(kCtl)) {
        GTEST_SKIP() << "calendar-ctl is not built";
    }
    std::string longChinese;
    for (int i = 0; i < 250; ++i) {
        longChinese += "\xE7\x89\x99";
    }
    const std::string hour = "2026-11-21 10:00";
    // clang-format off
    const struct {
        const char* name;
        std::vector<std::string> ctl;
        uint32_t alarm;
        const char* subject;
    } rows[] = {
        {"timed with an alarm", {"--start", hour, "--end", "2026-11-21 11:30", "--alarm", "11535"},
         11535, "Dentist"},
        {"all-day with a day's notice",
         {"--all-day", "--start", "2026-11-21", "--end", "2026-11-22", "--alarm", "11540"}, 11540, "Dentist"},
        {"weekly from a saturday", {"--start", "2026-11-21 18:00", "--end", "2026-11-21 19:00",
          "--repeat", "weekly:2,5", "--count", "4", "--alarm", "11533"}, 11533, "Dentist"},
        {"yearly second sunday of may", {"--start", "2025-01-01 08:00", "--end", "2025-01-01 09:00",
          "--repeat", "yearly:5/2/1", "--alarm", "11537"}, 11537, "Dentist"},
        {"monthly on the 31st", {"--start", "2026-11-10 08:00", "--end", "2026-11-10 09:00",
          "--repeat", "monthly:31", "--count", "3"}, kAlarmNone, "Dentist"},
        {"overlong chinese subject", {"--start", hour, "--end", "2026-11-21 11:00"}, kAlarmNone,
         longChinese.c_str()},
    };
    // clang-format on
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const ScratchRoot root;
        std::vector<std::string> words = {"--subject", row.subject, "--location", "Clinic",
                                          "--notes",   "Line",      "--colour",   "11548",
                                          "--class",   "11562"};
        words.insert(words.end(), row.ctl.begin(), row.ctl.end());
        ASSERT_TRUE(CtlAdd(words));
        const _EventRecInfo shell = Stored(1);

        VtCalendarEventSaver saver;
        // The rule as the editor hands it over: the values the shell computed for it.
        saver.SetRecurrence(shell.recurValueA, shell.recurValueB, shell.lastStamp,
                            shell.recurValueC, shell.recurKind);
        VtCalendarFormInput input = FormInputOf(row.ctl, row.alarm);
        input.subject = row.subject;
        ASSERT_EQ(saver.Save(input), VtCalendarSaveResult::Saved);
        _EventRecInfo form = Stored(saver.GetRecord().id);

        // Ids are the store's; everything else must match byte for byte.
        form.id = shell.id;
        form.alertInfoId = shell.alertInfoId;
        EXPECT_EQ(std::memcmp(&form, &shell, sizeof form), 0)
            << "start " << form.startStamp << " / " << shell.startStamp << ", last "
            << form.lastStamp << " / " << shell.lastStamp;
        if (row.alarm == kAlarmNone) {
            continue;
        }
        const AP_ALERT_CONTEXT a = AlarmOf(shell);
        const AP_ALERT_CONTEXT b = AlarmOf(Stored(saver.GetRecord().id));
        EXPECT_EQ(a.alertTime, b.alertTime);
        EXPECT_STREQ(a.rule, b.rule);
        EXPECT_STREQ(a.owner, b.owner);
        EXPECT_EQ(a.localTimeFlag, b.localTimeFlag);
        EXPECT_EQ(a.utcAlertTime, b.utcAlertTime);
    }
}

}  // namespace

// The save path against a real store in a scratch device root: what each kind of event and alarm
// writes into the event record, the alert record and the daemon's table, edits of stored events,
// and the saves that are refused or rolled back without losing what was stored before.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "APAlertDB.h"
#include "APConfig.h"
#include "APDatabase.h"
#include "APEventAlertDB.h"
#include "APEventRec.h"
#include "PLClock.h"
#include "calendar/calendar_support.h"
#include "event/VtCalendarEventSaver.h"
#include "event/VtCalendarSaveRules.h"
#include "recur/_RecurInfo.h"

namespace {

class EventSaverTest : public ::testing::Test {
protected:
    void SetUp() override { PLClock::Pin(int64_t(Stamp(2026, 11, 21, 9, 41)) * 1000); }
    void TearDown() override { PLClock::Unpin(); }

    static VtCalendarFormInput Input(const char* subject, PLDate start, PLTime startTime,
                                     PLDate end, PLTime endTime, uint32_t alarm) {
        VtCalendarFormInput input;
        input.subject = subject;
        input.location = "Room 4";
        input.notes = "Bring the papers";
        input.startDate = start;
        input.startTime = startTime;
        input.endDate = end;
        input.endTime = endTime;
        input.colour = 11548;
        input.classChoice = 11560;
        input.alarmChoice = alarm;
        return input;
    }

    static _EventRecInfo Stored(int id) {
        _EventRecInfo record;
        InitEventRecInfo(&record);
        EXPECT_EQ(APEventRec().GetEventRec(id, &record), 1) << "event " << id;
        return record;
    }

    static std::vector<int> AllEvents() { return APEventRec().ListEventIds(0, 0); }

    ScratchRoot mRoot;
};

TEST_F(EventSaverTest, EachKindOfEventAndAlarm) {
    const PLDate day(2026, 11, 25);  // a Wednesday
    const struct {
        const char* name;
        bool allDay;
        int32_t kind;
        int32_t a;
        int32_t b;
        int32_t c;
        uint32_t alarm;
        long start;      // stored start stamp
        long end;        // stored end stamp
        long last;       // stored last-occurrence stamp (0: the end)
        long ring;       // the daemon's first ring (0: no alarm)
        int32_t amount;  // alert record lead
        int32_t unit;
        const char* rule;  // part of the daemon's rule text
    } rows[] = {
        // clang-format off
        {"timed, no alarm", false, kRecurNone, 0, 0, 0, kAlarmNone, Stamp(2026, 11, 25, 10),
         Stamp(2026, 11, 25, 11), 0, 0, 0, 0, ""},
        {"timed, fifteen minutes", false, kRecurNone, 0, 0, 0, 11535, Stamp(2026, 11, 25, 10),
         Stamp(2026, 11, 25, 11), 0, Stamp(2026, 11, 25, 9, 45), 15, 1,
         "FREQ=DAILY;INTERVAL=1;COUNT=1;BYHOUR=9;BYMINUTE=45;BYSECOND=0"},
        {"timed, at the start", false, kRecurNone, 0, 0, 0, 11531, Stamp(2026, 11, 25, 10),
         Stamp(2026, 11, 25, 11), 0, Stamp(2026, 11, 25, 10), 0, 1, "BYHOUR=10;BYMINUTE=0"},
        {"all-day, a day before", true, kRecurNone, 0, 0, 0, 11540, Stamp(2026, 11, 25),
         Stamp(2026, 11, 25, 23, 59, 59), 0, Stamp(2026, 11, 24), 1, 3, "BYHOUR=0;BYMINUTE=0"},
        {"daily, an hour before", false, kRecurDaily, 2, 0, 5, 11537, Stamp(2026, 11, 25, 10),
         Stamp(2026, 11, 25, 11), Stamp(2026, 12, 3, 10), Stamp(2026, 11, 25, 9), 1, 2, "FREQ=DAILY"},
        {"weekly on fridays moves to friday", false, kRecurWeekly, 1, 1 << 5, 4, 11533,
         Stamp(2026, 11, 27, 10), Stamp(2026, 11, 27, 11), Stamp(2026, 12, 18, 10),
         Stamp(2026, 11, 27, 9, 55), 5, 1, "FREQ=WEEKLY"},
        {"monthly on the 10th moves to december", false, kRecurMonthly, 1, 10, 3, 11532,
         Stamp(2026, 12, 10, 10), Stamp(2026, 12, 10, 11), Stamp(2027, 2, 10, 10),
         Stamp(2026, 12, 10, 9, 59), 1, 1, "FREQ=MONTHLY"},
        // The n-th weekday is found in the start month and then put into the rule's month: the
        // last Sunday of November 2026 (the 29th) becomes the 29th of March, next year.
        {"yearly last sunday of march", false, kRecurYearly, 3, 5 * 256 + 1, kRecurNoEnd, 11536,
         Stamp(2027, 3, 29, 10), Stamp(2027, 3, 29, 11), Stamp(2030, 12, 31, 23, 59, 59),
         Stamp(2027, 3, 29, 9, 30), 30, 1, "FREQ=YEARLY"},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        VtCalendarEventSaver saver;
        saver.SetRecurrence(row.a, row.b, row.last, row.c, row.kind);
        VtCalendarFormInput input =
            Input(row.name, day, PLTime(10, 0, 0), day, PLTime(11, 0, 0), row.alarm);
        input.allDay = row.allDay;
        ASSERT_EQ(saver.Save(input), VtCalendarSaveResult::Saved);

        const _EventRecInfo stored = Stored(saver.GetRecord().id);
        EXPECT_STREQ(stored.subject, row.name);
        EXPECT_STREQ(stored.location, "Room 4");
        EXPECT_STREQ(stored.notes, "Bring the papers");
        EXPECT_EQ(stored.startStamp, row.start);
        EXPECT_EQ(stored.endStamp, row.end);
        EXPECT_EQ(stored.lastStamp, row.last != 0 ? row.last : row.end);
        EXPECT_EQ(stored.allDay, row.allDay ? 1 : 0);
        EXPECT_EQ(stored.recurring, row.kind != kRecurNone ? 1 : 0);
        EXPECT_EQ(stored.colour, 11548u);
        EXPECT_EQ(stored.classChoice, 11560u);
        EXPECT_EQ(stored.alarm, row.ring != 0 ? 1 : 0);
        if (row.ring == 0) {
            EXPECT_LE(stored.alertInfoId, 0);
            continue;
        }
        _EventAlertInfo alert{};
        ASSERT_EQ(APEventAlertDB().GetEventAlertInfo(stored.alertInfoId, &alert), 1);
        EXPECT_EQ(alert.enabled, 1);
        EXPECT_EQ(alert.eventTime, row.start);
        EXPECT_EQ(alert.leadAmount, row.amount);
        EXPECT_EQ(alert.leadUnit, row.unit);
        AP_ALERT_CONTEXT alarm{};
        ASSERT_TRUE(APAlertDB_GetAlert(alert.daemonId, &alarm));
        EXPECT_EQ(alarm.alertTime, row.ring);
        EXPECT_EQ(alarm.localTimeFlag, row.allDay ? 1 : 0);
        EXPECT_EQ(alarm.utcAlertTime, row.allDay ? int32_t(row.start - 86400) : 0);
        EXPECT_EQ(alarm.sourceKind, 5);
        EXPECT_EQ(alarm.state, 1);
        EXPECT_STREQ(alarm.owner, "0") << "a new alarm is registered before its alert record";
        EXPECT_NE(std::string(alarm.rule).find(row.rule), std::string::npos) << alarm.rule;
    }
}

TEST_F(EventSaverTest, EditingAStoredEvent) {
    VtCalendarEventSaver first;
    const PLDate day(2026, 11, 25);
    ASSERT_EQ(first.Save(Input("Dentist", day, PLTime(10, 0, 0), day, PLTime(11, 0, 0), 11535)),
              VtCalendarSaveResult::Saved);
    const int id = first.GetRecord().id;
    const _EventRecInfo stored = Stored(id);

    // Loaded again, the alarm shows as the entry that was chosen; moving the event an hour
    // moves its alarm, and the same daemon alarm and alert record are rewritten.
    VtCalendarEventSaver editor;
    EXPECT_EQ(editor.Load(stored), 11535u);
    const int daemonId = editor.GetAlert().daemonId;
    ASSERT_EQ(editor.Save(Input("Dentist", day, PLTime(11, 0, 0), day, PLTime(12, 0, 0), 11535)),
              VtCalendarSaveResult::Saved);
    EXPECT_EQ(AllEvents(), std::vector<int>{id});
    EXPECT_EQ(Stored(id).startStamp, Stamp(2026, 11, 25, 11));
    EXPECT_EQ(Stored(id).alertInfoId, stored.alertInfoId);
    AP_ALERT_CONTEXT alarm{};
    ASSERT_TRUE(APAlertDB_GetAlert(daemonId, &alarm));
    EXPECT_EQ(alarm.alertTime, Stamp(2026, 11, 25, 10, 45));

    // Switching the alarm off removes the alert record and the daemon alarm.
    VtCalendarEventSaver silencer;
    silencer.Load(Stored(id));
    ASSERT_EQ(
        silencer.Save(Input("Dentist", day, PLTime(11, 0, 0), day, PLTime(12, 0, 0), kAlarmNone)),
        VtCalendarSaveResult::Saved);
    EXPECT_EQ(Stored(id).alarm, 0);
    EXPECT_LE(Stored(id).alertInfoId, 0);
    _EventAlertInfo gone{};
    EXPECT_EQ(APEventAlertDB().GetEventAlertInfo(stored.alertInfoId, &gone), 0);
    EXPECT_FALSE(APAlertDB_GetAlert(daemonId, &alarm));
}

TEST_F(EventSaverTest, RefusedSavesStoreNothing) {
    const PLDate day(2026, 11, 25);
    VtCalendarEventSaver earlier;
    ASSERT_EQ(earlier.Save(Input("Kept", day, PLTime(8, 0, 0), day, PLTime(9, 0, 0), kAlarmNone)),
              VtCalendarSaveResult::Saved);
    const std::vector<int> before = AllEvents();

    // An event that ended before the keep time.
    std::string error;
    ASSERT_TRUE(APConfig_SetByKey("keep_time", "11452", error)) << error;
    VtCalendarEventSaver old;
    const PLDate lastMonth(2026, 10, 1);
    EXPECT_EQ(old.Save(Input("Old", lastMonth, PLTime(8, 0, 0), lastMonth, PLTime(9, 0, 0), 11535)),
              VtCalendarSaveResult::KeepTimeRefused);
    EXPECT_EQ(AllEvents(), before);
    std::vector<AP_ALERT_CONTEXT> alarms;
    ASSERT_TRUE(APAlertDB_ListAlerts(alarms, error));
    EXPECT_TRUE(alarms.empty());

    // A timed start after its end keeps the stamps the record had (here those of the event as
    // stored), so the stored event is rewritten unchanged in time.
    VtCalendarEventSaver backwards;
    backwards.Load(Stored(earlier.GetRecord().id));
    ASSERT_EQ(
        backwards.Save(Input("Kept", day, PLTime(12, 0, 0), day, PLTime(9, 0, 0), kAlarmNone)),
        VtCalendarSaveResult::Saved);
    EXPECT_EQ(Stored(earlier.GetRecord().id).startStamp, Stamp(2026, 11, 25, 8));
    EXPECT_EQ(Stored(earlier.GetRecord().id).endStamp, Stamp(2026, 11, 25, 9));
}

TEST_F(EventSaverTest, DaemonRefusalRollsTheEventBack) {
    const PLDate day(2026, 11, 25);
    VtCalendarEventSaver first;
    ASSERT_EQ(first.Save(Input("Call", day, PLTime(10, 0, 0), day, PLTime(11, 0, 0), 11533)),
              VtCalendarSaveResult::Saved);
    const int id = first.GetRecord().id;
    // The daemon lost the alarm: updating it gives no id, and the event must not stay without it.
    ASSERT_EQ(APAlertDB_DeleteAlert(first.GetAlert().daemonId), 1);
    VtCalendarEventSaver editor;
    editor.Load(Stored(id));
    EXPECT_EQ(editor.Save(Input("Call", day, PLTime(10, 0, 0), day, PLTime(11, 0, 0), 11533)),
              VtCalendarSaveResult::StoreFailed);
    EXPECT_TRUE(AllEvents().empty());
    EXPECT_EQ(editor.GetRecord().id, 0);
    // Saving again stores it anew, alarm included.
    ASSERT_EQ(editor.Save(Input("Call", day, PLTime(10, 0, 0), day, PLTime(11, 0, 0), 11533)),
              VtCalendarSaveResult::Saved);
    EXPECT_EQ(AllEvents().size(), 1u);
    EXPECT_GT(Stored(editor.GetRecord().id).alertInfoId, 0);
}

TEST_F(EventSaverTest, AFullDiskLosesNothingStoredBefore) {
    const PLDate day(2026, 11, 25);
    VtCalendarEventSaver kept;
    ASSERT_EQ(kept.Save(Input("Kept", day, PLTime(8, 0, 0), day, PLTime(9, 0, 0), 11535)),
              VtCalendarSaveResult::Saved);
    const _EventRecInfo before = Stored(kept.GetRecord().id);
    // A couple of pages left: saves go on until one of their writes finds the disk full.
    const auto pages =
        std::filesystem::file_size(PLDeviceRoot::Resolve(kAPEventStoreDevicePath)) / 4096;
    APDatabase::SetPageQuota(long(pages) + 2);
    std::vector<int> saved;
    VtCalendarSaveResult result = VtCalendarSaveResult::Saved;
    for (int i = 0; i < 200 && result == VtCalendarSaveResult::Saved; ++i) {
        VtCalendarEventSaver saver;
        result = saver.Save(Input("Filler", day, PLTime(10, 0, 0), day, PLTime(11, 0, 0), 11533));
        if (result == VtCalendarSaveResult::Saved) {
            saved.push_back(saver.GetRecord().id);
        }
    }
    EXPECT_EQ(result, VtCalendarSaveResult::StoreFailed);
    // Editing the kept event on the full disk fails too.
    VtCalendarEventSaver editor;
    editor.Load(before);
    const std::string longNotes(600, 'n');
    VtCalendarFormInput bigger = Input("Kept", day, PLTime(8, 0, 0), day, PLTime(9, 0, 0), 11535);
    bigger.notes = longNotes.c_str();
    editor.Save(bigger);
    APDatabase::SetPageQuota(0);

    // Every acknowledged save is whole: its event, alert record and alarm; no other event stayed.
    std::vector<int> expected = saved;
    expected.insert(expected.begin(), before.id);
    const std::vector<int> stored = AllEvents();
    EXPECT_EQ(stored, expected);
    for (int id : stored) {
        SCOPED_TRACE(id);
        const _EventRecInfo record = Stored(id);
        ASSERT_EQ(record.alarm, 1);
        _EventAlertInfo alert{};
        ASSERT_EQ(APEventAlertDB().GetEventAlertInfo(record.alertInfoId, &alert), 1);
        AP_ALERT_CONTEXT alarm{};
        EXPECT_TRUE(APAlertDB_GetAlert(alert.daemonId, &alarm));
    }
    const _EventRecInfo after = Stored(before.id);
    EXPECT_STREQ(after.subject, "Kept");
    EXPECT_EQ(after.startStamp, before.startStamp);
}

}  // namespace

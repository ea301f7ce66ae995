// The form itself: loading a stored repeating event into the edit form (11570), the
// changed-controls list for each kind of control, and the commands that end an edit or a new event
// and what the form reports to its listener.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <vector>

#include "APEventAlertDB.h"
#include "APEventRec.h"
#include "PLClock.h"
#include "PLMessage.h"
#include "PLTimeStamp.h"
#include "VtCheckbox.h"
#include "VtComboControl.h"
#include "VtEditField.h"
#include "VtStateMessage.h"
#include "calendar/calendar_support.h"
#include "event/VtCalendarEventSaver.h"
#include "event/VtCalendarNewEventView.h"
#include "event/VtCalendarSaveRules.h"
#include "event_support.h"
#include "recur/VtCalendarSetRecurMsg.h"

namespace {

class FormViewTest : public ::testing::Test {
protected:
    void SetUp() override { PLClock::Pin(int64_t(Stamp(2026, 11, 21, 9, 41)) * 1000); }
    void TearDown() override { PLClock::Unpin(); }

    // A weekly meeting on Mondays at 10:00 with a 15-minute alarm, stored through the save path.
    int StoreWeekly() {
        VtCalendarEventSaver saver;
        saver.SetRecurrence(1, 1 << 1, int32_t(Stamp(2026, 12, 28, 11)), 6, 2);
        VtCalendarFormInput input;
        input.subject = "Planning";
        input.startDate = PLDate(2026, 11, 23);
        input.startTime = PLTime(10, 0, 0);
        input.endDate = PLDate(2026, 11, 23);
        input.endTime = PLTime(11, 0, 0);
        input.colour = 11550;
        input.classChoice = 11560;
        input.alarmChoice = 11535;
        EXPECT_EQ(saver.Save(input), VtCalendarSaveResult::Saved);
        return saver.GetRecord().id;
    }

    std::unique_ptr<VtCalendarNewEventView> MakeForm(uint32_t id) {
        return std::unique_ptr<VtCalendarNewEventView>(
            VtCalendarNewEventView::Make(id, &mDate, &mTime, &mHeard));
    }

    template <class Pane>
    static Pane* Control(VtCalendarNewEventView& form, uint32_t id) {
        return dynamic_cast<Pane*>(form.FindPane(id));
    }

    static void Send(VtCalendarNewEventView& form, uint32_t kind, uint32_t sender,
                     uint32_t value = 0) {
        PLMessage message(kind, sender, value, kEmptyString, kEmptyString);
        form.Listen(&message);
    }

    static void Type(VtCalendarNewEventView& form, uint32_t field, const char* text) {
        Control<VtEditField>(form, field)->SetString(text, false);
        VtStateMessage typed(kPLMsgEditChanged, field, kVtEditTextChanged);
        form.Listen(&typed);
    }

    static void Choose(VtCalendarNewEventView& form, uint32_t combo, uint32_t entry) {
        Control<VtComboControl>(form, combo)->SetValue(long(entry), false);
        Send(form, kPLMsgSelect, combo, entry);
    }

    ScratchRoot mRoot;
    PLDate mDate{2026, 11, 21};
    PLTime mTime{8, 0, 0};
    HeardMessages mHeard;
};

TEST_F(FormViewTest, EditingAStoredRepeatingEvent) {
    const int id = StoreWeekly();
    _EventRecInfo stored;
    ASSERT_EQ(APEventRec().GetEventRec(id, &stored), 1);
    auto form = MakeForm(kEditEventViewID);
    form->Prepare(&stored);

    EXPECT_STREQ(Control<VtEditField>(*form, kFormSubject)->GetString().c_str(), "Planning");
    EXPECT_EQ(Control<VtComboControl>(*form, kFormAlarm)->GetValue(), 11535);
    EXPECT_EQ(Control<VtComboControl>(*form, kFormColour)->GetValue(), 11550);
    EXPECT_EQ(Control<VtComboControl>(*form, kFormClass)->GetValue(), 11560);
    const VtCalendarFormInput shown = form->GetInput();
    EXPECT_EQ(shown.startDate, PLDate(2026, 11, 23));
    EXPECT_EQ(shown.startTime, PLTime(10, 0, 0));
    EXPECT_EQ(shown.endTime, PLTime(11, 0, 0));
    EXPECT_TRUE(form->GetChangedControls().IsEmpty());

    Type(*form, kFormSubject, "Planning and review");
    Send(*form, kPLMsgControl, kEditEventSave);

    // Saved in place: same id, rule and alarm; the day view heard "valu" and the end of the edit.
    EXPECT_EQ(APEventRec().ListEventIds(0, 0), std::vector<int>{id});
    _EventRecInfo saved;
    ASSERT_EQ(APEventRec().GetEventRec(id, &saved), 1);
    EXPECT_STREQ(saved.subject, "Planning and review");
    EXPECT_EQ(saved.recurKind, 2);
    EXPECT_EQ(saved.recurValueB, 1 << 1);
    EXPECT_EQ(saved.startStamp, stored.startStamp);
    EXPECT_EQ(saved.alertInfoId, stored.alertInfoId);
    const std::vector<std::pair<uint32_t, uint32_t>> expected = {{kPLMsgValue, kEditEventViewID},
                                                                 {kPLMsgControl, kEditEventSave}};
    EXPECT_EQ(mHeard.heard, expected);
    EXPECT_EQ(mDate, PLDate(2026, 11, 23)) << "the views open on the saved event's day";
    EXPECT_EQ(mTime.GetHour(), 10);
}

TEST_F(FormViewTest, ChangedControls) {
    const int id = StoreWeekly();
    _EventRecInfo stored;
    ASSERT_EQ(APEventRec().GetEventRec(id, &stored), 1);
    _RecurInfo daily;
    daily.interval = 1;
    daily.count = 5;
    daily.lastStamp = int32_t(Stamp(2026, 11, 27, 11));
    daily.kind = 1;
    _RecurInfo sameWeekly;
    sameWeekly.interval = stored.recurValueA;
    sameWeekly.pattern = stored.recurValueB;
    sameWeekly.lastStamp = stored.lastStamp;
    sameWeekly.count = stored.recurValueC;
    sameWeekly.kind = stored.recurKind;
    auto rule = [](const _RecurInfo& setting, uint32_t sender) {
        return [setting, sender](VtCalendarNewEventView& f) {
            VtCalendarSetRecurMsg message(sender, setting, kRecurMessageID, kPLWildcard);
            f.Listen(&message);
        };
    };
    using Change = std::function<void(VtCalendarNewEventView&)>;
    const struct {
        const char* name;
        std::vector<Change> changes;
        std::vector<uint32_t> changed;
    } rows[] = {
        {"nothing", {}, {}},
        {"subject typed", {[](auto& f) { Type(f, kFormSubject, "Plan"); }}, {kFormSubject}},
        {"subject typed back",
         {[](auto& f) { Type(f, kFormSubject, "Plan"); },
          [](auto& f) { Type(f, kFormSubject, "Planning"); }},
         {}},
        {"notes and location",
         {[](auto& f) { Type(f, kFormNotes, "Agenda"); },
          [](auto& f) { Type(f, kFormLocation, "Room 2"); }},
         {kFormNotes, kFormLocation}},
        {"colour chosen and chosen back",
         {[](auto& f) { Choose(f, kFormColour, 11545); },
          [](auto& f) { Choose(f, kFormColour, 11550); }},
         {}},
        {"alarm and class",
         {[](auto& f) { Choose(f, kFormAlarm, kAlarmNone); },
          [](auto& f) { Choose(f, kFormClass, 11563); }},
         {kFormAlarm, kFormClass}},
        {"all-day switched",
         {[](auto& f) {
             Control<VtCheckbox>(f, kFormAllDay)->SetOnState(1, false);
             Send(f, kPLMsgControl, kFormAllDay, 1);
         }},
         {kFormAllDay}},
        {"another rule", {rule(daily, 11630)}, {kFormRepeat}},
        {"the same rule again", {rule(daily, 11630), rule(sameWeekly, 11660)}, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        auto form = MakeForm(kEditEventViewID);
        form->Prepare(&stored);
        for (const Change& change : row.changes) {
            change(*form);
        }
        const std::vector<uint32_t> changed(form->GetChangedControls().begin(),
                                            form->GetChangedControls().end());
        EXPECT_EQ(changed, row.changed);
    }
}

TEST_F(FormViewTest, NewEventFromTheSelection) {
    auto form = MakeForm(kNewEventViewID);
    mTime = PLTime(14, 30, 0);
    form->Prepare(nullptr);
    const VtCalendarFormInput shown = form->GetInput();
    EXPECT_EQ(shown.startDate, mDate);
    EXPECT_EQ(shown.startTime, PLTime(14, 0, 0));
    EXPECT_EQ(shown.endTime, PLTime(15, 0, 0));
    EXPECT_EQ(shown.alarmChoice, kAlarmNone);
    EXPECT_EQ(shown.colour, 11544u);
    EXPECT_EQ(shown.classChoice, 11561u);

    // Leaving an untouched form asks nothing and tells the application to close it.
    Send(*form, kPLMsgControl, kNewEventCancel);
    const std::vector<std::pair<uint32_t, uint32_t>> expected = {{kPLMsgControl, kNewEventCancel}};
    EXPECT_EQ(mHeard.heard, expected);
    EXPECT_TRUE(APEventRec().ListEventIds(0, 0).empty());

    // Saved by the application's call: stored, and the form is empty again.
    Type(*form, kFormSubject, "Tea");
    EXPECT_TRUE(form->Save());
    EXPECT_EQ(APEventRec().ListEventIds(0, 0).size(), 1u);
    EXPECT_EQ(form->GetRecord().id, 0);
    EXPECT_TRUE(form->GetChangedControls().IsEmpty());
}

TEST_F(FormViewTest, ImpossibleStoredFieldsOpenAndSaveAsDefaults) {
    _EventRecInfo damaged;
    InitEventRecInfo(&damaged);
    std::strncpy(damaged.subject, "Odd", sizeof damaged.subject - 1);
    damaged.startStamp = int32_t(Stamp(2026, 11, 25, 10));
    damaged.endStamp = int32_t(Stamp(2026, 11, 25, 11));
    damaged.lastStamp = damaged.endStamp;
    damaged.colour = 0;
    damaged.classChoice = 99;
    damaged.recurKind = 3;
    damaged.alertInfoId = 41;
    damaged.alarm = 1;
    const int id = APEventRec().AddEventRec(&damaged);
    ASSERT_GT(id, 0);
    _EventRecInfo stored;
    ASSERT_EQ(APEventRec().GetEventRec(id, &stored), 1);

    auto form = MakeForm(kEditEventViewID);
    form->Prepare(&stored);
    const VtCalendarFormInput shown = form->GetInput();
    EXPECT_EQ(shown.colour, 11544u);
    EXPECT_EQ(shown.classChoice, 11561u);
    EXPECT_EQ(shown.alarmChoice, kAlarmNone) << "the alert record it names does not exist";
    EXPECT_TRUE(form->GetChangedControls().IsEmpty()) << "opening it changes nothing";
    // Opening it wrote nothing; saving it writes the choices shown.
    ASSERT_EQ(APEventRec().GetEventRec(id, &stored), 1);
    EXPECT_EQ(stored.colour, 0u);
    EXPECT_TRUE(form->Save());
    _EventRecInfo saved;
    ASSERT_EQ(APEventRec().GetEventRec(id, &saved), 1);
    EXPECT_EQ(saved.colour, 11544u);
    EXPECT_EQ(saved.classChoice, 11561u);
    EXPECT_EQ(saved.alarm, 0);
    EXPECT_EQ(saved.alertInfoId, 0);
    EXPECT_EQ(saved.recurKind, 3) << "a rule the form cannot name is kept as it was";
    EXPECT_EQ(saved.startStamp, stored.startStamp);
}

}  // namespace

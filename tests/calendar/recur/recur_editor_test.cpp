// The repeat editors on a scratch device root: what each shows for a stored rule, what the
// user's choices send to the form, each refusal, and damaged rules opened for editing.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "APGetStr.h"
#include "recur/VtCalendarRecurEditorView.h"
#include "recur/VtCalendarRecurWeeklyView.h"
#include "recur_support.h"

namespace {

const long kLimit = Stamp(2030, 12, 31, 23, 59, 59);

// A one-hour event at 10:00 on a day.
_EventRecInfo Hour(int y, int m, int d, int kind = 0, int a = 0, int b = 0, int c = 0,
                   long last = 0) {
    return Record(Stamp(y, m, d, 10), Stamp(y, m, d, 11), kind, a, b, c, last);
}

std::unique_ptr<VtCalendarRecurEditorView> Open(int kind, _EventRecInfo record) {
    return std::unique_ptr<VtCalendarRecurEditorView>(VtCalendarMakeRecurEditor(kind, &record));
}

// One confirm: what the user set, and what must reach the form (or the refusal's text).
struct ConfirmRow {
    const char* name;
    int kind;
    _EventRecInfo record;
    std::vector<EditorStep> steps;
    uint32_t refusal;  // text of the notice, 0 when the rule is sent
    _RecurInfo sent;   // fields 3..7 are compared; start is compared when not 0
};

class EditorTest : public ::testing::Test {
protected:
    ScratchRoot root;

    void Run(const ConfirmRow& row) {
        SCOPED_TRACE(row.name);
        auto editor = Open(row.kind, row.record);
        ASSERT_NE(editor, nullptr);
        MessageLog form;
        editor->AddListener(&form);
        EditorHands hands(*editor);
        hands.Do(row.steps);
        EXPECT_EQ(editor->EvaluateRecur().text, row.refusal);
        const uint32_t confirm = editor->GetSubPanes().size() > 0 ? ConfirmId(row.kind) : 0;
        hands.Send(confirm);
        const _RecurInfo* sent = form.LastRule();
        if (row.refusal != 0) {
            EXPECT_EQ(sent, nullptr) << "a refused rule is not sent";
            return;
        }
        ASSERT_NE(sent, nullptr);
        EXPECT_EQ(form.messages.back()->GetSenderID(), editor->GetID());
        EXPECT_EQ(sent->kind, row.sent.kind);
        EXPECT_EQ(sent->interval, row.sent.interval);
        EXPECT_EQ(sent->pattern, row.sent.pattern);
        EXPECT_EQ(sent->count, row.sent.count);
        if (row.sent.lastStamp != 0) {
            EXPECT_EQ(sent->lastStamp, row.sent.lastStamp);
        }
        if (row.sent.startStamp != 0) {
            EXPECT_EQ(sent->startStamp, row.sent.startStamp);
        }
    }
    static uint32_t ConfirmId(int kind) {
        switch (kind) {
            case kRecurDaily:
                return 11642;
            case kRecurWeekly:
                return 11677;
            case kRecurMonthly:
                return 11716;
            default:
                return 11746;
        }
    }
};

// Rule fields in message order: start, end, interval, pattern, last, count, kind.
_RecurInfo Sent(int kind, int interval, int pattern, int count, long last = 0, long start = 0) {
    return {int32_t(start), 0, interval, pattern, int32_t(last), count, kind};
}

// The stored rules that recur_daily, recur_weekly, recur_yearly and recur_refusals leave behind
// (every 3 days 5 times, fortnightly until a date, 30 February kept as the 29th, an overnight event
// every 2 days) are checked there through calendar-ctl; these are the rows no script reaches.
TEST_F(EditorTest, DailyConfirm) {
    const _EventRecInfo overnight = Record(Stamp(2026, 11, 21, 23), Stamp(2026, 11, 22, 1));
    const _EventRecInfo untilBefore = Hour(2026, 11, 21, 0, 0, 0, 0, Stamp(2026, 11, 20, 12));
    // clang-format off
    const ConfirmRow rows[] = {
        {"every 3 days, no end", 1, Hour(2026, 11, 21), {Type(11632, "3")}, 0, Sent(1, 3, 0, kRecurNoEnd, kLimit)},
        {"working days ignore the interval", 1, Hour(2026, 11, 21), {Type(11632, "7"), Tap(11634)}, 0,
         Sent(1, 1, 1, kRecurNoEnd)},
        {"interval 0 stops the repetition", 1, Hour(2026, 11, 21), {Type(11632, "0")}, 0, Sent(0, 0, 0, 0)},
        {"empty interval stops the repetition", 1, Hour(2026, 11, 21), {Type(11632, "")}, 0, Sent(0, 0, 0, 0)},
        {"overnight event, every day refused", 1, overnight, {}, 11152, {}},
        {"after 0 times stops the repetition", 1, Hour(2026, 11, 21), {Tap(11637), Type(11638, "0")}, 0,
         Sent(0, 1, 0, 0)},
        {"count cut to end in 2030", 1, Hour(2030, 12, 25), {Tap(11637), Type(11638, "10")}, 0,
         Sent(1, 1, 0, 7, Stamp(2030, 12, 31, 10))},
        {"until the start day writes 0", 1, Hour(2026, 11, 21), {Tap(11646)}, 0,
         Sent(1, 1, 0, 0, Stamp(2026, 11, 21, 23, 59, 59))},
        {"until before the start refused", 1, untilBefore, {Tap(11646)}, 10882, {}},
    };
    // clang-format on
    for (const ConfirmRow& row : rows) {
        Run(row);
    }
}

TEST_F(EditorTest, WeeklyConfirm) {
    // 2026-11-23 is a Monday; with Monday first, button 0 is Monday and button 2 Wednesday.
    WriteFirstWeekday(11425);
    const _EventRecInfo untilBefore = Hour(2026, 11, 23, 0, 0, 0, 0, Stamp(2026, 11, 1));
    // clang-format off
    const ConfirmRow rows[] = {
        {"the event's own day by default", 2, Hour(2026, 11, 23), {}, 0, Sent(2, 1, 0x02, kRecurNoEnd)},
        {"Monday and Wednesday every 2 weeks", 2, Hour(2026, 11, 23), {Tap(11665), Type(11662, "2")}, 0,
         Sent(2, 2, 0x0A, kRecurNoEnd)},
        {"Sunday is the last button", 2, Hour(2026, 11, 23), {Tap(11663), Tap(11669)}, 0,
         Sent(2, 1, 0x01, kRecurNoEnd)},
        {"no day left stops the repetition", 2, Hour(2026, 11, 23), {Tap(11663)}, 0, Sent(0, 1, 0, kRecurNoEnd)},
        {"no day left, until before start still refused", 2, untilBefore, {Tap(11663), Tap(11681)}, 10882, {}},
        {"interval 0 stops the repetition", 2, Hour(2026, 11, 23), {Type(11662, "0")}, 0, Sent(0, 0, 0, 0)},
    };
    // clang-format on
    for (const ConfirmRow& row : rows) {
        Run(row);
    }
}

TEST_F(EditorTest, MonthlyConfirm) {
    const _EventRecInfo untilThe25th = Hour(2026, 11, 20, 0, 0, 0, 0, Stamp(2026, 11, 25, 11));
    // clang-format off
    const ConfirmRow rows[] = {
        {"on the start's day", 4, Hour(2026, 11, 21), {}, 0, Sent(4, 1, 21, kRecurNoEnd)},
        {"day 31 from the 5th moves the start 26 days", 4, Hour(2026, 11, 5), {Type(11704, "31")}, 0,
         Sent(4, 1, 31, kRecurNoEnd, kLimit, Stamp(2026, 12, 1, 10))},
        {"day 0 becomes 1", 4, Hour(2026, 11, 5), {Type(11704, "0")}, 0,
         Sent(4, 1, 1, kRecurNoEnd, 0, Stamp(2026, 11, 5, 10))},
        {"day 45 becomes 31", 4, Hour(2026, 11, 5), {Type(11704, "45")}, 0, Sent(4, 1, 31, kRecurNoEnd)},
        {"second Tuesday every 3 months", 4, Hour(2026, 11, 5),
         {Type(11702, "3"), Tap(11705), Choose(11707, 2), Choose(11709, 3)}, 0, Sent(4, 3, 2 * 256 + 3, kRecurNoEnd)},
        {"no occurrence before the until date", 4, untilThe25th, {Type(11704, "10"), Tap(11721)}, 11012, {}},
        {"n-th weekday never misses the until date", 4, untilThe25th, {Tap(11705), Tap(11721)}, 0,
         Sent(4, 1, 257, -1, Stamp(2026, 11, 25, 23, 59, 59))},
        {"after 3 times", 4, Hour(2026, 11, 21), {Tap(11712), Type(11713, "3")}, 0,
         Sent(4, 1, 21, 3, Stamp(2027, 1, 21, 10))},
        {"interval empty stops the repetition", 4, Hour(2026, 11, 21), {Type(11702, "")}, 0, Sent(0, 0, 0, 0)},
    };
    // clang-format on
    for (const ConfirmRow& row : rows) {
        Run(row);
    }
}

TEST_F(EditorTest, YearlyConfirm) {
    // clang-format off
    const ConfirmRow rows[] = {
        {"January on the start's day by default", 8, Hour(2026, 11, 21), {}, 0, Sent(8, 1, 21, kRecurNoEnd)},
        {"31 April is kept as the 30th", 8, Hour(2026, 11, 21), {Choose(11733, 4), Type(11747, "31")}, 0,
         Sent(8, 4, 30, kRecurNoEnd)},
        {"last Sunday of March", 8, Hour(2026, 11, 21),
         {Choose(11733, 3), Tap(11735), Choose(11737, 5), Choose(11739, 1)}, 0, Sent(8, 3, 5 * 256 + 1, kRecurNoEnd)},
        {"until before the start refused", 8, Hour(2026, 11, 21, 0, 0, 0, 0, Stamp(2025, 1, 1)), {Tap(11751)},
         10882, {}},
        {"day 0 becomes 1", 8, Hour(2026, 11, 21), {Type(11747, "")}, 0, Sent(8, 1, 1, kRecurNoEnd)},
    };
    // clang-format on
    for (const ConfirmRow& row : rows) {
        Run(row);
    }
}

// What an editor shows for a stored rule of its kind, including rules no editor makes.
struct ShowRow {
    const char* name;
    int kind;
    _EventRecInfo record;
    std::vector<std::pair<uint32_t, const char*>> texts;
    std::vector<uint32_t> on;
    std::vector<uint32_t> off;
};

TEST_F(EditorTest, ShowStoredRule) {
    const long dec24 = Stamp(2026, 12, 24, 23, 59, 59);
    // 2026-11-21 is a Saturday.
    // clang-format off
    const ShowRow rows[] = {
        {"daily every 4 days, 12 times", 1, Hour(2026, 11, 21, 1, 4, 0, 12), {{11632, "4"}, {11638, "12"}},
         {11631, 11637}, {11634, 11636, 11646}},
        {"daily working days until a date", 1, Hour(2026, 11, 21, 1, 1, 1, 0, dec24), {{11641, "24-12-2026"}},
         {11634, 11646}, {11631, 11636, 11637}},
        {"daily interval 0 offers every day", 1, Hour(2026, 11, 21, 1, 0, 0, kRecurNoEnd), {{11632, "1"}},
         {11631, 11636}, {11634}},
        {"daily with the others' until code", 1, Hour(2026, 11, 21, 1, 2, 0, -1, dec24), {}, {11646},
         {11636, 11637}},
        {"another kind shows the defaults", 1, Hour(2026, 11, 21, 2, 3, 0x0A, 5),
         {{11632, "1"}, {11638, "10"}, {11641, "21-11-2026"}}, {11631, 11636}, {11637, 11646}},
        {"weekly count -1 reopens until the date", 2, Hour(2026, 11, 21, 2, 2, 0x22, -1, dec24),
         {{11662, "2"}, {11676, "24-12-2026"}}, {11681, 11664, 11668}, {11671, 11672, 11663}},
        {"weekly mask 0 shows the event's day", 2, Hour(2026, 11, 21, 2, 1, 0, kRecurNoEnd), {}, {11669},
         {11663, 11664, 11665, 11666, 11667, 11668}},
        {"weekly mask 255 shows every day", 2, Hour(2026, 11, 21, 2, 1, 255, kRecurNoEnd), {},
         {11663, 11664, 11665, 11666, 11667, 11668, 11669}, {}},
        {"weekly count 150 shows what fits", 2, Hour(2026, 11, 21, 2, 1, 1, 150), {{11673, "99"}}, {11672},
         {11671}},
        {"monthly day 45 shows 31", 4, Hour(2026, 11, 21, 4, 2, 45, kRecurNoEnd), {{11702, "2"}, {11704, "31"}},
         {11703, 11711}, {11705}},
        {"monthly day 0 shows the start's day", 4, Hour(2026, 11, 21, 4, 1, 0, kRecurNoEnd), {{11704, "21"}},
         {11703}, {11705}},
        {"monthly week 9 weekday 9", 4, Hour(2026, 11, 21, 4, 1, 9 * 256 + 9, kRecurNoEnd), {}, {11705},
         {11703}},
        {"yearly month 13 shows the start's month", 8, Hour(2026, 11, 21, 8, 13, 21, 3, Stamp(2028, 11, 21, 10)),
         {{11743, "3"}}, {11734, 11742}, {11735, 11741}},
        {"an until date past 2030 shows the last day", 8, Hour(2026, 11, 21, 8, 11, 21, -1, Stamp(2037, 1, 1)),
         {{11745, "31-12-2030"}}, {11751}, {}},
        {"an until date before 1970 shows the first day", 4, Hour(2026, 11, 21, 4, 1, 21, -1, -86400 * 400),
         {{11715, "01-01-1970"}}, {11721}, {}},
    };
    // clang-format on
    for (const ShowRow& row : rows) {
        SCOPED_TRACE(row.name);
        auto editor = Open(row.kind, row.record);
        ASSERT_NE(editor, nullptr);
        EditorHands hands(*editor);
        for (const auto& [id, text] : row.texts) {
            EXPECT_EQ(hands.Text(id), text) << "pane " << id;
        }
        for (uint32_t id : row.on) {
            EXPECT_TRUE(hands.On(id)) << "pane " << id;
        }
        for (uint32_t id : row.off) {
            EXPECT_FALSE(hands.On(id)) << "pane " << id;
        }
    }
}

TEST_F(EditorTest, NthWeekdayShownOnItsChoices) {
    auto editor = Open(4, Hour(2026, 11, 21, 4, 1, 9 * 256 + 9, kRecurNoEnd));
    EditorHands hands(*editor);
    EXPECT_EQ(hands.Pane(11707).GetValue(), 5) << "week 9 is read as the last";
    EXPECT_EQ(hands.Pane(11709).GetValue(), 7) << "weekday 9 is read as the start's (Saturday)";
    auto yearly = Open(8, Hour(2026, 11, 21, 8, 13, 2 * 256 + 4, kRecurNoEnd));
    EditorHands year(*yearly);
    EXPECT_EQ(year.Pane(11733).GetValue(), 11);
    EXPECT_EQ(year.Pane(11737).GetValue(), 2);
    EXPECT_EQ(year.Pane(11739).GetValue(), 4);
}

// Damaged rules opened and confirmed as they are shown: refused with a reason or sent as a rule
// the store can keep, never as they came.
TEST_F(EditorTest, DamagedRulesNeverSentAsTheyCame) {
    const long before = Stamp(2026, 11, 1);
    const long after2030 = Stamp(2037, 6, 1);
    const struct {
        const char* name;
        int kind;
        _EventRecInfo record;
    } rows[] = {
        {"daily interval 0", 1, Hour(2026, 11, 21, 1, 0, 0, kRecurNoEnd)},
        {"daily pattern 7", 1, Hour(2026, 11, 21, 1, 3, 7, 5)},
        {"daily count 0 ending before the start", 1, Hour(2026, 11, 21, 1, 1, 0, 0, before)},
        {"weekly mask 0", 2, Hour(2026, 11, 21, 2, 1, 0, kRecurNoEnd)},
        {"weekly mask 255", 2, Hour(2026, 11, 21, 2, 1, 255, 4)},
        {"weekly until after 2030", 2, Hour(2026, 11, 21, 2, 1, 1, -1, after2030)},
        {"monthly day 45", 4, Hour(2026, 11, 21, 4, 1, 45, kRecurNoEnd)},
        {"monthly week 9", 4, Hour(2026, 11, 21, 4, 1, 9 * 256 + 3, 2)},
        {"monthly interval 0", 4, Hour(2026, 11, 21, 4, 0, 3, kRecurNoEnd)},
        {"yearly month 13 day 45", 8, Hour(2026, 11, 21, 8, 13, 45, kRecurNoEnd)},
        {"yearly weekday 0 week 6", 8, Hour(2026, 11, 21, 8, 2, 6 * 256, 1)},
        {"kind 3 in the weekly editor", 2, Hour(2026, 11, 21, 3, 0, 0, 0)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        auto editor = Open(row.kind, row.record);
        ASSERT_NE(editor, nullptr);
        const VtRecurRefusal refusal = editor->EvaluateRecur();
        if (refusal.IsRefused()) {
            EXPECT_EQ(refusal.text, 10882u);
            continue;
        }
        EXPECT_TRUE(IsPossibleRule(editor->GetSetting(), kLimit))
            << "kind " << editor->GetSetting().kind << " a " << editor->GetSetting().interval
            << " b " << editor->GetSetting().pattern << " c " << editor->GetSetting().count;
    }
}

TEST_F(EditorTest, WeeklyButtonsFollowTheFirstWeekday) {
    const struct {
        const char* name;
        int32_t option;
        int firstButtonWeekday;
        int lastButtonWeekday;
    } rows[] = {{"Sunday first", 11424, 1, 7},
                {"Monday first", 11425, 2, 1},
                {"Saturday first", 11430, 7, 6},
                {"damaged setting reads as Sunday", 11999, 1, 7}};
    const uint32_t labels[] = {30592, 30532, 30542, 30552, 30562, 30572, 30582};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        WriteFirstWeekday(row.option);
        auto editor = Open(2, Hour(2026, 11, 21));
        EditorHands hands(*editor);
        EXPECT_EQ(hands.Text(11663), APGetStr(labels[row.firstButtonWeekday - 1]).c_str());
        EXPECT_EQ(hands.Text(11669), APGetStr(labels[row.lastButtonWeekday - 1]).c_str());
        // Saturday, the event's day, is the only day pressed.
        const int saturday = (7 - row.firstButtonWeekday + 7) % 7;
        for (int i = 0; i < 7; ++i) {
            EXPECT_EQ(hands.On(11663 + uint32_t(i)), i == saturday) << "button " << i;
        }
    }
}

TEST_F(EditorTest, DailyWorkdaysOnlyForEventsWithinADay) {
    auto sameDay = Open(1, Hour(2026, 11, 21));
    EXPECT_TRUE(EditorHands(*sameDay).Pane(11634).IsEnabled());
    auto overnight = Open(1, Record(Stamp(2026, 11, 21, 23), Stamp(2026, 11, 22, 1)));
    EXPECT_FALSE(EditorHands(*overnight).Pane(11634).IsEnabled());
}

TEST_F(EditorTest, ReloadStartsFromTheStoredRule) {
    auto editor = Open(2, Hour(2026, 11, 21, 2, 3, 0x0A, 6));
    EditorHands hands(*editor);
    hands.Type(11662, "9");
    hands.Tap(11671);
    editor->SetRecur(Hour(2026, 11, 21));
    EXPECT_EQ(hands.Text(11662), "1");
    EXPECT_TRUE(hands.On(11671));
    EXPECT_EQ(hands.Text(11673), "10");
    EXPECT_TRUE(hands.On(11669)) << "the event's Saturday";
    EXPECT_FALSE(hands.On(11664));
}

TEST_F(EditorTest, MonthlyRemembersTheCountItComputedFor) {
    auto editor = Open(4, Hour(2026, 11, 21));
    EditorHands hands(*editor);
    hands.Tap(11712);
    hands.Type(11713, "4");
    EXPECT_FALSE(editor->EvaluateRecur().IsRefused());
    EXPECT_EQ(editor->GetSeriesCountCache(), 4);
    EXPECT_EQ(editor->GetUntilDate(), PLDate(2027, 2, 21));
    editor->SetRecur(Hour(2026, 11, 21));
    EXPECT_EQ(editor->GetSeriesCountCache(), 0);
}

TEST(EditorFactory, MakesTheEditorOfAKind) {
    ScratchRoot root;
    _EventRecInfo record = Hour(2026, 11, 21);
    const struct {
        int kind;
        uint32_t id;
        const char* className;
    } rows[] = {{1, 11630, "VtCalendarRecurDailyView"},
                {2, 11660, "VtCalendarRecurWeeklyView"},
                {4, 11700, "VtCalendarRecurMonthlyView"},
                {8, 11730, "VtCalendarRecurYearlyView"},
                {0, 0, nullptr},
                {3, 0, nullptr},
                {16, 0, nullptr}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.kind);
        std::unique_ptr<VtCalendarRecurEditorView> editor(
            VtCalendarMakeRecurEditor(row.kind, &record));
        if (row.className == nullptr) {
            EXPECT_EQ(editor, nullptr);
            continue;
        }
        ASSERT_NE(editor, nullptr);
        EXPECT_EQ(editor->GetID(), row.id);
        EXPECT_STREQ(editor->GetClassName(), row.className);
        EXPECT_EQ(editor->Kind(), row.kind);
    }
    EXPECT_EQ(VtCalendarMakeRecurEditor(1, nullptr), nullptr);
}

}  // namespace

namespace {

// A refused check must not leave the start moved for the next one.
TEST(EditorRecheck, StartMovesOnceAfterARefusal) {
    ScratchRoot root;
    _EventRecInfo record = Hour(2026, 11, 5, 0, 0, 0, 0, Stamp(2026, 11, 6, 11));
    std::unique_ptr<VtCalendarRecurEditorView> editor(VtCalendarMakeRecurEditor(4, &record));
    MessageLog form;
    editor->AddListener(&form);
    EditorHands hands(*editor);
    hands.Type(11704, "31");
    hands.Tap(11721);
    EXPECT_EQ(editor->EvaluateRecur().text, 10882u) << "until the 6th is before the 1st";
    hands.Tap(11711);
    hands.Send(11716);
    ASSERT_NE(form.LastRule(), nullptr);
    EXPECT_EQ(form.LastRule()->startStamp, Stamp(2026, 12, 1, 10));
}

}  // namespace

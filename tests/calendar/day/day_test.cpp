// The day view on a scratch store with a pinned clock: where rows go on mixed days, the header
// cap, the container's place with and without the lunar row, the key moves and their scroll
// offsets, the hour labels, the node copy of a row, and what a script cannot see.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "APGetStr.h"
#include "PLAppContext.h"
#include "PLClock.h"
#include "PLMenu.h"
#include "PLMenuItem.h"
#include "PLMessage.h"
#include "PLScreen.h"
#include "VtScrollContainer.h"
#include "day/VtCalendarDayViewItem.h"
#include "day_support.h"
#include "event/VtCalendarDetailView.h"

namespace {

// "a a+1 ... b": hour rows without events.
std::string Hours(int from, int to) {
    std::string text;
    for (int hour = from; hour <= to; ++hour) {
        text += (text.empty() ? "" : " ") + std::to_string(hour);
    }
    return text;
}

// The list as "hour" or "hour:subject" per row, in order.
std::string Describe(const VtCalendarDayView& view) {
    std::string text;
    for (const VtCalendarDayViewItem* item : view.GetItems()) {
        text += (text.empty() ? "" : " ") + std::to_string(item->GetHour());
        if (item->GetEvent() != nullptr) {
            text += std::string(":") + item->GetEvent()->subject;
        }
    }
    return text;
}

class DayViewTest : public ::testing::Test {
protected:
    void SetUp() override { PLClock::Pin(int64_t(Stamp(2026, 11, 21, 9, 41)) * 1000); }
    void TearDown() override { PLClock::Unpin(); }
    ScratchRoot root;
};

const DayEvent kAllDay{"Holiday", 21, 0, 0, 21, 23, 59, true};
const DayEvent kNine{"A", 21, 9, 0, 21, 9, 30};
const DayEvent kNineLater{"B", 21, 9, 30, 21, 10, 30};
const DayEvent kLate{"Late", 21, 23, 0, 21, 23, 30};
const DayEvent kLater{"Later", 21, 23, 15, 21, 23, 45};
const DayEvent kMidnightEnd{"ToMidnight", 21, 20, 0, 22, 0, 0};

TEST_F(DayViewTest, RowsOfMixedDays) {
    const struct {
        const char* name;
        std::vector<DayEvent> events;
        bool lunar;
        int headers, top, height, content;
        std::string rows;
    } cases[] = {
        // The empty day, header rows with and without the lunar row and the three-row cap are
        // day_empty's, day_busy's, day_lunar's and day_headers'.
        // clang-format off
        {"empty day with the lunar row", {}, true, 0, 59, 180, 720, Hours(0, 23)},
        {"two at nine: the second in an extra row below", {kNine, kNineLater}, false, 0, 29, 210, 750,
         Hours(0, 8) + " 9:A 9:B " + Hours(10, 23)},
        {"extra row after the last hour goes at the end", {kLate, kLater}, false, 0, 29, 210, 750,
         Hours(0, 22) + " 23:Late 23:Later"},
        {"four all-day events with the lunar row", {kAllDay, kAllDay, kAllDay, kAllDay}, true, 3, 149, 90,
         720, Hours(0, 23)},
        {"an end at midnight keeps the event on its day", {kMidnightEnd}, false, 0, 29, 210, 720,
         Hours(0, 19) + " 20:ToMidnight " + Hours(21, 23)},
        // clang-format on
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        ScratchRoot scratch;
        SetLunar(row.lunar);
        for (const DayEvent& event : row.events) {
            ASSERT_GT(StoreEvent(event), 0);
        }
        DayFixture day(0);
        VtCalendarDayView& view = *day.view;
        EXPECT_EQ(view.GetShowLunar(), row.lunar);
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(view.FindPane(111393 + i) != nullptr, i < row.headers) << "header " << i;
        }
        const VtScrollContainer* list = view.GetScrollContainer();
        EXPECT_EQ(list->GetLocation(), PLPoint(row.top, 0));
        EXPECT_EQ(list->GetSize(), PLSize(row.height, 240));
        EXPECT_EQ(view.GetContentHeight(), row.content);
        EXPECT_EQ(Describe(view), row.rows);
        // Every row sits right below the one before; extra rows share the 23:00 row's id.
        const auto& items = view.GetItems();
        for (size_t i = 0; i < items.size(); ++i) {
            EXPECT_EQ(items[i]->GetLocation(), PLPoint(int(30 * i), 0)) << "row " << i;
            const bool extra = i > 0 && items[i - 1]->GetHour() == items[i]->GetHour();
            EXPECT_EQ(items[i]->GetID(), extra ? 111358u : 111335u + items[i]->GetHour());
        }
        EXPECT_EQ(view.GetOptionsMenu()->FindItem(11817)->IsEnabled(), !row.events.empty());
    }
}

// Too much for the screen: what fits is shown, the rest scrolls, nothing is read past a field.
TEST_F(DayViewTest, CrowdedDay) {
    for (int i = 0; i < 200; ++i) {
        ASSERT_GT(StoreEvent({"crowd", 21, 14, i % 60, 21, 15, 0}), 0);
    }
    for (int i = 0; i < 50; ++i) {
        ASSERT_GT(StoreEvent(kAllDay), 0);
    }
    std::string longSubject(600, 'x');
    longSubject.replace(597, 3, "\xE4\xB8\xAD");  // a Chinese character cut by the field's end
    ASSERT_GT(StoreEvent({longSubject.c_str(), 21, 3, 0, 21, 4, 0}), 0);
    ASSERT_GT(StoreEvent({"bad \xFF\xFE\xC3 bytes", 21, 5, 0, 21, 6, 0}), 0);
    DayFixture day(23);
    VtCalendarDayView& view = *day.view;
    // Painted on the screen as the application shows it, every row and the lunar row included.
    PLView root(0, PLPoint(0, 0), PLSize(320, 240));
    root.AddSubPane(day.view.release(), false);
    SetLunar(true);
    view.Reload(0);
    PLAppContext::GetInstance()->GetScreen().SetRoot(&root);
    PLAppContext::GetInstance()->GetScreen().PaintAll();
    PLAppContext::GetInstance()->GetScreen().SetRoot(nullptr);
    EXPECT_NE(view.FindPane(111395), nullptr);
    EXPECT_EQ(view.FindPane(111396), nullptr);
    EXPECT_EQ(view.GetItems().size(), 24u + 199u);
    EXPECT_EQ(view.GetContentHeight(), 720 + 199 * 30);
    // The 23:00 row is the last; the list (three header rows and the lunar row above it) is
    // scrolled to its end.
    EXPECT_EQ(view.GetScrollOffset(), view.GetContentHeight() - 88);
    EXPECT_LT(std::strlen(view.GetItems()[3]->GetEvent()->subject), size_t(kAPDayNodeSubjectSize));
}

struct KeyCase {
    const char* name;
    std::vector<DayEvent> events;
    int startHour;
    std::vector<char> keys;
    int index, hour;
    long offset;
};

TEST_F(DayViewTest, KeyMovesAndScrolling) {
    const char up = 17, down = 19;
    const std::vector<DayEvent> twoAtNine{kNine, kNineLater};
    const std::vector<DayEvent> fourAllDay{kAllDay, kAllDay, kAllDay, kAllDay};
    const KeyCase cases[] = {
        // 208 pixels visible (the container's frame takes 2), 720 high: offsets up to 512.
        // The 8am row at the top, up, left and page up, both wraps and the 210 rule on an empty
        // day are day_empty's and day_keys'.
        {"near the end the list shows its end", {}, 23, {}, 23, 23, 512},
        {"up to a row still in view does not scroll", {}, 8, {down, down, up}, 9, 9, 240},
        {"extra rows are rows of their hour", twoAtNine, 10, {up}, 10, 9, 300},
        {"wrapping counts the extra rows", twoAtNine, 0, {up}, 24, 23, 540},
        // Three header rows leave 118 pixels; the 210 is kept, so row 4 is out of view unscrolled.
        {"210 whatever the header rows take", fourAllDay, 0, {down, down, down, down}, 4, 4, 0},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        ScratchRoot scratch;
        for (const DayEvent& event : row.events) {
            ASSERT_GT(StoreEvent(event), 0);
        }
        DayFixture day(row.startHour);
        VtCalendarDayView& view = *day.view;
        for (char key : row.keys) {
            EXPECT_TRUE(view.DoKeyCommand(key, 0, kPLModNone));
        }
        ASSERT_NE(view.GetSelectedItem(), nullptr);
        EXPECT_EQ(view.GetSelectedItem(), view.GetItems()[size_t(row.index)]);
        EXPECT_TRUE(view.GetSelectedItem()->IsSelected());
        EXPECT_EQ(day.time.GetHour(), row.hour);
        EXPECT_EQ(view.GetScrollOffset(), row.offset);
        int selected = 0;
        for (const VtCalendarDayViewItem* item : view.GetItems()) {
            selected += item->IsSelected() ? 1 : 0;
        }
        EXPECT_EQ(selected, 1);
    }
}

// Hears what the day view broadcasts.
class Recorder : public PLListener {
public:
    void Listen(PLMessage* message) override { kinds.push_back(message->GetMessageID()); }
    std::vector<uint32_t> kinds;
};

// A tapped event opens the one detail view the day keeps; it is reused, and when it deleted its
// event (12106) the day lets it go (it destroys itself) and tells the application.
TEST_F(DayViewTest, DetailViewOfATappedEvent) {
    const int id = StoreEvent(kNine);
    ASSERT_GT(id, 0);
    DayFixture day(9);
    VtCalendarDayView& view = *day.view;
    Recorder application;
    view.AddListener(&application);
    VtCalendarDayViewItem* nine = view.GetItems()[9];
    nine->MouseUp(kNullPoint, kPLPen);
    VtCalendarDetailView* detail = view.GetDetailView();
    ASSERT_NE(detail, nullptr);
    EXPECT_EQ(detail->GetParent(), &view);
    EXPECT_EQ(detail->GetEventID(), id);
    EXPECT_TRUE(application.kinds.empty()) << "an event row asks the application for nothing";
    detail->Close(false, false);
    nine->MouseUp(kNullPoint, kPLPen);
    EXPECT_EQ(view.GetDetailView(), detail);
    EXPECT_EQ(detail->GetParent(), &view);

    PLMessage deleted(kPLMsgControl, 12106, kPLWildcard, kEmptyString, kEmptyString);
    view.Listen(&deleted);
    EXPECT_EQ(view.GetDetailView(), nullptr);
    ASSERT_EQ(application.kinds.size(), 1u);
    EXPECT_EQ(application.kinds[0], kPLMsgControl);
    // The list was rebuilt: the event is still stored, so it is shown again.
    ASSERT_NE(view.GetItems()[9]->GetEvent(), nullptr);
    EXPECT_EQ(view.GetItems()[9]->GetEvent()->id, id);
}

TEST(DayViewItem, HourLabels) {
    const struct {
        int hour;
        long format;
        const char* text;
    } rows[] = {
        // 12am, 8am .. 12pm, 11pm and 0:00, 8:00, 12:00, 23:00 are read by day_busy and day_24h.
        {1, 1, "1am"}, {11, 1, "11am"}, {13, 1, "1pm"},
        {9, 0, "9am"}, {9, 2, "9:00"},  {13, 2, "13:00"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(VtCalendarDayViewItem::HourLabelText(row.hour, row.format).str(), row.text)
            << row.hour << " in format " << row.format;
    }
}

// A row keeps its own copy of the node, ended within the field even when the store's is not.
TEST(DayViewItem, NodeCopy) {
    ScratchRoot root;
    APDayEventNode node{};
    std::memset(node.subject, 'y', sizeof(node.subject));
    node.id = 42;
    node.startHour = 30;  // no row shows such an hour; the copy keeps it as it is
    APDayEventNode next{};
    node.next = &next;
    VtCalendarDayViewItem row(&node, 5, 11315, nullptr, false, false, 111340);
    ASSERT_NE(row.GetEvent(), nullptr);
    EXPECT_EQ(row.GetEvent()->id, 42);
    EXPECT_EQ(row.GetEvent()->next, nullptr);
    EXPECT_EQ(std::strlen(row.GetEvent()->subject), size_t(kAPDayNodeSubjectSize - 1));
    EXPECT_EQ(VtCalendarDayViewItem::SubjectText(node).Length(), size_t(kAPDayNodeSubjectSize));
    EXPECT_NE(row.GetHourLabel(), nullptr);

    node.subject[0] = '\0';
    EXPECT_EQ(VtCalendarDayViewItem::SubjectText(node).str(), APGetStr(10942).str());
    // Header rows and continuation rows with an event have no hour label.
    EXPECT_EQ(VtCalendarDayViewItem(&node, 0, 0, nullptr, false, true, 111393).GetHourLabel(),
              nullptr);
    EXPECT_EQ(VtCalendarDayViewItem(&node, 5, 11339, nullptr, true, false, 111358).GetHourLabel(),
              nullptr);
}

}  // namespace

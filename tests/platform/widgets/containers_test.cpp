// Scroll containers (requests, keys, ranges, keeping a pane in view), choice controls over their
// menus, and the check top bar's messages.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "PLListener.h"
#include "PLMessage.h"
#include "VtBarFactory.h"
#include "VtMenuFactory.h"

namespace {

class Recorder : public PLListener {
public:
    void Listen(PLMessage* message) override {
        long value = long(message->GetUserMessageID());
        if (const auto* scroll = dynamic_cast<const PLScrollerMessage*>(message)) {
            value = scroll->GetOffset().v;
        }
        heard.push_back({message->GetMessageID(), value});
    }
    std::vector<std::pair<uint32_t, long>> heard;
};

// A container 100 high (98 visible inside its one-pixel margins) over ten 30-high panes.
std::unique_ptr<VtScrollContainer> MakeContainer(long fixedRange = -1) {
    std::unique_ptr<VtScrollContainer> container(
        MakeVtScrollContainer(11205, PLPoint(0, 0), PLSize(100, 240), true, false, 20, true,
                              PLRect(1, 1, 1, 1), nullptr, true));
    for (int i = 0; i < 10; ++i) {
        container->GetContentPane()->AddSubPane(
            new PLPane(uint32_t(100 + i), PLPoint(30 * i, 0), PLSize(30, 200)), false);
    }
    container->SetScrollRange(fixedRange);
    return container;
}

struct ScrollCase {
    const char* name;
    long fixedRange;
    long request;
    long position;
};

class ScrollRequests : public ::testing::TestWithParam<ScrollCase> {};

TEST_P(ScrollRequests, RequestsAreKeptWithinTheContent) {
    const ScrollCase& c = GetParam();
    auto container = MakeContainer(c.fixedRange);
    Recorder recorder;
    container->AddListener(&recorder);
    PLScrollerMessage request(11305, PLPoint(int(c.request), 0), 0);
    container->GetContentPane()->Listen(&request);
    EXPECT_EQ(container->GetScrollPosition(), c.position);
    EXPECT_EQ(container->GetContentPane()->GetScrollOffset().v, c.position);
    EXPECT_EQ(container->GetScrollBar()->GetPosition(), c.position);
    EXPECT_TRUE(recorder.heard.empty()) << "a request is not reported back";
}

INSTANTIATE_TEST_SUITE_P(Requests, ScrollRequests,
                         ::testing::Values(ScrollCase{"inside_the_content", -1, 120, 120},
                                           ScrollCase{"to_the_end", -1, 202, 202},
                                           ScrollCase{"past_the_end_stops_there", -1, 5000, 202},
                                           ScrollCase{"before_the_start_stops_at_zero", -1, -40, 0},
                                           ScrollCase{"a_fixed_range_wins", 150, 180, 150}),
                         [](const ::testing::TestParamInfo<ScrollCase>& info) {
                             return std::string(info.param.name);
                         });

TEST(ScrollContainer, KeysScrollByTheStepsAndReportTheOffset) {
    auto container = MakeContainer();
    container->GetContentPane()->SetScrollSteps(70, 30, 1);
    EXPECT_EQ(container->GetScrollBar()->GetStep(), 30);
    Recorder recorder;
    container->AddListener(&recorder);
    VtScrollPane* pane = container->GetContentPane();
    EXPECT_TRUE(pane->DoKeyCommand(char(kPLKeyDown), 0, kPLModNone));
    EXPECT_TRUE(pane->DoKeyCommand(char(kPLKeyPageDown), 0, kPLModNone));
    EXPECT_TRUE(pane->DoKeyCommand(char(kPLKeyUp), 0, kPLModNone));
    EXPECT_FALSE(pane->DoKeyCommand(char(kPLKeyOk), 0, kPLModNone));
    const std::vector<std::pair<uint32_t, long>> expected{
        {kPLMsgScroll, 30}, {kPLMsgScroll, 100}, {kPLMsgScroll, 70}};
    EXPECT_EQ(recorder.heard, expected);
}

TEST(ScrollContainer, ShrinkingKeepsAPaneInViewAndGrowingClampsTheOffset) {
    auto container = MakeContainer();
    const PLPane* sixth = container->GetContentPane()->FindPane(105);
    ASSERT_NE(sixth, nullptr);
    container->EnsureVisible(*sixth);
    EXPECT_EQ(container->GetScrollPosition(), 180 - 98) << "its bottom at the view's bottom";
    container->EnsureVisible(*container->GetContentPane()->FindPane(101));
    EXPECT_EQ(container->GetScrollPosition(), 30) << "its top at the view's top";
    container->SetSize(PLSize(40, 240), false);
    EXPECT_EQ(container->GetVisibleHeight(), 38);
    EXPECT_EQ(container->GetContentPane()->GetSize().v, 38) << "laid out by the resize itself";
    container->EnsureVisible(*sixth);
    EXPECT_EQ(container->GetScrollPosition(), 180 - 38);
    container->SetSize(PLSize(20, 240), false);
    container->EnsureVisible(*container->GetContentPane()->FindPane(108));
    EXPECT_EQ(container->GetScrollPosition(), 240) << "taller than the view: its top shows";
    container->SetSize(PLSize(320, 240), false);
    EXPECT_EQ(container->GetScrollPosition(), 0) << "everything fits again";
    EXPECT_EQ(container->GetContentPane()->GetSize().v, 318);
}

TEST(ScrollContainer, PanesGivenToTheContainerScrollInItsContentPane) {
    auto container = MakeContainer();
    auto* row = new PLPane(111358, PLPoint(300, 0), PLSize(30, 220));
    container->AddSubPane(row, false);
    EXPECT_EQ(row->GetParent(), container->GetContentPane());
    PLScrollerMessage request(11305, PLPoint(400, 0), 0);
    container->GetContentPane()->Listen(&request);
    EXPECT_EQ(container->GetScrollPosition(), 330 - 98) << "the new row counts for the range";
    auto* first = new PLPane(111357, PLPoint(0, 0), PLSize(30, 220));
    container->InsertSubPane(first, 0, false);
    EXPECT_EQ(container->GetContentPane()->GetSubPanes().front(), first);

    EXPECT_TRUE(container->RemoveSubPane(row));
    std::unique_ptr<PLPane> removed(row);
    EXPECT_EQ(row->GetParent(), nullptr);
    EXPECT_FALSE(container->RemoveSubPane(row)) << "no longer there";
    EXPECT_FALSE(container->RemoveSubPane(nullptr));
    EXPECT_FALSE(container->RemoveSubPane(container->GetContentPane())) << "its own parts stay";
    container->AddSubPane(container->GetScrollBar(), false);
    EXPECT_EQ(container->GetScrollBar()->GetParent(), container.get());
    EXPECT_EQ(container->GetScroller(), container.get());
}

TEST(ComboControl, ValueAndMenuSelectionStayInStep) {
    std::unique_ptr<VtMenu> menu(MakeVtComboMenu(kEmptyString, 11706, nullptr));
    for (uint32_t week = 1; week <= 5; ++week) {
        menu->AddMenuItem(new PLMenuItem(("week " + std::to_string(week)).c_str(), week));
    }
    menu->SetSelectedItemByIndex(1);
    std::unique_ptr<VtComboControl> combo(
        MakeVtComboControl(11707, PLPoint(63, 30), PLSize(27, 80), menu.get(), 0, kEmptyString));
    EXPECT_EQ(combo->GetValue(), 1);
    combo->SetValue(4);
    EXPECT_EQ(menu->GetSelectedIndex(), 4u);
    EXPECT_EQ(combo->GetShownLabel().str(), "week 4");
    EXPECT_EQ(combo->GetString().str(), "week 4");
    combo->SetValue(9);  // no such entry: the menu keeps its choice
    EXPECT_EQ(menu->GetSelectedIndex(), 4u);
    menu->SetSelectedItemByIndex(2);
    combo->SyncFromMenu();
    EXPECT_EQ(combo->GetValue(), 2);
    EXPECT_EQ(combo->GetString().str(), "week 2");

    std::unique_ptr<VtComboControl> empty(
        MakeVtComboControl(1, PLPoint(0, 0), PLSize(27, 80), nullptr, 0, kEmptyString));
    empty->OpenMenu();  // nothing to open, nothing to break
    EXPECT_TRUE(empty->GetShownLabel().IsEmpty());
}

TEST(TopBar, TheCheckBoxFlipsAndAsksForAllOrNone) {
    std::unique_ptr<VtTopBarView> bar(
        MakeVtCheckTopBar(12205, PLPoint(0, 0), 240, "Delete", "All", 0, 0, 0));
    Recorder recorder;
    bar->AddListener(&recorder);
    bar->ToggleCheck();
    bar->ToggleCheck();
    bar->SetCheckStatus(1);
    const std::vector<std::pair<uint32_t, long>> expected{{kPLMsgUp, kVtTopBarCheckAll},
                                                          {kPLMsgUp, kVtTopBarClearAll}};
    EXPECT_EQ(recorder.heard, expected) << "only taps send, not SetCheckStatus";
    EXPECT_EQ(bar->GetCheckStatus(), 1);
    EXPECT_FALSE(bar->CheckRect().IsEmpty());

    std::unique_ptr<VtTopBarView> title(
        MakeVtTextTopBar(11644, PLPoint(0, 0), 240, "Daily", kEmptyString, 0, 0));
    Recorder quiet;
    title->AddListener(&quiet);
    title->ToggleCheck();
    EXPECT_TRUE(quiet.heard.empty());
    EXPECT_TRUE(title->CheckRect().IsEmpty());
    EXPECT_EQ(title->GetSize(), PLSize(29, 240));
}

}  // namespace

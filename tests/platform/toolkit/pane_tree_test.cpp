// The pane tree: ownership, moves, lookups, deferred closing and pane-to-screen geometry.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "gui_support.h"

namespace {

// Notes its own destruction by name, so that tests can see who deleted what and when.
class MortalPane : public PLView {
public:
    MortalPane(std::string name, std::set<std::string>* dead)
        : PLView(1, {0, 0}, {10, 10}), mName(std::move(name)), mDead(dead) {}
    ~MortalPane() override { mDead->insert(mName); }

private:
    std::string mName;
    std::set<std::string>* mDead;
};

class PaneTreeTest : public GuiTest {
protected:
    // Outlives the panes that the fixture's root deletes at the end of each test.
    std::set<std::string> dead;
};

TEST_F(PaneTreeTest, FindPaneSearchesThisPaneFirstThenDepthFirstInZOrder) {
    // root(0) ── a(5) ── a1(7) ── a11(9)
    //        │        └─ a2(9) ── a21(5)
    //        └─ b(7) ── b1(11)
    PLPane* a = Add(root.get(), new PLView(5, {0, 0}, {10, 10}));
    PLPane* b = Add(root.get(), new PLView(7, {0, 0}, {10, 10}));
    PLPane* a1 = Add(a, new PLView(7, {0, 0}, {10, 10}));
    PLPane* a11 = Add(a1, new PLView(9, {0, 0}, {10, 10}));
    Add(Add(a, new PLView(9, {0, 0}, {10, 10})), new PLView(5, {0, 0}, {10, 10}));
    PLPane* b1 = Add(b, new PLView(11, {0, 0}, {10, 10}));
    const std::tuple<const char*, PLPane*, uint32_t, PLPane*> rows[] = {
        {"own id before a sub-pane's", a, 5, a},
        {"first in z-order wins over a later sibling", root.get(), 7, a1},
        {"deeper match before a later sibling's", root.get(), 9, a11},
        {"found in the second subtree", root.get(), 11, b1},
        {"search from a subtree stays inside it", a, 11, nullptr},
        {"missing id", root.get(), 12345, nullptr},
    };
    for (const auto& [name, from, id, expected] : rows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(from->FindPane(id), expected);
    }
}

TEST_F(PaneTreeTest, SubPanesMoveInsertAndComeBackToTheirCaller) {
    auto* first = Add(root.get(), new MortalPane("first", &dead));
    auto* second = Add(root.get(), new MortalPane("second", &dead));
    auto* child = Add(first, new MortalPane("child", &dead));
    second->AddSubPane(child, false);  // a pane that has a parent is moved
    EXPECT_EQ(child->GetParent(), second);
    EXPECT_TRUE(first->GetSubPanes().empty());
    root->AddSubPane(first, false);  // adding again brings it to the top
    EXPECT_EQ(root->GetSubPanes(), (std::vector<PLPane*>{second, first}));
    auto* middle = new MortalPane("middle", &dead);
    auto* far = new MortalPane("far", &dead);
    root->InsertSubPane(middle, 1, false);
    root->InsertSubPane(far, 99, false);  // the index is clamped
    EXPECT_EQ(root->GetSubPanes(), (std::vector<PLPane*>{second, middle, first, far}));
    EXPECT_TRUE(dead.empty());

    EXPECT_FALSE(root->RemoveSubPane(child)) << "a grandchild is not a sub-pane";
    EXPECT_TRUE(second->RemoveSubPane(child));
    EXPECT_EQ(child->GetParent(), nullptr);
    EXPECT_FALSE(second->RemoveSubPane(child)) << "not a sub-pane any more";
    second->AddSubPane(child, false);
    EXPECT_TRUE(root->RemoveSubPane(second));
    delete second;
    EXPECT_EQ(dead, (std::set<std::string>{"second", "child"})) << "a parent deletes its own";
    delete far;  // deleting an attached pane detaches it
    EXPECT_EQ(root->GetSubPanes(), (std::vector<PLPane*>{middle, first}));
}

TEST_F(PaneTreeTest, CloseDetachesAtOnceAndDestroysOnlyAtTheNextIdleMoment) {
    // clang-format off
    // `ownerDeletesFirst`: the owner changed its mind and deleted it at once.
    const std::tuple<const char*, bool, bool> rows[] = {
        {"close and destroy", true, false},
        {"close only", false, false},
        {"close and destroy, then deleted by its owner: once only", true, true},
    };
    // clang-format on
    for (const auto& [name, destroy, ownerDeletesFirst] : rows) {
        SCOPED_TRACE(name);
        dead.clear();
        auto* dialog = Add(root.get(), new MortalPane("dialog", &dead));
        auto* field = Add(dialog, new MortalPane("field", &dead));
        Loop().SetTarget(field);
        dialog->StartTracking();
        dialog->Close(destroy, false);
        EXPECT_EQ(dialog->GetParent(), nullptr);
        EXPECT_EQ(Loop().GetTarget(), root.get()) << "the keys go back to the pane it left";
        EXPECT_TRUE(dead.empty()) << "never deleted inside the call, so a pane may close itself";
        if (ownerDeletesFirst) {
            delete dialog;
        }
        Loop().ProcessIdle();
        EXPECT_EQ(dead.count("dialog"), destroy ? 1u : 0u);
        if (!destroy) {
            delete dialog;
        }
        EXPECT_EQ(Loop().GetTrackingPane(), nullptr) << "a deleted pane is forgotten by the loop";
    }
}

TEST_F(PaneTreeTest, ScreenGeometryFollowsLocationsAndScrollOffsets) {
    // A container at (40, 20) of 100 x 100 pixels, scrolled by (30, 5), holds the child.
    const std::tuple<const char*, PLPoint, PLSize, PLRect, PLRect> rows[] = {
        {"inside", {35, 10}, {20, 20}, {45, 25, 65, 45}, {45, 25, 65, 45}},
        {"scrolled above the top", {10, 10}, {40, 20}, {20, 25, 60, 45}, {40, 25, 60, 45}},
        {"past the right edge", {50, 100}, {10, 40}, {60, 115, 70, 155}, {60, 115, 70, 120}},
        {"scrolled out entirely", {0, 0}, {20, 20}, {10, 15, 30, 35}, {}},
    };
    for (const auto& [name, childAt, childSize, screen, visible] : rows) {
        SCOPED_TRACE(name);
        PLView* container = Add(root.get(), new PLView(1, {40, 20}, {100, 100}));
        container->SetScrollOffset({30, 5}, false);
        PLView* child = Add(container, new PLView(2, childAt, childSize));
        EXPECT_EQ(child->GetScreenRect(), screen);
        EXPECT_EQ(child->GetVisibleScreenRect(), visible);
        const PLPoint local{3, 4};
        EXPECT_EQ(child->ScreenToLocal(child->LocalToScreen(local)), local);
        delete container;
    }
}

}  // namespace

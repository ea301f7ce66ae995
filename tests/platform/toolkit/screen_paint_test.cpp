// Repainting through the screen: dirty regions, clipping by ancestors, hidden and detached panes,
// bitmap backgrounds, and drawing suppression.
#include <gtest/gtest.h>

#include "PLTheme.h"
#include "gui_support.h"

namespace {

constexpr uint32_t kWhite = 0xFFFFFF;
constexpr uint32_t kRed = 0xFF0000;
constexpr uint32_t kBlue = 0x0000FF;
constexpr uint32_t kGreen = 0x00FF00;

// A pane whose Draw paints far beyond its own bounds, to prove that the clip holds it in.
class SprawlingPane : public RecordingPane {
public:
    using RecordingPane::RecordingPane;
    void Draw(PLDrawContext& context) override {
        ++paints;
        context.FillRect({-1000, -1000, 1000, 1000}, PLRGBColor(0, 0, 255));
    }
};

// A plain theme with a green bitmap background.
class GreenTheme : public PLTheme {
public:
    void DrawBmpBackground(PLDrawContext& context, const PLPane& pane) const override {
        context.FillRect(pane.GetBounds(), PLRGBColor(0, 255, 0));
    }
};

class ScreenPaintTest : public GuiTest {};

TEST_F(ScreenPaintTest, ChildPartlyOutsideItsParentPaintsOnlyInside) {
    // Parent (x 20..120, y 40..140), scrolled by (10, 0); the child sprawls everywhere.
    auto* parent = new RecordingPane("parent", &log, 1, {40, 20}, {100, 100});
    auto* child = new SprawlingPane("child", &log, 2, {80, 50}, {100, 100});
    root->AddSubPane(parent, false);
    parent->AddSubPane(child, false);
    parent->SetScrollOffset({10, 0}, false);
    Screen().InvalidateAll();
    ASSERT_TRUE(Screen().Update());
    struct Row {
        const char* name;
        int x;
        int y;
        uint32_t expected;
    };
    const Row rows[] = {
        {"child's own area", 80, 120, kBlue},
        {"child's first pixel", 70, 110, kBlue},
        {"parent above the child", 69, 109, kRed},
        {"child beyond the parent's bottom", 80, 140, kWhite},
        {"child beyond the parent's right", 120, 120, kWhite},
        {"parent's last pixel", 119, 139, kBlue},
        {"far away from both", 200, 10, kWhite},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ScreenPixel(row.x, row.y), row.expected);
    }
}

TEST_F(ScreenPaintTest, OnlyTheDirtyRegionIsRepainted) {
    auto* left = new RecordingPane("left", &log, 1, {0, 0}, {50, 50});
    auto* right = new RecordingPane("right", &log, 2, {0, 100}, {50, 50});
    root->AddSubPane(left, false);
    root->AddSubPane(right, false);
    Screen().PaintAll();
    left->paints = right->paints = root->paints = 0;
    right->Redraw();
    EXPECT_TRUE(Screen().HasDirtyRegion());
    EXPECT_TRUE(Screen().Update());
    EXPECT_EQ(left->paints, 0);
    EXPECT_EQ(right->paints, 1);
    EXPECT_EQ(root->paints, 1) << "the pane beneath is painted first";
    EXPECT_FALSE(Screen().Update()) << "nothing left to paint";
}

TEST_F(ScreenPaintTest, HiddenAndDetachedPanesAreNeverPainted) {
    struct Row {
        const char* name;
        bool hideParent;
        bool detachParent;
        uint32_t expected;
    };
    const Row rows[] = {
        {"shown and attached", false, false, kBlue},
        {"hidden parent hides its children", true, false, kWhite},
        {"parent not on the screen's root", false, true, kWhite},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto* parent = new PLView(1, {0, 0}, {60, 60});
        auto* child = new SprawlingPane("child", &log, 2, {10, 10}, {20, 20});
        root->AddSubPane(parent, false);
        parent->AddSubPane(child, false);
        if (row.hideParent) {
            parent->Hide(false);
        }
        if (row.detachParent) {
            root->RemoveSubPane(parent);
        }
        Screen().InvalidateAll();
        Screen().Update();
        child->HandleDraw(nullptr, nullptr, nullptr, nullptr);
        EXPECT_EQ(ScreenPixel(15, 15), row.expected);
        EXPECT_EQ(child->paints > 0, row.expected == kBlue);
        delete parent;  // when attached, deleting it also marks its area for repainting
        Screen().Update();
    }
}

TEST_F(ScreenPaintTest, BitmapBackgroundIsPaintedBeforeThePane) {
    PLThemeManager::SetCurrentTheme(new GreenTheme);
    auto* withBackground = new PLView(1, {0, 0}, {20, 20});
    auto* plain = new PLView(2, {0, 30}, {20, 20});
    withBackground->SetHasBmpBackground(true, false);
    root->AddSubPane(withBackground, false);
    root->AddSubPane(plain, false);
    Screen().PaintAll();
    EXPECT_EQ(ScreenPixel(5, 5), kGreen);
    EXPECT_EQ(ScreenPixel(35, 5), kWhite);
    PLThemeManager::SetCurrentTheme(nullptr);
}

TEST_F(ScreenPaintTest, RemovingAPaneRepaintsWhatWasBeneath) {
    auto* cover = new RecordingPane("cover", &log, 1, {0, 0}, {30, 30}, PLRGBColor(255, 0, 0));
    root->AddSubPane(cover, true);
    Loop().ProcessIdle();
    ASSERT_EQ(ScreenPixel(10, 10), kRed);
    root->RemoveSubPane(cover);
    Loop().ProcessIdle();
    EXPECT_EQ(ScreenPixel(10, 10), kWhite);
    delete cover;
}

TEST_F(ScreenPaintTest, NothingIsPaintedUntilTheLastSuppressionIsRemoved) {
    auto* pane = new RecordingPane("pane", &log, 1, {0, 0}, {30, 30}, PLRGBColor(255, 0, 0));
    root->AddSubPane(pane, false);
    PLPane::SuppressDrawing();
    PLPane::SuppressDrawing();
    pane->HandleDraw(nullptr, nullptr, nullptr, nullptr);
    pane->Redraw();
    Loop().ProcessIdle();
    EXPECT_EQ(pane->paints, 0) << "suppressed twice";
    EXPECT_EQ(ScreenPixel(10, 10), kWhite);
    PLPane::RemoveDrawingSuppression();
    Loop().ProcessIdle();
    EXPECT_EQ(pane->paints, 0) << "still suppressed once";
    PLPane::RemoveDrawingSuppression();
    EXPECT_FALSE(PLPane::IsDrawingSuppressed());
    EXPECT_EQ(pane->paints, 1) << "the last removal paints what was marked, once";
    EXPECT_EQ(ScreenPixel(10, 10), kRed);
}

TEST_F(ScreenPaintTest, HandleDrawPaintsAtOnceWithinTheGivenRegion) {
    auto* pane = new RecordingPane("pane", &log, 1, {0, 0}, {30, 30}, PLRGBColor(255, 0, 0));
    root->AddSubPane(pane, false);
    const PLRect region{0, 0, 10, 10};
    pane->HandleDraw(&region, nullptr, nullptr, nullptr);
    EXPECT_EQ(ScreenPixel(5, 5), kRed);
    EXPECT_EQ(ScreenPixel(15, 15), kWhite) << "outside the region";
}

}  // namespace

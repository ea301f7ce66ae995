// Repainting through the screen: clipping by ancestors, hidden and detached panes, bitmap
// backgrounds, removal, painting a region at once, dirty regions and drawing suppression.
#include <gtest/gtest.h>

#include <functional>

#include "PLTheme.h"
#include "gui_support.h"

namespace {

constexpr uint32_t kWhite = 0xFFFFFF, kRed = 0xFF0000, kBlue = 0x0000FF, kGreen = 0x00FF00;

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

class ScreenPaintTest : public GuiTest {
public:
    RecordingPane* Red(PLPoint at, PLSize size) {
        return new RecordingPane("red", &log, 1, at, size, PLRGBColor(255, 0, 0));
    }
    RecordingPane* Sprawling(PLPoint at, PLSize size) {
        return new SprawlingPane("blue", &log, 2, at, size);
    }
};

// Each row builds panes on a white screen, acts, and probes screen pixels (x, y, colour).
TEST_F(ScreenPaintTest, PanesPaintOnlyWhereTheyAreVisible) {
    struct Probe {
        int x, y;
        uint32_t rgb;
    };
    using Scene = std::function<void(ScreenPaintTest&)>;
    // A parent at x 0..60, y 0..60 holding a child that paints everything; `hide` and `detach`
    // change the parent before the child is asked to paint at once.
    auto nested = [](bool hide, bool detach) {
        return [hide, detach](ScreenPaintTest& t) {
            PLView* parent = t.Add(t.root.get(), new PLView(1, {0, 0}, {60, 60}));
            RecordingPane* child = t.Add(parent, t.Sprawling({10, 10}, {20, 20}));
            if (hide) {
                parent->Hide(false);
            }
            if (detach) {
                t.root->RemoveSubPane(parent);
                t.detached.reset(parent);
            }
            Screen().InvalidateAll();
            Screen().Update();
            child->HandleDraw(nullptr, nullptr, nullptr, nullptr);
        };
    };
    // clang-format off
    struct Row { const char* name; Scene scene; std::vector<Probe> probes; };
    const std::vector<Row> rows = {
        // Parent at x 20..120, y 40..140, scrolled by (10, 0); the child sprawls everywhere.
        {"a child is clipped by its scrolled parent", [](ScreenPaintTest& t) {
             RecordingPane* parent = t.Add(t.root.get(), t.Red({40, 20}, {100, 100}));
             t.Add(parent, t.Sprawling({80, 50}, {100, 100}));
             parent->SetScrollOffset({10, 0}, false);
             Screen().InvalidateAll();
             Screen().Update(); },
         {{80, 120, kBlue}, {70, 110, kBlue}, {69, 109, kRed}, {80, 140, kWhite}, {120, 120, kWhite},
          {119, 139, kBlue}, {200, 10, kWhite}}},
        {"a hidden parent hides its children", nested(true, false), {{15, 15, kWhite}}},
        {"a parent not on the screen's root", nested(false, true), {{15, 15, kWhite}}},
        {"the bitmap background is painted before the pane", [](ScreenPaintTest& t) {
             PLThemeManager::SetCurrentTheme(new GreenTheme);
             t.Add(t.root.get(), new PLView(1, {0, 0}, {20, 20}))->SetHasBmpBackground(true, false);
             t.Add(t.root.get(), new PLView(2, {0, 30}, {20, 20}));
             Screen().PaintAll();
             PLThemeManager::SetCurrentTheme(nullptr); },
         {{5, 5, kGreen}, {35, 5, kWhite}}},
        {"removing a pane repaints what was beneath", [](ScreenPaintTest& t) {
             RecordingPane* cover = t.Red({0, 0}, {30, 30});
             t.root->AddSubPane(cover, true);
             Loop().ProcessIdle();
             EXPECT_EQ(ScreenPixel(10, 10), kRed);
             t.root->RemoveSubPane(cover);
             t.detached.reset(cover);
             Loop().ProcessIdle(); },
         {{10, 10, kWhite}}},
        {"HandleDraw paints at once, only within the given region", [](ScreenPaintTest& t) {
             const PLRect region{0, 0, 10, 10};
             PLPane* pane = t.Add(t.root.get(), t.Red({0, 0}, {30, 30}));
             pane->HandleDraw(&region, nullptr, nullptr, nullptr); },
         {{5, 5, kRed}, {15, 15, kWhite}}},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ClearRoot();
        row.scene(*this);
        for (const Probe& p : row.probes) {
            EXPECT_EQ(ScreenPixel(p.x, p.y), p.rgb) << "at " << p.x << "," << p.y;
        }
        detached.reset();
    }
}

TEST_F(ScreenPaintTest, OnlyTheDirtyRegionIsRepaintedAndNotWhileSuppressed) {
    RecordingPane* left = Add(root.get(), Red({0, 0}, {50, 50}));
    RecordingPane* right = Add(root.get(), Red({0, 100}, {50, 50}));
    Screen().PaintAll();
    left->paints = right->paints = root->paints = 0;
    right->Redraw();
    EXPECT_TRUE(Screen().Update());
    EXPECT_EQ(left->paints, 0);
    EXPECT_EQ(right->paints, 1);
    EXPECT_EQ(root->paints, 1) << "the pane beneath is painted first";
    EXPECT_FALSE(Screen().Update()) << "nothing left to paint";

    right->paints = 0;
    PLPane::SuppressDrawing();
    PLPane::SuppressDrawing();
    left->HandleDraw(nullptr, nullptr, nullptr, nullptr);
    right->Redraw();
    Loop().ProcessIdle();
    PLPane::RemoveDrawingSuppression();
    Loop().ProcessIdle();
    EXPECT_EQ(left->paints + right->paints, 0) << "still suppressed once";
    PLPane::RemoveDrawingSuppression();
    EXPECT_FALSE(PLPane::IsDrawingSuppressed());
    EXPECT_EQ(left->paints, 1) << "the last removal paints what was marked, once";
    EXPECT_EQ(right->paints, 1);
}

}  // namespace

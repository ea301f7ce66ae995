// Drawing primitives checked pixel by pixel: fills, frames, lines, pixels, bitmaps, translation
// and clipping, including coordinates far outside any target.
#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <vector>

#include "PLBitmap.h"
#include "PLDrawContext.h"

namespace {

constexpr uint32_t kGround = 0xFF102030;
constexpr uint32_t kInk = 0xFFFF0000;
const PLRGBColor kInkColor(255, 0, 0);

PLBitmap Ground(int width, int height) {
    return PLBitmap(width, height, std::vector<uint32_t>(size_t(width) * size_t(height), kGround));
}

// Pixels that are no longer the ground colour.
std::vector<PLPoint> Changed(const PLBitmap& bitmap) {
    std::vector<PLPoint> changed;
    for (int y = 0; y < bitmap.GetHeight(); ++y) {
        for (int x = 0; x < bitmap.GetWidth(); ++x) {
            if (bitmap.GetPixel(x, y) != kGround) {
                changed.push_back({y, x});
            }
        }
    }
    return changed;
}

struct Probe {
    int x;
    int y;
    uint32_t argb;
};

TEST(DrawPrimitives, ShapesLandOnExactlyTheirPixels) {
    struct Row {
        const char* name;
        std::function<void(PLDrawContext&)> draw;
        size_t changedCount;
        std::vector<Probe> probes;
    };
    // clang-format off
    const std::vector<Row> rows = {
        {"fill: bottom row and right column excluded",
         [](auto& c) { c.FillRect({2, 3, 5, 8}, kInkColor); },
         15, {{3, 2, kInk}, {7, 4, kInk}, {8, 4, kGround}, {3, 5, kGround}, {2, 2, kGround}}},
        {"fill with the fore colour",
         [](auto& c) { c.SetForeColor(kInkColor); c.FillRect({0, 0, 1, 4}); },
         4, {{0, 0, kInk}, {3, 0, kInk}, {4, 0, kGround}}},
        {"empty and inverted rectangles draw nothing",
         [](auto& c) { c.FillRect({5, 5, 5, 9}, kInkColor); c.FillRect({9, 9, 4, 4}, kInkColor); c.FrameRect({9, 9, 4, 4}, kInkColor); },
         0, {}},
        {"frame: a one-pixel ring inside the rectangle",
         [](auto& c) { c.FrameRect({2, 3, 6, 9}, kInkColor); },
         16, {{3, 2, kInk}, {8, 5, kInk}, {3, 5, kInk}, {8, 2, kInk}, {5, 4, kGround}, {9, 2, kGround}}},
        {"frame of a single row",
         [](auto& c) { c.FrameRect({4, 0, 5, 6}, kInkColor); }, 6, {{0, 4, kInk}, {5, 4, kInk}}},
        {"shallow line: both ends drawn, one pixel per column",
         [](auto& c) { c.DrawLine({1, 1}, {4, 10}, kInkColor); },
         10, {{1, 1, kInk}, {10, 4, kInk}, {11, 4, kGround}}},
        {"the same line drawn backwards keeps its ends",
         [](auto& c) { c.DrawLine({4, 10}, {1, 1}, kInkColor); },
         10, {{1, 1, kInk}, {10, 4, kInk}}},
        {"steep line: one pixel per row",
         [](auto& c) { c.DrawLine({0, 2}, {9, 5}, kInkColor); }, 10, {{2, 0, kInk}, {5, 9, kInk}}},
        {"vertical line includes both ends",
         [](auto& c) { c.DrawLine({2, 5}, {9, 5}, kInkColor); },
         8, {{5, 2, kInk}, {5, 9, kInk}, {5, 10, kGround}}},
        {"a line of no length is one pixel",
         [](auto& c) { c.DrawLine({3, 3}, {3, 3}, kInkColor); }, 1, {{3, 3, kInk}}},
        {"set pixel", [](auto& c) { c.SetPixel({7, 2}, kInkColor); }, 1, {{2, 7, kInk}}},
        {"half-transparent fill blends over the ground",
         [](auto& c) { c.FillRect({0, 0, 1, 1}, PLRGBColor(255, 255, 255, 128)); },
         1, {{0, 0, 0xFF889098}}},
        {"fully transparent fill leaves the ground",
         [](auto& c) { c.FillRect({0, 0, 10, 10}, PLRGBColor(255, 255, 255, 0)); }, 0, {}},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLBitmap target = Ground(20, 12);
        PLDrawContext context(target);
        row.draw(context);
        EXPECT_EQ(Changed(target).size(), row.changedCount);
        for (const Probe& p : row.probes) {
            EXPECT_EQ(target.GetPixel(p.x, p.y), p.argb) << "at " << p.x << "," << p.y;
        }
    }
}

// A context whose local (0, 0) is at target (5, 10) and which may draw only in (5, 10)-(15, 20).
TEST(DrawPrimitives, WildCoordinatesNeverReachOutsideTheClip) {
    const PLRect clip{5, 10, 15, 20};
    PLBitmap badge(8, 8, std::vector<uint32_t>(64, kInk));
    struct Row {
        const char* name;
        std::function<void(PLDrawContext&)> draw;
        long changedInside;  // -1: some, but how many depends on the font
    };
    // clang-format off
    const std::vector<Row> rows = {
        {"fill of the whole integer range",
         [](auto& c) { c.FillRect({INT_MIN, INT_MIN, INT_MAX, INT_MAX}, kInkColor); }, 100},
        {"frame of the whole integer range (its edges are far away)",
         [](auto& c) { c.FrameRect({INT_MIN, INT_MIN, INT_MAX, INT_MAX}, kInkColor); }, 0},
        {"diagonal across the integer range",
         [](auto& c) { c.DrawLine({INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}, kInkColor); }, 10},
        {"horizontal line from far left to far right",
         [](auto& c) { c.DrawLine({3, -2000000000}, {3, 2000000000}, kInkColor); }, 10},
        {"line entirely outside", [](auto& c) { c.DrawLine({-50, -40}, {-1, 500}, kInkColor); }, 0},
        {"pixels at the extremes",
         [](auto& c) { c.SetPixel({INT_MIN, INT_MIN}, kInkColor); c.SetPixel({INT_MAX, INT_MAX}, kInkColor); c.SetPixel({-1, 0}, kInkColor); },
         0},
        {"bitmap at the far ends",
         [&badge](auto& c) { c.DrawBitmap(badge, {INT_MAX, INT_MAX}); c.DrawBitmap(badge, {INT_MIN, INT_MIN}); },
         0},
        {"bitmap with a source rectangle of the whole integer range",
         [&badge](auto& c) { c.DrawBitmap(badge, {INT_MIN, INT_MIN, INT_MAX, INT_MAX}, {-3, -3}); },
         0},
        {"text in a rectangle of the whole integer range",
         [](auto& c) { c.SetTextColor(kInkColor); c.DrawString("WWWWWWWW", {INT_MIN, INT_MIN, INT_MAX, INT_MAX}, {INT_MAX, INT_MAX}, -1, false, kPLJustifyRight); c.DrawString("WWWW", {-5, -5, 30, 30}, kNullPoint, -1, false, kPLJustifyLeft); },
         -1},
        {"a narrower clip narrows further",
         [](auto& c) { c.ClipTo({2, 2, INT_MAX, 4}); c.FillRect({INT_MIN, INT_MIN, INT_MAX, INT_MAX}, kInkColor); },
         16},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLBitmap target = Ground(30, 20);
        PLDrawContext context(target, {5, 10}, clip);
        row.draw(context);
        const std::vector<PLPoint> changed = Changed(target);
        for (const PLPoint& p : changed) {
            EXPECT_TRUE(clip.Contains(p)) << "wrote at " << p.h << "," << p.v;
        }
        if (row.changedInside < 0) {
            EXPECT_FALSE(changed.empty());
        } else {
            EXPECT_EQ(changed.size(), size_t(row.changedInside));
        }
    }
}

TEST(DrawPrimitives, BitmapPartIsCopiedWithAlphaBlending) {
    // A 4 x 4 bitmap: column x has alpha 0, 128, 255, 255; red rises with y.
    std::vector<uint32_t> pixels;
    const uint32_t alphas[4] = {0, 128, 255, 255};
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 4; ++x) {
            pixels.push_back((alphas[x] << 24) | (uint32_t(60 * y) << 16) | 0x0000FF);
        }
    }
    const PLBitmap picture(4, 4, pixels);
    struct Row {
        const char* name;
        PLRect source;
        PLPoint at;
        size_t changed;
        std::vector<Probe> probes;
    };
    // clang-format off
    const std::vector<Row> rows = {
        {"whole bitmap: transparent column untouched",
         {0, 0, 4, 4}, {2, 3}, 12, {{3, 2, kGround}, {5, 2, 0xFF0000FF}, {6, 5, 0xFFB400FF}}},
        {"source part lands at its position",
         {1, 2, 3, 4}, {0, 0}, 4, {{0, 0, 0xFF3C00FF}, {1, 1, 0xFF7800FF}, {2, 0, kGround}}},
        {"half-transparent column is blended", {0, 1, 1, 2}, {0, 0}, 1, {{0, 0, 0xFF081098}}},
        {"source part partly outside the bitmap keeps its placement",
         {-2, -2, 2, 4}, {0, 0}, 6, {{4, 2, 0xFF0000FF}, {4, 3, 0xFF3C00FF}, {3, 2, 0xFF081098}, {2, 2, kGround}}},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLBitmap target = Ground(10, 8);
        PLDrawContext context(target);
        if (row.source == PLRect{0, 0, 4, 4}) {
            context.DrawBitmap(picture, row.at);
        } else {
            context.DrawBitmap(picture, row.source, row.at);
        }
        EXPECT_EQ(Changed(target).size(), row.changed);
        for (const Probe& p : row.probes) {
            EXPECT_EQ(target.GetPixel(p.x, p.y), p.argb) << "at " << p.x << "," << p.y;
        }
    }
}

TEST(DrawPrimitives, CopyPixelsClipsBothRectangles) {
    std::vector<uint32_t> pixels(16);
    for (size_t i = 0; i < pixels.size(); ++i) {
        pixels[i] = 0xFF000000u | uint32_t(i + 1);
    }
    const PLBitmap source(4, 4, pixels);
    struct Row {
        const char* name;
        PLRect from;
        PLRect to;
        size_t changed;
        std::vector<Probe> probes;
    };
    // clang-format off
    const std::vector<Row> rows = {
        {"whole to whole",
         {0, 0, 4, 4}, {1, 1, 5, 5}, 16, {{1, 1, 0xFF000001}, {4, 4, 0xFF000010}}},
        {"smaller extent wins",
         {0, 0, 4, 4}, {0, 0, 2, 3}, 6, {{2, 1, 0xFF000007}, {3, 0, kGround}}},
        {"source partly outside",
         {-1, -1, 2, 2}, {0, 0, 3, 3}, 4, {{0, 0, kGround}, {1, 1, 0xFF000001}, {2, 2, 0xFF000006}}},
        {"destination partly outside",
         {0, 0, 4, 4}, {-2, 4, 2, 8}, 8, {{4, 0, 0xFF000009}, {5, 1, 0xFF00000E}, {3, 0, kGround}}},
        {"huge rectangles at the same place copy in place",
         {INT_MIN, INT_MIN, INT_MAX, INT_MAX}, {INT_MIN, INT_MIN, INT_MAX, INT_MAX}, 16, {{3, 3, 0xFF000010}}},
        {"huge source beside a small destination",
         {INT_MIN, INT_MIN, INT_MAX, INT_MAX}, {0, 0, 4, 4}, 0, {}},
        {"stretching a column across, as a header band is made",
         {0, 1, 4, 2}, {0, 5, 4, 6}, 4, {{5, 0, 0xFF000002}, {5, 3, 0xFF00000E}}},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLBitmap target = Ground(8, 5);
        target.CopyPixels(source, row.from, row.to);
        EXPECT_EQ(Changed(target).size(), row.changed);
        for (const Probe& p : row.probes) {
            EXPECT_EQ(target.GetPixel(p.x, p.y), p.argb) << "at " << p.x << "," << p.y;
        }
    }
}

}  // namespace

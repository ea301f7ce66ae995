// Drawing primitives checked pixel by pixel: fills, frames, lines, pixels, bitmaps, pixel copies,
// translation and clipping, including coordinates far outside any target.
#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <vector>

#include "PLDrawContext.h"
#include "toolkit_support.h"

namespace {

constexpr uint32_t kGround = 0xFF102030;
constexpr uint32_t kInk = 0xFFFF0000;
const PLRGBColor kInkColor(255, 0, 0);
constexpr PLRect kHuge{INT_MIN, INT_MIN, INT_MAX, INT_MAX};

// A 4 x 4 bitmap made of `pixel(x, y)`.
template <typename Pixel>
PLBitmap Picture(Pixel pixel) {
    std::vector<uint32_t> pixels;
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 4; ++x) {
            pixels.push_back(pixel(x, y));
        }
    }
    return PLBitmap(4, 4, pixels);
}

TEST(DrawPrimitives, ShapesBitmapsAndCopiesLandOnExactlyTheirPixels) {
    // Column x has alpha 0, 128, 255, 255; red rises with y.
    const PLBitmap picture = Picture([](int x, int y) {
        const uint32_t alphas[4] = {0, 128, 255, 255};
        return (alphas[x] << 24) | (uint32_t(60 * y) << 16) | 0x0000FF;
    });
    const PLBitmap numbered =
        Picture([](int x, int y) { return 0xFF000001u + uint32_t(4 * y + x); });
    // clang-format off
    struct Probe { int x, y; uint32_t argb; };
    // clang-format on
    struct Row {
        const char* name;
        std::function<void(PLBitmap&, PLDrawContext&)> draw;
        size_t changed;
        std::vector<Probe> probes;
    };
    // clang-format off
    const std::vector<Row> rows = {
        {"fill: bottom row and right column excluded",
         [](auto&, auto& c) { c.FillRect({2, 3, 5, 8}, kInkColor); }, 
         15, {{3, 2, kInk}, {7, 4, kInk}, {8, 4, kGround}, {3, 5, kGround}, {2, 2, kGround}}},
        {"empty and inverted rectangles draw nothing",
         [](auto&, auto& c) { c.FillRect({5, 5, 5, 9}, kInkColor);
                              c.FillRect({9, 9, 4, 4}, kInkColor);
                              c.FrameRect({9, 9, 4, 4}, kInkColor); },
         0, {}},
        {"frame: a one-pixel ring inside the rectangle",
         [](auto&, auto& c) { c.FrameRect({2, 3, 6, 9}, kInkColor); },
         16, {{3, 2, kInk}, {8, 5, kInk}, {3, 5, kInk}, {8, 2, kInk}, {5, 4, kGround},
              {9, 2, kGround}}},
        {"frame of a single row", [](auto&, auto& c) { c.FrameRect({4, 0, 5, 6}, kInkColor); }, 6,
         {{0, 4, kInk}, {5, 4, kInk}}},
        {"shallow line: both ends drawn, one pixel per column",
         [](auto&, auto& c) { c.DrawLine({1, 1}, {4, 10}, kInkColor); }, 
         10, {{1, 1, kInk}, {10, 4, kInk}, {11, 4, kGround}}},
        {"the same line drawn backwards keeps its ends",
         [](auto&, auto& c) { c.DrawLine({4, 10}, {1, 1}, kInkColor); }, 
         10, {{1, 1, kInk}, {10, 4, kInk}}},
        {"steep line: one pixel per row",
         [](auto&, auto& c) { c.DrawLine({0, 2}, {9, 5}, kInkColor); }, 10,
         {{2, 0, kInk}, {5, 9, kInk}}},
        {"vertical line includes both ends",
         [](auto&, auto& c) { c.DrawLine({2, 5}, {9, 5}, kInkColor); }, 
         8, {{5, 2, kInk}, {5, 9, kInk}, {5, 10, kGround}}},
        {"a line of no length is one pixel",
         [](auto&, auto& c) { c.DrawLine({3, 3}, {3, 3}, kInkColor); }, 1, {{3, 3, kInk}}},
        {"set pixel", [](auto&, auto& c) { c.SetPixel({7, 2}, kInkColor); }, 1, {{2, 7, kInk}}},
        {"half-transparent fill blends over the ground",
         [](auto&, auto& c) { c.FillRect({0, 0, 1, 1}, PLRGBColor(255, 255, 255, 128)); }, 1,
         {{0, 0, 0xFF889098}}},
        {"fully transparent fill leaves the ground",
         [](auto&, auto& c) { c.FillRect({0, 0, 10, 10}, PLRGBColor(255, 255, 255, 0)); }, 0, {}},
        {"whole bitmap: transparent column untouched",
         [&](auto&, auto& c) { c.DrawBitmap(picture, {2, 3}); }, 
         12, {{3, 2, kGround}, {5, 2, 0xFF0000FF}, {6, 5, 0xFFB400FF}}},
        {"bitmap part lands at its position",
         [&](auto&, auto& c) { c.DrawBitmap(picture, {1, 2, 3, 4}, {0, 0}); }, 
         4, {{0, 0, 0xFF3C00FF}, {1, 1, 0xFF7800FF}, {2, 0, kGround}}},
        {"half-transparent bitmap column is blended",
         [&](auto&, auto& c) { c.DrawBitmap(picture, {0, 1, 1, 2}, {0, 0}); }, 
         1, {{0, 0, 0xFF081098}}},
        {"bitmap part partly outside the bitmap keeps its placement",
         [&](auto&, auto& c) { c.DrawBitmap(picture, {-2, -2, 2, 4}, {0, 0}); },
         6, {{4, 2, 0xFF0000FF}, {4, 3, 0xFF3C00FF}, {3, 2, 0xFF081098}, {2, 2, kGround}}},
        {"copy whole to whole",
         [&](auto& t, auto&) { t.CopyPixels(numbered, {0, 0, 4, 4}, {1, 1, 5, 5}); }, 
         16, {{1, 1, 0xFF000001}, {4, 4, 0xFF000010}}},
        {"copy: smaller extent wins",
         [&](auto& t, auto&) { t.CopyPixels(numbered, {0, 0, 4, 4}, {0, 0, 2, 3}); }, 
         6, {{2, 1, 0xFF000007}, {3, 0, kGround}}},
        {"copy: source partly outside",
         [&](auto& t, auto&) { t.CopyPixels(numbered, {-1, -1, 2, 2}, {0, 0, 3, 3}); }, 
         4, {{0, 0, kGround}, {1, 1, 0xFF000001}, {2, 2, 0xFF000006}}},
        {"copy: destination partly outside",
         [&](auto& t, auto&) { t.CopyPixels(numbered, {0, 0, 4, 4}, {-2, 4, 2, 8}); }, 
         8, {{4, 0, 0xFF000009}, {5, 1, 0xFF00000E}, {3, 0, kGround}}},
        {"copy: huge rectangles at the same place copy in place",
         [&](auto& t, auto&) { t.CopyPixels(numbered, kHuge, kHuge); }, 
         16, {{3, 3, 0xFF000010}}},
        {"copy: huge source beside a small destination",
         [&](auto& t, auto&) { t.CopyPixels(numbered, kHuge, {0, 0, 4, 4}); }, 0, {}},
        {"copy: stretching a column across, as a header band is made",
         [&](auto& t, auto&) { t.CopyPixels(numbered, {0, 1, 4, 2}, {0, 5, 4, 6}); }, 4,
         {{5, 0, 0xFF000002}, {5, 3, 0xFF00000E}}},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLBitmap target = Filled(20, 12, kGround);
        PLDrawContext context(target);
        row.draw(target, context);
        EXPECT_EQ(Changed(target, kGround).size(), row.changed);
        for (const Probe& p : row.probes) {
            EXPECT_EQ(target.GetPixel(p.x, p.y), p.argb) << "at " << p.x << "," << p.y;
        }
    }
}

// A context whose local (0, 0) is at target (5, 10) and which may draw only in (5, 10)-(15, 20).
TEST(DrawPrimitives, WildCoordinatesNeverReachOutsideTheClip) {
    const PLRect clip{5, 10, 15, 20};
    const PLBitmap badge = Filled(8, 8, kInk);
    struct Row {
        const char* name;
        std::function<void(PLDrawContext&)> draw;
        long changedInside;  // -1: some, but how many depends on the font
    };
    // clang-format off
    const std::vector<Row> rows = {
        {"fill of the whole integer range", [](auto& c) { c.FillRect(kHuge, kInkColor); }, 100},
        {"frame of the whole integer range (its edges are far away)",
         [](auto& c) { c.FrameRect(kHuge, kInkColor); }, 0},
        {"diagonal across the integer range",
         [](auto& c) { c.DrawLine({INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}, kInkColor); }, 10},
        {"horizontal line from far left to far right",
         [](auto& c) { c.DrawLine({3, -2000000000}, {3, 2000000000}, kInkColor); }, 10},
        {"line entirely outside", [](auto& c) { c.DrawLine({-50, -40}, {-1, 500}, kInkColor); }, 0},
        {"pixels at the extremes",
         [](auto& c) { c.SetPixel({INT_MIN, INT_MIN}, kInkColor);
                       c.SetPixel({INT_MAX, INT_MAX}, kInkColor);
                       c.SetPixel({-1, 0}, kInkColor); }, 0},
        {"bitmap at the far ends",
         [&](auto& c) { c.DrawBitmap(badge, {INT_MAX, INT_MAX});
                        c.DrawBitmap(badge, {INT_MIN, INT_MIN}); },
         0},
        {"bitmap with a source rectangle of the whole integer range",
         [&](auto& c) { c.DrawBitmap(badge, kHuge, {-3, -3}); }, 0},
        {"text in a rectangle of the whole integer range",
         [](auto& c) { c.SetTextColor(kInkColor);
                       c.DrawString("WWWWWWWW", kHuge, {INT_MAX, INT_MAX}, -1, false,
                                    kPLJustifyRight);
                       c.DrawString("WWWW", {-5, -5, 30, 30}, kNullPoint, -1, false,
                                    kPLJustifyLeft); },
         -1},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLBitmap target = Filled(30, 20, kGround);
        PLDrawContext context(target, {5, 10}, clip);
        row.draw(context);
        const std::vector<PLPoint> changed = Changed(target, kGround);
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

}  // namespace

// A point or a size of the toolkit: the vertical value comes first, as everywhere in the toolkit.
#pragma once

struct PLPoint {
    int v = 0;  // vertical (y, or height for a size)
    int h = 0;  // horizontal (x, or width for a size)

    constexpr PLPoint() = default;
    constexpr PLPoint(int vertical, int horizontal) : v(vertical), h(horizontal) {}

    constexpr bool operator==(const PLPoint&) const = default;
    constexpr PLPoint operator+(const PLPoint& o) const { return {v + o.v, h + o.h}; }
    constexpr PLPoint operator-(const PLPoint& o) const { return {v - o.v, h - o.h}; }
};

// Sizes are points too: (height, width).
using PLSize = PLPoint;

constexpr PLPoint kNullPoint{0, 0};

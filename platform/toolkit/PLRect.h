// A rectangle of the toolkit: top, left, bottom, right; bottom and right are exclusive.
#pragma once

#include <algorithm>

#include "PLPoint.h"

struct PLRect {
    int top = 0;
    int left = 0;
    int bottom = 0;
    int right = 0;

    constexpr PLRect() = default;
    constexpr PLRect(int t, int l, int b, int r) : top(t), left(l), bottom(b), right(r) {}
    // A rectangle from its top-left point and its size (height, width).
    static constexpr PLRect FromPointSize(PLPoint at, PLSize size) {
        return {at.v, at.h, at.v + size.v, at.h + size.h};
    }

    constexpr int Width() const { return right - left; }
    constexpr int Height() const { return bottom - top; }
    constexpr bool IsEmpty() const { return right <= left || bottom <= top; }
    constexpr PLPoint TopLeft() const { return {top, left}; }
    constexpr PLSize Size() const { return {Height(), Width()}; }

    constexpr bool Contains(PLPoint p) const {
        return p.v >= top && p.v < bottom && p.h >= left && p.h < right;
    }
    // Shrinks the rectangle by dv at top and bottom and dh at left and right (negative grows it).
    constexpr void Inset(int dv, int dh) {
        top += dv;
        bottom -= dv;
        left += dh;
        right -= dh;
    }
    constexpr PLRect Insetted(int dv, int dh) const {
        PLRect r = *this;
        r.Inset(dv, dh);
        return r;
    }
    constexpr void Offset(int dv, int dh) {
        top += dv;
        bottom += dv;
        left += dh;
        right += dh;
    }
    constexpr PLRect Offsetted(int dv, int dh) const {
        PLRect r = *this;
        r.Offset(dv, dh);
        return r;
    }
    constexpr PLRect Intersect(const PLRect& o) const {
        PLRect r{std::max(top, o.top), std::max(left, o.left), std::min(bottom, o.bottom),
                 std::min(right, o.right)};
        if (r.IsEmpty()) {
            return {};
        }
        return r;
    }
    constexpr PLRect Union(const PLRect& o) const {
        if (IsEmpty()) {
            return o;
        }
        if (o.IsEmpty()) {
            return *this;
        }
        return {std::min(top, o.top), std::min(left, o.left), std::max(bottom, o.bottom),
                std::max(right, o.right)};
    }
    constexpr bool operator==(const PLRect&) const = default;
};

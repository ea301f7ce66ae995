// Drawing into ARGB pixels: every operation is clipped to the target and the context's clip,
// whatever coordinates it is given.
#include "PLDrawContext.h"

#include <algorithm>

#include "PLBitmap.h"
#include "PLFont.h"
#include "PLTheme.h"

namespace {

// Coordinates are held within this range after translation: far beyond any target, and small
// enough that rectangle arithmetic on them cannot overflow.
constexpr int64_t kFar = int64_t(1) << 29;

int Clamp(int64_t value) {
    return int(std::clamp(value, -kFar, kFar));
}

// Source-over blending of one ARGB colour onto an ARGB pixel.
inline uint32_t Blend(uint32_t dst, uint32_t src) {
    const uint32_t a = src >> 24;
    if (a == 255) {
        return src;
    }
    if (a == 0) {
        return dst;
    }
    const uint32_t inv = 255 - a;
    auto channel = [&](int shift) {
        const uint32_t s = (src >> shift) & 0xFF;
        const uint32_t d = (dst >> shift) & 0xFF;
        return ((s * a + d * inv + 127) / 255) << shift;
    };
    const uint32_t outAlpha = a + (((dst >> 24) * inv + 127) / 255);
    return (outAlpha << 24) | channel(16) | channel(8) | channel(0);
}

__extension__ typedef __int128 Wide;

}  // namespace

PLDrawContext::PLDrawContext(PLBitmap& target, PLPoint origin, const PLRect& clip)
    : mTarget(target),
      mOrigin(origin),
      mClip(clip.Intersect({0, 0, target.GetHeight(), target.GetWidth()})) {}

PLDrawContext::PLDrawContext(PLBitmap& target)
    : PLDrawContext(target, kNullPoint, {0, 0, target.GetHeight(), target.GetWidth()}) {}

PLRect PLDrawContext::GetClipRect() const {
    if (mClip.IsEmpty()) {
        return {};
    }
    return mClip.Offsetted(-mOrigin.v, -mOrigin.h);
}

void PLDrawContext::ClipTo(const PLRect& local) {
    mClip = mClip.Intersect(ToTarget(local));
}

PLFont* PLDrawContext::GetFont() const {
    return mFont != nullptr ? mFont : PLFont::GetDefaultFont();
}

PLRect PLDrawContext::ToTarget(const PLRect& local) const {
    return {Clamp(int64_t(local.top) + mOrigin.v), Clamp(int64_t(local.left) + mOrigin.h),
            Clamp(int64_t(local.bottom) + mOrigin.v), Clamp(int64_t(local.right) + mOrigin.h)};
}

PLRGBColor PLDrawContext::Resolve(const PLRGBColor& color) {
    if (!color.isDefault) {
        return color;
    }
    return PLThemeManager::GetCurrentTheme()->GetTextColor();
}

void PLDrawContext::BlendPixel(int x, int y, uint32_t argb) {
    if (!mClip.Contains({y, x})) {
        return;
    }
    uint32_t& pixel = mTarget.Pixels()[size_t(y) * size_t(mTarget.GetWidth()) + size_t(x)];
    pixel = Blend(pixel, argb);
}

void PLDrawContext::FillTargetRect(const PLRect& target, uint32_t argb) {
    const PLRect area = target.Intersect(mClip);
    if (area.IsEmpty() || (argb >> 24) == 0) {
        return;
    }
    const size_t stride = size_t(mTarget.GetWidth());
    for (int y = area.top; y < area.bottom; ++y) {
        uint32_t* row = mTarget.Pixels() + size_t(y) * stride;
        if ((argb >> 24) == 255) {
            std::fill(row + area.left, row + area.right, argb);
        } else {
            for (int x = area.left; x < area.right; ++x) {
                row[x] = Blend(row[x], argb);
            }
        }
    }
}

void PLDrawContext::FillRect(const PLRect& rect) {
    FillRect(rect, mForeColor);
}

void PLDrawContext::FillRect(const PLRect& rect, const PLRGBColor& color) {
    FillTargetRect(ToTarget(rect), Resolve(color).ToARGB());
}

void PLDrawContext::FrameRect(const PLRect& rect) {
    FrameRect(rect, mForeColor);
}

void PLDrawContext::FrameRect(const PLRect& rect, const PLRGBColor& color) {
    const PLRect r = ToTarget(rect);
    if (r.IsEmpty()) {
        return;
    }
    const uint32_t argb = Resolve(color).ToARGB();
    FillTargetRect({r.top, r.left, r.top + 1, r.right}, argb);
    if (r.Height() > 1) {
        FillTargetRect({r.bottom - 1, r.left, r.bottom, r.right}, argb);
    }
    // The side columns between the top and bottom rows, so that no corner is blended twice.
    FillTargetRect({r.top + 1, r.left, r.bottom - 1, r.left + 1}, argb);
    if (r.Width() > 1) {
        FillTargetRect({r.top + 1, r.right - 1, r.bottom - 1, r.right}, argb);
    }
}

void PLDrawContext::DrawLine(PLPoint from, PLPoint to) {
    DrawLine(from, to, mForeColor);
}

void PLDrawContext::DrawLine(PLPoint from, PLPoint to, const PLRGBColor& color) {
    const uint32_t argb = Resolve(color).ToARGB();
    const int64_t x0 = int64_t(from.h) + mOrigin.h;
    const int64_t y0 = int64_t(from.v) + mOrigin.v;
    const int64_t x1 = int64_t(to.h) + mOrigin.h;
    const int64_t y1 = int64_t(to.v) + mOrigin.v;
    if (mClip.IsEmpty()) {
        return;
    }
    const int64_t dx = x1 - x0;
    const int64_t dy = y1 - y0;
    const int64_t ax = dx < 0 ? -dx : dx;
    const int64_t ay = dy < 0 ? -dy : dy;
    const bool xMajor = ax >= ay;
    // Step along the major axis; the minor coordinate of step i is the exact line's value
    // rounded to the nearest pixel, which is what Bresenham's error term tracks. Only the steps
    // whose major coordinate lies inside the clip are visited, so a line of any length costs at
    // most the clip's extent.
    const int64_t major0 = xMajor ? x0 : y0;
    const int64_t minor0 = xMajor ? y0 : x0;
    const int64_t steps = xMajor ? ax : ay;
    const int64_t minorSteps = xMajor ? ay : ax;
    const int64_t majorSign = (xMajor ? dx : dy) < 0 ? -1 : 1;
    const int64_t minorSign = (xMajor ? dy : dx) < 0 ? -1 : 1;
    const int64_t clipLo = xMajor ? mClip.left : mClip.top;
    const int64_t clipHi = (xMajor ? mClip.right : mClip.bottom) - 1;
    int64_t first = majorSign > 0 ? clipLo - major0 : major0 - clipHi;
    int64_t last = majorSign > 0 ? clipHi - major0 : major0 - clipLo;
    first = std::max<int64_t>(first, 0);
    last = std::min(last, steps);
    for (int64_t i = first; i <= last; ++i) {
        int64_t offset = 0;
        if (steps > 0) {
            offset = int64_t((Wide(2) * i * minorSteps + steps) / (Wide(2) * steps));
        }
        const int64_t major = major0 + majorSign * i;
        const int64_t minor = minor0 + minorSign * offset;
        const int64_t x = xMajor ? major : minor;
        const int64_t y = xMajor ? minor : major;
        if (x >= mClip.left && x < mClip.right && y >= mClip.top && y < mClip.bottom) {
            BlendPixel(int(x), int(y), argb);
        }
    }
}

void PLDrawContext::SetPixel(PLPoint at, const PLRGBColor& color) {
    const int64_t x = int64_t(at.h) + mOrigin.h;
    const int64_t y = int64_t(at.v) + mOrigin.v;
    if (x < mClip.left || x >= mClip.right || y < mClip.top || y >= mClip.bottom) {
        return;
    }
    BlendPixel(int(x), int(y), Resolve(color).ToARGB());
}

void PLDrawContext::DrawBitmap(const PLBitmap& bitmap, PLPoint at) {
    DrawBitmap(bitmap, {0, 0, bitmap.GetHeight(), bitmap.GetWidth()}, at);
}

void PLDrawContext::DrawBitmap(const PLBitmap& bitmap, const PLRect& source, PLPoint at) {
    const PLRect part = source.Intersect({0, 0, bitmap.GetHeight(), bitmap.GetWidth()});
    if (part.IsEmpty()) {
        return;
    }
    // Where the first kept source pixel lands, in target coordinates.
    const int64_t destTop = int64_t(at.v) + mOrigin.v + (int64_t(part.top) - source.top);
    const int64_t destLeft = int64_t(at.h) + mOrigin.h + (int64_t(part.left) - source.left);
    const PLRect dest = PLRect{Clamp(destTop), Clamp(destLeft), Clamp(destTop + part.Height()),
                               Clamp(destLeft + part.Width())}
                            .Intersect(mClip);
    if (dest.IsEmpty()) {
        return;
    }
    const size_t stride = size_t(mTarget.GetWidth());
    for (int y = dest.top; y < dest.bottom; ++y) {
        const int sy = int(part.top + (y - destTop));
        uint32_t* row = mTarget.Pixels() + size_t(y) * stride;
        for (int x = dest.left; x < dest.right; ++x) {
            const int sx = int(part.left + (x - destLeft));
            row[x] = Blend(row[x], bitmap.GetPixel(sx, sy));
        }
    }
}

void PLDrawContext::DrawString(const PLBasicString<char>& text, const PLRect& rect, PLPoint offset,
                               long length, bool centred, long justification) {
    DrawString(text.view(), rect, offset, length, centred, justification);
}

void PLDrawContext::DrawString(std::string_view text, const PLRect& rect, PLPoint offset,
                               long length, bool centred, long justification) {
    if (length > 0 && size_t(length) < text.size()) {
        text = text.substr(0, size_t(length));
    }
    if (text.empty() || rect.IsEmpty()) {
        return;
    }
    PLFont* font = GetFont();
    const int64_t width = font->MeasureText(text);
    const PLRect area = ToTarget(rect);
    int64_t penX = 0;
    switch (justification) {
        case kPLJustifyRight:
            penX = int64_t(area.right) - offset.h - width;
            break;
        case kPLJustifyCenter:
            penX = int64_t(area.left) + (int64_t(area.Width()) - width) / 2;
            break;
        default:
            penX = int64_t(area.left) + offset.h;
            break;
    }
    const int64_t lineHeight = font->GetLineHeight();
    const int64_t top = centred ? int64_t(area.top) + (int64_t(area.Height()) - lineHeight) / 2
                                : int64_t(area.top) + offset.v;
    const int64_t baseline = top + font->GetAscent();

    const PLRect savedClip = mClip;
    mClip = mClip.Intersect(area);
    if (!mClip.IsEmpty()) {
        const uint32_t argb = Resolve(mTextColor).ToARGB();
        for (size_t pos = 0; pos < text.size() && penX < mClip.right;) {
            const PLGlyph* glyph = font->GetGlyph(PLFont::DecodeUTF8(text, pos));
            DrawGlyph(*glyph, penX, baseline, argb);
            penX += glyph->advance;
        }
    }
    mClip = savedClip;
}

void PLDrawContext::DrawGlyph(const PLGlyph& glyph, int64_t penX, int64_t baseline, uint32_t argb) {
    const int64_t left = penX + glyph.left;
    const int64_t top = baseline - glyph.top;
    const int64_t x0 = std::max<int64_t>(left, mClip.left);
    const int64_t x1 = std::min<int64_t>(left + glyph.width, mClip.right);
    const int64_t y0 = std::max<int64_t>(top, mClip.top);
    const int64_t y1 = std::min<int64_t>(top + glyph.height, mClip.bottom);
    if (x0 >= x1 || y0 >= y1) {
        return;
    }
    const uint32_t alpha = argb >> 24;
    const uint32_t rgb = argb & 0x00FFFFFF;
    const size_t stride = size_t(mTarget.GetWidth());
    for (int64_t y = y0; y < y1; ++y) {
        const uint8_t* coverage = glyph.coverage.data() + size_t(y - top) * size_t(glyph.width);
        uint32_t* row = mTarget.Pixels() + size_t(y) * stride;
        for (int64_t x = x0; x < x1; ++x) {
            const uint32_t c = coverage[x - left];
            if (c == 0) {
                continue;
            }
            const uint32_t a = (c * alpha + 127) / 255;
            row[x] = Blend(row[x], (a << 24) | rgb);
        }
    }
}

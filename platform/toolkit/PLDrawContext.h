// Paints into a 32-bit pixel target (the screen or a bitmap) in the local coordinates of one pane,
// clipped to the pane, its ancestors and the region being repainted.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "PLBasicString.h"
#include "PLPoint.h"
#include "PLRGBColor.h"
#include "PLRect.h"

class PLBitmap;
class PLFont;
struct PLGlyph;

// Horizontal justification for DrawString.
enum PLJustification : long {
    kPLJustifyCenter = 0,
    kPLJustifyLeft = 1,
    kPLJustifyRight = 2,
};

class PLDrawContext {
public:
    // A context on `target`, whose local (0, 0) lies at `origin` of the target, drawing only
    // inside `clip` (target coordinates).
    PLDrawContext(PLBitmap& target, PLPoint origin, const PLRect& clip);
    // A context on a whole bitmap.
    explicit PLDrawContext(PLBitmap& target);

    PLPoint GetOrigin() const { return mOrigin; }
    // The clip in local coordinates.
    PLRect GetClipRect() const;
    // Narrows the clip to a local rectangle (intersected with the current clip).
    void ClipTo(const PLRect& local);

    void SetForeColor(const PLRGBColor& color) { mForeColor = color; }
    PLRGBColor GetForeColor() const { return mForeColor; }
    void SetTextColor(const PLRGBColor& color) { mTextColor = color; }
    PLRGBColor GetTextColor() const { return mTextColor; }
    void SetFont(PLFont* font) { mFont = font; }
    PLFont* GetFont() const;

    // Rectangles in local coordinates; the pixels of the bottom row and right column are outside.
    void FillRect(const PLRect& rect);
    void FillRect(const PLRect& rect, const PLRGBColor& color);
    // A one-pixel frame on the inside edge of the rectangle.
    void FrameRect(const PLRect& rect);
    void FrameRect(const PLRect& rect, const PLRGBColor& color);
    // A one-pixel line between two points, both ends included (vertical value first).
    void DrawLine(PLPoint from, PLPoint to);
    void DrawLine(PLPoint from, PLPoint to, const PLRGBColor& color);
    void SetPixel(PLPoint at, const PLRGBColor& color);

    // Draws the whole bitmap with its top-left at `at`, blending by alpha.
    void DrawBitmap(const PLBitmap& bitmap, PLPoint at);
    // Draws the part `source` of the bitmap (bitmap coordinates) with its top-left at `at`.
    void DrawBitmap(const PLBitmap& bitmap, const PLRect& source, PLPoint at);

    // Draws UTF-8 text inside `rect` in the text colour and font:
    // - `length` bytes of the text, or all of it when `length` <= 0;
    // - justification centre (0), left (1) or right (2); left and right are moved inwards by
    //   offset.h;
    // - with `centred` the line is centred vertically in the rectangle, otherwise its top is at
    //   rect.top + offset.v;
    // - text that does not fit is clipped to the rectangle.
    void DrawString(const PLBasicString<char>& text, const PLRect& rect, PLPoint offset,
                    long length, bool centred, long justification);
    void DrawString(std::string_view text, const PLRect& rect, PLPoint offset, long length,
                    bool centred, long justification);
    // Plain C and standard strings convert to both of the above; these pick one.
    void DrawString(const char* text, const PLRect& rect, PLPoint offset, long length, bool centred,
                    long justification) {
        DrawString(std::string_view(text != nullptr ? text : ""), rect, offset, length, centred,
                   justification);
    }
    void DrawString(const std::string& text, const PLRect& rect, PLPoint offset, long length,
                    bool centred, long justification) {
        DrawString(std::string_view(text), rect, offset, length, centred, justification);
    }

private:
    void BlendPixel(int x, int y, uint32_t argb);
    // A local rectangle in target coordinates, computed wide and held to a range that no
    // target reaches, so that wild coordinates cannot overflow.
    PLRect ToTarget(const PLRect& local) const;
    // The colour to paint with: a default colour means the theme's text colour.
    static PLRGBColor Resolve(const PLRGBColor& color);
    void FillTargetRect(const PLRect& target, uint32_t argb);
    void DrawGlyph(const PLGlyph& glyph, int64_t penX, int64_t baseline, uint32_t argb);

    PLBitmap& mTarget;
    PLPoint mOrigin;
    PLRect mClip;  // target coordinates
    PLRGBColor mForeColor{0, 0, 0};
    PLRGBColor mTextColor{0, 0, 0};
    PLFont* mFont = nullptr;
};

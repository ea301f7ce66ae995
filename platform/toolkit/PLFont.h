// Fonts rendered with FreeType from the packaged font, which covers Latin and CJK. Glyphs are
// cached, so repainting allocates nothing per glyph.
#pragma once

#include <cstdint>
#include <string_view>

#include "PLTypes.h"

class PLBitmap;

class PLFont {
public:
    virtual ~PLFont() = default;

    // "UC16" (16 pixels) and "UC24" (24 pixels); any other code gives the 16-pixel font. Never
    // null; when no font file can be loaded the fonts draw boxes and the failure is reported once
    // on standard error.
    static PLFont* GetFont(uint32_t code);
    static PLFont* GetDefaultFont() { return GetFont(PLFourCC("UC16")); }

    virtual int GetPixelSize() const = 0;
    virtual int GetAscent() const = 0;
    virtual int GetDescent() const = 0;
    int GetLineHeight() const { return GetAscent() + GetDescent(); }
    // Width in pixels of UTF-8 text; invalid bytes count as a replacement mark.
    virtual int MeasureText(std::string_view utf8) const = 0;
    // Number of bytes of `utf8` that fit in `width` pixels, cut at a character boundary.
    virtual size_t FitText(std::string_view utf8, int width) const = 0;
};

// Fonts rendered with FreeType from the packaged font, which covers Latin and CJK. Glyphs are
// cached, so repainting allocates nothing per glyph.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "PLTypes.h"

class PLBitmap;

// One rendered character: an 8-bit coverage mask placed relative to the pen position on the
// baseline (left: pixels to the right of the pen; top: pixels above the baseline).
struct PLGlyph {
    int width = 0;
    int height = 0;
    int left = 0;
    int top = 0;
    int advance = 0;
    std::vector<uint8_t> coverage;  // width * height, row by row
};

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
    // The rendered character (cached; valid until the next GetGlyph call). Never null: a
    // character the font lacks gets its missing-glyph mark.
    virtual const PLGlyph* GetGlyph(char32_t codePoint) const = 0;

    // The next character of UTF-8 text at `pos`, advancing `pos`. An invalid or cut sequence
    // yields U+FFFD and consumes one byte, so that no text can stall or overrun a reader.
    static char32_t DecodeUTF8(std::string_view utf8, size_t& pos);
    static constexpr char32_t kReplacementCharacter = 0xFFFD;
};

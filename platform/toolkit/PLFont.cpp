// Fonts: FreeType faces from the packaged font, with a per-font cache of rendered characters.
#include "PLFont.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <unordered_map>

namespace {

constexpr const char* kCjkFontPath = "/usr/share/fonts/truetype/wqy/wqy-microhei.ttc";
constexpr const char* kLatinFontPath = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
// Enough for every character a screen shows many times over; beyond it the cache starts again
// rather than grow without bound on text that walks through the whole of CJK.
constexpr size_t kMaxCachedGlyphs = 4096;

// The FreeType library and the font file that every size opens; found once per process.
struct FontSource {
    FT_Library library = nullptr;
    std::string path;
};

bool CanOpen(FT_Library library, const std::string& path) {
    FT_Face face = nullptr;
    if (FT_New_Face(library, path.c_str(), 0, &face) != 0) {
        return false;
    }
    FT_Done_Face(face);
    return true;
}

const FontSource& Source() {
    static const FontSource source = [] {
        FontSource found;
        if (FT_Init_FreeType(&found.library) != 0) {
            std::fprintf(stderr, "fonts: FreeType could not start; text is drawn as boxes\n");
            found.library = nullptr;
            return found;
        }
        std::string candidates[3];
        if (const char* chosen = std::getenv("PL_FONT_FILE"); chosen != nullptr && *chosen) {
            candidates[0] = chosen;
        }
        candidates[1] = kCjkFontPath;
        candidates[2] = kLatinFontPath;
        for (const std::string& path : candidates) {
            if (!path.empty() && CanOpen(found.library, path)) {
                found.path = path;
                return found;
            }
        }
        std::fprintf(stderr,
                     "fonts: no font file could be loaded (PL_FONT_FILE, %s, %s); text is drawn "
                     "as boxes\n",
                     kCjkFontPath, kLatinFontPath);
        return found;
    }();
    return source;
}

int CeilPixels(FT_Pos value) {
    return int((value + 63) >> 6);
}

class PLFreeTypeFont final : public PLFont {
public:
    explicit PLFreeTypeFont(int pixelSize) : mPixelSize(pixelSize) {
        const FontSource& source = Source();
        if (source.library != nullptr && !source.path.empty() &&
            FT_New_Face(source.library, source.path.c_str(), 0, &mFace) == 0 &&
            FT_Set_Pixel_Sizes(mFace, 0, FT_UInt(pixelSize)) == 0) {
            mAscent = CeilPixels(mFace->size->metrics.ascender);
            mDescent = CeilPixels(-mFace->size->metrics.descender);
            return;
        }
        if (mFace != nullptr) {
            FT_Done_Face(mFace);
            mFace = nullptr;
        }
        // Box mode: the proportions of a typical face.
        mAscent = pixelSize - pixelSize / 5;
        mDescent = pixelSize / 5;
    }
    ~PLFreeTypeFont() override {
        if (mFace != nullptr) {
            FT_Done_Face(mFace);
        }
    }

    int GetPixelSize() const override { return mPixelSize; }
    int GetAscent() const override { return mAscent; }
    int GetDescent() const override { return mDescent; }

    // Text is laid out by glyph advances alone. The packaged font has no kerning table
    // (FT_HAS_KERNING is false for it), so pair adjustments would change nothing; a font that
    // has one would need FT_Get_Kerning here and in the drawing loop alike.
    int MeasureText(std::string_view utf8) const override {
        int width = 0;
        for (size_t pos = 0; pos < utf8.size();) {
            width += GetGlyph(DecodeUTF8(utf8, pos))->advance;
        }
        return width;
    }

    size_t FitText(std::string_view utf8, int width) const override {
        int used = 0;
        for (size_t pos = 0; pos < utf8.size();) {
            const size_t start = pos;
            used += GetGlyph(DecodeUTF8(utf8, pos))->advance;
            if (used > width) {
                return start;
            }
        }
        return utf8.size();
    }

    const PLGlyph* GetGlyph(char32_t codePoint) const override {
        auto found = mCache.find(codePoint);
        if (found != mCache.end()) {
            return &found->second;
        }
        if (mCache.size() >= kMaxCachedGlyphs) {
            mCache.clear();
        }
        return &mCache.emplace(codePoint, Render(codePoint)).first->second;
    }

private:
    PLGlyph Render(char32_t codePoint) const {
        PLGlyph glyph;
        // Line breaks, tabs and other controls take no room and leave no mark.
        if (codePoint < 0x20 || codePoint == 0x7F) {
            return glyph;
        }
        if (mFace == nullptr) {
            return Box();
        }
        FT_UInt index = FT_Get_Char_Index(mFace, FT_ULong(codePoint));
        if (index == 0) {
            index = FT_Get_Char_Index(mFace, FT_ULong(kReplacementCharacter));
        }
        if (FT_Load_Glyph(mFace, index, FT_LOAD_DEFAULT) != 0 ||
            FT_Render_Glyph(mFace->glyph, FT_RENDER_MODE_NORMAL) != 0) {
            return Box();
        }
        const FT_GlyphSlot slot = mFace->glyph;
        const FT_Bitmap& bitmap = slot->bitmap;
        glyph.advance = int((slot->advance.x + 32) >> 6);
        glyph.left = slot->bitmap_left;
        glyph.top = slot->bitmap_top;
        glyph.width = int(bitmap.width);
        glyph.height = int(bitmap.rows);
        glyph.coverage.assign(size_t(glyph.width) * size_t(glyph.height), 0);
        const int pitch = bitmap.pitch < 0 ? -bitmap.pitch : bitmap.pitch;
        for (int y = 0; y < glyph.height; ++y) {
            const unsigned char* row = bitmap.buffer + size_t(y) * size_t(pitch);
            uint8_t* out = glyph.coverage.data() + size_t(y) * size_t(glyph.width);
            for (int x = 0; x < glyph.width; ++x) {
                if (bitmap.pixel_mode == FT_PIXEL_MODE_GRAY) {
                    out[x] = row[x];
                } else if (bitmap.pixel_mode == FT_PIXEL_MODE_MONO) {
                    out[x] = (row[x / 8] & (0x80 >> (x % 8))) != 0 ? 255 : 0;
                }
            }
        }
        return glyph;
    }

    // The mark drawn when there is no font: a hollow box the height of a capital.
    PLGlyph Box() const {
        PLGlyph glyph;
        glyph.width = std::max(3, mPixelSize / 2 - 1);
        glyph.height = std::max(3, mAscent - 1);
        glyph.left = 1;
        glyph.top = glyph.height;
        glyph.advance = glyph.width + 2;
        glyph.coverage.assign(size_t(glyph.width) * size_t(glyph.height), 0);
        for (int y = 0; y < glyph.height; ++y) {
            for (int x = 0; x < glyph.width; ++x) {
                const bool edge = y == 0 || x == 0 || y == glyph.height - 1 || x == glyph.width - 1;
                glyph.coverage[size_t(y) * size_t(glyph.width) + size_t(x)] = edge ? 255 : 0;
            }
        }
        return glyph;
    }

    int mPixelSize;
    int mAscent = 0;
    int mDescent = 0;
    FT_Face mFace = nullptr;
    mutable std::unordered_map<char32_t, PLGlyph> mCache;
};

}  // namespace

PLFont* PLFont::GetFont(uint32_t code) {
    static PLFreeTypeFont small(16);
    static PLFreeTypeFont large(24);
    return code == PLFourCC("UC24") ? &large : &small;
}

char32_t PLFont::DecodeUTF8(std::string_view utf8, size_t& pos) {
    if (pos >= utf8.size()) {
        pos = utf8.size();
        return kReplacementCharacter;
    }
    const auto lead = static_cast<unsigned char>(utf8[pos]);
    if (lead < 0x80) {
        ++pos;
        return lead;
    }
    size_t trail = 0;
    char32_t value = 0;
    char32_t smallest = 0;
    if ((lead & 0xE0) == 0xC0) {
        trail = 1;
        value = lead & 0x1F;
        smallest = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        trail = 2;
        value = lead & 0x0F;
        smallest = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        trail = 3;
        value = lead & 0x07;
        smallest = 0x10000;
    } else {
        ++pos;
        return kReplacementCharacter;
    }
    if (utf8.size() - pos <= trail) {
        ++pos;
        return kReplacementCharacter;
    }
    for (size_t i = 1; i <= trail; ++i) {
        const auto next = static_cast<unsigned char>(utf8[pos + i]);
        if ((next & 0xC0) != 0x80) {
            ++pos;
            return kReplacementCharacter;
        }
        value = (value << 6) | (next & 0x3F);
    }
    // Overlong forms, surrogates and values past Unicode are not characters.
    if (value < smallest || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) {
        ++pos;
        return kReplacementCharacter;
    }
    pos += trail + 1;
    return value;
}

// A colour with red, green, blue and alpha. A colour made from -1 means "the theme's default".
#pragma once

#include <cstdint>

struct PLRGBColor {
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    uint8_t alpha = 255;
    bool isDefault = false;  // true: the drawing code uses the theme's colour instead

    constexpr PLRGBColor() = default;
    constexpr PLRGBColor(uint8_t r, uint8_t g, uint8_t b, uint8_t a = 255)
        : red(r), green(g), blue(b), alpha(a) {}
    // A colour from a packed 0xRRGGBB value; -1 stands for the theme's default colour.
    constexpr PLRGBColor(long packed, bool withAlpha)
        : red(uint8_t(packed >> 16)),
          green(uint8_t(packed >> 8)),
          blue(uint8_t(packed)),
          alpha(withAlpha ? uint8_t(packed >> 24) : 255),
          isDefault(packed == -1) {}

    constexpr uint32_t ToARGB() const {
        return (uint32_t(alpha) << 24) | (uint32_t(red) << 16) | (uint32_t(green) << 8) | blue;
    }
    static constexpr PLRGBColor FromARGB(uint32_t argb) {
        return PLRGBColor(uint8_t(argb >> 16), uint8_t(argb >> 8), uint8_t(argb),
                          uint8_t(argb >> 24));
    }
    constexpr bool operator==(const PLRGBColor& o) const {
        return red == o.red && green == o.green && blue == o.blue && alpha == o.alpha &&
               isDefault == o.isDefault;
    }
};

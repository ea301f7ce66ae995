// Breaks text into lines that fit a width: at spaces where it can, anywhere between characters
// where a word (or CJK text) is wider than the line, and at every line break.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

class PLFont;

class VtTextLayout {
public:
    struct Line {
        size_t start = 0;   // byte offset in the text
        size_t length = 0;  // bytes, without the breaking space or line break
    };
    using Measure = std::function<int(std::string_view)>;

    // Lines of `text` for `width` pixels, measured with `measure`. Empty text gives one empty
    // line; a width below one character still advances by one character per line.
    static std::vector<Line> Wrap(std::string_view text, int width, const Measure& measure);
    // The same, measured with a font.
    static std::vector<Line> Wrap(std::string_view text, int width, const PLFont& font);
};

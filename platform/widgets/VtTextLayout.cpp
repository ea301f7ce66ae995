// Line breaking for labels, multi-line fields and dialog messages.
#include "VtTextLayout.h"

#include "PLFont.h"
#include "VtTextModel.h"

namespace {

// Appends the lines of one paragraph (no line breaks inside) that starts at `start`.
void WrapParagraph(std::string_view text, size_t start, size_t end, int width,
                   const VtTextLayout::Measure& measure, std::vector<VtTextLayout::Line>& lines) {
    if (start == end) {
        lines.push_back({start, 0});
        return;
    }
    while (start < end) {
        size_t position = start;
        size_t lastSpace = std::string_view::npos;
        while (position < end) {
            const size_t length = VtTextModel::CharLength(text, position);
            if (measure(text.substr(start, position + length - start)) > width) {
                break;
            }
            if (text[position] == ' ') {
                lastSpace = position;
            }
            position += length;
        }
        if (position >= end) {
            lines.push_back({start, end - start});
            return;
        }
        if (position == start) {
            // Not even one character fits: it gets a line of its own.
            const size_t length = VtTextModel::CharLength(text, position);
            lines.push_back({start, length});
            start += length;
        } else if (lastSpace != std::string_view::npos && lastSpace > start) {
            lines.push_back({start, lastSpace - start});
            start = lastSpace + 1;
        } else {
            lines.push_back({start, position - start});
            start = position;
        }
    }
}

}  // namespace

std::vector<VtTextLayout::Line> VtTextLayout::Wrap(std::string_view text, int width,
                                                   const Measure& measure) {
    std::vector<Line> lines;
    size_t start = 0;
    while (true) {
        const size_t end = text.find('\n', start);
        const size_t stop = end == std::string_view::npos ? text.size() : end;
        WrapParagraph(text, start, stop, width, measure, lines);
        if (end == std::string_view::npos) {
            break;
        }
        start = end + 1;
    }
    return lines;
}

std::vector<VtTextLayout::Line> VtTextLayout::Wrap(std::string_view text, int width,
                                                   const PLFont& font) {
    return Wrap(text, width, [&font](std::string_view piece) { return font.MeasureText(piece); });
}

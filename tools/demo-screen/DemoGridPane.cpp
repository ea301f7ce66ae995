// Paints a 6 x 7 grid of 31 x 34 cells with bars and numbers, as a calendar month would.
#include "DemoGridPane.h"

#include <string>

#include "PLDrawContext.h"
#include "PLFont.h"

namespace {
constexpr int kRowHeight = 31;
constexpr int kColumnWidth = 34;
}  // namespace

void DemoGridPane::Draw(PLDrawContext& context) {
    const PLRect bounds = GetBounds();
    context.FillRect(bounds, PLRGBColor(228, 228, 228));
    const PLRGBColor white(255, 255, 255);
    for (int k = 1; k <= 6; ++k) {
        context.DrawLine({0, kColumnWidth * k}, {bounds.bottom, kColumnWidth * k}, white);
    }
    for (int r = 0; r <= 5; ++r) {
        context.DrawLine({kRowHeight * r, 0}, {kRowHeight * r, bounds.right - 2}, white);
    }
    context.SetFont(PLFont::GetFont(PLFourCC("UC16")));
    for (int cell = 0; cell < 42; ++cell) {
        const int row = cell / 7;
        const int column = cell % 7;
        const PLRect rect{kRowHeight * row, kColumnWidth * column, kRowHeight * row + kRowHeight,
                          kColumnWidth * column + kColumnWidth};
        if (cell % 5 == 1) {
            const int top = rect.top + kRowHeight - 4;
            context.FillRect({top, rect.left + 3, top + 2, rect.left + 13},
                             PLRGBColor(51, 204, 255));
        }
        if (cell == 17) {
            context.FrameRect(rect.Insetted(1, 1), PLRGBColor(255, 153, 0));
        }
        const bool weekend = column == 0 || column == 6;
        context.SetTextColor(weekend ? PLRGBColor(204, 0, 0) : PLRGBColor(0, 0, 0));
        const std::string day = std::to_string(cell + 1);
        context.DrawString(day, rect.Offsetted(-6, 0), {3, 3}, -1, true, kPLJustifyLeft);
    }
}

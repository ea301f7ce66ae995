// A full repaint of a screen as busy as a calendar month: a grid of filled cells with lines and
// frames, alpha-blended pictures, and 40 strings in both font sizes, painted through the screen.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "PLAppContext.h"
#include "PLBitmap.h"
#include "PLDrawContext.h"
#include "PLFont.h"
#include "PLScreen.h"
#include "PLView.h"

namespace {

class BusyPane : public PLView {
public:
    BusyPane() : PLView(1, {0, 0}, {kPLScreenHeight, kPLScreenWidth}), mBadge(24, 24) {
        for (int y = 0; y < 24; ++y) {
            for (int x = 0; x < 24; ++x) {
                mBadge.SetPixel(x, y, (uint32_t((x + y) * 5) << 24) | 0x00FF8800u);
            }
        }
        for (int i = 0; i < 40; ++i) {
            mTexts.push_back(i % 4 == 0 ? "\xe6\x97\xa5\xe5\x8e\x86 " + std::to_string(i)
                                        : "Meeting " + std::to_string(i));
        }
    }

    void Draw(PLDrawContext& context) override {
        context.FillRect(GetBounds(), PLRGBColor(228, 228, 228));
        for (int cell = 0; cell < 42; ++cell) {
            const PLRect rect{53 + 31 * (cell / 7), 34 * (cell % 7), 84 + 31 * (cell / 7),
                              34 * (cell % 7) + 34};
            context.FillRect(rect.Insetted(2, 2), PLRGBColor(255, 214, 187));
            context.FrameRect(rect.Insetted(1, 1), PLRGBColor(255, 153, 0));
        }
        for (int k = 1; k <= 6; ++k) {
            context.DrawLine({53, 34 * k}, {239, 34 * k}, PLRGBColor(255, 255, 255));
            context.DrawLine({53, 0}, {239, 34 * k}, PLRGBColor(0, 0, 0));
        }
        for (int i = 0; i < 8; ++i) {
            context.DrawBitmap(mBadge, {250 + (i % 2) * 30, i * 30});
        }
        PLFont* small = PLFont::GetFont(PLFourCC("UC16"));
        PLFont* large = PLFont::GetFont(PLFourCC("UC24"));
        for (size_t i = 0; i < mTexts.size(); ++i) {
            context.SetFont(i % 5 == 0 ? large : small);
            context.SetTextColor(PLRGBColor(0, 0, uint8_t(i * 6)));
            const int row = int(i) / 7;
            const int column = int(i) % 7;
            const PLRect rect{53 + 31 * row, 34 * column, 84 + 31 * row, 34 * column + 34};
            context.DrawString(mTexts[i], rect, {3, 3}, -1, true, long(i % 3));
        }
    }

private:
    PLBitmap mBadge;
    std::vector<std::string> mTexts;
};

void BM_FullRepaint(benchmark::State& state) {
    PLScreen& screen = PLAppContext::GetInstance()->GetScreen();
    BusyPane pane;
    screen.SetRoot(&pane);
    screen.PaintAll();  // glyphs are cached after the first paint, as on a running phone
    for (auto _ : state) {
        screen.PaintAll();
        benchmark::DoNotOptimize(screen.GetFramebuffer().Pixels());
    }
    screen.SetRoot(nullptr);
}
BENCHMARK(BM_FullRepaint)
    ->Unit(benchmark::kMicrosecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);

}  // namespace

// Draws the demo's text samples and pictures.
#include "DemoTextPane.h"

#include <cmath>

#include "PLDrawContext.h"
#include "PLFont.h"

void DemoTextPane::Draw(PLDrawContext& context) {
    const PLRect bounds = GetBounds();
    context.FillRect(bounds, PLRGBColor(40, 60, 110));
    context.SetTextColor(PLRGBColor(255, 255, 255));
    context.SetFont(PLFont::GetFont(PLFourCC("UC24")));
    context.DrawString("2025年7月 Calendar", {0, 0, 29, bounds.right}, kNullPoint, -1, true,
                       kPLJustifyCenter);
    context.SetFont(PLFont::GetFont(PLFourCC("UC16")));
    const char* days[] = {"日", "Mo", "Tu", "We", "Th", "Fr", "Sa"};
    for (int i = 0; i < 7; ++i) {
        context.DrawString(days[i], {29, 34 * i, 53, 34 * i + 34}, kNullPoint, -1, true,
                           kPLJustifyCenter);
    }
}

DemoPicturePane::DemoPicturePane(uint32_t id, PLPoint location, PLSize size)
    : PLView(id, location, size), mBand(1, 36), mBadge(32, 32) {
    for (int y = 0; y < 36; ++y) {
        const uint32_t shade = uint32_t(200 - y * 3);
        mBand.SetPixel(0, y, 0xFF000000u | (shade << 16) | (shade << 8) | 255u);
    }
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 32; ++x) {
            const double d = std::hypot(x - 15.5, y - 15.5);
            const double a = std::clamp(15.5 - d, 0.0, 1.0) * 200.0;
            mBadge.SetPixel(x, y, (uint32_t(a) << 24) | 0x00FF6600u);
        }
    }
}

void DemoPicturePane::Draw(PLDrawContext& context) {
    const PLRect bounds = GetBounds();
    PLBitmap stretched(bounds.Width(), 36);
    for (int x = 0; x < bounds.Width(); ++x) {
        stretched.CopyPixels(mBand, {0, 0, 36, 1}, {0, x, 36, x + 1});
    }
    context.DrawBitmap(stretched, {0, 0});
    context.SetTextColor(PLRGBColor(0, 0, 0));
    const char* labels[] = {"Options", "Month", "Exit"};
    const int lefts[] = {0, 43, 197};
    const int widths[] = {43, 154, 43};
    for (int i = 0; i < 3; ++i) {
        const PLRect button{0, lefts[i], 36, lefts[i] + widths[i]};
        context.FrameRect(button, PLRGBColor(90, 90, 140));
        context.DrawString(labels[i], button, kNullPoint, -1, true, kPLJustifyCenter);
    }
    context.FillRect({36, 0, bounds.bottom, bounds.right}, PLRGBColor(245, 245, 240));
    for (int i = 0; i < 5; ++i) {
        context.DrawBitmap(mBadge, {40, 10 + i * 22});
    }
    context.DrawBitmap(mBadge, {16, 0, 32, 32}, {44, 140});
    context.SetTextColor(PLRGBColor(0, 102, 255));
    context.DrawString("Überall 你好 ✓ \xff ok", {36, 150, bounds.bottom, bounds.right}, {0, 2}, -1,
                       true, kPLJustifyLeft);
}

// The gallery's own pictures, painted at start.
#include "GalleryArt.h"

#include "PLBitmap.h"
#include "PLBitmapFamily.h"
#include "PLDrawContext.h"

namespace {

PLBitmap* Tile(int width, int height, PLRGBColor top, PLRGBColor bottom, PLRGBColor border) {
    auto* bitmap = new PLBitmap(width, height);
    PLDrawContext context(*bitmap);
    for (int y = 0; y < height; ++y) {
        const auto mix = [&](uint8_t a, uint8_t b) {
            return uint8_t(a + (int(b) - int(a)) * y / (height - 1));
        };
        context.FillRect(
            {y, 0, y + 1, width},
            {mix(top.red, bottom.red), mix(top.green, bottom.green), mix(top.blue, bottom.blue)});
    }
    context.FrameRect({0, 0, height, width}, border);
    return bitmap;
}

// A family of a normal and a pressed tile of one size.
std::unique_ptr<PLBitmapFamily> TwoTiles(int width, int height, PLRGBColor top, PLRGBColor bottom,
                                         PLRGBColor border, PLRGBColor pressedTop,
                                         PLRGBColor pressedBottom, PLRGBColor pressedBorder) {
    auto family = std::make_unique<PLBitmapFamily>(0x3F3F3F3F, true);
    family->SetAllBitmaps(Tile(width, height, top, bottom, border));
    family->SetBitmap(kPLBitmapPressed,
                      Tile(width, height, pressedTop, pressedBottom, pressedBorder));
    return family;
}

}  // namespace

GalleryArt::GalleryArt() : mFamily(std::make_unique<PLBitmapFamily>(0x3F3F3F3F, true)) {
    mFamily->SetBitmap(kPLBitmapNormal, Tile(70, 26, {120, 190, 120}, {40, 140, 60}, {20, 90, 30}));
    mFamily->SetBitmap(kPLBitmapPressed,
                       Tile(70, 26, {255, 200, 110}, {255, 140, 0}, {160, 90, 0}));
    mFamily->SetBitmap(kPLBitmapDisabled,
                       Tile(70, 26, {200, 200, 200}, {170, 170, 170}, {140, 140, 140}));

    const PLRGBColor dark{36, 36, 36};
    mFamilies.push_back(
        TwoTiles(26, 24, {78, 78, 78}, {48, 48, 48}, dark, {36, 36, 36}, {20, 20, 20}, dark));
    mFamilies.push_back(
        TwoTiles(26, 21, {44, 44, 44}, {30, 30, 30}, dark, {36, 36, 36}, {20, 20, 20}, dark));
    mFamilies.push_back(TwoTiles(26, 26, {255, 255, 255}, {255, 255, 255}, {187, 187, 187},
                                 {214, 230, 255}, {214, 230, 255}, {0, 102, 255}));
    mFamilies.push_back(TwoTiles(42, 24, {238, 238, 238}, {238, 238, 238}, {214, 214, 214},
                                 {255, 153, 0}, {255, 153, 0}, {255, 153, 0}));

    mIcon = std::make_unique<PLBitmap>(20, 20);
    PLDrawContext icon(*mIcon);
    icon.FillRect({2, 2, 18, 18}, {255, 153, 0});
    icon.FrameRect({2, 2, 18, 18}, {160, 90, 0});
    icon.FillRect({6, 9, 14, 11}, {255, 255, 255});
    icon.FillRect({9, 6, 11, 14}, {255, 255, 255});

    mNotice = std::make_unique<PLBitmap>(32, 32);
    PLDrawContext notice(*mNotice);
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 32; ++x) {
            const int dv = 2 * y - 31;
            const int dh = 2 * x - 31;
            if (dv * dv + dh * dh <= 31 * 31) {
                notice.SetPixel({y, x}, {0, 102, 255});
            }
        }
    }
    notice.FillRect({7, 14, 20, 18}, {255, 255, 255});
    notice.FillRect({23, 14, 27, 18}, {255, 255, 255});
}

GalleryArt::~GalleryArt() = default;

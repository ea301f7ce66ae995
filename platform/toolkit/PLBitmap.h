// A 32-bit ARGB image. Bitmaps are drawn with PLDrawContext and can be drawn into.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "PLRGBColor.h"
#include "PLRect.h"

class PLBitmap {
public:
    // A bitmap of the given size, filled with transparent black. Sizes are clamped to 0..4096.
    PLBitmap(int width, int height);
    PLBitmap(int width, int height, std::vector<uint32_t> argbPixels);

    int GetWidth() const { return mWidth; }
    int GetHeight() const { return mHeight; }
    uint32_t* Pixels() { return mPixels.data(); }
    const uint32_t* Pixels() const { return mPixels.data(); }
    // ARGB of a pixel; 0 outside the bitmap.
    uint32_t GetPixel(int x, int y) const;
    void SetPixel(int x, int y, uint32_t argb);

    // Copies the pixels of `source` in `sourceRect` to `destRect` of this bitmap (same size
    // expected; the smaller extent wins). Both rectangles are clipped to their bitmaps.
    void CopyPixels(const PLBitmap& source, const PLRect& sourceRect, const PLRect& destRect);

    // PNG in and out (used by the resource compiler, screenshots and tests).
    static bool LoadPNG(const std::string& path, PLBitmap*& out, std::string& error);
    bool SavePNG(const std::string& path, std::string& error) const;

private:
    int mWidth;
    int mHeight;
    std::vector<uint32_t> mPixels;
};

// ARGB bitmaps: pixel access, clipped block copies, and PNG files through libpng.
#include "PLBitmap.h"

#include <png.h>

#include <algorithm>
#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

constexpr int kMaxSide = 4096;

int ClampSide(int side) {
    return std::clamp(side, 0, kMaxSide);
}

// The part [lo, hi) of 0..extent that the offsets `a` and `b` (the source and destination
// starts) keep inside two bitmaps of `extentA` and `extentB`; computed wide so that wild rectangles
// cannot overflow.
struct Span {
    int64_t lo;
    int64_t hi;
};
Span ClipSpan(int64_t length, int64_t a, int64_t extentA, int64_t b, int64_t extentB) {
    const int64_t lo = std::max<int64_t>({0, -a, -b});
    const int64_t hi = std::min<int64_t>({length, extentA - a, extentB - b});
    return {lo, hi};
}

// Everything a PNG read or write touches lives here, on the heap, so that a longjmp out of libpng
// leaves no half-built automatic object behind.
struct PngState {
    std::string error;
    FILE* file = nullptr;
    std::vector<uint8_t> rgba;
    std::vector<png_bytep> rows;
    ~PngState() {
        if (file != nullptr) {
            std::fclose(file);
        }
    }
};

void PngError(png_structp png, png_const_charp message) {
    auto* state = static_cast<PngState*>(png_get_error_ptr(png));
    if (state != nullptr && state->error.empty()) {
        state->error = message != nullptr ? message : "unknown PNG error";
    }
    png_longjmp(png, 1);
}

void PngWarning(png_structp, png_const_charp) {}

uint32_t RgbaToArgb(const uint8_t* p) {
    return (uint32_t(p[3]) << 24) | (uint32_t(p[0]) << 16) | (uint32_t(p[1]) << 8) | p[2];
}

// Reads the opened file into state->rgba; returns the size, or false with state->error set.
bool ReadPng(PngState* state, int& width, int& height) {
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, state, PngError, PngWarning);
    if (png == nullptr) {
        state->error = "out of memory";
        return false;
    }
    png_infop info = png_create_info_struct(png);
    if (info == nullptr) {
        png_destroy_read_struct(&png, nullptr, nullptr);
        state->error = "out of memory";
        return false;
    }
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_read_struct(&png, &info, nullptr);
        return false;
    }
    png_set_user_limits(png, kMaxSide, kMaxSide);
    png_init_io(png, state->file);
    png_read_info(png, info);
    const png_uint_32 w = png_get_image_width(png, info);
    const png_uint_32 h = png_get_image_height(png, info);
    const int colorType = png_get_color_type(png, info);
    // Every colour type ends as 8-bit RGBA: palettes and low depths expanded, transparency
    // chunks turned into alpha, grey widened to RGB, missing alpha filled as opaque.
    png_set_expand(png);
    png_set_strip_16(png);
    if (colorType == PNG_COLOR_TYPE_GRAY || colorType == PNG_COLOR_TYPE_GRAY_ALPHA) {
        png_set_gray_to_rgb(png);
    }
    png_set_add_alpha(png, 0xFF, PNG_FILLER_AFTER);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    if (png_get_rowbytes(png, info) != size_t(w) * 4) {
        state->error = "unsupported pixel layout";
        png_destroy_read_struct(&png, &info, nullptr);
        return false;
    }
    state->rgba.resize(size_t(w) * h * 4);
    state->rows.resize(h);
    for (png_uint_32 y = 0; y < h; ++y) {
        state->rows[y] = state->rgba.data() + size_t(y) * w * 4;
    }
    png_read_image(png, state->rows.data());
    png_read_end(png, nullptr);
    png_destroy_read_struct(&png, &info, nullptr);
    width = int(w);
    height = int(h);
    return true;
}

bool WritePng(PngState* state, int width, int height) {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, state, PngError, PngWarning);
    if (png == nullptr) {
        state->error = "out of memory";
        return false;
    }
    png_infop info = png_create_info_struct(png);
    if (info == nullptr) {
        png_destroy_write_struct(&png, nullptr);
        state->error = "out of memory";
        return false;
    }
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        return false;
    }
    png_init_io(png, state->file);
    png_set_IHDR(png, info, png_uint_32(width), png_uint_32(height), 8, PNG_COLOR_TYPE_RGB_ALPHA,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_write_image(png, state->rows.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return true;
}

}  // namespace

PLBitmap::PLBitmap(int width, int height)
    : mWidth(ClampSide(width)),
      mHeight(ClampSide(height)),
      mPixels(size_t(mWidth) * size_t(mHeight), 0u) {}

PLBitmap::PLBitmap(int width, int height, std::vector<uint32_t> argbPixels)
    : mWidth(ClampSide(width)), mHeight(ClampSide(height)), mPixels(std::move(argbPixels)) {
    // A short or long pixel vector is cut or padded with transparent black, never read past.
    mPixels.resize(size_t(mWidth) * size_t(mHeight), 0u);
}

uint32_t PLBitmap::GetPixel(int x, int y) const {
    if (x < 0 || y < 0 || x >= mWidth || y >= mHeight) {
        return 0;
    }
    return mPixels[size_t(y) * size_t(mWidth) + size_t(x)];
}

void PLBitmap::SetPixel(int x, int y, uint32_t argb) {
    if (x < 0 || y < 0 || x >= mWidth || y >= mHeight) {
        return;
    }
    mPixels[size_t(y) * size_t(mWidth) + size_t(x)] = argb;
}

void PLBitmap::CopyPixels(const PLBitmap& source, const PLRect& sourceRect,
                          const PLRect& destRect) {
    const int64_t height = std::min<int64_t>(int64_t(sourceRect.bottom) - sourceRect.top,
                                             int64_t(destRect.bottom) - destRect.top);
    const int64_t width = std::min<int64_t>(int64_t(sourceRect.right) - sourceRect.left,
                                            int64_t(destRect.right) - destRect.left);
    if (height <= 0 || width <= 0) {
        return;
    }
    const Span rows = ClipSpan(height, sourceRect.top, source.mHeight, destRect.top, mHeight);
    const Span cols = ClipSpan(width, sourceRect.left, source.mWidth, destRect.left, mWidth);
    if (rows.hi <= rows.lo || cols.hi <= cols.lo) {
        return;
    }
    const size_t count = size_t(cols.hi - cols.lo);
    for (int64_t r = rows.lo; r < rows.hi; ++r) {
        const uint32_t* from = source.mPixels.data() +
                               size_t(sourceRect.top + r) * size_t(source.mWidth) +
                               size_t(sourceRect.left + cols.lo);
        uint32_t* to = mPixels.data() + size_t(destRect.top + r) * size_t(mWidth) +
                       size_t(destRect.left + cols.lo);
        // memmove: a bitmap may copy within itself.
        std::memmove(to, from, count * sizeof(uint32_t));
    }
}

bool PLBitmap::LoadPNG(const std::string& path, PLBitmap*& out, std::string& error) {
    out = nullptr;
    auto state = std::make_unique<PngState>();
    state->file = std::fopen(path.c_str(), "rb");
    if (state->file == nullptr) {
        error = path + ": " + std::strerror(errno);
        return false;
    }
    uint8_t signature[8] = {};
    if (std::fread(signature, 1, sizeof signature, state->file) != sizeof signature ||
        png_sig_cmp(signature, 0, sizeof signature) != 0) {
        error = path + ": not a PNG file";
        return false;
    }
    std::rewind(state->file);
    int width = 0;
    int height = 0;
    if (!ReadPng(state.get(), width, height)) {
        error = path + ": " + (state->error.empty() ? "unreadable PNG" : state->error);
        return false;
    }
    std::vector<uint32_t> pixels(size_t(width) * size_t(height));
    for (size_t i = 0; i < pixels.size(); ++i) {
        pixels[i] = RgbaToArgb(state->rgba.data() + i * 4);
    }
    out = new PLBitmap(width, height, std::move(pixels));
    return true;
}

bool PLBitmap::SavePNG(const std::string& path, std::string& error) const {
    if (mWidth == 0 || mHeight == 0) {
        error = path + ": an empty bitmap cannot be saved as PNG";
        return false;
    }
    auto state = std::make_unique<PngState>();
    state->rgba.resize(mPixels.size() * 4);
    for (size_t i = 0; i < mPixels.size(); ++i) {
        const uint32_t p = mPixels[i];
        uint8_t* q = state->rgba.data() + i * 4;
        q[0] = uint8_t(p >> 16);
        q[1] = uint8_t(p >> 8);
        q[2] = uint8_t(p);
        q[3] = uint8_t(p >> 24);
    }
    state->rows.resize(size_t(mHeight));
    for (int y = 0; y < mHeight; ++y) {
        state->rows[size_t(y)] = state->rgba.data() + size_t(y) * size_t(mWidth) * 4;
    }
    // Written beside the target and renamed over it, so a failed write never spoils an old file.
    const std::string temporary = path + ".part";
    state->file = std::fopen(temporary.c_str(), "wb");
    if (state->file == nullptr) {
        error = path + ": " + std::strerror(errno);
        return false;
    }
    bool ok = WritePng(state.get(), mWidth, mHeight);
    const bool closed = std::fclose(state->file) == 0;
    state->file = nullptr;
    if (!ok || !closed) {
        std::remove(temporary.c_str());
        error = path + ": " + (state->error.empty() ? "write failed" : state->error);
        return false;
    }
    if (std::rename(temporary.c_str(), path.c_str()) != 0) {
        error = path + ": " + std::strerror(errno);
        std::remove(temporary.c_str());
        return false;
    }
    return true;
}

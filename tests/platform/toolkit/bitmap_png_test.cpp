// PNG files: round trip, every colour type read as ARGB, and damaged files refused with a message.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "PLBitmap.h"
#include "PLResourceFileManager.h"
#include "toolkit_support.h"

namespace {

using Bytes = std::vector<uint8_t>;

void Put32(Bytes& out, uint32_t v) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        out.push_back(uint8_t(v >> shift));
    }
}

void Chunk(Bytes& out, const char* type, const Bytes& data) {
    Put32(out, uint32_t(data.size()));
    Bytes typed(type, type + 4);
    typed.insert(typed.end(), data.begin(), data.end());
    out.insert(out.end(), typed.begin(), typed.end());
    Put32(out, PLResourceFileManager::Checksum(typed.data(), typed.size()));
}

// A PNG written by hand: the scanlines (each with its filter byte 0) go into one stored, that is
// uncompressed, deflate block, so no compressor is needed to make test files.
Bytes MakePng(uint32_t width, uint32_t height, uint8_t depth, uint8_t colorType,
              const Bytes& scanlines, const Bytes& palette = {}, const Bytes& transparency = {}) {
    Bytes out = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
    Bytes header;
    Put32(header, width);
    Put32(header, height);
    header.insert(header.end(), {depth, colorType, 0, 0, 0});
    Chunk(out, "IHDR", header);
    if (!palette.empty()) {
        Chunk(out, "PLTE", palette);
    }
    if (!transparency.empty()) {
        Chunk(out, "tRNS", transparency);
    }
    const uint16_t size = uint16_t(scanlines.size());
    Bytes zlib = {0x78, 0x01, 0x01, uint8_t(size), uint8_t(size >> 8)};
    zlib.insert(zlib.end(), {uint8_t(~size), uint8_t(~size >> 8)});
    zlib.insert(zlib.end(), scanlines.begin(), scanlines.end());
    uint32_t a = 1, b = 0;
    for (uint8_t byte : scanlines) {
        a = (a + byte) % 65521;
        b = (b + a) % 65521;
    }
    Put32(zlib, (b << 16) | a);
    Chunk(out, "IDAT", zlib);
    Chunk(out, "IEND", {});
    return out;
}

class BitmapPngTest : public ::testing::Test {
protected:
    std::string Path(const std::string& name) const { return mDir.Path() + "/" + name; }
    // Loads `path`, which must succeed, into an owned bitmap of the expected size.
    std::unique_ptr<PLBitmap> Load(const std::string& path, int width, int height) {
        PLBitmap* loaded = nullptr;
        std::string error;
        EXPECT_TRUE(PLBitmap::LoadPNG(path, loaded, error)) << error;
        std::unique_ptr<PLBitmap> owner(loaded);
        if (owner && (owner->GetWidth() != width || owner->GetHeight() != height)) {
            ADD_FAILURE() << "loaded " << owner->GetWidth() << "x" << owner->GetHeight();
            owner.reset();
        }
        return owner;
    }

private:
    ScratchRoot mDir;
};

TEST_F(BitmapPngTest, SavedBitmapReadsBackPixelForPixelAndAFailedSaveLeavesTheOldFile) {
    std::vector<uint32_t> pixels;
    for (uint32_t i = 0; i < 240 * 320; ++i) {
        // Every alpha, including 0 and 255, with colours that differ per pixel.
        pixels.push_back((i * 37) << 24 | ((i * 7919) & 0xFFFFFF));
    }
    std::string error;
    ASSERT_TRUE(PLBitmap(240, 320, pixels).SavePNG(Path("keep.png"), error)) << error;
    EXPECT_FALSE(PLBitmap(0, 0).SavePNG(Path("keep.png"), error));
    EXPECT_FALSE(PLBitmap(1, 1).SavePNG(Path("no/such/dir/x.png"), error));
    auto loaded = Load(Path("keep.png"), 240, 320);
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(std::equal(pixels.begin(), pixels.end(), loaded->Pixels()));
}

TEST_F(BitmapPngTest, EveryColourTypeIsReadAsArgb) {
    struct Row {
        const char* name;
        Bytes png;
        uint32_t left, right;  // the two pixels of a 2 x 1 image
    };
    // clang-format off
    const std::vector<Row> rows = {
        {"grey 8-bit", MakePng(2, 1, 8, 0, {0, 0x00, 0x80}), 0xFF000000, 0xFF808080},
        {"grey with alpha", MakePng(2, 1, 8, 4, {0, 0x40, 0x00, 0xFF, 0x7F}), 0x00404040, 0x7FFFFFFF},
        {"grey 1-bit", MakePng(2, 1, 1, 0, {0, 0x80}), 0xFFFFFFFF, 0xFF000000},
        {"RGB 8-bit", MakePng(2, 1, 8, 2, {0, 1, 2, 3, 250, 251, 252}), 0xFF010203, 0xFFFAFBFC},
        {"RGB 16-bit keeps the high bytes",
         MakePng(2, 1, 16, 2, {0, 0x12, 0, 0x34, 0, 0x56, 0, 0xAB, 0, 0xCD, 0, 0xEF, 0}), 0xFF123456, 0xFFABCDEF},
        {"RGBA", MakePng(2, 1, 8, 6, {0, 9, 8, 7, 0, 1, 2, 3, 200}), 0x00090807, 0xC8010203},
        {"palette with transparency",
         MakePng(2, 1, 8, 3, {0, 1, 0}, {10, 20, 30, 40, 50, 60}, {0x80}), 0xFF28323C, 0x800A141E},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        WriteBytes(Path("typed.png"), row.png);
        auto loaded = Load(Path("typed.png"), 2, 1);
        ASSERT_NE(loaded, nullptr);
        EXPECT_EQ(loaded->GetPixel(0, 0), row.left);
        EXPECT_EQ(loaded->GetPixel(1, 0), row.right);
    }
}

TEST_F(BitmapPngTest, DamagedFilesAreRefusedWithAMessage) {
    const Bytes good = MakePng(2, 1, 8, 2, {0, 1, 2, 3, 4, 5, 6});
    auto damaged = [&good](size_t at, uint8_t value) {
        Bytes copy = good;
        copy[at] = value;
        return copy;
    };
    const size_t idatData = 8 + 25 + 8 + 2;  // signature, IHDR chunk, IDAT length+type, zlib header
    // clang-format off
    struct Row { const char* name; Bytes bytes; bool write; };
    const std::vector<Row> rows = {
        {"missing file", {}, false},
        {"empty file", {}, true},
        {"not a PNG", Bytes{'G', 'I', 'F', '8', '9', 'a', 0, 0, 0, 0}, true},
        {"cut after the signature", Bytes(good.begin(), good.begin() + 8), true},
        {"cut inside the image data", Bytes(good.begin(), good.begin() + 50), true},
        {"header checksum wrong", damaged(8 + 8 + 13, 0x00), true},
        {"image data checksum wrong", damaged(idatData + 3, 0x77), true},
        {"width of zero", MakePng(0, 1, 8, 2, {0}), true},
        {"gigantic size", MakePng(100000, 100000, 8, 2, {0, 1, 2, 3}), true},
        {"impossible bit depth", MakePng(2, 1, 7, 2, {0, 1, 2, 3, 4, 5, 6}), true},
        {"palette image without a palette", MakePng(2, 1, 8, 3, {0, 0, 1}), true},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string path = Path(row.write ? "bad.png" : "absent.png");
        if (row.write) {
            WriteBytes(path, row.bytes);
        }
        PLBitmap stale(1, 1);
        PLBitmap* loaded = &stale;  // a failed load must not leave an old pointer behind
        std::string error;
        EXPECT_FALSE(PLBitmap::LoadPNG(path, loaded, error));
        EXPECT_EQ(loaded, nullptr);
        EXPECT_NE(error.find(path), std::string::npos) << "the message names the file: " << error;
    }
}

}  // namespace

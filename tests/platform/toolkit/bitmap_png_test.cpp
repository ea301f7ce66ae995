// PNG files: round trip, every colour type read as ARGB, and damaged files refused with a message.
#include <gtest/gtest.h>

#include <fstream>
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
    Bytes zlib = {0x78,
                  0x01,
                  0x01,
                  uint8_t(scanlines.size()),
                  uint8_t(scanlines.size() >> 8),
                  uint8_t(~scanlines.size()),
                  uint8_t(~scanlines.size() >> 8)};
    zlib.insert(zlib.end(), scanlines.begin(), scanlines.end());
    uint32_t a = 1;
    uint32_t b = 0;
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
    std::string Write(const std::string& name, const Bytes& bytes) {
        const std::string path = Path(name);
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
        return path;
    }
    std::string Path(const std::string& name) const { return mDir.Path() + "/" + name; }

private:
    ScratchRoot mDir;
};

TEST_F(BitmapPngTest, SavedBitmapReadsBackPixelForPixel) {
    struct Row {
        const char* name;
        int width;
        int height;
    };
    const Row rows[] = {
        {"one pixel", 1, 1}, {"screen sized", 240, 320}, {"one tall column", 1, 50}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<uint32_t> pixels;
        for (int i = 0; i < row.width * row.height; ++i) {
            // Every alpha, including 0 and 255, with colours that differ per pixel.
            pixels.push_back((uint32_t(i * 37) << 24) | (uint32_t(i * 7919) & 0xFFFFFF));
        }
        const PLBitmap original(row.width, row.height, pixels);
        std::string error;
        ASSERT_TRUE(original.SavePNG(Path("round.png"), error)) << error;
        PLBitmap* loaded = nullptr;
        ASSERT_TRUE(PLBitmap::LoadPNG(Path("round.png"), loaded, error)) << error;
        std::unique_ptr<PLBitmap> owner(loaded);
        ASSERT_EQ(loaded->GetWidth(), row.width);
        ASSERT_EQ(loaded->GetHeight(), row.height);
        EXPECT_TRUE(std::equal(pixels.begin(), pixels.end(), loaded->Pixels()));
    }
}

TEST_F(BitmapPngTest, EveryColourTypeIsReadAsArgb) {
    struct Row {
        const char* name;
        Bytes png;
        std::vector<uint32_t> expected;  // 2 x 1 pixels
    };
    const std::vector<Row> rows = {
        {"grey 8-bit", MakePng(2, 1, 8, 0, {0, 0x00, 0x80}), {0xFF000000, 0xFF808080}},
        {"grey with alpha",
         MakePng(2, 1, 8, 4, {0, 0x40, 0x00, 0xFF, 0x7F}),
         {0x00404040, 0x7FFFFFFF}},
        {"grey 1-bit", MakePng(2, 1, 1, 0, {0, 0x80}), {0xFFFFFFFF, 0xFF000000}},
        {"RGB 8-bit", MakePng(2, 1, 8, 2, {0, 1, 2, 3, 250, 251, 252}), {0xFF010203, 0xFFFAFBFC}},
        {"RGB 16-bit keeps the high bytes",
         MakePng(2, 1, 16, 2,
                 {0, 0x12, 0x00, 0x34, 0x00, 0x56, 0x00, 0xAB, 0x00, 0xCD, 0x00, 0xEF, 0x00}),
         {0xFF123456, 0xFFABCDEF}},
        {"RGBA", MakePng(2, 1, 8, 6, {0, 9, 8, 7, 0, 1, 2, 3, 200}), {0x00090807, 0xC8010203}},
        {"palette with transparency",
         MakePng(2, 1, 8, 3, {0, 1, 0}, {10, 20, 30, 40, 50, 60}, {0x80}),
         {0xFF28323C, 0x800A141E}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string path = Write("typed.png", row.png);
        PLBitmap* loaded = nullptr;
        std::string error;
        ASSERT_TRUE(PLBitmap::LoadPNG(path, loaded, error)) << error;
        std::unique_ptr<PLBitmap> owner(loaded);
        ASSERT_EQ(loaded->GetWidth(), 2);
        ASSERT_EQ(loaded->GetHeight(), 1);
        EXPECT_EQ(loaded->GetPixel(0, 0), row.expected[0]);
        EXPECT_EQ(loaded->GetPixel(1, 0), row.expected[1]);
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
    struct Row {
        const char* name;
        Bytes bytes;
        bool write;
    };
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
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string path = row.write ? Write("bad.png", row.bytes) : Path("absent.png");
        PLBitmap stale(1, 1);
        PLBitmap* loaded = &stale;  // a failed load must not leave an old pointer behind
        std::string error;
        EXPECT_FALSE(PLBitmap::LoadPNG(path, loaded, error));
        EXPECT_EQ(loaded, nullptr);
        EXPECT_NE(error.find(path), std::string::npos) << "the message names the file: " << error;
    }
}

TEST_F(BitmapPngTest, FailedSaveLeavesTheOldFileAlone) {
    const PLBitmap original(3, 2, std::vector<uint32_t>(6, 0xFF112233));
    std::string error;
    ASSERT_TRUE(original.SavePNG(Path("keep.png"), error)) << error;
    const PLBitmap empty(0, 0);
    EXPECT_FALSE(empty.SavePNG(Path("keep.png"), error));
    EXPECT_FALSE(original.SavePNG(Path("no/such/dir/x.png"), error));
    PLBitmap* loaded = nullptr;
    ASSERT_TRUE(PLBitmap::LoadPNG(Path("keep.png"), loaded, error)) << error;
    std::unique_ptr<PLBitmap> owner(loaded);
    EXPECT_EQ(loaded->GetPixel(2, 1), 0xFF112233u);
}

}  // namespace

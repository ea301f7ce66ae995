// Resources: the resource file writer and loader agree and refuse every kind of damaged file, PNG
// files load in every colour type and refuse damage, the resource compiler turns good sources into
// a file and refuses bad ones with file and line, and the compiled calendar.rsc fits its controls.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "PLBitmap.h"
#include "PLBitmapFamily.h"
#include "PLFont.h"
#include "PLResourceFileManager.h"
#include "PLTypes.h"
#include "toolkit_support.h"

namespace {

using Bytes = std::vector<uint8_t>;

// A 3x2 bitmap whose every pixel differs, alpha included.
PLBitmap SampleBitmap() {
    return PLBitmap(3, 2, {0xFF102030, 0x80405060, 0x00000000, 0xFFFFFFFF, 0x12345678, 0xFE00FF01});
}

// A small valid file with one entry of each kind.
PLResourceFileWriter SampleWriter() {
    PLResourceFileWriter writer;
    writer.AddText(10032, "Month");
    writer.AddText(10942, "Zwei\nZeilen, äöü 日曆");
    writer.AddBitmap(10130, SampleBitmap());
    writer.AddBitmap(10131, PLBitmap(1, 1, {0xFF00FF00}), PLFourCC("abcd"));
    const uint32_t states[4] = {10130, 10131, 0, 0};
    writer.AddBitmapFamily(30371, states);
    return writer;
}

namespace fs = std::filesystem;

// A scratch device root with files, a resource manager, and the resource compiler run on files
// there.
class ResourceFileTest : public ::testing::Test {
protected:
    std::string PathOf(const std::string& name) const { return mRoot.Path() + "/" + name; }
    // Writes the sample file as `name` and loads it into `manager`.
    void LoadSample(const std::string& name = "a.rsc") {
        std::string error;
        ASSERT_TRUE(SampleWriter().Write(PathOf(name), error)) << error;
        ASSERT_TRUE(manager.LoadFromFile(PathOf(name), false)) << manager.GetLastError();
    }
    const void* Get(uint32_t type, uint32_t id) const {
        return manager.GetResource(type, id, kPLWildcard);
    }
    std::string Text(uint32_t id) const {
        PLBasicString<char> text("<none>");
        manager.GetText(id, text);
        return text.str();
    }
    // Runs the compiler; returns its exit status (-1 when it did not exit) and its output.
    int Run(const std::string& arguments, std::string& output) {
        FILE* pipe = popen((CAL_BINARY_DIR "/bin/rsc " + arguments + " 2>&1").c_str(), "r");
        if (pipe == nullptr) {
            return -1;
        }
        char buffer[512];
        while (size_t n = fread(buffer, 1, sizeof buffer, pipe)) {
            output.append(buffer, n);
        }
        const int status = pclose(pipe);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    // Replaces the compiler's sources with `files` (name under src/ -> contents; "@png" is a real
    // 2x1 PNG) and compiles them into out.rsc.
    int Compile(const std::map<std::string, std::string>& files, std::string& output) {
        fs::remove_all(PathOf("src"));
        fs::create_directories(PathOf("src/bitmaps"));
        for (const auto& [name, contents] : files) {
            const std::string path = PathOf("src/" + name);
            std::string error;
            if (contents != "@png") {
                std::ofstream(path, std::ios::binary) << contents;
            } else if (!PLBitmap(2, 1, {0xFF0066FF, 0x80CC0000}).SavePNG(path, error)) {
                ADD_FAILURE() << error;
            }
        }
        return Run(PathOf("src") + " " + PathOf("out.rsc"), output);
    }

    ScratchRoot mRoot;  // also the device root
    PLResourceFileManager manager{10003, true};
};

TEST_F(ResourceFileTest, RoundTripAndLookupsBySelectorTypeAndId) {
    LoadSample();
    EXPECT_EQ(Text(10942), "Zwei\nZeilen, äöü 日曆");
    EXPECT_STREQ(static_cast<const char*>(Get(kPLResText, 10032)), "Month");
    EXPECT_EQ(Text(99999), "<none>") << "a missing text leaves the string alone";
    auto bitmap = static_cast<const PLBitmap*>(Get(kPLResBitmap, 10130));
    ASSERT_NE(bitmap, nullptr);
    ASSERT_EQ(std::make_pair(bitmap->GetWidth(), bitmap->GetHeight()), std::make_pair(3, 2));
    EXPECT_TRUE(std::equal(bitmap->Pixels(), bitmap->Pixels() + 6, SampleBitmap().Pixels()));
    EXPECT_EQ(bitmap, Get(kPLResBitmap, 10130)) << "made once and cached";
    auto family = static_cast<const PLBitmapFamily*>(Get(kPLResBitmapFamily, 30371));
    ASSERT_NE(family, nullptr);
    EXPECT_EQ(family, Get(kPLResBitmapFamily, 30371));
    EXPECT_EQ(family->GetBitmap(kPLBitmapNormal), bitmap);
    EXPECT_EQ(family->GetBitmap(kPLBitmapPressed), Get(kPLResBitmap, 10131));
    EXPECT_EQ(family->GetBitmap(kPLBitmapDisabled), bitmap) << "state 0 falls back to normal";
    EXPECT_EQ(manager.ListResources().size(), 5u);
    const std::tuple<const char*, uint32_t, uint32_t, uint32_t, bool> rows[] = {
        {"wildcard entry answers any selector", kPLResBitmap, 10130, PLFourCC("zzzz"), true},
        {"own selector", kPLResBitmap, 10131, PLFourCC("abcd"), true},
        {"wildcard request", kPLResBitmap, 10131, kPLWildcard, true},
        {"other selector", kPLResBitmap, 10131, PLFourCC("abce"), false},
        {"missing id", kPLResText, 99999, kPLWildcard, false},
        {"type must match", kPLResBitmap, 10032, kPLWildcard, false},
        {"family is not a bitmap", kPLResBitmap, 30371, kPLWildcard, false},
        {"unknown type", PLFourCC("blob"), 10032, kPLWildcard, false},
    };
    for (const auto& [name, type, id, selector, found] : rows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(manager.GetResource(type, id, selector) != nullptr, found);
    }
}

TEST_F(ResourceFileTest, LaterFileOverridesAndFailuresKeepEverything) {
    ASSERT_TRUE(PLDeviceRoot::MakeParentDirectories("/root/resource/calendar.rsc"));
    LoadSample("root/resource/calendar.rsc");
    EXPECT_TRUE(manager.LoadFromFile("/root/resource/calendar.rsc", true)) << "by device path";
    const void* oldBitmap = Get(kPLResBitmap, 10130);
    PLResourceFileWriter second;
    second.AddText(10032, "Monat");
    second.AddText(1, "new");
    std::string error;
    ASSERT_TRUE(second.Write(PathOf("b.rsc"), error)) << error;
    ASSERT_TRUE(manager.LoadFromFile(PathOf("b.rsc"), false));
    EXPECT_EQ(Text(10032), "Monat");
    EXPECT_EQ(Text(10942), "Zwei\nZeilen, äöü 日曆") << "entries of the first file stay";
    EXPECT_EQ(Get(kPLResBitmap, 10130), oldBitmap);

    EXPECT_FALSE(manager.LoadFromFile("/root/resource/other.rsc", true));
    EXPECT_NE(manager.GetLastError().find(mRoot.Path() + "/root/resource/other.rsc"),
              std::string::npos)
        << "the message names the file actually tried: " << manager.GetLastError();
    EXPECT_EQ(manager.ListResources().size(), 6u);

    // A refused write leaves the old file as it was.
    PLResourceFileWriter bad;
    bad.AddText(1, "x");
    bad.AddText(1, "y");
    const auto before = std::filesystem::file_size(PathOf("b.rsc"));
    EXPECT_FALSE(bad.Write(PathOf("b.rsc"), error));
    EXPECT_EQ(std::filesystem::file_size(PathOf("b.rsc")), before);
    EXPECT_TRUE(manager.LoadFromFile(PathOf("b.rsc"), false)) << manager.GetLastError();
}

TEST(ResourceWriter, RefusesWhatTheLoaderWouldRefuse) {
    using Add = std::function<void(PLResourceFileWriter&)>;
    const uint32_t missingNormal[4] = {0, 10130, 0, 0};
    const uint32_t unknownBitmap[4] = {10130, 777, 0, 0};
    // clang-format off
    struct Row { const char* name; Add add; const char* message; };
    const Row rows[] = {
        {"duplicate text", [](auto& w) { w.AddText(5, "a"), w.AddText(5, "b"); }, "twice"},
        {"NUL in text", [](auto& w) { w.AddText(5, std::string("a\0b", 3)); }, "NUL"},
        {"invalid UTF-8", [](auto& w) { w.AddText(5, "\xC3("); }, "UTF-8"},
        {"overlong UTF-8", [](auto& w) { w.AddText(5, "\xC0\xAF"); }, "UTF-8"},
        {"surrogate", [](auto& w) { w.AddText(5, "\xED\xA0\x80"); }, "UTF-8"},
        {"empty bitmap", [](auto& w) { w.AddBitmap(5, PLBitmap(0, 3)); }, "outside"},
        {"family without normal", [&](auto& w) { w.AddBitmapFamily(6, missingNormal); }, "normal"},
        {"family names a missing bitmap", [&](auto& w) { w.AddBitmapFamily(6, unknownBitmap); }, "777"},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLResourceFileWriter writer;
        writer.AddBitmap(10130, SampleBitmap());
        row.add(writer);
        std::string error;
        EXPECT_TRUE(writer.Serialize(error).empty());
        EXPECT_NE(error.find(row.message), std::string::npos) << error;
    }
}

// ---- damaged files: the sample file patched word by word ----

uint32_t Get32(const Bytes& bytes, size_t at) {
    return uint32_t(bytes[at]) | uint32_t(bytes[at + 1]) << 8 | uint32_t(bytes[at + 2]) << 16 |
           uint32_t(bytes[at + 3]) << 24;
}

void Put32(Bytes& bytes, size_t at, uint32_t value) {
    ASSERT_LE(at + 4, bytes.size()) << "the test patches outside its own file";
    for (int i = 0; i < 4; ++i) {
        bytes[at + i] = uint8_t(value >> (8 * i));
    }
}

// Where the table entry of (type, id) starts: type, id, selector, offset, length.
size_t Slot(const Bytes& bytes, uint32_t type, uint32_t id) {
    for (size_t at = 16; at + 20 <= bytes.size(); at += 20) {
        if (Get32(bytes, at) == type && Get32(bytes, at + 4) == id) {
            return at;
        }
    }
    ADD_FAILURE() << "no entry " << id;
    return 0;
}

// Where the payload of (type, id) starts.
size_t Data(const Bytes& bytes, uint32_t type, uint32_t id) {
    return Get32(bytes, Slot(bytes, type, id) + 12);
}

TEST_F(ResourceFileTest, RefusesEachKindOfDamageWithAClearMessage) {
    std::string error;
    const Bytes good = SampleWriter().Serialize(error);
    ASSERT_FALSE(good.empty()) << error;
    constexpr uint32_t kText = kPLResText, kBitmap = kPLResBitmap, kFamily = kPLResBitmapFamily;
    // Each row damages the sample file; with `reseal` the checksum is made right again so that
    // the check behind it is reached.
    // clang-format off
    struct Row {
        const char* name; std::function<void(Bytes&)> damage; bool reseal; const char* message;
    };
    const Row rows[] = {
        {"bad magic", [](Bytes& b) { b[0] = 'Q'; }, false, "magic"},
        {"bad version", [](Bytes& b) { Put32(b, 4, 2); }, false, "version 2"},
        {"checksum mismatch", [](Bytes& b) { b[Slot(b, kText, 10032) + 4] ^= 1; }, false, "checksum"},
        {"table past the end", [](Bytes& b) { Put32(b, 8, 1000000); }, true, "1000000 entries"},
        {"offset past the end", [](Bytes& b) { Put32(b, Slot(b, kText, 10032) + 12, 0xFFFFFFF0); },
         true, "outside the data"},
        {"length past the end", [](Bytes& b) { Put32(b, Slot(b, kText, 10032) + 16, 0xFFFFFFFF); },
         true, "outside the data"},
        {"offset inside the table", [](Bytes& b) { Put32(b, Slot(b, kText, 10032) + 12, 4); }, true,
         "outside the data"},
        {"fewer pixels than its size", [](Bytes& b) { Put32(b, Data(b, kBitmap, 10130), 4); }, true,
         "expected 40"},
        {"more pixels than its size", [](Bytes& b) { Put32(b, Data(b, kBitmap, 10130), 2); }, true,
         "expected 24"},
        {"oversized bitmap", [](Bytes& b) { Put32(b, Data(b, kBitmap, 10130), 5000); }, true, "5000x2"},
        {"size that overflows 32 bits", [](Bytes& b) {
             Put32(b, Data(b, kBitmap, 10130), 0xFFFFFFFF);
             Put32(b, Data(b, kBitmap, 10130) + 4, 0xFFFFFFFF); }, true, "outside"},
        {"bitmap without size fields", [](Bytes& b) { Put32(b, Slot(b, kBitmap, 10131) + 16, 2); },
         true, "shorter"},
        {"duplicate entry", [](Bytes& b) { Put32(b, Slot(b, kText, 10942) + 4, 10032); }, true, "duplicate"},
        {"family names a missing bitmap",
         [](Bytes& b) { Put32(b, Data(b, kFamily, 30371) + 4, 9); }, true, "bitmap 9"},
        {"family of the wrong size", [](Bytes& b) { Put32(b, Slot(b, kFamily, 30371) + 16, 4); },
         true, "bitmap family has 4 bytes"},
        {"text with NUL", [](Bytes& b) { b[Data(b, kText, 10032) + 1] = 0; }, true, "NUL"},
        {"text not UTF-8", [](Bytes& b) { b[Data(b, kText, 10032) + 1] = 0xFF; }, true, "UTF-8"},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Bytes bytes = good;
        row.damage(bytes);
        if (row.reseal) {
            Put32(bytes, 12, PLResourceFileManager::Checksum(bytes.data() + 16, bytes.size() - 16));
        }
        WriteBytes(PathOf("bad.rsc"), bytes);
        PLResourceFileManager fresh(1, true);
        EXPECT_FALSE(fresh.LoadFromFile(PathOf("bad.rsc"), false));
        const std::string& error = fresh.GetLastError();
        EXPECT_NE(error.find("bad.rsc"), std::string::npos) << error;
        EXPECT_NE(error.find(row.message), std::string::npos) << error;
        EXPECT_TRUE(fresh.ListResources().empty());
    }
}

TEST_F(ResourceFileTest, EveryTruncationAndEverySingleByteFlipIsRefused) {
    std::string error;
    const std::vector<uint8_t> good = SampleWriter().Serialize(error);
    ASSERT_FALSE(good.empty()) << error;
    for (size_t at = 0; at < good.size(); ++at) {
        WriteBytes(PathOf("cut.rsc"), std::vector<uint8_t>(good.begin(), good.begin() + at));
        std::vector<uint8_t> flipped = good;
        flipped[at] ^= 0x5A;
        WriteBytes(PathOf("flip.rsc"), flipped);
        PLResourceFileManager fresh(1, true);
        EXPECT_FALSE(fresh.LoadFromFile(PathOf("cut.rsc"), false)) << "length " << at;
        EXPECT_FALSE(fresh.LoadFromFile(PathOf("flip.rsc"), false)) << "byte " << at;
    }
}

// ---- PNG files ----

void PutBigEndian(Bytes& out, uint32_t v) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        out.push_back(uint8_t(v >> shift));
    }
}

void Chunk(Bytes& out, const char* type, const Bytes& data) {
    PutBigEndian(out, uint32_t(data.size()));
    Bytes typed(type, type + 4);
    typed.insert(typed.end(), data.begin(), data.end());
    out.insert(out.end(), typed.begin(), typed.end());
    PutBigEndian(out, PLResourceFileManager::Checksum(typed.data(), typed.size()));
}

// A PNG written by hand: the scanlines (each with its filter byte 0) go into one stored, that is
// uncompressed, deflate block, so no compressor is needed to make test files.
Bytes MakePng(uint32_t width, uint32_t height, uint8_t depth, uint8_t colorType,
              const Bytes& scanlines, const Bytes& palette = {}, const Bytes& transparency = {}) {
    Bytes out = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
    Bytes header;
    PutBigEndian(header, width);
    PutBigEndian(header, height);
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
    PutBigEndian(zlib, (b << 16) | a);
    Chunk(out, "IDAT", zlib);
    Chunk(out, "IEND", {});
    return out;
}

using BitmapPngTest = ResourceFileTest;

TEST_F(BitmapPngTest, SavedBitmapReadsBackPixelForPixelAndAFailedSaveLeavesTheOldFile) {
    std::vector<uint32_t> pixels;
    for (uint32_t i = 0; i < 240 * 320; ++i) {
        // Every alpha, including 0 and 255, with colours that differ per pixel.
        pixels.push_back((i * 37) << 24 | ((i * 7919) & 0xFFFFFF));
    }
    std::string error;
    ASSERT_TRUE(PLBitmap(240, 320, pixels).SavePNG(PathOf("keep.png"), error)) << error;
    EXPECT_FALSE(PLBitmap(0, 0).SavePNG(PathOf("keep.png"), error));
    EXPECT_FALSE(PLBitmap(1, 1).SavePNG(PathOf("no/such/dir/x.png"), error));
    PLBitmap* loaded = nullptr;
    ASSERT_TRUE(PLBitmap::LoadPNG(PathOf("keep.png"), loaded, error)) << error;
    std::unique_ptr<PLBitmap> owner(loaded);
    ASSERT_EQ(std::make_pair(loaded->GetWidth(), loaded->GetHeight()), std::make_pair(240, 320));
    EXPECT_TRUE(std::equal(pixels.begin(), pixels.end(), loaded->Pixels()));
}

// Every colour type is read as ARGB (the two pixels of a 2 x 1 image); damaged files are refused
// with a message that names the file.
TEST_F(BitmapPngTest, EveryColourTypeIsReadAsArgbAndDamageIsRefused) {
    const Bytes good = MakePng(2, 1, 8, 2, {0, 1, 2, 3, 4, 5, 6});
    auto damaged = [&good](size_t at, uint8_t value) {
        Bytes copy = good;
        copy[at] = value;
        return copy;
    };
    const size_t idatData = 8 + 25 + 8 + 2;  // signature, IHDR chunk, IDAT length+type, zlib header
    constexpr bool kRefused = false;
    // clang-format off
    struct Row { const char* name; Bytes png; bool loads; uint32_t left, right; };
    const std::vector<Row> rows = {
        {"grey 8-bit", MakePng(2, 1, 8, 0, {0, 0x00, 0x80}), true, 0xFF000000, 0xFF808080},
        {"grey with alpha", MakePng(2, 1, 8, 4, {0, 0x40, 0x00, 0xFF, 0x7F}), true, 0x00404040, 0x7FFFFFFF},
        {"grey 1-bit", MakePng(2, 1, 1, 0, {0, 0x80}), true, 0xFFFFFFFF, 0xFF000000},
        {"RGB 8-bit", MakePng(2, 1, 8, 2, {0, 1, 2, 3, 250, 251, 252}), true, 0xFF010203, 0xFFFAFBFC},
        {"RGB 16-bit keeps the high bytes",
         MakePng(2, 1, 16, 2, {0, 0x12, 0, 0x34, 0, 0x56, 0, 0xAB, 0, 0xCD, 0, 0xEF, 0}), true,
         0xFF123456, 0xFFABCDEF},
        {"RGBA", MakePng(2, 1, 8, 6, {0, 9, 8, 7, 0, 1, 2, 3, 200}), true, 0x00090807, 0xC8010203},
        {"palette with transparency",
         MakePng(2, 1, 8, 3, {0, 1, 0}, {10, 20, 30, 40, 50, 60}, {0x80}), true, 0xFF28323C, 0x800A141E},
        {"missing file", {}, kRefused, 0, 0},
        {"empty file", {}, kRefused, 0, 0},
        {"not a PNG", Bytes{'G', 'I', 'F', '8', '9', 'a', 0, 0, 0, 0}, kRefused, 0, 0},
        {"cut after the signature", Bytes(good.begin(), good.begin() + 8), kRefused, 0, 0},
        {"cut inside the image data", Bytes(good.begin(), good.begin() + 50), kRefused, 0, 0},
        {"header checksum wrong", damaged(8 + 8 + 13, 0x00), kRefused, 0, 0},
        {"image data checksum wrong", damaged(idatData + 3, 0x77), kRefused, 0, 0},
        {"width of zero", MakePng(0, 1, 8, 2, {0}), kRefused, 0, 0},
        {"gigantic size", MakePng(100000, 100000, 8, 2, {0, 1, 2, 3}), kRefused, 0, 0},
        {"impossible bit depth", MakePng(2, 1, 7, 2, {0, 1, 2, 3, 4, 5, 6}), kRefused, 0, 0},
        {"palette image without a palette", MakePng(2, 1, 8, 3, {0, 0, 1}), kRefused, 0, 0},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string path = PathOf(std::string(row.name) + ".png");
        if (row.name != std::string("missing file")) {
            WriteBytes(path, row.png);
        }
        PLBitmap stale(1, 1);
        PLBitmap* loaded = &stale;  // a failed load must not leave an old pointer behind
        std::string error;
        ASSERT_EQ(PLBitmap::LoadPNG(path, loaded, error), row.loads) << error;
        std::unique_ptr<PLBitmap> owner(row.loads ? loaded : nullptr);
        if (!row.loads) {
            EXPECT_EQ(loaded, nullptr);
            EXPECT_NE(error.find(path), std::string::npos) << "the message names the file";
            continue;
        }
        ASSERT_EQ(std::make_pair(loaded->GetWidth(), loaded->GetHeight()), std::make_pair(2, 1));
        EXPECT_EQ(std::make_pair(loaded->GetPixel(0, 0), loaded->GetPixel(1, 0)),
                  std::make_pair(row.left, row.right));
    }
}

// ---- the resource compiler, run as the build runs it ----

using ResourceCompilerTest = ResourceFileTest;

TEST_F(ResourceCompilerTest, CompilesTextsBitmapsAndFamilies) {
    std::string output;
    ASSERT_EQ(
        Compile({{"texts.txt", "# comment\n\n10032 Month\r\n10942 two\\nlines\\s\n11 a\\\\b \\t\n"},
                 {"bitmaps/10130.png", "@png"},
                 {"families.txt", "30371 10130 0 10130\n"},
                 {"required-ids.txt", "text 10032 10942\nbitm 10130\nbitf 30371\n"}},
                output),
        0)
        << output;
    ASSERT_TRUE(manager.LoadFromFile(PathOf("out.rsc"), false)) << manager.GetLastError();
    EXPECT_EQ((std::vector<std::string>{Text(10032), Text(10942), Text(11)}),
              (std::vector<std::string>{"Month", "two\nlines ", "a\\b \t"}));
    auto bitmap = static_cast<const PLBitmap*>(Get(kPLResBitmap, 10130));
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->GetPixel(0, 0), 0xFF0066FFu);
    EXPECT_EQ(bitmap->GetPixel(1, 0) >> 24, 0x80u);
    EXPECT_NE(Get(kPLResBitmapFamily, 30371), nullptr);

    // Command-line mistakes are usage errors.
    for (const char* arguments : {"", "only-one-argument", "--required", "--bogus a b", "a b c"}) {
        SCOPED_TRACE(arguments);
        output.clear();
        EXPECT_EQ(Run(arguments, output), 2) << output;
        EXPECT_NE(output.find("usage"), std::string::npos);
    }
}

TEST_F(ResourceCompilerTest, RefusesBadSourcesWithFileAndLine) {
    const std::pair<std::string, std::string> text = {"texts.txt", "1 a\n"},
                                              png = {"bitmaps/7.png", "@png"};
    // clang-format off
    // `message` is expected in the output.
    struct Row {
        const char* name; std::map<std::string, std::string> files; const char* message;
    } rows[] = {
        {"id without text", {{"texts.txt", "1 ok\n10032\n"}}, "texts.txt:2:"},
        {"id not a number", {{"texts.txt", "# c\nabc Month\n"}}, "texts.txt:2:"},
        {"id zero", {{"texts.txt", "0 Zero\n"}}, "texts.txt:1:"},
        {"id too large", {{"texts.txt", "4294967296 Big\n"}}, "texts.txt:1:"},
        {"duplicate text", {{"texts.txt", "5 a\n\n5 b\n"}}, "texts.txt:3: text 5 is already defined"},
        {"bad escape", {{"texts.txt", "5 a\\qb\n"}}, "unknown escape"},
        {"trailing backslash", {{"texts.txt", "5 ab\\\n"}}, "backslash ends"},
        {"invalid UTF-8", {{"texts.txt", "5 \xC3(\n"}}, "UTF-8"},
        {"missing texts.txt", {}, "texts.txt: cannot be read"},
        {"unreadable PNG", {text, {"bitmaps/7.png", "not a png"}}, "7.png: unreadable PNG"},
        {"PNG not named by id", {text, {"bitmaps/bell.png", "@png"}}, "named by its id"},
        {"family names missing bitmap", {text, png, {"families.txt", "# f\n9 7 8\n"}},
         "families.txt:2: family 9 names bitmap 8"},
        {"family without bitmaps", {text, {"families.txt", "9\n"}}, "families.txt:1:"},
        {"family with zero normal", {text, png, {"families.txt", "9 0 7\n"}}, "normal bitmap"},
        {"duplicate family", {text, png, {"families.txt", "9 7\n9 7\n"}},
         "families.txt:2: family 9 is already defined"},
        {"required text missing", {text, {"required-ids.txt", "text 1\ntext 1 10032\n"}},
         "required-ids.txt:2: text 10032 is required"},
        {"required bitmap missing", {text, {"required-ids.txt", "bitm 1\n"}}, "bitm 1 is required"},
        {"required family missing", {text, {"required-ids.txt", "bitf 1\n"}}, "bitf 1 is required"},
        {"required unknown type", {text, {"required-ids.txt", "font 1\n"}}, "required-ids.txt:1: 'font'"},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        fs::remove(PathOf("out.rsc"));
        std::string output;
        EXPECT_EQ(Compile(row.files, output), 1) << output;
        EXPECT_NE(output.find(row.message), std::string::npos) << output;
        EXPECT_FALSE(fs::exists(PathOf("out.rsc"))) << "nothing is written for bad sources";
    }
}

// ---- the compiled calendar.rsc: that it holds every required id, the compiler checks ----

class CalendarResourceTest : public ResourceFileTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(manager.LoadFromFile(CAL_BINARY_DIR "/share/calendar.rsc", false))
            << manager.GetLastError() << " (build the calendar_rsc target)";
    }
};

TEST_F(CalendarResourceTest, BitmapsAndButtonFamiliesHaveTheSizesTheirViewsUse) {
    // A family's normal and pressed bitmaps both have the size, and pressing must show.
    // clang-format off
    struct Row {
        const char* name; uint32_t type, id; int minWidth, maxWidth, minHeight, maxHeight;
    };
    const uint32_t kBitmap = kPLResBitmap, kFamily = kPLResBitmapFamily;
    const Row rows[] = {
        {"month weekday band", kBitmap, 10280, 1, 1, 29, 29},
        {"week name strip, pressed", kBitmap, 10290, 1, 1, 24, 24},
        {"week name strip", kBitmap, 10300, 1, 1, 24, 24},
        {"week number strip, pressed", kBitmap, 10310, 1, 1, 21, 21},
        {"week number strip", kBitmap, 10320, 1, 1, 21, 21},
        {"lunar strip", kBitmap, 10340, 1, 1, 30, 30},
        {"alarm icon", kBitmap, 10130, 12, 24, 12, 24},
        {"repeat icon", kBitmap, 10240, 12, 24, 12, 24},
        {"day button pressed", kBitmap, 10370, 20, 28, 20, 30},
        {"day button", kBitmap, 10380, 20, 28, 20, 30},
        {"error icon", kBitmap, 32050, 24, 32, 24, 32},
        {"info icon", kBitmap, 32060, 24, 32, 24, 32},
        {"question icon", kBitmap, 32130, 24, 32, 24, 32},
        {"warning icon", kBitmap, 32180, 24, 32, 24, 32},
        {"hour label", kFamily, 10091, 42, 42, 24, 24},
        {"centre bar button", kFamily, 30371, 154, 154, 36, 36},
        {"centre popup button", kFamily, 30391, 154, 154, 36, 36},
        {"side button", kFamily, 30401, 43, 43, 36, 36},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const void* resource = manager.GetResource(row.type, row.id, kPLWildcard);
        ASSERT_NE(resource, nullptr);
        std::vector<const PLBitmap*> bitmaps = {static_cast<const PLBitmap*>(resource)};
        if (row.type == kFamily) {
            auto family = static_cast<const PLBitmapFamily*>(resource);
            bitmaps = {family->GetBitmap(kPLBitmapNormal), family->GetBitmap(kPLBitmapPressed)};
            ASSERT_NE(bitmaps[1], nullptr);
            const int x = row.minWidth / 2, y = row.minHeight / 2;
            EXPECT_NE(bitmaps[0]->GetPixel(x, y), bitmaps[1]->GetPixel(x, y)) << "pressing shows";
        }
        for (const PLBitmap* bitmap : bitmaps) {
            EXPECT_GE(bitmap->GetWidth(), row.minWidth);
            EXPECT_LE(bitmap->GetWidth(), row.maxWidth);
            EXPECT_GE(bitmap->GetHeight(), row.minHeight);
            EXPECT_LE(bitmap->GetHeight(), row.maxHeight);
        }
    }
}

TEST_F(CalendarResourceTest, TextsFitTheirControls) {
    // The widths a control leaves for its text at 16 pixels: cells and buttons less a small
    // margin, radio labels less the radio mark, choices less their arrow.
    // clang-format off
    struct Row { const char* name; std::vector<uint32_t> ids; int maxWidth; };
    const Row rows[] = {
        {"short weekday names in 26-px buttons", {30532, 30542, 30552, 30562, 30572, 30582, 30592}, 26},
        {"labels of 70-px radios", {10502, 10652}, 50},
        {"labels of 90- and 105-px radios", {10572, 10592}, 70},
        {"80-px labels", {10582}, 80},
        {"80-px week-of-month choice", {10602, 10612, 10622, 10632, 10642}, 64},
        {"102-px weekday choice", {30462, 30472, 30482, 30492, 30502, 30512, 30522}, 86},
        {"152-px month choice",
         {30602, 30612, 30622, 30632, 30642, 30652, 30662, 30672, 30682, 30692, 30702, 30712}, 136},
        {"centre buttons", {30092, 30102, 11022, 30122, 10032, 10042, 10052}, 140},
        {"chooser rows of 120 px", {10452, 10462, 10472, 10482, 10492}, 120},
    };
    // clang-format on
    for (const Row& row : rows) {
        for (uint32_t id : row.ids) {
            SCOPED_TRACE(std::string(row.name) + ": " + std::to_string(id));
            PLBasicString<char> text;
            ASSERT_TRUE(manager.GetText(id, text) && text.Length() > 0);
            EXPECT_LE(PLFont::GetFont(PLFourCC("UC16"))->MeasureText(text.str()), row.maxWidth)
                << text.str();
        }
    }
}

}  // namespace

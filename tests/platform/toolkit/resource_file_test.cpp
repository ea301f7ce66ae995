// Resource files: writer and loader agree, and every kind of damaged file is refused cleanly.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "PLBitmap.h"
#include "PLBitmapFamily.h"
#include "PLDeviceRoot.h"
#include "PLResourceFileManager.h"
#include "PLTypes.h"
#include "toolkit_support.h"

namespace {

class ResourceFileTest : public ::testing::Test {
protected:
    std::string PathOf(const std::string& name) const { return mRoot.Path() + "/" + name; }
    void WriteBytes(const std::string& path, const std::vector<uint8_t>& bytes) const {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    }

    ScratchRoot mRoot;  // also the device root
};

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

TEST(ResourceChecksum, MatchesTheStandardCrc32) {
    const char* text = "123456789";
    EXPECT_EQ(PLResourceFileManager::Checksum(reinterpret_cast<const uint8_t*>(text), 9),
              0xCBF43926u);
    EXPECT_EQ(PLResourceFileManager::Checksum(nullptr, 0), 0u);
}

TEST_F(ResourceFileTest, RoundTripKeepsTextsBitmapsAndFamilies) {
    std::string error;
    ASSERT_TRUE(SampleWriter().Write(PathOf("a.rsc"), error)) << error;
    PLResourceFileManager manager(10003, true);
    ASSERT_TRUE(manager.LoadFromFile(PathOf("a.rsc"), false)) << manager.GetLastError();

    PLBasicString<char> text;
    ASSERT_TRUE(manager.GetText(10942, text));
    EXPECT_EQ(text.str(), "Zwei\nZeilen, äöü 日曆");
    auto raw = static_cast<const char*>(manager.GetResource(kPLResText, 10032, kPLWildcard));
    ASSERT_NE(raw, nullptr);
    EXPECT_STREQ(raw, "Month");

    auto bitmap =
        static_cast<const PLBitmap*>(manager.GetResource(kPLResBitmap, 10130, kPLWildcard));
    ASSERT_NE(bitmap, nullptr);
    PLBitmap expected = SampleBitmap();
    ASSERT_EQ(bitmap->GetWidth(), 3);
    ASSERT_EQ(bitmap->GetHeight(), 2);
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 3; ++x) {
            EXPECT_EQ(bitmap->GetPixel(x, y), expected.GetPixel(x, y)) << x << "," << y;
        }
    }
    // Made once and cached: the same object every time.
    EXPECT_EQ(bitmap, manager.GetResource(kPLResBitmap, 10130, kPLWildcard));

    auto family = static_cast<const PLBitmapFamily*>(
        manager.GetResource(kPLResBitmapFamily, 30371, kPLWildcard));
    ASSERT_NE(family, nullptr);
    EXPECT_EQ(family, manager.GetResource(kPLResBitmapFamily, 30371, kPLWildcard));
    EXPECT_EQ(family->GetBitmap(kPLBitmapNormal), bitmap);
    EXPECT_EQ(family->GetBitmap(kPLBitmapPressed),
              manager.GetResource(kPLResBitmap, 10131, kPLWildcard));
    EXPECT_EQ(family->GetBitmap(kPLBitmapDisabled), bitmap) << "state 0 falls back to normal";

    std::vector<std::pair<uint32_t, uint32_t>> listed = manager.ListResources();
    EXPECT_EQ(listed.size(), 5u);
}

TEST_F(ResourceFileTest, LookupsBySelectorTypeAndId) {
    std::string error;
    ASSERT_TRUE(SampleWriter().Write(PathOf("a.rsc"), error)) << error;
    PLResourceFileManager manager(1, true);
    ASSERT_TRUE(manager.LoadFromFile(PathOf("a.rsc"), false));
    struct Row {
        const char* name;
        uint32_t type;
        uint32_t id;
        uint32_t selector;
        bool found;
    };
    const Row rows[] = {
        {"wildcard entry answers any selector", kPLResBitmap, 10130, PLFourCC("zzzz"), true},
        {"own selector", kPLResBitmap, 10131, PLFourCC("abcd"), true},
        {"wildcard request", kPLResBitmap, 10131, kPLWildcard, true},
        {"other selector", kPLResBitmap, 10131, PLFourCC("abce"), false},
        {"missing id", kPLResText, 99999, kPLWildcard, false},
        {"type must match", kPLResBitmap, 10032, kPLWildcard, false},
        {"family is not a bitmap", kPLResBitmap, 30371, kPLWildcard, false},
        {"unknown type", PLFourCC("blob"), 10032, kPLWildcard, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(manager.GetResource(row.type, row.id, row.selector) != nullptr, row.found);
    }
    PLBasicString<char> text("untouched");
    EXPECT_FALSE(manager.GetText(99999, text));
    EXPECT_EQ(text.str(), "untouched");
}

TEST_F(ResourceFileTest, LaterFileOverridesAndFailedLoadKeepsEverything) {
    std::string error;
    ASSERT_TRUE(SampleWriter().Write(PathOf("a.rsc"), error)) << error;
    PLResourceFileWriter second;
    second.AddText(10032, "Monat");
    second.AddText(1, "new");
    ASSERT_TRUE(second.Write(PathOf("b.rsc"), error)) << error;

    PLResourceFileManager manager(1, true);
    ASSERT_TRUE(manager.LoadFromFile(PathOf("a.rsc"), false));
    const void* oldBitmap = manager.GetResource(kPLResBitmap, 10130, kPLWildcard);
    ASSERT_TRUE(manager.LoadFromFile(PathOf("b.rsc"), false));
    PLBasicString<char> text;
    ASSERT_TRUE(manager.GetText(10032, text));
    EXPECT_EQ(text.str(), "Monat");
    EXPECT_TRUE(manager.GetText(10942, text)) << "entries of the first file stay";
    EXPECT_EQ(manager.GetResource(kPLResBitmap, 10130, kPLWildcard), oldBitmap);

    EXPECT_FALSE(manager.LoadFromFile(PathOf("missing.rsc"), false));
    EXPECT_NE(manager.GetLastError().find("missing.rsc"), std::string::npos);
    EXPECT_TRUE(manager.GetText(1, text));
    EXPECT_EQ(manager.ListResources().size(), 6u);
}

TEST_F(ResourceFileTest, DevicePathsResolveUnderTheDeviceRoot) {
    ASSERT_TRUE(PLDeviceRoot::MakeParentDirectories("/root/resource/calendar.rsc"));
    std::string error;
    ASSERT_TRUE(SampleWriter().Write(PLDeviceRoot::Resolve("/root/resource/calendar.rsc"), error))
        << error;
    PLResourceFileManager manager(10003, true);
    EXPECT_TRUE(manager.LoadFromFile("/root/resource/calendar.rsc", true))
        << manager.GetLastError();
    EXPECT_FALSE(manager.LoadFromFile("/root/resource/other.rsc", true));
    EXPECT_NE(manager.GetLastError().find(mRoot.Path()), std::string::npos)
        << "the message names the file actually tried: " << manager.GetLastError();
}

TEST(ResourceWriter, RefusesWhatTheLoaderWouldRefuse) {
    struct Row {
        const char* name;
        std::function<void(PLResourceFileWriter&)> add;
        const char* message;
    };
    const uint32_t missingNormal[4] = {0, 10130, 0, 0};
    const uint32_t unknownBitmap[4] = {10130, 777, 0, 0};
    const Row rows[] = {
        {"duplicate text", [](auto& w) { w.AddText(5, "a"), w.AddText(5, "b"); }, "twice"},
        {"NUL in text", [](auto& w) { w.AddText(5, std::string("a\0b", 3)); }, "NUL"},
        {"invalid UTF-8", [](auto& w) { w.AddText(5, "\xC3("); }, "UTF-8"},
        {"overlong UTF-8", [](auto& w) { w.AddText(5, "\xC0\xAF"); }, "UTF-8"},
        {"surrogate", [](auto& w) { w.AddText(5, "\xED\xA0\x80"); }, "UTF-8"},
        {"empty bitmap", [](auto& w) { w.AddBitmap(5, PLBitmap(0, 3)); }, "outside"},
        {"family without normal", [&](auto& w) { w.AddBitmapFamily(6, missingNormal); }, "normal"},
        {"family names a missing bitmap", [&](auto& w) { w.AddBitmapFamily(6, unknownBitmap); },
         "777"},
    };
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

TEST_F(ResourceFileTest, FailedWriteLeavesTheOldFile) {
    std::string error;
    ASSERT_TRUE(SampleWriter().Write(PathOf("a.rsc"), error)) << error;
    auto before = std::filesystem::file_size(PathOf("a.rsc"));
    PLResourceFileWriter bad;
    bad.AddText(1, "x");
    bad.AddText(1, "y");
    EXPECT_FALSE(bad.Write(PathOf("a.rsc"), error));
    EXPECT_EQ(std::filesystem::file_size(PathOf("a.rsc")), before);
    PLResourceFileManager manager(1, true);
    EXPECT_TRUE(manager.LoadFromFile(PathOf("a.rsc"), false)) << manager.GetLastError();
}

// ---- damaged files ----

void Put32(std::vector<uint8_t>& bytes, size_t at, uint32_t value) {
    ASSERT_LE(at + 4, bytes.size()) << "the test patches outside its own file";
    for (int i = 0; i < 4; ++i) {
        bytes[at + i] = uint8_t(value >> (8 * i));
    }
}

void Seal(std::vector<uint8_t>& bytes) {
    Put32(bytes, 12, PLResourceFileManager::Checksum(bytes.data() + 16, bytes.size() - 16));
}

struct RawEntry {
    uint32_t type;
    uint32_t id;
    std::vector<uint8_t> data;
};

// Lays out a file by hand, independently of the writer, so that the loader's checks can be
// reached with contents the writer would never produce.
std::vector<uint8_t> Build(const std::vector<RawEntry>& entries) {
    std::vector<uint8_t> bytes(16 + 20 * entries.size());
    std::memcpy(bytes.data(), "PLRS", 4);
    Put32(bytes, 4, 1);
    Put32(bytes, 8, uint32_t(entries.size()));
    for (size_t i = 0; i < entries.size(); ++i) {
        size_t slot = 16 + 20 * i;
        Put32(bytes, slot, entries[i].type);
        Put32(bytes, slot + 4, entries[i].id);
        Put32(bytes, slot + 8, kPLWildcard);
        Put32(bytes, slot + 12, uint32_t(bytes.size()));
        Put32(bytes, slot + 16, uint32_t(entries[i].data.size()));
        bytes.insert(bytes.end(), entries[i].data.begin(), entries[i].data.end());
    }
    Seal(bytes);
    return bytes;
}

std::vector<uint8_t> Words(std::initializer_list<uint32_t> words) {
    std::vector<uint8_t> out(4 * words.size());
    size_t at = 0;
    for (uint32_t w : words) {
        Put32(out, at, w);
        at += 4;
    }
    return out;
}

TEST_F(ResourceFileTest, RefusesEachKindOfDamageWithAClearMessage) {
    const std::vector<RawEntry> oneText = {{kPLResText, 1, {'O', 'K'}}};
    const std::vector<uint8_t> pixel = Words({1, 1, 0xFF000000});
    constexpr size_t kNone = SIZE_MAX;
    constexpr size_t kOffset = 16 + 12;  // first entry's offset field
    constexpr size_t kLength = 16 + 16;
    // Each row lays out entries, then optionally stores one word at `at` and re-seals the
    // checksum so that the check behind it is reached.
    struct Row {
        const char* name;
        std::vector<RawEntry> entries;
        size_t at;
        uint32_t value;
        bool reseal;
        const char* message;
    };
    // clang-format off
    const Row rows[] = {
        {"bad magic", oneText, 0, 0x53524C51, false, "magic"},
        {"bad version", oneText, 4, 2, false, "version 2"},
        {"checksum mismatch", oneText, 16 + 4, 2, false, "checksum"},
        {"table past the end", oneText, 8, 1000000, true, "1000000 entries"},
        {"offset past the end", oneText, kOffset, 0xFFFFFFF0, true, "outside the data"},
        {"length past the end", oneText, kLength, 0xFFFFFFFF, true, "outside the data"},
        {"offset inside the table", oneText, kOffset, 4, true, "outside the data"},
        {"fewer pixels than its size",
         {{kPLResBitmap, 2, Words({2, 2, 0, 0, 0})}}, kNone, 0, false, "expected 24"},
        {"more pixels than its size",
         {{kPLResBitmap, 2, Words({1, 1, 0, 0})}}, kNone, 0, false, "expected 12"},
        {"oversized bitmap", {{kPLResBitmap, 2, Words({5000, 1, 0})}}, kNone, 0, false, "5000x1"},
        {"size that overflows 32 bits",
         {{kPLResBitmap, 2, Words({0xFFFFFFFF, 0xFFFFFFFF})}}, kNone, 0, false, "outside"},
        {"bitmap without size fields", {{kPLResBitmap, 2, {1, 2}}}, kNone, 0, false, "shorter"},
        {"duplicate entry", {oneText[0], oneText[0]}, kNone, 0, false, "duplicate"},
        {"family names a missing bitmap",
         {{kPLResBitmap, 2, pixel}, {kPLResBitmapFamily, 3, Words({2, 9, 0, 0})}},
         kNone,
         0,
         false,
         "bitmap 9"},
        {"family of the wrong size",
         {{kPLResBitmap, 2, pixel}, {kPLResBitmapFamily, 3, Words({2})}},
         kNone,
         0,
         false,
         "bitmap family has 4 bytes"},
        {"text with NUL", {{kPLResText, 1, {'a', 0, 'b'}}}, kNone, 0, false, "NUL"},
        {"text not UTF-8", {{kPLResText, 1, {0xFF, 0xFE}}}, kNone, 0, false, "UTF-8"},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<uint8_t> bytes = Build(row.entries);
        if (row.at != kNone) {
            Put32(bytes, row.at, row.value);
        }
        if (row.reseal) {
            Seal(bytes);
        }
        WriteBytes(PathOf("bad.rsc"), bytes);
        PLResourceFileManager manager(1, true);
        EXPECT_FALSE(manager.LoadFromFile(PathOf("bad.rsc"), false));
        const std::string& error = manager.GetLastError();
        EXPECT_NE(error.find("bad.rsc"), std::string::npos) << error;
        EXPECT_NE(error.find(row.message), std::string::npos) << error;
        EXPECT_TRUE(manager.ListResources().empty());
    }
}

TEST_F(ResourceFileTest, EveryTruncationAndEverySingleByteFlipIsRefused) {
    std::string error;
    std::vector<uint8_t> good = SampleWriter().Serialize(error);
    ASSERT_FALSE(good.empty()) << error;
    for (size_t length = 0; length < good.size(); ++length) {
        WriteBytes(PathOf("cut.rsc"), std::vector<uint8_t>(good.begin(), good.begin() + length));
        PLResourceFileManager manager(1, true);
        EXPECT_FALSE(manager.LoadFromFile(PathOf("cut.rsc"), false)) << "length " << length;
    }
    for (size_t at = 0; at < good.size(); ++at) {
        std::vector<uint8_t> flipped = good;
        flipped[at] ^= 0x5A;
        WriteBytes(PathOf("flip.rsc"), flipped);
        PLResourceFileManager manager(1, true);
        EXPECT_FALSE(manager.LoadFromFile(PathOf("flip.rsc"), false)) << "byte " << at;
    }
}

}  // namespace

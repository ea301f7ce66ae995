// Resource files: writer and loader agree, and every kind of damaged file is refused cleanly.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "PLBitmap.h"
#include "PLBitmapFamily.h"
#include "PLResourceFileManager.h"
#include "PLTypes.h"
#include "toolkit_support.h"

namespace {

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
    // clang-format off
    struct Row { const char* name; uint32_t type, id, selector; bool found; };
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
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(manager.GetResource(row.type, row.id, row.selector) != nullptr, row.found);
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

using Bytes = std::vector<uint8_t>;

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
    struct Row { const char* name; std::function<void(Bytes&)> damage; bool reseal; const char* message; };
    const Row rows[] = {
        {"bad magic", [](Bytes& b) { b[0] = 'Q'; }, false, "magic"},
        {"bad version", [](Bytes& b) { Put32(b, 4, 2); }, false, "version 2"},
        {"checksum mismatch", [](Bytes& b) { b[Slot(b, kText, 10032) + 4] ^= 1; }, false, "checksum"},
        {"table past the end", [](Bytes& b) { Put32(b, 8, 1000000); }, true, "1000000 entries"},
        {"offset past the end", [](Bytes& b) { Put32(b, Slot(b, kText, 10032) + 12, 0xFFFFFFF0); }, true, "outside the data"},
        {"length past the end", [](Bytes& b) { Put32(b, Slot(b, kText, 10032) + 16, 0xFFFFFFFF); }, true, "outside the data"},
        {"offset inside the table", [](Bytes& b) { Put32(b, Slot(b, kText, 10032) + 12, 4); }, true, "outside the data"},
        {"fewer pixels than its size", [](Bytes& b) { Put32(b, Data(b, kBitmap, 10130), 4); }, true, "expected 40"},
        {"more pixels than its size", [](Bytes& b) { Put32(b, Data(b, kBitmap, 10130), 2); }, true, "expected 24"},
        {"oversized bitmap", [](Bytes& b) { Put32(b, Data(b, kBitmap, 10130), 5000); }, true, "5000x2"},
        {"size that overflows 32 bits", [](Bytes& b) {
             Put32(b, Data(b, kBitmap, 10130), 0xFFFFFFFF); Put32(b, Data(b, kBitmap, 10130) + 4, 0xFFFFFFFF); }, true, "outside"},
        {"bitmap without size fields", [](Bytes& b) { Put32(b, Slot(b, kBitmap, 10131) + 16, 2); }, true, "shorter"},
        {"duplicate entry", [](Bytes& b) { Put32(b, Slot(b, kText, 10942) + 4, 10032); }, true, "duplicate"},
        {"family names a missing bitmap", [](Bytes& b) { Put32(b, Data(b, kFamily, 30371) + 4, 9); }, true, "bitmap 9"},
        {"family of the wrong size", [](Bytes& b) { Put32(b, Slot(b, kFamily, 30371) + 16, 4); }, true, "bitmap family has 4 bytes"},
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

}  // namespace

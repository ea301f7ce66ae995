// Fuzz target: compiled resource files from untrusted bytes. Each input is loaded as it stands and,
// when its checksum does not match, once more with the checksum corrected, so that the parsing
// behind the checksum is reached too; then every listed resource is looked up and read whole.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "FuzzCheck.h"
#include "FuzzTempDir.h"
#include "PLBitmap.h"
#include "PLBitmapFamily.h"
#include "PLResourceFileManager.h"
#include "PLTypes.h"

namespace {

uint32_t ReadWord(const uint8_t* p) {
    return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}

void WriteWord(uint8_t* p, uint32_t value) {
    for (int i = 0; i < 4; ++i) {
        p[i] = uint8_t(value >> (8 * i));
    }
}

// Reads every pixel, so that a bitmap shorter than its declared size shows up under ASan.
uint32_t TouchBitmap(const PLBitmap& bitmap) {
    FuzzCheck(bitmap.GetWidth() >= 1 && bitmap.GetWidth() <= PLResourceFileManager::kMaxBitmapSide,
              "a loaded bitmap's width is 1..kMaxBitmapSide");
    FuzzCheck(
        bitmap.GetHeight() >= 1 && bitmap.GetHeight() <= PLResourceFileManager::kMaxBitmapSide,
        "a loaded bitmap's height is 1..kMaxBitmapSide");
    uint32_t sum = 0;
    const size_t count = size_t(bitmap.GetWidth()) * size_t(bitmap.GetHeight());
    for (size_t i = 0; i < count; ++i) {
        sum += bitmap.Pixels()[i];
    }
    return sum;
}

void LookUp(const PLResourceFileManager& manager, uint32_t type, uint32_t id) {
    constexpr uint32_t kAnySelector = 0x3F3F3F3F;
    for (uint32_t selector : {kAnySelector, 0u, PLFourCC("UC16")}) {
        const void* resource = manager.GetResource(type, id, selector);
        if (resource == nullptr) {
            continue;
        }
        if (type == kPLResText) {
            const std::string_view text(static_cast<const char*>(resource));
            FuzzCheck(PLResourceFileManager::IsValidUTF8(text), "a loaded text is valid UTF-8");
        } else if (type == kPLResBitmap) {
            TouchBitmap(*static_cast<const PLBitmap*>(resource));
        } else if (type == kPLResBitmapFamily) {
            const auto* family = static_cast<const PLBitmapFamily*>(resource);
            FuzzCheck(family->GetBitmap(kPLBitmapNormal) != nullptr,
                      "a loaded family has its normal bitmap");
            for (int state = 0; state < kPLBitmapStateCount; ++state) {
                if (const PLBitmap* bitmap = family->GetBitmap(PLBitmapState(state))) {
                    TouchBitmap(*bitmap);
                }
            }
        }
    }
    if (type == kPLResText) {
        PLBasicString<char> text;
        FuzzCheck(manager.GetText(id, text), "a listed text is found by GetText");
        FuzzCheck(std::strlen(text.c_str()) == text.Length(), "a text holds no NUL");
    }
}

void LookUpAll(const PLResourceFileManager& manager) {
    for (const auto& [type, id] : manager.ListResources()) {
        LookUp(manager, type, id);
    }
    // Ids next to the listed ones and a type nobody stores must simply be absent.
    manager.GetResource(PLFourCC("none"), 1, 0x3F3F3F3F);
    manager.GetResource(kPLResText, 0, 0x3F3F3F3F);
}

// Loads the file into `manager`; a refused file must leave the manager's list as it was.
void Load(PLResourceFileManager& manager, const std::string& path) {
    const auto before = manager.ListResources();
    if (!manager.LoadFromFile(path, false)) {
        FuzzCheck(!manager.GetLastError().empty(), "a refused file comes with a message");
        FuzzCheck(manager.ListResources() == before, "a refused file adds nothing");
    }
    LookUpAll(manager);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzTempDir dir;
    if (!dir.Ok()) {
        return 0;
    }
    PLResourceFileManager manager(1, true);
    Load(manager, dir.WriteFile("as-is.rsc", data, size));

    const size_t header = PLResourceFileManager::kHeaderSize;
    if (size < header) {
        return 0;
    }
    const uint32_t crc = PLResourceFileManager::Checksum(data + header, size - header);
    if (ReadWord(data + 12) == crc) {
        return 0;
    }
    std::vector<uint8_t> fixed(data, data + size);
    WriteWord(fixed.data() + 12, crc);
    Load(manager, dir.WriteFile("fixed.rsc", fixed.data(), fixed.size()));
    return 0;
}

// Fuzz target: PNG files from untrusted bytes. Each input is loaded as it stands and, when a
// chunk's checksum is wrong, again with every chunk checksum corrected, so that libpng gets past
// its CRC test and the loader's handling of odd sizes and colour types is reached. A small loaded
// picture must survive a save and reload pixel for pixel.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "FuzzCheck.h"
#include "FuzzTempDir.h"
#include "PLBitmap.h"
#include "PLResourceFileManager.h"

namespace {

constexpr size_t kSignatureSize = 8;

uint32_t ReadBigEndian(const uint8_t* p) {
    return uint32_t(p[0]) << 24 | uint32_t(p[1]) << 16 | uint32_t(p[2]) << 8 | uint32_t(p[3]);
}

void WriteBigEndian(uint8_t* p, uint32_t value) {
    for (int i = 0; i < 4; ++i) {
        p[i] = uint8_t(value >> (24 - 8 * i));
    }
}

// Rewrites every complete chunk's CRC; returns whether anything changed.
bool FixChunkChecksums(std::vector<uint8_t>& bytes) {
    bool changed = false;
    size_t pos = kSignatureSize;
    while (pos + 12 <= bytes.size()) {
        const size_t length = ReadBigEndian(&bytes[pos]);
        if (length > bytes.size() - pos - 12) {
            break;
        }
        const uint32_t crc = PLResourceFileManager::Checksum(&bytes[pos + 4], length + 4);
        uint8_t* stored = &bytes[pos + 8 + length];
        if (ReadBigEndian(stored) != crc) {
            WriteBigEndian(stored, crc);
            changed = true;
        }
        pos += length + 12;
    }
    return changed;
}

void CheckRoundTrip(const FuzzTempDir& dir, const PLBitmap& bitmap) {
    std::string error;
    const std::string path = dir.Path() + "/saved.png";
    FuzzCheck(bitmap.SavePNG(path, error), "a loaded picture can be saved");
    PLBitmap* raw = nullptr;
    FuzzCheck(PLBitmap::LoadPNG(path, raw, error), "a saved picture loads");
    const std::unique_ptr<PLBitmap> again(raw);
    FuzzCheck(again->GetWidth() == bitmap.GetWidth() && again->GetHeight() == bitmap.GetHeight(),
              "the size survives a round trip");
    for (int y = 0; y < bitmap.GetHeight(); ++y) {
        for (int x = 0; x < bitmap.GetWidth(); ++x) {
            FuzzCheck(again->GetPixel(x, y) == bitmap.GetPixel(x, y),
                      "every pixel survives a round trip");
        }
    }
}

void Load(const FuzzTempDir& dir, const std::vector<uint8_t>& bytes) {
    const std::string path = dir.WriteFile("input.png", bytes.data(), bytes.size());
    if (path.empty()) {
        return;
    }
    PLBitmap* raw = nullptr;
    std::string error;
    const bool loaded = PLBitmap::LoadPNG(path, raw, error);
    const std::unique_ptr<PLBitmap> bitmap(raw);
    FuzzCheck(loaded == (bitmap != nullptr), "a bitmap exactly when the load succeeds");
    if (!loaded) {
        FuzzCheck(!error.empty(), "a refused picture comes with a reason");
        return;
    }
    FuzzCheck(bitmap->GetWidth() >= 1 && bitmap->GetWidth() <= 4096 && bitmap->GetHeight() >= 1 &&
                  bitmap->GetHeight() <= 4096,
              "a loaded picture has a size the toolkit draws");
    if (size_t(bitmap->GetWidth()) * size_t(bitmap->GetHeight()) <= 4096) {
        CheckRoundTrip(dir, *bitmap);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzTempDir dir;
    if (!dir.Ok()) {
        return 0;
    }
    std::vector<uint8_t> bytes(data, data + size);
    Load(dir, bytes);
    if (FixChunkChecksums(bytes)) {
        Load(dir, bytes);
    }
    return 0;
}

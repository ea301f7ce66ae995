// Resources from a compiled resource file (.rsc): texts, bitmaps and bitmap families.
//
// File format, all integers unsigned 32-bit little-endian:
//
//   header (16 bytes)   "PLRS", version (1), entry count, CRC-32 (IEEE, as zlib computes it) of
//                       every byte after the header
//   entry table         per entry 20 bytes: type, id, selector, offset (from the start of the
//                       file), length
//   data                the entries' payloads
//
// Payloads by type:
//   'text'  UTF-8 bytes, no NUL inside and none at the end (the loader adds it)
//   'bitm'  width, height (1..kMaxBitmapSide each), then width * height ARGB pixels row by row
//   'bitf'  four bitmap ids: normal, pressed, disabled, selected; 0 = none (falls back to normal);
//           the normal one is required, and every id named must be a bitmap of the same file
//
// A (type, id) pair appears at most once in a file. Loading checks every bound and the checksum and
// refuses a bad file with a message that names it and what is wrong; nothing of a refused file is
// kept. A second file loaded into the same manager adds its entries; where it holds a (type, id)
// that an earlier file held, the newer entry wins, while objects already handed out stay valid
// until the manager goes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "PLResourceManager.h"

class PLBitmap;
class PLBitmapFamily;

class PLResourceFileManager : public PLResourceManager {
public:
    static constexpr uint32_t kVersion = 1;
    static constexpr size_t kHeaderSize = 16;
    static constexpr size_t kEntrySize = 20;
    static constexpr int kMaxBitmapSide = 4096;
    // A resource file larger than this is refused before it is read (a phone's resource file is
    // a few hundred kilobytes; anything this big is not one).
    static constexpr size_t kMaxFileSize = 64u * 1024u * 1024u;

    // `ownsResources` records whether the objects this manager makes are its own; the manager
    // always deletes the bitmaps and families it made when it goes, since it hands out only
    // borrowed pointers.
    PLResourceFileManager(uint32_t id, bool ownsResources);
    ~PLResourceFileManager() override;
    PLResourceFileManager(const PLResourceFileManager&) = delete;
    PLResourceFileManager& operator=(const PLResourceFileManager&) = delete;

    // Loads a resource file by device path (resolved under the device root; with `devicePath`
    // false the path is used as it stands). Returns false and sets GetLastError on failure; a
    // failed load keeps what was loaded before.
    bool LoadFromFile(const std::string& path, bool devicePath = true);
    const std::string& GetLastError() const { return mLastError; }
    bool GetOwnsResources() const { return mOwnsResources; }

    // 'bitm' gives a PLBitmap*, 'bitf' a PLBitmapFamily*, 'text' a NUL-terminated UTF-8 text; the
    // manager keeps ownership. The selector '????' matches any, and an entry stored with '????'
    // answers any selector.
    const void* GetResource(uint32_t type, uint32_t id, uint32_t selector) const override;
    bool GetText(uint32_t id, PLBasicString<char>& text) const override;
    // Every (type, id) the manager holds, in ascending order, for tools and tests.
    std::vector<std::pair<uint32_t, uint32_t>> ListResources() const;

    // CRC-32 (IEEE 802.3, reflected, as zlib's crc32) of a byte range.
    static uint32_t Checksum(const uint8_t* data, size_t length);
    // Strict UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
    static bool IsValidUTF8(std::string_view text);

private:
    struct Entry {
        uint32_t selector;
        std::vector<uint8_t> data;  // texts carry their terminating NUL here
    };
    using Key = std::pair<uint32_t, uint32_t>;

    const Entry* FindEntry(uint32_t type, uint32_t id, uint32_t selector) const;
    const PLBitmap* BitmapFor(const Key& key, const Entry& entry) const;
    const PLBitmapFamily* FamilyFor(const Key& key, const Entry& entry) const;
    void Adopt(std::map<Key, Entry>&& loaded);

    bool mOwnsResources;
    std::map<Key, Entry> mEntries;
    mutable std::map<Key, std::unique_ptr<PLBitmap>> mBitmaps;
    mutable std::map<Key, std::unique_ptr<PLBitmapFamily>> mFamilies;
    // Objects made from entries that a later file replaced: callers may still hold them.
    std::vector<std::unique_ptr<PLBitmap>> mRetiredBitmaps;
    std::vector<std::unique_ptr<PLBitmapFamily>> mRetiredFamilies;
    std::string mLastError;
};

// Writes resource files (the resource compiler and tests use it). It refuses to write what the
// loader would refuse: duplicate (type, id) pairs, texts with a NUL or invalid UTF-8, bitmaps of
// impossible size, families without a normal bitmap or naming a bitmap it does not hold.
class PLResourceFileWriter {
public:
    void AddText(uint32_t id, const std::string& utf8);
    void AddBitmap(uint32_t id, const PLBitmap& bitmap, uint32_t selector = 0x3F3F3F3F);
    // Ids of the bitmaps for normal, pressed, disabled and selected (0 = use normal).
    void AddBitmapFamily(uint32_t id, const uint32_t (&bitmapIDs)[4],
                         uint32_t selector = 0x3F3F3F3F);
    // Any entry as raw bytes, for resource types this writer has no helper for.
    void AddRaw(uint32_t type, uint32_t id, uint32_t selector, std::vector<uint8_t> data);
    size_t GetEntryCount() const { return mEntries.size(); }

    // Writes the file next to `path` and renames it into place, so that a failed write never
    // spoils an existing file. Returns false with a message in `error`.
    bool Write(const std::string& path, std::string& error) const;
    // The bytes of the file, or an empty vector with a message in `error`.
    std::vector<uint8_t> Serialize(std::string& error) const;

private:
    struct Entry {
        uint32_t type;
        uint32_t id;
        uint32_t selector;
        std::vector<uint8_t> data;
    };
    std::vector<Entry> mEntries;
};

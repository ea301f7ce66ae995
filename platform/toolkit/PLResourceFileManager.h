// Resources from a compiled resource file (.rsc): texts, bitmaps and bitmap families.
//
// File format (little-endian): header "PLRS", version 1, entry count, CRC-32 of everything after the
// header; then the entry table (type, id, selector, offset, length per entry) and the data. Texts are
// UTF-8; a bitmap is width, height and ARGB pixels; a bitmap family is a selector and the ids of its
// bitmaps per state (0 = none). Loading checks every bound and the checksum and refuses a bad file
// with a message that names it and what is wrong.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "PLResourceManager.h"

class PLBitmap;
class PLBitmapFamily;

class PLResourceFileManager : public PLResourceManager {
public:
    PLResourceFileManager(uint32_t id, bool ownsResources);
    ~PLResourceFileManager() override;

    // Loads a resource file by device path (resolved under the device root; with `devicePath`
    // false the path is used as it stands). Returns false and sets GetLastError on failure; a
    // failed load keeps what was loaded before.
    bool LoadFromFile(const std::string& path, bool devicePath = true);
    const std::string& GetLastError() const { return mLastError; }

    const void* GetResource(uint32_t type, uint32_t id, uint32_t selector) const override;
    bool GetText(uint32_t id, PLBasicString<char>& text) const override;
    // Every (type, id) the file holds, for tools and tests.
    std::vector<std::pair<uint32_t, uint32_t>> ListResources() const;

private:
    struct Entry {
        uint32_t selector;
        std::vector<uint8_t> data;
    };
    std::map<std::pair<uint32_t, uint32_t>, Entry> mEntries;
    mutable std::map<std::pair<uint32_t, uint32_t>, std::unique_ptr<PLBitmap>> mBitmaps;
    mutable std::map<std::pair<uint32_t, uint32_t>, std::unique_ptr<PLBitmapFamily>> mFamilies;
    std::string mLastError;
};

// Writes resource files (the resource compiler and tests use it).
class PLResourceFileWriter {
public:
    void AddText(uint32_t id, const std::string& utf8);
    void AddBitmap(uint32_t id, const PLBitmap& bitmap, uint32_t selector = 0x3F3F3F3F);
    // Ids of the bitmaps for normal, pressed, disabled and selected (0 = use normal).
    void AddBitmapFamily(uint32_t id, const uint32_t (&bitmapIDs)[4], uint32_t selector = 0x3F3F3F3F);
    bool Write(const std::string& path, std::string& error) const;

private:
    struct Entry {
        uint32_t type;
        uint32_t id;
        uint32_t selector;
        std::vector<uint8_t> data;
    };
    std::vector<Entry> mEntries;
};

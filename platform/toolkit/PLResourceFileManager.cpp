// Reading and writing compiled resource files; the format is described in the header.
#include "PLResourceFileManager.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <set>

#include "PLBitmap.h"
#include "PLBitmapFamily.h"
#include "PLDeviceRoot.h"
#include "PLTypes.h"

namespace {

constexpr char kMagic[4] = {'P', 'L', 'R', 'S'};
constexpr size_t kFamilyPayloadSize = 16;
constexpr size_t kBitmapHeaderSize = 8;

uint32_t ReadU32(const uint8_t* p) {
    return uint32_t(p[0]) | (uint32_t(p[1]) << 8) | (uint32_t(p[2]) << 16) | (uint32_t(p[3]) << 24);
}

void AppendU32(std::vector<uint8_t>& out, uint32_t value) {
    out.push_back(uint8_t(value));
    out.push_back(uint8_t(value >> 8));
    out.push_back(uint8_t(value >> 16));
    out.push_back(uint8_t(value >> 24));
}

void StoreU32(uint8_t* p, uint32_t value) {
    p[0] = uint8_t(value);
    p[1] = uint8_t(value >> 8);
    p[2] = uint8_t(value >> 16);
    p[3] = uint8_t(value >> 24);
}

// "'bitm' 10130": how messages name an entry. Codes with unprintable bytes are written in hex.
std::string Describe(uint32_t type, uint32_t id) {
    std::string code;
    for (int shift = 24; shift >= 0; shift -= 8) {
        char c = char((type >> shift) & 0xFF);
        if (c < 0x20 || c > 0x7E) {
            char hex[16];
            std::snprintf(hex, sizeof hex, "0x%08X", type);
            code = hex;
            break;
        }
        code += c;
    }
    if (code.size() == 4) {
        code = "'" + code + "'";
    }
    return code + " " + std::to_string(id);
}

bool IsValidUTF8Bytes(const uint8_t* s, size_t n) {
    size_t i = 0;
    while (i < n) {
        uint8_t c = s[i];
        if (c < 0x80) {
            ++i;
            continue;
        }
        size_t extra;
        uint32_t cp;
        uint32_t minimum;
        if ((c & 0xE0) == 0xC0) {
            extra = 1, cp = c & 0x1F, minimum = 0x80;
        } else if ((c & 0xF0) == 0xE0) {
            extra = 2, cp = c & 0x0F, minimum = 0x800;
        } else if ((c & 0xF8) == 0xF0) {
            extra = 3, cp = c & 0x07, minimum = 0x10000;
        } else {
            return false;
        }
        if (n - i <= extra) {
            return false;
        }
        for (size_t k = 1; k <= extra; ++k) {
            if ((s[i + k] & 0xC0) != 0x80) {
                return false;
            }
            cp = (cp << 6) | (s[i + k] & 0x3F);
        }
        if (cp < minimum || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
            return false;
        }
        i += extra + 1;
    }
    return true;
}

// Checks one payload on its own; returns what is wrong, or an empty string.
std::string CheckPayload(uint32_t type, const std::vector<uint8_t>& data) {
    if (type == kPLResText) {
        for (uint8_t byte : data) {
            if (byte == 0) {
                return "text contains a NUL byte";
            }
        }
        if (!IsValidUTF8Bytes(data.data(), data.size())) {
            return "text is not valid UTF-8";
        }
        return {};
    }
    if (type == kPLResBitmap) {
        if (data.size() < kBitmapHeaderSize) {
            return "bitmap is shorter than its size fields (" + std::to_string(data.size()) +
                   " bytes)";
        }
        uint32_t width = ReadU32(data.data());
        uint32_t height = ReadU32(data.data() + 4);
        if (width == 0 || height == 0 || width > uint32_t(PLResourceFileManager::kMaxBitmapSide) ||
            height > uint32_t(PLResourceFileManager::kMaxBitmapSide)) {
            return "bitmap size " + std::to_string(width) + "x" + std::to_string(height) +
                   " is outside 1.." + std::to_string(PLResourceFileManager::kMaxBitmapSide);
        }
        uint64_t expected = uint64_t(width) * height * 4 + kBitmapHeaderSize;
        if (data.size() != expected) {
            return "bitmap of " + std::to_string(width) + "x" + std::to_string(height) + " has " +
                   std::to_string((data.size() - kBitmapHeaderSize) / 4) + " pixels' bytes (" +
                   std::to_string(data.size()) + " bytes, expected " + std::to_string(expected) +
                   ")";
        }
        return {};
    }
    if (type == kPLResBitmapFamily) {
        if (data.size() != kFamilyPayloadSize) {
            return "bitmap family has " + std::to_string(data.size()) + " bytes, expected " +
                   std::to_string(kFamilyPayloadSize);
        }
        if (ReadU32(data.data()) == 0) {
            return "bitmap family has no normal bitmap";
        }
        return {};
    }
    return {};  // other types are carried as they are
}

using Key = std::pair<uint32_t, uint32_t>;

// A family may only name bitmaps that the same set of entries holds.
template <class HasBitmap>
std::string CheckFamilyReferences(uint32_t familyID, const std::vector<uint8_t>& data,
                                  HasBitmap hasBitmap) {
    for (size_t state = 0; state < 4; ++state) {
        uint32_t bitmapID = ReadU32(data.data() + 4 * state);
        if (bitmapID != 0 && !hasBitmap(bitmapID)) {
            return Describe(kPLResBitmapFamily, familyID) + " names bitmap " +
                   std::to_string(bitmapID) + ", which the file does not hold";
        }
    }
    return {};
}

bool ReadWholeFile(const std::string& path, std::vector<uint8_t>& bytes, std::string& problem) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        problem = "cannot be opened (missing or unreadable)";
        return false;
    }
    in.seekg(0, std::ios::end);
    std::streamoff size = in.tellg();
    if (size < 0) {
        problem = "cannot be read (not a regular file?)";
        return false;
    }
    if (uint64_t(size) > PLResourceFileManager::kMaxFileSize) {
        problem = "is " + std::to_string(size) + " bytes, more than a resource file can be (" +
                  std::to_string(PLResourceFileManager::kMaxFileSize) + ")";
        return false;
    }
    in.seekg(0, std::ios::beg);
    bytes.resize(size_t(size));
    if (size > 0 && !in.read(reinterpret_cast<char*>(bytes.data()), size)) {
        problem = "could not be read completely";
        return false;
    }
    return true;
}

// Parses and checks a whole file image; fills `entries` only when everything is right.
bool ParseImage(const std::vector<uint8_t>& bytes,
                std::map<Key, std::pair<uint32_t, std::vector<uint8_t>>>& entries,
                std::string& problem) {
    const size_t size = bytes.size();
    if (size < PLResourceFileManager::kHeaderSize) {
        problem = "is truncated: " + std::to_string(size) + " bytes, shorter than the " +
                  std::to_string(PLResourceFileManager::kHeaderSize) + "-byte header";
        return false;
    }
    if (std::memcmp(bytes.data(), kMagic, 4) != 0) {
        problem = "is not a resource file (bad magic, expected \"PLRS\")";
        return false;
    }
    uint32_t version = ReadU32(&bytes[4]);
    if (version != PLResourceFileManager::kVersion) {
        problem = "has format version " + std::to_string(version) + ", this program reads " +
                  std::to_string(PLResourceFileManager::kVersion);
        return false;
    }
    uint32_t count = ReadU32(&bytes[8]);
    uint64_t tableEnd =
        PLResourceFileManager::kHeaderSize + uint64_t(count) * PLResourceFileManager::kEntrySize;
    if (tableEnd > size) {
        problem = "is truncated: its table of " + std::to_string(count) + " entries needs " +
                  std::to_string(tableEnd) + " bytes, the file has " + std::to_string(size);
        return false;
    }
    uint32_t stored = ReadU32(&bytes[12]);
    uint32_t actual =
        PLResourceFileManager::Checksum(bytes.data() + PLResourceFileManager::kHeaderSize,
                                        size - PLResourceFileManager::kHeaderSize);
    if (stored != actual) {
        char text[96];
        std::snprintf(text, sizeof text, "fails its checksum (stored %08X, computed %08X)", stored,
                      actual);
        problem = text;
        return false;
    }
    std::map<Key, std::pair<uint32_t, std::vector<uint8_t>>> parsed;
    for (uint32_t i = 0; i < count; ++i) {
        const uint8_t* e = &bytes[PLResourceFileManager::kHeaderSize +
                                  size_t(i) * PLResourceFileManager::kEntrySize];
        uint32_t type = ReadU32(e);
        uint32_t id = ReadU32(e + 4);
        uint32_t selector = ReadU32(e + 8);
        uint32_t offset = ReadU32(e + 12);
        uint32_t length = ReadU32(e + 16);
        std::string name = "entry " + std::to_string(i) + " (" + Describe(type, id) + ")";
        if (offset < tableEnd || uint64_t(offset) + length > size) {
            problem = name + " lies outside the data (offset " + std::to_string(offset) +
                      ", length " + std::to_string(length) + ", file " + std::to_string(size) +
                      " bytes, data from " + std::to_string(tableEnd) + ")";
            return false;
        }
        std::vector<uint8_t> data(bytes.begin() + offset, bytes.begin() + offset + length);
        std::string bad = CheckPayload(type, data);
        if (!bad.empty()) {
            problem = name + ": " + bad;
            return false;
        }
        if (!parsed.emplace(Key(type, id), std::make_pair(selector, std::move(data))).second) {
            problem = name + " is a duplicate: the file holds " + Describe(type, id) + " twice";
            return false;
        }
    }
    for (const auto& [key, value] : parsed) {
        if (key.first != kPLResBitmapFamily) {
            continue;
        }
        std::string bad = CheckFamilyReferences(key.second, value.second, [&](uint32_t bitmapID) {
            return parsed.count(Key(kPLResBitmap, bitmapID)) != 0;
        });
        if (!bad.empty()) {
            problem = bad;
            return false;
        }
    }
    entries = std::move(parsed);
    return true;
}

bool SelectorMatches(uint32_t stored, uint32_t wanted) {
    return wanted == kPLWildcard || stored == kPLWildcard || stored == wanted;
}

}  // namespace

PLResourceFileManager::PLResourceFileManager(uint32_t id, bool ownsResources)
    : PLResourceManager(id), mOwnsResources(ownsResources) {}

PLResourceFileManager::~PLResourceFileManager() {
    // Families point into the bitmaps, so they go first.
    mFamilies.clear();
    mRetiredFamilies.clear();
}

uint32_t PLResourceFileManager::Checksum(const uint8_t* data, size_t length) {
    static const std::array<uint32_t, 256> table = [] {
        std::array<uint32_t, 256> t{};
        for (uint32_t n = 0; n < 256; ++n) {
            uint32_t c = n;
            for (int k = 0; k < 8; ++k) {
                c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            }
            t[n] = c;
        }
        return t;
    }();
    uint32_t crc = 0xFFFFFFFFu;
    for (size_t i = 0; i < length; ++i) {
        crc = table[(crc ^ data[i]) & 0xFF] ^ (crc >> 8);
    }
    return crc ^ 0xFFFFFFFFu;
}

bool PLResourceFileManager::IsValidUTF8(std::string_view text) {
    return IsValidUTF8Bytes(reinterpret_cast<const uint8_t*>(text.data()), text.size());
}

bool PLResourceFileManager::LoadFromFile(const std::string& path, bool devicePath) {
    const std::string fileName = devicePath ? PLDeviceRoot::Resolve(path) : path;
    std::vector<uint8_t> bytes;
    std::string problem;
    std::map<Key, std::pair<uint32_t, std::vector<uint8_t>>> parsed;
    if (!ReadWholeFile(fileName, bytes, problem) || !ParseImage(bytes, parsed, problem)) {
        mLastError = "resource file " + fileName + " " + problem;
        return false;
    }
    std::map<Key, Entry> loaded;
    for (auto& [key, value] : parsed) {
        Entry entry{value.first, std::move(value.second)};
        if (key.first == kPLResText) {
            entry.data.push_back(0);
        }
        loaded.emplace(key, std::move(entry));
    }
    Adopt(std::move(loaded));
    mLastError.clear();
    return true;
}

void PLResourceFileManager::Adopt(std::map<Key, Entry>&& loaded) {
    for (auto& [key, entry] : loaded) {
        if (auto b = mBitmaps.find(key); b != mBitmaps.end()) {
            mRetiredBitmaps.push_back(std::move(b->second));
            mBitmaps.erase(b);
        }
        if (auto f = mFamilies.find(key); f != mFamilies.end()) {
            mRetiredFamilies.push_back(std::move(f->second));
            mFamilies.erase(f);
        }
        mEntries[key] = std::move(entry);
    }
}

const PLResourceFileManager::Entry* PLResourceFileManager::FindEntry(uint32_t type, uint32_t id,
                                                                     uint32_t selector) const {
    auto it = mEntries.find(Key(type, id));
    if (it == mEntries.end() || !SelectorMatches(it->second.selector, selector)) {
        return nullptr;
    }
    return &it->second;
}

const PLBitmap* PLResourceFileManager::BitmapFor(const Key& key, const Entry& entry) const {
    auto cached = mBitmaps.find(key);
    if (cached != mBitmaps.end()) {
        return cached->second.get();
    }
    // The payload was checked at load: the size fields are in range and the pixels are all there.
    const uint8_t* p = entry.data.data();
    int width = int(ReadU32(p));
    int height = int(ReadU32(p + 4));
    std::vector<uint32_t> pixels(size_t(width) * size_t(height));
    for (size_t i = 0; i < pixels.size(); ++i) {
        pixels[i] = ReadU32(p + kBitmapHeaderSize + 4 * i);
    }
    auto bitmap = std::make_unique<PLBitmap>(width, height, std::move(pixels));
    const PLBitmap* result = bitmap.get();
    mBitmaps.emplace(key, std::move(bitmap));
    return result;
}

const PLBitmapFamily* PLResourceFileManager::FamilyFor(const Key& key, const Entry& entry) const {
    auto cached = mFamilies.find(key);
    if (cached != mFamilies.end()) {
        return cached->second.get();
    }
    auto family = std::make_unique<PLBitmapFamily>(entry.selector, false);
    for (int state = 0; state < kPLBitmapStateCount; ++state) {
        uint32_t bitmapID = ReadU32(entry.data.data() + 4 * state);
        if (bitmapID == 0) {
            continue;
        }
        // The family borrows the manager's bitmaps, the same objects that 'bitm' lookups give.
        // Loading checked that each named bitmap exists and entries are never removed, so the
        // lookup succeeds; a null is still never stored.
        auto bitmap =
            static_cast<const PLBitmap*>(GetResource(kPLResBitmap, bitmapID, kPLWildcard));
        if (bitmap != nullptr) {
            family->SetBitmap(PLBitmapState(state), const_cast<PLBitmap*>(bitmap));
        }
    }
    const PLBitmapFamily* result = family.get();
    mFamilies.emplace(key, std::move(family));
    return result;
}

const void* PLResourceFileManager::GetResource(uint32_t type, uint32_t id,
                                               uint32_t selector) const {
    const Entry* entry = FindEntry(type, id, selector);
    if (entry == nullptr) {
        return nullptr;
    }
    if (type == kPLResText) {
        return entry->data.data();
    }
    if (type == kPLResBitmap) {
        return BitmapFor(Key(type, id), *entry);
    }
    if (type == kPLResBitmapFamily) {
        return FamilyFor(Key(type, id), *entry);
    }
    return nullptr;  // carried but not interpreted: nobody can use raw bytes without a length
}

bool PLResourceFileManager::GetText(uint32_t id, PLBasicString<char>& text) const {
    const Entry* entry = FindEntry(kPLResText, id, kPLWildcard);
    if (entry == nullptr) {
        return false;
    }
    text = PLBasicString<char>(reinterpret_cast<const char*>(entry->data.data()),
                               entry->data.size() - 1);
    return true;
}

std::vector<std::pair<uint32_t, uint32_t>> PLResourceFileManager::ListResources() const {
    std::vector<std::pair<uint32_t, uint32_t>> keys;
    keys.reserve(mEntries.size());
    for (const auto& [key, entry] : mEntries) {
        keys.push_back(key);
    }
    return keys;
}

// ---- writer ----

void PLResourceFileWriter::AddText(uint32_t id, const std::string& utf8) {
    AddRaw(kPLResText, id, kPLWildcard, std::vector<uint8_t>(utf8.begin(), utf8.end()));
}

void PLResourceFileWriter::AddBitmap(uint32_t id, const PLBitmap& bitmap, uint32_t selector) {
    std::vector<uint8_t> data;
    int width = bitmap.GetWidth();
    int height = bitmap.GetHeight();
    data.reserve(kBitmapHeaderSize + size_t(std::max(width, 0)) * size_t(std::max(height, 0)) * 4);
    AppendU32(data, uint32_t(width));
    AppendU32(data, uint32_t(height));
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            AppendU32(data, bitmap.GetPixel(x, y));
        }
    }
    AddRaw(kPLResBitmap, id, selector, std::move(data));
}

void PLResourceFileWriter::AddBitmapFamily(uint32_t id, const uint32_t (&bitmapIDs)[4],
                                           uint32_t selector) {
    std::vector<uint8_t> data;
    for (uint32_t bitmapID : bitmapIDs) {
        AppendU32(data, bitmapID);
    }
    AddRaw(kPLResBitmapFamily, id, selector, std::move(data));
}

void PLResourceFileWriter::AddRaw(uint32_t type, uint32_t id, uint32_t selector,
                                  std::vector<uint8_t> data) {
    mEntries.push_back(Entry{type, id, selector, std::move(data)});
}

std::vector<uint8_t> PLResourceFileWriter::Serialize(std::string& error) const {
    std::set<Key> seen;
    std::set<uint32_t> bitmapIDs;
    for (const Entry& e : mEntries) {
        if (!seen.insert(Key(e.type, e.id)).second) {
            error = Describe(e.type, e.id) + " is added twice";
            return {};
        }
        std::string bad = CheckPayload(e.type, e.data);
        if (!bad.empty()) {
            error = Describe(e.type, e.id) + ": " + bad;
            return {};
        }
        if (e.type == kPLResBitmap) {
            bitmapIDs.insert(e.id);
        }
    }
    for (const Entry& e : mEntries) {
        if (e.type != kPLResBitmapFamily) {
            continue;
        }
        std::string bad = CheckFamilyReferences(
            e.id, e.data, [&](uint32_t bitmapID) { return bitmapIDs.count(bitmapID) != 0; });
        if (!bad.empty()) {
            error = bad;
            return {};
        }
    }

    const uint64_t tableEnd = PLResourceFileManager::kHeaderSize +
                              uint64_t(mEntries.size()) * PLResourceFileManager::kEntrySize;
    uint64_t total = tableEnd;
    for (const Entry& e : mEntries) {
        total += e.data.size();
    }
    if (total > PLResourceFileManager::kMaxFileSize) {
        error = "the resources need " + std::to_string(total) +
                " bytes, more than a resource file can hold";
        return {};
    }
    std::vector<uint8_t> out(size_t(tableEnd), 0);
    std::memcpy(out.data(), kMagic, 4);
    StoreU32(&out[4], PLResourceFileManager::kVersion);
    StoreU32(&out[8], uint32_t(mEntries.size()));
    uint64_t offset = tableEnd;
    for (size_t i = 0; i < mEntries.size(); ++i) {
        const Entry& e = mEntries[i];
        uint8_t* slot =
            &out[PLResourceFileManager::kHeaderSize + i * PLResourceFileManager::kEntrySize];
        StoreU32(slot, e.type);
        StoreU32(slot + 4, e.id);
        StoreU32(slot + 8, e.selector);
        StoreU32(slot + 12, uint32_t(offset));
        StoreU32(slot + 16, uint32_t(e.data.size()));
        offset += e.data.size();
    }
    for (const Entry& e : mEntries) {
        out.insert(out.end(), e.data.begin(), e.data.end());
    }
    StoreU32(&out[12],
             PLResourceFileManager::Checksum(out.data() + PLResourceFileManager::kHeaderSize,
                                             out.size() - PLResourceFileManager::kHeaderSize));
    return out;
}

bool PLResourceFileWriter::Write(const std::string& path, std::string& error) const {
    assert(!path.empty() && "a resource file needs a path");
    std::vector<uint8_t> bytes = Serialize(error);
    if (bytes.empty()) {
        return false;
    }
    // A temporary name of its own per writer, flushed to disk before the rename: two builds
    // writing the same file at once must not mix their bytes, and a reader (or a crash) sees the
    // old file or the new one, never part of either.
    std::string temporary = path + ".part-XXXXXX";
    const int fd = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (fd < 0) {
        error = "cannot create " + temporary;
        return false;
    }
    bool written = ::fchmod(fd, 0644) == 0;
    for (size_t done = 0; written && done < bytes.size();) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        written = n > 0;
        done += written ? size_t(n) : 0;
    }
    written = written && ::fsync(fd) == 0;
    if (::close(fd) != 0 || !written) {
        error = "cannot write " + temporary + " (disk full?)";
        ::unlink(temporary.c_str());
        return false;
    }
    if (std::rename(temporary.c_str(), path.c_str()) != 0) {
        error = "cannot replace " + path + " with " + temporary;
        std::remove(temporary.c_str());
        return false;
    }
    return true;
}

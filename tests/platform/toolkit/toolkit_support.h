// Helpers for the toolkit tests: scoped environment variables and time zone, a scratch device root,
// UTC oracles, files written byte for byte, and bitmaps of one colour to draw on.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "PLBitmap.h"
#include "PLDeviceRoot.h"

// Sets an environment variable (null: unsets it) for the lifetime of the object, then restores
// it; a change of TZ takes effect at once.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const char* value) : mName(name) {
        const char* old = std::getenv(name);
        mOld = old ? std::optional<std::string>(old) : std::nullopt;
        Set(value);
    }
    ~ScopedEnv() { Set(mOld ? mOld->c_str() : nullptr); }

private:
    void Set(const char* value) {
        value ? setenv(mName.c_str(), value, 1) : unsetenv(mName.c_str());
        tzset();
    }
    std::string mName;
    std::optional<std::string> mOld;
};

struct ScopedTZ : ScopedEnv {
    explicit ScopedTZ(const char* zone) : ScopedEnv("TZ", zone) {}
};

// A fresh directory used as the device root; removed with everything in it afterwards.
class ScratchRoot {
public:
    ScratchRoot() {
        std::string pattern = (std::filesystem::temp_directory_path() / "tkbase-XXXXXX").string();
        mPath = mkdtemp(pattern.data());
        PLDeviceRoot::SetRoot(mPath);
    }
    ~ScratchRoot() {
        PLDeviceRoot::SetRoot("");
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }
    const std::string& Path() const { return mPath; }

private:
    std::string mPath;
};

// Seconds since the epoch of a UTC wall time, by the C library (independent of the toolkit).
inline long UtcSeconds(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    std::tm fields{};
    fields.tm_year = year - 1900;
    fields.tm_mon = month - 1;
    fields.tm_mday = day;
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    return long(timegm(&fields));
}

inline void WriteBytes(const std::string& path, const std::vector<uint8_t>& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
}

inline PLBitmap Filled(int width, int height, uint32_t argb) {
    return PLBitmap(width, height, std::vector<uint32_t>(size_t(width) * size_t(height), argb));
}

// The pixels of `bitmap` that are no longer `ground`.
inline std::vector<PLPoint> Changed(const PLBitmap& bitmap, uint32_t ground) {
    std::vector<PLPoint> changed;
    for (int y = 0; y < bitmap.GetHeight(); ++y) {
        for (int x = 0; x < bitmap.GetWidth(); ++x) {
            if (bitmap.GetPixel(x, y) != ground) {
                changed.push_back({y, x});
            }
        }
    }
    return changed;
}

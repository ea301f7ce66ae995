// Helpers for the toolkit tests: a scoped time zone, a scratch device root, and UTC oracles.
#pragma once

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>

#include "PLDeviceRoot.h"

// Sets TZ for the lifetime of the object and restores the previous value.
class ScopedTZ {
public:
    explicit ScopedTZ(const char* zone) {
        const char* old = std::getenv("TZ");
        mHad = old != nullptr;
        mOld = mHad ? old : "";
        setenv("TZ", zone, 1);
        tzset();
    }
    ~ScopedTZ() {
        if (mHad) {
            setenv("TZ", mOld.c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }

private:
    bool mHad;
    std::string mOld;
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

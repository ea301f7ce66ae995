// Shared by the calendar's test programs: readable dates in failure messages, time stamps from
// fields, and a throw-away device root for tests that touch the stores, the settings or the
// application context.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <string>

#include "PLAppContext.h"
#include "PLDate.h"
#include "PLDeviceRoot.h"
#include "PLTime.h"
#include "PLTimeStamp.h"

// Found by the test framework for every PLDate it prints.
inline void PrintTo(const PLDate& date, std::ostream* out) {
    *out << date.year << '-' << int(date.month) << '-' << int(date.day);
}

// The local time stamp of a moment; the test programs run with TZ=UTC, so it is also the UTC one.
inline long Stamp(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return PLDate2TimeStamp(PLDate(year, month, day), PLTime(hour, minute, second));
}

// A fresh device root in a temporary folder and a fresh application context for one test; both
// go again with the object, so no test sees another's files or views.
class ScratchRoot {
public:
    ScratchRoot() {
        std::string pattern = (std::filesystem::temp_directory_path() / "calendar-XXXXXX").string();
        mPath = mkdtemp(pattern.data());
        PLDeviceRoot::SetRoot(mPath);
        PLAppContext::ResetInstance();
    }
    ~ScratchRoot() {
        PLAppContext::ResetInstance();
        PLDeviceRoot::SetRoot("");
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }
    ScratchRoot(const ScratchRoot&) = delete;
    ScratchRoot& operator=(const ScratchRoot&) = delete;

private:
    std::string mPath;
};

// A file by its device path (resolved under the device root).
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

#include "PLBasicString.h"

class PLFile {
public:
    // Results of OpenFile.
    static constexpr long kOK = 0;
    static constexpr long kNotFound = 10;
    static constexpr long kAccessDenied = 11;
    static constexpr long kError = 12;
    // Modes of OpenFile.
    static constexpr long kRead = 0;
    static constexpr long kWrite = 1;  // create or truncate
    static constexpr long kAppend = 2;

    PLFile() = default;
    ~PLFile();
    PLFile(const PLFile&) = delete;
    PLFile& operator=(const PLFile&) = delete;

    void SetFilename(const PLBasicString<char>& devicePath);
    const std::string& GetDevicePath() const { return mDevicePath; }
    // Opens in a mode; 0 when opened, 10 when it does not exist, 11 or 12 for other failures.
    long OpenFile(long mode, void* reserved);
    void CloseFile();
    bool IsOpen() const { return mFile != nullptr; }
    size_t Read(void* buffer, size_t length);
    size_t Write(const void* data, size_t length);

private:
    std::string mDevicePath;
    std::FILE* mFile = nullptr;
};

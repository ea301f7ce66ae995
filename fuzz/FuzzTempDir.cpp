// Scratch directories for fuzz inputs; see FuzzTempDir.h.
#include "FuzzTempDir.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

FuzzTempDir::FuzzTempDir() {
    std::string pattern = "/tmp/cal-fuzz-XXXXXX";
    if (mkdtemp(pattern.data()) != nullptr) {
        mPath = pattern;
    }
}

FuzzTempDir::~FuzzTempDir() {
    if (!mPath.empty()) {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }
}

std::string FuzzTempDir::WriteFile(const std::string& relative, const uint8_t* data,
                                   size_t size) const {
    if (mPath.empty()) {
        return {};
    }
    const std::filesystem::path full = std::filesystem::path(mPath) / relative;
    std::error_code error;
    std::filesystem::create_directories(full.parent_path(), error);
    if (error) {
        return {};
    }
    std::FILE* file = std::fopen(full.c_str(), "wb");
    if (file == nullptr) {
        return {};
    }
    const bool written = size == 0 || std::fwrite(data, 1, size, file) == size;
    const bool closed = std::fclose(file) == 0;
    return written && closed ? full.string() : std::string();
}

// A scratch directory under /tmp for one fuzz input: made on construction, removed with all its
// contents on destruction, so that no input leaves a file behind.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

class FuzzTempDir {
public:
    FuzzTempDir();
    ~FuzzTempDir();
    FuzzTempDir(const FuzzTempDir&) = delete;
    FuzzTempDir& operator=(const FuzzTempDir&) = delete;

    // Empty when the directory could not be made (the caller then skips the input).
    const std::string& Path() const { return mPath; }
    bool Ok() const { return !mPath.empty(); }
    // Writes bytes to a file at a path relative to the directory, creating its parent folders.
    // Returns the file's full path, or an empty string on failure.
    std::string WriteFile(const std::string& relative, const uint8_t* data, size_t size) const;

private:
    std::string mPath;
};

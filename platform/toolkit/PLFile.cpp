// Files by device path, opened under the device root with the platform's result codes.
#include "PLFile.h"

#include <sys/stat.h>

#include <cerrno>

#include "PLDeviceRoot.h"

PLFile::~PLFile() {
    CloseFile();
}

void PLFile::SetFilename(const PLBasicString<char>& devicePath) {
    CloseFile();
    mDevicePath = devicePath.str();
}

long PLFile::OpenFile(long mode, void* /*reserved*/) {
    CloseFile();
    const char* how = nullptr;
    switch (mode) {
        case kRead:
            how = "rb";
            break;
        case kWrite:
            how = "wb";
            break;
        case kAppend:
            how = "ab";
            break;
        default:
            return kError;
    }
    const std::string path = PLDeviceRoot::Resolve(mDevicePath);
    std::FILE* file = std::fopen(path.c_str(), how);
    if (file == nullptr) {
        const int error = errno;
        if (error == ENOENT) {
            return kNotFound;
        }
        return error == EACCES ? kAccessDenied : kError;
    }
    // fopen happily opens a directory for reading; it is not a file we can use.
    struct stat info {};
    if (fstat(fileno(file), &info) != 0 || S_ISDIR(info.st_mode)) {
        std::fclose(file);
        return kError;
    }
    mFile = file;
    return kOK;
}

void PLFile::CloseFile() {
    if (mFile != nullptr) {
        std::fclose(mFile);
        mFile = nullptr;
    }
}

size_t PLFile::Read(void* buffer, size_t length) {
    if (mFile == nullptr || buffer == nullptr) {
        return 0;
    }
    return std::fread(buffer, 1, length, mFile);
}

size_t PLFile::Write(const void* data, size_t length) {
    if (mFile == nullptr || data == nullptr) {
        return 0;
    }
    return std::fwrite(data, 1, length, mFile);
}

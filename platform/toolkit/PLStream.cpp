// A byte stream for messages: little-endian numbers and length-prefixed texts.
#include "PLStream.h"

#include <cstring>

void PLStream::WriteUInt32(uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) {
        mBytes.push_back(uint8_t(value >> shift));
    }
}

void PLStream::WriteString(const PLBasicString<char>& text) {
    WriteUInt32(uint32_t(text.Length()));
    WriteBytes(text.GetBuffer(), text.Length());
}

void PLStream::WriteBytes(const void* data, size_t length) {
    if (length == 0) {
        return;
    }
    if (data == nullptr) {
        return;
    }
    const auto* bytes = static_cast<const uint8_t*>(data);
    mBytes.insert(mBytes.end(), bytes, bytes + length);
}

bool PLStream::ReadUInt32(uint32_t& value) {
    uint8_t bytes[4];
    if (!ReadBytes(bytes, sizeof bytes)) {
        return false;
    }
    value = uint32_t(bytes[0]) | (uint32_t(bytes[1]) << 8) | (uint32_t(bytes[2]) << 16) |
            (uint32_t(bytes[3]) << 24);
    return true;
}

bool PLStream::ReadInt32(int32_t& value) {
    uint32_t raw = 0;
    if (!ReadUInt32(raw)) {
        return false;
    }
    value = int32_t(raw);
    return true;
}

bool PLStream::ReadString(PLBasicString<char>& text) {
    const size_t start = mReadPos;
    uint32_t length = 0;
    if (!ReadUInt32(length)) {
        return false;
    }
    // A corrupt length must not make us allocate or read past the end.
    if (length > Remaining()) {
        mReadPos = start;
        mGood = false;
        return false;
    }
    text = PLBasicString<char>(reinterpret_cast<const char*>(mBytes.data() + mReadPos), length);
    mReadPos += length;
    return true;
}

bool PLStream::ReadBytes(void* data, size_t length) {
    // Once a read has failed the rest of the stream is suspect: later reads fail too.
    if (!mGood || length > Remaining() || (data == nullptr && length != 0)) {
        mGood = false;
        return false;
    }
    if (length != 0) {
        std::memcpy(data, mBytes.data() + mReadPos, length);
    }
    mReadPos += length;
    return true;
}

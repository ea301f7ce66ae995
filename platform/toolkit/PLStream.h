// A byte stream that messages are written to and read from (little-endian, length-prefixed texts).
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "PLBasicString.h"

class PLStream {
public:
    PLStream() = default;
    explicit PLStream(std::vector<uint8_t> bytes) : mBytes(std::move(bytes)) {}

    void WriteUInt32(uint32_t value);
    void WriteInt32(int32_t value) { WriteUInt32(uint32_t(value)); }
    void WriteString(const PLBasicString<char>& text);
    void WriteBytes(const void* data, size_t length);

    // Reads fail (return false, leave the output as it was) past the end of the stream; a failed
    // read marks the stream as bad.
    bool ReadUInt32(uint32_t& value);
    bool ReadInt32(int32_t& value);
    bool ReadString(PLBasicString<char>& text);
    bool ReadBytes(void* data, size_t length);

    bool IsGood() const { return mGood; }
    size_t Remaining() const { return mBytes.size() - mReadPos; }
    const std::vector<uint8_t>& Bytes() const { return mBytes; }
    void Rewind() {
        mReadPos = 0;
        mGood = true;
    }

private:
    std::vector<uint8_t> mBytes;
    size_t mReadPos = 0;
    bool mGood = true;
};

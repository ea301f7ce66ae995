// Zero-run coding of binary records (see the header).
#include "APRecordCodec.h"

#include <cstring>

namespace {

void PutVarint(std::vector<uint8_t>& out, size_t value) {
    while (value >= 0x80) {
        out.push_back(uint8_t(value | 0x80));
        value >>= 7;
    }
    out.push_back(uint8_t(value));
}

// Reads a varint; false when the input ends early or the number is absurdly long.
bool GetVarint(const uint8_t*& p, const uint8_t* end, size_t& value) {
    value = 0;
    for (int shift = 0; shift < 35; shift += 7) {
        if (p == end) {
            return false;
        }
        const uint8_t byte = *p++;
        value |= size_t(byte & 0x7F) << shift;
        if ((byte & 0x80) == 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::vector<uint8_t> APEncodeRecord(const void* data, size_t size) {
    const auto* bytes = static_cast<const uint8_t*>(data);
    std::vector<uint8_t> out;
    size_t i = 0;
    while (i < size) {
        size_t zeros = 0;
        while (i + zeros < size && bytes[i + zeros] == 0) {
            ++zeros;
        }
        i += zeros;
        size_t literal = 0;
        // A literal run ends at the first pair of zeros, so single zeros inside text stay inline.
        while (i + literal < size && !(bytes[i + literal] == 0 &&
                                       (i + literal + 1 == size || bytes[i + literal + 1] == 0))) {
            ++literal;
        }
        PutVarint(out, zeros);
        PutVarint(out, literal);
        out.insert(out.end(), bytes + i, bytes + i + literal);
        i += literal;
    }
    return out;
}

bool APDecodeRecord(const uint8_t* encoded, size_t encodedSize, void* out, size_t size) {
    std::vector<uint8_t> result(size, 0);
    const uint8_t* p = encoded;
    const uint8_t* end = encoded + encodedSize;
    size_t at = 0;
    while (p != end) {
        size_t zeros = 0;
        size_t literal = 0;
        if (!GetVarint(p, end, zeros) || !GetVarint(p, end, literal)) {
            return false;
        }
        if (zeros > size - at || literal > size - at - zeros || literal > size_t(end - p)) {
            return false;
        }
        at += zeros;
        std::memcpy(result.data() + at, p, literal);
        p += literal;
        at += literal;
    }
    if (at != size) {
        return false;
    }
    std::memcpy(out, result.data(), size);
    return true;
}

// Compact storage of fixed binary records: runs of zero bytes are counted, other bytes kept as they
// are. Event records are mostly empty text space, so a stored record is a few hundred bytes
// instead of 2468, while every byte (platform bytes included) comes back exactly.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// Encodes `size` bytes as pairs (zero run, literal run) of varint lengths, each followed by the
// literal bytes.
std::vector<uint8_t> APEncodeRecord(const void* data, size_t size);
// Decodes into exactly `size` bytes. False (and `out` untouched) for input that is malformed,
// too short or too long.
bool APDecodeRecord(const uint8_t* encoded, size_t encodedSize, void* out, size_t size);

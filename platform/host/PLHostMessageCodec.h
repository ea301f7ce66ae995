// The datagram that carries one inter-application message to a running simulator:
//
//   "PLMSG1 <id> <a> <b> <length1> <length2>\n" followed by the two strings' bytes.
//
// Numbers are decimal 32-bit values; the strings may hold any bytes and are at most
// kMaxStringLength long each. Decoding is strict: anything else is refused, never guessed at.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

struct PLHostMessageFields {
    uint32_t messageID = 0;
    uint32_t a = 0;  // the message's sender id
    uint32_t b = 0;  // the message's user value
    std::string s1;  // recipient name
    std::string s2;  // sender name

    bool operator==(const PLHostMessageFields&) const = default;
};

class PLHostMessageCodec {
public:
    static constexpr size_t kMaxStringLength = 1024;
    static constexpr size_t kMaxDatagram = 2 * kMaxStringLength + 64;

    // False when a string is too long.
    static bool Encode(const PLHostMessageFields& fields, std::string& datagram);
    // False with a reason when the datagram is malformed.
    static bool Decode(std::string_view datagram, PLHostMessageFields& fields, std::string& error);
    // The socket of a simulator on a device root.
    static std::string SocketPath(const std::string& deviceRoot);
};

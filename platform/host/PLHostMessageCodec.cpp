// Encoding of the simulator's message datagrams.
#include "PLHostMessageCodec.h"

#include <vector>

namespace {

constexpr std::string_view kMagic = "PLMSG1";

bool ParseUnsigned(std::string_view word, uint64_t limit, uint64_t& value) {
    if (word.empty() || word.size() > 10) {
        return false;
    }
    value = 0;
    for (char c : word) {
        if (c < '0' || c > '9') {
            return false;
        }
        value = value * 10 + uint64_t(c - '0');
    }
    return value <= limit;
}

}  // namespace

bool PLHostMessageCodec::Encode(const PLHostMessageFields& fields, std::string& datagram) {
    if (fields.s1.size() > kMaxStringLength || fields.s2.size() > kMaxStringLength) {
        return false;
    }
    datagram = std::string(kMagic) + " " + std::to_string(fields.messageID) + " " +
               std::to_string(fields.a) + " " + std::to_string(fields.b) + " " +
               std::to_string(fields.s1.size()) + " " + std::to_string(fields.s2.size()) + "\n" +
               fields.s1 + fields.s2;
    return true;
}

bool PLHostMessageCodec::Decode(std::string_view datagram, PLHostMessageFields& fields,
                                std::string& error) {
    size_t newline = datagram.find('\n');
    if (newline == std::string_view::npos) {
        error = "no header line";
        return false;
    }
    std::string_view header = datagram.substr(0, newline);
    std::vector<std::string_view> words;
    while (!header.empty()) {
        size_t blank = header.find(' ');
        words.push_back(header.substr(0, blank));
        header.remove_prefix(blank == std::string_view::npos ? header.size() : blank + 1);
    }
    if (words.size() != 6 || words[0] != kMagic) {
        error = "not a message header";
        return false;
    }
    uint64_t numbers[5];
    for (size_t i = 0; i < 5; ++i) {
        uint64_t limit = i < 3 ? UINT32_MAX : kMaxStringLength;
        if (!ParseUnsigned(words[i + 1], limit, numbers[i])) {
            error = "bad number '" + std::string(words[i + 1]) + "'";
            return false;
        }
    }
    std::string_view body = datagram.substr(newline + 1);
    if (body.size() != numbers[3] + numbers[4]) {
        error = "string lengths do not match the datagram";
        return false;
    }
    fields.messageID = uint32_t(numbers[0]);
    fields.a = uint32_t(numbers[1]);
    fields.b = uint32_t(numbers[2]);
    fields.s1 = std::string(body.substr(0, numbers[3]));
    fields.s2 = std::string(body.substr(numbers[3]));
    return true;
}

std::string PLHostMessageCodec::SocketPath(const std::string& deviceRoot) {
    return deviceRoot + "/run/calendar-sim.sock";
}

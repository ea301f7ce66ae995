// The message datagram: what goes in comes out, and every damaged datagram is refused.
#include <gtest/gtest.h>

#include <string>

#include "PLHostMessageCodec.h"

namespace {

struct RoundTripRow {
    const char* name;
    PLHostMessageFields fields;
};

const RoundTripRow kRoundTrips[] = {
    {"Exit", {5005, 0x3F3F3F3F, 0x3F3F3F3F, "com.mdz.calendar.v1", "calendar-ctl"}},
    {"NoStrings", {10041, 0, 0, "", ""}},
    {"LargestNumbers", {4294967295u, 4294967295u, 4294967295u, "a", ""}},
    {"BytesOfEveryKind", {1, 2, 3, std::string("line\nbreak\0nul", 14), "\xFF\xFE PLMSG1 9"}},
    {"LongestStrings",
     {7, 8, 9, std::string(PLHostMessageCodec::kMaxStringLength, 'x'),
      std::string(PLHostMessageCodec::kMaxStringLength, 'y')}},
};

TEST(MessageCodec, RoundTrips) {
    for (const RoundTripRow& row : kRoundTrips) {
        SCOPED_TRACE(row.name);
        std::string datagram;
        ASSERT_TRUE(PLHostMessageCodec::Encode(row.fields, datagram));
        EXPECT_LE(datagram.size(), PLHostMessageCodec::kMaxDatagram);
        PLHostMessageFields decoded;
        std::string error;
        ASSERT_TRUE(PLHostMessageCodec::Decode(datagram, decoded, error)) << error;
        EXPECT_EQ(decoded, row.fields);
    }
}

TEST(MessageCodec, RefusesOverlongStrings) {
    PLHostMessageFields fields{1, 2, 3, std::string(PLHostMessageCodec::kMaxStringLength + 1, 'x'),
                               ""};
    std::string datagram;
    EXPECT_FALSE(PLHostMessageCodec::Encode(fields, datagram));
}

struct DamagedRow {
    const char* name;
    std::string datagram;
    const char* reason;
};

const DamagedRow kDamaged[] = {
    {"Empty", "", "no header line"},
    {"NoNewline", "PLMSG1 1 2 3 0 0", "no header line"},
    {"WrongMagic", "PLMSG2 1 2 3 0 0\n", "not a message header"},
    {"TooFewNumbers", "PLMSG1 1 2 3 0\n", "not a message header"},
    {"TooManyNumbers", "PLMSG1 1 2 3 0 0 0\n", "not a message header"},
    {"DoubleBlank", "PLMSG1  1 2 3 0 0\n", "not a message header"},
    {"NegativeNumber", "PLMSG1 -1 2 3 0 0\n", "bad number '-1'"},
    {"NumberPast32Bits", "PLMSG1 4294967296 2 3 0 0\n", "bad number '4294967296'"},
    {"NotANumber", "PLMSG1 1 x 3 0 0\n", "bad number 'x'"},
    {"StringLengthPastLimit", "PLMSG1 1 2 3 1025 0\n", "bad number '1025'"},
    {"BodyShorter", "PLMSG1 1 2 3 4 0\nabc", "string lengths do not match"},
    {"BodyLonger", "PLMSG1 1 2 3 1 1\nabc", "string lengths do not match"},
};

TEST(MessageCodec, RefusesDamagedDatagrams) {
    for (const DamagedRow& row : kDamaged) {
        SCOPED_TRACE(row.name);
        PLHostMessageFields fields{9, 9, 9, "kept", "kept"};
        const PLHostMessageFields before = fields;
        std::string error;
        EXPECT_FALSE(PLHostMessageCodec::Decode(row.datagram, fields, error));
        EXPECT_NE(error.find(row.reason), std::string::npos) << "got: " << error;
        EXPECT_EQ(fields, before);
    }
}

}  // namespace

// Messages on a byte stream: round trips, short or corrupt streams, clones.
#include <gtest/gtest.h>

#include <memory>
#include <tuple>

#include "PLMessage.h"
#include "PLStream.h"

namespace {

auto Fields(const PLMessage& m) {
    return std::make_tuple(m.GetMessageID(), m.GetSenderID(), m.GetUserMessageID(),
                           m.GetRecipientName(), m.GetSenderName());
}

TEST(PLMessageTest, StreamRoundTripAndClone) {
    const PLMessage rows[] = {
        PLMessage(5010, kPLWildcard, 111, "Server", "com.mdz.calendar.v1"),
        PLMessage(PLFourCC("CREC"), 11630, kPLWildcard, "", ""),
        PLMessage(0xFFFFFFFF, 0, 0x80000000, PLString("a\0b", 3), "\xE4\xB8\xAD"),
    };
    for (const PLMessage& message : rows) {
        SCOPED_TRACE(message.GetMessageID());
        PLStream stream;
        message.WriteData(stream);
        EXPECT_EQ(stream.Bytes().size(),
                  20 + message.GetRecipientName().Length() + message.GetSenderName().Length());
        EXPECT_EQ(stream.Bytes()[0], message.GetMessageID() & 0xFF) << "little-endian numbers";
        PLMessage read;
        ASSERT_TRUE(read.ReadData(stream));
        EXPECT_EQ(Fields(read), Fields(message));
        EXPECT_EQ(stream.Remaining(), 0u);
        EXPECT_EQ(Fields(*std::unique_ptr<PLMessage>(message.Clone())), Fields(message));
    }
    const PLScrollerMessage scroll(11301, PLPoint(248, 0), 1);
    std::unique_ptr<PLMessage> copy(scroll.Clone());
    auto* typed = dynamic_cast<PLScrollerMessage*>(copy.get());
    ASSERT_NE(typed, nullptr);
    EXPECT_EQ(Fields(*typed), Fields(scroll));
    EXPECT_EQ(typed->GetOffset(), PLPoint(248, 0));
    EXPECT_EQ(typed->GetFlags(), 1);
}

TEST(PLMessageTest, ShortOrCorruptStreamLeavesTheMessageUnchanged) {
    PLStream full;
    PLMessage(5010, kPLWildcard, 111, "Server", "com.mdz.calendar.v1").WriteData(full);
    const std::vector<uint8_t>& bytes = full.Bytes();
    const std::tuple<const char*, std::vector<uint8_t>> rows[] = {
        {"empty", {}},
        {"inside a number", std::vector<uint8_t>(bytes.begin(), bytes.begin() + 6)},
        {"before the names", std::vector<uint8_t>(bytes.begin(), bytes.begin() + 12)},
        {"inside the second name", std::vector<uint8_t>(bytes.begin(), bytes.end() - 1)},
        {"huge name length", {1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 'x'}},
    };
    for (const auto& [name, truncated] : rows) {
        SCOPED_TRACE(name);
        PLStream stream(truncated);
        PLMessage message(7, 8, 9, "keep", "these");
        EXPECT_FALSE(message.ReadData(stream));
        EXPECT_FALSE(stream.IsGood());
        EXPECT_EQ(Fields(message), Fields(PLMessage(7, 8, 9, "keep", "these")));
        // A bad stream stays bad until it is rewound.
        uint32_t value = 77;
        EXPECT_FALSE(stream.ReadUInt32(value));
        EXPECT_EQ(value, 77u);
        stream.Rewind();
        EXPECT_TRUE(stream.IsGood());
    }
}

}  // namespace

// Messages on a byte stream: round trips, short or corrupt streams, clones.
#include <gtest/gtest.h>

#include <memory>

#include "PLMessage.h"
#include "PLStream.h"

namespace {

PLMessage Sample() {
    return PLMessage(5010, kPLWildcard, 111, "Server", "com.mdz.calendar.v1");
}

void ExpectSame(const PLMessage& a, const PLMessage& b) {
    EXPECT_EQ(a.GetMessageID(), b.GetMessageID());
    EXPECT_EQ(a.GetSenderID(), b.GetSenderID());
    EXPECT_EQ(a.GetUserMessageID(), b.GetUserMessageID());
    EXPECT_EQ(a.GetRecipientName(), b.GetRecipientName());
    EXPECT_EQ(a.GetSenderName(), b.GetSenderName());
}

TEST(PLMessageTest, StreamRoundTrip) {
    struct Row {
        const char* name;
        PLMessage message;
    } rows[] = {
        {"exit message", Sample()},
        {"empty names", PLMessage(PLFourCC("CREC"), 11630, kPLWildcard, "", "")},
        {"extreme numbers and binary text",
         PLMessage(0xFFFFFFFF, 0, 0x80000000, PLString("a\0b", 3), "\xE4\xB8\xAD")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLStream stream;
        row.message.WriteData(stream);
        EXPECT_EQ(stream.Bytes().size(), 20 + row.message.GetRecipientName().Length() +
                                             row.message.GetSenderName().Length());
        PLMessage read;
        ASSERT_TRUE(read.ReadData(stream));
        ExpectSame(read, row.message);
        EXPECT_EQ(stream.Remaining(), 0u);
    }
}

TEST(PLMessageTest, NumbersAreLittleEndian) {
    PLStream stream;
    stream.WriteUInt32(0x01020304);
    stream.WriteInt32(-2);
    const std::vector<uint8_t> expected = {4, 3, 2, 1, 0xFE, 0xFF, 0xFF, 0xFF};
    EXPECT_EQ(stream.Bytes(), expected);
}

TEST(PLMessageTest, ShortOrCorruptStreamLeavesTheMessageUnchanged) {
    PLStream full;
    Sample().WriteData(full);
    const std::vector<uint8_t>& bytes = full.Bytes();
    struct Row {
        const char* name;
        std::vector<uint8_t> bytes;
    } rows[] = {
        {"empty", {}},
        {"inside a number", std::vector<uint8_t>(bytes.begin(), bytes.begin() + 6)},
        {"before the names", std::vector<uint8_t>(bytes.begin(), bytes.begin() + 12)},
        {"inside the second name", std::vector<uint8_t>(bytes.begin(), bytes.end() - 1)},
        {"huge name length", {1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 'x'}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PLStream stream(row.bytes);
        PLMessage message(7, 8, 9, "keep", "these");
        EXPECT_FALSE(message.ReadData(stream));
        EXPECT_FALSE(stream.IsGood());
        ExpectSame(message, PLMessage(7, 8, 9, "keep", "these"));
        // A bad stream stays bad until it is rewound.
        uint32_t value = 77;
        EXPECT_FALSE(stream.ReadUInt32(value));
        EXPECT_EQ(value, 77u);
        stream.Rewind();
        EXPECT_TRUE(stream.IsGood());
    }
}

TEST(PLMessageTest, ClonesCopyEverything) {
    const PLMessage original = Sample();
    std::unique_ptr<PLMessage> copy(original.Clone());
    ExpectSame(*copy, original);
    EXPECT_EQ(copy->GetClassID(), kPLClassMessage);

    const PLScrollerMessage scroll(11301, PLPoint(248, 0), 1);
    EXPECT_EQ(scroll.GetMessageID(), kPLMsgScroll);
    std::unique_ptr<PLMessage> scrollCopy(scroll.Clone());
    auto* typed = dynamic_cast<PLScrollerMessage*>(scrollCopy.get());
    ASSERT_NE(typed, nullptr);
    EXPECT_EQ(typed->GetSenderID(), 11301u);
    EXPECT_EQ(typed->GetOffset(), PLPoint(248, 0));
    EXPECT_EQ(typed->GetFlags(), 1);
}

}  // namespace

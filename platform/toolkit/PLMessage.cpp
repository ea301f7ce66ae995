// Toolkit messages: the base message with its streamed part, and the scroll message.
#include "PLMessage.h"

PLMessage::PLMessage(uint32_t messageID, uint32_t senderID, uint32_t userMessageID,
                     const PLBasicString<char>& recipientName,
                     const PLBasicString<char>& senderName)
    : mMessageID(messageID),
      mSenderID(senderID),
      mUserMessageID(userMessageID),
      mRecipientName(recipientName),
      mSenderName(senderName) {}

PLMessage* PLMessage::Clone() const {
    return new PLMessage(*this);
}

bool PLMessage::ReadData(PLStream& stream) {
    // Read everything first so that a short stream leaves the message as it was.
    uint32_t messageID = 0;
    uint32_t senderID = 0;
    uint32_t userMessageID = 0;
    PLBasicString<char> recipientName;
    PLBasicString<char> senderName;
    if (!stream.ReadUInt32(messageID) || !stream.ReadUInt32(senderID) ||
        !stream.ReadUInt32(userMessageID) || !stream.ReadString(recipientName) ||
        !stream.ReadString(senderName)) {
        return false;
    }
    mMessageID = messageID;
    mSenderID = senderID;
    mUserMessageID = userMessageID;
    mRecipientName = recipientName;
    mSenderName = senderName;
    return true;
}

void PLMessage::WriteData(PLStream& stream) const {
    stream.WriteUInt32(mMessageID);
    stream.WriteUInt32(mSenderID);
    stream.WriteUInt32(mUserMessageID);
    stream.WriteString(mRecipientName);
    stream.WriteString(mSenderName);
}

PLScrollerMessage::PLScrollerMessage(uint32_t senderID, PLPoint offset, long flags)
    : PLMessage(kPLMsgScroll, senderID, kPLWildcard, kEmptyString, kEmptyString),
      mOffset(offset),
      mFlags(flags) {}

PLMessage* PLScrollerMessage::Clone() const {
    return new PLScrollerMessage(*this);
}

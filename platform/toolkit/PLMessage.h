// A toolkit message: a 32-bit kind (message id), the sender's id, a user value, and the names of
// the recipient and the sender (used between applications).
#pragma once

#include <cstdint>
#include <memory>

#include "PLBasicString.h"
#include "PLPoint.h"
#include "PLStream.h"
#include "PLTypes.h"

class PLMessage {
public:
    PLMessage() = default;
    PLMessage(uint32_t messageID, uint32_t senderID, uint32_t userMessageID,
              const PLBasicString<char>& recipientName, const PLBasicString<char>& senderName);
    virtual ~PLMessage() = default;

    virtual uint32_t GetClassID() const { return kPLClassMessage; }
    virtual PLMessage* Clone() const;

    virtual void SetMessageID(uint32_t id) { mMessageID = id; }
    virtual void SetSenderID(uint32_t id) { mSenderID = id; }
    virtual void SetUserMessageID(uint32_t id) { mUserMessageID = id; }
    virtual void SetRecipientName(const PLBasicString<char>& name) { mRecipientName = name; }
    virtual void SetSenderName(const PLBasicString<char>& name) { mSenderName = name; }

    // Streams the base part: the three numbers and the two names.
    virtual bool ReadData(PLStream& stream);
    virtual void WriteData(PLStream& stream) const;

    uint32_t GetMessageID() const { return mMessageID; }
    uint32_t GetSenderID() const { return mSenderID; }
    uint32_t GetUserMessageID() const { return mUserMessageID; }
    const PLBasicString<char>& GetRecipientName() const { return mRecipientName; }
    const PLBasicString<char>& GetSenderName() const { return mSenderName; }

protected:
    PLMessage(const PLMessage&) = default;
    PLMessage& operator=(const PLMessage&) = default;

private:
    uint32_t mMessageID = 0;
    uint32_t mSenderID = 0;
    uint32_t mUserMessageID = 0;
    PLBasicString<char> mRecipientName;
    PLBasicString<char> mSenderName;
};

// A scroll request or report ("rscm"): the sender, the scroll offset (vertical first) and a flag.
class PLScrollerMessage : public PLMessage {
public:
    PLScrollerMessage(uint32_t senderID, PLPoint offset, long flags);
    PLMessage* Clone() const override;
    PLPoint GetOffset() const { return mOffset; }
    long GetFlags() const { return mFlags; }

private:
    PLPoint mOffset;
    long mFlags = 0;
};

// A message that carries one state word behind the base message: the input method's "IMEM"
// (state 1 opened, 3 closed) and the edit fields' "MEMI" (kind 3: the text changed).
#pragma once

#include "PLMessage.h"

// States carried by "IMEM" and "MEMI".
constexpr long kVtIMEOpened = 1;
constexpr long kVtIMEClosed = 3;
constexpr long kVtEditTextChanged = 3;

class VtStateMessage : public PLMessage {
public:
    VtStateMessage(uint32_t messageID, uint32_t senderID, long state)
        : PLMessage(messageID, senderID, static_cast<uint32_t>(state), kEmptyString, kEmptyString),
          mState(state) {}

    long GetState() const { return mState; }
    PLMessage* Clone() const override { return new VtStateMessage(*this); }

private:
    VtStateMessage(const VtStateMessage&) = default;

    long mState;
};

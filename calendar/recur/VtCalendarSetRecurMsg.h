// The message that carries a repeat rule from a recurrence editor back to the event form. Only
// the base message is streamed: the rule itself travels inside the process.
#pragma once

#include <cstdint>

#include "PLMessage.h"
#include "PLTypes.h"
#include "recur/_RecurInfo.h"

constexpr uint32_t kRecurMessageID = PLFourCC("CREC");

class VtCalendarSetRecurMsg : public PLMessage {
public:
    // A message whose rule is all zeros (no repetition), as a streamed one arrives.
    VtCalendarSetRecurMsg() = default;
    VtCalendarSetRecurMsg(unsigned long senderID, _RecurInfo setting, unsigned long messageID,
                          unsigned long userMessageID);

    // Copies the three numbers and the rule; the two names stay empty.
    PLMessage* Clone() const override;

    const _RecurInfo& GetSetting() const { return mSetting; }

private:
    _RecurInfo mSetting;
};

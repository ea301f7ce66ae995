// The repeat-rule message.
#include "recur/VtCalendarSetRecurMsg.h"

VtCalendarSetRecurMsg::VtCalendarSetRecurMsg(unsigned long senderID, _RecurInfo setting,
                                             unsigned long messageID, unsigned long userMessageID)
    : PLMessage(uint32_t(messageID), uint32_t(senderID), uint32_t(userMessageID), kEmptyString,
                kEmptyString),
      mSetting(setting) {}

PLMessage* VtCalendarSetRecurMsg::Clone() const {
    auto* copy = new VtCalendarSetRecurMsg();
    copy->SetMessageID(GetMessageID());
    copy->SetSenderID(GetSenderID());
    copy->SetUserMessageID(GetUserMessageID());
    copy->mSetting = mSetting;
    return copy;
}

// Broadcasts to other applications through the platform's message client.
#include "app/VtCalendarBroadcasts.h"

#include "PLMessage.h"
#include "PLPMEClient.h"
#include "PLTypes.h"

namespace {

constexpr uint32_t kHomeUpdateValue = 111;

void Broadcast(uint32_t id, uint32_t first, uint32_t second, const char* firstName,
               const char* secondName) {
    PLMessage message(id, first, second, firstName, secondName);
    PLPMEClient::GetInstance()->BroadcastMessage(&message);
}

}  // namespace

void VtCalendarBroadcastExit() {
    Broadcast(kMsgCalendarExit, kPLWildcard, kPLWildcard, "Server", kCalendarSignature);
}

void VtCalendarBroadcastEventsChanged() {
    Broadcast(kMsgEventsChanged, kPLWildcard, kHomeUpdateValue, kHomeSignature, "");
}

void VtCalendarBroadcastEventsDeleted() {
    Broadcast(kMsgEventsDeleted, kPLWildcard, kPLWildcard, kHomeSignature, kAlertSignature);
}

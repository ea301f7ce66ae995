// Sends an inter-application message to the simulator running on a device root, through its
// socket. Used by the simulator's own script (`send`) and by calendar-ctl.
//
// Logging the message is the sender's business (PLPMEClient::BroadcastMessage); this only
// carries it. False with a one-line reason when no simulator listens on the root.
#pragma once

#include <cstdint>
#include <string>

bool PLHostSendMessage(const std::string& deviceRoot, uint32_t messageID, uint32_t a, uint32_t b,
                       const std::string& s1, const std::string& s2, std::string& error);

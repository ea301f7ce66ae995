// The calendar's messages to other applications: its exit, changes of events for the home
// screen, and deletions for the home screen and the alert application.
#pragma once

#include <cstdint>

constexpr uint32_t kMsgCalendarExit = 5010;
constexpr uint32_t kMsgExitRequest = 5005;
constexpr uint32_t kMsgEventsChanged = 10040;
constexpr uint32_t kMsgReloadRequest = 10041;
constexpr uint32_t kMsgEventsDeleted = 18803;

inline constexpr const char* kCalendarSignature = "com.mdz.calendar.v1";
inline constexpr const char* kHomeSignature = "com.mdz.wpkhome.v1";
inline constexpr const char* kAlertSignature = "com.mdz.qnalert.v1";

// 5010, "Server" / the calendar's signature: the calendar is closing.
void VtCalendarBroadcastExit();
// 10040 to the home screen: events changed (second number 111).
void VtCalendarBroadcastEventsChanged();
// 18803 to the home screen and the alert application: events were deleted.
void VtCalendarBroadcastEventsDeleted();

// The three fixed binary records shared between the calendar and the platform's data services:
// the event record, the event-alert record and the alarm daemon's context. Their layouts are a
// binary interface (other applications read the same stores), so every offset is pinned below.
#pragma once

#include <cstddef>
#include <cstdint>

// Lengths of the record's text fields, NUL included.
constexpr int kAPEventTextSize = 601;
constexpr int kAPEventTextMax = 600;

// Colour and class choices are stored as the form's menu command ids.
constexpr uint32_t kAPColourFirst = 11544;
constexpr uint32_t kAPColourLast = 11553;
constexpr uint32_t kAPClassFirst = 11560;
constexpr uint32_t kAPClassDefault = 11561;
constexpr uint32_t kAPClassLast = 11563;

// Lead units of an alert record.
constexpr int32_t kAPLeadMinutes = 1;
constexpr int32_t kAPLeadHours = 2;
constexpr int32_t kAPLeadDays = 3;

// One calendar event, 2468 bytes. The platform* bytes belong to the store and are carried through
// every read and write unchanged.
struct _EventRecInfo {
    int32_t id;            // 0 until stored; > 0 for a stored event
    uint8_t platform0[8];  //
    int32_t alertInfoId;   // this event's _EventAlertInfo id; <= 0 means none
    uint8_t platform1[4];  //
    int32_t startStamp;    // first moment (all-day: the date coded as UTC midnight)
    int32_t endStamp;      // last moment (all-day: the date coded as UTC 23:59:59)
    uint8_t platform2[4];  //
    int32_t recurValueA;   // interval, or the month of a yearly rule
    int32_t recurValueB;   // pattern: working days, weekday mask, day or week * 256 + weekday
    int32_t lastStamp;     // end of the series; the end stamp for a single event
    int32_t recurValueC;   // occurrence count or end mode
    int32_t recurKind;     // 0 none, 1 daily, 2 weekly, 4 monthly, 8 yearly
    uint32_t colour;       // 11544..11553
    uint32_t classChoice;  // 11560..11563
    char subject[kAPEventTextSize];
    char location[kAPEventTextSize];
    char notes[kAPEventTextSize];
    uint8_t platform3[600];
    uint8_t allDay;     // 1 all-day event
    uint8_t recurring;  // 1 when recurKind is not 0
    uint8_t platform4[2];
    uint8_t alarm;  // 1 when the event has an alarm
};

static_assert(sizeof(_EventRecInfo) == 2468, "event record size");
static_assert(offsetof(_EventRecInfo, id) == 0);
static_assert(offsetof(_EventRecInfo, platform0) == 4);
static_assert(offsetof(_EventRecInfo, alertInfoId) == 12);
static_assert(offsetof(_EventRecInfo, platform1) == 16);
static_assert(offsetof(_EventRecInfo, startStamp) == 20);
static_assert(offsetof(_EventRecInfo, endStamp) == 24);
static_assert(offsetof(_EventRecInfo, platform2) == 28);
static_assert(offsetof(_EventRecInfo, recurValueA) == 32);
static_assert(offsetof(_EventRecInfo, recurValueB) == 36);
static_assert(offsetof(_EventRecInfo, lastStamp) == 40);
static_assert(offsetof(_EventRecInfo, recurValueC) == 44);
static_assert(offsetof(_EventRecInfo, recurKind) == 48);
static_assert(offsetof(_EventRecInfo, colour) == 52);
static_assert(offsetof(_EventRecInfo, classChoice) == 56);
static_assert(offsetof(_EventRecInfo, subject) == 60);
static_assert(offsetof(_EventRecInfo, location) == 661);
static_assert(offsetof(_EventRecInfo, notes) == 1262);
static_assert(offsetof(_EventRecInfo, platform3) == 1863);
static_assert(offsetof(_EventRecInfo, allDay) == 2463);
static_assert(offsetof(_EventRecInfo, recurring) == 2464);
static_assert(offsetof(_EventRecInfo, platform4) == 2465);
static_assert(offsetof(_EventRecInfo, alarm) == 2467);

// The alarm setting of one event, 24 bytes.
struct _EventAlertInfo {
    int32_t id;          // id in the alert store
    int32_t daemonId;    // the alarm's id in the daemon; <= 0 means not registered
    uint8_t enabled;     // copy of the event's alarm flag
    uint8_t padding[3];  // zero
    int32_t eventTime;   // copy of the event's start stamp
    int32_t leadAmount;  // how many units before the event
    int32_t leadUnit;    // kAPLeadMinutes, kAPLeadHours, kAPLeadDays
};

static_assert(sizeof(_EventAlertInfo) == 24, "alert record size");
static_assert(offsetof(_EventAlertInfo, id) == 0);
static_assert(offsetof(_EventAlertInfo, daemonId) == 4);
static_assert(offsetof(_EventAlertInfo, enabled) == 8);
static_assert(offsetof(_EventAlertInfo, padding) == 9);
static_assert(offsetof(_EventAlertInfo, eventTime) == 12);
static_assert(offsetof(_EventAlertInfo, leadAmount) == 16);
static_assert(offsetof(_EventAlertInfo, leadUnit) == 20);

constexpr int kAPAlertRuleSize = 1024;
constexpr int kAPAlertOwnerSize = 64;

// One alarm as the daemon keeps it, 1124 bytes; zeroed whole before each use.
struct AP_ALERT_CONTEXT {
    int32_t alertId;                // 0 to add; the daemon id to update
    int32_t alertTime;              // first ring
    char rule[kAPAlertRuleSize];    // RFC 5545 RRULE text, NUL-terminated
    char owner[kAPAlertOwnerSize];  // the _EventAlertInfo id in decimal
    uint8_t reserved0[8];
    int32_t sourceKind;  // always 5 from the calendar
    int32_t state;       // always 1 from the calendar
    uint8_t reserved1;
    uint8_t localTimeFlag;  // 1 for an all-day event
    uint8_t reserved2[2];
    int32_t utcAlertTime;  // all-day only: the UTC-coded start minus the lead
    uint8_t reserved3[4];
};

static_assert(sizeof(AP_ALERT_CONTEXT) == 1124, "alarm context size");
static_assert(offsetof(AP_ALERT_CONTEXT, alertId) == 0);
static_assert(offsetof(AP_ALERT_CONTEXT, alertTime) == 4);
static_assert(offsetof(AP_ALERT_CONTEXT, rule) == 8);
static_assert(offsetof(AP_ALERT_CONTEXT, owner) == 1032);
static_assert(offsetof(AP_ALERT_CONTEXT, reserved0) == 1096);
static_assert(offsetof(AP_ALERT_CONTEXT, sourceKind) == 1104);
static_assert(offsetof(AP_ALERT_CONTEXT, state) == 1108);
static_assert(offsetof(AP_ALERT_CONTEXT, reserved1) == 1112);
static_assert(offsetof(AP_ALERT_CONTEXT, localTimeFlag) == 1113);
static_assert(offsetof(AP_ALERT_CONTEXT, reserved2) == 1114);
static_assert(offsetof(AP_ALERT_CONTEXT, utcAlertTime) == 1116);
static_assert(offsetof(AP_ALERT_CONTEXT, reserved3) == 1120);

// Resets a record to the platform's empty state: every byte zero (id 0, no alert, no flags, empty
// texts).
void InitEventRecInfo(_EventRecInfo* record);

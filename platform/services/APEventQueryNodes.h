// The nodes of the event store's range queries: singly linked lists that the store allocates and
// the caller frees node by node with the global operator delete (read `next` before freeing).
#pragma once

#include <cstddef>
#include <cstdint>

#include "PLDate.h"
#include "PLTime.h"

// One event of a month or week query. Repeating events come once, with their rule.
struct APMonthEventNode {
    PLDate firstDay;      // first day of the (first) occurrence
    PLDate lastDay;       // last day, from the end stamp as stored (not moved for midnight ends)
    PLDate limitDay;      // repeating: the day of the last-occurrence stamp; else = lastDay
    PLTime startTime;     // time of day of the start stamp (the week's hour bars start there)
    PLTime endTime;       // time of day of the end stamp
    uint8_t unused32[4];  //
    int32_t recurValueA;  // interval, or the month of a yearly rule
    int32_t recurValueB;  // pattern
    uint8_t unused44[4];  //
    int32_t recurKind;    // as stored
    int32_t id;           // record id
    uint32_t colour;      // colour choice as stored
    uint8_t allDay;       // all-day flag
    uint8_t unused61[3];  //
    APMonthEventNode* next;
};

static_assert(offsetof(APMonthEventNode, firstDay) == 0);
static_assert(offsetof(APMonthEventNode, lastDay) == 8);
static_assert(offsetof(APMonthEventNode, limitDay) == 16);
static_assert(offsetof(APMonthEventNode, startTime) == 24);
static_assert(offsetof(APMonthEventNode, endTime) == 28);
static_assert(offsetof(APMonthEventNode, recurValueA) == 36);
static_assert(offsetof(APMonthEventNode, recurValueB) == 40);
static_assert(offsetof(APMonthEventNode, recurKind) == 48);
static_assert(offsetof(APMonthEventNode, id) == 52);
static_assert(offsetof(APMonthEventNode, colour) == 56);
static_assert(offsetof(APMonthEventNode, allDay) == 60);
static_assert(offsetof(APMonthEventNode, next) == 64);
static_assert(sizeof(APMonthEventNode) == (sizeof(void*) == 4 ? 68 : 72),
              "68 bytes with 4-byte pointers, 72 with 8-byte pointers");

constexpr int kAPDayNodeSubjectSize = 601;

// One occurrence of a day query.
struct APDayEventNode {
    int32_t id;           // record id
    uint8_t unused4[4];   //
    PLDate firstDay;      // first day of the occurrence (its day number is the word at +8)
    PLDate lastDay;       // last day; an end at exactly 00:00:00 counts for the day before
    uint8_t startHour;    // start hour of the occurrence, 0..23
    uint8_t unused25[7];  //
    char subject[kAPDayNodeSubjectSize];  // NUL-terminated
    uint8_t allDay;                       // all-day flag
    uint8_t repeatIcon;                   // second icon: the event repeats
    uint8_t alarmIcon;                    // first icon: the event has an alarm
    uint8_t unused636[4];                 //
    APDayEventNode* next;
};

static_assert(offsetof(APDayEventNode, id) == 0);
static_assert(offsetof(APDayEventNode, firstDay) == 8);
static_assert(offsetof(APDayEventNode, lastDay) == 16);
static_assert(offsetof(APDayEventNode, startHour) == 24);
static_assert(offsetof(APDayEventNode, subject) == 32);
static_assert(offsetof(APDayEventNode, allDay) == 633);
static_assert(offsetof(APDayEventNode, repeatIcon) == 634);
static_assert(offsetof(APDayEventNode, alarmIcon) == 635);
static_assert(offsetof(APDayEventNode, next) == 640);
static_assert(sizeof(APDayEventNode) == (sizeof(void*) == 4 ? 644 : 648),
              "644 bytes with 4-byte pointers, 648 with 8-byte pointers");

// Frees a whole list, node by node, as the caller of a query does.
template <class Node>
void APFreeEventNodes(Node* head) {
    while (head) {
        Node* next = head->next;
        head->~Node();
        ::operator delete(head);
        head = next;
    }
}

// The calendar's access to the event store: one short-lived store object per piece of work, range
// queries whose node lists the caller owns, and the midnight adjustment of month and week lists.
#pragma once

#include "APEventQueryNodes.h"
#include "APEventRecords.h"
#include "PLDate.h"

// The store's month list for [start, end) (two local midnights), with midnight ends taken back.
// Null when the range has no events. The caller frees it with VtCalendarFreeNodes.
APMonthEventNode* VtCalendarQueryMonth(long start, long end);
// The same for a week.
APMonthEventNode* VtCalendarQueryWeek(long start, long end);
// The occurrences of one day, from its 00:00:00 to its 23:59:59.
APDayEventNode* VtCalendarQueryDay(long start, long end);

// Moves the last day of every node that ends at 00:00:00 back by one, so that an event ending at
// midnight does not mark the day that begins then.
void VtCalendarAdjustMidnightEnds(APMonthEventNode* head);

// Frees a list node by node, reading each next pointer before the node goes.
template <class Node>
void VtCalendarFreeNodes(Node*& head) {
    APFreeEventNodes(head);
    head = nullptr;
}

// Time stamps of the midnights that bound the month of `date`: its 1st and the 1st of the next.
void VtCalendarMonthRange(const PLDate& date, long& start, long& end);

// Reads a stored event; false when there is none (the record is then untouched).
bool VtCalendarGetEvent(int id, _EventRecInfo* record);
// Removes the events that finished before `before`.
void VtCalendarDeleteFinished(long before);

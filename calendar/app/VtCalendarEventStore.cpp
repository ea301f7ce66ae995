// Event store access: each call builds its own store object and lets it go before returning, so
// that no store stays open across messages.
#include "app/VtCalendarEventStore.h"

#include <cassert>

#include "APEventRec.h"
#include "PLTimeStamp.h"

namespace {

using RangeQuery = APMonthEventNode* (APEventRec::*)(long, long, PLBasicString<char>&);

// Runs one of the store's range queries and moves midnight ends back onto the day before.
APMonthEventNode* QueryRange(RangeQuery query, long start, long end) {
    PLBasicString<char> unused;
    unused.SetLength(0);
    APMonthEventNode* head = nullptr;
    {
        APEventRec store;
        head = (store.*query)(start, end, unused);
    }
    VtCalendarAdjustMidnightEnds(head);
    return head;
}

}  // namespace

APMonthEventNode* VtCalendarQueryMonth(long start, long end) {
    assert(start <= end && "a month range runs forward");
    return QueryRange(&APEventRec::QueryMonthEventView, start, end);
}

APMonthEventNode* VtCalendarQueryWeek(long start, long end) {
    assert(start <= end && "a week range runs forward");
    return QueryRange(&APEventRec::QueryWeekEventView, start, end);
}

APDayEventNode* VtCalendarQueryDay(long start, long end) {
    assert(start <= end && "a day range runs forward");
    PLBasicString<char> unused;
    unused.SetLength(0);
    APEventRec store;
    return store.GetDayEventView(start, end, unused);
}

void VtCalendarAdjustMidnightEnds(APMonthEventNode* head) {
    const PLTime midnight(0, 0, 0);
    for (APMonthEventNode* node = head; node != nullptr; node = node->next) {
        if (node->endTime == midnight) {
            node->lastDay -= 1;
        }
    }
}

void VtCalendarMonthRange(const PLDate& date, long& start, long& end) {
    PLDate first = date;
    first.day = 1;
    first.FixFromMDY();
    PLDate next = first + PLDate::NumberOfDaysInMonth(first.month, first.year);
    start = PLDate2TimeStamp(&first, nullptr);
    end = PLDate2TimeStamp(&next, nullptr);
}

bool VtCalendarGetEvent(int id, _EventRecInfo* record) {
    assert(record != nullptr && "a record to fill");
    if (record == nullptr) {
        return false;
    }
    APEventRec store;
    return store.GetEventRec(id, record) > 0;
}

void VtCalendarDeleteFinished(long before) {
    APEventRec store;
    store.DeleteFinshedEventRec(before);
}

// Helpers for the week tests: week-list nodes built field by field, linked in order and passed
// through the same midnight pass as a store query, and the layouts written as short text.
#pragma once

#include <deque>
#include <string>

#include "APEventQueryNodes.h"
#include "PLDate.h"
#include "PLTime.h"
#include "week/VtCalendarWeekModel.h"

inline PLDate D(int y, int m, int d) {
    return PLDate(y, m, d);
}

struct WeekNode {
    PLDate first;
    PLTime start{9, 0, 0};
    PLDate last;  // the stored end's day; left at its default: the first day
    PLTime end{10, 0, 0};
    int kind = 0;
    int a = 0;
    int b = 0;
    bool allDay = false;
    PLDate limit;  // left at its default: the last day (or 2030-12-31 for a repeating node)
    uint32_t colour = 11545;
};

// Owns the nodes of one list.
class WeekList {
public:
    WeekList& Add(const WeekNode& fields);
    WeekList& Add(const WeekNode& fields, int times);
    // The head after the query's midnight pass (an end at 00:00:00 takes the last day back).
    APMonthEventNode* Head();

private:
    std::deque<APMonthEventNode> mNodes;
    bool mAdjusted = false;
};

// The hour grid as "day s slot : first row - last row" runs in slot-column order, e.g.
// "2s0:10-11 2s1:10-10"; a run whose pieces are not first, middle.., last is marked with '!'.
std::string GridText(const VtCalendarWeekModel& model);
// The strip as "r row : first column - last column" runs, e.g. "r1:1-3 r2:5".
std::string StripText(const VtCalendarWeekModel& model);

// Helpers for the month tests: month-list nodes built field by field and linked in order.
#pragma once

#include <deque>

#include "APEventQueryNodes.h"
#include "PLDate.h"
#include "PLTime.h"

struct NodeFields {
    int id = 1;
    PLDate first;
    PLDate last;
    int kind = 0;
    int a = 0;
    int b = 0;
    PLDate limit;  // left at its default: the last day
    PLTime end{10, 0, 0};
    uint32_t colour = 11545;
    bool allDay = false;
};

// Owns the nodes of one list, linked in the order they were added.
class NodeList {
public:
    NodeList& Add(const NodeFields& fields) {
        APMonthEventNode& node = mNodes.emplace_back();
        node.firstDay = fields.first;
        node.lastDay = fields.last;
        node.limitDay = fields.limit.dayNumber != 0 ? fields.limit : fields.last;
        node.endTime = fields.end;
        node.recurKind = fields.kind;
        node.recurValueA = fields.a;
        node.recurValueB = fields.b;
        node.id = fields.id;
        node.colour = fields.colour;
        node.allDay = fields.allDay ? 1 : 0;
        if (mNodes.size() > 1) {
            mNodes[mNodes.size() - 2].next = &node;  // a deque keeps the earlier nodes in place
        }
        return *this;
    }
    APMonthEventNode* Head() { return mNodes.empty() ? nullptr : &mNodes.front(); }

private:
    std::deque<APMonthEventNode> mNodes;
};

inline PLDate D(int y, int m, int d) {
    return PLDate(y, m, d);
}

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
    PLDate limit;  // the last day when left at its default
    PLTime end{10, 0, 0};
    uint32_t colour = 11545;
    bool allDay = false;
    bool hasLimit = false;
};

// Owns the nodes of one list; Head() links them in the order they were added.
class NodeList {
public:
    NodeList& Add(const NodeFields& fields) {
        APMonthEventNode node{};
        node.firstDay = fields.first;
        node.lastDay = fields.last;
        node.limitDay = fields.hasLimit ? fields.limit : fields.last;
        node.endTime = fields.end;
        node.recurKind = fields.kind;
        node.recurValueA = fields.a;
        node.recurValueB = fields.b;
        node.id = fields.id;
        node.colour = fields.colour;
        node.allDay = fields.allDay ? 1 : 0;
        mNodes.push_back(node);
        return *this;
    }
    const APMonthEventNode* Head() {
        for (size_t i = 0; i < mNodes.size(); ++i) {
            mNodes[i].next = i + 1 < mNodes.size() ? &mNodes[i + 1] : nullptr;
        }
        return mNodes.empty() ? nullptr : &mNodes.front();
    }

private:
    std::deque<APMonthEventNode> mNodes;
};

inline PLDate D(int y, int m, int d) {
    return PLDate(y, m, d);
}

// Week test helpers.
#include "week_support.h"

#include "app/VtCalendarEventStore.h"
#include "recur/_RecurInfo.h"

WeekList& WeekList::Add(const WeekNode& fields) {
    APMonthEventNode& node = mNodes.emplace_back();
    node.firstDay = fields.first;
    node.lastDay = fields.last.dayNumber != 0 ? fields.last : fields.first;
    node.startTime = fields.start;
    node.endTime = fields.end;
    node.recurKind = fields.kind;
    node.recurValueA = fields.a;
    node.recurValueB = fields.b;
    node.allDay = fields.allDay ? 1 : 0;
    node.colour = fields.colour;
    node.id = int32_t(mNodes.size());
    if (fields.limit.dayNumber != 0) {
        node.limitDay = fields.limit;
    } else {
        node.limitDay = fields.kind != 0 ? PLDate(2030, 12, 31) : node.lastDay;
    }
    if (mNodes.size() > 1) {
        mNodes[mNodes.size() - 2].next = &node;  // a deque keeps the earlier nodes in place
    }
    return *this;
}

WeekList& WeekList::Add(const WeekNode& fields, int times) {
    for (int i = 0; i < times; ++i) {
        Add(fields);
    }
    return *this;
}

APMonthEventNode* WeekList::Head() {
    if (mNodes.empty()) {
        return nullptr;
    }
    if (!mAdjusted) {
        VtCalendarAdjustMidnightEnds(&mNodes.front());
        mAdjusted = true;
    }
    return &mNodes.front();
}

namespace {

// Appends the runs of one line of cells (a slot column's hours, or a strip row's days).
template <class CellAt>
void AppendRuns(std::string& text, const std::string& prefix, int count, bool alwaysRange,
                CellAt cellAt) {
    int index = 1;
    while (index <= count) {
        const VtCalendarWeekCell& cell = cellAt(index);
        if (cell.used == 0) {
            ++index;
            continue;
        }
        bool wellFormed = cell.kind == kWeekPieceFirst;
        const int first = index;
        ++index;
        while (index <= count && cellAt(index).used != 0 && cellAt(index).kind != kWeekPieceFirst) {
            ++index;
        }
        const int last = index - 1;
        for (int k = first + 1; k <= last; ++k) {
            wellFormed =
                wellFormed && cellAt(k).kind == (k == last ? kWeekPieceLast : kWeekPieceMiddle);
        }
        text += (text.empty() ? "" : " ") + prefix + std::to_string(first);
        if (last > first || alwaysRange) {
            text += "-" + std::to_string(last);
        }
        if (!wellFormed) {
            text += "!";
        }
    }
}

}  // namespace

std::string GridText(const VtCalendarWeekModel& model) {
    std::string text;
    for (int column = 0; column < kWeekSlotColumns; ++column) {
        const std::string prefix = std::to_string(column / kWeekSlots + 1) + "s" +
                                   std::to_string(column % kWeekSlots) + ":";
        // Grid runs always show both rows, so that "10-10" reads as one hour.
        AppendRuns(text, prefix, kWeekHours, true, [&](int row) -> const VtCalendarWeekCell& {
            return model.GridCell(row, column);
        });
    }
    return text;
}

std::string StripText(const VtCalendarWeekModel& model) {
    std::string text;
    for (int row = 1; row <= kWeekStripRows; ++row) {
        AppendRuns(
            text, "r" + std::to_string(row) + ":", kWeekDays, false,
            [&](int column) -> const VtCalendarWeekCell& { return model.StripCell(row, column); });
    }
    return text;
}

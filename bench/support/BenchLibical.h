// libical expanding the busy calendar's repeat rules, the yardstick the calendar's own placement
// is reported beside: the same rules as RRULE text, counted over the same range.
#pragma once

#include <libical/ical.h>

#include <string>
#include <vector>

#include "APEventRecords.h"

// The RRULE that says what a stored rule says.
std::string BenchRuleText(const _EventRecInfo& record);

class BenchLibicalRules {
public:
    // The rules of the first `count` events (the repeating ones), each from its start.
    BenchLibicalRules(const std::vector<_EventRecInfo>& events, int count);
    // The occurrences of every rule in [from, to) (UTC stamps), each rule walked from its start.
    long Count(long from, long to) const;

private:
    std::vector<icalrecurrencetype> mRules;
    std::vector<icaltimetype> mStarts;
};

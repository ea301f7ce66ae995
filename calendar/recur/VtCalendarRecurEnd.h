// The end-of-series check that every recurrence editor runs on its three end-mode buttons (no
// end, after N occurrences, until a date) once it has filled in the start, end, interval,
// pattern and kind of its rule.
#pragma once

#include <cstdint>

#include "PLBasicString.h"
#include "PLDate.h"
#include "recur/_RecurInfo.h"

enum class VtRecurEndMode { NoEnd, AfterCount, UntilDate };

enum class VtRecurEndResult {
    Accepted,          // the rule (possibly turned into no repetition) may be sent
    UntilBeforeStart,  // rejected: the until date lies before the event's start
};

struct VtRecurEndInput {
    VtRecurEndMode mode = VtRecurEndMode::NoEnd;
    PLBasicString<char> countText;  // the count field, read as an unsigned number
    PLDate untilDate;               // the until-date field
    bool daily = false;             // the daily editor writes 0 for "until", the others -1
    // The monthly and yearly editors remember the count they last computed for and skip the
    // first computation when it is unchanged; null for the daily and weekly editors.
    int32_t* seriesCountCache = nullptr;
};

// The series limit: 2030-12-31 23:59:59 local time.
long RecurSeriesLimit();

// Fills `count` and `lastStamp` of the rule for the chosen end mode, lowering the count until
// the series ends before the limit. `lastDay` receives the last occurrence's date when a count
// was computed. A count below 1 (or cut below 1) turns the rule into no repetition.
VtRecurEndResult CheckRecurEnd(_RecurInfo& setting, const VtRecurEndInput& input, PLDate& lastDay);

// The notice the editors show for VtRecurEndResult::UntilBeforeStart.
void ShowRecurUntilError();

// The two computations that turn a repeat rule into the end of its series: the last occurrence of
// a given number of occurrences, and the number of occurrences up to an until date.
#pragma once

#include "PLDate.h"
#include "recur/_RecurInfo.h"

// Computes the last occurrence of `setting.count` occurrences: writes setting.lastStamp (the last
// day at the start's time of day), may move setting.startStamp to the first occurrence, and
// reports the count used and the last day. A series never runs past 2030-12-31 23:59:59: the count
// is lowered until it fits. False for a negative count or when no count of at least 1 fits.
bool ComputeSeriesEnd(_RecurInfo& setting, int& count, PLDate& last);
// Finds the number of occurrences that end on or before `until` (at 23:59:59), at most 99, and
// computes the series end for it. False when the until date lies before the start.
bool CountUntilDate(_RecurInfo& setting, int& count, PLDate& until);

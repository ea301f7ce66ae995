// Purging finished events by the keep-time setting: the cut-off moment for an option, and the
// purge itself on a temporary event store.
#pragma once

#include <ctime>

// Keep-time options of the settings.
constexpr long kKeepOneWeek = 11452;
constexpr long kKeepOneMonth = 11453;
constexpr long kKeepThreeMonths = 11454;
constexpr long kKeepSixMonths = 11455;
constexpr long kKeepOneYear = 11456;
constexpr long kKeepEverything = 11457;

// The moment before which finished events go, for the local time `now` and a keep-time option.
// False (nothing to delete) for 11457 and every id outside 11452..11456.
bool VtCalendarPurgeCutoff(long option, const std::tm& now, long& cutoff);

// Deletes the events that finished before the cut-off of `option`, counted back from the
// platform clock's local time.
void VtCalendarPurgeFinished(long option);

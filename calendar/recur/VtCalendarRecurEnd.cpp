// The shared end-of-series check of the recurrence editors.
#include "recur/VtCalendarRecurEnd.h"

#include <climits>

#include "PLTime.h"
#include "PLTimeStamp.h"
#include "app/VtCalendarHelpers.h"
#include "app/VtCalendarSeriesEnd.h"

namespace {

constexpr uint32_t kUntilErrorBitmap = 32050;
constexpr uint32_t kUntilErrorText = 10882;

long EndOfDay(const PLDate& date) {
    const PLTime last(23, 59, 59);
    return PLDate2TimeStamp(&date, &last);
}

// The last occurrence of `setting.count` occurrences, recomputed with one fewer while the series
// would reach the limit. False when no count of at least 1 fits.
bool FitCount(_RecurInfo& setting, const VtRecurEndInput& input, long limit, PLDate& lastDay) {
    bool skip = input.seriesCountCache != nullptr && *input.seriesCountCache == setting.count;
    for (;;) {
        if (!skip) {
            int computed = setting.count;
            // The computation lowers the count itself to fit the limit, and fails when nothing
            // fits: asking again with fewer would only fail again.
            if (!ComputeSeriesEnd(setting, computed, lastDay)) {
                return false;
            }
            setting.count = computed;
            if (input.seriesCountCache != nullptr) {
                *input.seriesCountCache = computed;
            }
        }
        skip = false;
        if (setting.lastStamp < limit) {
            return true;
        }
        setting.count -= 1;
        if (setting.count < 1) {
            return false;
        }
    }
}

}  // namespace

long RecurSeriesLimit() {
    PLDate last;
    last.year = 2030;
    last.month = 12;
    last.day = 31;
    last.FixFromMDY();
    return EndOfDay(last);
}

VtRecurEndResult CheckRecurEnd(_RecurInfo& setting, const VtRecurEndInput& input, PLDate& lastDay) {
    const long limit = RecurSeriesLimit();
    switch (input.mode) {
        case VtRecurEndMode::NoEnd:
            setting.count = kRecurNoEnd;
            setting.lastStamp = int32_t(limit);
            return VtRecurEndResult::Accepted;
        case VtRecurEndMode::UntilDate:
            setting.lastStamp = int32_t(EndOfDay(input.untilDate));
            if (setting.lastStamp < setting.startStamp) {
                return VtRecurEndResult::UntilBeforeStart;
            }
            setting.count = input.daily ? 0 : -1;
            return VtRecurEndResult::Accepted;
        case VtRecurEndMode::AfterCount:
            break;
    }
    const unsigned long typed = PLStringToUnsigned(input.countText);
    setting.count = typed > unsigned(INT_MAX) ? INT_MAX : int32_t(typed);
    if (setting.count < 1 || !FitCount(setting, input, limit, lastDay)) {
        setting.kind = kRecurNone;
    }
    return VtRecurEndResult::Accepted;
}

void ShowRecurUntilError() {
    ShowInfoDialog(kUntilErrorBitmap, kUntilErrorText, 0, 0, 0);
}

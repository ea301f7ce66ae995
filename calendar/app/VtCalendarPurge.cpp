// The keep-time purge. The day of month is not clamped when stepping back months: the 31st one
// month back is carried by mktime into the next month, and that is how the cut-off is meant.
#include "app/VtCalendarPurge.h"

#include "PLClock.h"
#include "app/VtCalendarEventStore.h"

bool VtCalendarPurgeCutoff(long option, const std::tm& now, long& cutoff) {
    // Unsigned on purpose: ids below 11452 wrap to large values and fall out with the rest.
    if (static_cast<unsigned long>(option - kKeepOneWeek) >= 5) {
        return false;
    }
    std::tm back = now;
    switch (option) {
        case kKeepOneWeek:
            back.tm_mday -= 7;
            break;
        case kKeepOneMonth:
        case kKeepThreeMonths:
        case kKeepSixMonths: {
            const int months = option == kKeepOneMonth ? 1 : (option == kKeepThreeMonths ? 3 : 6);
            back.tm_mon -= months;
            if (back.tm_mon < 0) {
                back.tm_mon += 12;
                back.tm_year -= 1;
            }
            break;
        }
        default:
            back.tm_year -= 1;
            break;
    }
    // The stepped-back moment may lie on the other side of a daylight-saving change: let mktime
    // decide its offset instead of carrying today's.
    back.tm_isdst = -1;
    cutoff = static_cast<long>(std::mktime(&back));
    return true;
}

void VtCalendarPurgeFinished(long option) {
    const std::time_t now = static_cast<std::time_t>(PLClock::Now());
    std::tm local{};
    localtime_r(&now, &local);
    long cutoff = 0;
    if (VtCalendarPurgeCutoff(option, local, cutoff)) {
        VtCalendarDeleteFinished(cutoff);
    }
}

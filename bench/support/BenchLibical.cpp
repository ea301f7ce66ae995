// The busy calendar's rules as RRULE text, expanded by libical.
#include "BenchLibical.h"

#include <cstdio>

#include "recur/_RecurInfo.h"

std::string BenchRuleText(const _EventRecInfo& record) {
    static const char* const kDays[] = {"SU", "MO", "TU", "WE", "TH", "FR", "SA"};
    char text[256];
    const int week = record.recurValueB >> 8;
    const int low = record.recurValueB & 0xFF;
    const int ordinal = week >= 5 ? -1 : week;
    switch (record.recurKind) {
        case kRecurDaily:
            if (record.recurValueB == 1) {
                return "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR";
            }
            std::snprintf(text, sizeof text, "FREQ=DAILY;INTERVAL=%d", record.recurValueA);
            return text;
        case kRecurWeekly: {
            std::string days;
            for (int d = 0; d < 7; ++d) {
                if (record.recurValueB & (1 << d)) {
                    days += days.empty() ? "" : ",";
                    days += kDays[d];
                }
            }
            return "FREQ=WEEKLY;INTERVAL=" + std::to_string(record.recurValueA) + ";BYDAY=" + days;
        }
        case kRecurMonthly:
            if (week == 0) {
                std::snprintf(text, sizeof text, "FREQ=MONTHLY;INTERVAL=%d;BYMONTHDAY=%d",
                              record.recurValueA, low);
            } else {
                std::snprintf(text, sizeof text, "FREQ=MONTHLY;INTERVAL=%d;BYDAY=%d%s",
                              record.recurValueA, ordinal, kDays[low - 1]);
            }
            return text;
        default:
            if (week == 0) {
                std::snprintf(text, sizeof text, "FREQ=YEARLY;BYMONTH=%d;BYMONTHDAY=%d",
                              record.recurValueA, low);
            } else {
                std::snprintf(text, sizeof text, "FREQ=YEARLY;BYMONTH=%d;BYDAY=%d%s",
                              record.recurValueA, ordinal, kDays[low - 1]);
            }
            return text;
    }
}

BenchLibicalRules::BenchLibicalRules(const std::vector<_EventRecInfo>& events, int count) {
    for (int i = 0; i < count && size_t(i) < events.size(); ++i) {
        mRules.push_back(icalrecurrencetype_from_string(BenchRuleText(events[size_t(i)]).c_str()));
        mStarts.push_back(icaltime_from_timet_with_zone(events[size_t(i)].startStamp, 0,
                                                        icaltimezone_get_utc_timezone()));
    }
}

long BenchLibicalRules::Count(long from, long to) const {
    const icaltimetype first =
        icaltime_from_timet_with_zone(from, 0, icaltimezone_get_utc_timezone());
    const icaltimetype end = icaltime_from_timet_with_zone(to, 0, icaltimezone_get_utc_timezone());
    long occurrences = 0;
    for (size_t i = 0; i < mRules.size(); ++i) {
        icalrecur_iterator* it = icalrecur_iterator_new(mRules[i], mStarts[i]);
        if (it == nullptr) {
            continue;
        }
        for (icaltimetype t = icalrecur_iterator_next(it); !icaltime_is_null_time(t);
             t = icalrecur_iterator_next(it)) {
            if (icaltime_compare(t, end) >= 0) {
                break;
            }
            if (icaltime_compare(t, first) >= 0) {
                ++occurrences;
            }
        }
        icalrecur_iterator_free(it);
    }
    return occurrences;
}

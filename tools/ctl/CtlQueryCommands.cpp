// calendar-ctl query month|week|day DATE: the store's node lists, field by field.
#include <cstdio>

#include "APConfig.h"
#include "APEventRec.h"
#include "CtlArgs.h"
#include "CtlCommands.h"
#include "CtlFormat.h"
#include "PLTimeStamp.h"

namespace {

// The configured first weekday 1..7 (Sunday when the setting cannot be read).
int FirstWeekday() {
    long option = kAPFirstWeekdaySunday;
    APConfigCalendar_GetStartWeekDay(&option);
    const long weekday = option - 11423;
    return weekday >= 1 && weekday <= 7 ? int(weekday) : 1;
}

void PrintRangeNodes(APMonthEventNode* head, bool json) {
    for (const APMonthEventNode* n = head; n; n = n->next) {
        CtlJson object;
        object.Add("id", long(n->id))
            .Add("first", CtlDateText(n->firstDay))
            .Add("last", CtlDateText(n->lastDay))
            .Add("limit", CtlDateText(n->limitDay))
            .Add("end_time", CtlTimeText(n->endTime))
            .Add("a", long(n->recurValueA))
            .Add("b", long(n->recurValueB))
            .Add("kind", long(n->recurKind))
            .Add("colour", long(n->colour))
            .Add("all_day", long(n->allDay))
            .Add("start_time", CtlTimeText(n->startTime));
        std::printf("%s\n", json ? object.Text().c_str() : object.Plain().c_str());
    }
}

void PrintDayNodes(APDayEventNode* head, bool json) {
    for (const APDayEventNode* n = head; n; n = n->next) {
        CtlJson object;
        object.Add("id", long(n->id))
            .Add("first", CtlDateText(n->firstDay))
            .Add("last", CtlDateText(n->lastDay))
            .Add("hour", long(n->startHour))
            .Add("subject", CtlFieldText(n->subject, sizeof n->subject))
            .Add("all_day", long(n->allDay))
            .Add("alarm_icon", long(n->alarmIcon))
            .Add("repeat_icon", long(n->repeatIcon));
        std::printf("%s\n", json ? object.Text().c_str() : object.Plain().c_str());
    }
}

}  // namespace

int CtlQueryCommand(const std::vector<std::string>& words) {
    const CtlArgs args(words, {}, {"--json"});
    PLDate date;
    if (!args.Ok() || args.Positional().size() != 2 || !CtlParseDate(args.Positional()[1], date)) {
        return CtlFail(kCtlUsage, "query month|week|day YYYY-MM-DD [--json]");
    }
    const std::string& period = args.Positional()[0];
    const bool json = args.Has("--json");
    APEventRec store;
    if (!store.IsOpen()) {
        return CtlFail(kCtlFailed, "event store: " + store.GetLastError());
    }
    PLBasicString<char> text;
    if (period == "month") {
        const PLDate first(date.year, date.month, 1);
        const PLDate next = first + PLDate::NumberOfDaysInMonth(date.month, date.year);
        APMonthEventNode* head = store.QueryMonthEventView(PLDate2TimeStamp(&first, nullptr),
                                                           PLDate2TimeStamp(&next, nullptr), text);
        PrintRangeNodes(head, json);
        APFreeEventNodes(head);
    } else if (period == "week") {
        const PLDate first = date - (date.Weekday() - FirstWeekday() + 7) % 7;
        const PLDate next = first + 7;
        APMonthEventNode* head = store.QueryWeekEventView(PLDate2TimeStamp(&first, nullptr),
                                                          PLDate2TimeStamp(&next, nullptr), text);
        PrintRangeNodes(head, json);
        APFreeEventNodes(head);
    } else if (period == "day") {
        const PLTime endOfDay(23, 59, 59);
        APDayEventNode* head = store.GetDayEventView(PLDate2TimeStamp(&date, nullptr),
                                                     PLDate2TimeStamp(&date, &endOfDay), text);
        PrintDayNodes(head, json);
        APFreeEventNodes(head);
    } else {
        return CtlFail(kCtlUsage, "query month|week|day YYYY-MM-DD [--json]");
    }
    return kCtlOk;
}

// calendar-ctl alarm list, config, text, lunar and send.
#include <cstdio>

#include "APAlertDB.h"
#include "APConfig.h"
#include "APGetStr.h"
#include "APLunar.h"
#include "CtlArgs.h"
#include "CtlCommands.h"
#include "CtlFormat.h"
#include "PLAppContext.h"
#include "PLClock.h"
#include "PLDeviceRoot.h"
#include "PLMessage.h"
#include "PLPMEClient.h"
#include "PLResourceFileManager.h"
#include "PLTimeStamp.h"
#ifdef CTL_HAVE_HOST
#include "PLHostMessageClient.h"
#endif

namespace {

constexpr int kRingTimesShown = 5;

}  // namespace

int CtlAlarmCommand(const std::vector<std::string>& words) {
    const CtlArgs args(words, {"--from", "--to"}, {"--json"});
    if (!args.Ok() || args.Positional().size() != 1 || args.Positional()[0] != "list") {
        return CtlFail(kCtlUsage, "alarm list [--from DATE --to DATE] [--json]");
    }
    long from = long(PLClock::Now());
    long to = 0;
    if (args.Has("--from") || args.Has("--to")) {
        PLDate first, last;
        if (!CtlParseDate(args.Get("--from"), first) || !CtlParseDate(args.Get("--to"), last) ||
            last < first) {
            return CtlFail(kCtlUsage,
                           "--from and --to take YYYY-MM-DD, the first not after the second");
        }
        const PLDate after = last + 1;
        from = PLDate2TimeStamp(&first, nullptr);
        to = PLDate2TimeStamp(&after, nullptr);
    }
    std::vector<AP_ALERT_CONTEXT> alarms;
    std::string error;
    if (!APAlertDB_ListAlerts(alarms, error)) {
        return CtlFail(kCtlFailed, "alarm store: " + error);
    }
    int status = kCtlOk;
    for (const AP_ALERT_CONTEXT& alarm : alarms) {
        std::vector<long> times;
        if (!APAlertDB_NextRingTimes(alarm, from, kRingTimesShown, times, error)) {
            std::fprintf(stderr, "calendar-ctl: alarm %d: %s\n", alarm.alertId, error.c_str());
            status = kCtlFailed;
        }
        if (to != 0 && (times.empty() || times.front() >= to)) {
            continue;  // does not ring in the asked window
        }
        std::vector<std::string> next;
        for (long t : times) {
            if (to == 0 || t < to) {
                next.push_back(CtlStampText(t));
            }
        }
        CtlJson object;
        object.Add("daemon_id", long(alarm.alertId))
            .Add("owner", CtlFieldText(alarm.owner, sizeof alarm.owner))
            .Add("time", long(alarm.alertTime))
            .Add("rule", CtlFieldText(alarm.rule, sizeof alarm.rule))
            .Add("local_time_flag", long(alarm.localTimeFlag))
            .Add("next", next);
        std::printf("%s\n", args.Has("--json") ? object.Text().c_str() : object.Plain().c_str());
    }
    return status;
}

int CtlConfigCommand(const std::vector<std::string>& words) {
    std::string error;
    if (!words.empty() && words[0] == "get" && words.size() <= 2) {
        std::vector<std::pair<std::string, std::string>> values;
        if (words.size() == 2) {
            std::string value;
            if (!APConfig_GetByKey(words[1], value, error)) {
                return CtlFail(kCtlFailed, error);
            }
            values.emplace_back(words[1], value);
        } else if (!APConfig_GetAll(values, error)) {
            return CtlFail(kCtlFailed, error);
        }
        for (const auto& [key, value] : values) {
            std::printf("%s %s\n", key.c_str(), value.c_str());
        }
        return kCtlOk;
    }
    if (words.size() == 3 && words[0] == "set") {
        return APConfig_SetByKey(words[1], words[2], error) ? kCtlOk : CtlFail(kCtlFailed, error);
    }
    return CtlFail(kCtlUsage, "config get [KEY] | config set KEY VALUE");
}

bool CtlLoadCalendarTexts(std::string& error) {
    auto* manager = new PLResourceFileManager(PLFourCC("rsrc"), true);
    if (!manager->LoadFromFile("/root/resource/calendar.rsc")) {
        error = manager->GetLastError();
        delete manager;
        return false;
    }
    PLAppContext::GetInstance()->AddResourceManager(manager, true);
    return true;
}

int CtlTextCommand(const std::vector<std::string>& words) {
    long id = 0;
    if (words.size() != 1 || !CtlParseInt(words[0], id) || id < 0) {
        return CtlFail(kCtlUsage, "text ID");
    }
    std::string reason;
    if (!CtlLoadCalendarTexts(reason)) {
        return CtlFail(kCtlFailed, reason);
    }
    PLBasicString<char> text;
    if (!PLAppContext::GetInstance()->GetText(uint32_t(id), text)) {
        return CtlFail(kCtlFailed, "calendar.rsc has no text " + words[0]);
    }
    std::printf("%s\n", APGetStr(uint32_t(id)).c_str());
    return kCtlOk;
}

int CtlLunarCommand(const std::vector<std::string>& words) {
    if (words.empty()) {
        return CtlFail(kCtlUsage, "lunar YYYY-MM-DD...");
    }
    int status = kCtlOk;
    for (const std::string& word : words) {
        PLDate date;
        DATES solar;
        DATES lunar;
        if (!CtlParseDate(word, date)) {
            status = CtlFail(kCtlUsage, "not a date YYYY-MM-DD between 1900 and 2100: " + word);
            continue;
        }
        solar.year = date.year;
        solar.month = date.month;
        solar.day = date.day;
        if (new2lunar(solar, &lunar) <= 0) {
            status = CtlFail(kCtlFailed, word + " is outside the lunar table");
            continue;
        }
        std::printf("%s %s%d-%d\n", word.c_str(), lunar.leapMonth ? "L" : "", lunar.month,
                    lunar.day);
    }
    return status;
}

int CtlSendCommand(const std::vector<std::string>& words) {
    long id = 0;
    if (words.size() != 1 || !CtlParseInt(words[0], id) || id < 0 || id > 0xFFFFFFFFL) {
        return CtlFail(kCtlUsage, "send N");
    }
    PLMessage message(uint32_t(id), kPLWildcard, kPLWildcard, "", "");
    PLPMEClient::GetInstance()->BroadcastMessage(&message);
#ifdef CTL_HAVE_HOST
    std::string error;
    if (!PLHostSendMessage(PLDeviceRoot::GetRoot(), uint32_t(id), kPLWildcard, kPLWildcard, "", "",
                           error)) {
        // Logged for the device either way; only the running simulator missed it.
        std::fprintf(stderr, "calendar-ctl: message %ld logged; no simulator received it (%s)\n",
                     id, error.c_str());
    }
#endif
    return kCtlOk;
}

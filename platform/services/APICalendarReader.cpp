// iCalendar through libical. libical keeps no line numbers, so each event is matched to the n-th
// "BEGIN:VEVENT" line of the text to name where it starts.
#include "APICalendarReader.h"

#include <libical/ical.h>

#include <cctype>
#include <cstdlib>
#include <memory>

#include "APVCalendarText.h"

namespace {

struct ComponentFree {
    void operator()(icalcomponent* c) const { icalcomponent_free(c); }
};

std::vector<int> EventLines(const std::string& text) {
    std::vector<int> lines;
    int number = 1;
    size_t pos = 0;
    while (pos <= text.size()) {
        size_t end = text.find('\n', pos);
        std::string line =
            text.substr(pos, end == std::string::npos ? std::string::npos : end - pos);
        while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) {
            line.pop_back();
        }
        std::string upper;
        for (char c : line) {
            upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        }
        // libical takes what follows the component name loosely ("BEGIN:VEVENT\rX" and
        // "BEGIN:VEVENTX" both open an event), so the line is matched by its start.
        if (upper.compare(0, 12, "BEGIN:VEVENT") == 0) {
            lines.push_back(number);
        }
        if (end == std::string::npos) {
            break;
        }
        pos = end + 1;
        ++number;
    }
    return lines;
}

bool ToImportTime(icaltimetype t, APImportTime& out, std::string& why) {
    if (icaltime_is_null_time(t) || !icaltime_is_valid_time(t)) {
        why = "missing or invalid time";
        return false;
    }
    out = APImportTime();
    out.year = t.year;
    out.month = t.month;
    out.day = t.day;
    out.hasTime = !t.is_date;
    out.hour = t.hour;
    out.minute = t.minute;
    out.second = t.second;
    out.utc = icaltime_is_utc(t);
    const icaltimezone* zone = icaltime_get_timezone(t);
    if (out.hasTime && !out.utc && zone != nullptr) {
        out.known = true;
        out.stamp = static_cast<long>(icaltime_as_timet_with_zone(t, zone));
    }
    return true;
}

bool MapRule(const icalrecurrencetype& r, APImportRule& rule, std::string& why) {
    if (r.by_second[0] != ICAL_RECURRENCE_ARRAY_MAX ||
        r.by_minute[0] != ICAL_RECURRENCE_ARRAY_MAX || r.by_hour[0] != ICAL_RECURRENCE_ARRAY_MAX ||
        r.by_year_day[0] != ICAL_RECURRENCE_ARRAY_MAX ||
        r.by_week_no[0] != ICAL_RECURRENCE_ARRAY_MAX) {
        why = "BYSECOND, BYMINUTE, BYHOUR, BYYEARDAY or BYWEEKNO";
        return false;
    }
    int interval = r.interval > 0 ? r.interval : 1;
    int days = 0;
    while (days < ICAL_BY_DAY_SIZE && r.by_day[days] != ICAL_RECURRENCE_ARRAY_MAX) {
        ++days;
    }
    int monthDays = 0;
    while (monthDays < ICAL_BY_MONTHDAY_SIZE &&
           r.by_month_day[monthDays] != ICAL_RECURRENCE_ARRAY_MAX) {
        ++monthDays;
    }
    int months = 0;
    while (months < ICAL_BY_MONTH_SIZE && r.by_month[months] != ICAL_RECURRENCE_ARRAY_MAX) {
        ++months;
    }
    int setPos = 0;
    while (setPos < ICAL_BY_SETPOS_SIZE && r.by_set_pos[setPos] != ICAL_RECURRENCE_ARRAY_MAX) {
        ++setPos;
    }
    APImportRule out;
    out.a = interval;
    // One weekday with its position in the month (2TU, -1SU, or TU with BYSETPOS=2).
    auto positioned = [&](int& pattern) {
        if (days != 1 || monthDays != 0 || setPos > 1) {
            why = "more than one day in a monthly or yearly rule";
            return false;
        }
        int weekday = icalrecurrencetype_day_day_of_week(r.by_day[0]);
        int position = icalrecurrencetype_day_position(r.by_day[0]);
        if (setPos == 1) {
            position = r.by_set_pos[0];
        }
        if (position == -1) {
            position = 5;
        }
        if (position < 1 || position > 5 || weekday < 1 || weekday > 7) {
            why = "week position " + std::to_string(position);
            return false;
        }
        pattern = position * 256 + weekday;
        return true;
    };
    switch (r.freq) {
        case ICAL_DAILY_RECURRENCE:
            if (days || monthDays || months || setPos) {
                why = "a daily rule with BY parts";
                return false;
            }
            out.kind = 1;
            break;
        case ICAL_WEEKLY_RECURRENCE: {
            if (monthDays || months || setPos) {
                why = "a weekly rule with BYMONTH, BYMONTHDAY or BYSETPOS";
                return false;
            }
            int mask = 0;
            for (int i = 0; i < days; ++i) {
                if (icalrecurrencetype_day_position(r.by_day[i]) != 0) {
                    why = "a weekly rule with weekday positions";
                    return false;
                }
                mask |= 1 << (icalrecurrencetype_day_day_of_week(r.by_day[i]) - 1);
            }
            out.kind = 2;
            out.b = mask;
            out.weekdayFromStart = mask == 0;
            if (interval == 1 && mask == 0x3E) {
                out.kind = 1;
                out.b = 1;
            }
            break;
        }
        case ICAL_MONTHLY_RECURRENCE:
            if (months) {
                why = "a monthly rule with BYMONTH";
                return false;
            }
            out.kind = 4;
            if (days) {
                if (!positioned(out.b)) {
                    return false;
                }
                if (interval == 12) {
                    out.kind = 8;
                    out.monthFromStart = true;
                }
            } else if (monthDays == 1 && r.by_month_day[0] >= 1 && !setPos) {
                out.b = r.by_month_day[0];
            } else if (monthDays == 0 && !setPos) {
                out.dayFromStart = true;
            } else {
                why = "days of the month counted from the end, or more than one";
                return false;
            }
            break;
        case ICAL_YEARLY_RECURRENCE:
            if (interval != 1) {
                why = "a yearly rule repeats every year";
                return false;
            }
            if (months > 1) {
                why = "more than one month";
                return false;
            }
            out.kind = 8;
            out.a = months == 1 ? r.by_month[0] : 0;
            out.monthFromStart = months == 0;
            if (days) {
                if (!positioned(out.b)) {
                    return false;
                }
            } else if (monthDays == 1 && r.by_month_day[0] >= 1 && !setPos) {
                out.b = r.by_month_day[0];
            } else if (monthDays == 0 && !setPos) {
                out.dayFromStart = true;
            } else {
                why = "days of the month counted from the end, or more than one";
                return false;
            }
            break;
        default:
            why = "frequency other than daily, weekly, monthly or yearly";
            return false;
    }
    if (r.count > 0) {
        out.end = APImportRule::End::kCount;
        out.count = r.count;
    } else if (!icaltime_is_null_time(r.until)) {
        out.end = APImportRule::End::kUntil;
        if (!ToImportTime(r.until, out.until, why)) {
            return false;
        }
    }
    rule = out;
    return true;
}

void ReadAlarm(icalcomponent* event, APImportDraft& d) {
    icalcomponent* alarm = icalcomponent_get_first_component(event, ICAL_VALARM_COMPONENT);
    if (alarm == nullptr) {
        return;
    }
    icalproperty* trigger = icalcomponent_get_first_property(alarm, ICAL_TRIGGER_PROPERTY);
    if (trigger == nullptr) {
        return;
    }
    icaltriggertype t = icalproperty_get_trigger(trigger);
    d.hasAlarm = true;
    if (!icaltime_is_null_time(t.time)) {
        std::string why;
        if (ToImportTime(t.time, d.alarmTime, why)) {
            return;
        }
        d.hasAlarm = false;
        return;
    }
    d.alarmRelative = true;
    d.alarmLead = -icaldurationtype_as_int(t.duration);
}

std::string Text(const char* value) {
    return value != nullptr ? value : "";
}

void ReadEvent(icalcomponent* event, APImportDraft& d) {
    auto fail = [&](const std::string& why) {
        if (d.error.empty()) {
            d.error = "line " + std::to_string(d.line) + " (event): " + why;
        }
    };
    std::string why;
    icalproperty* start = icalcomponent_get_first_property(event, ICAL_DTSTART_PROPERTY);
    if (start != nullptr) {
        d.hasStart = ToImportTime(icalcomponent_get_dtstart(event), d.start, why);
        if (!d.hasStart) {
            return fail("DTSTART: " + why);
        }
    }
    if (icalcomponent_get_first_property(event, ICAL_DTEND_PROPERTY) != nullptr ||
        icalcomponent_get_first_property(event, ICAL_DURATION_PROPERTY) != nullptr) {
        d.hasEnd = ToImportTime(icalcomponent_get_dtend(event), d.end, why);
        d.endExclusiveDate = true;
        if (!d.hasEnd) {
            return fail("DTEND: " + why);
        }
    }
    d.subject = Text(icalcomponent_get_summary(event));
    d.location = Text(icalcomponent_get_location(event));
    d.notes = Text(icalcomponent_get_description(event));
    if (icalproperty* c = icalcomponent_get_first_property(event, ICAL_CATEGORIES_PROPERTY)) {
        std::string first = Text(icalproperty_get_categories(c));
        first = first.substr(0, first.find(','));
        uint32_t choice = APVCalendarText::ClassOfCategory(first);
        d.classChoice = choice != 0 ? choice : 11563;
    }
    for (icalproperty* x = icalcomponent_get_first_property(event, ICAL_X_PROPERTY); x;
         x = icalcomponent_get_next_property(event, ICAL_X_PROPERTY)) {
        if (Text(icalproperty_get_x_name(x)) == "X-MDZ-COLOUR") {
            d.colour = uint32_t(std::strtoul(Text(icalproperty_get_x(x)).c_str(), nullptr, 10));
        }
    }
    int rules = icalcomponent_count_properties(event, ICAL_RRULE_PROPERTY);
    if (rules > 1) {
        return fail("more than one RRULE cannot be held");
    }
    if (icalcomponent_get_first_property(event, ICAL_EXDATE_PROPERTY) ||
        icalcomponent_get_first_property(event, ICAL_RDATE_PROPERTY) ||
        icalcomponent_get_first_property(event, ICAL_EXRULE_PROPERTY)) {
        return fail("EXDATE, RDATE or EXRULE cannot be held");
    }
    if (icalproperty* rule = icalcomponent_get_first_property(event, ICAL_RRULE_PROPERTY)) {
        icalrecurrencetype r = icalproperty_get_rrule(rule);
        if (!MapRule(r, d.rule, why)) {
            return fail(std::string("RRULE '") + icalrecurrencetype_as_string(&r) +
                        "' cannot be held: " + why);
        }
    }
    ReadAlarm(event, d);
}

}  // namespace

bool APICalendarReader::Read(const std::string& text, std::vector<APImportDraft>& drafts,
                             std::string& error) {
    std::unique_ptr<icalcomponent, ComponentFree> root(icalparser_parse_string(text.c_str()));
    if (!root) {
        error = "not an iCalendar file (libical could not parse it)";
        return false;
    }
    std::vector<int> lines = EventLines(text);
    size_t index = 0;
    auto readOne = [&](icalcomponent* event) {
        drafts.emplace_back();
        APImportDraft& d = drafts.back();
        // An event whose start line libical found but the matcher did not (a folded BEGIN line)
        // is named by the last start line before it, never by a line 0 that is no line at all.
        d.line = index < lines.size() ? lines[index] : (lines.empty() ? 1 : lines.back());
        ++index;
        ReadEvent(event, d);
    };
    if (icalcomponent_isa(root.get()) == ICAL_VEVENT_COMPONENT) {
        readOne(root.get());
        return true;
    }
    for (icalcomponent* c = icalcomponent_get_first_component(root.get(), ICAL_VEVENT_COMPONENT);
         c != nullptr; c = icalcomponent_get_next_component(root.get(), ICAL_VEVENT_COMPONENT)) {
        readOne(c);
    }
    return true;
}

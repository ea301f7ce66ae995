// Helpers for the day tests: events written to the scratch store of the test, and the day view
// on 21 November 2026 (a Saturday) with the settings each case asks for.
#pragma once

#include <cstring>
#include <memory>
#include <string>

#include "APConfig.h"
#include "APEventRec.h"
#include "calendar/calendar_support.h"
#include "day/VtCalendarDayView.h"

struct DayEvent {
    const char* subject;
    int startDay, startHour, startMinute;
    int endDay, endHour, endMinute;
    bool allDay = false;
    bool repeats = false;
};

// Stores the event in November 2026 and returns its id.
inline int StoreEvent(const DayEvent& event) {
    _EventRecInfo record;
    InitEventRecInfo(&record);
    std::strncpy(record.subject, event.subject, sizeof(record.subject) - 1);
    record.startStamp =
        int32_t(Stamp(2026, 11, event.startDay, event.startHour, event.startMinute));
    record.endStamp = int32_t(Stamp(2026, 11, event.endDay, event.endHour, event.endMinute));
    record.lastStamp = record.endStamp;
    record.allDay = event.allDay ? 1 : 0;
    if (event.repeats) {
        record.recurKind = 1;
        record.recurValueA = 1;
        record.recurValueC = 10;
        record.recurring = 1;
        record.lastStamp = int32_t(Stamp(2026, 11, 30, event.endHour, event.endMinute));
    }
    return APEventRec().AddEventRec(&record);
}

inline bool EventStored(int id) {
    _EventRecInfo record;
    return APEventRec().GetEventRec(id, &record) == 1;
}

inline void SetLunar(bool on) {
    APCONFIG_CALENDAR_S config;
    APConfigCalendar_Read(&config);
    config.lunarCalendar = on ? 1 : 0;
    APConfigCalendar_Write(&config);
}

// The shared selection and a day view on it.
struct DayFixture {
    explicit DayFixture(int hour) : time(hour, 0, 0) {
        view = std::make_unique<VtCalendarDayView>(11300, &date, &time, false);
    }
    PLDate date{2026, 11, 21};
    PLTime time;
    std::unique_ptr<VtCalendarDayView> view;
};

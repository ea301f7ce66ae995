// Runs the calendar's start-up on a thread of its own. Start-up as shipped runs directly; this
// class lets it move to the background without changing the application object.
#pragma once

#include "PLThread.h"

class CalendarLodingThread : public PLThread {
public:
    // `argument` is the VtCalendarApp whose start-up runs.
    explicit CalendarLodingThread(void* argument);
    // Joins the thread: destroying the object waits for the start-up to finish.
    ~CalendarLodingThread() override;

protected:
    int Run() override;
};

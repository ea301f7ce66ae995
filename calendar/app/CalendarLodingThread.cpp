// The loading thread: the start-up routine, off the caller's thread.
#include "app/CalendarLodingThread.h"

#include <cassert>

#include "app/VtCalendarApp.h"

CalendarLodingThread::CalendarLodingThread(void* argument) : PLThread(argument) {
    assert(argument != nullptr && "the application whose start-up runs");
}

CalendarLodingThread::~CalendarLodingThread() {
    WaitForCompletion();
}

int CalendarLodingThread::Run() {
    auto* application = static_cast<VtCalendarApp*>(GetArgument());
    if (application != nullptr) {
        application->Startup();
    }
    return 0;
}

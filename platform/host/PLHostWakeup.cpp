// Self-pipe wake-up for the simulator's event sources.
#include "PLHostWakeup.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>

PLHostWakeup::PLHostWakeup() {
    int fds[2];
    if (::pipe2(fds, O_NONBLOCK | O_CLOEXEC) == 0) {
        mReadFD = fds[0];
        mWriteFD = fds[1];
    }
}

PLHostWakeup::~PLHostWakeup() {
    if (mReadFD >= 0) {
        ::close(mReadFD);
    }
    if (mWriteFD >= 0) {
        ::close(mWriteFD);
    }
}

void PLHostWakeup::Notify() {
    if (mWriteFD >= 0) {
        char byte = 1;
        // A full pipe already means "notified"; nothing else can go wrong that matters here.
        [[maybe_unused]] ssize_t ignored = ::write(mWriteFD, &byte, 1);
    }
    if (mHook) {
        mHook();
    }
}

bool PLHostWakeup::Wait(int timeoutMs) {
    if (mReadFD < 0) {
        return false;
    }
    pollfd entry{mReadFD, POLLIN, 0};
    int ready;
    do {
        ready = ::poll(&entry, 1, timeoutMs);
    } while (ready < 0 && errno == EINTR);
    if (ready <= 0) {
        return false;
    }
    char buffer[64];
    while (::read(mReadFD, buffer, sizeof(buffer)) > 0) {
    }
    return true;
}

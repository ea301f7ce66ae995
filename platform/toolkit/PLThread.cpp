// Worker threads: run the virtual body on a std::thread and join it exactly once.
#include "PLThread.h"

#include <cstdio>
#include <exception>
#include <system_error>

PLThread::PLThread(void* argument) : mArgument(argument) {}

PLThread::~PLThread() {
    WaitForCompletion();
}

bool PLThread::Start() {
    bool idle = false;
    if (!mRunning.compare_exchange_strong(idle, true)) {
        return false;
    }
    // A finished body that nobody joined yet: join it before reusing the thread object.
    WaitForCompletion();
    try {
        mThread = std::thread([this] {
            int result = -1;
            try {
                result = Run();
            } catch (const std::exception& error) {
                std::fprintf(stderr, "PLThread: the thread body failed: %s\n", error.what());
            } catch (...) {
                std::fprintf(stderr, "PLThread: the thread body failed\n");
            }
            mResult = result;
            mRunning = false;
        });
    } catch (const std::system_error& error) {
        std::fprintf(stderr, "PLThread: cannot start a thread: %s\n", error.what());
        mRunning = false;
        return false;
    }
    return true;
}

void PLThread::WaitForCompletion() {
    // The body itself may ask to wait for its own end; joining would deadlock.
    if (mThread.joinable() && mThread.get_id() != std::this_thread::get_id()) {
        mThread.join();
    }
}

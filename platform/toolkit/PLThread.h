// A worker thread: derive, implement Run, Start it, WaitForCompletion to join.
//
// A derived class must call WaitForCompletion() in its own destructor: by the time this base
// destructor joins, the derived members that Run uses are already gone. The base destructor
// still joins, so no joinable std::thread is ever left behind.
#pragma once

#include <atomic>
#include <thread>

class PLThread {
public:
    explicit PLThread(void* argument);
    virtual ~PLThread();
    PLThread(const PLThread&) = delete;
    PLThread& operator=(const PLThread&) = delete;

    // Starts the thread body; false when it is already running.
    bool Start();
    bool IsRunning() const { return mRunning; }
    // Joins the thread when it was started; harmless otherwise or when called twice.
    void WaitForCompletion();
    // The body's result, once it has completed.
    int GetResult() const { return mResult; }

protected:
    virtual int Run() = 0;
    void* GetArgument() const { return mArgument; }

private:
    void* mArgument;
    std::thread mThread;
    std::atomic<bool> mRunning{false};
    std::atomic<int> mResult{0};
};

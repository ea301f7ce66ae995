// Worker threads: running once at a time, joining, and the result of the body.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "PLThread.h"

namespace {

// What a worker is handed: the result to return and a gate that holds the body until opened.
struct Job {
    int value = 0;
    std::atomic<bool> release{false};
};

class Worker : public PLThread {
public:
    explicit Worker(Job* job) : PLThread(job) {}
    ~Worker() override { WaitForCompletion(); }

protected:
    int Run() override {
        Job* job = static_cast<Job*>(GetArgument());
        while (!job->release) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return job->value;
    }
};

TEST(PLThreadTest, RunOnceAtATimeAndJoin) {
    Job job;
    job.value = 42;
    Worker worker(&job);
    worker.WaitForCompletion();  // never started: harmless
    ASSERT_TRUE(worker.Start());
    EXPECT_TRUE(worker.IsRunning());
    EXPECT_FALSE(worker.Start()) << "already running";
    job.release = true;
    worker.WaitForCompletion();
    worker.WaitForCompletion();  // twice: harmless
    EXPECT_FALSE(worker.IsRunning());
    EXPECT_EQ(worker.GetResult(), 42);
}

}  // namespace

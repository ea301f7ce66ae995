// Worker threads: running, joining, restarting and destroying.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>

#include "PLThread.h"

namespace {

// What a worker is handed: the result to return, a gate, and a count of finished runs.
// clang-format off
struct Job { int value = 0; std::atomic<bool> release{false}; std::atomic<int> finished{0}; };
// clang-format on

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
        ++job->finished;
        return job->value;
    }
};

TEST(PLThreadTest, RunJoinRestartAndDestroy) {
    Job job;
    job.value = 42;
    auto worker = std::make_unique<Worker>(&job);
    worker->WaitForCompletion();  // never started: harmless
    ASSERT_TRUE(worker->Start());
    EXPECT_TRUE(worker->IsRunning());
    EXPECT_FALSE(worker->Start()) << "already running";
    job.release = true;
    worker->WaitForCompletion();
    worker->WaitForCompletion();  // twice: harmless
    EXPECT_FALSE(worker->IsRunning());
    EXPECT_EQ(worker->GetResult(), 42);

    job.value = 7;
    ASSERT_TRUE(worker->Start());
    worker->WaitForCompletion();
    EXPECT_EQ(worker->GetResult(), 7);

    job.release = false;
    ASSERT_TRUE(worker->Start());
    std::thread opener([&job] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        job.release = true;
    });
    worker.reset();  // destroying joins: blocks until the body has finished
    EXPECT_EQ(job.finished, 3);
    opener.join();
}

}  // namespace

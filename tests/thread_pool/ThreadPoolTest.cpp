// SPDX-License-Identifier: GPL-3.0-or-later
#include "thread_pool/ThreadPool.h"

#include <atomic>
#include <ctime>
#include <future>
#include <gtest/gtest.h>
#include <semaphore>
#include <thread>

namespace
{
// The number of the worker that runs a job posted from here.
std::size_t workerOfNextJob(tp::ThreadPool &pool)
{
    std::promise<std::size_t> worker;
    pool.post([&worker] { worker.set_value(tp::detail::thread_id()); });
    return worker.get_future().get();
}

TEST(ThreadPoolTest, OutsideJobsGoRoundRobinAndJobsOfAJobStay)
{
    tp::ThreadPool pool({.workerCount = 3, .queueSize = 8});
    for (const std::size_t expected : {0, 1, 2, 0, 1})
        EXPECT_EQ(workerOfNextJob(pool), expected);

    std::promise<std::pair<std::size_t, std::size_t>> workers;
    pool.post([&] {
        const std::size_t first = tp::detail::thread_id();
        pool.post([&workers, first] { workers.set_value({first, tp::detail::thread_id()}); });
    });
    EXPECT_EQ(workers.get_future().get(), (std::pair<std::size_t, std::size_t>(2, 2)));
    EXPECT_EQ(workerOfNextJob(pool), 0u); // a job's own post is not counted
    EXPECT_GT(tp::detail::thread_id(), pool.workerCount());
}

TEST(ThreadPoolTest, FullQueueOfTheChosenWorkerThrowsAndTheOthersAreNotTried)
{
    constexpr int kQueue = 4;
    std::counting_semaphore<8> gate(0);
    std::atomic<int> run = 0;
    {
        tp::ThreadPool pool({.workerCount = 2, .queueSize = kQueue});
        for (int worker = 0; worker < 2; ++worker) {
            std::promise<void> started;
            pool.post([&] {
                started.set_value();
                gate.acquire();
            });
            started.get_future().wait();
        }
        for (int i = 0; i < 2 * kQueue; ++i)
            pool.post([&run] { ++run; });
        // Worker 0 has no room, and its turn is used up all the same: the next is worker 1's.
        for (int worker = 0; worker < 2; ++worker)
            EXPECT_THROW(pool.post([&run] { run += 100; }), std::runtime_error);
        gate.release(2);
    }
    EXPECT_EQ(run, 2 * kQueue); // the destructor runs what is queued
}

TEST(ThreadPoolTest, JobsOfManyThreadsAllRun)
{
    constexpr int kThreads = 4;
    constexpr int kJobs = 5000;
    std::atomic<int> run = 0;
    {
        tp::ThreadPool pool({.workerCount = 2, .queueSize = 8192}); // room for every job
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i)
            threads.emplace_back([&] {
                for (int job = 0; job < kJobs / kThreads; ++job)
                    pool.post([&run] { ++run; });
            });
        for (auto &thread : threads)
            thread.join();
    }
    EXPECT_EQ(run, kJobs);
}

TEST(ThreadPoolTest, IdleWorkersUseNoProcessorTime)
{
    constexpr double kIdleShare = 0.2; // one spinning worker alone would take 1.0
    constexpr auto kTime = std::chrono::milliseconds(200);
    tp::ThreadPool pool({.workerCount = 2, .queueSize = 8});
    workerOfNextJob(pool);
    const std::clock_t before = std::clock();
    std::this_thread::sleep_for(kTime);
    const double used = double(std::clock() - before) / CLOCKS_PER_SEC;
    EXPECT_LT(used, kIdleShare * std::chrono::duration<double>(kTime).count());
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "thread_pool/ThreadPool.h"

#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <thread>

// The spectrum posts one job a frame, at most some hundred a second; the engine thread, which
// posts, has about 160 us for a block at the highest rate.
namespace
{
using Clock = std::chrono::steady_clock;

void BM_PostToRunOnASleepingWorker(benchmark::State &state)
{
    tp::ThreadPool pool({.workerCount = 1, .queueSize = 64});
    std::atomic<bool> done = false;
    Clock::time_point ran;
    for (auto _ : state) {
        std::this_thread::sleep_for(std::chrono::microseconds(200)); // the worker falls asleep
        done = false;
        const auto posted = Clock::now();
        pool.post([&] {
            ran = Clock::now();
            done = true;
            done.notify_one();
        });
        done.wait(false);
        state.SetIterationTime(std::chrono::duration<double>(ran - posted).count());
    }
}
BENCHMARK(BM_PostToRunOnASleepingWorker)->UseManualTime();

void BM_NewThreadToRun(benchmark::State &state) // the rival: a thread for each job
{
    for (auto _ : state) {
        Clock::time_point ran;
        const auto posted = Clock::now();
        std::thread([&] { ran = Clock::now(); }).join();
        state.SetIterationTime(std::chrono::duration<double>(ran - posted).count());
    }
}
BENCHMARK(BM_NewThreadToRun)->UseManualTime();

void BM_PushAndPop(benchmark::State &state) // what a post costs without the wake-up
{
    tp::MPMCBoundedQueue<tp::FixedFunction<void(), 128>> queue(64);
    tp::FixedFunction<void(), 128> task;
    int run = 0;
    for (auto _ : state) {
        queue.push([&run] { ++run; });
        queue.pop(task);
        task();
    }
    benchmark::DoNotOptimize(run);
}
BENCHMARK(BM_PushAndPop);
} // namespace

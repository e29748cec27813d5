// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/containers/SpinLock.h"
#include "vm_library/source/thread/spinlock.h"

#include <gtest/gtest.h>
#include <mutex>
#include <thread>
#include <vector>

namespace
{
template <typename Guard, typename Lock>
long countUnder(Lock &lock)
{
    constexpr int kThreads = 4;
    constexpr int kRounds = 20000;
    long counter = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                const Guard guard(lock);
                const long seen = counter;
                if (round % 1000 == 0)
                    sched_yield(); // lose the processor while holding
                counter = seen + 1;
            }
        });
    for (auto &thread : threads)
        thread.join();
    return counter - kThreads * kRounds;
}

TEST(SpinLockTest, LetsOneThreadInAtATime)
{
    SpinLock lock;
    EXPECT_EQ(countUnder<SpinLocker>(lock), 0);
}

TEST(spinlockTest, LetsOneThreadInAtATime)
{
    vm::thread::spinlock lock;
    EXPECT_EQ(countUnder<std::lock_guard<vm::thread::spinlock>>(lock), 0);
}
} // namespace

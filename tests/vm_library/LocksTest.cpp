// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/containers/SpinLock.h"
#include "vm_library/source/thread/spinlock.h"

#include <gtest/gtest.h>
#include <mutex>
#include <thread>
#include <vector>

namespace
{
template <typename Lock>
class LocksTest : public testing::Test
{ };

using Locks = testing::Types<SpinLock, vm::thread::spinlock>;
TYPED_TEST_SUITE(LocksTest, Locks);

TYPED_TEST(LocksTest, LetsOneThreadInAtATime)
{
    constexpr int kThreads = 4;
    constexpr int kRounds = 20000;
    TypeParam lock;
    long counter = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                const std::lock_guard guard(lock);
                const long seen = counter;
                if (round % 1000 == 0)
                    sched_yield(); // lose the processor while holding
                counter = seen + 1;
            }
        });
    for (auto &thread : threads)
        thread.join();
    EXPECT_EQ(counter, kThreads * kRounds);
}
} // namespace

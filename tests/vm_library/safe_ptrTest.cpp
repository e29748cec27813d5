// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/thread/vm_thread_safe_ptr.h"

#include <gtest/gtest.h>
#include <thread>
#include <utility>
#include <vector>

using vm::memory::make_safe_ptr;
using vm::memory::safe_ptr;

namespace
{
// Counts how deep it is held; single-threaded tests only.
struct CountingMutex
{
    void lock() { ++depth; }
    void unlock() { --depth; }
    static inline int depth = 0;
};

struct DepthProbe
{
    int depthInside() const { return CountingMutex::depth; }
};

TEST(safe_ptrTest, CopiesShareObjectAndMutexAcrossThreads)
{
    constexpr int kRounds = 20000;
    auto first = make_safe_ptr<std::vector<int>>(1, 5);
    std::thread other([copy = first] {
        for (int i = 0; i < kRounds; ++i)
            ++copy->front();
    });
    for (int i = 0; i < kRounds; ++i) {
        const auto guard = first.lock();
        const int seen = first->front(); // the arrow locks again: the default mutex is recursive
        first.get_for_write()->front() = seen + 1;
    }
    other.join();
    EXPECT_EQ(first->front(), 5 + 2 * kRounds);
}

TEST(safe_ptrTest, ArrowHoldsTheMutexForTheCallOnly)
{
    auto probe = make_safe_ptr<DepthProbe, CountingMutex>();
    EXPECT_EQ(probe->depthInside(), 1);
    EXPECT_EQ(std::as_const(probe)->depthInside(), 1);
    EXPECT_EQ(CountingMutex::depth, 0);
    EXPECT_EQ(probe.get_for_read()->depthInside(), 0);
}

TEST(safe_ptrDeathTest, AccessWithoutAnObjectStopsTheProgramAndNamesTheLine)
{
    safe_ptr<std::vector<int>> nothing;
    EXPECT_FALSE(nothing);
    EXPECT_DEATH(nothing->clear(), "vm_thread_safe_ptr.h:78: .*get_for_write.*m_ptr");
    EXPECT_DEATH(
        (void)std::as_const(nothing)->size(), "vm_thread_safe_ptr.h:79: .*get_for_read.*m_ptr");
    EXPECT_DEATH((void)nothing.lock(), "m_ptr");
}
} // namespace

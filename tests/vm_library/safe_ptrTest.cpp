// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/thread/vm_thread_safe_ptr.h"

#include <gtest/gtest.h>
#include <thread>

using vm::memory::make_safe_ptr;
using vm::memory::safe_ptr;

namespace
{
struct Account
{
    explicit Account(int start) : balance(start) { }
    void add(int amount) { balance += amount; }
    int total() const { return balance; }
    int balance;
};

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
    auto first = make_safe_ptr<Account>(5);
    std::thread other([copy = first] {
        for (int i = 0; i < kRounds; ++i)
            copy->add(1);
    });
    for (int i = 0; i < kRounds; ++i) {
        const auto guard = first.lock();
        const int seen = first->total(); // the arrow locks again: the default mutex is recursive
        first.get_for_write()->balance = seen + 1;
    }
    other.join();
    EXPECT_EQ(first->total(), 5 + 2 * kRounds);
}

TEST(safe_ptrTest, ArrowHoldsTheMutexForTheCallOnly)
{
    auto probe = make_safe_ptr<DepthProbe, CountingMutex>();
    const auto &readOnly = probe;
    EXPECT_EQ(probe->depthInside(), 1);
    EXPECT_EQ(readOnly->depthInside(), 1);
    EXPECT_EQ(CountingMutex::depth, 0);
    {
        const auto guard = probe.lock();
        EXPECT_EQ(probe->depthInside(), 2);
    }
    EXPECT_EQ(probe.get_for_read()->depthInside(), 0);
}

TEST(safe_ptrDeathTest, AccessWithoutAnObjectStopsTheProgramAndNamesTheLine)
{
    safe_ptr<Account> nothing;
    const safe_ptr<Account> constNothing;
    EXPECT_FALSE(nothing);
    EXPECT_DEATH(nothing->add(1), "vm_thread_safe_ptr.h:78: .*get_for_write.*m_ptr");
    EXPECT_DEATH(constNothing->total(), "vm_thread_safe_ptr.h:79: .*get_for_read.*m_ptr");
    EXPECT_DEATH((void)nothing.lock(), "m_ptr");
}
} // namespace

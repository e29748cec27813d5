// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <sched.h>

/// A lock for sections of a few hundred nanoseconds: index work and the copy of one block.
///
/// Any thread may lock. Not recursive and not fair. A waiter gives its time slice away, so that a
/// holder that lost the processor gets on.
class SpinLock
{
public:
    void lock() noexcept
    {
        for (unsigned int failed = 0; m_held.exchange(1, std::memory_order_acquire) != 0;
             ++failed) {
            if (failed % kTriesPerYield == 0)
                sched_yield();
        }
    }

    void unlock() noexcept { m_held.store(0, std::memory_order_release); }

private:
    static constexpr unsigned int kTriesPerYield = 100;

    std::atomic<unsigned char> m_held = 0; // 0 free, 1 held
};

/// Holds a SpinLock for the length of a scope.
class SpinLocker
{
public:
    explicit SpinLocker(SpinLock &lock) noexcept : m_lock(lock) { m_lock.lock(); }
    ~SpinLocker() { m_lock.unlock(); }
    SpinLocker(const SpinLocker &) = delete;
    SpinLocker &operator=(const SpinLocker &) = delete;

private:
    SpinLock &m_lock;
};

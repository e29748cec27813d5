// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <sched.h>

namespace vm::thread
{
/// The lock of vm::containers::ring_buffer, for use with std::lock_guard.
///
/// Any thread may lock. Not recursive and not fair. It spins longer than SpinLock before it gives
/// the time slice away: the ring's two sides meet rarely and hold it for one copy.
class spinlock
{
public:
    void lock() noexcept
    {
        for (unsigned int failed = 1; m_held.exchange(1, std::memory_order_acquire) != 0;
             ++failed) {
            if (failed % kTriesPerYield == 0)
                sched_yield();
        }
    }

    void unlock() noexcept { m_held.store(0, std::memory_order_release); }

private:
    static constexpr unsigned int kTriesPerYield = 128;

    std::atomic<unsigned char> m_held = 0; // 0 free, 1 held
};
} // namespace vm::thread

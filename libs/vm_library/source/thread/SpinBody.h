// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <sched.h>

namespace vm::thread
{
/// A lock for sections of a few hundred nanoseconds: index work and the copy of one block.
///
/// Any thread may lock. Not recursive and not fair. A waiter gives its time slice away after
/// kFirstYield retries, and after every kTriesPerYield more, so that a holder that lost the
/// processor gets on.
template <unsigned int kFirstYield, unsigned int kTriesPerYield>
class SpinBody
{
public:
    void lock() noexcept
    {
        for (unsigned int failed = 0; m_held.exchange(1, std::memory_order_acquire) != 0;
             ++failed) {
            if (failed % kTriesPerYield == kFirstYield)
                sched_yield();
        }
    }

    void unlock() noexcept { m_held.store(0, std::memory_order_release); }

private:
    static_assert(kFirstYield < kTriesPerYield);

    std::atomic<unsigned char> m_held = 0; // 0 free, 1 held
};
} // namespace vm::thread

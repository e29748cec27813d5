// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/thread/vm_thread_safe_ptr.h"

#include <gtest/gtest.h>
#include <thread>
#include <vector>

using vm::memory::make_safe_ptr;

namespace
{
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
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ipps.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace
{
template <typename T>
void expectWritableCacheLines(T *(*allocate)(int))
{
    for (const int length : {1, 7, 4096}) {
        T *array = allocate(length);
        ASSERT_NE(array, nullptr);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(array) % 64, 0u);
        std::memset(static_cast<void *>(array), 0x55, sizeof(T) * static_cast<std::size_t>(length));
        ippsFree(array);
    }
    EXPECT_EQ(allocate(0), nullptr);
    EXPECT_EQ(allocate(-1), nullptr);
}

TEST(MemoryTest, ArraysStartOnACacheLineAndHoldTheirLength)
{
    expectWritableCacheLines(ippsMalloc_8u);
    expectWritableCacheLines(ippsMalloc_32f);
    expectWritableCacheLines(ippsMalloc_32fc);
    expectWritableCacheLines(ippsMalloc_64f);
    expectWritableCacheLines(ippsMalloc_64fc);
    ippsFree(nullptr);
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "thread_pool/FixedFunction.h"

#include <gtest/gtest.h>
#include <memory>

namespace
{
using Task = tp::FixedFunction<int(int), 128>;

static_assert(!std::is_copy_constructible_v<Task> && std::is_nothrow_destructible_v<Task>);

int twice(int value)
{
    return 2 * value;
}

TEST(FixedFunctionTest, MovesEmptyTheSourceAndDestroyEachCallableOnce)
{
    const auto alive = std::make_shared<int>(7); // one more owner for each living callable
    const auto stored = [&alive] {
        return Task([held = alive](int value) { return value + *held; });
    };
    Task target = stored();
    for (const bool isStored : {true, false, true}) { // over stored, over stored, over plain
        Task source = isStored ? stored() : Task(twice);
        target = std::move(source);
        EXPECT_FALSE(source);
        EXPECT_EQ(target(3), isStored ? 10 : 6);
        EXPECT_EQ(alive.use_count(), isStored ? 2 : 1);
    }
    Task constructed(std::move(target));
    EXPECT_FALSE(target);
    EXPECT_EQ(constructed(1), 8);
    constructed = Task();
    EXPECT_FALSE(constructed);
    EXPECT_EQ(alive.use_count(), 1);
}
} // namespace

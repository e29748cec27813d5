// SPDX-License-Identifier: GPL-3.0-or-later
#include "thread_pool/FixedFunction.h"

#include <array>
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

TEST(FixedFunctionTest, HoldsEveryKindOfCallable)
{
    std::array<char, 128 - sizeof(int)> filling = {};
    filling.back() = 1;
    const int offset = 10;
    Task plain(twice);
    Task full([filling, offset](int value) { return value + offset + filling.back(); });
    Task moveOnly([number = std::make_unique<int>(5)](int value) { return value + *number; });
    EXPECT_EQ(plain(4), 8);
    EXPECT_EQ(full(4), 15);
    EXPECT_EQ(moveOnly(4), 9);
}

TEST(FixedFunctionTest, EmptyUntilGivenACallable)
{
    int (*none)(int) = nullptr;
    EXPECT_FALSE(Task());
    EXPECT_FALSE(Task(none));
    EXPECT_TRUE(Task(twice));
}

TEST(FixedFunctionTest, MovesBetweenPlainStoredAndEmptyDestroyEachCallableOnce)
{
    const auto alive = std::make_shared<int>(7); // one more owner for each living callable
    const auto stored = [&alive] {
        return Task([held = alive](int value) { return value + *held; });
    };

    Task target = stored();
    EXPECT_EQ(alive.use_count(), 2);
    Task other = stored();
    target = std::move(other); // stored over stored
    EXPECT_FALSE(other);
    EXPECT_EQ(alive.use_count(), 2);
    EXPECT_EQ(target(1), 8);

    Task plain(twice);
    target = std::move(plain); // plain over stored
    EXPECT_EQ(alive.use_count(), 1);
    EXPECT_FALSE(plain);
    EXPECT_EQ(target(1), 2);

    target = stored(); // stored over plain
    EXPECT_EQ(target(1), 8);
    Task constructed(std::move(target));
    EXPECT_FALSE(target);
    EXPECT_EQ(constructed(1), 8);
    constructed = Task(); // empty over stored
    EXPECT_FALSE(constructed);
    EXPECT_EQ(alive.use_count(), 1);
}
} // namespace

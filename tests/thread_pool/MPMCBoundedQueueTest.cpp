// SPDX-License-Identifier: GPL-3.0-or-later
#include "thread_pool/MPMCBoundedQueue.h"
#include "thread_pool/FixedFunction.h"

#include <gtest/gtest.h>
#include <memory>

using tp::MPMCBoundedQueue;

namespace
{
TEST(MPMCBoundedQueueTest, FullQueueLeavesTheTaskWithTheCallerAndStaysInOrder)
{
    MPMCBoundedQueue<std::unique_ptr<int>> queue(2);
    for (int lap = 0; lap < 5; ++lap) {
        ASSERT_TRUE(queue.push(std::make_unique<int>(1)));
        ASSERT_TRUE(queue.push(std::make_unique<int>(2)));
        auto third = std::make_unique<int>(3);
        EXPECT_FALSE(queue.push(std::move(third)));
        ASSERT_TRUE(third);

        std::unique_ptr<int> taken;
        ASSERT_TRUE(queue.pop(taken));
        EXPECT_EQ(*taken, 1);
        ASSERT_TRUE(queue.push(std::move(third)));
        ASSERT_TRUE(queue.pop(taken) && queue.pop(taken));
        EXPECT_FALSE(queue.pop(taken));
        EXPECT_EQ(*taken, 3); // untouched
    }
}

/// A job that counts its objects, those that a move leaves behind among them.
class CountedJob
{
public:
    explicit CountedJob(int &objects) : m_objects(objects) { ++m_objects; }
    CountedJob(CountedJob &&other) : CountedJob(other.m_objects) { }
    ~CountedJob() { --m_objects; }
    void operator()() { }

private:
    int &m_objects;
};

// What stays would be destroyed a lap later, by code that may be unloaded by then.
TEST(MPMCBoundedQueueTest, ATakenTaskLeavesNothingInItsCell)
{
    int objects = 0;
    MPMCBoundedQueue<tp::FixedFunction<void()>> queue(2);
    ASSERT_TRUE(queue.push(CountedJob(objects)));
    tp::FixedFunction<void()> task;
    ASSERT_TRUE(queue.pop(task));
    EXPECT_EQ(objects, 1); // the one in task
}
} // namespace

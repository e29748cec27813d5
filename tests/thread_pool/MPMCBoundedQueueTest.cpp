// SPDX-License-Identifier: GPL-3.0-or-later
#include "thread_pool/MPMCBoundedQueue.h"
#include "thread_pool/FixedFunction.h"

#include <gtest/gtest.h>
#include <memory>

using tp::MPMCBoundedQueue;

namespace
{
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

// SPDX-License-Identifier: GPL-3.0-or-later
#include "thread_pool/MPMCBoundedQueue.h"
#include "thread_pool/FixedFunction.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

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
        for (const int expected : {2, 3}) {
            ASSERT_TRUE(queue.pop(taken));
            EXPECT_EQ(*taken, expected);
        }
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
    {
        tp::FixedFunction<void()> task;
        ASSERT_TRUE(queue.pop(task));
    }
    EXPECT_EQ(objects, 0);
}

TEST(MPMCBoundedQueueTest, ManyProducersAndConsumersPassEachTaskOnceAndInOrder)
{
    constexpr int kProducers = 3;
    constexpr int kConsumers = 2;
    constexpr int kEach = 20000;
    MPMCBoundedQueue<int> queue(64); // producer * kEach + number
    std::atomic<int> left = kProducers * kEach;
    std::array<std::atomic<int>, kProducers *kEach> seen = {};
    std::atomic<int> outOfOrder = 0;
    std::vector<std::thread> threads;
    for (int producer = 0; producer < kProducers; ++producer)
        threads.emplace_back([&queue, producer] {
            for (int item = producer * kEach; item < (producer + 1) * kEach; ++item)
                while (!queue.push(int(item)))
                    std::this_thread::yield();
        });
    for (int consumer = 0; consumer < kConsumers; ++consumer)
        threads.emplace_back([&] {
            std::array<int, kProducers> last;
            last.fill(-1);
            while (left > 0) {
                int item = 0;
                if (!queue.pop(item)) {
                    std::this_thread::yield();
                    continue;
                }
                --left;
                ++seen[std::size_t(item)];
                int &previous = last[std::size_t(item / kEach)];
                outOfOrder += item <= previous;
                previous = item;
            }
        });
    for (auto &thread : threads)
        thread.join();
    EXPECT_EQ(std::count(seen.begin(), seen.end(), 1), kProducers * kEach);
    EXPECT_EQ(outOfOrder, 0);
}
} // namespace

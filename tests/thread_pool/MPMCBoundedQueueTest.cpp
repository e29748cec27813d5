// SPDX-License-Identifier: GPL-3.0-or-later
#include "thread_pool/MPMCBoundedQueue.h"
#include "thread_pool/FixedFunction.h"

#include <array>
#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

using tp::MPMCBoundedQueue;

namespace
{
TEST(MPMCBoundedQueueTest, CapacityIsAPowerOfTwoAboveOne)
{
    for (const std::size_t refused : {0, 1, 3, 1000})
        EXPECT_THROW(MPMCBoundedQueue<int>{refused}, std::invalid_argument) << refused;
    for (const std::size_t taken : {2, 4, 1024})
        EXPECT_NO_THROW(MPMCBoundedQueue<int>{taken}) << taken;
}

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
    struct Item
    {
        int producer = 0;
        int number = 0;
    };
    MPMCBoundedQueue<Item> queue(64);
    std::atomic<int> left = kProducers * kEach;
    std::array<std::array<std::atomic<int>, kEach>, kProducers> seen = {};
    std::atomic<int> outOfOrder = 0;
    std::vector<std::thread> threads;
    for (int producer = 0; producer < kProducers; ++producer)
        threads.emplace_back([&queue, producer] {
            for (int number = 0; number < kEach; ++number)
                while (!queue.push(Item{producer, number}))
                    std::this_thread::yield();
        });
    for (int consumer = 0; consumer < kConsumers; ++consumer)
        threads.emplace_back([&] {
            std::array<int, kProducers> last;
            last.fill(-1);
            while (left > 0) {
                Item item;
                if (!queue.pop(item)) {
                    std::this_thread::yield();
                    continue;
                }
                --left;
                int &previous = last[std::size_t(item.producer)];
                outOfOrder += item.number <= previous;
                previous = item.number;
                ++seen[std::size_t(item.producer)][std::size_t(item.number)];
            }
        });
    for (auto &thread : threads)
        thread.join();
    int wrong = 0;
    for (const auto &producer : seen)
        for (const auto &times : producer)
            wrong += times != 1;
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(outOfOrder, 0);
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/containers/CircularBuffer.h"
#include "vm_library/source/containers/RingBuffer.h"
#include "vm_library/source/containers/SpectrumRingBuffer.h"
#include "vm_library/source/containers/ring_buffer.h"

#include <deque>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <thread>

// What all rings promise, whatever their lock, index arithmetic and interface.
namespace
{
struct VmRing
{
    static constexpr unsigned kCapacity = 100; // no power of two: the wrap is a modulo
    VmRing() { ring.resize(kCapacity); }
    bool write(std::vector<int> block) { return ring.write(block); }
    bool read(std::vector<int> &block) { return ring.read(block); }
    void clear() { ring.clear(); }
    std::size_t stored() { return ring.size(); }
    std::size_t free() { return ring.free_space(); }
    vm::containers::ring_buffer<int, vm::thread::spinlock> ring;
};

template <typename Ring>
struct MaskedRing
{
    static constexpr unsigned kCapacity = 128;
    MaskedRing() requires std::is_constructible_v<Ring, unsigned> : ring(kCapacity) { }
    MaskedRing() { ring.resize(65); } // rounded up
    bool write(const std::vector<int> &block)
    {
        return ring.write(block.data(), int(block.size()));
    }
    bool read(std::vector<int> &block) { return ring.read(block.data(), int(block.size())); }
    void clear() { ring.clear(); }
    std::size_t stored() { return ring.count(); }
    std::size_t free() { return ring.freeCount(); }
    Ring ring;
};

template <typename Ring>
class RingTest : public testing::Test
{
protected:
    std::vector<int> next(std::size_t count)
    {
        std::vector<int> block(count);
        std::iota(block.begin(), block.end(), sent);
        sent += int(count);
        return block;
    }

    Ring ring;
    int sent = 0;
};

using Rings = testing::Types<VmRing, MaskedRing<CircularBuffer<int>>,
    MaskedRing<Velmora::RingBuffer<int>>, MaskedRing<Velmora::SpectrumRingBuffer<int>>>;
TYPED_TEST_SUITE(RingTest, Rings);

TYPED_TEST(RingTest, BehavesAsAQueueOfLimitedLengthWhereverTheIndicesStand)
{
    std::mt19937 random(5);
    std::deque<int> model;
    // Up to half of the ring, or what is just possible, or one more than that.
    const auto length = [&](std::size_t possible) {
        const std::size_t kind = random() % 4;
        return kind < 2 ? random() % (TypeParam::kCapacity / 2) : possible + kind % 2;
    };
    for (int round = 0; round < 2000; ++round) {
        const auto block = this->next(length(TypeParam::kCapacity - model.size()));
        const bool fits = !block.empty() && model.size() + block.size() <= TypeParam::kCapacity;
        ASSERT_EQ(this->ring.write(block), fits);
        if (fits)
            model.insert(model.end(), block.begin(), block.end());

        std::vector<int> taken(length(model.size()), -1);
        const bool there = !taken.empty() && taken.size() <= model.size();
        ASSERT_EQ(this->ring.read(taken), there);
        if (!there)
            ASSERT_EQ(taken, std::vector<int>(taken.size(), -1));
        else {
            ASSERT_TRUE(std::equal(taken.begin(), taken.end(), model.begin()));
            model.erase(model.begin(), model.begin() + long(taken.size()));
        }
        ASSERT_EQ(this->ring.stored(), model.size());
        ASSERT_EQ(this->ring.free(), TypeParam::kCapacity - model.size());
        if (round % 100 == 99) {
            this->ring.clear();
            model.clear();
        }
    }
}

TEST(RingInPlaceTest, BehavesAsAQueueAndWhatWasTakenStands)
{
    constexpr std::size_t kCapacity = 100;
    constexpr std::size_t kRun = 30;
    vm::containers::ring_buffer<int, vm::thread::spinlock> ring;
    ring.resize(kCapacity, kRun);
    std::mt19937 random(6);
    std::deque<int> model;
    int sent = 0;
    for (int round = 0; round < 20000; ++round) {
        // Phases in which the ring runs full, and phases in which it runs empty.
        const bool fills = round / 500 % 2 == 0;
        std::vector<int> taken(random() % (fills ? 12 : kRun + 1));
        int *const block = ring.take(taken.size());
        ASSERT_EQ(block != nullptr, !taken.empty() && taken.size() <= model.size());
        if (block != nullptr) {
            std::copy_n(model.begin(), taken.size(), taken.begin());
            model.erase(model.begin(), model.begin() + long(taken.size()));
        }
        for (int writes = int(random() % 3); writes > 0; --writes) {
            const std::size_t count = random() % (fills ? kRun + 1 : 20);
            int *const room = ring.room(count);
            ASSERT_EQ(room != nullptr, count > 0 && model.size() + count <= kCapacity);
            if (room == nullptr)
                continue;
            std::iota(room, room + count, sent);
            ASSERT_EQ(ring.size(), model.size()); // not before the commit
            ring.commit();
            for (std::size_t i = 0; i < count; ++i)
                model.push_back(sent++);
        }
        ASSERT_TRUE(block == nullptr || std::equal(taken.begin(), taken.end(), block));
        ASSERT_EQ(ring.size(), model.size());
        ASSERT_EQ(ring.free_space(), kCapacity - model.size());
    }
    EXPECT_EQ(ring.room(kRun + 1), nullptr);
    EXPECT_EQ(ring.take(kRun + 1), nullptr);
    ring.clear();
    int *const room = ring.room(kRun);
    ring.clear();
    ring.commit(); // of a room that is gone
    EXPECT_EQ(ring.size(), 0u);
    EXPECT_EQ(ring.room(kRun), room) << "begins anew";
}

// As long as the reader keeps up the ring stays where it is in the cache.
TEST(RingInPlaceTest, StaysAtItsStartWhileLittleIsStored)
{
    vm::containers::ring_buffer<int, vm::thread::spinlock> ring;
    ring.resize(131072, 5376);
    const int *const start = ring.room(5292);
    for (int window = 0; window < 100; ++window) {
        const int *const room = ring.room(5292);
        ASSERT_LT(room - start, 512);
        ring.commit();
        while (ring.take(512) != nullptr) { }
    }
}

TYPED_TEST(RingTest, OneWriterAndOneReaderKeepTheSequence)
{
    constexpr int kElements = 200000;
    std::thread writer([this] {
        for (int length = 1; this->sent < kElements; length = length % 37 + 1) {
            const auto block = this->next(std::size_t(std::min(length, kElements - this->sent)));
            while (!this->ring.write(block))
                std::this_thread::yield();
        }
    });
    int received = 0;
    int wrong = 0;
    for (int length = 1; received < kElements; length = length % 41 + 1) {
        std::vector<int> block(std::size_t(std::min(length, kElements - received)));
        while (!this->ring.read(block))
            std::this_thread::yield();
        for (const int element : block)
            wrong += element != received++;
    }
    writer.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(this->ring.free(), TypeParam::kCapacity);
}
} // namespace

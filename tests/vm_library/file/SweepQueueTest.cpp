// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/file/SweepQueue.h"

#include <gtest/gtest.h>

namespace
{
using Ring = Velmora::RingBuffer<unsigned char>;
using Bytes = std::vector<unsigned char>;

constexpr unsigned int kRing = 65536;

/// Bytes that tell the number of the sweep, which has a length of its own as well.
Bytes sweep(unsigned int number)
{
    Bytes bytes(kRing / 2 + number * 3072 % (kRing / 2));
    for (std::size_t at = 0; at < bytes.size(); ++at)
        bytes[at] = (unsigned char)(number + (number >> 8) * at + at * at);
    return bytes;
}

class SweepQueueTest : public testing::Test
{
protected:
    SweepQueueTest()
    {
        m_ring.resize(kRing);
        queue.open();
    }

    /// Adds sweeps from that number on until there is no room. Returns the number that had none.
    unsigned int fill(unsigned int number)
    {
        for (;; ++number) {
            const Bytes bytes = sweep(number);
            m_ring.clear();
            m_ring.write(bytes.data(), (unsigned int)(bytes.size()));
            if (!queue.add(m_ring)) {
                EXPECT_EQ(m_ring.count(), bytes.size()); // which stays where it is
                return number;
            }
            EXPECT_EQ(m_ring.count(), 0u);
        }
    }

    void expectOldest(unsigned int number)
    {
        const Bytes expected = sweep(number);
        ASSERT_EQ(queue.oldest(), expected.size()) << number;
        Bytes found(expected.size());
        queue.copy(found.data(), queue.oldest());
        queue.drop();
        ASSERT_TRUE(found == expected) << number;
    }

    vm::file::SweepQueue queue;

private:
    Ring m_ring;
};

// The second filling begins in the middle of the memory and goes round its end.
TEST_F(SweepQueueTest, SweepsComeOutWholeAndInOrderRoundTheEnd)
{
    const unsigned int full = fill(0);
    EXPECT_GT(std::size_t(full) * kRing, vm::file::SweepQueue::kBytes);
    for (unsigned int number = 0; number < full / 2; ++number)
        ASSERT_NO_FATAL_FAILURE(expectOldest(number));
    const unsigned int refilled = fill(full);
    EXPECT_GT(refilled, full + full / 3);
    for (unsigned int number = full / 2; number < refilled; ++number)
        ASSERT_NO_FATAL_FAILURE(expectOldest(number));
    EXPECT_EQ(queue.oldest(), 0u);
}
} // namespace

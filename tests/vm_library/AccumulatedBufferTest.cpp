// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/containers/AccumulatedBuffer.h"

#include <gtest/gtest.h>
#include <numeric>
#include <vector>

namespace
{
std::vector<int> counting(int from, int count)
{
    std::vector<int> block(static_cast<std::size_t>(count));
    std::iota(block.begin(), block.end(), from);
    return block;
}

std::vector<int> window(AccumulatedBuffer<int> &buffer)
{
    std::vector<int> all(static_cast<std::size_t>(buffer.size()));
    buffer.read(all.data(), int(all.size()));
    return all;
}

TEST(AccumulatedBufferTest, WindowHoldsTheNewestElementsOldestFirstHoweverTheStreamIsCut)
{
    AccumulatedBuffer<int> buffer;
    buffer.resize(64);
    int sent = 0;
    for (const int length : {64, 1, 63, 10, 64, 65, 5, 200, 127, 128, 3}) {
        buffer.append(counting(sent, length).data(), length);
        sent += length;
        EXPECT_EQ(window(buffer), counting(sent - 64, 64)) << "after a block of " << length;
    }
}

TEST(AccumulatedBufferTest, FullOnceABlockEndsWhereTheLastReadLeftOff)
{
    AccumulatedBuffer<int> buffer;
    buffer.resize(64);
    buffer.append(counting(0, 63).data(), 63);
    buffer.append(counting(63, 2).data(), 2); // passes the mark and does not end on it
    EXPECT_FALSE(buffer.full());
    buffer.append(counting(65, 63).data(), 63);
    EXPECT_TRUE(buffer.full());
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/containers/AccumulatedBuffer.h"

#include <gtest/gtest.h>
#include <numeric>
#include <thread>

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
    std::vector<int> part(10);
    buffer.read(part.data(), 10);
    EXPECT_EQ(part, counting(sent - 64, 10));
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

TEST(AccumulatedBufferTest, SizeIsAPowerOfTwoFrom64AndClearAndANewSizeStartAtTheFirstElement)
{
    AccumulatedBuffer<int> buffer;
    for (const auto &[asked, got] : {std::pair(65, 128), {10, 64}}) {
        buffer.resize(asked);
        EXPECT_EQ(buffer.size(), got);
    }
    buffer.append(counting(0, 64 + 5).data(), 64 + 5);
    buffer.resize(64); // no change
    EXPECT_EQ(window(buffer).front(), 5);
    buffer.clear();
    EXPECT_EQ(window(buffer).front(), 64); // the first cell of the storage, written last by 64
    buffer.append(counting(0, 1).data(), 1);
    buffer.resize(128);
    EXPECT_EQ(window(buffer).front(), 0);
}

TEST(AccumulatedBufferTest, ReaderSeesWholeBlocksWhileAWriterRuns)
{
    constexpr int kBlock = 32; // divides the size: a window seen between two appends starts a block
    AccumulatedBuffer<int> buffer;
    buffer.resize(256);
    buffer.append(counting(0, 256).data(), 256);
    std::thread writer([&] {
        for (int n = 256; n < 256 + 5000 * kBlock; n += kBlock)
            buffer.append(counting(n, kBlock).data(), kBlock);
    });
    int broken = 0;
    for (int i = 0; i < 2000; ++i) {
        const auto seen = window(buffer);
        broken += seen.front() % kBlock != 0 || seen != counting(seen.front(), 256);
    }
    writer.join();
    EXPECT_EQ(broken, 0);
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/containers/CircularBuffer.h"

#include <array>
#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace
{
class CircularBufferGateTest : public testing::Test
{
protected:
    void write(int n) { ASSERT_TRUE(ring.write(block.data(), n)); }
    void read(int n) { ASSERT_TRUE(ring.read(block.data(), n)); }
    // Under-fill and gate as the last operation left them.
    std::pair<bool, bool> state() const { return {ring.underFill(), ring.gateEnabled()}; }

    static constexpr std::pair kFilling{true, true};
    static constexpr std::pair kFilled{false, true};
    static constexpr std::pair kOff{false, false};

    CircularBuffer<int> ring{64};
    std::array<int, 64> block = {};
};

TEST_F(CircularBufferGateTest, GateHasAHysteresisOfTwoThresholdsBothCountingAsNotReached)
{
    ring.armGate();
    ring.setThresholds(8, 2);
    write(8);
    EXPECT_EQ(state(), kFilling);
    write(1);
    EXPECT_EQ(state(), kFilled);
    read(6);
    EXPECT_EQ(state(), kFilled);
    read(1);
    EXPECT_EQ(state(), kFilling);
    write(6);
    EXPECT_EQ(state(), kFilling);
    write(1);
    EXPECT_EQ(state(), kFilled);
}

TEST_F(CircularBufferGateTest, OneShotGateSwitchesOffAtTheFirstWriteAboveTheHighThreshold)
{
    ring.armGate();
    ring.setThresholds(8, 0);
    ring.setOneShot();
    write(8);
    EXPECT_EQ(state(), kFilling);
    write(1);
    EXPECT_EQ(state(), kOff);
    read(9);
    EXPECT_EQ(state(), kOff);
}

// A clear() from a third thread may come between the look of a read at the count and its lock.
TEST(CircularBufferTest, AClearAmidWritesAndReadsDoesNotBreakTheCounts)
{
    constexpr int kRounds = 5000;
    CircularBuffer<int> ring(64);
    std::array<int, 16> block = {};
    std::array<int, 16> target = {};
    std::atomic<bool> end = false;
    std::thread writer([&] {
        while (!end)
            ring.write(block.data(), 16);
    });
    std::thread clearer([&] {
        while (!end)
            ring.clear();
    });
    int broken = 0;
    for (int round = 0; round < kRounds; ++round) {
        ring.read(target.data(), 16);
        broken += ring.count() > ring.capacity() || ring.freeCount() > ring.capacity();
    }
    end = true;
    writer.join();
    clearer.join();
    EXPECT_EQ(broken, 0);
    EXPECT_EQ(ring.count() + ring.freeCount(), ring.capacity());
}
} // namespace

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

TEST_F(CircularBufferGateTest, FreshRingIsUnderFilledAndItsClosedGateIgnoresTraffic)
{
    EXPECT_EQ(state(), std::pair(true, false));
    ring.setThresholds(8, 2);
    write(32);
    read(32);
    EXPECT_EQ(state(), std::pair(true, false));
}

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

TEST_F(CircularBufferGateTest, ArmingAndNewThresholdsJudgeThePresentFill)
{
    write(10);
    ring.setThresholds(20, 0);
    EXPECT_EQ(state(), std::pair(true, false)); // a closed gate only stores them
    ring.armGate();
    EXPECT_EQ(state(), kFilling);
    ring.setThresholds(9, 0);
    EXPECT_EQ(state(), kFilled);
    ring.setThresholds(10, 0);
    EXPECT_EQ(state(), kFilling);
    ring.setThresholds(9, 0);
    ring.clear();
    EXPECT_EQ(state(), kFilling);
}

TEST_F(CircularBufferGateTest, OneShotGateSwitchesOffAtTheFirstWriteAboveTheHighThreshold)
{
    ring.armGate();
    ring.setThresholds(8, 0);
    ring.setOneShot();
    write(8);
    read(8);
    write(8);
    EXPECT_EQ(state(), kFilling);
    write(1);
    EXPECT_EQ(state(), kOff);
    read(9);
    EXPECT_EQ(state(), kOff);
}

TEST(CircularBufferTest, NegativeCountsAreRefused)
{
    CircularBuffer<int> ring(4);
    int element = 7;
    EXPECT_FALSE(ring.write(&element, -1));
    EXPECT_FALSE(ring.read(&element, -1));
    EXPECT_EQ(ring.count(), 0u);
}

TEST(CircularBufferTest, ClearFromAThirdThreadNeverBreaksBlocksOrCounts)
{
    constexpr int kBlocks = 20000;
    constexpr int kLength = 16;
    CircularBuffer<int> ring(64);
    std::atomic<bool> done = false;
    std::thread clearer([&] {
        while (!done) {
            ring.clear();
            std::this_thread::yield();
        }
    });
    std::thread writer([&] {
        std::array<int, kLength> block;
        for (int n = 0; n < kBlocks; ++n) {
            for (int i = 0; i < kLength; ++i)
                block[std::size_t(i)] = n * kLength + i;
            if (!ring.write(block.data(), kLength))
                std::this_thread::yield();
        }
        done = true;
    });
    int broken = 0;
    std::array<int, kLength> block;
    while (!done) {
        if (!ring.read(block.data(), kLength))
            std::this_thread::yield();
        else
            broken += block.back() - block.front() != kLength - 1;
    }
    writer.join();
    clearer.join();
    EXPECT_EQ(broken, 0);
    EXPECT_EQ(ring.count() + ring.freeCount(), ring.capacity());
    EXPECT_LE(ring.count(), ring.capacity());
}
} // namespace

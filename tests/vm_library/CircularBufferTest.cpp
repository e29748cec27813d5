// SPDX-License-Identifier: GPL-3.0-or-later
#include "vm_library/source/containers/CircularBuffer.h"

#include <array>
#include <atomic>
#include <chrono>
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

TEST_F(CircularBufferGateTest, ArmingAndNewThresholdsJudgeThePresentFill)
{
    write(10);
    ring.setThresholds(20, 0);
    EXPECT_EQ(state(), std::pair(true, false)); // a fresh ring; its closed gate only stores them
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

// An element whose copy can be held up, and with it the ring's lock.
struct HeldElement
{
    HeldElement &operator=(const HeldElement &)
    {
        while (hold)
            std::this_thread::yield();
        return *this;
    }
    HeldElement() = default;
    HeldElement(const HeldElement &) = default;
    static inline std::atomic<bool> hold = false;
};

TEST(CircularBufferTest, ClearThatOvertakesAWaitingReadDoesNotBreakTheCounts)
{
    constexpr int kRounds = 30; // each time clear or read comes first, by chance
    CircularBuffer<HeldElement> ring(64);
    std::array<HeldElement, 16> block;
    std::array<HeldElement, 16> target;
    for (int round = 0; round < kRounds; ++round) {
        HeldElement::hold = true;
        std::thread writer([&] { ring.write(block.data(), 16); });
        while (ring.count() == 0) // the writer now holds the lock
            std::this_thread::yield();
        std::thread reader([&] { ring.read(target.data(), 16); });
        std::thread clearer([&] { ring.clear(); });
        std::this_thread::sleep_for(std::chrono::milliseconds(2)); // both have come to the lock
        HeldElement::hold = false;
        for (std::thread *thread : {&writer, &reader, &clearer})
            thread->join();
        ASSERT_EQ(ring.count(), 0u) << "after round " << round;
        ASSERT_EQ(ring.freeCount(), ring.capacity());
    }
}
} // namespace

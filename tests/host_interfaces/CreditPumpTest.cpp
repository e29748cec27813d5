// SPDX-License-Identifier: GPL-3.0-or-later
#include "host_interfaces/CreditPump.h"

#include <gtest/gtest.h>
#include <thread>

namespace
{
using namespace std::chrono_literals;

constexpr auto kPastStandstill = 5ms; // the pump looks after 3 ms

class CreditPumpTest : public testing::Test
{
protected:
    std::uint64_t m_sent = 0; // at once what is granted
    double m_share = 0.0;     // that was asked for last
    bool m_hasRoom = true;
    CreditPump m_pump{3.072e6,
        {[this](std::uint64_t samples) { m_sent += samples; }, [this] { return m_sent; }},
        [this](std::uint64_t, double share) {
            m_share = share;
            return m_hasRoom;
        }};
};

TEST_F(CreditPumpTest, FillsHalfOfTheRingByItselfAndTheRestByNudges)
{
    while (m_pump.grant(0)) { }
    EXPECT_LE(m_sent, EngineLimits::kInputRing / 2);
    EXPECT_GT(m_sent + m_pump.nextRead(), EngineLimits::kInputRing / 2);
    const std::uint64_t half = m_sent;
    std::this_thread::sleep_for(kPastStandstill);
    m_pump.nudge(0, false);
    EXPECT_EQ(m_sent, half + m_pump.nextRead());
    EXPECT_EQ(m_share, 1.0);
    while (m_sent + m_pump.nextRead() <= EngineLimits::kInputRing) {
        std::this_thread::sleep_for(kPastStandstill);
        m_pump.nudge(0, false);
    }
    std::this_thread::sleep_for(kPastStandstill);
    m_pump.nudge(0, false);
    EXPECT_LE(m_sent, EngineLimits::kInputRing);
}

TEST_F(CreditPumpTest, NudgesOnlyAnEngineThatHasSomethingOrIsShort)
{
    m_pump.grant(0);
    const std::uint64_t before = m_sent;
    const auto nudgeAt = [this](std::uint64_t processed, bool isShort) {
        m_pump.note(processed);
        std::this_thread::sleep_for(kPastStandstill);
        m_pump.nudge(processed, isShort);
    };
    nudgeAt(before - CreditPump::kLargestRest, false); // has done what it can
    EXPECT_EQ(m_sent, before);
    m_hasRoom = false;
    nudgeAt(1, true);
    EXPECT_EQ(m_sent, before);
    m_hasRoom = true;
    nudgeAt(before - CreditPump::kLargestRest, true);
    EXPECT_GT(m_sent, before);
    const std::uint64_t after = m_sent;
    m_sent = 0; // has not arrived yet
    nudgeAt(2, true);
    EXPECT_EQ(m_sent, 0u) << after;
}

TEST_F(CreditPumpTest, WhatNeverComesOutDoesNotBlockTheCredit)
{
    while (m_pump.grant(0)) { }
    std::this_thread::sleep_for(2100ms);
    m_pump.nudge(0, false);
    EXPECT_TRUE(m_pump.grant(0));
}
} // namespace

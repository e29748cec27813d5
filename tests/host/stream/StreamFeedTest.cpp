// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/StreamFeed.h"

#include <gtest/gtest.h>
#include <thread>

namespace
{
constexpr int kRateHz = 192000;
constexpr std::uint64_t kRead = 7 * 84; // samples of a read at this rate
constexpr int kBlock = 512;

/// A receiver that sends at once what it is granted.
struct
{
    std::uint64_t granted = 0;
} g_receiver;

host::ReceiverControls controls()
{
    host::ReceiverControls controls;
    controls.setPace = [](vr_pace) {};
    controls.addCredit = [](std::uint64_t samples) { g_receiver.granted += samples; };
    controls.getStatus = [](vr_status *status) { status->samples_sent = g_receiver.granted; };
    return controls;
}

class StreamFeedTest : public testing::Test
{
protected:
    StreamFeedTest()
    {
        g_receiver = {};
        m_settings.deviceRateHz = kRateHz;
        m_settings.freeRun = true;
        m_settings.seconds = 0.5;
        m_feed.emplace(m_settings, 0.0, &m_controls, m_ledger);
        m_feed->prepare();
    }

    /// The engine works off what it has, but for a frame and for what got lost before it.
    void runEngine(std::uint64_t lost)
    {
        while (m_ledger.processedSamples() + kBlock + 84 + lost <= g_receiver.granted) {
            m_ledger.beginBlock(m_iq.data(), kBlock);
            m_ledger.addAudio(kBlock / 4);
            m_ledger.endBlock();
            m_ledger.addPulled(kBlock / 4);
        }
    }

    void runToGoal(std::uint64_t lost)
    {
        while (!m_feed->isFinished()) {
            m_feed->advance();
            EXPECT_LE(g_receiver.granted - m_ledger.processedSamples(), EngineLimits::kInputRing);
            runEngine(lost);
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
        m_feed->halt();
    }

    host::HostSettings m_settings;
    host::ReceiverControls m_controls = controls();
    host::StreamLedger m_ledger;
    std::optional<host::StreamFeed> m_feed;
    std::vector<COMPLEX> m_iq = std::vector<COMPLEX>(kBlock);
};

TEST_F(StreamFeedTest, WhatIsGrantedAfterTheGoalIsNoLoss)
{
    runToGoal(0);
    EXPECT_FALSE(m_feed->isDraining());
    g_receiver.granted += 50 * kRead; // on its way to an engine that gets no time
    m_feed->halt();
    EXPECT_EQ(m_feed->droppedSamples(), 0u);
    EXPECT_EQ(m_feed->droppedBlocks(), 0u);
}

TEST_F(StreamFeedTest, WhatGotLostBeforeTheGoalIsCounted)
{
    constexpr std::uint64_t kLost = 40;
    runToGoal(kLost * kRead);
    while (m_feed->isDraining())
        runEngine(kLost * kRead);
    EXPECT_NEAR(double(m_feed->droppedBlocks()), double(kLost), 1.0); // of a part of a read
    EXPECT_GE(m_ledger.processedSamples(), m_feed->goal());
}

TEST_F(StreamFeedTest, ARunByTheClockIsNotOverWhileItsReceiverIsSilent)
{
    m_settings.freeRun = false;
    m_settings.seconds = 0.05;
    host::StreamFeed feed(m_settings, 0.0, nullptr, m_ledger);
    feed.prepare();
    for (int i = 0; i < 4; ++i) { // twice the planned time
        EXPECT_FALSE(feed.isFinished());
        std::this_thread::sleep_for(std::chrono::milliseconds(25));
    }
    m_ledger.beginBlock(m_iq.data(), kBlock);
    m_ledger.endBlock();
    EXPECT_TRUE(feed.isFinished());
    EXPECT_FALSE(feed.isSilent());
}
} // namespace

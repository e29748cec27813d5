// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/StreamLedger.h"

#include "support/Signals.h"

#include <cmath>
#include <gtest/gtest.h>

namespace
{
constexpr int kBlock = 512;

void runBlock(host::StreamLedger &ledger, const std::vector<COMPLEX> &iq, int frames)
{
    ledger.beginBlock(iq.data(), int(iq.size()));
    ledger.addAudio(std::uint64_t(frames));
    ledger.endBlock();
}

TEST(StreamLedgerTest, AudioIsReadyWhenItsBlockIsFinished)
{
    host::StreamLedger ledger;
    const auto iq = test::tone(kBlock, 0.1);
    runBlock(ledger, iq, 128);
    ledger.beginBlock(iq.data(), kBlock);
    ledger.addAudio(128);
    EXPECT_EQ(ledger.readyFrames(), 128u);
    EXPECT_EQ(ledger.waitingFrames(), 256u);
    EXPECT_EQ(ledger.processedSamples(), 512u);
    ledger.endBlock();
    ledger.addPulled(100);
    EXPECT_EQ(ledger.readyFrames(), 156u);
    EXPECT_EQ(ledger.processedSamples(), 1024u);
}

TEST(StreamLedgerTest, ABlockThatTheFullRingRefusesIsCountedAsLost)
{
    host::StreamLedger ledger;
    const auto iq = test::tone(kBlock, 0.1);
    for (int i = 0; i < 32; ++i)
        runBlock(ledger, iq, 512); // 16384 frames fill the ring to the last
    EXPECT_EQ(ledger.readyFrames(), 16384u);
    EXPECT_EQ(ledger.lostFrames(), 0u);
    runBlock(ledger, iq, 1);
    EXPECT_EQ(ledger.lostFrames(), 1u);
    ledger.addPulled(1);
    runBlock(ledger, iq, 1);
    EXPECT_EQ(ledger.readyFrames(), 16384u);
    EXPECT_EQ(ledger.lostFrames(), 1u);
}

TEST(StreamLedgerTest, WhatFollowsTheGoalIsNeitherWantedNorMetered)
{
    host::StreamLedger ledger;
    ledger.setGoal(2 * kBlock);
    const auto iq = test::tone(kBlock, 1.0 / 16, 0.1);
    runBlock(ledger, iq, 100);
    EXPECT_FALSE(ledger.isGoalReached());
    EXPECT_GT(ledger.wantedFrames(), 1u << 30);
    runBlock(ledger, iq, 101);
    ASSERT_TRUE(ledger.isGoalReached());
    const double level = ledger.inputLevel().rmsDb();
    runBlock(ledger, test::tone(kBlock, 0.1, 1.0), 102);
    EXPECT_EQ(ledger.wantedFrames(), 201u);
    EXPECT_EQ(ledger.finishedFrames(), 303u);
    EXPECT_EQ(ledger.inputLevel().rmsDb(), level);
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/OutletFill.h"

#include "support/Signals.h"

#include <gtest/gtest.h>

namespace
{
constexpr int kBlock = 512;

class OutletFillTest : public testing::Test
{
protected:
    void make(int blocks)
    {
        for (int i = 0; i < blocks; ++i) {
            m_ledger.beginBlock(m_iq.data(), kBlock);
            m_ledger.addAudio(kBlock);
            m_ledger.endBlock();
            m_ledger.addPulled(kBlock); // the sound card keeps up
        }
    }

    std::vector<COMPLEX> m_iq = test::noise(kBlock, 1);
    host::StreamLedger m_ledger;
};

TEST_F(OutletFillTest, FramesComeInWholeChunksAtTheOutletsRate)
{
    host::OutletFill cable(m_ledger, 12000);
    make(3); // 1536 frames, less than a chunk
    EXPECT_EQ(cable.readyFrames(), 0u);
    make(1);
    EXPECT_EQ(cable.readyFrames(), 512u);
    cable.addPulled(500);
    EXPECT_EQ(cable.readyFrames(), 12u);
    make(4);
    EXPECT_EQ(cable.readyFrames(), 524u);
}

TEST_F(OutletFillTest, NothingIsReadyPastTheGoal)
{
    m_ledger.setGoal(5 * kBlock);
    host::OutletFill lineOut(m_ledger, 48000);
    make(12);
    EXPECT_EQ(lineOut.readyFrames(), 2048u); // of three chunks made, one before the goal
}
} // namespace

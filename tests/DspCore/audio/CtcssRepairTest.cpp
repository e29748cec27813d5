// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/audio/CtcssTones.h"
#include "DspCore/audio/SqlCtcss.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <numbers>
#include <set>

namespace
{
using DspCore::SqlCtcss;

constexpr double kRate = 48000.0;
constexpr double kStrong = -60.0; // dBm
constexpr int kTones = int(Velmora::CTCSS.size());

// Audio samples of a block at 48 kHz, 192 kHz, 768 kHz, 2.56 MHz (9 and 10 in turn) and 3.072 MHz.
constexpr int kBlocks[] = {512, 128, 32, 9, 8};

class Squelch
{
public:
    Squelch(bool exact, int tone, int block) : m_block(std::size_t(block))
    {
        m_squelch.setExact(exact);
        m_squelch.setTone(tone); // after the start, as a host does
        m_squelch.setThreshold(-100.0);
        m_squelch.setEnable(true);
    }

    SqlCtcss *operator->() { return &m_squelch; }

    /// Whether it is open at the end of so much of a sub-audible tone under a loud audible one.
    bool isOpenAfter(double seconds, double subToneHz, double amplitude = 0.1)
    {
        const auto end = m_at + (long long)(seconds * kRate);
        while (m_at < end) {
            for (COMPLEX &sample : m_block) {
                const double t = 2.0 * std::numbers::pi * double(m_at++) / kRate;
                const double value =
                    amplitude * (std::sin(subToneHz * t) + 4.0 * std::sin(1000.0 * t));
                sample = {value, value};
            }
            m_squelch.process(m_block.data(), int(m_block.size()), kStrong);
        }
        return test::rms(m_block) > 1e-6;
    }

private:
    SqlCtcss m_squelch;
    std::vector<COMPLEX> m_block;
    long long m_at = 0;
};

std::set<int> openingTones(bool exact, int block)
{
    std::set<int> tones;
    for (int tone = 0; tone < kTones; ++tone)
        if (Squelch(exact, tone, block).isOpenAfter(1.2, Velmora::CTCSS[std::size_t(tone)]))
            tones.insert(tone);
    return tones;
}

TEST(CtcssRepairTest, EveryToneOpensAtEveryRate)
{
    for (const int block : kBlocks) {
        const auto asEver = openingTones(false, block);
        if (block < 512) {
            EXPECT_EQ(asEver.count(kTones - 1), 0u) << "254.1 Hz in blocks of " << block;
        }
        if (block <= 32) {
            EXPECT_TRUE(asEver.empty()) << block << ": " << asEver.size();
        }
        EXPECT_EQ(openingTones(true, block).size(), std::size_t(kTones)) << block;
    }
}

TEST(CtcssRepairTest, ItOpensAndClosesByTime)
{
    for (const int block : kBlocks) {
        Squelch squelch(true, 12, block); // 100 Hz
        EXPECT_FALSE(squelch.isOpenAfter(1.0, 112.0)) << block;
        EXPECT_TRUE(squelch.isOpenAfter(0.5, 100.0)) << block;
        EXPECT_TRUE(squelch.isOpenAfter(1.0, 100.0)) << block;
        EXPECT_TRUE(squelch.isOpenAfter(0.1, 112.0)) << block;
        EXPECT_FALSE(squelch.isOpenAfter(0.6, 112.0)) << block;
        EXPECT_TRUE(squelch.isOpenAfter(0.6, 100.0)) << block;
        squelch->setTone(30);
        EXPECT_FALSE(squelch.isOpenAfter(0.1, 100.0)) << block;
        EXPECT_TRUE(squelch.isOpenAfter(0.8, Velmora::CTCSS[30])) << block;
        squelch.isOpenAfter(0.5, 0.0, 0.0); // nothing swings
        EXPECT_FALSE(squelch.isOpenAfter(0.02, Velmora::CTCSS[30])) << block;
    }
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/receiver/ModulationSwitcher.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using DspCore::Modulation;
using DspCore::ModulationSwitcher;

namespace
{
constexpr double kRoundOff = 1e-12; // thousands of products against one power
constexpr double kPole = 0.9982947888607377;
constexpr double kSilence = 3.162277660168379e-07; // -130 dB
constexpr int kBlock = 128;

/// A fade that starts at `from`: its gain after n samples.
double faded(double from, double to, int n)
{
    return to + (from - to) * std::pow(kPole, n);
}

/// Samples a fade needs until it is within 1e-5 of its target, rounded up to whole blocks.
int blocksToArrive(double from, double to)
{
    const double samples = std::log(1e-5 * to / std::abs(from - to)) / std::log(kPole);
    return int(std::ceil(samples / kBlock));
}

/// Feeds ones, so that the output is the gain itself.
class Fade
{
public:
    /// Gain of the block's last sample; both channels and both parts must agree.
    double step()
    {
        std::vector<COMPLEX> a(kBlock, {1.0, 1.0});
        std::vector<COMPLEX> b = a;
        switcher.process(a.data(), b.data(), kBlock);
        EXPECT_EQ(a, b);
        EXPECT_EQ(a.back().re, a.back().im);
        return a.back().re;
    }

    /// Runs blocks until one asks for the clear; returns how many.
    int runToClear()
    {
        for (int blocks = 1; blocks < 1000; ++blocks) {
            step();
            if (switcher.takeClear())
                return blocks;
        }
        return -1;
    }

    ModulationSwitcher switcher;
};

TEST(ModulationSwitcherTest, FadesOutSwitchesAndFadesIn)
{
    Fade fade;
    fade.switcher.setModulation(Modulation::AM); // the mode at construction
    EXPECT_EQ(fade.step(), 1.0);
    EXPECT_FALSE(fade.switcher.takeClear());
    fade.switcher.setAgcParam(); // brings the gain from its first value, 0, near 1
    ASSERT_EQ(fade.runToClear(), blocksToArrive(0.0, kSilence));
    const int fadeIn = blocksToArrive(kSilence, 1.0);
    double start = 0.0;
    for (int i = 0; i < fadeIn; ++i)
        start = fade.step();
    EXPECT_NEAR(start, faded(kSilence, 1.0, fadeIn * kBlock), kRoundOff);
    EXPECT_EQ(fade.step(), 1.0); // arrived: the step gives up its last 1e-5

    fade.switcher.setModulation(Modulation::USB);
    for (int i = 1; i <= 20; ++i)
        EXPECT_NEAR(fade.step(), faded(start, kSilence, i * kBlock), kRoundOff);
    EXPECT_EQ(fade.runToClear() + 20, blocksToArrive(1.0, kSilence));
    EXPECT_EQ(fade.switcher.modulation(), Modulation::AM); // of the block that clears
    for (int i = 1; i <= 20; ++i) {
        EXPECT_NEAR(fade.step(), faded(kSilence, 1.0, i * kBlock), kSilence * 1e-5);
        EXPECT_EQ(fade.switcher.modulation(), Modulation::USB);
    }
}

TEST(ModulationSwitcherTest, TheLastRequestCountsAndARunningFadeGoesOnFromThePresentGain)
{
    Fade fade;
    fade.switcher.setModulation(Modulation::CW);
    fade.step();
    fade.switcher.setModulation(Modulation::LSB);
    fade.switcher.setAgcParam();
    fade.runToClear();
    fade.step();
    const double reached = fade.step();
    ASSERT_GT(reached, 0.3);
    fade.switcher.setAgcParam();
    EXPECT_NEAR(fade.step(), faded(reached, kSilence, kBlock), kRoundOff);
    EXPECT_EQ(fade.switcher.modulation(), Modulation::LSB);
}

TEST(ModulationSwitcherTest, ClearEndsTheFadeAndKeepsTheGain)
{
    Fade fade;
    fade.switcher.setModulation(Modulation::NFM);
    fade.runToClear();
    fade.step();
    const double reached = fade.step();
    fade.switcher.setModulation(Modulation::DRM);
    fade.switcher.clear();
    EXPECT_EQ(fade.switcher.modulation(), Modulation::DRM);
    EXPECT_EQ(fade.step(), 1.0);
    fade.switcher.setAgcParam();
    EXPECT_NEAR(fade.step(), faded(reached, kSilence, kBlock), kRoundOff);
}
} // namespace

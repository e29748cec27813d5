// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/receiver/ModulationSwitcher.h"

#include <gtest/gtest.h>

#include <algorithm>
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

/// Feeds ones, so that the output is the gain itself: that of the block's last sample. Both
/// channels and both parts must agree.
double step(ModulationSwitcher &switcher)
{
    std::vector<COMPLEX> a(kBlock, {1.0, 1.0});
    std::vector<COMPLEX> b = a;
    switcher.process(a.data(), b.data(), kBlock);
    EXPECT_EQ(a, b);
    EXPECT_EQ(a.back().re, a.back().im);
    return a.back().re;
}

/// Runs blocks until one asks for the clear; returns how many.
int runToClear(ModulationSwitcher &switcher)
{
    int blocks = 1;
    for (step(switcher); !switcher.takeClear() && blocks < 1000; step(switcher))
        ++blocks;
    return blocks;
}

TEST(ModulationSwitcherTest, FadesOutSwitchesAndFadesIn)
{
    ModulationSwitcher fade;
    fade.setModulation(Modulation::AM); // the mode at construction
    EXPECT_EQ(step(fade), 1.0);
    EXPECT_FALSE(fade.takeClear());
    fade.setAgcParam(); // brings the gain from its first value, 0, near 1
    ASSERT_EQ(runToClear(fade), blocksToArrive(0.0, kSilence));
    const int fadeIn = blocksToArrive(kSilence, 1.0);
    double start = 0.0;
    for (int i = 0; i < fadeIn; ++i)
        start = step(fade);
    EXPECT_NEAR(start, faded(kSilence, 1.0, fadeIn * kBlock), kRoundOff);
    EXPECT_EQ(step(fade), 1.0); // arrived: the step gives up its last 1e-5

    fade.setModulation(Modulation::USB);
    for (int i = 1; i <= 20; ++i)
        EXPECT_NEAR(step(fade), faded(start, kSilence, i * kBlock), kRoundOff);
    EXPECT_EQ(runToClear(fade) + 20, blocksToArrive(1.0, kSilence));
    EXPECT_EQ(fade.modulation(), Modulation::AM); // of the block that clears
    for (int i = 1; i <= 20; ++i) {
        EXPECT_NEAR(step(fade), faded(kSilence, 1.0, i * kBlock), kSilence * 1e-5);
        EXPECT_EQ(fade.modulation(), Modulation::USB);
    }
}

TEST(ModulationSwitcherTest, AFadeGoesOnFromThePresentGainAlsoAfterAClear)
{
    for (const bool clear : {false, true}) {
        ModulationSwitcher fade;
        fade.setModulation(Modulation::NFM);
        step(fade);
        fade.setModulation(Modulation::LSB); // the last request counts
        fade.setAgcParam();
        runToClear(fade);
        step(fade);
        const double reached = step(fade);
        ASSERT_GT(reached, 0.3);
        EXPECT_EQ(fade.modulation(), Modulation::LSB);
        if (clear) { // ends the fade at once
            fade.setModulation(Modulation::DRM);
            fade.clear();
            EXPECT_EQ(fade.modulation(), Modulation::DRM);
            EXPECT_EQ(step(fade), 1.0);
        }
        fade.setAgcParam();
        EXPECT_NEAR(step(fade), faded(reached, kSilence, kBlock), kRoundOff);
    }
}

TEST(ModulationSwitcherTest, AJointThatWaitsInALookAheadIsSilentWhenItComesOut)
{
    constexpr int kWaiting = 700; // samples: the joint lies within a block
    constexpr double kStep = 1.0 / ModulationSwitcher::kShortSamples;
    ModulationSwitcher fade;
    fade.setShort(true);
    step(fade);
    fade.setModulation(Modulation::USB, kWaiting);
    EXPECT_EQ(fade.modulation(), Modulation::USB); // at once
    EXPECT_TRUE(fade.isPassing() && fade.takeClear());
    fade.setAgcParam(); // waits for the joint
    int done = 0;
    while (fade.isPassing()) {
        const double gain = step(fade);
        done += kBlock;
        const double down = 1.0 - (done - (kWaiting - ModulationSwitcher::kShortSamples)) * kStep;
        EXPECT_NEAR(gain, std::clamp(down, kSilence, 1.0), kRoundOff) << done;
    }
    EXPECT_EQ(done, (kWaiting + kBlock - 1) / kBlock * kBlock);
    EXPECT_TRUE(fade.takeClear()); // for new times of the gain control
    EXPECT_FALSE(fade.isModeChange());
    EXPECT_NEAR(step(fade), kSilence + kBlock * kStep, kRoundOff);
    for (int n = kBlock; n < ModulationSwitcher::kShortSamples; n += kBlock)
        step(fade);
    EXPECT_TRUE(fade.isSteady());

    // Another mode in the meantime fades at once.
    fade.setModulation(Modulation::LSB, kWaiting);
    step(fade);
    fade.setModulation(Modulation::AM);
    EXPECT_FALSE(fade.isPassing());
    fade.takeClear();
    runToClear(fade);
    EXPECT_TRUE(fade.isModeChange());
    step(fade);
    EXPECT_EQ(fade.modulation(), Modulation::AM);
}
} // namespace

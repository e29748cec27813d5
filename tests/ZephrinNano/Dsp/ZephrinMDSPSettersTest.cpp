// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineTest.h"

#include <algorithm>
#include <cmath>
#include <numbers>

using DspCore::AgcMode;
using DspCore::Modulation;

class EngineSettersTest : public EngineTest
{
protected:
    // A change of mode or gain control fades out and in again: about 22000 samples.
    static constexpr int kFadeBlocks = 60;

    EngineSettersTest() { recordAudio(); }

    /// Level of the sound card's audio for a weak tone, in dB.
    double level()
    {
        playTone(2 * kFadeBlocks, 1e-4);
        return test::decibels(test::rms({soundCard.end() - 4 * kBlock, soundCard.end()}));
    }
};

TEST_F(EngineSettersTest, GainControlReachesTheReceiverOnlyOnAChange)
{
    constexpr double kSameDb = 1.0;
    engine.setModulation(0, Modulation::USB);
    start();
    const double amplified = level();
    // Every setting that reaches the receiver acts at the bottom of a fade, which is heard.
    const auto fades = [&] {
        soundCard.clear();
        playTone(kFadeBlocks, 1e-3);
        // A tone's own zeros are far fewer.
        return std::count_if(soundCard.begin(), soundCard.end(), [](COMPLEX pair) {
            return std::abs(pair.re) < 1e-6;
        }) > kBlock;
    };
    engine.setAgcMode(AgcMode::Off);
    EXPECT_FALSE(fades()) << "present mode";
    engine.setAgcMode(AgcMode(7));
    EXPECT_TRUE(fades()) << "stored as User";
    EXPECT_GT(level(), amplified + 6.0) << "and off: its fixed gain drives even this into clipping";
    engine.setAgcMode(AgcMode::User);
    EXPECT_FALSE(fades()) << "now the present mode";
    engine.setAgcDecay(AgcMode::Fast, 50.0);
    EXPECT_FALSE(fades()) << "times of another mode";
    engine.setAgcHangTime(AgcMode::User, 500.0);
    EXPECT_TRUE(fades()) << "times of the present mode";
    EXPECT_NEAR(level(), amplified, kSameDb) << "and on again";
}

TEST_F(EngineSettersTest, MetersReachTheSensors)
{
    constexpr double kBrokenPeriod = 0.05; // dB, of a block that no whole number of periods fits
    constexpr float kMeterDb = 0.01f;
    float adc[2] = {};
    float dbm[2] = {};
    sensors.onAdc = [&](uint receiver, float re, float im) {
        EXPECT_EQ(receiver, 0u);
        adc[0] = re;
        adc[1] = im;
    };
    sensors.onDbm = [&](uint, uint channel, float value) { dbm[channel] = value; };
    engine.setModulation(0, Modulation::USB);
    engine.setDownConverter(1, 12000.0);
    start();
    playTone(300, 0.1);
    for (const float level : adc)
        EXPECT_NEAR(level, test::decibels(0.1 / std::numbers::sqrt2), kBrokenPeriod);
    EXPECT_GT(dbm[0], -40.0f);
    EXPECT_LT(dbm[1], dbm[0] - 60.0f);
    const float before = dbm[0];
    playTone(300, 0.01);
    EXPECT_NEAR(dbm[0], before - 20.0f, kMeterDb);
}

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

TEST_F(EngineSettersTest, TuningOutlivesAChangeOfRate)
{
    constexpr double kRate = 192000.0;
    constexpr double kA = 30000.0; // Hz from the centre
    constexpr double kB = -20000.0;
    constexpr double kAlone = 0.01; // what else there may be beside the tone, of its level
    engine.setModulation(0, Modulation::USB);
    engine.setDownConverter(0, kA);
    engine.setDownConverter(1, kB);
    engine.setDownConverter(2, 1.0); // no such channel
    engine.setBandFilterIf(0, 300.0, 2500.0);
    engine.setSampleRate(kRate);
    engine.setMute(0, 0, true); // the sum is B alone
    start();
    const auto share = [&](double hz) { // of the audio that is a tone at hz
        soundCard.clear();
        auto stream = test::tone(int(kRate), (kA + 1000.0) / kRate, 0.1);
        test::add(stream, test::tone(int(kRate), (kB + 2000.0) / kRate, 0.1));
        play(stream);
        std::vector<COMPLEX> ear{soundCard.end() - 9600, soundCard.end()};
        for (COMPLEX &pair : ear)
            pair.im = 0.0;
        return std::numbers::sqrt2 * test::magnitude(test::component(ear, hz / 48000.0))
            / test::rms(ear);
    };
    engine.setChannelEnable(0, 1, false);
    EXPECT_NEAR(share(1000.0), 1.0, kAlone) << "A";
    engine.setChannelEnable(0, 1, true);
    EXPECT_NEAR(share(2000.0), 1.0, kAlone) << "B";
}

TEST_F(EngineSettersTest, TheFilterOfWideFmFitsANewRate)
{
    constexpr double kRate = 1536000.0;
    constexpr double kStopBandDb = 60.0;
    double dbm = 0.0;
    sensors.onDbm = [&](uint, uint channel, float value) {
        if (channel == 0)
            dbm = value;
    };
    const auto levelOf = [&](double hz) {
        play(test::tone(200 * kBlock, hz / kRate, 0.1));
        return dbm;
    };
    engine.setModulation(0, Modulation::WFM);
    engine.setSampleRate(kRate / 8.0);
    engine.setBandFilterIf(0, -80000.0, 80000.0);
    engine.setSampleRate(kRate);
    start();
    EXPECT_LT(levelOf(120000.0), levelOf(20000.0) - kStopBandDb);
}

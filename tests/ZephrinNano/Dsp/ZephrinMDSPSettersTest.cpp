// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineTest.h"

#include <QMetaObject>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

using DspCore::AgcMode;
using DspCore::Modulation;

class EngineSettersTest : public EngineTest
{
protected:
    // A change of mode or gain control fades out and in again: about 22000 samples.
    static constexpr int kFadeBlocks = 60;

    EngineSettersTest() { recordAudio(); }

    /// Delay of the receiver from an impulse to the top of its answer at the audio server, in
    /// samples.
    int delay()
    {
        playTone(kFadeBlocks, 0.0);
        // The answer to whatever came before is over, and no chunk is half full.
        vacSource.clear();
        std::vector<COMPLEX> stream(16 * kChunk, COMPLEX{0.0, 0.0});
        stream[kBlock].re = 1.0;
        play(stream);
        const auto power = [](const COMPLEX &s) { return s.re * s.re + s.im * s.im; };
        const auto top = std::max_element(vacSource.begin(), vacSource.end(),
            [&](const COMPLEX &a, const COMPLEX &b) { return power(a) < power(b); });
        return int(top - vacSource.begin()) - kBlock;
    }

    /// Level of the sound card's audio for a weak tone, in dB.
    double level()
    {
        playTone(2 * kFadeBlocks, 1e-4);
        std::vector<COMPLEX> audio;
        for (auto pair = soundCard.end() - 4 * kBlock; pair != soundCard.end(); ++pair)
            audio.push_back({pair->re, pair->im});
        return test::decibels(test::rms(audio));
    }
};

TEST_F(EngineSettersTest, FilterLengthFollowsTheModeClass)
{
    engine.setModulation(0, Modulation::USB);
    start();
    // A linear-phase filter of n taps delays by (n - 1) / 2; the other blocks delay by the same in
    // every row, and the mode does not matter to it.
    const int other = delay() - (1537 - 1) / 2;
    const auto expectTaps = [&](const char *what, int taps) {
        constexpr int kRounding = 1; // the top lies between two samples for an even length
        EXPECT_NEAR(delay(), other + (taps - 1) / 2, kRounding) << what;
    };
    engine.setCwFilterTaps(9000);
    engine.setDigFilterTaps(601);
    expectTaps("other classes keep away from USB", 1537);
    engine.setSsbFilterTaps(801);
    expectTaps("own class at once", 801);
    engine.setModulation(0, Modulation::DIGU);
    expectTaps("class table of the digital modes", 601);
    engine.setSsbFilterTaps(1001);
    expectTaps("own class only", 601);
    engine.setDigFilterTaps(100);
    expectTaps("lower limit", 200);
    engine.setAmFilterTaps(401);
    expectTaps("AM acts in every mode", 401);
    engine.setModulation(0, Modulation::LSB);
    engine.setModulation(0, Modulation::USB);
    expectTaps("stored while another mode was on", 1001);
}

TEST(AgcTableTest, SettingsFollowModeAndTimes)
{
    const auto expect = [](const AgcTable::Setting &setting, bool on, double attack, double decay,
                            double hangTime) {
        EXPECT_EQ(setting.on, on);
        EXPECT_EQ(setting.times.attack, attack);
        EXPECT_EQ(setting.times.decay, decay);
        EXPECT_EQ(setting.times.hangTime, hangTime);
    };
    AgcTable table;
    EXPECT_EQ(table.mode(), AgcMode::Off);
    expect(table.setMode(AgcMode::Med), true, 1.7, 250.0, 250.0);
    EXPECT_FALSE(table.setTime(AgcMode::Off, &AgcTable::Param::decay, 77.0)) << "not in force";
    expect(*table.setTime(AgcMode::Med, &AgcTable::Param::attack, 3.0), true, 3.0, 250.0, 250.0);
    expect(table.setMode(AgcMode(7)), false, 2.0, 77.0, 400.0);
    EXPECT_EQ(table.mode(), AgcMode::User);
    expect(*table.setTime(AgcMode::User, &AgcTable::Param::hangTime, 5.0), true, 2.5, 1000.0, 5.0);
    expect(table.setMode(AgcMode(-1)), false, 2.0, 77.0, 400.0);
    EXPECT_EQ(table.mode(), AgcMode::Off);
    expect(*table.setTime(AgcMode::Off, &AgcTable::Param::attack, 9.0), false, 9.0, 77.0, 400.0);
}

TEST_F(EngineSettersTest, GainControlReachesTheReceiverOnlyOnAChange)
{
    engine.setModulation(0, Modulation::USB);
    start();
    const double amplified = level();
    // Every setting that reaches the receiver acts at the bottom of a fade, which is heard.
    const auto fades = [&] {
        soundCard.clear();
        playTone(kFadeBlocks, 1e-3);
        int silent = 0;
        for (const COMPLEX32 &pair : soundCard)
            silent += std::abs(pair.re) < 1e-6f;
        return silent > kBlock; // a tone's own zeros are far fewer
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
    EXPECT_NEAR(level(), amplified, 1.0) << "and on again";
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
        std::vector<COMPLEX> ear;
        for (auto pair = soundCard.end() - 9600; pair != soundCard.end(); ++pair)
            ear.push_back({pair->re, 0.0});
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
    double level = 0.0; // dBm
    sensors.onDbm = [&](uint, uint channel, float value) {
        if (channel == 0)
            level = value;
    };
    const auto levelOf = [&](double hz) {
        play(test::tone(200 * kBlock, hz / kRate, 0.1));
        return level;
    };
    engine.setModulation(0, Modulation::WFM);
    engine.setSampleRate(kRate / 8.0);
    engine.setBandFilterIf(0, -80000.0, 80000.0);
    engine.setSampleRate(kRate);
    start();
    constexpr double kStopBandDb = 60.0;
    EXPECT_LT(levelOf(120000.0), levelOf(20000.0) - kStopBandDb);
}

TEST_F(EngineSettersTest, NumbersBeyondTheTablesThrow)
{
    engine.setDds(0, 7.1e6);
    EXPECT_THROW(engine.setDds(1, 7.1e6), std::out_of_range);
    EXPECT_THROW(engine.setAgcAttack(AgcMode(6), 1.0), std::out_of_range);
}

TEST_F(EngineSettersTest, VolumeAndMutesReachTheReceiver)
{
    engine.setModulation(0, Modulation::USB);
    start();
    engine.setAgcGain(0, 0);
    engine.setAgcMode(AgcMode(7)); // off: else it would make up for the level
    const double full = level();
    engine.setMainVolume(-20.0);
    EXPECT_NEAR(level(), full - 20.0, 0.1);
    engine.setMainVolume(0.0);
    engine.setMute(0, 0, true); // has no effect while channel B is not in use
    EXPECT_NEAR(level(), full, 0.1);
    engine.setDownConverter(1, 500.0); // channel B hears the tone at 500 Hz
    engine.setChannelEnable(0, 1, true);
    engine.setVolume(0, 1, -6.0);
    EXPECT_NEAR(level(), full - 6.0, 0.1);
    engine.setMainMute(true);
    EXPECT_LT(level(), full - 100.0);
}

TEST_F(EngineSettersTest, TheOptionsWidgetFindsItsSlots)
{
    for (const char *slot : {"setSsbFilterTaps(int)", "setAmFilterTaps(int)",
             "setDigFilterTaps(int)", "setCwFilterTaps(int)", "setDiglOffset(int)",
             "setDiguOffset(int)", "setAgcAttack(AgcMode,REAL)", "setAgcDecay(AgcMode,REAL)",
             "setAgcHangTime(AgcMode,REAL)"})
        EXPECT_GE(engine.metaObject()->indexOfSlot(slot), 0) << slot;
}

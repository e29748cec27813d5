// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/NoDenormals.h"
#include "EngineTest.h"

#include <cmath>
#include <complex>
#include <functional>
#include <numbers>

using DspCore::Modulation;
using E = ZephrinMDSP;
using R = DspCore::Receiver;

namespace
{
constexpr double kRate = 48000.0;
constexpr double kTwoPi = 2.0 * std::numbers::pi;

/// Something for every tool: an FM station with the lowest squelch tone at +700 Hz in noise. Zeros
/// lead it in, so that the fade at the start of the stream is over before it begins.
std::vector<COMPLEX> station(int length)
{
    constexpr int kFaded = 32;
    auto stream = test::noise(length, 9);
    for (int n = 0; n < length; ++n) {
        const double t = n / kRate;
        const auto fm = std::polar(0.02,
            kTwoPi * 700.0 * t + 3.0 * std::sin(kTwoPi * 67.0 * t)
                + 0.3 * std::sin(kTwoPi * 900.0 * t));
        COMPLEX &sample = stream[std::size_t(n)];
        sample = {fm.real() + 1e-3 * sample.re, fm.imag() + 1e-3 * sample.im};
        if (n < kFaded)
            sample = {0.0, 0.0};
    }
    return stream;
}

/// One setting, told to the engine and to a receiver on its own.
struct Change
{
    std::function<void(E &)> engine = [](E &) {};
    std::function<void(R &)> receiver = [](R &) {};
};

/// Of a setter that takes the value alone.
Change all(auto inEngine, auto inReceiver, auto value)
{
    return {[=](E &e) { (e.*inEngine)(value); }, [=](R &r) { (r.*inReceiver)(value); }};
}

/// Of receiver 0.
Change own(auto inEngine, auto inReceiver, auto value)
{
    return {[=](E &e) { (e.*inEngine)(0, value); }, [=](R &r) { (r.*inReceiver)(value); }};
}

/// Of both channels, one after the other.
Change each(auto inEngine, auto inReceiver, auto value)
{
    return {[=](E &e) { (e.*inEngine)(0, 0, value), (e.*inEngine)(0, 1, value); },
        [=](R &r) { (r.*inReceiver)(0, value), (r.*inReceiver)(1, value); }};
}

struct Setter
{
    const char *name;
    Modulation mode;
    Change before; // without it the setter would not be heard
    Change change;
};

void PrintTo(const Setter &setter, std::ostream *out)
{
    *out << setter.name;
}

const Change kNr = own(&E::setNr, &R::setNr, true);
const Change kAnf = own(&E::setAnf, &R::setAnf, true);
const Change kApf = own(&E::setApf, &R::setApf, true);
const Change kDse = own(&E::setDse, &R::setDse, true);
const Change kEqualizer = own(&E::setEqualizerEnable, &R::setEqualizerEnable, true);
const Change kGains = own(&E::setEqualizerGains, &R::setEqualizerGains, QVector<int>(18, 5));
const Change kThreshold = each(&E::setSqlValue, &R::setSqlValue, 20);
const Change kSquelch = each(&E::setSqlEnable, &R::setSqlEnable, true);
const Change kCtcss = own(&E::setEnableCTCSS, &R::setEnableCTCSS, true);
const Change kAgcGain{[](E &e) { e.setAgcGain(1, -10); }, [](R &r) { r.setAgcGain(1, -10); }};

// RIT is the first channel's; it moves like the second channel's tuning.
const Change kRit{[](E &e) { e.setRit(0, 0, 300.0), e.setDownConverter(1, 300.0); },
    [](R &r) { r.setRit(0, 300.0), r.setDownConverter(1, 300.0); }};

const Setter kSetters[] = {
    {"Nr", Modulation::USB, {}, kNr},
    {"NrTaps", Modulation::AM, kNr, all(&E::setNrTaps, &R::setNrTaps, 90)},
    {"NrDelay", Modulation::USB, kNr, all(&E::setNrDelay, &R::setNrDelay, 19)},
    {"NrRate", Modulation::DSB, kNr, all(&E::setNrRate, &R::setNrRate, 0.01)},
    {"NrLeak", Modulation::USB, kNr, all(&E::setNrLeak, &R::setNrLeak, 0.9)},
    {"Anf", Modulation::USB, {}, kAnf},
    {"AnfTaps", Modulation::CW, kAnf, all(&E::setAnfTaps, &R::setAnfTaps, 90)},
    {"AnfDelay", Modulation::LSB, kAnf, all(&E::setAnfDelay, &R::setAnfDelay, 20)},
    {"AnfRate", Modulation::SAM, kAnf, all(&E::setAnfRate, &R::setAnfRate, 0.01)},
    {"AnfLeak", Modulation::NFM, kAnf, all(&E::setAnfLeak, &R::setAnfLeak, 0.9)},
    {"SsbApf", Modulation::USB, {}, kApf},
    {"SsbApfGain", Modulation::USB, kApf, all(&E::setSsbApfGain, &R::setSsbApfGain, 9)},
    {"SsbApfQuality", Modulation::USB, kApf, all(&E::setSsbApfQuality, &R::setSsbApfQuality, 2.5)},
    {"SsbApfFreq", Modulation::USB, kApf, all(&E::setSsbApfFreq, &R::setSsbApfFreq, 900)},
    {"CwApf", Modulation::CW, {}, kApf},
    {"CwApfGain", Modulation::CW, kApf, all(&E::setCwApfGain, &R::setCwApfGain, 9)},
    {"CwApfQuality", Modulation::CW, kApf, all(&E::setCwApfQuality, &R::setCwApfQuality, 2)},
    {"CwTone", Modulation::CW, {}, all(&E::setCwTone, &R::setCwTone, 900)},
    {"CwToneOfTheApf", Modulation::CW, kApf, all(&E::setCwTone, &R::setCwTone, 900)},
    {"Dse", Modulation::CW, {}, kDse},
    {"DseQuality", Modulation::CW, kDse, all(&E::setDseQuality, &R::setDseQuality, 140)},
    {"DseSwap", Modulation::CW, kDse, all(&E::setDseSwap, &R::setDseSwap, true)},
    {"Bin", Modulation::USB, {}, own(&E::setBin, &R::setBin, true)},
    {"EqualizerEnable", Modulation::DSB, kGains, kEqualizer},
    {"EqualizerGains", Modulation::NFM, kEqualizer, kGains},
    {"SqlEnable", Modulation::USB, kThreshold, kSquelch},
    {"SqlValue", Modulation::NFM, kSquelch, kThreshold},
    {"EnableCtcss", Modulation::NFM, {}, kCtcss},
    {"ToneCtcss", Modulation::NFM, kCtcss, own(&E::setToneCTCSS, &R::setToneCTCSS, 20)},
    {"DiglOffset", Modulation::DIGL, {}, all(&E::setDiglOffset, &R::setDiglOffset, 900)},
    {"DiguOffset", Modulation::DIGU, {}, all(&E::setDiguOffset, &R::setDiguOffset, 700)},
    {"AgcGain", Modulation::USB, {}, kAgcGain},
    {"Rit", Modulation::USB, {}, kRit},
    {"MainVolume", Modulation::USB, {}, all(&E::setMainVolume, &R::setMainVolume, -20.0)},
    {"Volume", Modulation::USB, {}, each(&E::setVolume, &R::setVolume, -6.0)},
    {"Balance", Modulation::USB, {}, each(&E::setBalance, &R::setBalance, 9.0)},
    {"MainMute", Modulation::USB, {}, all(&E::setMainMute, &R::setMainMute, true)},
    {"Mute", Modulation::USB, {}, each(&E::setMute, &R::setMute, true)},
    {"SsbFilterTaps", Modulation::USB, {}, all(&E::setSsbFilterTaps, &R::setFilterTaps, 801)},
    {"AmFilterTaps", Modulation::USB, {}, all(&E::setAmFilterTaps, &R::setFilterTaps, 801)},
    {"DigFilterTaps", Modulation::DIGU, {}, all(&E::setDigFilterTaps, &R::setFilterTaps, 801)},
    {"CwFilterTaps", Modulation::CW, {}, all(&E::setCwFilterTaps, &R::setFilterTaps, 801)},
    {"FilterTapsOfTheMode", Modulation::USB, {},
        {[](E &e) {
             e.setModulation(0, Modulation::CW);
             e.setSsbFilterTaps(801); // stored for later
             e.setCwFilterTaps(601);
             e.setModulation(0, Modulation::USB);
             e.setDigFilterTaps(701);
         },
            [](R &r) { r.setFilterTaps(801); }}},
};
} // namespace

class EngineToolTest : public EngineTest, public testing::WithParamInterface<Setter>
{
protected:
    static constexpr int kBlocks = 60;
    static constexpr double kLow = -1500.0; // Hz
    static constexpr double kHigh = 5000.0;

    /// What a receiver on its own makes of the station, told the same as the engine's and reckoning
    /// like it: one channel, with the other one muted.
    static std::vector<COMPLEX> played(const std::vector<Change> &changes, unsigned channel)
    {
        constexpr int kFilterTaps = 1537;
        const DspCore::NoDenormals scope;
        R receiver;
        receiver.setInputSampleRate(kRate);
        receiver.setEnableVfob(true);
        receiver.setMute(1 - channel, true);
        receiver.setModulation(GetParam().mode);
        receiver.setFilterTaps(kFilterTaps);
        receiver.setBandFilterIf(0, kLow, kHigh);
        for (const Change &change : changes)
            change.receiver(receiver);
        receiver.clear();
        std::vector<COMPLEX> audio;
        receiver.setSoundCardCallback([&](gsl::span<COMPLEX> block) {
            for (const COMPLEX &pair : block)
                audio.push_back({float(pair.re), float(pair.im)});
        });
        auto stream = station(kBlocks * kBlock);
        for (int block = 0; block < kBlocks; ++block)
            receiver.process(stream.data() + block * kBlock, kBlock);
        return audio;
    }
};

TEST_P(EngineToolTest, SetterReachesItsToolOnBothChannelsAlike)
{
    constexpr double kTrace = 1e-6; // of the muted channel, and of single precision
    constexpr double kHeard = 1e-4;
    const Setter &row = GetParam();
    recordAudio();
    engine.setChannelEnable(0, 1, true);
    engine.setMute(0, 1, true);
    engine.setModulation(0, row.mode);
    engine.setBandFilterIf(0, kLow, kHigh);
    row.before.engine(engine);
    row.change.engine(engine);
    start();
    play(station(kBlocks * kBlock));
    const auto expected = played({row.before, row.change}, 0);
    EXPECT_LT(test::maxError(soundCard, expected), kTrace);
    EXPECT_LT(test::maxError(played({row.before, row.change}, 1), expected), kTrace);
    EXPECT_GT(test::maxError(played({row.before}, 0), expected), kHeard);
}

INSTANTIATE_TEST_SUITE_P(Setters, EngineToolTest, testing::ValuesIn(kSetters),
    [](const auto &row) { return row.param.name; });

using EngineToolsTest = EngineTest;

namespace
{
/// A steady carrier, with a pulse ten times as strong in the last block.
std::vector<COMPLEX> pulse(int blocks, int at)
{
    constexpr int kBlock = EngineLimits::kBlock;
    std::vector<COMPLEX> stream(std::size_t(blocks * kBlock), COMPLEX{0.1, 0.0});
    stream[stream.size() - kBlock + std::size_t(at)].re = 1.0;
    return stream;
}
} // namespace

TEST_F(EngineToolsTest, NoiseBlankersWorkAheadOfEverythingThatReadsTheStream)
{
    constexpr int kSettled = 60; // blocks until the blanker's mean power is the carrier's
    constexpr double kSettling = 1e-6;
    const auto pulseIs = [&](int blocks, double level) {
        iq.clear();
        start();
        play(pulse(blocks, 100));
        engine.close();
        EXPECT_NEAR(iq.at((blocks - 1) * kBlock + 100).re, level, kSettling);
    };
    recordIq();
    pulseIs(kSettled, 1.0);
    engine.setNb1(0, true);
    engine.setNb1Threshold(5.0);
    pulseIs(kSettled, 0.0);
    // A restart empties the blanker; against the mean that it begins with no pulse stands out.
    pulseIs(1, 0.1);
    EXPECT_EQ(iq[1].re, 0.0) << "the two samples of its delay";
    EXPECT_GT(iq[2].re, 0.0);
    EXPECT_EQ(iq[102].re, 1.0);
    engine.setNb1Threshold(11.0);
    pulseIs(kSettled, 0.1);
    engine.setNb1(0, false);
    engine.setNb2(0, true);
    engine.setNb2Threshold(5.0);
    pulseIs(kSettled, 0.25 * 1.0 + 0.75 * 0.1);
    engine.setNb2Threshold(11.0);
    pulseIs(kSettled, 1.0);
}

TEST_F(EngineToolsTest, MetersReachTheSensors)
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

TEST_F(EngineToolsTest, StereoOfWideFmIsShownUntilItIsSwitchedOff)
{
    constexpr double kWideRate = 192000.0;
    constexpr int kToLock = 200; // blocks: 20 / 50 Hz of pilot are 150
    bool stereo = false;
    sensors.onStereo = [&](uint, bool state) { stereo = state; };
    engine.setSampleRate(kWideRate);
    engine.setModulation(0, Modulation::WFM);
    engine.setBandFilterIf(0, -80000.0, 80000.0);
    start();
    std::vector<COMPLEX> stream(kToLock * kBlock);
    for (std::size_t n = 0; n < stream.size(); ++n) {
        // A carrier that the pilot alone moves, by 9 % of 75 kHz.
        const double pilot = kTwoPi * 19000.0 * double(n) / kWideRate;
        const auto fm = std::polar(0.2, -0.09 * 75000.0 / 19000.0 * std::cos(pilot));
        stream[n] = {fm.real(), fm.imag()};
    }
    play(stream);
    EXPECT_TRUE(stereo);
    engine.setWfmStereo(0, false);
    play({stream.begin(), stream.begin() + kBlock});
    EXPECT_FALSE(stereo);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/NoDenormals.h"
#include "EngineTest.h"

#include <cmath>
#include <complex>
#include <numbers>

using DspCore::Modulation;
using DspCore::Receiver;

namespace
{
constexpr double kRate = 48000.0;
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr int kFilterTaps = 1537;

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

struct SetterCase
{
    const char *name;
    Modulation mode;
    void (*before)(ZephrinMDSP &, Receiver &);
    void (*engine)(ZephrinMDSP &);
    void (*receiver)(Receiver &);
};

void nothing(ZephrinMDSP &, Receiver &) { }
void nr(ZephrinMDSP &e, Receiver &r)
{
    e.setNr(0, true);
    r.setNr(true);
}
void anf(ZephrinMDSP &e, Receiver &r)
{
    e.setAnf(0, true);
    r.setAnf(true);
}
void apf(ZephrinMDSP &e, Receiver &r)
{
    e.setApf(0, true);
    r.setApf(true);
}
void dse(ZephrinMDSP &e, Receiver &r)
{
    e.setDse(0, true);
    r.setDse(true);
}
void gains(ZephrinMDSP &e, Receiver &r)
{
    e.setEqualizerGains(0, QVector<int>(18, 5));
    r.setEqualizerGains(QVector<int>(18, 5));
}
void threshold(ZephrinMDSP &e, Receiver &r)
{
    e.setSqlValue(0, 0, 20);
    r.setSqlValue(0, 20);
}
void squelch(ZephrinMDSP &e, Receiver &r)
{
    e.setSqlEnable(0, 0, true);
    r.setSqlEnable(0, true);
}
void ctcss(ZephrinMDSP &e, Receiver &r)
{
    e.setEnableCTCSS(0, true);
    r.setEnableCTCSS(true);
}
} // namespace

class EngineToolTest : public EngineTest, public testing::WithParamInterface<SetterCase>
{
protected:
    static constexpr int kBlocks = 60;

    /// A receiver on its own, told the same as the engine's and reckoning like it.
    std::vector<COMPLEX32> played(Receiver &receiver)
    {
        const DspCore::NoDenormals scope;
        receiver.setInputSampleRate(kRate);
        receiver.setModulation(GetParam().mode);
        receiver.setFilterTaps(kFilterTaps);
        receiver.setBandFilterIf(0, 100.0, 5000.0);
        receiver.clear();
        std::vector<COMPLEX32> audio;
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

TEST_P(EngineToolTest, SetterReachesItsTool)
{
    const SetterCase &c = GetParam();
    Receiver plain;
    Receiver changed;
    c.before(engine, plain);
    c.before(engine, changed);
    c.engine(engine);
    c.receiver(changed);
    recordAudio();
    engine.setModulation(0, c.mode);
    engine.setBandFilterIf(0, 100.0, 5000.0);
    start();
    play(station(kBlocks * kBlock));
    const auto expected = played(changed);
    EXPECT_EQ(soundCard, expected);
    EXPECT_NE(expected, played(plain)) << "no difference to hear";
}

INSTANTIATE_TEST_SUITE_P(Setters, EngineToolTest,
    testing::Values(
        SetterCase{"Nr", Modulation::USB, nothing, [](ZephrinMDSP &e) { e.setNr(0, true); },
            [](Receiver &r) { r.setNr(true); }},
        SetterCase{"NrTaps", Modulation::USB, nr, [](ZephrinMDSP &e) { e.setNrTaps(99); },
            [](Receiver &r) { r.setNrTaps(99); }},
        SetterCase{"NrDelay", Modulation::USB, nr, [](ZephrinMDSP &e) { e.setNrDelay(20); },
            [](Receiver &r) { r.setNrDelay(20); }},
        SetterCase{"NrRate", Modulation::USB, nr, [](ZephrinMDSP &e) { e.setNrRate(0.01); },
            [](Receiver &r) { r.setNrRate(0.01); }},
        SetterCase{"NrLeak", Modulation::USB, nr, [](ZephrinMDSP &e) { e.setNrLeak(0.9); },
            [](Receiver &r) { r.setNrLeak(0.9); }},
        SetterCase{"Anf", Modulation::USB, nothing, [](ZephrinMDSP &e) { e.setAnf(0, true); },
            [](Receiver &r) { r.setAnf(true); }},
        SetterCase{"AnfTaps", Modulation::USB, anf, [](ZephrinMDSP &e) { e.setAnfTaps(99); },
            [](Receiver &r) { r.setAnfTaps(99); }},
        SetterCase{"AnfDelay", Modulation::USB, anf, [](ZephrinMDSP &e) { e.setAnfDelay(20); },
            [](Receiver &r) { r.setAnfDelay(20); }},
        SetterCase{"AnfRate", Modulation::USB, anf, [](ZephrinMDSP &e) { e.setAnfRate(0.01); },
            [](Receiver &r) { r.setAnfRate(0.01); }},
        SetterCase{"AnfLeak", Modulation::USB, anf, [](ZephrinMDSP &e) { e.setAnfLeak(0.9); },
            [](Receiver &r) { r.setAnfLeak(0.9); }},
        SetterCase{"Apf", Modulation::USB, nothing, [](ZephrinMDSP &e) { e.setApf(0, true); },
            [](Receiver &r) { r.setApf(true); }},
        SetterCase{"SsbApfGain", Modulation::USB, apf, [](ZephrinMDSP &e) { e.setSsbApfGain(9); },
            [](Receiver &r) { r.setSsbApfGain(9); }},
        SetterCase{"SsbApfQuality", Modulation::USB, apf,
            [](ZephrinMDSP &e) { e.setSsbApfQuality(2.5); },
            [](Receiver &r) { r.setSsbApfQuality(2.5); }},
        SetterCase{"SsbApfFreq", Modulation::USB, apf, [](ZephrinMDSP &e) { e.setSsbApfFreq(900); },
            [](Receiver &r) { r.setSsbApfFreq(900); }},
        SetterCase{"CwApfGain", Modulation::CW, apf, [](ZephrinMDSP &e) { e.setCwApfGain(9); },
            [](Receiver &r) { r.setCwApfGain(9); }},
        SetterCase{"CwApfQuality", Modulation::CW, apf,
            [](ZephrinMDSP &e) { e.setCwApfQuality(2); },
            [](Receiver &r) { r.setCwApfQuality(2); }},
        SetterCase{"CwTone", Modulation::CW, nothing, [](ZephrinMDSP &e) { e.setCwTone(900); },
            [](Receiver &r) { r.setCwTone(900); }},
        SetterCase{"Dse", Modulation::CW, nothing, [](ZephrinMDSP &e) { e.setDse(0, true); },
            [](Receiver &r) { r.setDse(true); }},
        SetterCase{"DseQuality", Modulation::CW, dse, [](ZephrinMDSP &e) { e.setDseQuality(140); },
            [](Receiver &r) { r.setDseQuality(140); }},
        SetterCase{"DseSwap", Modulation::CW, dse, [](ZephrinMDSP &e) { e.setDseSwap(true); },
            [](Receiver &r) { r.setDseSwap(true); }},
        SetterCase{"Bin", Modulation::USB, nothing, [](ZephrinMDSP &e) { e.setBin(0, true); },
            [](Receiver &r) { r.setBin(true); }},
        SetterCase{"EqualizerEnable", Modulation::USB, gains,
            [](ZephrinMDSP &e) { e.setEqualizerEnable(0, true); },
            [](Receiver &r) { r.setEqualizerEnable(true); }},
        SetterCase{"SqlEnable", Modulation::USB, threshold,
            [](ZephrinMDSP &e) { e.setSqlEnable(0, 0, true); },
            [](Receiver &r) { r.setSqlEnable(0, true); }},
        SetterCase{"SqlValue", Modulation::NFM, squelch,
            [](ZephrinMDSP &e) { e.setSqlValue(0, 0, 20); },
            [](Receiver &r) { r.setSqlValue(0, 20); }},
        SetterCase{"EnableCtcss", Modulation::NFM, nothing,
            [](ZephrinMDSP &e) { e.setEnableCTCSS(0, true); },
            [](Receiver &r) { r.setEnableCTCSS(true); }},
        SetterCase{"ToneCtcss", Modulation::NFM, ctcss,
            [](ZephrinMDSP &e) { e.setToneCTCSS(0, 20); }, [](Receiver &r) { r.setToneCTCSS(20); }},
        SetterCase{"AgcGain", Modulation::USB, nothing,
            [](ZephrinMDSP &e) { e.setAgcGain(0, -10); },
            [](Receiver &r) { r.setAgcGain(0, -10); }}),
    [](const auto &row) { return row.param.name; });

class EngineToolsTest : public EngineTest
{
protected:
    /// What the noise blanker leaves, as the host's IQ server gets it.
    void recordIq()
    {
        iqServer.onWrite = [this](COMPLEX *block, int count) {
            iq.insert(iq.end(), block, block + count);
        };
        engine.setIqServer(&iqServer);
    }

    /// A steady carrier, with a pulse ten times as strong in the last block.
    static std::vector<COMPLEX> pulse(int blocks, int at)
    {
        std::vector<COMPLEX> stream(std::size_t(blocks * kBlock), COMPLEX{0.1, 0.0});
        stream[stream.size() - kBlock + std::size_t(at)].re = 1.0;
        return stream;
    }

    std::vector<COMPLEX> iq;
};

TEST_F(EngineToolsTest, NoiseBlankersWorkAheadOfEverythingThatReadsTheStream)
{
    constexpr int kSettled = 60; // blocks until the blanker's mean power is the carrier's
    constexpr int kAt = 100;
    struct Row
    {
        const char *name;
        void (*set)(ZephrinMDSP &);
        double first, rest; // the pulse's sample and the six after it
        int delay;          // of the stream around them
    };
    for (const Row &row : {Row{"off", [](ZephrinMDSP &) {}, 1.0, 0.1, 0},
             Row{"NB1",
                 [](ZephrinMDSP &e) {
                     e.setNb1(0, true);
                     e.setNb1Threshold(5.0);
                 },
                 0.0, 0.0, 2},
             Row{"NB1 too high",
                 [](ZephrinMDSP &e) {
                     e.setNb1(0, true);
                     e.setNb1Threshold(11.0);
                 },
                 0.1, 0.1, 2},
             Row{"NB2",
                 [](ZephrinMDSP &e) {
                     e.setNb1(0, false);
                     e.setNb2(0, true);
                     e.setNb2Threshold(5.0);
                 },
                 0.25 * 1.0 + 0.75 * 0.1, 0.1, 0},
             Row{"NB2 too high", [](ZephrinMDSP &e) { e.setNb2Threshold(11.0); }, 1.0, 0.1, 0}}) {
        row.set(engine);
        recordIq();
        start();
        play(pulse(kSettled, kAt));
        engine.close();
        ASSERT_EQ(iq.size(), std::size_t(kSettled * kBlock));
        constexpr double kSettling = 1e-6;
        const auto block = from((kSettled - 1) * kBlock, iq);
        EXPECT_NEAR(block[kAt].re, row.first, kSettling) << row.name;
        for (int n = kAt + 1; n < kAt + 7; ++n) {
            const bool late = row.delay > 0 && row.rest > 0.0 && n == kAt + row.delay;
            EXPECT_NEAR(block[std::size_t(n)].re, late ? 1.0 : row.rest, kSettling)
                << row.name << n;
        }
        EXPECT_NEAR(block[kAt - 1].re, 0.1, kSettling) << row.name;
        EXPECT_NEAR(block[kAt + 7].re, 0.1, kSettling) << row.name;
        iq.clear();
    }
}

TEST_F(EngineToolsTest, ARestartEmptiesTheNoiseBlanker)
{
    recordIq();
    engine.setNb1(0, true);
    engine.setNb1Threshold(5.0);
    for (int run = 0; run < 2; ++run) {
        start();
        play(pulse(1, 100)); // against the mean that a start begins with it does not stand out
        engine.close();
        ASSERT_EQ(iq.size(), std::size_t(kBlock));
        EXPECT_EQ(iq[0].re, 0.0) << run;
        EXPECT_EQ(iq[1].re, 0.0) << run;
        EXPECT_GT(iq[2].re, 0.0) << run;
        EXPECT_EQ(iq[102].re, 1.0) << run;
        iq.clear();
        start();
        play(pulse(60, 100));
        engine.close();
        iq.clear();
    }
}

TEST_F(EngineToolsTest, MetersReachTheSensors)
{
    float adc[2] = {};
    float dbm[2] = {};
    sensors.onAdc = [&](uint receiver, float re, float im) {
        EXPECT_EQ(receiver, 0u);
        adc[0] = re;
        adc[1] = im;
    };
    sensors.onDbm = [&](uint receiver, uint channel, float value) {
        EXPECT_EQ(receiver, 0u);
        dbm[channel] = value;
    };
    engine.setModulation(0, Modulation::USB);
    engine.setDownConverter(1, 12000.0);
    start();
    playTone(300, 0.1);
    constexpr double kBrokenPeriod = 0.05; // dB, of a block that no whole number of periods fits
    for (const float level : adc)
        EXPECT_NEAR(level, test::decibels(0.1 / std::numbers::sqrt2), kBrokenPeriod);
    EXPECT_GT(dbm[0], -40.0f);
    EXPECT_LT(dbm[1], dbm[0] - 60.0f);
    const float before = dbm[0];
    playTone(300, 0.01);
    EXPECT_NEAR(dbm[0], before - 20.0f, 0.01);
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

TEST_F(EngineToolsTest, OptionsWidgetAndManagerFindTheirSlots)
{
    for (const char *slot : {"setApf(quint32,bool)", "setDse(quint32,bool)", "setNrTaps(int)",
             "setNrDelay(int)", "setNrRate(double)", "setNrLeak(double)", "setAnfTaps(int)",
             "setAnfDelay(int)", "setAnfRate(double)", "setAnfLeak(double)", "setCwApfGain(int)",
             "setCwApfQuality(int)", "setSsbApfGain(int)", "setSsbApfQuality(double)",
             "setSsbApfFreq(int)", "setNb1Threshold(double)", "setNb2Threshold(double)",
             "setDseQuality(int)", "setDseSwap(bool)", "setWfmUsa(bool)"})
        EXPECT_GE(engine.metaObject()->indexOfSlot(slot), 0) << slot;
}

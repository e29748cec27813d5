// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReceiverRig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>

using DspCore::Modulation;
using DspCore::Receiver;

namespace
{
constexpr double kRate = 48000.0; // Hz, in and out: a receiver here hears the panorama itself
constexpr int kSecond = 48000;
constexpr int kTail = 9600; // audio samples judged, 0.2 s

std::vector<COMPLEX> scaled(std::vector<COMPLEX> stream, double gain)
{
    for (COMPLEX &sample : stream)
        sample = {gain * sample.re, gain * sample.im};
    return stream;
}

void setUp(Receiver &receiver, Modulation mode, double low, double high)
{
    receiver.setInputSampleRate(kRate);
    test::holdGain(receiver);
    receiver.setBandFilterIf(0, low, high);
    test::setMode(receiver, mode);
}

struct ToolCase
{
    const char *name;
    Modulation mode;
    void (*before)(Receiver &);
    void (*change)(Receiver &);
};

void nothing(Receiver &) { }
void nr(Receiver &r)
{
    r.setNr(true);
    r.setNrRate(0.001);
}
void anf(Receiver &r)
{
    r.setAnf(true);
}
void apf(Receiver &r)
{
    r.setApf(true);
}
void dse(Receiver &r)
{
    r.setDse(true);
}

/// What one channel alone gives at the line out and the speaker: the other is muted.
std::vector<COMPLEX> heardFrom(unsigned channel, const ToolCase &c, bool changed)
{
    Receiver receiver;
    setUp(receiver, c.mode, -1500.0, 3000.0);
    receiver.setEnableVfob(true);
    receiver.setMute(1 - channel, true);
    c.before(receiver);
    if (changed)
        c.change(receiver);
    auto stream = test::tone(3 * kSecond / 2, 900.0 / kRate, 0.02);
    test::add(stream, scaled(test::noise(3 * kSecond / 2, 4), 0.005));
    return test::last(test::feed(receiver, stream).audio, kTail);
}

class ReceiverToolTest : public testing::TestWithParam<ToolCase>
{ };

TEST_P(ReceiverToolTest, ActsOnBothChannelsAlike)
{
    constexpr double kRoundOff = 1e-12; // the muted channel's last trace
    constexpr double kHeard = 1e-4;     // of the level before
    const ToolCase &c = GetParam();
    const auto plain = heardFrom(0, c, false);
    const auto a = heardFrom(0, c, true);
    const auto b = heardFrom(1, c, true);
    EXPECT_LT(test::maxError(a, b), kRoundOff);
    EXPECT_GT(test::maxError(a, plain), kHeard * test::rms(plain));
}

INSTANTIATE_TEST_SUITE_P(Tools, ReceiverToolTest,
    testing::Values(ToolCase{"Nr", Modulation::USB, nothing, nr},
        ToolCase{"NrTaps", Modulation::AM, nr, [](Receiver &r) { r.setNrTaps(90); }},
        ToolCase{"NrDelay", Modulation::USB, nr, [](Receiver &r) { r.setNrDelay(20); }},
        ToolCase{"NrRate", Modulation::DSB, nr, [](Receiver &r) { r.setNrRate(0.01); }},
        ToolCase{"NrLeak", Modulation::USB, nr, [](Receiver &r) { r.setNrLeak(0.1); }},
        ToolCase{"Anf", Modulation::USB, nothing, anf},
        ToolCase{"AnfTaps", Modulation::CW, anf, [](Receiver &r) { r.setAnfTaps(90); }},
        ToolCase{"AnfDelay", Modulation::LSB, anf, [](Receiver &r) { r.setAnfDelay(20); }},
        ToolCase{"AnfRate", Modulation::SAM, anf, [](Receiver &r) { r.setAnfRate(0.01); }},
        ToolCase{"AnfLeak", Modulation::NFM, anf, [](Receiver &r) { r.setAnfLeak(0.1); }},
        ToolCase{"SsbApf", Modulation::LSB, nothing, apf},
        ToolCase{"SsbApfGain", Modulation::USB, apf, [](Receiver &r) { r.setSsbApfGain(6); }},
        ToolCase{
            "SsbApfQuality", Modulation::USB, apf, [](Receiver &r) { r.setSsbApfQuality(4.5); }},
        ToolCase{"SsbApfFreq", Modulation::USB, apf, [](Receiver &r) { r.setSsbApfFreq(900); }},
        ToolCase{"CwApf", Modulation::CW, nothing, apf},
        ToolCase{"CwApfGain", Modulation::CW, apf, [](Receiver &r) { r.setCwApfGain(6); }},
        ToolCase{"CwApfQuality", Modulation::CW, apf, [](Receiver &r) { r.setCwApfQuality(1); }},
        ToolCase{"CwTone", Modulation::CW, nothing, [](Receiver &r) { r.setCwTone(900); }},
        ToolCase{"CwToneOfTheApf", Modulation::CW, apf, [](Receiver &r) { r.setCwTone(900); }},
        ToolCase{"Dse", Modulation::CW, nothing, dse},
        ToolCase{"DseQuality", Modulation::CW, dse, [](Receiver &r) { r.setDseQuality(140); }},
        ToolCase{"DseSwap", Modulation::CW, dse, [](Receiver &r) { r.setDseSwap(true); }},
        ToolCase{"Equalizer", Modulation::DSB,
            [](Receiver &r) { r.setEqualizerGains(QVector<int>(18, 3)); },
            [](Receiver &r) { r.setEqualizerEnable(true); }},
        ToolCase{"EqualizerGains", Modulation::NFM, [](Receiver &r) { r.setEqualizerEnable(true); },
            [](Receiver &r) { r.setEqualizerGains(QVector<int>(18, 3)); }},
        ToolCase{"BinMono", Modulation::DSB, nothing, [](Receiver &r) { r.setBin(true); }},
        ToolCase{"BinComplex", Modulation::LSB, nothing, [](Receiver &r) { r.setBin(true); }},
        ToolCase{"AgcGain", Modulation::USB, nothing, [](Receiver &r) { r.setAgcGain(1, 10); }},
        ToolCase{"FixedGain", Modulation::USB,
            [](Receiver &r) { r.setAgcParam(false, 1.0, 600.0, 600.0); },
            [](Receiver &r) { r.setAgcGain(1, -20); }},
        ToolCase{"AgcParam", Modulation::USB, [](Receiver &r) { r.setAgcGain(0, 10); },
            [](Receiver &r) { r.setAgcParam(false, 1.0, 600.0, 600.0); }},
        ToolCase{"Ctcss", Modulation::NFM, nothing, [](Receiver &r) { r.setEnableCTCSS(true); }},
        ToolCase{"CtcssTone", Modulation::NFM, [](Receiver &r) { r.setSqlEnable(0, true); },
            [](Receiver &r) {
                r.setToneCTCSS(-1);
                r.setEnableCTCSS(true);
            }}),
    [](const auto &row) { return row.param.name; });

/// Level of a tone that is heard at `hz`; CW hears it `tone` above where it stands.
double toneLevel(Receiver &receiver, double hz, double tone = 0.0)
{
    const auto stream = test::tone(kSecond, (hz - tone) / kRate, 0.1);
    return test::level(test::last(test::feed(receiver, stream).audio, kTail), hz / kRate);
}

/// Gain in dB of an analog peak (s^2 + s v / q + 1) / (s^2 + s / q + 1) after the bilinear
/// transform, less its gain.
double peakDb(double hz, double centre, double quality, double gainDb)
{
    using Complex = std::complex<double>;
    const double v = std::pow(10.0, gainDb / 20.0);
    const Complex s(
        0.0, std::tan(std::numbers::pi * hz / kRate) / std::tan(std::numbers::pi * centre / kRate));
    return test::decibels(
        std::abs((s * s + s * v / quality + 1.0) / (s * s + s / quality + 1.0)) / v);
}

void expectPeak(Receiver &receiver, double centre, double quality, double gainDb, double tone = 0.0)
{
    constexpr double kStartUp = 0.02; // dB, remains of the volume fade
    for (const double hz : {300.0, 500.0, 700.0, 1200.0, 2400.0}) {
        receiver.setApf(false);
        const double plain = toneLevel(receiver, hz, tone);
        receiver.setApf(true);
        EXPECT_NEAR(test::decibels(toneLevel(receiver, hz, tone) / plain),
            peakDb(hz, centre, quality, gainDb), kStartUp)
            << hz;
    }
}

TEST(ReceiverToolsTest, PeakFilterLowersAllButItsCentreAtAnyRate)
{
    Receiver receiver;
    setUp(receiver, Modulation::USB, 100.0, 3500.0);
    expectPeak(receiver, 500.0, 1.0, 20.0);
    receiver.setOutputSampleRate(96000.0);
    receiver.setSsbApfFreq(1200);
    receiver.setSsbApfGain(10);
    receiver.setSsbApfQuality(2.5);
    receiver.setOutputSampleRate(kRate);
    expectPeak(receiver, 1200.0, 2.5, 10.0);
}

TEST(ReceiverToolsTest, CwPeakFilterStandsAtTheTone)
{
    Receiver receiver;
    setUp(receiver, Modulation::CW, -2500.0, 2500.0);
    expectPeak(receiver, 700.0, 6.0, 30.0, 700.0);
    receiver.setOutputSampleRate(96000.0);
    receiver.setCwTone(500);
    receiver.setCwApfGain(12);
    receiver.setCwApfQuality(2);
    receiver.setOutputSampleRate(kRate);
    expectPeak(receiver, 500.0, 2.0, 12.0, 500.0);
}

TEST(ReceiverToolsTest, EqualizerLiftsItsBandsOfTheAudio)
{
    constexpr double kStartUp = 0.02; // dB, remains of the volume fade
    Receiver receiver;
    setUp(receiver, Modulation::USB, 100.0, 6000.0);
    receiver.setOutputSampleRate(96000.0);
    receiver.setOutputSampleRate(kRate);
    const double plain = toneLevel(receiver, 1000.0);
    const double far = toneLevel(receiver, 4000.0);
    QVector<int> gains(18, 0);
    gains[9] = 12; // 1 kHz
    receiver.setEqualizerGains(gains);
    EXPECT_NEAR(test::decibels(toneLevel(receiver, 1000.0) / plain), 0.0, kStartUp) << "off";
    receiver.setEqualizerEnable(true);
    receiver.setEqualizerGains(QVector<int>(17, -12)); // one too few: ignored
    EXPECT_NEAR(test::decibels(toneLevel(receiver, 1000.0) / plain), 12.0, kStartUp);
    EXPECT_NEAR(test::decibels(toneLevel(receiver, 4000.0) / far),
        peakDb(4000.0, 1000.0, 2.0, 12.0) + 12.0, kStartUp);
}

TEST(ReceiverToolsTest, AutoNotchTakesToneAndNoiseReductionTakesNoise)
{
    const auto levels = [](void (*tool)(Receiver &)) {
        Receiver receiver;
        setUp(receiver, Modulation::USB, 200.0, 3500.0);
        tool(receiver);
        auto stream = test::tone(4 * kSecond, 1000.0 / kRate, 0.1);
        test::add(stream, scaled(test::noise(4 * kSecond, 4), 0.1));
        const auto audio = test::last(test::feed(receiver, stream).audio, kTail);
        double noisePower =
            0.0; // apart from the tone, where a slow change of its level is not noise
        for (double hz = 1500.0; hz < 3300.0; hz += 50.0)
            noisePower += std::pow(test::level(audio, hz / kRate), 2);
        return std::pair{test::level(audio, 1000.0 / kRate), std::sqrt(noisePower)};
    };
    const auto [tone, noise] = levels(nothing);
    const auto [notchedTone, remainingNoise] = levels([](Receiver &r) {
        r.setAnf(true);
        r.setAnfRate(0.005);
    });
    EXPECT_LT(test::decibels(notchedTone / tone), -20.0);
    EXPECT_GT(test::decibels(remainingNoise / noise), -3.0);
    const auto [keptTone, reducedNoise] = levels([](Receiver &r) {
        nr(r);
        r.setNrTaps(250);
    });
    EXPECT_LT(test::decibels((reducedNoise / keptTone) / (noise / tone)), -6.0);
}

TEST(ReceiverToolsTest, AudioToolsStandInTheirOrderWithTheirFirstSettings)
{
    auto stream = test::tone(kSecond, 900.0 / kRate, 0.1);
    test::add(stream, scaled(test::noise(kSecond, 4), 0.05));
    const auto vacOf = [&](Modulation mode, bool tools) {
        Receiver receiver;
        setUp(receiver, mode, -1500.0, 3000.0);
        if (tools)
            test::switchToolsOn(receiver);
        return test::feed(receiver, stream).vac;
    };
    DspCore::AutoNotchFilter notch;
    notch.setTaps(60);
    notch.setDelay(64);
    notch.setRate(0.0007);
    notch.setLeak(1e-05);
    notch.setEnable(true);
    DspCore::NoiseReduction reduction;
    reduction.setTaps(45);
    reduction.setDelay(45);
    reduction.setRate(1e-05);
    reduction.setLeak(0.0001);
    reduction.setEnable(true);
    DspCore::Equalizer18 equalizer;
    equalizer.setSampleRate(kRate);
    equalizer.init(QVector<int>(18, 6));
    equalizer.setEnable(true);
    auto expected = vacOf(Modulation::DSB, false);
    for (std::size_t at = 0; at < expected.size(); at += 512) {
        const int length = int(std::min<std::size_t>(512, expected.size() - at));
        notch.process(&expected[at], length);
        reduction.process(&expected[at], length);
        equalizer.process(&expected[at], unsigned(length));
    }
    constexpr double kRoundOff = 1e-12;
    EXPECT_LT(test::maxError(vacOf(Modulation::DSB, true), expected), kRoundOff);
    for (const Modulation mode : {Modulation::DIGL, Modulation::DIGU, Modulation::DRM})
        EXPECT_EQ(vacOf(mode, true), vacOf(mode, false)) << "digital modes pass all tools by";
}

TEST(ReceiverToolsTest, DsePartsTheEarsAtTheCwTone)
{
    const auto ears = [](double hz, bool swap, int tone) {
        Receiver receiver;
        setUp(receiver, Modulation::CW, -2000.0, 2000.0);
        receiver.setDse(true);
        receiver.setDseSwap(swap);
        receiver.setCwTone(tone);
        const auto audio = test::last(
            test::feed(receiver, test::tone(kSecond, (hz - tone) / kRate, 0.1)).audio, kTail);
        return std::pair{test::ear(audio, &COMPLEX::re), test::ear(audio, &COMPLEX::im)};
    };
    struct Row
    {
        int tone;
        double hz;
        bool below;
    };
    for (const Row &row :
        {Row{700, 250.0, true}, Row{700, 1150.0, false}, Row{1500, 1050.0, true}}) {
        const auto [left, right] = ears(row.hz, false, row.tone);
        const double balance = test::decibels(test::rms(left) / test::rms(right));
        EXPECT_GT(row.below ? balance : -balance, 3.0) << row.tone << " " << row.hz;
        const auto [swappedLeft, swappedRight] = ears(row.hz, true, row.tone);
        EXPECT_EQ(left, swappedRight);
        EXPECT_EQ(right, swappedLeft);
    }
}

TEST(ReceiverToolsTest, BinauralDelaysOneEarOfMonoAndStartsEmpty)
{
    constexpr int kDelay = 480; // 10 ms at the first rate, whatever comes after
    for (const double rate : {kRate, 96000.0}) {
        Receiver receiver;
        setUp(receiver, Modulation::DSB, -4000.0, 4000.0);
        receiver.setOutputSampleRate(rate);
        receiver.setBin(true);
        const auto noise = scaled(test::noise(2 * kSecond, 3), 0.1);
        const auto line = test::feed(receiver, noise).lineout;
        for (std::size_t i = line.size() - kTail; i < line.size(); ++i)
            ASSERT_EQ(line[i].im, line[i - kDelay].re) << i;
        receiver.setBin(false);
        const auto mono = test::feed(receiver, noise).lineout;
        EXPECT_EQ(test::ear(mono, &COMPLEX::re), test::ear(mono, &COMPLEX::im));
        receiver.setBin(true);
        const auto again = test::feed(receiver, noise).lineout;
        EXPECT_EQ(test::rms(test::ear({again.begin(), again.begin() + kDelay}, &COMPLEX::im)), 0.0);
        EXPECT_GT(std::abs(again[kDelay].im), 0.0);
    }
}

TEST(ReceiverToolsTest, BinauralHandsOutTheComplexSignalOfSidebandAndCw)
{
    for (const auto &[mode, pitch] : {std::pair{Modulation::USB, 1000.0},
             std::pair{Modulation::LSB, 1000.0}, std::pair{Modulation::CW, 1700.0}}) {
        Receiver receiver;
        setUp(receiver, mode, -3000.0, 3000.0);
        receiver.setDse(true); // binaural comes first
        receiver.setBin(true);
        // The swap of the parts of LSB turns the station below to a positive pitch.
        const double hz = mode == Modulation::LSB ? -1000.0 : 1000.0;
        const auto audio =
            test::last(test::feed(receiver, test::tone(kSecond, hz / kRate, 0.1)).audio, kTail);
        EXPECT_NEAR(test::level(audio, pitch / kRate) / test::rms(audio), 1.0, 1e-3) << int(mode);
    }
}

TEST(ReceiverToolsTest, SquelchFollowsTheLevelOneBlockLate)
{
    constexpr int kThreshold = -60;
    constexpr double kMutedChannel = 1e-30; // what a float ramp to zero leaves of the other one
    for (unsigned channel : {0u, 1u}) {
        Receiver receiver;
        setUp(receiver, Modulation::USB, 200.0, 3500.0);
        receiver.setAgcParam(false, 1.0, 600.0, 600.0); // without a delay of its own
        receiver.setEnableVfob(true);
        receiver.setMute(1 - channel, true);
        test::feed(receiver, scaled(test::noise(kSecond, 1), 0.1));
        receiver.setSqlEnable(channel, true);
        receiver.setSqlEnable(2, true);
        const auto first = test::feed(receiver, scaled(test::noise(512, 1), 0.1));
        EXPECT_GT(test::rms(first.audio), kMutedChannel) << "open before a threshold is set";
        receiver.setSqlValue(channel, kThreshold);
        receiver.setSqlValue(1 - channel, 0); // not enabled
        int silences = 0;
        int changes = 0;
        bool wasOpen = true;
        double before[2];
        receiver.getDbm(0, before[0], before[1]);
        for (int block = 0; block < 400; ++block) {
            const double gain = block / 100 % 2 == 0 ? 1e-5 : 0.1;
            const auto heard =
                test::feed(receiver, scaled(test::noise(512, unsigned(block)), gain));
            const bool open = before[channel] + 3.0 >= kThreshold;
            EXPECT_EQ(test::rms(heard.audio) > kMutedChannel, open) << block;
            silences += !open;
            changes += open != wasOpen;
            wasOpen = open;
            receiver.getDbm(0, before[0], before[1]);
        }
        EXPECT_GT(silences, 100);
        EXPECT_EQ(changes, 4);
    }
}

TEST(ReceiverToolsTest, MetersFollowTheInputOverAHundredDecibels)
{
    constexpr double kMeterError = 0.2; // dB
    for (const Modulation mode : {Modulation::AM, Modulation::USB}) {
        double reference = 0.0;
        for (int db = 0; db >= -110; db -= 10) {
            Receiver receiver;
            setUp(receiver, mode, 200.0, 3500.0);
            const double amplitude = 0.5 * std::pow(10.0, db / 20.0);
            test::feed(receiver, test::tone(3 * kSecond, 1500.0 / kRate, amplitude));
            double a = 0.0;
            double b = 0.0;
            receiver.getAdc(0, a, b);
            EXPECT_NEAR(a, test::decibels(amplitude / std::numbers::sqrt2), 0.01);
            EXPECT_NEAR(b, a, 0.01);
            receiver.getDbm(0, a, b);
            EXPECT_EQ(a, b);
            if (db == 0)
                reference = a;
            EXPECT_NEAR(a - reference, db, kMeterError);
        }
    }
}

TEST(ReceiverToolsTest, ChannelMeterReadsThePowerAfterItsOwnBandFilter)
{
    Receiver receiver;
    setUp(receiver, Modulation::DRM, -2000.0, 2000.0);
    receiver.setDownConverter(1, 12000.0);
    auto stream = test::tone(3 * kSecond, 1000.0 / kRate, 0.1);
    test::add(stream, test::tone(3 * kSecond, 13000.0 / kRate, 0.01));
    const auto vac = test::last(test::feed(receiver, stream).vac, kTail);
    double a = 0.0;
    double b = 0.0;
    receiver.getDbm(0, a, b);
    EXPECT_NEAR(a, test::decibels(test::rms(vac)) - 10.0, 0.01);
    EXPECT_NEAR(b, a - 20.0, 0.01);
}

/// Where a fade through silence ends: the first line-out sample after the empty look-ahead.
std::size_t fadeBottom(const std::vector<COMPLEX> &line)
{
    std::size_t at = 1;
    while (at < line.size()
        && !(test::magnitude(line[at - 1]) == 0.0 && test::magnitude(line[at]) > 0.0))
        ++at;
    return at;
}

TEST(ReceiverToolsTest, TheGainLivesThroughAFade)
{
    constexpr double kPole = 0.9982947888607377; // of the fade, per sample
    Receiver receiver;
    setUp(receiver, Modulation::DRM, -2000.0, 2000.0);
    receiver.setAgcGain(0, 120);
    const auto stream = test::tone(12 * kSecond, 500.0 / kRate, 1e-3);
    test::feed(receiver, stream); // the gain is up: 60 dB
    receiver.setAgcParam(true, 1.0, 600.0, 600.0);
    const auto line = test::feed(receiver, {stream.begin(), stream.begin() + 2 * kSecond}).lineout;
    const std::size_t at = fadeBottom(line);
    ASSERT_LT(at + 3000, line.size());
    EXPECT_NEAR(
        test::magnitude(line[at + 2500]), 1.0 - std::pow(kPole, double(at % 512 + 2500)), 0.1);
}

/// Narrow FM with the tone of index 0 on it.
std::vector<COMPLEX> toneStation(int length)
{
    std::vector<COMPLEX> stream(std::size_t(length), COMPLEX{});
    for (std::size_t n = 0; n < stream.size(); ++n) {
        const double t = double(n) / kRate;
        const auto sample = std::polar(0.1,
            3.0 * std::sin(2.0 * std::numbers::pi * 67.0 * t)
                + 0.5 * std::sin(2.0 * std::numbers::pi * 900.0 * t));
        stream[n] = {sample.real(), sample.imag()};
    }
    return stream;
}

TEST(ReceiverToolsTest, ToneSquelchKeepsItsLockThroughClearAndBeginsAnewInAFade)
{
    constexpr double kMute = 1e-6; // a muted block is 160 dB down
    const auto mutedBlocks = [](const std::vector<COMPLEX> &vac) {
        int muted = 0;
        for (auto at = vac.begin(); vac.end() - at >= 512; at += 512)
            muted += test::rms({at, at + 512}) < kMute;
        return muted;
    };
    Receiver receiver;
    setUp(receiver, Modulation::NFM, -5000.0, 5000.0);
    receiver.setEnableCTCSS(true);
    receiver.setToneCTCSS(0);
    const auto stream = toneStation(3 * kSecond);
    const auto first = test::feed(receiver, stream).vac;
    const int toFind = mutedBlocks(first);
    EXPECT_GT(toFind * 512, kSecond / 10);
    EXPECT_GT(test::rms(test::last(first, kTail)), 1e-3);

    receiver.clear();
    const auto kept = test::feed(receiver, {stream.begin(), stream.begin() + kSecond}).vac;
    EXPECT_GT(test::rms({kept.begin() + 2000, kept.begin() + 4000}), 1e-3);

    receiver.setAgcParam(true, 1.0, 600.0, 600.0);
    const auto faded = test::feed(receiver, stream).vac;
    constexpr int kStart = 15; // blocks, of the 41 that a kept history would save
    EXPECT_NEAR(mutedBlocks(faded), toFind, kStart);
    EXPECT_GT(test::rms(test::last(faded, kTail)), 1e-3);
}

TEST(ReceiverToolsTest, NarrowFmIsSquelchedByItsOwnSquelchAlone)
{
    Receiver receiver;
    setUp(receiver, Modulation::NFM, -5000.0, 5000.0);
    const auto stream = toneStation(kSecond);
    receiver.setSqlEnable(0, true); // open before a threshold is set
    const double open = test::rms(test::last(test::feed(receiver, stream).lineout, kTail));
    receiver.setSqlValue(0, 0);
    const double muted = test::rms(test::last(test::feed(receiver, stream).lineout, kTail));
    EXPECT_NEAR(test::decibels(muted / open), -160.0, 1.0); // weak, and not zero
}

TEST(ReceiverToolsTest, AudioNeverLeavesFullScale)
{
    Receiver receiver;
    setUp(receiver, Modulation::USB, 200.0, 3500.0);
    receiver.setAgcParam(false, 1.0, 600.0, 600.0);
    receiver.setAgcGain(0, 60);
    const auto audio = test::last(test::feed(receiver, test::noise(2 * kSecond, 3)).audio, kTail);
    double largest = 0.0;
    for (const COMPLEX &pair : audio)
        largest = std::max({largest, std::abs(pair.re), std::abs(pair.im)});
    EXPECT_EQ(largest, 1.0);
}
} // namespace

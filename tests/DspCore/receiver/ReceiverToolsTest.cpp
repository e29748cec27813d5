// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReceiverRig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>

using DspCore::Modulation;
using DspCore::Receiver;

namespace
{
constexpr double kRate = 48000.0; // Hz of the input: a receiver here hears the panorama itself
constexpr int kSecond = 48000;
constexpr int kTail = 9600; // audio samples judged, 0.2 s
constexpr int kBlock = 512;
constexpr double kRoundOff = 1e-10; // tools whose recursions run through a second of samples

void setUp(Receiver &receiver, Modulation mode, double low, double high)
{
    receiver.setInputSampleRate(kRate);
    test::holdGain(receiver);
    receiver.setBandFilterIf(0, low, high);
    test::setMode(receiver, mode);
}

struct Predictor
{
    int taps, delay;
    double rate, leak;
};

struct PeakFilter
{
    int hz;
    double quality;
    int gainDb;
};

/// The settings that a receiver starts with, but for the equalizer's.
struct Tools
{
    Predictor anf{60, 64, 0.0007, 1e-05};
    Predictor nr{45, 45, 1e-05, 0.0001};
    PeakFilter ssb{500, 1.0, 20};
    PeakFilter cw{700, 6.0, 30}; // at the CW tone
    int dseTaps = 200;
    bool dseSwap = false;
    QVector<int> gains = QVector<int>(18, 6);
};

const Tools kFirst;
const Tools kOther{{77, 33, 0.01, 0.02}, {90, 20, 0.001, 0.1}, {900, 4.5, 6}, {1100, 3.0, 12}, 140,
    true, {3, 0, 0, 0, 0, 0, 0, 0, 0, 12, 0, 0, 0, 0, 0, 0, 0, -6}};

void setOther(Receiver &r)
{
    r.setAnfTaps(kOther.anf.taps);
    r.setAnfDelay(kOther.anf.delay);
    r.setAnfRate(kOther.anf.rate);
    r.setAnfLeak(kOther.anf.leak);
    r.setNrTaps(kOther.nr.taps);
    r.setNrDelay(kOther.nr.delay);
    r.setNrRate(kOther.nr.rate);
    r.setNrLeak(kOther.nr.leak);
    r.setSsbApfFreq(kOther.ssb.hz);
    r.setSsbApfQuality(kOther.ssb.quality);
    r.setSsbApfGain(kOther.ssb.gainDb);
    r.setCwTone(kOther.cw.hz);
    r.setCwApfQuality(int(kOther.cw.quality));
    r.setCwApfGain(kOther.cw.gainDb);
    r.setDseQuality(kOther.dseTaps);
    r.setDseSwap(kOther.dseSwap);
    r.setEqualizerGains(kOther.gains);
    r.setEqualizerGains(QVector<int>(17, -12)); // one too few: ignored
}

template <typename Tool>
void set(Tool &tool, const Predictor &setting)
{
    tool.setTaps(setting.taps);
    tool.setDelay(setting.delay);
    tool.setRate(setting.rate);
    tool.setLeak(setting.leak);
    tool.setEnable(true);
}

/// What the tools make of a demodulated signal, in their order.
std::vector<COMPLEX> worked(
    std::vector<COMPLEX> audio, const Tools &tools, Modulation mode, double rate)
{
    const PeakFilter &peak = mode == Modulation::CW ? tools.cw : tools.ssb;
    DspCore::Apf apf;
    apf.init(peak.hz / rate, peak.quality, peak.gainDb);
    apf.setEnable(mode == Modulation::CW || mode == Modulation::LSB || mode == Modulation::USB);
    DspCore::AutoNotchFilter anf;
    set(anf, tools.anf);
    DspCore::NoiseReduction nr;
    set(nr, tools.nr);
    DspCore::Equalizer18 equalizer;
    equalizer.setSampleRate(rate);
    equalizer.init(tools.gains);
    equalizer.setEnable(true);
    const int block = kBlock * int(rate / kRate); // the noise reduction's gain goes by blocks
    for (std::size_t at = 0; at < audio.size(); at += std::size_t(block)) {
        const int length = std::min(block, int(audio.size() - at));
        apf.process(&audio[at], length);
        anf.process(&audio[at], length);
        nr.process(&audio[at], length);
        equalizer.process(&audio[at], unsigned(length));
    }
    return audio;
}

/// Line-out of CW: the signal after the gain control's delay, its ears parted at the tone.
std::vector<COMPLEX> parted(const std::vector<COMPLEX> &vac, const Tools &tools, double rate)
{
    std::vector<COMPLEX> line(std::size_t(0.03 * rate) - 1, COMPLEX{});
    test::append(line, vac);
    line.resize(vac.size());
    DspCore::Dse dse;
    dse.setSampleRate(rate);
    dse.setTaps(tools.dseTaps);
    dse.setPitch(tools.cw.hz);
    dse.setSwap(tools.dseSwap);
    dse.setEnable(true);
    for (std::size_t at = 0; at < line.size(); at += kBlock)
        dse.process(&line[at], std::min(kBlock, int(line.size() - at)));
    return line;
}

TEST(ReceiverToolsTest, StandInTheirOrderWithTheirSettingsAtAnyRate)
{
    auto stream = test::tone(kSecond / 2, 900.0 / kRate, 0.1);
    test::add(stream, test::scaled(test::noise(kSecond / 2, 4), 0.05));
    const auto hear = [&](Modulation mode, double rate, bool other, bool on) {
        Receiver receiver;
        receiver.setOutputSampleRate(rate);
        setUp(receiver, mode, -1500.0, 3000.0);
        if (on)
            test::switchToolsOn(receiver);
        if (other)
            setOther(receiver);
        return test::feed(receiver, stream, kBlock);
    };
    for (const double rate : {kRate, 2 * kRate}) {
        for (const bool other : {false, true}) {
            const Tools &tools = other ? kOther : kFirst;
            for (const Modulation mode :
                {Modulation::DSB, Modulation::USB, Modulation::LSB, Modulation::CW}) {
                const auto vac = hear(mode, rate, other, false).vac;
                const auto heard = hear(mode, rate, other, true);
                EXPECT_LT(test::maxError(heard.vac, worked(vac, tools, mode, rate)), kRoundOff)
                    << int(mode) << " " << rate << " " << other;
                if (mode == Modulation::CW) {
                    const auto line = parted(heard.vac, tools, rate);
                    EXPECT_LT(test::maxError(heard.lineout, line), kRoundOff) << rate << other;
                }
            }
            for (const Modulation mode : {Modulation::DIGL, Modulation::DIGU, Modulation::DRM})
                EXPECT_EQ(
                    hear(mode, rate, other, true).lineout, hear(mode, rate, other, false).lineout)
                    << "digital modes pass all tools by";
        }
    }
}

TEST(ReceiverToolsTest, BinauralDelaysOneEarOfMono)
{
    constexpr int kDelay = 480; // 10 ms at the first rate, whatever comes after
    for (const double rate : {kRate, 2 * kRate}) {
        Receiver receiver;
        setUp(receiver, Modulation::DSB, -4000.0, 4000.0);
        receiver.setOutputSampleRate(rate);
        receiver.setBin(true);
        const auto noise = test::scaled(test::noise(kSecond, 3), 0.1);
        const auto line = test::feed(receiver, noise).lineout;
        for (std::size_t i = line.size() - kTail; i < line.size(); ++i)
            ASSERT_EQ(line[i].im, line[i - kDelay].re) << i;
    }
}

TEST(ReceiverToolsTest, SquelchFollowsTheLevelOneBlockLate)
{
    constexpr int kThreshold = -60;
    constexpr double kMutedChannel = 1e-30; // what a float ramp to zero leaves of the other one
    for (const unsigned channel : {0u, 1u}) {
        Receiver receiver;
        setUp(receiver, Modulation::USB, 200.0, 3500.0);
        receiver.setAgcParam(false, 1.0, 600.0, 600.0); // without a delay of its own
        receiver.setEnableVfob(true);
        receiver.setMute(1 - channel, true);
        receiver.setSqlEnable(channel, true);
        test::feed(receiver, test::scaled(test::noise(kSecond, 1), 0.1));
        const auto first = test::feed(receiver, test::scaled(test::noise(kBlock, 1), 0.1));
        EXPECT_GT(test::rms(first.audio), kMutedChannel) << "open before a threshold is set";
        receiver.setSqlValue(channel, kThreshold);
        receiver.setSqlValue(1 - channel, 0); // not enabled
        int opened = 0;
        for (int block = 0; block < 400; ++block) {
            double before[2];
            receiver.getDbm(0, before[0], before[1]);
            const double gain = block / 100 % 2 == 0 ? 1e-5 : 0.1;
            const auto heard =
                test::feed(receiver, test::scaled(test::noise(kBlock, unsigned(block)), gain));
            const bool open = before[channel] + 3.0 >= kThreshold;
            EXPECT_EQ(test::rms(heard.audio) > kMutedChannel, open) << block;
            opened += open;
        }
        EXPECT_TRUE(opened > 100 && opened < 300) << opened;
    }
}

TEST(ReceiverToolsTest, NarrowFmIsSquelchedByItsOwnSquelchAndByItsTone)
{
    constexpr double kMute = 1e-6; // a muted block is 160 dB down: weak, and not zero
    constexpr double kHeard = 1e-3;
    std::vector<COMPLEX> stream(3 * kSecond, COMPLEX{}); // with the tone of index 0
    for (std::size_t n = 0; n < stream.size(); ++n) {
        const double t = 2.0 * std::numbers::pi * double(n) / kRate;
        const auto sample = std::polar(0.1, 3.0 * std::sin(67.0 * t) + 0.5 * std::sin(900.0 * t));
        stream[n] = {sample.real(), sample.imag()};
    }
    Receiver receiver;
    setUp(receiver, Modulation::NFM, -5000.0, 5000.0);
    const auto tail = [&] {
        return test::rms(test::last(test::feed(receiver, stream).lineout, kTail));
    };
    receiver.setSqlEnable(0, true); // open before a threshold is set
    const double open = tail();
    receiver.setSqlValue(0, 0);
    EXPECT_NEAR(test::decibels(tail() / open), -160.0, 1.0);

    receiver.setSqlValue(0, -130);
    receiver.setEnableCTCSS(true);
    receiver.setToneCTCSS(-1); // counts as 0
    EXPECT_GT(tail(), kHeard);
    receiver.clear(); // keeps the lock
    const auto line = test::feed(receiver, {stream.begin(), stream.begin() + kSecond}).lineout;
    EXPECT_GT(test::rms({line.begin() + 2000, line.begin() + 4000}), kHeard);
    receiver.setToneCTCSS(5);
    EXPECT_LT(tail(), kMute);
}
} // namespace

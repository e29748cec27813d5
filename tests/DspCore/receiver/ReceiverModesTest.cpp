// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReceiverRig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <functional>
#include <utility>

using DspCore::Modulation;
using DspCore::Receiver;

namespace
{
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kRate = 48000.0;    // Hz, audio
constexpr double kTuned = 30000.0;   // Hz from the middle of the panorama
constexpr int kTail = 9600;          // audio samples judged, 0.2 s
constexpr double kInRate = 192000.0; // Hz

/// A station at `hz`: envelope(t) at phase angle(t), t in seconds.
std::vector<COMPLEX> station(double seconds, double rate, double hz,
    const std::function<double(double)> &envelope, const std::function<double(double)> &angle)
{
    std::vector<COMPLEX> stream(std::size_t(seconds * rate));
    for (std::size_t n = 0; n < stream.size(); ++n) {
        const double t = double(n) / rate;
        const auto sample = std::polar(envelope(t), kTwoPi * hz * t + angle(t));
        stream[n] = {sample.real(), sample.imag()};
    }
    return stream;
}

std::vector<COMPLEX> amStation(double offset, double depth)
{
    return station(
        1.5, kInRate, kTuned + offset,
        [depth](double t) { return 0.1 * (1.0 + depth * std::sin(kTwoPi * 1000.0 * t)); },
        [](double) { return 0.0; });
}

/// Peak phase deviation is deviation / tone.
std::vector<COMPLEX> fmStation(double offset, double level)
{
    constexpr double kTone = 300.0;
    constexpr double kDeviation = 500.0;
    return station(
        1.5, kInRate, kTuned + offset, [level](double) { return level; },
        [](double t) { return kDeviation / kTone * std::sin(kTwoPi * kTone * t); });
}

std::vector<COMPLEX> carrier(double offset)
{
    return station(
        1.5, kInRate, kTuned + offset, [](double) { return 0.1; }, [](double) { return 0.0; });
}

struct Mode
{
    Modulation mode;
    double band; // Hz, both edges
    std::vector<COMPLEX> signal;
    void (*set)(Receiver &);
};

std::vector<COMPLEX> audioOf(const Mode &c)
{
    Receiver receiver;
    test::holdGain(receiver);
    test::setMode(receiver, c.mode);
    receiver.setBandFilterIf(0, -c.band, c.band);
    receiver.setDownConverter(0, kTuned);
    if (c.set)
        c.set(receiver);
    return test::last(test::feed(receiver, c.signal).audio, kTail);
}

/// Amplitude of a pure tone in both ears alike; the rest of the audio is judged here.
double pureTone(const std::vector<COMPLEX> &audio, double hz)
{
    constexpr double kDistortion = 0.03; // the phase loops' own, the largest
    const double left = test::level(test::ear(audio, &COMPLEX::re), hz / kRate);
    EXPECT_EQ(test::ear(audio, &COMPLEX::re), test::ear(audio, &COMPLEX::im));
    EXPECT_NEAR(2.0 * left / test::rms(audio), 1.0, kDistortion) << hz;
    return 2.0 * left;
}

TEST(ReceiverModesTest, AmplitudeModulationIsHeardInProportion)
{
    for (const auto &[mode, offset] :
        {std::pair{Modulation::AM, 0.0}, std::pair{Modulation::SAM, 0.0},
            std::pair{Modulation::SAM, 15.0}}) { // the loop follows the carrier
        const double half = pureTone(audioOf({mode, 4000, amStation(offset, 0.5), {}}), 1000);
        const double fifth = pureTone(audioOf({mode, 4000, amStation(offset, 0.2), {}}), 1000);
        EXPECT_NEAR(half / fifth, 2.5, 0.02) << int(mode) << " " << offset;
        EXPECT_GT(half, 0.01);
    }
}

TEST(ReceiverModesTest, NarrowFmGivesTheDeviationWhateverTheLevelAndTheTuningError)
{
    // Loop frequency over its scale, 0.45 / pi of 6250 Hz, times 4 after the demodulator and 0.7
    // in front of the volume; a critically damped loop of 937.5 Hz follows 300 Hz that far.
    constexpr double kTuned = 500.0 * 2.0 * 0.45 / 6250.0 * 4.0 * 0.7;
    const double expected = kTuned / (1.0 + std::pow(300.0 / 937.5, 2));
    constexpr double kArctangent = 0.02; // relative, of the approximation that closes the loop
    for (const auto &[offset, level] :
        {std::pair{0.0, 0.1}, std::pair{150.0, 0.1}, std::pair{0.0, 1e-4}}) {
        const double heard =
            pureTone(audioOf({Modulation::NFM, 6000, fmStation(offset, level), {}}), 300);
        EXPECT_NEAR(heard / expected, 1.0, kArctangent) << offset << " " << level;
    }
}

TEST(ReceiverModesTest, CwIsHeardAtItsTone)
{
    pureTone(audioOf({Modulation::CW, 300, carrier(50.0), {}}), 750);
    pureTone(
        audioOf({Modulation::CW, 300, carrier(50.0), [](Receiver &r) { r.setCwTone(600); }}), 650);
    // At 96 kHz the tone is half as many cycles per sample.
    pureTone(audioOf({Modulation::CW, 300, carrier(-50.0),
                 [](Receiver &r) { r.setOutputSampleRate(2.0 * kRate); }}),
        650 / 2.0);
}

/// A broadcast station that is heard left only, with or without a pilot; 1 kHz at 30 % deviation.
std::vector<COMPLEX> broadcast(double seconds, double rate, double pilot)
{
    double phase = 0.0;
    std::vector<COMPLEX> stream(std::size_t(seconds * rate));
    for (std::size_t n = 0; n < stream.size(); ++n) {
        const double t = double(n) / rate;
        const double pilotAngle = kTwoPi * 19000.0 * t;
        const double left = 0.3 * std::sin(kTwoPi * 1000.0 * t);
        const double multiplex =
            left / 2.0 + pilot * std::sin(pilotAngle) + left / 2.0 * std::sin(2.0 * pilotAngle);
        phase += kTwoPi * 75000.0 / rate * multiplex;
        const auto sample = std::polar(0.2, phase + kTwoPi * rate / 16.0 * t);
        stream[n] = {sample.real(), sample.imag()};
    }
    return stream;
}

/// 1 kHz in the left and in the right ear.
std::pair<double, double> ears(Receiver &receiver, const std::vector<COMPLEX> &stream)
{
    const auto audio = test::last(test::feed(receiver, stream).audio, kTail);
    return {test::level(test::ear(audio, &COMPLEX::re), 1000.0 / kRate),
        test::level(test::ear(audio, &COMPLEX::im), 1000.0 / kRate)};
}

TEST(ReceiverModesTest, WideFmIsHeardInStereoWhereAPilotIs)
{
    constexpr double kSeparationDb = 25.0;
    constexpr double kSame = 1e-9;
    for (const double rate : {192000.0, 1536000.0, 2560000.0}) {
        Receiver receiver;
        receiver.setInputSampleRate(rate);
        receiver.setBandFilterIf(0, -90000, 90000);
        receiver.setDownConverter(0, rate / 16.0);
        test::setMode(receiver, Modulation::WFM);
        const auto stereo = broadcast(1.2, rate, 0.09);

        const auto [left, right] = ears(receiver, stereo);
        EXPECT_TRUE(receiver.wfmIsStereo()) << rate;
        EXPECT_GT(left, 0.02) << rate;
        EXPECT_LT(test::decibels(right / left), -kSeparationDb) << rate;

        receiver.setWfmStereo(false);
        const auto [monoLeft, monoRight] = ears(receiver, stereo);
        EXPECT_FALSE(receiver.wfmIsStereo()) << rate;
        EXPECT_NEAR(monoLeft, monoRight, kSame);
        EXPECT_NEAR(monoLeft / left, 0.5, 0.05) << rate;
        double a = 0.0;
        double b = 0.0;
        receiver.getDbm(0, a, b);
        EXPECT_GT(a, -30.0) << rate;
        EXPECT_EQ(b, -120.0) << "channel B stands still";
    }
}

TEST(ReceiverModesTest, WideFmWithoutAPilotIsMonoAndARateChangeBringsStereoBack)
{
    Receiver receiver;
    receiver.setBandFilterIf(0, -90000, 90000);
    receiver.setDownConverter(0, kInRate / 16.0);
    test::setMode(receiver, Modulation::WFM);
    const auto [left, right] = ears(receiver, broadcast(0.8, kInRate, 0.0));
    EXPECT_FALSE(receiver.wfmIsStereo());
    EXPECT_EQ(left, right);

    QVector<int> gains(18, 0);
    gains[9] = 12; // 1 kHz
    receiver.setEqualizerGains(gains);
    receiver.setEqualizerEnable(true);
    EXPECT_NEAR(
        test::decibels(ears(receiver, broadcast(0.8, kInRate, 0.0)).first / left), 12.0, 0.1);
    receiver.setEqualizerEnable(false);

    receiver.setWfmStereo(false);
    for (const double rate : {96000.0, kInRate})
        receiver.setInputSampleRate(rate);
    receiver.setDownConverter(0, kInRate / 16.0);
    ears(receiver, broadcast(0.8, kInRate, 0.09));
    EXPECT_TRUE(receiver.wfmIsStereo());

    // What was seen last stays on display in the other modes.
    test::setMode(receiver, Modulation::AM);
    test::feed(receiver, test::noise(4096, 1));
    EXPECT_TRUE(receiver.wfmIsStereo());
}

/// An input slower than the audio cannot hold a broadcast station; nothing comes and nothing
/// breaks.
TEST(ReceiverModesTest, WideFmBelowTheAudioRateIsSilent)
{
    Receiver receiver;
    receiver.setInputSampleRate(48000.0);
    receiver.setOutputSampleRate(96000.0);
    test::setMode(receiver, Modulation::WFM);
    receiver.setWfmStereo(true);
    EXPECT_TRUE(test::feed(receiver, test::noise(8192, 1)).audio.empty());
    EXPECT_FALSE(receiver.wfmIsStereo());
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReceiverRig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <utility>

using DspCore::Modulation;
using DspCore::Receiver;

namespace
{
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kRate = 48000.0;    // Hz, audio
constexpr double kInRate = 192000.0; // Hz
constexpr int kTail = 9600;          // audio samples judged, 0.2 s

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

TEST(ReceiverWideFmTest, StereoIsHeardWhereAPilotIsAndComesBackWithARate)
{
    constexpr double kSeparationDb = 25.0;
    constexpr double kHalf = 0.05; // mono is half of a station that is heard left only
    constexpr double kEqualizerDb = 0.1;
    QVector<int> gains(18, 0);
    gains[9] = 12; // 1 kHz
    Receiver receiver;
    receiver.setEqualizerGains(gains);
    for (const double rate : {2560000.0, kInRate}) {
        receiver.setEqualizerEnable(false);
        receiver.setInputSampleRate(rate);
        receiver.setBandFilterIf(0, -90000, 90000);
        receiver.setDownConverter(0, rate / 16.0);
        test::setMode(receiver, Modulation::WFM);
        const auto stereo = broadcast(1.0, rate, 0.09);
        const auto [left, right] = ears(receiver, stereo);
        EXPECT_TRUE(receiver.wfmIsStereo()) << rate;
        EXPECT_GT(left, 0.02) << rate;
        EXPECT_LT(test::decibels(right / left), -kSeparationDb) << rate;

        receiver.setWfmStereo(false); // the next rate switches it on
        const auto [monoLeft, monoRight] = ears(receiver, stereo);
        EXPECT_FALSE(receiver.wfmIsStereo()) << rate;
        EXPECT_NEAR(monoRight / left, 0.5, kHalf) << rate;
        receiver.setEqualizerEnable(true);
        const double lifted = ears(receiver, stereo).first;
        EXPECT_NEAR(test::decibels(lifted / monoLeft), 12.0, kEqualizerDb);
    }
    receiver.setWfmStereo(true);
    ears(receiver, broadcast(0.8, kInRate, 0.0));
    EXPECT_FALSE(receiver.wfmIsStereo());
}

TEST(ReceiverWideFmTest, FilterSetInAnotherModeIsThereWhenWideFmIsHeard)
{
    const auto stream = broadcast(0.2, kInRate, 0.09);
    Receiver before, after, without;
    for (const double edge : {30000.0, 50000.0}) {
        before.setBandFilterIf(0, -edge, edge);
        test::setMode(before, Modulation::WFM);

        test::setMode(after, Modulation::WFM);
        after.setBandFilterIf(0, -edge, edge);
        after.clear();

        test::setMode(without, Modulation::WFM);
        const auto audio = test::feed(before, stream).audio;
        EXPECT_EQ(test::maxError(audio, test::feed(after, stream).audio), 0.0) << edge;
        EXPECT_GT(test::maxError(audio, test::feed(without, stream).audio), 1e-3) << edge;
        for (Receiver *receiver : {&before, &after, &without})
            test::setMode(*receiver, Modulation::USB);
    }
}

TEST(ReceiverWideFmTest, AddsWhatChannelBLastHeld)
{
    constexpr double kVolumeRamp = 1e-3; // it ends that close to 1, and acts on B once a block
    Receiver receiver;
    receiver.setEnableVfob(true);
    receiver.setMute(0, true); // the sum before the switch is B alone
    test::feed(receiver, test::noise(int(kInRate), 5));
    const auto before = test::feed(receiver, test::noise(512, 6)).audio;
    test::setMode(receiver, Modulation::WFM);
    for (int i = 0; i < 3; ++i) {
        const auto heard = test::feed(receiver, test::noise(512, 6)).audio;
        EXPECT_LT(test::maxError(heard, before), kVolumeRamp * test::rms(before));
    }
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ReceiverRig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>

using DspCore::Modulation;
using DspCore::Receiver;

namespace
{
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kRate = 48000.0; // Hz, audio
constexpr double kLowHz = 400.0;
constexpr double kHighHz = 8000.0;

/// Two tones at 30 % deviation each, with a pilot.
std::vector<COMPLEX> station(double seconds, double rate)
{
    double phase = 0.0;
    std::vector<COMPLEX> stream(std::size_t(seconds * rate));
    for (std::size_t n = 0; n < stream.size(); ++n) {
        const double t = kTwoPi * double(n) / rate;
        const double multiplex =
            0.3 * std::sin(kLowHz * t) + 0.3 * std::sin(kHighHz * t) + 0.09 * std::sin(19000.0 * t);
        phase += kTwoPi * 75000.0 / rate * multiplex;
        const auto sample = std::polar(0.2, phase);
        stream[n] = {sample.real(), sample.imag()};
    }
    return stream;
}

/// Treble against bass, in decibels.
double trebleDb(Receiver &receiver, double rate)
{
    const auto audio =
        test::ear(test::last(test::feed(receiver, station(0.6, rate)).audio, 9600), &COMPLEX::re);
    return test::decibels(test::level(audio, kHighHz / kRate) / test::level(audio, kLowHz / kRate));
}

/// Of a one-pole low-pass with this time constant in microseconds, sampled at the audio's rate.
double responseDb(double hz, double us)
{
    const double pole = std::exp(-1e6 / (us * kRate));
    return test::decibels((1.0 - pole) / std::abs(1.0 - std::polar(pole, -kTwoPi * hz / kRate)));
}

TEST(ReceiverWideFmRepairTest, TheRegionRulesTheTrebleAndMonoOutlastsARate)
{
    constexpr double kTrebleDb = 0.3; // the resamplers of the rates differ
    const double step = responseDb(kHighHz, 75.0) - responseDb(kLowHz, 75.0)
        - responseDb(kHighHz, 50.0) + responseDb(kLowHz, 50.0);
    ASSERT_LT(step, -2.0);
    for (const bool repaired : {false, true}) {
        Receiver receiver;
        receiver.setRepairs({.wfm = repaired});
        receiver.setBandFilterIf(0, -90000, 90000);
        test::setMode(receiver, Modulation::WFM);
        const double europe = trebleDb(receiver, 192000.0);
        EXPECT_TRUE(receiver.wfmIsStereo());
        receiver.setWfmUsa(true);
        EXPECT_NEAR(trebleDb(receiver, 192000.0) - europe, repaired ? step : 0.0, kTrebleDb);
        receiver.setWfmStereo(false);
        trebleDb(receiver, 192000.0);
        EXPECT_FALSE(receiver.wfmIsStereo());

        receiver.setInputSampleRate(384000.0);
        receiver.setBandFilterIf(0, -90000, 90000);
        EXPECT_NEAR(trebleDb(receiver, 384000.0) - europe, repaired ? step : 0.0, kTrebleDb);
        EXPECT_EQ(receiver.wfmIsStereo(), !repaired);
        receiver.setWfmUsa(false);
        receiver.setWfmStereo(true);
        EXPECT_NEAR(trebleDb(receiver, 384000.0), europe, kTrebleDb);
        EXPECT_TRUE(receiver.wfmIsStereo());
    }
}
} // namespace

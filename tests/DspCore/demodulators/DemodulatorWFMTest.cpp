// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/demodulators/DemodulatorWFM.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <functional>
#include <numbers>

namespace
{
using DspCore::DemodulatorWFM;

constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kArctangent = 0.005; // radians, of the discriminator's approximate one
constexpr double kRoundOff = 1e-12;

double wave(double hz, double t)
{
    return std::sin(kTwoPi * hz * t);
}

// What comes out for a signal whose phase advances by multiplex(seconds), in radians, a sample.
std::vector<COMPLEX> heard(
    DemodulatorWFM &wfm, double seconds, const std::function<double(double)> &multiplex)
{
    std::vector<COMPLEX> signal(std::size_t(wfm.sampleRate() * seconds));
    double phase = 0.3;
    for (std::size_t n = 0; n < signal.size(); ++n) {
        phase += multiplex(double(n) / wfm.sampleRate());
        signal[n] = {0.2 * std::cos(phase), 0.2 * std::sin(phase)};
    }
    test::run(wfm, signal, 1000);
    return signal;
}

// Amplitude of a tone in one ear over the last quarter of a second.
double levelOf(
    const std::vector<COMPLEX> &audio, double rate, double hz, double COMPLEX::*part = &COMPLEX::re)
{
    const auto ear = test::ear(test::last(audio, int(rate / 4.0)), part);
    return 2.0 * test::magnitude(test::component(ear, hz / rate));
}

// What a phase step of one radian comes out as: de-emphasis of 50 us as the one-pole
// y += a (x - y), the 14 kHz low-pass and the 19 kHz notch as analog prototypes at the frequency
// that the bilinear transform puts onto hz, and the output scale of 0.3 at 192 kHz.
double audioGain(double rate, double hz)
{
    const double a = 1.0 - std::exp(-1.0 / (rate * 50e-6));
    const double deemphasis =
        std::abs(a / (1.0 - (1.0 - a) * std::polar(1.0, -kTwoPi * hz / rate)));
    const auto prototype = [&](double corner) {
        const auto warped = [&](double f) { return std::tan(std::numbers::pi * f / rate); };
        return std::complex<double>(0.0, warped(hz) / warped(corner));
    };
    const std::complex<double> low = prototype(14000.0);
    const std::complex<double> pilot = prototype(19000.0);
    const double lowPass = std::abs(1.0 / (low * low + low / 0.707 + 1.0));
    const double notch = std::abs((pilot * pilot + 1.0) / (pilot * pilot + pilot / 300.0 + 1.0));
    return deemphasis * lowPass * notch * 0.3 * rate / 192000.0;
}

TEST(DemodulatorWFMTest, MonoIsThePhaseStepAfterDeemphasisAndLowPassInBothEars)
{
    constexpr double kStep = 0.4; // radians
    const std::pair<double, double> rows[] = {{48000, 1000}, {48000, 12000}, {96000, 5000},
        {192000, 1000}, {192000, 18000}, {192000, 18950}}; // the last one beside the notch
    for (const auto &[rate, hz] : rows) {
        DemodulatorWFM wfm;
        wfm.setSampleRate(rate);
        const auto audio = heard(wfm, 0.5, [&, hz = hz](double t) { return kStep * wave(hz, t); });
        EXPECT_NEAR(levelOf(audio, rate, hz) / audioGain(rate, hz), kStep, kArctangent)
            << rate << " " << hz;
        EXPECT_EQ(test::ear(audio, &COMPLEX::re), test::ear(audio, &COMPLEX::im));
    }
}

TEST(DemodulatorWFMTest, TheLeftEarLosesTwiceTheDifferenceAndTheRightEarStaysMono)
{
    constexpr double kRate = 192000.0;
    constexpr double kTone = 2000.0;
    // The pilot's FIR is 249 samples late, and the loop keeps the phase it has stepped on to, one
    // sample ahead. The doubled phase therefore misses the subcarrier by 496 samples' worth of
    // 19 kHz, 49.08 turns, of which a quarter is right.
    const double missed = kTwoPi * (496.0 * 19000.0 / kRate - 0.25);
    constexpr double kMono = 0.3;
    constexpr double kDifference = 0.1;
    DemodulatorWFM wfm;
    wfm.setSampleRate(kRate);
    wfm.setStereo(true);
    const auto audio = heard(wfm, 2.0, [&](double t) {
        return kMono * wave(kTone, t) + 0.1 * wave(19000.0, t)
            + kDifference * wave(kTone, t) * wave(38000.0, t);
    });
    ASSERT_TRUE(wfm.isStereo());
    wfm.setStereo(false);
    EXPECT_FALSE(wfm.isStereo());
    const double gain = audioGain(kRate, kTone);
    EXPECT_NEAR(levelOf(audio, kRate, kTone) / gain, kMono - 2.0 * kDifference * std::cos(missed),
        kArctangent);
    EXPECT_NEAR(levelOf(audio, kRate, kTone, &COMPLEX::im) / gain, kMono, kArctangent);
}

TEST(DemodulatorWFMTest, ThePilotLoopHoldsTwentyHertzEitherSide)
{
    const std::pair<double, bool> rows[] = {
        {19015, true}, {18985, true}, {19060, false}, {18940, false}, {-19000, false}};
    for (const double rate : {48000.0, 192000.0}) {
        for (const auto &[hz, locks] : rows) {
            constexpr int kBlock = 1000;
            DemodulatorWFM wfm;
            wfm.setSampleRate(rate);
            bool locked = false;
            for (int n = 0; n < int(2 * rate); n += kBlock)
                locked =
                    wfm.processPilotPll(test::tone(kBlock, hz / rate, 0.1, 0.7, n).data(), kBlock);
            EXPECT_EQ(locked, locks) << hz << " at " << rate;
        }
    }
}

TEST(DemodulatorWFMTest, DeemphasisFollowsRegionAndRate)
{
    DemodulatorWFM wfm;
    EXPECT_EQ(wfm.sampleRate(), 48000.0);
    const auto expectStep = [&](double tau) {
        wfm.clear();
        std::vector<COMPLEX> step(20, COMPLEX{1.0, -2.0});
        wfm.deemphasis(step.data(), 20);
        for (const int n : {0, 9, 19}) {
            const double y = 1.0 - std::exp(-(n + 1) / (wfm.sampleRate() * tau));
            EXPECT_NEAR(step[std::size_t(n)].re, y, kRoundOff);
            EXPECT_NEAR(step[std::size_t(n)].im, -2.0 * y, kRoundOff);
        }
    };
    expectStep(50e-6);
    wfm.setUsaRegion(true);
    EXPECT_TRUE(wfm.usaRegion());
    expectStep(75e-6);
    wfm.setSampleRate(192000.0);
    expectStep(75e-6);
    wfm.setUsaRegion(false);
    expectStep(50e-6);
}

} // namespace

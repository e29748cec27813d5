// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/LogCapture.h"
#include "support/Signals.h"

#include "DspCore/demodulators/DemodulatorWFM.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <functional>
#include <numbers>

namespace
{
using DspCore::DemodulatorWFM;

constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr int kBlock = 1000;

// A signal whose phase advances by multiplex(seconds), in radians, from sample to sample.
std::vector<COMPLEX> modulated(
    double rate, double seconds, const std::function<double(double)> &multiplex)
{
    std::vector<COMPLEX> signal(std::size_t(rate * seconds));
    double phase = 0.3;
    for (std::size_t n = 0; n < signal.size(); ++n) {
        phase += multiplex(double(n) / rate);
        signal[n] = {0.2 * std::cos(phase), 0.2 * std::sin(phase)};
    }
    return signal;
}

double wave(double hz, double t)
{
    return std::sin(kTwoPi * hz * t);
}

void inBlocks(DemodulatorWFM &wfm, std::vector<COMPLEX> &signal)
{
    for (std::size_t at = 0; at + kBlock <= signal.size(); at += kBlock)
        wfm.process(&signal[at], kBlock);
}

// Amplitude of a tone in one ear over the last quarter of a second.
double levelOf(const std::vector<COMPLEX> &audio, double rate, double hz, bool left)
{
    std::vector<COMPLEX> ear(audio.end() - long(rate / 4.0), audio.end());
    for (COMPLEX &x : ear)
        x = {left ? x.re : x.im, 0.0};
    return 2.0 * test::magnitude(test::component(ear, hz / rate));
}

// What a phase step of one radian comes out as: de-emphasis as the one-pole y += a (x - y), the
// 14 kHz low-pass and the 19 kHz notch as analog prototypes at the frequency that the bilinear
// transform puts onto hz, and the output scale of 0.3 at 192 kHz.
double audioGain(double rate, double hz, double tau)
{
    const double a = 1.0 - std::exp(-1.0 / (rate * tau));
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
    constexpr double kTolerance = 0.01; // of the level: the discriminator's approximate arctangent
    constexpr double kStep = 0.4;       // radians
    struct Row
    {
        double rate;
        double hz;
    };
    for (const Row row : {Row{48000, 1000}, Row{48000, 12000}, Row{96000, 5000}, Row{192000, 1000},
             Row{192000, 18000}, Row{192000, 30000}}) {
        DemodulatorWFM wfm;
        wfm.setSampleRate(row.rate);
        auto signal = modulated(row.rate, 1.0, [&](double t) { return kStep * wave(row.hz, t); });
        inBlocks(wfm, signal);
        const double expected = kStep * audioGain(row.rate, row.hz, 50e-6);
        EXPECT_NEAR(levelOf(signal, row.rate, row.hz, true) / expected, 1.0, kTolerance)
            << row.rate << " " << row.hz;
        for (const COMPLEX &x : signal)
            ASSERT_EQ(x.re, x.im);
    }
}

TEST(DemodulatorWFMTest, ThePilotIsNotchedOut)
{
    constexpr double kNotchDb = -40.0;
    DemodulatorWFM wfm;
    wfm.setSampleRate(192000.0);
    auto signal = modulated(192000.0, 1.0, [](double t) { return 0.2 * wave(19000.0, t); });
    inBlocks(wfm, signal);
    const double open = 0.2 * audioGain(192000.0, 18000.0, 50e-6); // beside the notch
    EXPECT_LT(test::decibels(levelOf(signal, 192000.0, 19000.0, true) / open), kNotchDb);
}

TEST(DemodulatorWFMTest, TheLeftEarLosesTwiceTheDifferenceAndTheRightEarStaysMono)
{
    constexpr double kRate = 192000.0;
    constexpr double kTone = 2000.0;
    constexpr double kTolerance = 0.005; // radians, the discriminator's approximate arctangent
    // The pilot's FIR is 249 samples late, and the loop keeps the phase it has stepped on to, one
    // sample ahead. The doubled phase therefore misses the subcarrier by 496 samples' worth of
    // 19 kHz, 49.08 turns, of which a quarter is right.
    const double missed = kTwoPi * (496.0 * 19000.0 / kRate - 0.25);
    constexpr double kMono = 0.3;
    constexpr double kDifference = 0.1;
    const auto broadcast = [&](double t) {
        return kMono * wave(kTone, t) + 0.1 * wave(19000.0, t)
            + kDifference * wave(kTone, t) * wave(38000.0, t);
    };
    DemodulatorWFM stereo;
    stereo.setSampleRate(kRate);
    stereo.setStereo(true);
    auto signal = modulated(kRate, 3.0, broadcast);
    inBlocks(stereo, signal);
    ASSERT_TRUE(stereo.isStereo());

    const double gain = audioGain(kRate, kTone, 50e-6);
    EXPECT_NEAR(levelOf(signal, kRate, kTone, true) / gain,
        kMono - 2.0 * kDifference * std::cos(missed), kTolerance);
    EXPECT_NEAR(levelOf(signal, kRate, kTone, false) / gain, kMono, kTolerance);

    DemodulatorWFM mono;
    mono.setSampleRate(kRate);
    auto same = modulated(kRate, 3.0, broadcast);
    inBlocks(mono, same);
    double largest = 0.0;
    for (std::size_t n = 0; n < same.size(); ++n)
        largest = std::max(largest, std::abs(same[n].im - signal[n].im));
    EXPECT_LT(largest, 1e-12) << "the right ear is the mono signal but for rounding";
}

TEST(DemodulatorWFMTest, StereoNeedsThePilotAndKeepsItsStateWhileNotWanted)
{
    constexpr double kRate = 192000.0;
    DemodulatorWFM wfm;
    wfm.setSampleRate(kRate);
    wfm.setStereo(true);
    EXPECT_FALSE(wfm.isStereo());
    const auto feed = [&](double pilotHz) {
        auto signal = modulated(kRate, 3.0, [&](double t) {
            return 0.3 * wave(1000.0, t) + (pilotHz > 0.0 ? 0.1 * wave(pilotHz, t) : 0.0);
        });
        inBlocks(wfm, signal);
        return wfm.isStereo();
    };
    EXPECT_TRUE(feed(19000.0));
    wfm.setStereo(false);
    EXPECT_FALSE(feed(0.0));
    wfm.setStereo(true);
    EXPECT_TRUE(wfm.isStereo());
    EXPECT_FALSE(feed(19300.0));
    EXPECT_TRUE(feed(19000.0));
    EXPECT_FALSE(feed(0.0));
}

TEST(DemodulatorWFMTest, ThePilotLoopHoldsTwentyHertzEitherSide)
{
    struct Row
    {
        double hz;
        bool locked;
    };
    for (const double rate : {48000.0, 192000.0}) {
        for (const Row row : {Row{19000, true}, Row{19015, true}, Row{18985, true},
                 Row{19060, false}, Row{18940, false}, Row{-19000, false}}) {
            DemodulatorWFM wfm;
            wfm.setSampleRate(rate);
            bool locked = false;
            for (int n = 0; n + kBlock <= int(4 * rate); n += kBlock)
                locked = wfm.processPilotPll(
                    test::tone(kBlock, row.hz / rate, 0.1, 0.7, n).data(), kBlock);
            EXPECT_EQ(locked, row.locked) << row.hz << " at " << rate;
        }
    }
}

TEST(DemodulatorWFMTest, DeemphasisFollowsRegionAndRate)
{
    constexpr double kRoundOff = 1e-12;
    const auto expectTau = [](DemodulatorWFM &wfm, double tau) {
        wfm.clear();
        std::vector<COMPLEX> step(20, COMPLEX{1.0, -2.0});
        wfm.deemphasis(step.data(), 7);
        wfm.deemphasis(&step[7], 13);
        for (const int n : {0, 9, 19}) {
            const double y = 1.0 - std::exp(-(n + 1) / (wfm.sampleRate() * tau));
            EXPECT_NEAR(step[std::size_t(n)].re, y, kRoundOff);
            EXPECT_NEAR(step[std::size_t(n)].im, -2.0 * y, kRoundOff);
        }
    };
    DemodulatorWFM wfm;
    EXPECT_EQ(wfm.sampleRate(), 48000.0);
    expectTau(wfm, 50e-6);
    wfm.setUsaRegion(true);
    EXPECT_TRUE(wfm.usaRegion());
    expectTau(wfm, 75e-6);
    wfm.setSampleRate(192000.0);
    expectTau(wfm, 75e-6);
    wfm.setUsaRegion(false);
    expectTau(wfm, 50e-6);
}

TEST(DemodulatorWFMTest, TheDiscriminatorIgnoresTheAmplitudeAndKeepsItsLastSample)
{
    constexpr double kArctangent = 0.005; // radians
    for (const double amplitude : {1e-9, 0.2, 1e3}) {
        for (const double step : {0.5, -2.0, 3.0}) {
            DemodulatorWFM wfm;
            std::vector<COMPLEX> signal = test::tone(64, step / kTwoPi, amplitude, 0.9);
            wfm.demodulation(signal.data(), 1);
            wfm.demodulation(&signal[1], 63);
            EXPECT_EQ(signal[0], (COMPLEX{0.0, 0.0})) << "nothing came before";
            for (std::size_t n = 1; n < signal.size(); ++n) {
                ASSERT_NEAR(signal[n].re, step, kArctangent) << amplitude;
                ASSERT_EQ(signal[n].re, signal[n].im);
            }
        }
    }
}

TEST(DemodulatorWFMTest, AClearForgetsTheStream)
{
    DemodulatorWFM used;
    std::vector<COMPLEX> before = test::noise(4000, 5);
    inBlocks(used, before);
    used.clear();
    DemodulatorWFM fresh;
    std::vector<COMPLEX> a = test::noise(2000, 6);
    std::vector<COMPLEX> b = a;
    inBlocks(used, a);
    inBlocks(fresh, b);
    EXPECT_EQ(a, b);
}

TEST(DemodulatorWFMTest, BadInputIsReportedAndLeftAlone)
{
    const test::LogCapture log;
    DemodulatorWFM wfm;
    COMPLEX x{1.0, 2.0};
    wfm.process(nullptr, 4);
    wfm.process(&x, 0);
    wfm.process(&x, -3);
    const QStringList warnings = log.warnings();
    ASSERT_EQ(warnings.size(), 3);
    for (const QString &line : warnings) {
        EXPECT_TRUE(line.contains("DemodulatorWFM::process"));
        EXPECT_TRUE(line.contains(" : Incorrect input parameters!"));
    }
    EXPECT_EQ(x, (COMPLEX{1.0, 2.0}));
}
} // namespace

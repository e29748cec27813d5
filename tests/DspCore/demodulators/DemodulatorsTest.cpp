// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/demodulators/DemodulatorAM.h"
#include "DspCore/demodulators/DemodulatorNFM.h"
#include "DspCore/demodulators/DemodulatorSAM.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>

namespace
{
constexpr double kRate = 48000.0;
constexpr int kSecond = 48000;
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kArctangent = 0.005; // the phase loops' approximate one, radians and relative

// A carrier of amplitude 0.5 at an offset, modulated in amplitude by a tone.
std::vector<COMPLEX> amSignal(int length, double offsetHz, double toneHz, double depth)
{
    std::vector<COMPLEX> signal = test::tone(length, offsetHz / kRate, 0.5, 0.4);
    for (int n = 0; n < length; ++n) {
        const double envelope = 1.0 + depth * std::cos(kTwoPi * toneHz / kRate * n);
        signal[std::size_t(n)].re *= envelope;
        signal[std::size_t(n)].im *= envelope;
    }
    return signal;
}

std::vector<COMPLEX> fmSignal(int length, double offsetHz, double toneHz, double deviationHz)
{
    std::vector<COMPLEX> signal(static_cast<std::size_t>(length));
    for (int n = 0; n < length; ++n) {
        const auto x = std::polar(0.3,
            kTwoPi * offsetHz / kRate * n
                + deviationHz / toneHz * std::sin(kTwoPi * toneHz / kRate * n));
        signal[std::size_t(n)] = {x.real(), x.imag()};
    }
    return signal;
}

// The last second of what a demodulator gives, which is alike in both parts.
template <typename Demodulator>
std::vector<COMPLEX> audioOf(Demodulator &&demodulator, std::vector<COMPLEX> signal)
{
    test::run(demodulator, signal);
    EXPECT_EQ(test::ear(signal, &COMPLEX::re), test::ear(signal, &COMPLEX::im));
    return test::last(signal, kSecond);
}

// Amplitude of a tone in a real signal that stands in both parts.
double toneLevel(const std::vector<COMPLEX> &audio, double hz)
{
    const auto real = test::ear(audio, &COMPLEX::re);
    return 2.0 * test::magnitude(test::component(real, hz / kRate));
}

// The direct-current block's gain, (1 - z^-1) / (1 - 0.995 z^-1).
double dcBlockGain(double hz)
{
    const auto z = std::polar(1.0, -kTwoPi * hz / kRate);
    return std::abs((1.0 - z) / (1.0 - 0.995 * z));
}

TEST(DemodulatorAMTest, GivesTheEnvelopeWithoutTheCarrierOrTheLowPass)
{
    constexpr double kRoundOff = 1e-4;
    for (const double tone : {1000.0, 5000.0}) { // the low-pass is designed and stays out
        DspCore::DemodulatorAM am;
        am.setFilterFc(300.0);
        const auto audio = audioOf(am, amSignal(2 * kSecond, 730.0, tone, 0.6));
        EXPECT_NEAR(toneLevel(audio, tone), 0.5 * 0.6 * dcBlockGain(tone), kRoundOff);
        EXPECT_NEAR(toneLevel(audio, 0.0), 0.0, kRoundOff);
        EXPECT_NEAR(toneLevel(audio, 2.0 * tone), 0.0, kRoundOff);
    }
}

// The loop flees from the carrier's phase to its opposite, which is why the audio is inverted. From
// f += beta e and e += alpha e + f both modes of e grow by 1 + m a sample, where
// m^2 = (alpha + beta) m + beta. The audio is the cosine of e after the direct-current block, which
// is undone here.
TEST(DemodulatorSAMTest, TheLoopFallsToTheOtherPhaseByItsGainsWhateverTheRate)
{
    constexpr double kStart = 0.1;      // radians
    constexpr double kTolerance = 0.02; // the arctangent's error, grown with e
    constexpr double kAlpha = kTwoPi * 30.0 / kRate;
    constexpr double kBeta = kAlpha * kAlpha / 4.0;
    const double root = std::sqrt(std::pow(kAlpha + kBeta, 2) + 4.0 * kBeta);
    const double m1 = (kAlpha + kBeta + root) / 2.0;
    const double m2 = (kAlpha + kBeta - root) / 2.0;
    for (const double rate : {kRate, 2.0 * kRate}) { // the loop keeps its bandwidth in samples
        DspCore::DemodulatorSAM sam;
        sam.setSampleRate(rate);
        auto signal = test::tone(600, 0.0, 0.5, kStart);
        test::run(sam, signal);
        double inphase = 0.0;
        double before = 0.0;
        for (int n = 0; n < 600; ++n) {
            const double audio = signal[std::size_t(n)].re;
            inphase += (audio - 0.995 * before) / 0.5;
            before = audio;
            const double e =
                kStart * (m1 * std::pow(1.0 + m1, n) - m2 * std::pow(1.0 + m2, n)) / (m1 - m2);
            ASSERT_NEAR(inphase, std::cos(e), kTolerance) << n;
        }
    }
}

// While the deviation is small the loop is linear. From e = psi - phi, f += beta e and
// phi += alpha e + f, its frequency follows the signal's phase step by
// beta z^2 / ((z - 1)^2 + alpha (z - 1) + beta z).
double loopGain(double hz)
{
    const double alpha = 6250.0 * 0.3 * kTwoPi / kRate;
    const double beta = alpha * alpha / 4.0;
    const auto z = std::polar(1.0, kTwoPi * hz / kRate);
    return std::abs(beta * z * z / ((z - 1.0) * (z - 1.0) + alpha * (z - 1.0) + beta * z));
}

// Loop frequency in radians per sample times scale times the final gain.
constexpr double kPerHz = kTwoPi / kRate * (kRate * 0.45 / std::numbers::pi) / 6250.0 * 4.0;

TEST(DemodulatorNFMTest, AudioIsProportionalToTheDeviationAndFreeOfTheTuningError)
{
    constexpr double kTone = 300.0;
    constexpr double kMean = 1e-3; // of the deviation: what is left of the offset
    for (const double deviation : {100.0, 400.0}) {
        const auto audio =
            audioOf(DspCore::DemodulatorNFM(), fmSignal(4 * kSecond, 300.0, kTone, deviation));
        EXPECT_NEAR(toneLevel(audio, kTone) / (deviation * kPerHz),
            loopGain(kTone) * dcBlockGain(kTone), kArctangent)
            << deviation;
        EXPECT_LT(toneLevel(audio, 0.0), kMean * deviation * kPerHz);
    }
}

// A carrier 3 kHz off: the estimate sticks to the limit of 1 kHz, and the slow mean takes it out.
// Then silence: the loop keeps its frequency, so that what a clear leaves of it would be heard.
TEST(DemodulatorNFMTest, TheLoopStopsAtAThousandHertzAndIsSilentAfterAClear)
{
    auto audio = fmSignal(4096, 3000.0, 1000.0, 0.0);
    DspCore::DemodulatorNFM nfm;
    test::run(nfm, audio);
    const double largest = test::maxError(audio, std::vector<COMPLEX>(audio.size()));
    EXPECT_LT(largest, 1.5 * 1000.0 * kPerHz);
    EXPECT_GT(largest, 0.5 * 1000.0 * kPerHz);
    nfm.clear();
    std::vector<COMPLEX> block(1024, COMPLEX{0.0, 0.0});
    test::run(nfm, block);
    EXPECT_EQ(test::rms(block), 0.0);
}
} // namespace

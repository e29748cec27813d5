// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/LogCapture.h"
#include "support/Signals.h"

#include "DspCore/demodulators/DemodulatorAM.h"
#include "DspCore/demodulators/DemodulatorCW.h"
#include "DspCore/demodulators/DemodulatorNFM.h"
#include "DspCore/demodulators/DemodulatorSAM.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>

namespace
{
constexpr double kRate = 48000.0;
constexpr double kTwoPi = 2.0 * std::numbers::pi;

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
        const double angle = kTwoPi * offsetHz / kRate * n
            + deviationHz / toneHz * std::sin(kTwoPi * toneHz / kRate * n);
        signal[std::size_t(n)] = {0.3 * std::cos(angle), 0.3 * std::sin(angle)};
    }
    return signal;
}

template <typename Block>
void inBlocks(Block &block, std::vector<COMPLEX> &signal, std::size_t size = 512)
{
    for (std::size_t at = 0; at < signal.size(); at += size)
        block.process(&signal[at], static_cast<int>(std::min(size, signal.size() - at)));
}

std::vector<COMPLEX> lastSecond(const std::vector<COMPLEX> &signal)
{
    return {signal.end() - static_cast<std::ptrdiff_t>(kRate), signal.end()};
}

// Amplitude of a tone in a real signal that stands in both parts.
double toneLevel(const std::vector<COMPLEX> &audio, double hz)
{
    std::vector<COMPLEX> real = audio;
    for (COMPLEX &x : real)
        x.im = 0.0;
    return 2.0 * test::magnitude(test::component(real, hz / kRate));
}

void expectBothPartsAlike(const std::vector<COMPLEX> &audio)
{
    for (const COMPLEX &x : audio)
        ASSERT_EQ(x.re, x.im);
}

// The direct-current block's gain, (1 - z^-1) / (1 - 0.995 z^-1).
double dcBlockGain(double hz)
{
    const auto z = std::polar(1.0, -kTwoPi * hz / kRate);
    return std::abs((1.0 - z) / (1.0 - 0.995 * z));
}

TEST(DemodulatorAMTest, GivesTheEnvelopeWithoutTheCarrier)
{
    constexpr double kTolerance = 1e-4;
    for (const double offset : {0.0, 730.0}) {
        std::vector<COMPLEX> signal = amSignal(96000, offset, 1000.0, 0.6);
        DspCore::DemodulatorAM am;
        inBlocks(am, signal);
        const std::vector<COMPLEX> audio = lastSecond(signal);
        EXPECT_NEAR(toneLevel(audio, 1000.0), 0.5 * 0.6 * dcBlockGain(1000.0), kTolerance);
        EXPECT_NEAR(toneLevel(audio, 0.0), 0.0, kTolerance);
        EXPECT_NEAR(toneLevel(audio, 2000.0), 0.0, kTolerance);
        expectBothPartsAlike(audio);
    }
}

TEST(DemodulatorAMTest, TheLowPassStaysOut)
{
    std::vector<COMPLEX> signal = amSignal(96000, 0.0, 5000.0, 0.5);
    DspCore::DemodulatorAM am;
    am.setFilterFc(300.0);
    inBlocks(am, signal);
    EXPECT_NEAR(toneLevel(lastSecond(signal), 5000.0), 0.25, 1e-3);
}

TEST(DemodulatorSAMTest, LocksOnACarrierBesideTheCentreAndInvertsTheAudio)
{
    for (const double offset : {0.0, 15.0, -25.0}) {
        std::vector<COMPLEX> signal = amSignal(4 * 48000, offset, 1000.0, 0.5);
        DspCore::DemodulatorSAM sam;
        inBlocks(sam, signal);
        const std::vector<COMPLEX> audio = lastSecond(signal);
        EXPECT_NEAR(toneLevel(audio, 1000.0), 0.25, 2e-3) << offset;
        EXPECT_LT(toneLevel(audio, 1000.0 + offset + 7.0), 1e-3) << offset;
        expectBothPartsAlike(audio);
    }
    std::vector<COMPLEX> signal = amSignal(96000, 0.0, 100.0, 0.5);
    DspCore::DemodulatorSAM sam;
    inBlocks(sam, signal);
    // 100 Hz repeats every 480 samples, and the envelope peaks at multiples of it.
    EXPECT_LT(signal[95520].re, -0.2);
}

TEST(DemodulatorSAMTest, TheLoopKeepsItsBandwidthInSamplesAndItsPhaseOverAClear)
{
    DspCore::DemodulatorSAM plain;
    DspCore::DemodulatorSAM disturbed;
    disturbed.setSampleRate(96000.0);
    std::vector<COMPLEX> a = amSignal(48000, 10.0, 440.0, 0.5);
    std::vector<COMPLEX> b = a;
    inBlocks(plain, a);
    inBlocks(disturbed, b);
    EXPECT_EQ(a, b);

    // A clear restarts the filters only: beyond their memory both go on alike.
    disturbed.clear();
    std::vector<COMPLEX> c = amSignal(48000, 10.0, 440.0, 0.5);
    std::vector<COMPLEX> d = c;
    inBlocks(plain, c);
    inBlocks(disturbed, d);
    EXPECT_LT(test::maxError(lastSecond(c), lastSecond(d)), 0.6);
    EXPECT_NEAR(c.back().re, d.back().re, 1e-9);
}

TEST(DemodulatorCWTest, MovesAStationInTuneToTheTone)
{
    struct Row
    {
        double rate;
        double tone;
        double station;
    };
    for (const Row row : {Row{48000, 700, 0}, Row{48000, 450, 25}, Row{96000, 700, -40}}) {
        DspCore::DemodulatorCW cw;
        cw.setSampleRate(row.rate);
        cw.setFrequency(row.tone);
        std::vector<COMPLEX> signal = test::tone(4096, row.station / row.rate);
        inBlocks(cw, signal);
        EXPECT_LT(
            test::maxError(signal, test::tone(4096, (row.station + row.tone) / row.rate)), 1e-10);
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

TEST(DemodulatorNFMTest, AudioIsProportionalToTheDeviationAndFreeOfTheTuningError)
{
    constexpr double kTone = 300.0;
    // Loop frequency in radians per sample times scale times the final gain.
    const double perHz = kTwoPi / kRate * (kRate * 0.45 / std::numbers::pi) / 6250.0 * 4.0;
    for (const double deviation : {100.0, 400.0}) {
        for (const double offset : {0.0, 300.0}) {
            std::vector<COMPLEX> signal = fmSignal(4 * 48000, offset, kTone, deviation);
            DspCore::DemodulatorNFM nfm;
            inBlocks(nfm, signal);
            const std::vector<COMPLEX> audio = lastSecond(signal);
            EXPECT_NEAR(toneLevel(audio, kTone) / (deviation * perHz),
                loopGain(kTone) * dcBlockGain(kTone), 0.005)
                << deviation << " " << offset;
            EXPECT_LT(toneLevel(audio, 0.0), 1e-3 * deviation * perHz);
            expectBothPartsAlike(audio);
        }
    }
}

TEST(DemodulatorNFMTest, TheLoopStopsAtAThousandHertz)
{
    // A carrier 3 kHz off: the estimate sticks to the limit, and the slow mean takes it out.
    std::vector<COMPLEX> signal = fmSignal(4 * 48000, 3000.0, 1000.0, 0.0);
    DspCore::DemodulatorNFM nfm;
    std::vector<COMPLEX> first(signal.begin(), signal.begin() + 4096);
    inBlocks(nfm, first);
    double largest = 0.0;
    for (const COMPLEX &x : first)
        largest = std::max(largest, std::abs(x.re));
    const double limit = kTwoPi * 1000.0 / kRate * (kRate * 0.45 / std::numbers::pi) / 6250.0 * 4.0;
    EXPECT_LT(largest, 1.5 * limit);
    EXPECT_GT(largest, 0.5 * limit);
}

TEST(DemodulatorNFMTest, SilenceStaysSilent)
{
    std::vector<COMPLEX> block(1024, COMPLEX{0.0, 0.0});
    DspCore::DemodulatorNFM nfm;
    DspCore::DemodulatorSAM sam;
    inBlocks(nfm, block);
    EXPECT_EQ(test::rms(block), 0.0);
    inBlocks(sam, block);
    EXPECT_EQ(test::rms(block), 0.0);
}

TEST(DemodulatorsTest, BadInputIsReportedExceptInNfm)
{
    const test::LogCapture log;
    COMPLEX x{1.0, 2.0};
    DspCore::DemodulatorAM().process(nullptr, 5);
    DspCore::DemodulatorSAM().process(&x, 0);
    DspCore::DemodulatorCW().process(&x, -1);
    EXPECT_EQ(log.warnings().filter(" : Incorrect input parameters!").size(), 3);
    DspCore::DemodulatorNFM().process(nullptr, 5);
    DspCore::DemodulatorNFM().process(&x, 0);
    EXPECT_EQ(log.lines().size(), 3);
    EXPECT_EQ(x, (COMPLEX{1.0, 2.0}));
}
} // namespace

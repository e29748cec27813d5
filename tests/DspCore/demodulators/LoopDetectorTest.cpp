// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/demodulators/LoopDetector.h"
#include "DspCore/demodulators/DemodulatorNFM.h"
#include "signal_primitives/FastArctangent.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
constexpr double kSinglePrecision = 6e-7; // radians: two units in the last place of pi

double angleOf(COMPLEX x)
{
    double angle = 0.0;
    DspCore::LoopDetector::angles(&x, &angle, 1);
    return angle;
}

double plainError(COMPLEX x, double phase)
{
    const double c = std::cos(phase);
    const double s = std::sin(phase);
    return Velmora::fastArctangent(float(s * x.re + c * x.im), float(c * x.re - s * x.im));
}

TEST(LoopDetectorTest, AnglesAreThoseOfTheArctangent)
{
    constexpr double kSeries = 1e-12;
    for (int step = -1000; step <= 1000; ++step) {
        const double angle = step * 1e-3 * std::numbers::pi * 0.9999;
        for (const double size : {1e-30, 1.0, 1e30})
            EXPECT_NEAR(angleOf({size * std::cos(angle), size * std::sin(angle)}), angle, kSeries);
    }
    EXPECT_EQ(angleOf({0.0, 0.0}), DspCore::LoopDetector::kNoAngle);
    EXPECT_TRUE(std::isnan(angleOf({std::nan(""), 1.0})));
    EXPECT_TRUE(std::isnan(angleOf({1.0, std::numeric_limits<double>::infinity()})));
}

TEST(LoopDetectorTest, ErrorIsTheFastArctangentOfTheTurnedSample)
{
    for (const COMPLEX x : test::noise(2000, 3)) {
        for (const double phase : {0.0, 1.0, -5.0, 3000.0}) {
            const double plain = plainError(x, phase);
            // Half a turn and less are the same place.
            const double difference = std::remainder(
                DspCore::LoopDetector::error(angleOf(x), phase) - plain, 2.0 * std::numbers::pi);
            EXPECT_NEAR(difference, 0.0, kSinglePrecision) << plain;
        }
    }
    EXPECT_EQ(DspCore::LoopDetector::error(angleOf({0.0, 0.0}), 1.0), 0.0);
}

// The loop with the plain detector, before the filters that both share.
TEST(LoopDetectorTest, NarrowFmFollowsThePlainLoop)
{
    constexpr int kLength = 4800;
    constexpr double kClosed = 1e-6; // of full scale: the loop forgets what single precision lost
    auto noise = test::noise(kLength, 9);
    std::vector<COMPLEX> signal(kLength);
    for (int n = 0; n < kLength; ++n) {
        const double phase = 3.0 * std::sin(0.13 * n) + 0.02 * n;
        signal[std::size_t(n)] = {0.1 * std::cos(phase) + 1e-3 * noise[std::size_t(n)].re,
            0.1 * std::sin(phase) + 1e-3 * noise[std::size_t(n)].im};
    }
    constexpr double kTwoPi = 2.0 * std::numbers::pi;
    constexpr double kAlpha = 6250.0 * 0.3 * kTwoPi / 48000.0;
    constexpr double kLimit = kTwoPi * 1000.0 / 48000.0;
    const double weight = 1.0 - std::exp(-1000.0 / (48000.0 * 200.0));
    double phase = 0.0;
    double frequency = 0.0;
    double mean = 0.0;
    std::vector<COMPLEX> plain;
    for (const COMPLEX x : signal) {
        const double error = -plainError(x, phase);
        frequency = std::clamp(frequency + kAlpha * kAlpha * 0.25 * error, -kLimit, kLimit);
        phase += kAlpha * error + frequency;
        mean = weight * frequency + (1.0 - weight) * mean;
        const double audio = (frequency - mean) * 48000.0 * 0.45 / std::numbers::pi / 6250.0;
        plain.push_back({audio, audio});
    }
    DspCore::DcBlock dcBlock;
    DspCore::Biquad lowPass;
    lowPass.setEnable(true);
    lowPass.init(DspCore::Biquad::Type::LowPass, 7000.0 / 48000.0, 0.707, 0.0);
    dcBlock.process(plain.data(), kLength);
    lowPass.process2(plain.data(), kLength);

    DspCore::DemodulatorNFM demodulator;
    for (int at = 0, length = 1; at < kLength;
         at += length, length = std::min(3 * length, kLength - at))
        demodulator.process(&signal[std::size_t(at)], std::min(length, kLength - at));
    double loudest = 0.0;
    for (int n = 0; n < kLength; ++n) {
        EXPECT_NEAR(signal[std::size_t(n)].re, 4.0 * plain[std::size_t(n)].re, kClosed) << n;
        loudest = std::max(loudest, std::abs(signal[std::size_t(n)].re));
    }
    EXPECT_GT(loudest, 0.1);
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/AudioSpectrum.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace
{
using host::AudioSpectrum;

constexpr std::size_t kSecond = 48000;

/// One second; each channel a sine of its own.
std::vector<float> sines(double leftHz, double left, double rightHz, double right)
{
    std::vector<float> audio;
    for (std::size_t n = 0; n < kSecond; ++n) {
        const double turn = 2.0 * std::numbers::pi * double(n) / 48000.0;
        audio.push_back(float(left * std::sin(turn * leftHz)));
        audio.push_back(float(right * std::cos(turn * rightHz)));
    }
    return audio;
}

TEST(AudioSpectrumTest, ReadsEachChannelsToneInItsOwnChannelHoweverTheAudioIsCut)
{
    // 0.5 is -6.02 dBFS, 0.01 is -40 dBFS.
    constexpr std::size_t kLeft = 343, kRight = 5120; // bins
    const auto audio =
        sines(kLeft * AudioSpectrum::kBinHz, 0.5, kRight * AudioSpectrum::kBinHz, 0.01);
    AudioSpectrum spectrum;
    for (std::size_t at = 0, length = 1; at < kSecond; at += length, length = length * 3 % 5003 + 1)
        spectrum.add(audio.data() + 2 * at, std::min(length, kSecond - at));
    EXPECT_EQ(spectrum.segments(), (48000u - 8192u) / 4096u + 1u);
    constexpr double kErrorDb = 0.1;
    constexpr double kHalfBinDb = -1.42;    // Hann's sin(pi d) / (pi d (1 - d^2)) at d = 1 / 2
    constexpr double kCrosstalkDb = -130.0; // rounding of single-precision audio
    const auto left = spectrum.left(), right = spectrum.right();
    EXPECT_NEAR(left[kLeft], -6.02, kErrorDb);
    EXPECT_NEAR(left[kLeft - 1], -6.02 + kHalfBinDb, kErrorDb);
    EXPECT_NEAR(left[kLeft + 1], -6.02 + kHalfBinDb, kErrorDb);
    EXPECT_NEAR(right[kRight], -40.0, kErrorDb);
    EXPECT_LT(right[kLeft], kCrosstalkDb);
    EXPECT_LT(left[kRight], kCrosstalkDb);
}
} // namespace

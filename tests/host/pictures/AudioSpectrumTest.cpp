// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/AudioSpectrum.h"

#include "support/Peak.h"

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
    // 1001.3 Hz lies between two bins. 0.5 is -6.02 dBFS, 0.01 is -40 dBFS.
    const auto audio = sines(1001.3, 0.5, 15000.0, 0.01);
    AudioSpectrum spectrum;
    for (std::size_t at = 0, length = 1; at < kSecond; at += length, length = length * 3 % 5003 + 1)
        spectrum.add(audio.data() + 2 * at, std::min(length, kSecond - at));
    EXPECT_EQ(spectrum.segments(), (48000u - 8192u) / 4096u + 1u);
    constexpr double kErrorDb = 0.1;
    constexpr double kCrosstalkDb = -130.0; // rounding of single-precision audio
    const auto peak = [](const auto &levels, double hz) {
        return test::peakNear(12000.0, 24000.0, levels, hz, 50.0);
    };
    EXPECT_NEAR(peak(spectrum.left(), 1000.0).levelDb, -6.02, kErrorDb);
    EXPECT_NEAR(peak(spectrum.left(), 1000.0).frequencyHz, 1001.3, 0.2);
    EXPECT_NEAR(peak(spectrum.right(), 15000.0).levelDb, -40.0, kErrorDb);
    EXPECT_LT(peak(spectrum.right(), 1000.0).levelDb, kCrosstalkDb);
    EXPECT_LT(peak(spectrum.left(), 15000.0).levelDb, kCrosstalkDb);
}
} // namespace

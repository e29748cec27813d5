// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/AudioSpectrum.h"

#include "pictures/AudioSpectrumPicture.h"
#include "support/Peak.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <random>

namespace
{
using host::AudioSpectrum;

constexpr struct
{
    double centerHz;
    double spanHz;
} kAxis{12000.0, 24000.0};
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

TEST(AudioSpectrumTest, ReadsEachChannelsToneInItsOwnChannelOnly)
{
    // 1001.3 Hz lies between two bins. 0.5 is -6.02 dBFS, 0.01 is -40 dBFS.
    const auto audio = sines(1001.3, 0.5, 15000.0, 0.01);
    AudioSpectrum spectrum;
    spectrum.add(audio.data(), kSecond);
    const auto left = spectrum.left();
    const auto right = spectrum.right();
    constexpr double kErrorDb = 0.1;
    constexpr double kCrosstalkDb = -130.0; // rounding of single-precision audio
    const auto atLeft = test::peakNear(kAxis.centerHz, kAxis.spanHz, left, 1000.0, 50.0);
    const auto atRight = test::peakNear(kAxis.centerHz, kAxis.spanHz, right, 15000.0, 50.0);
    EXPECT_NEAR(atLeft.levelDb, -6.02, kErrorDb);
    EXPECT_NEAR(atLeft.frequencyHz, 1001.3, 0.2);
    EXPECT_NEAR(atRight.levelDb, -40.0, kErrorDb);
    EXPECT_LT(
        test::peakNear(kAxis.centerHz, kAxis.spanHz, right, 1000.0, 50.0).levelDb, kCrosstalkDb);
    EXPECT_LT(
        test::peakNear(kAxis.centerHz, kAxis.spanHz, left, 15000.0, 50.0).levelDb, kCrosstalkDb);
}

TEST(AudioSpectrumTest, HoldsThePowerOfNoise)
{
    // A sine of amplitude a has the power a * a / 2; noise fills each bin through the window's
    // equivalent noise bandwidth, 1.5 bins of a segment and 3 of a transform twice as long.
    constexpr double kSigma = 0.1;
    constexpr double kErrorDb = 0.2; // four times the spread of an estimate from 96000 samples
    std::mt19937 random(3);
    std::normal_distribution<float> normal(0.0f, float(kSigma));
    std::vector<float> audio(2 * 2 * kSecond);
    for (float &sample : audio)
        sample = normal(random);
    AudioSpectrum spectrum;
    spectrum.add(audio.data(), 2 * kSecond);
    double power = 0.0;
    for (const float level : spectrum.right())
        power += std::pow(10.0, level / 10.0) / 2.0 / 3.0;
    EXPECT_NEAR(10.0 * std::log10(power), 20.0 * std::log10(kSigma), kErrorDb);
}

TEST(AudioSpectrumTest, DoesNotDependOnHowTheAudioIsCut)
{
    const auto audio = sines(440.0, 0.3, 880.0, 0.2);
    AudioSpectrum whole;
    AudioSpectrum cut;
    whole.add(audio.data(), kSecond);
    for (std::size_t at = 0, length = 1; at < kSecond; at += length, length = length * 3 % 5003 + 1)
        cut.add(audio.data() + 2 * at, std::min(length, kSecond - at));
    // (48000 - 8192) / 4096 + 1
    EXPECT_EQ(whole.segments(), 10u);
    EXPECT_EQ(cut.segments(), whole.segments());
    EXPECT_EQ(cut.left(), whole.left());
    EXPECT_EQ(cut.right(), whole.right());
}

TEST(AudioSpectrumTest, TooLittleAudioIsTold)
{
    host::AudioSpectrumPicture picture;
    const std::vector<float> audio(2 * AudioSpectrum::kSegment);
    picture.addFrames(audio.data(), AudioSpectrum::kSegment - 1);
    QString error;
    EXPECT_FALSE(picture.save("audio.png", &error));
    EXPECT_EQ(error, "audio.png: too little audio for a spectrum");
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include "FmSoft/FmDecode.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace
{
constexpr double kIfRate = 192000.0;
constexpr double kPcmRate = 48000.0;
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr std::size_t kBlock = 512;

FmDecoder decoder(bool stereo = true, double tuningOffset = 0.0)
{
    return {kIfRate, tuningOffset, kPcmRate, stereo, 50.0, 100000.0, 75000.0, 15000.0, 1};
}

// A broadcast signal at 75 kHz deviation: left and right tones without pre-emphasis, pilot 9 %.
struct Station
{
    double leftHz = 1000.0;
    double rightHz = 0.0; // 0: silent
    double pilot = 0.09;
    double offset = 0.0; // Hz, of the carrier

    IQSampleVector next()
    {
        IQSampleVector block(kBlock);
        for (auto &x : block) {
            const double t = kTwoPi * static_cast<double>(sample++) / kIfRate;
            const double left = std::sin(leftHz * t);
            const double right = std::sin(rightHz * t);
            const double multiplex = 0.225 * (left + right) + pilot * std::sin(19000.0 * t)
                + 0.225 * (left - right) * std::sin(38000.0 * t);
            phase += kTwoPi / kIfRate * (75000.0 * multiplex + offset);
            x = {static_cast<float>(0.2 * std::cos(phase)),
                static_cast<float>(0.2 * std::sin(phase))};
        }
        return block;
    }

    long long sample = 0;
    double phase = 0.0;
};

// Left and right of the last second out of three.
std::vector<COMPLEX> listen(FmDecoder &fm, Station &station)
{
    std::vector<COMPLEX> audio;
    SampleVector block;
    for (int n = 0; n < int(3 * kIfRate / kBlock); ++n) {
        fm.process(station.next(), block);
        for (std::size_t i = 0; i + 1 < block.size(); i += 2)
            audio.push_back({block[i], block[i + 1]});
    }
    return test::last(audio, 48000);
}

double levelOf(const std::vector<COMPLEX> &audio, double hz, bool left)
{
    const auto ear = test::ear(audio, left ? &COMPLEX::re : &COMPLEX::im);
    return 2.0 * test::magnitude(test::component(ear, hz / kPcmRate));
}

TEST(FmDecoderTest, SeparatesTheEarsAndDeemphasisesEach)
{
    // The IF filter's slope on the upper sideband of the difference signal sets the bound.
    constexpr double kSeparationDb = 27.0;
    constexpr double kRippleDb = 0.4; // pass-band of the resampler, and that slope
    // 50 us as the pole-matched one-pole at 48 kHz.
    const auto deemphasis = [](double hz) {
        const double a = std::exp(-1.0 / (50e-6 * kPcmRate));
        const double w = kTwoPi * hz / kPcmRate;
        return (1.0 - a) / std::sqrt(1.0 + a * a - 2.0 * a * std::cos(w));
    };
    Station station;
    station.rightHz = 4000.0;
    FmDecoder fm = decoder();
    const std::vector<COMPLEX> audio = listen(fm, station);
    EXPECT_TRUE(fm.stereoDetected());
    for (const bool left : {true, false}) {
        const double hz = left ? station.leftHz : station.rightHz;
        const double level = levelOf(audio, hz, left);
        EXPECT_NEAR(test::decibels(level / 0.45 / deemphasis(hz)), 0.0, kRippleDb) << hz;
        EXPECT_GT(test::decibels(level / levelOf(audio, hz, !left)), kSeparationDb) << hz;
    }
}

TEST(FmDecoderTest, WithoutPilotBothEarsAreAlikeAndTheOffsetIsTunedOut)
{
    constexpr double kTuningStep = 1500.0 / 75000.0; // half a step of the fine tuner
    constexpr double kHighPass = 1e-3;               // what it leaves of the rest of the offset
    Station station;
    station.pilot = 0.0;
    station.offset = 31000.0;
    FmDecoder fm = decoder(true, station.offset);
    const std::vector<COMPLEX> audio = listen(fm, station);
    EXPECT_FALSE(fm.stereoDetected());
    for (const COMPLEX &x : audio)
        ASSERT_EQ(x.re, x.im);
    EXPECT_GT(levelOf(audio, 1000.0, true), 0.1);
    EXPECT_LT(levelOf(audio, 0.0, true), kHighPass);
    EXPECT_NEAR(fm.basebandMean(), 0.0, kTuningStep);
}

} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Signals.h"

#include "DspCore/audio/Equalizer18.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <complex>
#include <numbers>

namespace
{
using DspCore::Equalizer18;

constexpr double kRate = 48000.0;
constexpr std::array<double, 18> kCentres = {31, 63, 87, 125, 175, 250, 350, 500, 700, 1000, 1400,
    2000, 2800, 4000, 5600, 8000, 11200, 16000};

// Analog prototypes at the frequency that the bilinear transform puts onto hz (Zoelzer, DAFX):
// peak (s^2 + V s/q + 1) / (s^2 + s/q + 1); low shelf (s^2 + sqrt(2V) s + V) / (s^2 + sqrt(2) s +
// 1); high shelf with s turned into 1/s. A cut is the inverse of the boost.
double analogDb(std::size_t band, int gainDb, double hz)
{
    const double v = std::pow(10.0, std::abs(gainDb) / 20.0);
    const auto warped = [](double f) { return std::tan(std::numbers::pi * f / kRate); };
    std::complex<double> s{0.0, warped(hz) / warped(kCentres[band])};
    if (band == 17)
        s = 1.0 / s;
    const bool shelf = band == 0 || band == 17;
    const std::complex<double> boost = shelf
        ? (s * s + std::sqrt(2.0 * v) * s + v) / (s * s + std::numbers::sqrt2 * s + 1.0)
        : (s * s + v / 2.0 * s + 1.0) / (s * s + 0.5 * s + 1.0);
    return (gainDb < 0 ? -1.0 : 1.0) * test::decibels(std::abs(boost));
}

double measuredDb(Equalizer18 &equalizer, double hz)
{
    equalizer.clear();
    std::vector<COMPLEX> signal = test::tone(96000, hz / kRate);
    for (std::size_t at = 0; at < signal.size(); at += 4000)
        EXPECT_TRUE(equalizer.process(&signal[at], 4000));
    return test::decibels(test::rms({signal.begin() + 48000, signal.end()}));
}

TEST(Equalizer18Test, EveryBandFollowsTheory)
{
    constexpr double kToleranceDb = 0.1;
    for (std::size_t band = 0; band < kCentres.size(); ++band) {
        const int gain = band % 2 == 0 ? 12 : -9;
        Equalizer18 equalizer;
        equalizer.setSampleRate(kRate);
        equalizer.setEnable(true);
        QVector<int> gains(18, 0);
        gains[int(band)] = gain;
        ASSERT_TRUE(equalizer.init(gains));
        for (const double ratio : {0.5, 0.9, 1.0, 1.3}) {
            const double hz = kCentres[band] * ratio;
            EXPECT_NEAR(measuredDb(equalizer, hz), analogDb(band, gain, hz), kToleranceDb)
                << "band " << band << " at " << hz << " Hz, " << gain << " dB";
        }
    }
}

TEST(Equalizer18Test, DisabledIsFlatAndTheGainsComeBack)
{
    constexpr double kFlatDb = 1e-9;
    Equalizer18 equalizer;
    equalizer.setSampleRate(kRate);
    EXPECT_TRUE(equalizer.init(QVector<int>(18, 6)));
    for (const bool again : {false, true}) {
        equalizer.setEnable(false);
        EXPECT_NEAR(measuredDb(equalizer, 1000.0), 0.0, kFlatDb) << again;
        equalizer.setEnable(true);
        EXPECT_GT(measuredDb(equalizer, 1000.0), 6.0) << again;
        EXPECT_FALSE(equalizer.init(QVector<int>(17, 0))) << "a short list changes nothing";
    }
}
} // namespace

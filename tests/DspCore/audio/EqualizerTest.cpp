// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/audio/Equalizer18.h"
#include "DspCore/filters/Biquad.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <array>

namespace
{
using DspCore::Biquad;
using DspCore::Equalizer18;

constexpr double kRoundOff = 1e-11; // 18 resonant sections in one order, other roundings
constexpr std::array<double, 18> kCentres = {31, 63, 87, 125, 175, 250, 350, 500, 700, 1000, 1400,
    2000, 2800, 4000, 5600, 8000, 11200, 16000}; // Hz

std::vector<COMPLEX> inSeries(const QVector<int> &gains, double rate, std::vector<COMPLEX> signal)
{
    for (int band = 0; band < 18; ++band) {
        Biquad section;
        section.init(band == 0 ? Biquad::Type::LowShelf
                : band == 17   ? Biquad::Type::HighShelf
                               : Biquad::Type::Peak,
            kCentres[std::size_t(band)] / rate, 2.0, gains[band]);
        section.setEnable(true);
        section.process2(signal.data(), int(signal.size()));
    }
    return signal;
}

TEST(Equalizer18Test, IsPeaksBetweenTwoShelvesAndFlatWhileOff)
{
    const QVector<int> gains = {12, -9, 3, 0, 6, -20, 20, 1, 2, -3, 4, -5, 6, -7, 8, -9, 10, -11};
    const auto noise = test::noise(4096, 5);
    Equalizer18 equalizer;
    EXPECT_TRUE(equalizer.init(gains));
    for (const double rate : {48000.0, 96000.0, 48000.0}) {
        equalizer.setSampleRate(rate);
        for (const bool on : {true, false}) {
            equalizer.setEnable(on);
            EXPECT_FALSE(equalizer.init(QVector<int>(17, 0))) << "a short list changes nothing";
            equalizer.clear();
            auto signal = noise;
            EXPECT_TRUE(equalizer.process(signal.data(), 4096));
            EXPECT_LT(test::maxError(signal, on ? inSeries(gains, rate, noise) : noise), kRoundOff)
                << rate << " " << on;
        }
    }
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/Biquad.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include <cmath>
#include <complex>
#include <gtest/gtest.h>
#include <numbers>

using DspCore::Biquad;
using Type = Biquad::Type;

namespace
{
constexpr double kRoundOff = 1e-9; // an impulse response of 16384 samples, cut and summed

/// |H(s)| of the analog prototypes, s = j tan(pi f) / tan(pi fc), as in the tables of Zoelzer's
/// DAFX; v is the linear gain of a boost.
double prototypeGain(Type type, double fc, double q, double gainDb, double f)
{
    using namespace std::complex_literals;
    const std::complex<double> s =
        1i * (std::tan(std::numbers::pi * f) / std::tan(std::numbers::pi * fc));
    const double v = std::pow(10.0, std::abs(gainDb) / 20.0);
    const std::complex<double> resonance = s * s + s / q + 1.0;
    const auto cutIf = [&](std::complex<double> h) {
        return gainDb < 0.0 ? std::abs(1.0 / h) : std::abs(h);
    };
    switch (type) {
    case Type::LowPass:
        return std::abs(1.0 / resonance);
    case Type::HighPass:
        return std::abs(s * s / resonance);
    case Type::BandPass:
        return std::abs(s / q / resonance);
    case Type::Notch:
        return std::abs((s * s + 1.0) / resonance);
    case Type::Peak:
        return cutIf((s * s + v * s / q + 1.0) / resonance);
    case Type::LowShelf:
        return cutIf((s * s + std::sqrt(2.0 * v) * s + v) / (s * s + std::sqrt(2.0) * s + 1.0));
    case Type::HighShelf:
        return cutIf(
            (v * s * s + std::sqrt(2.0 * v) * s + 1.0) / (s * s + std::sqrt(2.0) * s + 1.0));
    }
    return -1.0;
}

Biquad enabled(Type type, double fc, double q, double gainDb)
{
    Biquad filter;
    filter.init(type, fc, q, gainDb);
    filter.setEnable(true);
    return filter;
}

} // namespace

TEST(BiquadTest, ResponseIsThatOfTheAnalogPrototype)
{
    struct Row
    {
        Type type;
        double fc, q, gainDb;
    };
    const Row rows[] = {{Type::LowPass, 0.01, 3.0, 0.0}, {Type::LowPass, 0.1, 0.0, 0.0},
        {Type::HighPass, 0.45, 0.99, 0.0}, {Type::BandPass, 0.2, 30.0, 0.0},
        {Type::Notch, 0.2, 10.0, 0.0}, {Type::Peak, 0.05, 2.0, 12.0},
        {Type::Peak, 0.05, 2.0, -12.0}, {Type::LowShelf, 0.02, 2.0, 9.0},
        {Type::LowShelf, 0.02, 2.0, -9.0}, {Type::HighShelf, 0.2, 2.0, 9.0},
        {Type::HighShelf, 0.2, 2.0, -9.0}};
    for (const Row &row : rows) {
        Biquad filter = enabled(row.type, row.fc, row.q, row.gainDb);
        auto response = test::impulse(16384);
        filter.process2(response.data(), int(response.size()));
        const double q = std::max(row.q, 0.1);
        for (const double f : {0.0, 0.005, row.fc, 0.21, 0.4, 0.499})
            EXPECT_NEAR(test::magnitude(test::fourierSum(response, f)),
                prototypeGain(row.type, row.fc, q, row.gainDb, f), kRoundOff)
                << "type " << int(row.type) << ", gain " << row.gainDb << ", at " << f;
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/noise/LmsPredictor.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <array>
#include <complex>

namespace
{
using Complex = std::complex<double>;

constexpr double kRate = 0.3; // fast, so that every weight matters within the stream
constexpr double kLeak = 0.01;
constexpr double kRoundOff = 1e-11;

/// The predictor in its plain form: a ring that wraps, prediction first, then the weights.
struct PlainPredictor
{
    int taps;
    int delay;
    std::array<Complex, 1024> line{};
    std::vector<Complex> weights = std::vector<Complex>(2048);
    unsigned position = 0;

    Complex at(int j) const { return line[(position + unsigned(delay + j)) % 1024]; }

    Complex predicted(Complex x)
    {
        line[position] = x;
        Complex sum = 0.0;
        double power = 0.0;
        for (int j = 0; j < taps; ++j) {
            sum += std::conj(weights[std::size_t(j)]) * at(j);
            power += std::norm(at(j));
        }
        const Complex step = kRate / (power + 1e-10) * std::conj(x - sum);
        for (int j = 0; j < taps; ++j)
            weights[std::size_t(j)] =
                (1.0 - kRate * kLeak) * weights[std::size_t(j)] + step * at(j);
        position = (position + 1023) % 1024;
        return sum;
    }
};

struct Setting
{
    int taps;
    int delay;
};

class LmsTwinTest : public testing::TestWithParam<Setting>
{ };

TEST_P(LmsTwinTest, FollowsThePlainFormAroundTheLine)
{
    const auto [taps, delay] = GetParam();
    constexpr int kLength = 3000;
    auto stream = test::noise(kLength, 8);
    test::add(stream, test::tone(kLength, 0.03, 1.0));
    DspCore::LmsPredictor predictor(taps, delay, kRate, kLeak);
    PlainPredictor plain{taps, delay};
    double error = 0.0;
    predictor.process(stream.data(), kLength, [&](COMPLEX x, COMPLEX y) {
        error = std::max(error, std::abs(Complex(y.re, y.im) - plain.predicted({x.re, x.im})));
        return y;
    });
    EXPECT_LT(error, kRoundOff);
}

// Whole vectors, a rest, no delay, weights on the sample that is replaced, and around the line.
INSTANTIATE_TEST_SUITE_P(Settings, LmsTwinTest,
    testing::Values(Setting{64, 45}, Setting{45, 45}, Setting{98, 0}, Setting{1000, 64},
        Setting{1, 1023}, Setting{1200, 3}));
} // namespace

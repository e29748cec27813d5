// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ipps.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <memory>
#include <numbers>
#include <random>
#include <tuple>
#include <vector>

namespace
{
using FilterPtr = std::unique_ptr<IppsIIRState_64f, IppStatus (*)(IppsIIRState_64f *)>;

FilterPtr filter(const std::vector<double> &taps, const double *delays = nullptr)
{
    IppsIIRState_64f *state = nullptr;
    EXPECT_EQ(
        ippsIIRInitAlloc_64f(&state, taps.data(), int(taps.size()) / 2 - 1, delays), ippStsNoErr);
    return FilterPtr(state, ippsIIRFree_64f);
}

/// |H|^2 of b / a at a frequency in cycles per sample.
double powerGain(const std::vector<double> &taps, double frequency)
{
    using Complex = std::complex<long double>;
    const std::size_t order = taps.size() / 2 - 1;
    const auto z = std::polar(1.0L, -2.0L * std::numbers::pi_v<long double> * frequency); // 1/z
    Complex b = 0;
    Complex a = 0;
    for (std::size_t i = order + 1; i-- > 0;) {
        b = b * z + Complex(taps[i]);
        a = a * z + Complex(taps[order + 1 + i]);
    }
    return double(std::norm(b / a));
}

double chebyshevPolynomial(int order, double x)
{
    return std::abs(x) <= 1.0 ? std::cos(order * std::acos(x)) : std::cosh(order * std::acosh(x));
}

// |H|^2 = 1 / (1 + e^2 F(x)^2) with x the ratio of the warped frequencies and F a power or a
// Chebyshev polynomial.
TEST(IirDesignTest, ResponseIsTheClosedFormAtAnyFrequency)
{
    constexpr double kRippleDb = 0.5;
    const auto expectClosedForm = [](const auto &row, bool high, bool chebyshev) {
        const auto [order, cutOff, tolerance] = row;
        std::vector<double> taps(2 * (static_cast<std::size_t>(order) + 1));
        const auto design = high ? ippsIIRGenHighpass_64f : ippsIIRGenLowpass_64f;
        ASSERT_EQ(design(cutOff, chebyshev ? kRippleDb : 0.0, order, taps.data(),
                      chebyshev ? ippChebyshev1 : ippButterworth),
            ippStsNoErr);
        EXPECT_EQ(taps[static_cast<std::size_t>(order) + 1], 1.0);
        for (const double f : {0.5 * cutOff, cutOff, 0.1, 0.24, 0.4}) {
            double x = std::tan(std::numbers::pi * f) / std::tan(std::numbers::pi * cutOff);
            x = high ? 1.0 / x : x;
            const double squared = chebyshev ? (std::pow(10.0, kRippleDb / 10.0) - 1.0)
                    * std::pow(chebyshevPolynomial(order, x), 2)
                                             : std::pow(x, 2 * order);
            EXPECT_NEAR(powerGain(taps, f), 1.0 / (1.0 + squared), tolerance)
                << "order " << order << ", cut-off " << cutOff << ", at " << f;
        }
    };
    // Order, cut-off, tolerance: taps of a high order and a low cut-off are ill-conditioned.
    const std::tuple<int, double, double> rows[] = {{1, 1e-6, 1e-9}, {1, 0.499999, 1e-9},
        {2, 0.25, 1e-12}, {5, 0.1, 1e-9}, {10, 0.1, 1e-6}, {12, 0.25, 1e-9}};
    for (const auto &row : rows) {
        for (const bool high : {false, true}) {
            expectClosedForm(row, high, false);
            expectClosedForm(row, high, true);
        }
    }
}

/// The difference equation as it stands, in extended precision.
std::vector<double> filtered(const std::vector<double> &taps, const std::vector<double> &x)
{
    const std::size_t order = taps.size() / 2 - 1;
    std::vector<long double> y(x.size());
    for (std::size_t n = 0; n < x.size(); ++n) {
        long double sum = 0;
        for (std::size_t i = 0; i <= std::min(n, order); ++i)
            sum += static_cast<long double>(taps[i]) * x[n - i];
        for (std::size_t i = 1; i <= std::min(n, order); ++i)
            sum -= static_cast<long double>(taps[order + 1 + i]) * y[n - i];
        y[n] = sum / taps[order + 1];
    }
    return {y.begin(), y.end()};
}

// With no input the delays come out one after the other as if they were a signal through 1 / a, so
// that they are added to the input of an all-pole filter.
TEST(IirTest, FollowsTheDifferenceEquationFromItsDelaysAtAnyOrderAndCut)
{
    constexpr double kRoundOff = 1e-13;
    std::mt19937 generator(9);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    const auto random = [&] { return uniform(generator); };
    for (const int order : {1, 2, 3, 6, 10, 12, 13, 17}) {
        for (const bool startsEmpty : {true, false}) {
            const auto size = static_cast<std::size_t>(order);
            std::vector<double> taps(2 * (size + 1));
            std::generate(taps.begin(), taps.end(), random);
            // Within 0.9 of a leading tap in sum, all poles lie inside the unit circle.
            taps[size + 1] = startsEmpty ? -2.0 : 2.0;
            for (std::size_t i = 1; i <= size; ++i)
                taps[size + 1 + i] *= 1.8 / double(size);
            std::vector<double> input(1100), delays(size);
            std::generate(input.begin(), input.end(), random);
            std::generate(delays.begin(), delays.end(), random);

            auto expected = filtered(taps, input);
            if (!startsEmpty) {
                auto allPole = taps;
                std::fill(allPole.begin(), allPole.begin() + order + 1, 0.0);
                allPole[0] = taps[size + 1];
                auto ringing = delays;
                ringing.resize(input.size());
                ringing = filtered(allPole, ringing);
                for (std::size_t n = 0; n < expected.size(); ++n)
                    expected[n] += ringing[n];
            }
            const auto state = filter(taps, startsEmpty ? nullptr : delays.data());
            delays.assign(size, 1e9); // a copy was taken
            auto data = input;
            int done = 0;
            for (const int length : {1, 2, 3, 511, 583}) {
                ASSERT_EQ(ippsIIR_64f_I(data.data() + done, length, state.get()), ippStsNoErr);
                done += length;
            }
            EXPECT_LT(test::maxError(data, expected), kRoundOff) << "order " << order;
        }
    }
}
} // namespace

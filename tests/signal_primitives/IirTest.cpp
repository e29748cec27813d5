// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ipps.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace
{
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
            IppsIIRState_64f *state = nullptr;
            ippsIIRInitAlloc_64f(&state, taps.data(), order, startsEmpty ? nullptr : delays.data());
            delays.assign(size, 1e9); // a copy was taken
            auto data = input;
            int done = 0;
            for (const int length : {1, 2, 3, 511, 583}) {
                ASSERT_EQ(ippsIIR_64f_I(data.data() + done, length, state), ippStsNoErr);
                done += length;
            }
            ippsIIRFree_64f(state);
            EXPECT_LT(test::maxError(data, expected), kRoundOff) << "order " << order;
        }
    }
}
} // namespace

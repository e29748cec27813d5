// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/SpectrumInterpolator.h"
#include "Lagrange.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

using DspCore::SpectrumInterpolator;

namespace
{
constexpr double kSinglePrecision = 3e-5; // of values up to 100

std::vector<float> noisyLine(int size)
{
    std::vector<float> line;
    for (const COMPLEX &sample : test::noise(size, /*seed*/ 3))
        line.push_back(float(-100.0 + 20.0 * sample.re));
    return line;
}

TEST(SpectrumInterpolatorTest, StretchesAndShrinksAlongTheCubicsOfTheLine)
{
    SpectrumInterpolator interpolator; // one for all, so that nothing of a line stays for the next
    const std::pair<int, int> counts[] = {
        {229, 256}, {3669, 4096}, {58710, 65536}, {4095, 4096}, {4096, 300}, {5, 4096}, {1, 2}};
    for (const auto &[from, to] : counts) {
        std::vector<float> in = noisyLine(from);
        const std::vector<double> expected = test::stretched(in, to);
        std::vector<float> out(std::size_t(to), 0.0f);
        interpolator.process(in.data(), unsigned(from), out.data(), unsigned(to));
        const std::vector<double> actual(out.begin(), out.end());
        EXPECT_LT(test::maxError(actual, expected), kSinglePrecision) << from << " to " << to;
    }
}

TEST(SpectrumInterpolatorTest, DoubleLinesGoTheSameWay)
{
    constexpr double kRampRoundOff = 1e-4; // single precision of values up to 917
    std::vector<double> ramp(917);
    for (int n = 0; n < 917; ++n)
        ramp[std::size_t(n)] = n;
    std::vector<double> out(1024);
    SpectrumInterpolator().process(ramp.data(), 917, out.data(), 1024);
    // The first output still sees the silence before the ramp.
    for (int j = 1; j < 1024; ++j)
        ASSERT_NEAR(out[std::size_t(j)], (j + 3) * 917.0 / 1027.0 - 2.0, kRampRoundOff) << j;
}

TEST(SpectrumInterpolatorTest, EqualCountsCopyAndNoInputLeavesTheOutput)
{
    std::vector<float> in = noisyLine(100);
    std::vector<float> out(100, 7.0f);
    SpectrumInterpolator().process(in.data(), 0, out.data(), 100);
    EXPECT_EQ(out, std::vector<float>(100, 7.0f));
    SpectrumInterpolator().process(in.data(), 100, out.data(), 100);
    EXPECT_EQ(out, noisyLine(100));
}
} // namespace

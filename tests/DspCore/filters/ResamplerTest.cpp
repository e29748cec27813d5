// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/Resampler.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

using DspCore::Resampler;

namespace
{
constexpr double kSinglePrecision = 2e-6; // eight products of single precision, gain up to 3

std::vector<COMPLEX> resampled(
    Resampler &resampler, std::vector<COMPLEX> stream, const std::vector<int> &cuts)
{
    std::vector<COMPLEX> result;
    std::vector<COMPLEX> out(SIGNAL_MAX_SIZE);
    COMPLEX *block = stream.data();
    for (const int length : cuts) {
        int outLength = -1;
        resampler.process(block, length, out.data(), outLength);
        result.insert(result.end(), out.begin(), out.begin() + outLength);
        block += length;
    }
    return result;
}

/// The filter of a factor, seen as the response of pure up-sampling to an impulse.
std::vector<COMPLEX> filterOf(int up)
{
    Resampler resampler;
    resampler.init(up, 1);
    return resampled(resampler, test::impulse(8), {8});
}

/// Zero stuffing, convolution in double precision, decimation.
std::vector<COMPLEX> plain(const std::vector<COMPLEX> &in, int up, int down)
{
    const auto h = filterOf(up);
    std::vector<COMPLEX> out;
    for (long long at = 0; at < (long long)in.size() * up; at += down) {
        COMPLEX sum{0.0, 0.0};
        for (long long k = 0; k < (long long)h.size() && k <= at; ++k) {
            if ((at - k) % up == 0) {
                const COMPLEX x = in[std::size_t((at - k) / up)];
                sum.re += h[std::size_t(k)].re * x.re;
                sum.im += h[std::size_t(k)].re * x.im;
            }
        }
        out.push_back(sum);
    }
    return out;
}
} // namespace

TEST(ResamplerTest, FiltersAreTheWindowedSinc)
{
    // up, tap, value: computed by hand from sin(0.8 pi t / up) / (pi t), the absolute sum of all
    // taps and, from 32 taps on, the four-term window.
    const std::tuple<int, int, double> rows[] = {{1, 0, 0.03410740950856252}, {1, 1, 0.0},
        {1, 3, 0.3863086349714584}, {3, 11, 0.15980100053268598}, {4, 0, -3.8609580551424345e-06},
        {4, 10, -0.014545116592677803}, {4, 15, 0.3279939779021991}};
    for (const auto &[up, tap, value] : rows) {
        const auto h = filterOf(up);
        ASSERT_EQ(int(h.size()), 8 * up);
        EXPECT_NEAR(h[std::size_t(tap)].re, value * up, kSinglePrecision) << up << " " << tap;
        EXPECT_NEAR(h[std::size_t(8 * up - 1 - tap)].re, value * up, kSinglePrecision);
    }
}

TEST(ResamplerTest, EqualsZeroStuffingAndConvolutionHoweverTheStreamIsCut)
{
    const auto stream = test::noise(6000, 1);
    for (const auto &[up, down] : {std::pair{1, 1}, {1, 64}, {3, 160}, {147, 160}, {7, 3}}) {
        // Short enough that a block's output stays within the largest block.
        const int longest = std::min(SIGNAL_MAX_SIZE, SIGNAL_MAX_SIZE * down / up - 1);
        Resampler resampler;
        resampler.init(up, down);
        const auto out = resampled(resampler, stream, test::randomCuts(6000, longest, 2));
        EXPECT_LT(test::maxError(out, plain(stream, up, down)), kSinglePrecision)
            << up << "/" << down;
    }
}

TEST(ResamplerTest, RunsOnAcrossTheEndOfItsRing)
{
    constexpr int kLength = 131072 + 20; // just past the ring
    const auto stream = test::noise(kLength, 3);
    const std::vector<COMPLEX> end(stream.end() - 40, stream.end());
    Resampler resampler;
    Resampler fresh;
    resampler.init(1, 1);
    fresh.init(1, 1);
    auto out = resampled(resampler, stream, test::randomCuts(kLength, SIGNAL_MAX_SIZE, 4));
    auto expected = resampled(fresh, end, {40});
    // What only knows the last 40 samples agrees once its 8 taps are full.
    out.erase(out.begin(), out.end() - 33);
    expected.erase(expected.begin(), expected.end() - 33);
    EXPECT_EQ(out, expected);
}

TEST(ResamplerTest, RatesReduceToARatio)
{
    const std::tuple<double, double, int, int> rows[] = {{192000.0, 48000.0, 1, 4},
        {2560000.0, 48000.0, 3, 160}, {48000.0, 44100.0, 147, 160},
        {48000.5, 48000.0, 32000 * 3, 96001}, {1100.0, 2200.0, 22, 11}, {0.0, 0.0, 0, 0}};
    for (const auto &[in, out, up, down] : rows) {
        int reduced[2];
        Resampler::gdc(in, out, reduced[0], reduced[1]);
        EXPECT_TRUE(reduced[0] == up && reduced[1] == down) << in << " " << out;
    }
}

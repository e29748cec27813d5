// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/DecimatingFir.h"
#include "DspCore/filters/Cuts.h"
#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/Resampler.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

using DspCore::DecimatingFir;

namespace
{
// The resampler rounds its input and each of eight products to single precision.
constexpr double kSingleRoundOff = 5e-7;

constexpr int kTaps = 500;

/// The two blocks that the decimating filter stands for.
class PlainPair
{
public:
    void init(double edge, int up, int down)
    {
        mLimit.init(-edge, edge, kTaps);
        mResampler.init(up, down);
    }

    void process(std::vector<COMPLEX> block, COMPLEX *out, int &outLength)
    {
        mLimit.process(block);
        mResampler.process(block.data(), int(block.size()), out, outLength);
    }

    void clear()
    {
        mLimit.clear();
        mResampler.clear();
    }

private:
    DspCore::FastFir mLimit;
    DspCore::Resampler mResampler;
};

std::vector<COMPLEX> first(const std::vector<COMPLEX> &samples, int count)
{
    return {samples.begin(), samples.begin() + count};
}

struct Ratio
{
    int deviceRate; // Hz, down to 48 kHz
    int up;
    int down;
};
} // namespace

class DecimatingFirRates : public testing::TestWithParam<Ratio>
{ };

TEST_P(DecimatingFirRates, EqualsBandLimitAndResampler)
{
    const auto [rate, up, down] = GetParam();
    const double edge = 21000.0 / rate;
    constexpr int kLength = 12000;
    const auto stream = test::noise(kLength, unsigned(down));
    PlainPair plain;
    DecimatingFir fir;
    plain.init(edge, up, down);
    fir.init(edge, kTaps, up, down);
    std::vector<COMPLEX> expected(SIGNAL_MAX_SIZE);
    std::vector<COMPLEX> decimated(SIGNAL_MAX_SIZE);
    std::vector<int> cuts(8, 512);
    for (const int length : test::randomCuts(kLength - 8 * 512, 2000, 3))
        cuts.push_back(length);
    int at = 0;
    int sinceClear = 0;
    for (const int length : cuts) {
        int count = -1;
        int expectedCount = 0;
        plain.process(
            {stream.begin() + at, stream.begin() + at + length}, expected.data(), expectedCount);
        fir.process(stream.data() + at, length, decimated.data(), count);
        ASSERT_EQ(count, expectedCount) << at;
        ASSERT_LT(test::maxError(first(decimated, count), first(expected, count)), kSingleRoundOff)
            << at;
        at += length;
        // The history goes, the place between two outputs stays.
        if (++sinceClear == 20) {
            plain.clear();
            fir.clear();
            sinceClear = 0;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(DecimatingFirTest, DecimatingFirRates,
    testing::Values(Ratio{48000, 1, 1}, Ratio{96000, 1, 2}, Ratio{192000, 1, 4},
        Ratio{384000, 1, 8}, Ratio{768000, 1, 16}, Ratio{1536000, 1, 32}, Ratio{1920000, 1, 40},
        Ratio{2560000, 3, 160}, Ratio{3072000, 1, 64}),
    [](const auto &info) { return std::to_string(info.param.deviceRate); });

TEST(DecimatingFirTest, TheInputMayBeTheOutput)
{
    DecimatingFir apart;
    DecimatingFir inPlace;
    apart.init(0.1, kTaps, 1, 4);
    inPlace.init(0.1, kTaps, 1, 4);
    auto stream = test::noise(2000, 1);
    std::vector<COMPLEX> out(stream.size());
    int count = 0;
    apart.process(stream.data(), 2000, out.data(), count);
    inPlace.process(stream.data(), 2000, stream.data(), count);
    EXPECT_TRUE(std::equal(out.begin(), out.begin() + count, stream.begin()));
}

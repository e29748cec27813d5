// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/BandDecimator.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

using DspCore::BandDecimator;
using DspCore::DecimatingFir;

namespace
{
// The resampler rounds its input and each of eight products to single precision.
constexpr double kSinglePrecision = 5e-7;

constexpr int kTaps = 500;

/// The two blocks that the decimating filter stands for.
struct PlainPair
{
    DspCore::FastFir limit;
    DspCore::Resampler resampler;

    void process(COMPLEX *block, int length, COMPLEX *out, int &outLength)
    {
        limit.process(block, length);
        resampler.process(block, length, out, outLength);
    }
};

template <typename Decimator>
std::vector<COMPLEX> outputOf(Decimator &decimator, std::vector<COMPLEX> block)
{
    std::vector<COMPLEX> out(SIGNAL_MAX_SIZE);
    int length = -1;
    decimator.process(block.data(), int(block.size()), out.data(), length);
    out.resize(std::size_t(length));
    return out;
}

} // namespace

TEST(DecimatingFirTest, EqualsBandLimitAndResampler)
{
    constexpr int kLength = 8000;
    // Hz, down to 48 kHz
    for (const auto &[rate, up, down] : {std::tuple{48000, 1, 1}, {96000, 1, 2}, {192000, 1, 4},
             {768000, 1, 16}, {1920000, 1, 40}, {2560000, 3, 160}, {3072000, 1, 64}}) {
        const double edge = 21000.0 / rate;
        const auto stream = test::noise(kLength, unsigned(down));
        PlainPair plain;
        DecimatingFir atOnce;
        BandDecimator faster;
        plain.limit.init(-edge, edge, kTaps);
        plain.resampler.init(up, down);
        atOnce.init(edge, kTaps, up, down);
        faster.init(edge, kTaps, up, down);
        std::vector<int> cuts(8, 512);
        for (const int length : test::randomCuts(kLength - 8 * 512, 2000, 3))
            cuts.push_back(length);
        int at = 0;
        int blocks = 0;
        for (const int length : cuts) {
            const std::vector<COMPLEX> block(stream.begin() + at, stream.begin() + at + length);
            const auto expected = outputOf(plain, block);
            for (const auto &decimated : {outputOf(atOnce, block), outputOf(faster, block)}) {
                ASSERT_EQ(decimated.size(), expected.size()) << rate << ": " << at;
                ASSERT_LT(test::maxError(decimated, expected), kSinglePrecision)
                    << rate << ": " << at;
            }
            at += length;
            // The history goes, the place between two outputs stays.
            if (++blocks == 10) {
                plain.limit.clear();
                plain.resampler.clear();
                atOnce.clear();
                faster.clear();
            }
        }
    }
}

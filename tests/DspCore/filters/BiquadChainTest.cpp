// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/BiquadChain.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <array>

using DspCore::Biquad;
using DspCore::BiquadChain;

namespace
{
// Products and sums of 18 resonant sections in one order but with other roundings.
constexpr double kRoundOff = 1e-11;

/// The sections one after another.
struct PlainChain
{
    std::array<Biquad, BiquadChain::kSections> sections;

    void process(COMPLEX *block, int length)
    {
        for (Biquad &section : sections)
            section.process2(block, length);
    }
};

void design(int section, double gainDb, PlainChain &plain, BiquadChain &chain)
{
    Biquad &biquad = plain.sections[std::size_t(section)];
    biquad.init(Biquad::Type::Peak, 0.002 * (section + 1) * (section + 1) / 4.0, 2.0, gainDb);
    biquad.setEnable(true);
    chain.set(section, biquad.coefficients());
}
} // namespace

TEST(BiquadChainTest, EqualsItsSectionsInSeries)
{
    PlainChain plain;
    BiquadChain chain;
    for (int section = 0; section < BiquadChain::kSections; ++section)
        design(section, section % 2 == 0 ? 9.0 : -6.0, plain, chain);
    // Either side of the length from which the sections run side by side, and of the steps at both
    // ends; then a change of one section and a clear in mid-stream.
    const std::vector<int> lengths = {1, 17, 31, 32, 33, 35, 100, 8, 128, 512, 4096};
    unsigned seed = 1;
    for (const int change : {-1, 0, 8, 9, 17}) {
        if (change >= 0)
            design(change, 3.0, plain, chain);
        for (const int length : lengths) {
            auto expected = test::noise(length, ++seed);
            auto filtered = expected;
            plain.process(expected.data(), length);
            chain.process(filtered.data(), length);
            ASSERT_LT(test::maxError(filtered, expected), kRoundOff) << length << " " << change;
        }
    }
    for (Biquad &section : plain.sections)
        section.clear();
    chain.clear();
    auto expected = test::noise(64, 99);
    auto filtered = expected;
    plain.process(expected.data(), 64);
    chain.process(filtered.data(), 64);
    EXPECT_LT(test::maxError(filtered, expected), kRoundOff);
}

TEST(BiquadChainTest, ANewChainPassesBlocksThrough)
{
    BiquadChain chain;
    const auto stream = test::noise(300, 3);
    auto passed = stream;
    chain.process(passed.data(), 300);
    EXPECT_EQ(passed, stream);
}

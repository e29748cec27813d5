// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/BiquadChain.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <array>

using DspCore::Biquad;
using DspCore::BiquadChain;

TEST(BiquadChainTest, EqualsItsSectionsInSeries)
{
    constexpr double kRoundOff = 1e-11; // 18 resonant sections in one order, other roundings
    std::array<Biquad, BiquadChain::kSections> plain;
    BiquadChain chain;
    const auto design = [&](int section, double gainDb) {
        Biquad &biquad = plain[std::size_t(section)];
        biquad.init(Biquad::Type::Peak, 0.002 * (section + 1) * (section + 1) / 4.0, 2.0, gainDb);
        biquad.setEnable(true);
        chain.set(section, biquad.coefficients());
    };
    unsigned seed = 1;
    const auto expectEqual = [&](int length) {
        auto expected = test::noise(length, ++seed);
        auto filtered = expected;
        for (Biquad &section : plain)
            section.process2(expected.data(), length);
        chain.process(filtered.data(), length);
        ASSERT_LT(test::maxError(filtered, expected), kRoundOff) << length;
    };
    expectEqual(300); // no section has a design: blocks pass through
    for (int section = 0; section < BiquadChain::kSections; ++section)
        design(section, section % 2 == 0 ? 9.0 : -6.0);
    // Either side of the length from which the sections run side by side, and of the steps at both
    // ends; then a change of one section and a clear in mid-stream.
    for (const int change : {0, 8, 9, 17}) {
        for (const int length : {1, 17, 31, 32, 33, 35, 100, 8, 128, 512, 4096})
            expectEqual(length);
        design(change, 3.0);
    }
    for (Biquad &section : plain)
        section.clear();
    chain.clear();
    expectEqual(64);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/BiquadChain.h"
#include "DspCore/filters/DownConverter.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

using DspCore::Biquad;

namespace
{
constexpr double kRoundOff = 1e-12;

// What passes through flat sections leaves no state in them, so one that is set later begins as it
// would have after them.
TEST(FlatChainTest, PassesUntilASectionIsSet)
{
    DspCore::BiquadChain chain;
    Biquad section;
    section.setEnable(true);
    int place = 0;
    for (const auto type : {Biquad::Type::LowShelf, Biquad::Type::Peak, Biquad::Type::HighShelf}) {
        section.init(type, 0.1, 2.0, 0.0);
        chain.set(place++, section.coefficients());
    }
    const auto stream = test::noise(512, 4);
    auto passed = stream;
    chain.process(passed.data(), 512);
    EXPECT_LT(test::maxError(passed, stream), kRoundOff);

    section.init(Biquad::Type::Peak, 0.1, 2.0, 12.0);
    chain.set(1, section.coefficients());
    auto raised = stream;
    auto expected = stream;
    chain.process(raised.data(), 512);
    section.process2(expected.data(), 512);
    EXPECT_LT(test::maxError(raised, expected), kRoundOff);
    EXPECT_GT(test::maxError(raised, stream), 0.1);
}

TEST(DownConverterSkipTest, TheToneRunsOnOverWhatIsSkipped)
{
    const auto stream = test::noise(3 * 512, 5);
    auto mixed = stream;
    DspCore::DownConverter mixer;
    DspCore::DownConverter skipping;
    mixer.setOsc(0.123);
    skipping.setOsc(0.123);
    for (int at = 0; at < 3 * 512; at += 512)
        mixer.process(&mixed[std::size_t(at)], 512);
    std::vector<COMPLEX> last(512);
    skipping.skip(512);
    skipping.skip(512);
    skipping.process(&stream[2 * 512], last.data(), 512);
    EXPECT_LT(test::maxError(last, {mixed.end() - 512, mixed.end()}), kRoundOff);
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/audio/Equalizer18.h"
#include "DspCore/filters/Biquad.h"
#include "DspCore/filters/Cuts.h"
#include "DspCore/filters/DcBlock.h"
#include "DspCore/filters/DownConverter.h"
#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/Iir.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

using namespace DspCore;

// What every block of a running stream owes its owner. Each type sets its block up when it is made;
// restart() is what empties the history.
namespace
{
// Sums in another order: of some thousand products, of a phase, of resonances.
constexpr double kRoundOff = 1e-11;

struct FirByPartitions : FastFir
{
    FirByPartitions() { init(-0.1, 0.2, 1570); }
    void restart() { clear(); }
};

struct FirByOverlapAdd : FastFir
{
    FirByOverlapAdd()
    {
        setForm(ConvolutionForm::OverlapAdd);
        init(-0.1, 0.2, 500);
    }
    void restart() { clear(); }
};

struct Mixer : DownConverter
{
    Mixer()
    {
        setOsc(0.1234);
        setRit(0.01);
    }
    void restart() { reset(); }
};

struct Section : Biquad
{
    Section()
    {
        init(Type::BandPass, 0.1, 5.0, 0.0);
        setEnable(true);
    }
    void restart() { clear(); }
};

struct SectionDesignedAgain : Section
{
    void restart() { init(Type::BandPass, 0.1, 5.0, 0.0); }
};

struct Butterworth : Iir
{
    Butterworth() { init(0.1, 6, Type::LowPass); }
    void restart() { clear(); }
};

struct ButterworthDesignedAgain : Butterworth
{
    void restart() { init(0.1, 6, Type::LowPass); }
};

struct Dc : DcBlock
{
    void restart() { clear(); }
};

struct DcSetUpAgain : DcBlock
{
    void restart() { EXPECT_TRUE(init(0.1)); }
};

struct Equalizer : Equalizer18
{
    Equalizer()
    {
        setSampleRate(48000.0);
        setEnable(true);
        init(QVector<int>(kBands, 6));
    }
    void restart() { clear(); }
};
} // namespace

template <typename Block>
class StreamTest : public testing::Test
{ };

using Blocks = testing::Types<FirByPartitions, FirByOverlapAdd, Mixer, Section,
    SectionDesignedAgain, Butterworth, ButterworthDesignedAgain, Dc, DcSetUpAgain, Equalizer>;
TYPED_TEST_SUITE(StreamTest, Blocks);

TYPED_TEST(StreamTest, OutputDoesNotDependOnHowTheStreamIsCut)
{
    const auto stream = test::noise(6000, 1);
    TypeParam whole;
    TypeParam pieces;
    auto expected = stream;
    whole.process(expected.data(), 4000);
    whole.process(expected.data() + 4000, 2000);
    const auto cut = test::inBlocks(stream, test::randomCuts(6000, 1000, 2),
        [&](COMPLEX *block, int n) { pieces.process(block, n); });
    EXPECT_LT(test::maxError(cut, expected), kRoundOff);
}

TYPED_TEST(StreamTest, RestartEmptiesTheHistoryAndKeepsTheSettings)
{
    const auto stream = test::noise(1000, 3);
    TypeParam block;
    auto first = stream;
    block.process(first.data(), 700);
    auto onward = stream;
    block.process(onward.data(), 700);
    block.restart();
    auto again = stream;
    block.process(again.data(), 700);
    EXPECT_GT(test::maxError(onward, first), kRoundOff);
    EXPECT_LT(test::maxError(again, first), kRoundOff);
}

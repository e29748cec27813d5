// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/audio/Dse.h"
#include "DspCore/audio/Equalizer18.h"
#include "DspCore/demodulators/DemodulatorAM.h"
#include "DspCore/demodulators/DemodulatorWFM.h"
#include "DspCore/filters/Biquad.h"
#include "DspCore/filters/Cuts.h"
#include "DspCore/filters/DcBlock.h"
#include "DspCore/filters/DownConverter.h"
#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/Iir.h"
#include "DspCore/noise/AutoNotchFilter.h"
#include "DspCore/noise/NoiseBlanker.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

using namespace DspCore;

// What every block of a running stream owes its owner.
namespace
{
// Sums in another order: of some thousand products, of a phase, of resonances.
constexpr double kRoundOff = 1e-11;

/// A block that is set up when it is made; restart() is what empties its history.
template <typename Block, auto SetUp, auto Restart = [](Block &block) { block.clear(); }>
struct Prepared : Block
{
    Prepared() { SetUp(*this); }
    void restart() { Restart(*this); }
};

constexpr auto kAsItIs = [](auto &) {};
constexpr auto kEnable = [](auto &block) { block.setEnable(true); };
constexpr auto kPartitions = [](FastFir &fir) { fir.init(-0.1, 0.2, 1570); };
constexpr auto kOverlapAdd = [](FastFir &fir) {
    fir.setForm(ConvolutionForm::OverlapAdd);
    fir.init(-0.1, 0.2, 500);
};
constexpr auto kMixer = [](DownConverter &mixer) {
    mixer.setOsc(0.1234);
    mixer.setRit(0.01);
};
constexpr auto kReset = [](DownConverter &mixer) { mixer.reset(); };
constexpr auto kSection = [](Biquad &section) {
    section.init(Biquad::Type::BandPass, 0.1, 5.0, 0.0);
    section.setEnable(true);
};
constexpr auto kButterworth = [](Iir &iir) { iir.init(0.1, 6, Iir::Type::LowPass); };
constexpr auto kDc = [](DcBlock &block) { EXPECT_TRUE(block.init(0.1)); };
constexpr auto kEqualizer = [](Equalizer18 &equalizer) {
    equalizer.setSampleRate(48000.0);
    equalizer.setEnable(true);
    equalizer.init(QVector<int>(18, 6));
};
constexpr auto kMute = [](NoiseBlanker &blanker) {
    blanker.setEnableNb1(true);
    blanker.setThresholdNb1(1.15); // about every tenth sample of noise starts a mute
};
constexpr auto kReplace = [](NoiseBlanker &blanker) {
    blanker.setEnableNb2(true);
    blanker.setThresholdNb2(1.2);
};
} // namespace

template <typename Block>
class StreamTest : public testing::Test
{ };

using Blocks = testing::Types<Prepared<FastFir, kPartitions>, Prepared<FastFir, kOverlapAdd>,
    Prepared<DownConverter, kMixer, kReset>, Prepared<Biquad, kSection>,
    Prepared<Biquad, kSection, kSection>, Prepared<Iir, kButterworth>,
    Prepared<Iir, kButterworth, kButterworth>, Prepared<DcBlock, kDc>, Prepared<DcBlock, kDc, kDc>,
    Prepared<Equalizer18, kEqualizer>, Prepared<DemodulatorAM, kAsItIs>,
    Prepared<DemodulatorWFM, kAsItIs>, Prepared<Dse, kEnable>, Prepared<AutoNotchFilter, kEnable>,
    Prepared<AutoNotchFilter, kEnable, kEnable>, Prepared<NoiseBlanker, kMute>,
    Prepared<NoiseBlanker, kReplace>>;
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

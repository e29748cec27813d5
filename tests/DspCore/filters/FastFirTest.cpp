// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/Cuts.h"
#include "DspCore/filters/FastFir32f.h"
#include "support/LogCapture.h"
#include "support/Signals.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>

using DspCore::ConvolutionForm;
using DspCore::FastFir;
using DspCore::FastFir32f;

namespace
{
// Sums of some thousand products of noise; single precision for the float filter.
constexpr double kRoundOff = 1e-12;
constexpr double kSinglePrecision = 2e-5;

constexpr ConvolutionForm kForms[] = {ConvolutionForm::OverlapAdd, ConvolutionForm::Chosen};

struct Design
{
    double low, high;
    int taps;
};

/// Gain in dB for a tone, after the filter has settled.
double gainDb(const Design &design, double frequency)
{
    constexpr int kMeasured = 8192;
    FastFir fir;
    fir.init(design.low, design.high, design.taps);
    auto signal = test::tone(kMeasured + design.taps, frequency);
    fir.process(signal);
    signal.erase(signal.begin(), signal.begin() + design.taps);
    return test::decibels(test::magnitude(test::component(signal, frequency)));
}

/// What overlap-add means, sample by sample: each input adds the filter's response, which ends or
/// wraps at the FFT size, to a long tail, and the tail moves over the FFT size alone.
class PlainOverlapAdd
{
public:
    void init(const Design &design, int fftSize)
    {
        FastFir fir;
        fir.setForm(ConvolutionForm::OverlapAdd);
        fir.init(design.low, design.high, design.taps);
        const std::vector<int> single(std::size_t(fftSize), 1); // one sample cannot wrap
        mResponse = test::inBlocks(
            test::impulse(fftSize), single, [&](COMPLEX *x, int n) { fir.process(x, n); });
    }

    void process(COMPLEX *block, int length)
    {
        const std::size_t size = mResponse.size();
        for (std::size_t i = 0; i < std::size_t(length); ++i) {
            for (std::size_t j = 0; j < size; ++j) {
                const COMPLEX h = mResponse[j];
                COMPLEX &out = mTail[(i + j) % size];
                out.re += block[i].re * h.re - block[i].im * h.im;
                out.im += block[i].re * h.im + block[i].im * h.re;
            }
        }
        std::copy_n(mTail.begin(), length, block);
        std::move(mTail.begin() + length, mTail.begin() + long(size), mTail.begin());
        std::fill_n(mTail.begin() + long(size) - length, length, COMPLEX{0.0, 0.0});
    }

private:
    std::vector<COMPLEX> mResponse;
    std::vector<COMPLEX> mTail = std::vector<COMPLEX>(16384, COMPLEX{0.0, 0.0});
};

} // namespace

// The window's side lobes are 98 dB down; the main lobe ends 4 / taps outside the band's edge.
TEST(FastFirTest, GainFollowsTheBand)
{
    struct Row
    {
        Design design;
        double frequency;
        double lowest, highest; // dB
    };
    const Row rows[] = {
        {{-0.1, 0.1, 500}, 0.0, -0.1, 0.1},
        {{-0.1, 0.1, 500}, -0.1, -6.2, -5.8},
        {{-0.1, 0.1, 500}, 0.109, -200.0, -95.0},
        {{0.003, 0.06, 1570}, 0.03, -0.1, 0.1},
        {{0.003, 0.06, 1570}, -0.03, -200.0, -95.0},
        {{0.2, 7.0, 500}, 0.19, -200.0, -95.0},
        {{0.01, 0.02, 9000}, 0.0094, -200.0, -95.0},
    };
    for (const Row &row : rows) {
        const double gain = gainDb(row.design, row.frequency);
        EXPECT_GE(gain, row.lowest) << row.design.low << " " << row.frequency;
        EXPECT_LE(gain, row.highest) << row.design.low << " " << row.frequency;
    }
}

// 500 and more taps need a transform of 1024 points; the centre tap is the half rounded down.
TEST(FastFirTest, TheLargestPartOfTheSpectrumIsOneAndTheCentreTapTheHalf)
{
    for (const Design &design : {Design{-0.1, 0.1, 500}, {0.1, 0.104, 500}, {0.3, 0.2, 501}}) {
        FastFir fir;
        fir.init(design.low, design.high, design.taps);
        auto response = test::impulse(1024);
        fir.process(response);
        const auto peak = std::max_element(
            response.begin(), response.end(), [](const COMPLEX &a, const COMPLEX &b) {
                return test::magnitude(a) < test::magnitude(b);
            });
        EXPECT_EQ(peak - response.begin(), 249) << design.taps;
        double largest = 0.0;
        for (int bin = 0; bin < 1024; ++bin) {
            const COMPLEX part = test::fourierSum(response, bin / 1024.0);
            largest = std::max({largest, part.re, part.im});
        }
        EXPECT_NEAR(largest, 1.0, kRoundOff) << design.low;
    }
}

struct StreamCase
{
    const char *name;
    std::vector<std::pair<Design, int>> filters; // each with its FFT size
    int usual;                                   // block of the first half; the rest is random
    int longest;
};

class FastFirStreams : public testing::TestWithParam<StreamCase>
{ };

TEST_P(FastFirStreams, EveryFormEqualsPlainOverlapAdd)
{
    const auto &[name, filters, usual, longest] = GetParam();
    PlainOverlapAdd plain;
    std::array<FastFir, std::size(kForms)> firs;
    for (std::size_t form = 0; form < firs.size(); ++form)
        firs[form].setForm(kForms[form]);
    unsigned seed = 10;
    for (const auto &[design, fftSize] : filters) {
        // Past the end of the response, and of the long frames it may be cut into.
        const int length = design.taps + 1500;
        const auto stream = test::noise(length, ++seed);
        std::vector<int> cuts(std::size_t(length / 2 / usual), usual);
        for (const int cut : test::randomCuts(length - int(cuts.size()) * usual, longest, seed))
            cuts.push_back(cut);
        plain.init(design, fftSize);
        const auto expected =
            test::inBlocks(stream, cuts, [&](COMPLEX *block, int n) { plain.process(block, n); });
        for (FastFir &fir : firs) {
            fir.init(design.low, design.high, design.taps);
            const auto filtered =
                test::inBlocks(stream, cuts, [&](COMPLEX *block, int n) { fir.process(block, n); });
            EXPECT_LT(test::maxError(filtered, expected), kRoundOff)
                << "form " << &fir - firs.data() << ", taps " << design.taps;
        }
    }
}

// The usual blocks are those of the band filter at 3.072 MHz down to 48 kHz. Below 1 tap the
// transform is too short for a whole block; the end wraps around.
INSTANTIATE_TEST_SUITE_P(FastFirTest, FastFirStreams,
    testing::Values(StreamCase{"oneFilter", {{{-0.1, 0.2, 500}, 1024}}, 512, 512},
        StreamCase{"aFewSamplesACall", {{{-0.1, 0.2, 1570}, 4096}}, 8, 24},
        StreamCase{"wholeShortFrames", {{{-0.1, 0.2, 1570}, 4096}}, 64, 200},
        StreamCase{"wholeFramesOfOneStage", {{{-0.1, 0.2, 1570}, 4096}}, 128, 512},
        StreamCase{"longFilterShortBlocks", {{{0.01, 0.02, 2600}, 4096}}, 8, 512},
        StreamCase{"longFilterLongBlocks", {{{0.01, 0.02, 2600}, 4096}}, 256, 512},
        StreamCase{"shorterFilterLetsTheTailRing",
            {{{-0.1, 0.2, 700}, 2048}, {{0.05, 0.2, 600}, 2048}}, 128, 512},
        StreamCase{"tailAboveAShorterFftComesBack",
            {{{-0.1, 0.2, 1570}, 4096}, {{0.0, 0.2, 40}, 1024}, {{-0.3, 0.1, 1570}, 4096}}, 8, 400},
        StreamCase{"longerFilter", {{{0.0, 0.1, 100}, 1024}, {{-0.1, 0.0, 1200}, 2048}}, 16, 64},
        StreamCase{"unwindowed", {{{-0.2, 0.2, 20}, 1024}, {{-0.2, 0.2, 16}, 1024}}, 8, 512},
        StreamCase{"wraps", {{{-0.2, 0.2, 1}, 512}, {{-0.2, 0.2, -100}, 512}}, 512, 512},
        StreamCase{"fewerPointsThanTaps", {{{0.0, 0.2, -504}, 8}}, 8, 8}),
    [](const auto &info) { return std::string(info.param.name); });

// A band of no width has no gain to scale; what comes out is not a number, and its tail shows how
// long the transform is.
TEST(FastFirTest, TheTailReachesToTheEndOfTheTransform)
{
    for (const auto &[taps, fftSize] :
        {std::pair{500, 1024}, {513, 1024}, {514, 2048}, {9000, 16384}, {99999, 16384}}) {
        for (const ConvolutionForm form : kForms) {
            FastFir fir;
            fir.setForm(form);
            fir.init(0.1, 0.1, taps);
            auto block = test::impulse(8);
            fir.process(block);
            EXPECT_TRUE(std::isnan(block[0].re) && std::isnan(block[7].im));
            fir.init(0.0, 0.1, taps);
            std::vector<COMPLEX> silence(16384, COMPLEX{0.0, 0.0});
            fir.process(silence);
            EXPECT_EQ(std::count_if(silence.begin(), silence.end(),
                          [](const COMPLEX &x) { return std::isnan(x.re); }),
                fftSize - 8)
                << taps;
        }
    }
}

TEST(FastFirTest, FilterOfFewerThanThirtyTwoTapsIsReportedByItsWindow)
{
    FastFir fir;
    test::LogCapture log;
    EXPECT_TRUE(fir.init(-0.1, 0.1, 31));
    EXPECT_TRUE(log.warned(" mLenght != lenght "));
    log.clear();
    EXPECT_TRUE(fir.init(-0.1, 0.1, 33));
    EXPECT_TRUE(log.lines().empty());
}

TEST(FastFir32fTest, EqualsItsDoubleTwinToSinglePrecision)
{
    const auto stream = test::noise(6000, 23);
    const auto cuts = test::randomCuts(6000, 512, 24);
    FastFir twin;
    twin.init(-0.1, 0.2, 500);
    const auto expected =
        test::inBlocks(stream, cuts, [&](COMPLEX *block, int n) { twin.process(block, n); });
    for (const ConvolutionForm form : kForms) {
        FastFir32f fir;
        fir.setForm(form);
        fir.init(-0.1, 0.2, 500);
        const auto filtered = test::inBlocks(
            test::toSingle(stream), cuts, [&](COMPLEX32 *block, int n) { fir.process(block, n); });
        EXPECT_LT(test::maxError(test::toDouble(filtered), expected), kSinglePrecision);
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/FastFir.h"
#include "DspCore/filters/Cuts.h"
#include "DspCore/filters/FastFir32f.h"
#include "support/Signals.h"

#include <array>
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
    constexpr double kEdgeDb = 0.2;
    constexpr double kStopped = -95.0; // dB at most
    struct Row
    {
        Design design;
        double frequency, gainDb;
    };
    const Row rows[] = {{{-0.1, 0.1, 500}, 0.0, 0.0}, {{-0.1, 0.1, 500}, -0.1, -6.0},
        {{-0.1, 0.1, 500}, 0.109, kStopped}, {{0.003, 0.06, 1570}, -0.03, kStopped},
        {{0.2, 7.0, 500}, 0.19, kStopped}, {{0.01, 0.02, 9000}, 0.0094, kStopped}};
    for (const Row &row : rows) {
        const double gain = gainDb(row.design, row.frequency);
        EXPECT_LT(gain, row.gainDb + kEdgeDb) << row.frequency;
        EXPECT_TRUE(row.gainDb == kStopped || gain > row.gainDb - kEdgeDb) << row.frequency;
    }
}

TEST(FastFirTest, TheCentreTapIsTheHalfRoundedDown)
{
    for (const int taps : {500, 501}) {
        FastFir fir;
        fir.init(0.1, 0.2, taps);
        auto response = test::impulse(1024);
        fir.process(response);
        const auto peak = std::max_element(response.begin(), response.end(),
            [](COMPLEX a, COMPLEX b) { return test::magnitude(a) < test::magnitude(b); });
        EXPECT_EQ(peak - response.begin(), 249) << taps;
    }
}

// The usual blocks are those of the band filter at 3.072 MHz down to 48 kHz. Below 1 tap the
// transform is too short for a whole block; the end wraps around.
TEST(FastFirTest, EveryFormEqualsPlainOverlapAdd)
{
    struct Row
    {
        std::vector<std::pair<Design, int>> filters; // each with its FFT size
        int usual;                                   // block of the first half; the rest is random
        int longest;
    };
    const Row rows[] = {
        {{{{-0.1, 0.2, 1570}, 4096}}, 8, 24},   // a few samples a call
        {{{{-0.1, 0.2, 1570}, 4096}}, 64, 200}, // whole short frames
        {{{{0.01, 0.02, 2600}, 4096}}, 256, 512},
        {{{{-0.1, 0.2, 700}, 2048}, {{0.05, 0.2, 600}, 2048}}, 128, 512}, // the tail rings
        // The tail above a shorter transform comes back.
        {{{{-0.1, 0.2, 1570}, 4096}, {{0.0, 0.2, 40}, 1024}, {{-0.3, 0.1, 1570}, 4096}}, 8, 400},
        {{{{-0.2, 0.2, 1}, 512}, {{-0.2, 0.2, -100}, 512}}, 512, 512}, // wraps
        {{{{0.0, 0.2, -504}, 8}}, 8, 8},                               // fewer points than taps
    };
    unsigned seed = 10;
    for (const auto &[filters, usual, longest] : rows) {
        PlainOverlapAdd plain;
        std::array<FastFir, std::size(kForms)> firs;
        for (std::size_t form = 0; form < firs.size(); ++form)
            firs[form].setForm(kForms[form]);
        for (const auto &[design, fftSize] : filters) {
            // Past the end of the response, and of the long frames it may be cut into.
            const int length = design.taps + 1500;
            const auto stream = test::noise(length, ++seed);
            std::vector<int> cuts(std::size_t(length / 2 / usual), usual);
            for (const int cut : test::randomCuts(length - int(cuts.size()) * usual, longest, seed))
                cuts.push_back(cut);
            plain.init(design, fftSize);
            const auto expected =
                test::inBlocks(stream, cuts, [&](COMPLEX *x, int n) { plain.process(x, n); });
            for (FastFir &fir : firs) {
                fir.init(design.low, design.high, design.taps);
                const auto filtered =
                    test::inBlocks(stream, cuts, [&](COMPLEX *x, int n) { fir.process(x, n); });
                EXPECT_LT(test::maxError(filtered, expected), kRoundOff)
                    << "form " << &fir - firs.data() << ", taps " << design.taps;
            }
        }
    }
}

TEST(FastFir32fTest, EqualsItsDoubleTwinToSinglePrecision)
{
    auto expected = test::noise(4000, 23);
    auto single = test::toSingle(expected);
    FastFir twin;
    FastFir32f fir;
    twin.init(-0.1, 0.2, 500);
    fir.init(-0.1, 0.2, 500);
    twin.process(expected.data(), 4000);
    fir.process(single.data(), 4000);
    EXPECT_LT(test::maxError(test::toDouble(single), expected), kSinglePrecision);
}

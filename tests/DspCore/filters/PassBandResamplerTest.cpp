// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/filters/PassBandResampler.h"
#include "DspCore/filters/Cuts.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

namespace
{
// The resampler rounds its input and each of eight products to single precision.
constexpr double kSinglePrecision = 5e-7;

constexpr int kFrame = 512;

/// The block and the two that it stands for, fed with the same stream.
class Pair
{
public:
    Pair(int up, int down)
    {
        mResampler.init(up, down);
        mAtOnce.setRatio(up, down);
    }

    void setBand(double low, double high, int taps)
    {
        mFilter.init(low, high, taps);
        mAtOnce.setBand(low, high, taps);
    }

    void clear()
    {
        mFilter.clear();
        mResampler.clear();
        mAtOnce.clear();
    }

    /// The largest difference; -1 if the lengths differ.
    double differ(const std::vector<int> &cuts)
    {
        double largest = 0.0;
        for (const int length : cuts) {
            auto block = test::noise(length, ++mSeed);
            std::copy(block.begin(), block.end(), mAtOnce.room(length));
            const auto atOnce = outputOf([&](COMPLEX *out, int &n) { //
                mAtOnce.process(length, out, n);
            });
            mFilter.process(block);
            const auto expected = outputOf(
                [&](COMPLEX *out, int &n) { mResampler.process(block.data(), length, out, n); });
            if (atOnce.size() != expected.size())
                return -1.0;
            largest = std::max(largest, test::maxError(atOnce, expected));
        }
        return largest;
    }

private:
    template <typename Process>
    static std::vector<COMPLEX> outputOf(Process process)
    {
        std::vector<COMPLEX> out(SIGNAL_MAX_SIZE);
        int length = -1;
        process(out.data(), length);
        out.resize(std::size_t(length));
        return out;
    }

    DspCore::FastFir mFilter;
    DspCore::Resampler mResampler;
    DspCore::PassBandResampler mAtOnce;
    unsigned mSeed = 0;
};

std::vector<int> frames(int count)
{
    return std::vector<int>(std::size_t(count), kFrame);
}
} // namespace

// The ratios of 192, 384 kHz, 3.072 MHz, 1.92 and 2.56 MHz; the last two leave a frame's start.
TEST(PassBandResamplerTest, EqualsFilterAndResamplerWhateverComesBetween)
{
    struct Step
    {
        const char *what;
        std::vector<int> blocks;
        double low, high; // a new band, if it has taps
        int taps;
    };
    const Step steps[] = {
        {"a first filter", frames(12), -0.02, 0.03, 1570},
        {"a longer one, with the first one ringing out", frames(40), -0.01, 0.03, 7935},
        // After which a short block leaves the end of the cut tail in the resampler's sight.
        {"a shorter one, which holds up the tail", {512, 512, 512, 512, 4, 512, 512, 508, 512}, 0.0,
            0.02, 600},
        {"the tail coming back", frames(40), -0.01, 0.03, 7935},
        {"a new filter before the old one has rung out", frames(3), -0.02, 0.03, 1570},
        {"the next one", frames(12), -0.1, 0.03, 1570},
        {"blocks of any length", test::randomCuts(20 * kFrame, 1500, 3), 0, 0, 0},
        {"frames again", frames(4), 0, 0, 0},
        {"a cut frame that ends where it should", {101, kFrame - 101}, 0, 0, 0},
        {"frames after that", frames(4), 0, 0, 0},
        {"a filter whose end wraps around", frames(4), -0.2, 0.2, 1},
        {"one that does not, after it", frames(12), -0.02, 0.03, 1570},
    };
    for (const auto &[up, down] : {std::pair{1, 1}, {1, 2}, {1, 16}, {1, 10}, {3, 40}}) {
        Pair pair(up, down);
        for (const auto &[what, blocks, low, high, taps] : steps) {
            if (taps != 0)
                pair.setBand(low, high, taps);
            const double difference = pair.differ(blocks);
            EXPECT_GE(difference, 0.0) << what << ", 1:" << down;
            EXPECT_LT(difference, kSinglePrecision) << what << ", 1:" << down;
        }
        pair.clear();
        EXPECT_LT(pair.differ(frames(4)), kSinglePrecision) << "an empty history, 1:" << down;
        pair.setBand(0.1, 0.1, 1570); // not a number
        pair.differ(frames(1));
        pair.setBand(-0.02, 0.03, 1570);
        pair.clear();
        EXPECT_LT(pair.differ(frames(4)), kSinglePrecision) << "after no band, 1:" << down;
    }
}

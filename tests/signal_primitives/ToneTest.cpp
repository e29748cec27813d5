// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ipps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <vector>

namespace
{
constexpr long double kTwoPiWide = 2.0L * std::numbers::pi_v<long double>;
constexpr double kTwoPi = double(kTwoPiWide);

/// Frequency numerator / 2^53: any double of 0.5..1 and many below are of this form, and the phase
/// of any sample is an exact integer.
struct Frequency
{
    std::uint64_t numerator;

    double value() const { return double(numerator) * 0x1p-53; }
    long double turns(std::uint64_t n) const
    {
        constexpr std::uint64_t mask = (std::uint64_t(1) << 53) - 1;
        return static_cast<long double>((numerator * n) & mask) * 0x1p-53L;
    }
};

double error(Ipp64fc got, long double angle)
{
    return std::max(
        std::abs(double(got.re - std::cos(angle))), std::abs(double(got.im - std::sin(angle))));
}

/// Largest error of the ends of all blocks over a stream cut by the given lengths in turn.
double worstError(Frequency frequency, const std::vector<int> &lengths, std::uint64_t samples)
{
    constexpr double kStart = 1.25;
    std::vector<Ipp64fc> block(4096);
    double phase = kStart;
    double worst = 0.0;
    std::size_t cut = 0;
    for (std::uint64_t n = 0; n < samples;) {
        const int length = lengths[cut++ % lengths.size()];
        const IppStatus status = ippsTone_Direct_64fc(
            block.data(), length, 1.0, frequency.value(), &phase, ippAlgHintAccurate);
        if (status != ippStsNoErr || !(phase >= 0.0 && phase < kTwoPi))
            return std::numeric_limits<double>::infinity();
        for (const int k : {0, length / 2, length - 1}) {
            const auto at = n + static_cast<std::uint64_t>(k);
            const long double angle = kStart + kTwoPiWide * frequency.turns(at);
            worst = std::max(worst, error(block[static_cast<std::size_t>(k)], angle));
        }
        n += static_cast<std::uint64_t>(length);
    }
    return worst;
}

TEST(ToneTest, PhaseStaysExactOverTenMillionSamplesHoweverCut)
{
    constexpr double kAllowed = 1e-12;
    constexpr std::uint64_t kSamples = 10'000'000;
    const Frequency frequencies[] = {
        {0},                            // stands still,
        {std::uint64_t(1) << 53},       // as a whole turn a sample does
        {1},                            // barely turning
        {(std::uint64_t(1) << 53) - 1}, // and backward
        {std::uint64_t(1) << 51},       // a quarter turn a sample
        {1110100000000001},
        {6755399441055743},
    };
    for (const Frequency &frequency : frequencies) {
        for (const std::vector<int> &lengths : {std::vector{512}, {511, 1, 4095, 17, 4096}})
            EXPECT_LT(worstError(frequency, lengths, kSamples), kAllowed) << frequency.value();
    }
}

TEST(ToneTest, EverySampleOfABlockIsRightAndNoneBeyond)
{
    constexpr double kAllowed = 1e-13; // 64 rotations between exact anchors
    const Frequency frequency{3002399751580331};
    for (const int length : {1, 3, 16, 17, 1023, 1024, 1025}) {
        std::vector<Ipp64fc> block(static_cast<std::size_t>(length) + 1, {9.0, 9.0});
        double phase = 0.0;
        ippsTone_Direct_64fc(
            block.data(), length, 2.0, frequency.value(), &phase, ippAlgHintAccurate);
        EXPECT_EQ(block.back(), (Ipp64fc{9.0, 9.0}));
        for (std::size_t n = 0; n + 1 < block.size(); ++n) {
            const Ipp64fc half{block[n].re / 2.0, block[n].im / 2.0};
            ASSERT_LT(error(half, kTwoPiWide * frequency.turns(n)), kAllowed) << n;
        }
    }
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "FmSoft/DotProduct.h"
#include "FmSoft/PilotPhaseLock.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace
{
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kRoundOff = 1e-9; // the narrow loop keeps rounding for thousands of samples

/// The loop in its plain form: sine and cosine of the phase at every sample.
class PlainPilotLoop
{
public:
    PlainPilotLoop(double frequency, double bandwidth)
        : mLowest((frequency - bandwidth) * kTwoPi), mHighest((frequency + bandwidth) * kTwoPi),
          mFrequency(frequency * kTwoPi), mLoopB0(0.62 * bandwidth * kTwoPi),
          mLoopB1(-mLoopB0 * std::exp(-0.1153 * bandwidth * kTwoPi))
    {
        const double p1 = std::exp(-1.146 * bandwidth * kTwoPi);
        const double p2 = std::exp(-5.331 * bandwidth * kTwoPi);
        mA1 = -p1 - p2;
        mA2 = p1 * p2;
    }

    double next(double x)
    {
        const double s = std::sin(mPhase);
        const double c = std::cos(mPhase);
        const double b0 = 1.0 + mA1 + mA2;
        const double i = b0 * s * x - mA1 * mI[0] - mA2 * mI[1];
        const double q = b0 * c * x - mA1 * mQ[0] - mA2 * mQ[1];
        mI[1] = std::exchange(mI[0], i);
        mQ[1] = std::exchange(mQ[0], q);
        const double error = i > std::abs(q) ? q / i : (q > 0.0 ? 1.0 : -1.0);
        mFrequency =
            std::clamp(mFrequency + mLoopB0 * error + mLoopB1 * std::exchange(mError, error),
                mLowest, mHighest);
        mPhase += mFrequency;
        if (mPhase > kTwoPi)
            mPhase -= kTwoPi;
        return 2.0 * s * c;
    }

private:
    double mLowest;
    double mHighest;
    double mFrequency;
    double mLoopB0;
    double mLoopB1;
    double mA1 = 0.0;
    double mA2 = 0.0;
    double mI[2] = {0.0, 0.0};
    double mQ[2] = {0.0, 0.0};
    double mError = 0.0;
    double mPhase = 0.0;
};

struct PilotLoop
{
    double frequency; // cycles per sample
    double bandwidth;
};

class PilotTwinTest : public testing::TestWithParam<PilotLoop>
{ };

// Noise alone drives the loop to its limits, the pilot brings it back.
TEST_P(PilotTwinTest, FollowsThePlainLoopThroughNoiseAndPilot)
{
    constexpr std::size_t kLength = 60000;
    const auto [frequency, bandwidth] = GetParam();
    const auto noise = test::noise(int(kLength), 5);
    SampleVector in(kLength);
    for (std::size_t n = 0; n < kLength; ++n)
        in[n] = 0.05 * noise[n].re
            + (n / 20000 == 1
                    ? 0.2 * std::sin(1.0 + (frequency + bandwidth / 3.0) * kTwoPi * double(n))
                    : 0.0);

    PilotPhaseLock pilot(frequency, bandwidth, 0.04);
    PlainPilotLoop plain(frequency, bandwidth);
    double error = 0.0;
    SampleVector out;
    std::size_t at = 0;
    for (const std::size_t length : {1, 63, 64, 65, 512, 4096, 0}) {
        const std::size_t count = length == 0 ? kLength - at : length;
        pilot.process(
            {in.begin() + std::ptrdiff_t(at), in.begin() + std::ptrdiff_t(at + count)}, out);
        for (std::size_t n = 0; n < count; ++n)
            error = std::max(error, std::abs(out[n] - plain.next(in[at + n])));
        at += count;
    }
    EXPECT_LT(error, kRoundOff);
}

// Of broadcast at 192 and 48 kHz, the widest one for the power series, and one beyond.
INSTANTIATE_TEST_SUITE_P(Loops, PilotTwinTest,
    testing::Values(PilotLoop{19.0 / 192.0, 0.05 / 192.0}, PilotLoop{19.0 / 48.0, 0.05 / 48.0},
        PilotLoop{0.1, 0.0047}, PilotLoop{0.1, 0.02}));

TEST(DotProductsTest, EqualThePlainSumsForAnyCountAndStep)
{
    constexpr double kSumRoundOff = 1e-13;
    const auto noise = test::noise(400, 6);
    const double *const numbers = &noise[0].re;
    for (const std::size_t length : {1, 8, 15, 193}) {
        for (const std::size_t step : {1, 4, 7}) {
            for (const std::size_t count : {0, 1, 4, 11}) {
                SampleVector out(count + 1, 7.0);
                FmSoft::dotProducts(numbers, length, numbers + 200, step, out.data(), count);
                for (std::size_t n = 0; n < count; ++n) {
                    double sum = 0.0;
                    for (std::size_t i = 0; i < length; ++i)
                        sum += numbers[i] * numbers[200 + n * step + i];
                    EXPECT_NEAR(out[n], sum, kSumRoundOff);
                }
                EXPECT_EQ(out[count], 7.0); // not written
            }
        }
    }
}
} // namespace

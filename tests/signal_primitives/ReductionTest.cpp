// SPDX-License-Identifier: GPL-3.0-or-later
#include "signal_primitives/ipps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

namespace
{
// The largest element is negative and in turn at every place of the array: a lane left out, a start
// value of zero or a largest magnitude shows.
template <typename T>
void expectLargestAnywhere(IppStatus (*max)(const T *, int, T *))
{
    for (const int length : {1, 2, 3, 31, 32, 33, 95, 511}) {
        std::vector<T> values(static_cast<std::size_t>(length));
        for (T &largest : values) {
            std::fill(values.begin(), values.end(), T(-7));
            largest = T(-0.25);
            T result = 99;
            ASSERT_EQ(max(values.data(), length, &result), ippStsNoErr);
            ASSERT_EQ(result, T(-0.25)) << "of " << length;
        }
    }
    T result = 99;
    EXPECT_EQ(max(&result, 0, &result), ippStsSizeErr);
    EXPECT_EQ(max(nullptr, 1, &result), ippStsNullPtrErr);
    EXPECT_EQ(max(&result, 1, nullptr), ippStsNullPtrErr);
    EXPECT_EQ(result, 99);
}

TEST(ReductionTest, MaxFindsTheLargestSignedElementAnywhere)
{
    expectLargestAnywhere<float>(ippsMax_32f);
    expectLargestAnywhere<double>(ippsMax_64f);
}

TEST(ReductionTest, SumAndMeanTakeEveryElementOnce)
{
    constexpr double kRoundOff = 1e-14; // relative; the terms are of one sign
    for (const int length : {1, 3, 31, 32, 33, 95, 511, 4096}) {
        std::vector<double> values(static_cast<std::size_t>(length));
        for (std::size_t n = 0; n < values.size(); ++n)
            values[n] = 1.0 / double(n + 3); // all different
        const long double expected = std::accumulate(values.rbegin(), values.rend(), 0.0L);
        double sum = 0.0;
        double mean = 0.0;
        ASSERT_EQ(ippsSum_64f(values.data(), length, &sum), ippStsNoErr);
        ASSERT_EQ(ippsMean_64f(values.data(), length, &mean), ippStsNoErr);
        EXPECT_NEAR(sum / double(expected), 1.0, kRoundOff) << length;
        EXPECT_NEAR(mean / double(expected / length), 1.0, kRoundOff) << length;
    }
}
} // namespace

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/agc/LargestPart.h"

#include "processor/Clones.h"

#include <cmath>

namespace DspCore
{
namespace
{
[[gnu::always_inline]] inline double larger(double value, double than)
{
    return value > than ? value : than;
}
} // namespace

// In independent lanes: one running maximum alone is bound by the latency of the comparison.
PROCESSOR_CLONES double largestOf(const double *values, std::size_t count)
{
    constexpr std::size_t kLanes = 32;
    double largest[kLanes] = {};
    std::size_t i = 0;
    for (; i + kLanes <= count; i += kLanes) {
        for (std::size_t lane = 0; lane < kLanes; ++lane)
            largest[lane] = larger(std::fabs(values[i + lane]), largest[lane]);
    }
    for (; i < count; ++i)
        largest[i % kLanes] = larger(std::fabs(values[i]), largest[i % kLanes]);
#pragma GCC unroll 5
    for (std::size_t half = kLanes / 2; half > 0; half /= 2) {
        for (std::size_t lane = 0; lane < half; ++lane)
            largest[lane] = larger(largest[lane + half], largest[lane]);
    }
    return largest[0];
}
} // namespace DspCore

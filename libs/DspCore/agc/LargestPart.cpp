// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/agc/LargestPart.h"

#include "processor/Clones.h"

#include <array>
#include <cmath>

namespace DspCore
{
// The gain control scans its whole look-ahead for every block, however short, so the scan runs in
// independent lanes: one running maximum alone is bound by the latency of the comparison.
PROCESSOR_CLONES double largestPart(const COMPLEX *samples, std::size_t length)
{
    constexpr std::size_t kLanes = 32;
    const auto *parts = reinterpret_cast<const double *>(samples); // null for an empty block
    const std::size_t count = 2 * length;

    std::array<double, kLanes> largest{};
    std::size_t i = 0;
    for (; i + kLanes <= count; i += kLanes) {
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            const double value = std::fabs(parts[i + lane]);
            largest[lane] = value > largest[lane] ? value : largest[lane];
        }
    }
    double result = 0.0;
    for (; i < count; ++i) {
        const double value = std::fabs(parts[i]);
        result = value > result ? value : result;
    }
    for (const double value : largest)
        result = value > result ? value : result;
    return result;
}
} // namespace DspCore

// SPDX-License-Identifier: GPL-3.0-or-later
#include "FmSoft/DotProduct.h"

#include "processor/Clones.h"

namespace FmSoft
{
PROCESSOR_CLONES double dotProduct(const double *a, const double *b, std::size_t length)
{
    constexpr std::size_t kLanes = 16;
    double lanes[kLanes] = {};
    std::size_t i = 0;
    for (; i + kLanes <= length; i += kLanes) {
        for (std::size_t lane = 0; lane < kLanes; ++lane)
            lanes[lane] += a[i + lane] * b[i + lane];
    }
    double sum = 0.0;
    for (; i < length; ++i)
        sum += a[i] * b[i];
    for (const double lane : lanes)
        sum += lane;
    return sum;
}
} // namespace FmSoft

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/agc/RunMaxima.h"

#include "DspCore/agc/LargestPart.h"

#include <algorithm>

namespace DspCore
{
void RunMaxima::update(const COMPLEX *ring, std::size_t size, std::size_t first, std::size_t count)
{
    std::size_t remaining = std::min(count, size);
    if (remaining == size)
        first = 0;
    while (remaining > 0) {
        const std::size_t run = first / kRun;
        const std::size_t begin = run * kRun;
        const std::size_t end = std::min(begin + kRun, size);
        mMaxima[run] = largestPart(ring + begin, end - begin);
        remaining -= std::min(remaining, end - first);
        first = end < size ? end : 0;
    }
}

double RunMaxima::largest() const
{
    return largestOf(mMaxima.data(), mMaxima.size());
}
} // namespace DspCore

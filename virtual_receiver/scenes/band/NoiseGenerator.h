// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scenes/Scene.h"

#include <cstdint>

namespace vr
{
/// Adds complex white noise of Gaussian shape.
///
/// Each component is drawn from a table of the normal distribution's quantiles by bits of a 64-bit
/// generator (SplitMix64: Steele, Lea, Flood 2014): the shape is right up to 4 sigma and a sample
/// costs two table look-ups.
class NoiseGenerator
{
public:
    /// Standard deviation of each component.
    void setSigma(double sigma) { m_sigma = sigma; }

    void seed(std::uint64_t seed) { m_state = seed; }

    void add(Sample *out, std::size_t count);

private:
    double m_sigma = 0.0;
    std::uint64_t m_state = 0;
};
} // namespace vr

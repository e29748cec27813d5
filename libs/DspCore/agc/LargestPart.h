// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <cstddef>

namespace DspCore
{
/// Largest absolute value, 0 for an empty array. What is not a number is passed over. Any thread.
double largestOf(const double *values, std::size_t count);

/// The same of any real or imaginary part of a block.
inline double largestPart(const COMPLEX *samples, std::size_t length)
{
    return largestOf(reinterpret_cast<const double *>(samples), 2 * length);
}
} // namespace DspCore

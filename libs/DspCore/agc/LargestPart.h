// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <cstddef>

namespace DspCore
{
/// Largest absolute value of any real or imaginary part, 0 for an empty block. Samples that are not
/// numbers are passed over. Any thread.
double largestPart(const COMPLEX *samples, std::size_t length);
} // namespace DspCore

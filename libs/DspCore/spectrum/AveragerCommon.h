// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <algorithm>
#include <cstddef>

/// What the averagers and the unaveraged waterfall line share.
namespace DspCore
{
/// Stands for "no line yet", below everything that a line can hold.
constexpr REAL32 kNoLineDb = -180.0f;

/// Added to every power, so that an empty bin is a number: 10 log10(1e-17) = -170 dB.
constexpr REAL32 kPowerFloor = 1e-17f;

constexpr std::size_t limitedAveragingSize(std::size_t size)
{
    return std::clamp<std::size_t>(size, 1, 30);
}
} // namespace DspCore

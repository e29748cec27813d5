// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"
#include "signal_primitives/ipps.h"

#include <algorithm>
#include <cstddef>

/// What the averagers and the unaveraged waterfall line share.
namespace DspCore
{
/// Stands for "no line yet", below everything that a line can hold.
constexpr REAL32 kNoLineDb = -180.0f;

/// Added to every power, so that an empty bin is a number: 10 log10(1e-17) = -170 dB.
constexpr REAL32 kPowerFloor = 1e-17f;

/// Linear power to dB in place.
inline void powerToDb(REAL32 *line, int size)
{
    constexpr REAL32 kDbPerBel = 10.0f;
    ippsAddC_32f_I(kPowerFloor, line, size);
    ippsLog10_32f_A11(line, line, size);
    ippsMulC_32f_I(kDbPerBel, line, size);
}

constexpr std::size_t limitedAveragingSize(std::size_t size)
{
    return std::clamp<std::size_t>(size, 1, 30);
}
} // namespace DspCore

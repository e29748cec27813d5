// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <iterator>

namespace DspCore
{
/// An input rate whose way down to the audio and to wide FM is given as ratios of integers.
///
/// They presume audio at 48 kHz; another output rate that is set afterwards replaces them.
struct FixedRatio
{
    int inputRate; // Hz
    int up;        // to 48 kHz
    int down;
    int wideUp; // to 192 kHz
    int wideDown;
};

constexpr FixedRatio kFixedRatios[] = {{2560000, 3, 160, 3, 40}, {1920000, 1, 40, 1, 10}};
static_assert(2560000 / 160 * 3 == 48000 && 2560000 / 40 * 3 == 192000);
static_assert(1920000 / 40 == 48000 && 1920000 / 10 == 192000);

/// The row of a rate in Hz, null if it has none.
inline const FixedRatio *fixedRatio(double inputRate)
{
    const auto *row = std::ranges::find(kFixedRatios, int(inputRate), &FixedRatio::inputRate);
    return row == std::end(kFixedRatios) ? nullptr : row;
}
} // namespace DspCore

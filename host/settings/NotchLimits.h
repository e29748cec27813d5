// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace host
{
/// What a radio notch filter of the device can be set to, and how many of them a band has.
struct NotchLimits
{
    static constexpr std::size_t kFilters = 8;

    // A device notches half the width on either side of the frequency, from 10 to 10000 Hz.
    static constexpr double kMinWidthHz = 20.0;
    static constexpr double kMaxWidthHz = 20000.0;
    static constexpr double kMaxFrequencyHz = 1e10; // above all that is received; arbitrary
};
} // namespace host

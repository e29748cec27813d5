// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

/// A look at the device's last spectrum. The device owns the data, which stay valid until the next
/// call that returns a view. All zero where there is no spectrum.
struct SpectrumView
{
    std::size_t count = 0;            // points of the waterfall line
    const float *waterfall = nullptr; // dB
    const float *spectrum = nullptr;  // dB
};

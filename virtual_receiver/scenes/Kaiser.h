// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace vr::kaiser
{
/// FIR design with the Kaiser window (Kaiser, "Nonrecursive digital filter design using the I0-sinh
/// window function", 1974): length and shape from the stop band attenuation in dB, above 50, and
/// the transition width as a fraction of the sample rate.
std::size_t length(double attenuationDb, double transition);

/// The window at -1..1 from its middle to its ends, 0 outside.
double window(double attenuationDb, double position);

/// sin(pi x) / (pi x).
double sinc(double x);
} // namespace vr::kaiser

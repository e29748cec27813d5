// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

/// A band of stations that repeats without a seam, and in it one carrier whose pitch is known to
/// the last place.
namespace soak
{
/// Chooses the band as the scene of the virtual receiver, at a rate in hertz, around kCentreHz.
/// Throws std::runtime_error.
void chooseScene(double rateHz);

constexpr double kCentreHz = 7.1e6;

/// Radio frequency of the carrier. Nothing else but noise is within some kilohertz of it.
double carrierHz(double rateHz);
} // namespace soak

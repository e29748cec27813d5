// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace vr
{
/// What a scene may be, whoever says so: a caller, a command line, or the header of a file, which
/// may hold anything. Between these rates every resampling filter is designed in a second or two
/// and fits some tens of megabytes.
constexpr double kLowestRateHz = 1.0;
constexpr double kHighestRateHz = 100e6;
constexpr double kHighestFrequencyHz = 800e6; ///< of zero hertz; the lowest is 0

/// What is wrong with a sample rate or a radio frequency in hertz; empty: nothing. NaN and infinity
/// are wrong.
std::string wrongRate(double hertz);
std::string wrongFrequency(double hertz);
} // namespace vr

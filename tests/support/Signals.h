// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <vector>

/// Test signals and meters, shared by all tests and benchmarks.
namespace test
{
/// Deterministic noise, both parts uniform in -1..1.
std::vector<COMPLEX> noise(int length, unsigned seed);

/// amplitude * exp(j (2 pi frequency n + phase)), frequency in cycles per sample; the argument is
/// reduced in extended precision, so sample n is right to rounding for any n.
std::vector<COMPLEX> tone(int length, double frequency, double amplitude = 1.0, double phase = 0.0,
    long long firstSample = 0);

/// Adds b to a, element by element.
void add(std::vector<COMPLEX> &a, const std::vector<COMPLEX> &b);

/// Largest absolute difference of any real or imaginary part. Infinite if the lengths differ.
double maxError(const std::vector<COMPLEX> &a, const std::vector<COMPLEX> &b);
double maxError(const std::vector<double> &a, const std::vector<double> &b);

/// Root mean square of the magnitude.
double rms(const std::vector<COMPLEX> &signal);

/// Complex amplitude of the component at a frequency (cycles per sample), by correlation over the
/// block under a four-term Blackman-Harris window: neighbours 4 bins away are 92 dB down.
COMPLEX component(const std::vector<COMPLEX> &signal, double frequency);
double magnitude(COMPLEX value);

/// 20 log10 of a ratio of amplitudes.
double decibels(double ratio);
} // namespace test

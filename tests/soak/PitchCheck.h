// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <vector>

namespace soak
{
/// What a stretch of audio says about a tone in it.
struct Pitch
{
    double offHz = 0.0;     // from where it should be
    double jitterRad = 0.0; // largest distance of a second's phase from the straight line
    double amplitude = 0.0; // mean
};

/// Measures a tone at a frequency known to 0.2 Hz: the phase of each whole second of the audio, and
/// through these the straight line of least squares. What is 4 Hz away does not count.
///
/// A sample lost or doubled anywhere turns the phase by the tone's angle per sample, which shows
/// in the jitter. Sixteen seconds at a signal-to-noise ratio of 60 dB give the frequency to 1e-8
/// Hz.
Pitch measurePitch(const std::vector<COMPLEX> &audio, double rateHz, double toneHz);
} // namespace soak

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

namespace vr
{
/// Something like a voice, for when there is no recording of one: a pulse train with a wandering
/// pitch through three vowel resonances (Peterson and Barney 1952), in syllables with gaps. The
/// same seed gives the same voice. Samples at kAudioRateHz, a few seconds.
std::vector<float> synthesiseSpeech(unsigned seed);
} // namespace vr

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// A receiver that repeats a stretch of ready-made stream frames, behind the FT_ functions.
///
/// For measuring the road alone: a read costs one copy, and no signal is made while the clock runs.
/// The stream waits while what was granted is used up, so that no ring downstream overflows.
namespace replay
{
/// Packs samples (full scale 1.0, a multiple of 84) into stream frames and loads them.
void load(const std::vector<COMPLEX> &samples);

/// Loads a stream of ready frames, a multiple of 512 bytes.
void loadFrames(std::vector<std::uint8_t> frames);

/// Adds to what may be sent, in complex samples.
void grant(std::uint64_t samples);

/// CPU seconds of the program's threads, spent in the device's own copies, waits and wake-ups.
double deviceSeconds();
} // namespace replay

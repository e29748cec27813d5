// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <vector>

/// By which a sound output of the host pulls audio from the device: (in, out, frames, channels).
///
/// The device fills all of out with interleaved samples of full scale 1.0; out.size() / channels
/// frames are wanted. True if out holds audio or silence, false if it was left alone. Called on the
/// host's audio thread, one thread an output. An empty function means that no source is attached.
using AudioCallback =
    std::function<bool(std::vector<float> &, std::vector<float> &, unsigned long, unsigned long)>;

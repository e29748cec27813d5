// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/types.h"
#include "vm_library/source/containers/CircularBuffer.h"

#include <vector>

/// Hands stereo audio from a ring to one host audio thread, as interleaved floats.
///
/// Holds the scratch of that thread: one object per host thread. The ring has a lock of its own.
class StereoPull
{
public:
    /// Reads out.size() / channels stereo pairs and writes them to `out` as left, right, left, ...
    /// False, with `out` and the ring untouched, if the ring holds less. Exactly two channels fill
    /// `out`; with more, the values behind the pairs stay as they are; with one, the pairs that do
    /// not fit are lost. `channels` must not be 0. Allocates only while requests grow.
    bool read(CircularBuffer<COMPLEX> &ring, std::vector<float> &out, unsigned long channels);

private:
    std::vector<COMPLEX> m_scratch;
};

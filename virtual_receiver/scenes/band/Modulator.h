// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scenes/Scene.h"

namespace vr
{
/// Makes a station's signal around zero hertz at kAudioRateHz, at a level of 1.0: the carrier of
/// AM, NFM and CW, the RMS while speaking of SSB.
class Modulator
{
public:
    virtual ~Modulator() = default;

    /// Begins the transmission anew.
    virtual void rewind() = 0;

    virtual void make(Sample *out, std::size_t count) = 0;
};
} // namespace vr

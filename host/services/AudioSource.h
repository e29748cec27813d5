// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/GuardedFunction.h"

#include "host_interfaces/AudioCallback.h"

namespace host
{
/// What an output of the host pulls its audio from: the callback of the device, if there is one.
///
/// Threads: the GUI thread installs and clears, the output's audio thread pulls. When setCallback()
/// returns, the callback before is not running and will not run again.
class AudioSource
{
public:
    void setCallback(AudioCallback callback) { m_callback.set(std::move(callback)); }

    /// Sizes out to frames * channels and lets the device fill it with interleaved samples. False
    /// if out was left alone: no source, no channels, or a source that has nothing to give.
    bool pull(std::vector<float> &in, std::vector<float> &out, unsigned long frames,
        unsigned long channels)
    {
        if (channels == 0)
            return false;
        out.resize(frames * channels);
        return m_callback.call(in, out, frames, channels);
    }

private:
    GuardedFunction<bool(std::vector<float> &, std::vector<float> &, unsigned long, unsigned long)>
        m_callback;
};
} // namespace host

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/HostSoundOut.h"
#include "stream/FrameSource.h"
#include "stream/StreamLedger.h"

#include "host_interfaces/EngineLimits.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace host
{
/// Where a sound card fetches what is heard: stereo floats, left and right in turn, full scale 1,
/// 48000 frames for each second of IQ. The receiver's clock makes them, at most kCapacity wait, and
/// what does not fit is lost (Readings::lostFrames): whoever plays them by another clock resamples.
///
/// Threads: ready() any, pull() one audio thread at a time. Neither waits on the engine.
class AudioOutlet : public FrameSource
{
public:
    static constexpr std::size_t kCapacity = EngineLimits::kAudioRing; ///< frames

    /// Both must outlive the outlet.
    AudioOutlet(HostSoundOut &source, StreamLedger &ledger);

    /// Frames that can be pulled now. They come in the engine's blocks: 512 IQ samples' worth.
    std::size_t ready() const { return std::size_t(m_ledger.readyFrames()); }

    /// Takes up to so many frames, at most kCapacity; gives how many it got. What lies beyond them
    /// in `interleaved` is left alone. Allocates nothing.
    std::size_t pull(float *interleaved, std::size_t frames) override;

private:
    HostSoundOut &m_source;
    StreamLedger &m_ledger;
    std::vector<float> m_in;
    std::vector<float> m_out;
};
} // namespace host

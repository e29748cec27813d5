// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "stream/FrameSource.h"
#include "stream/StreamLedger.h"

#include "host_interfaces/AudioCallback.h"

#include <atomic>
#include <cstdint>
#include <vector>

namespace host
{
/// The audio of an outlet beside the sound card, opened at 48 kHz: the virtual cable or the line
/// output.
///
/// The cable answers a request that it cannot fill with silence, so what is there is counted: the
/// engine moves the sound card's audio on in chunks. Where in its chunk it was at the beginning
/// nobody tells, so the last chunk is always taken for one that is still being filled, which costs
/// 43 ms of delay at most.
///
/// Threads: restart() on the GUI thread, pull() on an audio thread.
class OutletSource : public FrameSource
{
public:
    /// source is the host's outlet; the ledger must outlive the object.
    OutletSource(AudioCallback source, const StreamLedger &ledger);

    /// The outlet has been opened, or its stream begins anew: what it held is gone.
    void restart();

    std::size_t pull(float *interleaved, std::size_t frames) override;

private:
    std::uint64_t finishedChunks() const;

    AudioCallback m_source;
    const StreamLedger &m_ledger;
    std::atomic<std::uint64_t> m_firstChunk = 0;
    std::atomic<std::uint64_t> m_tookFrames = 0;
    std::vector<float> m_in;
    std::vector<float> m_out;
};
} // namespace host

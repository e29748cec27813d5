// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "stream/StreamLedger.h"

#include "host_interfaces/EngineLimits.h"

#include <algorithm>
#include <atomic>
#include <cstdint>

namespace host
{
/// How much audio waits in the ring of an outlet beside the sound card: the virtual cable or the
/// line output. The outlet itself does not tell; the virtual cable answers a request that it cannot
/// fill with silence.
///
/// The engine moves the sound card's audio on in chunks, converts each to the outlet's rate and
/// drops it if the outlet's ring has no room. The count begins with the stream, so the outlet must
/// be open by then.
///
/// Threads: the outlet's audio thread calls addPulled(), any thread the others.
class OutletFill
{
public:
    /// ledger must outlive the ring; rate of the outlet in hertz.
    OutletFill(const StreamLedger &ledger, int rateHz) : m_ledger(ledger), m_rateHz(rateHz) { }

    int rateHz() const { return m_rateHz; }

    /// Frames at the outlet's rate that can be pulled now; none past what the run wants.
    std::uint64_t readyFrames() const
    {
        const std::uint64_t finished = m_ledger.finishedFrames();
        const std::uint64_t made = atOutlet(std::min(finished, m_ledger.wantedFrames()));
        return made - std::min(made, m_pulledFrames.load());
    }

    /// Frames that the outlet's thread has taken out of its ring.
    void addPulled(std::uint64_t frames) { m_pulledFrames += frames; }

    /// Whether the ring, filled to that share at most, has room for what becomes of so many more
    /// frames of sound-card audio.
    bool hasRoom(std::uint64_t frames, double share) const
    {
        const std::uint64_t made = atOutlet(m_ledger.madeFrames() + frames);
        return double(made) - double(m_pulledFrames) <= share * double(kCapacity);
    }

private:
    static constexpr int kSoundCardRateHz = 48000;
    static constexpr std::uint64_t kChunkFrames = EngineLimits::kOutletChunk; // of the sound card
    static constexpr std::uint64_t kCapacity = EngineLimits::kOutletRing;     // of the outlet

    /// The conversion makes this many, or one more that is not counted on.
    std::uint64_t atOutlet(std::uint64_t frames) const
    {
        return frames / kChunkFrames * kChunkFrames * std::uint64_t(m_rateHz) / kSoundCardRateHz;
    }

    const StreamLedger &m_ledger;
    int m_rateHz;
    std::atomic<std::uint64_t> m_pulledFrames = 0;
};
} // namespace host

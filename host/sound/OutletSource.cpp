// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/OutletSource.h"

#include "host_interfaces/EngineLimits.h"

#include <algorithm>

namespace host
{
namespace
{
constexpr std::uint64_t kChunk = EngineLimits::kOutletChunk; // frames
} // namespace

OutletSource::OutletSource(AudioCallback source, const StreamLedger &ledger)
    : m_source(std::move(source)), m_ledger(ledger)
{
    m_out.reserve(EngineLimits::kOutletRing * kChannels);
    restart();
}

std::uint64_t OutletSource::finishedChunks() const
{
    return m_ledger.finishedFrames() / kChunk;
}

void OutletSource::restart()
{
    m_firstChunk = finishedChunks() + 1;
    m_tookFrames = 0;
}

std::size_t OutletSource::pull(float *interleaved, std::size_t frames)
{
    const std::uint64_t finished = finishedChunks();
    const std::uint64_t made = (finished - std::min(finished, m_firstChunk.load())) * kChunk;
    const std::uint64_t took = m_tookFrames;
    frames =
        std::min<std::uint64_t>({frames, made - std::min(made, took), EngineLimits::kOutletRing});
    m_out.resize(frames * kChannels);
    if (frames == 0 || !m_source(m_in, m_out, frames, kChannels))
        return 0;
    m_tookFrames = took + frames;
    std::copy(m_out.begin(), m_out.end(), interleaved);
    return frames;
}
} // namespace host

// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/StreamLedger.h"

#include "host_interfaces/EngineLimits.h"

namespace host
{
void StreamLedger::beginBlock(const COMPLEX *iq, int samples)
{
    m_engineThread.attach();
    m_blockSamples += std::uint64_t(samples);
    if (isGoalReached())
        return;

    double squaresI = 0.0, squaresQ = 0.0, peakI = 0.0, peakQ = 0.0;
    for (int i = 0; i < samples; ++i) {
        squaresI += iq[i].re * iq[i].re;
        squaresQ += iq[i].im * iq[i].im;
        peakI = std::max(peakI, std::abs(iq[i].re));
        peakQ = std::max(peakQ, std::abs(iq[i].im));
    }
    m_inputLevel.add(squaresI + squaresQ, std::max(peakI, peakQ), std::uint64_t(samples));
}

void StreamLedger::addAudio(std::uint64_t frames)
{
    // The sound device frees ring space a moment before it books it, so a block may be taken for
    // lost that just fitted. That errs to the safe side: it stays in the ring and is never asked
    // for.
    if (waitingFrames() + frames > EngineLimits::kAudioRing)
        m_lostFrames += frames;
    else
        m_madeFrames += frames;
}

void StreamLedger::endBlock()
{
    // Before the frames count as ready, so that nobody pulls some without knowing the limit.
    if (m_blockSamples >= m_goal && !isGoalReached())
        m_wantedFrames = m_madeFrames.load();
    m_readyFrames = m_madeFrames.load();
    m_processedSamples = m_blockSamples;
}
} // namespace host

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/ThreadClock.h"
#include "stream/Level.h"

#include "DspCore/types.h"

#include <atomic>
#include <cstdint>
#include <limits>

namespace host
{
/// Book-keeping between the engine and the sound device: how much IQ went through, how much audio
/// came out of it, how much of that is still waiting. The engine's audio ring answers a request
/// that it cannot fill with silence, so who wants to lose nothing has to know before asking.
///
/// A run may be given a goal: so many IQ samples belong to it. What the engine processes after the
/// goal is neither metered nor wanted, so a run that happened to get more gives the same results.
///
/// Threads: setGoal() before the stream; the engine calls beginBlock(), addAudio() and endBlock(),
/// in this order for each of its blocks; the sound device calls addPulled(); everything else may be
/// called by any thread.
class StreamLedger
{
public:
    /// Reached with the block that holds the last of these samples.
    void setGoal(std::uint64_t samples) { m_goal = samples; }

    void beginBlock(const COMPLEX *iq, int samples);
    void addAudio(std::uint64_t frames);
    void endBlock();

    /// Frames that the sound device has taken out of the engine's audio ring.
    void addPulled(std::uint64_t frames) { m_pulledFrames += frames; }

    /// The device has emptied its audio ring, as it does when its stream starts or its rate
    /// changes.
    void dropWaiting() { m_pulledFrames = m_madeFrames.load(); }

    /// IQ samples whose processing has been finished.
    std::uint64_t processedSamples() const { return m_processedSamples; }

    bool isGoalReached() const { return m_wantedFrames != kNoLimit; }

    /// Audio frames that belong to the run; no limit until the goal is reached.
    std::uint64_t wantedFrames() const { return m_wantedFrames; }

    /// Audio frames made, the block in work included: not all of them can be pulled yet.
    std::uint64_t madeFrames() const { return m_madeFrames; }

    /// Audio frames of all blocks that have been finished.
    std::uint64_t finishedFrames() const { return m_readyFrames; }

    /// Frames that can be pulled now.
    std::uint64_t readyFrames() const { return difference(m_readyFrames, m_pulledFrames); }

    /// Frames made or in the making that nobody pulled.
    std::uint64_t waitingFrames() const { return difference(m_madeFrames, m_pulledFrames); }

    /// Frames lost because the audio ring was full.
    std::uint64_t lostFrames() const { return m_lostFrames; }

    const Level &inputLevel() const { return m_inputLevel; }
    const ThreadClock &engineThread() const { return m_engineThread; }

private:
    static constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

    /// 0 where frames were dropped between being made and being taken.
    static std::uint64_t difference(std::uint64_t a, std::uint64_t b) { return a > b ? a - b : 0; }

    std::uint64_t m_goal = kNoLimit;
    std::uint64_t m_blockSamples = 0; // engine only
    std::atomic<std::uint64_t> m_wantedFrames = kNoLimit;
    std::atomic<std::uint64_t> m_processedSamples = 0;
    std::atomic<std::uint64_t> m_madeFrames = 0;
    std::atomic<std::uint64_t> m_readyFrames = 0;
    std::atomic<std::uint64_t> m_pulledFrames = 0;
    std::atomic<std::uint64_t> m_lostFrames = 0;
    Level m_inputLevel;
    ThreadClock m_engineThread;
};
} // namespace host

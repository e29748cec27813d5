// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/ReceiverControls.h"
#include "settings/HostSettings.h"
#include "stream/OutletFill.h"
#include "stream/StreamLedger.h"

#include <chrono>
#include <cstdint>
#include <vector>

namespace host
{
/// Decides how fast the virtual receiver sends and when a run has got enough.
///
/// In real time the receiver follows its own clock. In a free run it sends what it is granted, and
/// it is granted only what the rings behind it have room for, so no block is ever refused and the
/// result does not depend on the speed of the machine.
///
/// The engine sleeps when its input is empty, and a wake-up that reaches it a moment too early is
/// lost; the next block wakes it. In a free run there may be no next block, as the credit waits for
/// the engine. So half of the rings is kept back for nudges: when the engine stands still with a
/// block in front of it, one more read is granted, which wakes it. How many there are depends on
/// the moment, and so does what is sent behind the goal of the run; the ledger leaves that out.
///
/// Real hardware sends as it likes, and the run goes by the clock.
///
/// Used by one thread at a time.
class StreamFeed
{
public:
    /// sceneSeconds: length of a finite scene, 0 for an endless one. receiver is null for real
    /// hardware.
    StreamFeed(const HostSettings &settings, double sceneSeconds, const ReceiverControls *receiver);

    /// An outlet whose ring is to have room, too; must outlive the feed.
    void respect(const OutletFill &outlet) { m_outlets.push_back(&outlet); }

    /// Before the receiver's stream begins. A free run gives the ledger its goal.
    void prepare(StreamLedger &ledger);

    /// Grants what fits into the rings, and nudges. To be called again and again while the stream
    /// runs.
    void advance(const StreamLedger &ledger);

    /// True once all the IQ of this run has been sent and, in a free run, processed.
    bool isFinished(const StreamLedger &ledger);

    /// The receiver sends nothing more from here on but by nudges.
    void halt();

    /// Whether the engine still has something to do, which is worth waiting for. Behind halt(), to
    /// be called again and again; nudges.
    bool isDraining(const StreamLedger &ledger);

    /// IQ samples that the receiver sent and the engine has neither finished nor lost to a short
    /// read. When nothing was dropped, no more than kLargestRest remain in the end. Of real
    /// hardware nobody knows, so 0.
    std::uint64_t openSamples(const StreamLedger &ledger) const;

    /// Samples in reads that came back short.
    std::uint64_t lostSamples() const;

    /// In the end: what the engine's input ring refused, in samples and in blocks of the reader.
    std::uint64_t droppedSamples(const StreamLedger &ledger) const;
    std::uint64_t droppedBlocks(const StreamLedger &ledger) const;

    static constexpr std::uint64_t kSamplesPerFrame = 84;

    /// The reader keeps one frame until it sees the next one, and the engine waits for a whole
    /// block.
    static constexpr std::uint64_t kBlockSamples = 512;
    static constexpr std::uint64_t kLargestRest = kSamplesPerFrame + kBlockSamples - 1;

    /// Receiver's state when the stream was halted or last looked at; all zero of real hardware.
    const vr_status &status() const { return m_status; }

    /// Length of the run in seconds of IQ.
    double plannedSeconds() const { return m_plannedSeconds; }

    /// Samples that belong to the run.
    std::uint64_t goal() const { return m_goal; }

private:
    using Clock = std::chrono::steady_clock;

    std::uint64_t readSamples() const;
    std::uint64_t nextRead() const;
    std::uint64_t regularCredit() const;
    bool fits(std::uint64_t samples, double share, const StreamLedger &ledger) const;
    void refillAllowance(Clock::time_point now);
    void grant(std::uint64_t samples);
    void noteProgress(const StreamLedger &ledger, Clock::time_point now);
    bool needsNudge(const StreamLedger &ledger, Clock::time_point now);
    void writeOffWhatIsLost(Clock::time_point now);
    void look();

    const ReceiverControls *m_receiver;
    double m_rateHz;
    bool m_freeRun;
    double m_samplesPerSecond; // most that a free run may be granted
    double m_plannedSeconds;
    std::uint64_t m_goal; // whole blocks of the engine
    std::vector<const OutletFill *> m_outlets;

    std::uint64_t m_granted = 0;
    std::uint64_t m_writtenOff = 0; // granted, and lost before the engine
    std::uint64_t m_processedBefore = 0;
    int m_lastNudges = 8;     // behind halt(); arbitrary, one is enough nearly always
    double m_allowance = 0.0; // samples
    Clock::time_point m_allowanceTime;
    Clock::time_point m_startTime;
    Clock::time_point m_progressTime;
    Clock::time_point m_nudgeTime;
    vr_status m_status{};
};
} // namespace host

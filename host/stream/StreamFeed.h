// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/ReceiverControls.h"
#include "settings/HostSettings.h"
#include "stream/OutletFill.h"
#include "stream/SilenceWatch.h"
#include "stream/StreamLedger.h"

#include "host_interfaces/CreditPump.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

namespace host
{
/// Decides how fast the virtual receiver sends and when a run has got enough.
///
/// In real time the receiver follows its own clock. In a free run it sends what it is granted by
/// the pump, so the result does not depend on the speed of the machine. How many nudges there are
/// does, and so does what is sent after the goal of the run; ledger and losses leave that out.
///
/// Real hardware sends as it likes, and the run goes by the clock.
///
/// Used by one thread at a time.
class StreamFeed
{
public:
    /// sceneSeconds: length of a finite scene, 0 for an endless one. receiver is null for real
    /// hardware. The ledger must outlive the feed.
    StreamFeed(const HostSettings &settings, double sceneSeconds, const ReceiverControls *receiver,
        StreamLedger &ledger);

    /// An outlet whose ring is to have room, too; must outlive the feed.
    void keepRoomIn(const OutletFill &outlet) { m_outlets.push_back(&outlet); }

    /// Before the receiver's stream begins. A free run gives the ledger its goal.
    void prepare();

    /// Grants what fits into the rings, and nudges. To be called again and again while the stream
    /// runs.
    void advance();

    /// True once all the IQ of this run has been sent and, in a free run, processed, or the
    /// receiver is silent. To be called again and again while the stream runs.
    bool isFinished();

    /// The run ended as nothing came any more. Any thread.
    bool isSilent() const { return m_isSilent; }

    /// The receiver sends nothing more from here on but by nudges.
    void halt();

    /// Whether the engine still has something to do, which is worth waiting for. After halt(), to
    /// be called again and again; nudges.
    bool isDraining();

    /// Samples in reads that came back short.
    std::uint64_t lostSamples() const;

    /// In the end: what the engine's input ring refused, in samples and in blocks of the reader. Of
    /// a free run that reached its goal only what was granted until then counts. Of real hardware
    /// nobody knows, so 0.
    std::uint64_t droppedSamples() const;
    std::uint64_t droppedBlocks() const;

    /// The receiver's state as last read; all zero of real hardware.
    const vr_status &status() const { return m_status; }

    /// Length of the run in seconds of IQ.
    double plannedSeconds() const { return m_plannedSeconds; }

    /// Samples that belong to the run.
    std::uint64_t goal() const { return m_goal; }

private:
    using Clock = SilenceWatch::Clock;

    CreditPump makePump();
    std::uint64_t regularCredit() const;
    std::uint64_t lostBeforeGoal() const;
    bool isAllSent();
    bool hasRoom(std::uint64_t frames, double share) const;
    void refillAllowance();
    std::uint64_t processed() const;
    void readStatus();

    const ReceiverControls *m_receiver;
    StreamLedger &m_ledger;
    double m_rateHz;
    bool m_freeRun;
    double m_samplesPerSecond; // most that a free run may be granted
    double m_plannedSeconds;
    std::uint64_t m_goal; // whole blocks of the engine
    std::vector<const OutletFill *> m_outlets;

    CreditPump m_pump;
    std::uint64_t m_creditAtGoal = ~std::uint64_t(0); // until it is reached
    int m_lastNudges = 8;     // after halt(); arbitrary, one is enough nearly always
    double m_allowance = 0.0; // samples
    Clock::time_point m_allowanceTime;
    Clock::time_point m_startTime;
    std::optional<std::uint64_t> m_processedAtEnd; // in real time, once all has been sent
    SilenceWatch m_silence;
    std::atomic<bool> m_isSilent = false;
    vr_status m_status{};
};
} // namespace host

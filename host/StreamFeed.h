// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "HostSettings.h"
#include "StreamLedger.h"

#include "virtual_receiver/virtual_receiver.h"

#include <chrono>
#include <cstdint>

namespace host
{
/// Decides how fast the virtual receiver sends and when it has sent enough.
///
/// In real time the receiver follows its own clock. In a free run it sends what it is granted, and
/// it is granted only what the rings behind it have room for, so no block is ever refused and the
/// result does not depend on the speed of the machine. Used by one thread at a time.
class StreamFeed
{
public:
    /// sceneSeconds: length of a finite scene, 0 for an endless one.
    StreamFeed(const HostSettings &settings, double sceneSeconds);

    /// Before the receiver's stream begins.
    void prepare();

    /// Grants what fits into the rings. To be called again and again while the stream runs.
    void advance(const StreamLedger &ledger);

    /// True once all the IQ of this run has been sent.
    bool isFinished();

    /// The receiver sends nothing more from here on.
    void halt();

    /// IQ samples that the receiver sent and the engine has neither finished nor lost to a short
    /// read. When nothing was dropped, no more than kLargestRest remain in the end.
    std::uint64_t openSamples(const StreamLedger &ledger) const;

    /// Samples in reads that came back short.
    std::uint64_t lostSamples() const;

    /// In the end: what the engine's input ring refused, in samples and in blocks of the reader.
    std::uint64_t droppedSamples(const StreamLedger &ledger) const;
    std::uint64_t droppedBlocks(const StreamLedger &ledger) const;

    static constexpr std::uint64_t kSamplesPerFrame = 84;

    /// The reader keeps one frame until it sees the next one, and the engine waits for a whole
    /// block, 512 samples.
    static constexpr std::uint64_t kLargestRest = kSamplesPerFrame + 511;

    /// Receiver's state when the stream was halted or last looked at.
    const vr_status &status() const { return m_status; }

    /// Length of the run in seconds of IQ.
    double plannedSeconds() const { return m_plannedSeconds; }

private:
    std::uint64_t readSamples() const;
    void writeOffWhatIsLost(const StreamLedger &ledger);
    bool fits(std::uint64_t samples, const StreamLedger &ledger) const;

    double m_rateHz;
    bool m_freeRun;
    double m_plannedSeconds;
    std::uint64_t m_targetSamples;
    std::uint64_t m_granted = 0;
    std::uint64_t m_writtenOff = 0; // granted, and lost before the engine
    std::uint64_t m_processedBefore = 0;
    std::chrono::steady_clock::time_point m_progressTime = std::chrono::steady_clock::now();
    vr_status m_status{};
};
} // namespace host

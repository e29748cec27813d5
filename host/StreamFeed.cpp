// SPDX-License-Identifier: GPL-3.0-or-later
#include "StreamFeed.h"

#include "AudioFile.h"
#include "DeviceRates.h"
#include "DeviceReads.h"

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
constexpr std::uint64_t kInputRingSamples = 131072; // the engine's, between reader and engine
constexpr std::uint64_t kSpareFrames = 256;         // for what the receiver's filters hold back
constexpr std::uint64_t kBytesPerFrame = 512;

// A healthy stream never stands still so long, however busy the machine is.
constexpr auto kStall = std::chrono::seconds(2);

double plannedSeconds(const HostSettings &settings, double sceneSeconds)
{
    if (settings.seconds > 0.0)
        return sceneSeconds > 0.0 ? std::min(settings.seconds, sceneSeconds) : settings.seconds;
    return sceneSeconds > 0.0 ? sceneSeconds : HostSettings::kDefaultSeconds;
}
} // namespace

StreamFeed::StreamFeed(const HostSettings &settings, double sceneSeconds)
    : m_rateHz(settings.deviceRateHz), m_freeRun(settings.freeRun),
      m_plannedSeconds(host::plannedSeconds(settings, sceneSeconds)),
      m_targetSamples(std::uint64_t(std::ceil(m_plannedSeconds * m_rateHz)))
{ }

void StreamFeed::prepare()
{
    vr_set_pace(m_freeRun ? VR_PACE_CREDIT : VR_PACE_REAL_TIME);
}

/// Samples that one read of the driver brings, but for the first: a window, less the frame that it
/// kept from the window before.
std::uint64_t StreamFeed::readSamples() const
{
    const int window = std::clamp(256 << deviceRateCode(m_rateHz), 4096, 32768); // bytes
    return (std::uint64_t(window) / kBytesPerFrame - 1) * kSamplesPerFrame;
}

bool StreamFeed::fits(std::uint64_t samples, const StreamLedger &ledger) const
{
    const double open =
        double(m_granted + samples) - double(m_writtenOff) - double(ledger.processedSamples());
    const double openFrames = open * AudioFile::kRateHz / m_rateHz;
    return open <= double(kInputRingSamples)
        && double(ledger.waitingFrames() + kSpareFrames) + openFrames
        <= double(StreamLedger::kAudioRingFrames);
}

void StreamFeed::advance(const StreamLedger &ledger)
{
    if (!m_freeRun)
        return;
    writeOffWhatIsLost(ledger);
    // The driver's first read takes a whole window and each later one a window less the frame that
    // it kept. In steps of just that, the credit ends where a read ends.
    while (m_granted < m_targetSamples) {
        const std::uint64_t samples = readSamples() + (m_granted == 0 ? kSamplesPerFrame : 0);
        if (!fits(samples, ledger))
            return;
        vr_add_credit(samples);
        m_granted += samples;
    }
}

/// Samples that a fault took out of the stream never reach the engine and would block the credit
/// for good; so would a last read that lacks a byte.
void StreamFeed::writeOffWhatIsLost(const StreamLedger &ledger)
{
    const auto now = std::chrono::steady_clock::now();
    if (ledger.processedSamples() != m_processedBefore) {
        m_processedBefore = ledger.processedSamples();
        m_progressTime = now;
    } else if (now - m_progressTime > kStall) {
        m_writtenOff = m_granted - m_processedBefore;
        m_progressTime = now;
        if (m_granted >= m_targetSamples)
            vr_add_credit(readSamples());
    }
}

bool StreamFeed::isFinished()
{
    vr_get_status(&m_status);
    // A free run goes by the count alone: when the end of the scene is noticed depends on the
    // moment.
    return m_status.samples_sent >= m_targetSamples || (!m_freeRun && m_status.scene_ended != 0);
}

void StreamFeed::halt()
{
    // Without credit the receiver is silent. A free run that is broken off first uses up the credit
    // it has.
    if (!m_freeRun)
        vr_set_pace(VR_PACE_CREDIT);
    vr_get_status(&m_status);
}

std::uint64_t StreamFeed::openSamples(const StreamLedger &ledger) const
{
    const std::uint64_t accounted = ledger.processedSamples() + lostSamples();
    return m_status.samples_sent - std::min(m_status.samples_sent, accounted);
}

std::uint64_t StreamFeed::lostSamples() const
{
    return DeviceReads::instance().lostBytes / kBytesPerFrame * kSamplesPerFrame;
}

std::uint64_t StreamFeed::droppedSamples(const StreamLedger &ledger) const
{
    const std::uint64_t open = openSamples(ledger);
    return open - std::min(open, kLargestRest);
}

std::uint64_t StreamFeed::droppedBlocks(const StreamLedger &ledger) const
{
    // The rest is shorter than a block, so rounding up what exceeds it gives the number of blocks.
    return (droppedSamples(ledger) + readSamples() - 1) / readSamples();
}
} // namespace host

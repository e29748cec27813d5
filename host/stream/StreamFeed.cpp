// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/StreamFeed.h"

#include "library/FtReadMeter.h"
#include "settings/DeviceRates.h"
#include "stream/AudioFile.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace host
{
namespace
{
using namespace std::chrono_literals;

constexpr std::uint64_t kInputRingSamples = 131072; // the engine's, between reader and engine
constexpr std::uint64_t kSpareFrames = 256;         // for what the receiver's filters hold back
constexpr std::uint64_t kBytesPerFrame = 512;

// Shares of the rings: what runs by itself, and what nudges may fill.
constexpr double kRegularShare = 0.5;
constexpr double kNudgeShare = 1.0;

// An engine that is awake finishes a block in far less time, unless the machine is busy: then the
// nudge is needless and does no harm.
constexpr auto kStandsStill = 3ms;

// How long the last blocks are waited for on a busy machine.
constexpr auto kLastLook = 200ms;

// A healthy stream never stands still so long, however busy the machine is.
constexpr auto kStall = 2s;

constexpr double kNoLimit = std::numeric_limits<double>::infinity();

// With the receiver's usual 16 ms between two lines of the spectrum, 12 lines a second of IQ.
constexpr double kWaterfallSpeed = 5.0; // times real time

// The recorder's byte ring takes 10922 samples, and nobody tells when it is full. At this speed it
// lasts for 20 ms, which a busy machine may leave its thread waiting.
constexpr double kRecorderSamplesPerSecond = 500e3;

/// Most samples a second that a free run may be granted: what works by the clock is to keep up.
double fastestRate(const HostSettings &settings)
{
    double rate = kNoLimit;
    if (settings.recording.isOn())
        rate = std::min(rate, std::max(kRecorderSamplesPerSecond, double(settings.deviceRateHz)));
    if (settings.spectrum.isWanted())
        rate = std::min(rate, kWaterfallSpeed * settings.deviceRateHz);
    return rate;
}

double plannedSeconds(const HostSettings &settings, double sceneSeconds)
{
    if (settings.seconds > 0.0)
        return sceneSeconds > 0.0 ? std::min(settings.seconds, sceneSeconds) : settings.seconds;
    return sceneSeconds > 0.0 ? sceneSeconds : HostSettings::kDefaultSeconds;
}

std::uint64_t wholeBlocks(double samples)
{
    constexpr auto kBlock = StreamFeed::kBlockSamples;
    return (std::uint64_t(std::ceil(samples)) + kBlock - 1) / kBlock * kBlock;
}
} // namespace

StreamFeed::StreamFeed(
    const HostSettings &settings, double sceneSeconds, const ReceiverControls *receiver)
    : m_receiver(receiver), m_rateHz(settings.deviceRateHz), m_freeRun(settings.freeRun),
      m_samplesPerSecond(fastestRate(settings)),
      m_plannedSeconds(host::plannedSeconds(settings, sceneSeconds)),
      m_goal(wholeBlocks(m_plannedSeconds * m_rateHz)),
      m_allowance(m_samplesPerSecond == kNoLimit ? kNoLimit : 0.0)
{ }

void StreamFeed::prepare(StreamLedger &ledger)
{
    m_startTime = m_progressTime = m_nudgeTime = m_allowanceTime = Clock::now();
    if (m_freeRun)
        ledger.setGoal(m_goal);
    if (m_receiver)
        m_receiver->setPace(m_freeRun ? VR_PACE_CREDIT : VR_PACE_REAL_TIME);
}

/// Samples that one read of the driver brings, but for the first: a window, less the frame that it
/// kept from the window before.
std::uint64_t StreamFeed::readSamples() const
{
    const int window = std::clamp(256 << deviceRateCode(m_rateHz), 4096, 32768); // bytes
    return (std::uint64_t(window) / kBytesPerFrame - 1) * kSamplesPerFrame;
}

/// The driver's first read takes a whole window. In steps of just what is read, the credit ends
/// where a read ends.
std::uint64_t StreamFeed::nextRead() const
{
    return readSamples() + (m_granted == 0 ? kSamplesPerFrame : 0);
}

/// What it takes for the engine to get to the goal by itself.
std::uint64_t StreamFeed::regularCredit() const
{
    return m_goal + kSamplesPerFrame;
}

bool StreamFeed::fits(std::uint64_t samples, double share, const StreamLedger &ledger) const
{
    const double open = double(m_granted + samples) - double(m_writtenOff + lostSamples())
        - double(ledger.processedSamples());
    const auto openFrames =
        kSpareFrames + std::uint64_t(std::max(0.0, open) * AudioFile::kRateHz / m_rateHz);
    const auto hasRoom = [&](const OutletFill *outlet) {
        return outlet->hasRoom(openFrames, share);
    };
    return open <= share * double(kInputRingSamples)
        && double(ledger.waitingFrames() + openFrames)
        <= share * double(StreamLedger::kAudioRingFrames)
        && std::all_of(m_outlets.begin(), m_outlets.end(), hasRoom);
}

/// What works by the clock gets its samples evenly: what was not granted in time is not made up for
/// later.
void StreamFeed::refillAllowance(Clock::time_point now)
{
    if (m_samplesPerSecond == kNoLimit)
        return;
    const double seconds = std::chrono::duration<double>(now - m_allowanceTime).count();
    m_allowanceTime = now;
    m_allowance = std::min(m_allowance + seconds * m_samplesPerSecond, 2.0 * double(nextRead()));
}

void StreamFeed::grant(std::uint64_t samples)
{
    m_receiver->addCredit(samples);
    m_granted += samples;
}

void StreamFeed::advance(const StreamLedger &ledger)
{
    if (!m_freeRun)
        return;
    const auto now = Clock::now();
    noteProgress(ledger, now);
    writeOffWhatIsLost(now);
    refillAllowance(now);
    while (m_granted < regularCredit() && m_allowance >= double(nextRead())
        && fits(nextRead(), kRegularShare, ledger)) {
        m_allowance -= double(nextRead());
        grant(nextRead());
    }
    if (needsNudge(ledger, now) && fits(nextRead(), kNudgeShare, ledger))
        grant(nextRead());
}

void StreamFeed::noteProgress(const StreamLedger &ledger, Clock::time_point now)
{
    if (ledger.processedSamples() == m_processedBefore)
        return;
    m_processedBefore = ledger.processedSamples();
    m_progressTime = m_nudgeTime = now;
}

/// Whether the engine stands still although it has a block, or is short of one, and nothing that
/// would wake it is on its way.
bool StreamFeed::needsNudge(const StreamLedger &ledger, Clock::time_point now)
{
    if (now - m_nudgeTime < kStandsStill)
        return false;
    m_nudgeTime = now;
    look();
    if (m_status.samples_sent + readSamples() <= m_granted)
        return false;
    // Behind the regular credit there is a goal that was not reached, for whatever reason.
    return m_granted >= regularCredit() || openSamples(ledger) > kLargestRest;
}

/// Samples that a fault took out of the stream never reach the engine and would block the credit
/// for good; so would a last read that lacks bytes.
void StreamFeed::writeOffWhatIsLost(Clock::time_point now)
{
    if (now - m_progressTime < kStall)
        return;
    m_writtenOff = m_granted - std::min(m_granted, m_processedBefore + lostSamples());
    m_progressTime = now;
    if (m_granted >= regularCredit())
        grant(readSamples());
}

void StreamFeed::look()
{
    if (m_receiver)
        m_receiver->getStatus(&m_status);
}

bool StreamFeed::isFinished(const StreamLedger &ledger)
{
    if (m_freeRun)
        return ledger.isGoalReached();
    look();
    if (m_receiver)
        return m_status.samples_sent >= m_goal || m_status.scene_ended != 0;
    return std::chrono::duration<double>(Clock::now() - m_startTime).count() >= m_plannedSeconds;
}

void StreamFeed::halt()
{
    // Without credit the receiver is silent. A free run that is broken off first uses up the credit
    // it has.
    if (m_receiver && !m_freeRun)
        m_receiver->setPace(VR_PACE_CREDIT);
    look();
    m_progressTime = m_nudgeTime = Clock::now();
}

bool StreamFeed::isDraining(const StreamLedger &ledger)
{
    const auto now = Clock::now();
    noteProgress(ledger, now);
    look(); // what was on its way when the feed was halted counts, too
    if (openSamples(ledger) <= kLargestRest)
        return false;
    if (now - m_nudgeTime < kStandsStill)
        return true;
    // What several nudges did not bring out is not there.
    m_nudgeTime = now;
    if (m_lastNudges == 0 || !m_receiver)
        return now - m_progressTime < kLastLook;
    --m_lastNudges;
    grant(readSamples());
    return true;
}

std::uint64_t StreamFeed::openSamples(const StreamLedger &ledger) const
{
    const std::uint64_t accounted = ledger.processedSamples() + lostSamples();
    return m_status.samples_sent - std::min(m_status.samples_sent, accounted);
}

std::uint64_t StreamFeed::lostSamples() const
{
    return FtReadMeter::instance().lostBytes / kBytesPerFrame * kSamplesPerFrame;
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

// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/StreamFeed.h"

#include "library/FtReadMeter.h"

#include "host_interfaces/EngineLimits.h"
#include "vm_library/source/file/IQFile.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace host
{
namespace
{
using namespace std::chrono_literals;

// How long the last blocks are waited for on a busy machine.
constexpr auto kDrainTime = 1s;

constexpr double kNoLimit = std::numeric_limits<double>::infinity();

// With the receiver's usual 16 ms between two lines of the spectrum, 12 lines a second of IQ.
constexpr double kWaterfallSpeed = 5.0; // times real time

// Nobody tells how full the recorder's memory is, 64 MiB: 10 s of what this speed exceeds a slow
// card by. Without a limit a free run makes more than most disks take.
constexpr double kDiskBytesPerSecond = 16e6;
constexpr double kRecorderSamplesPerSecond = kDiskBytesPerSecond / vm::file::IQFile::kSampleBytes;

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

/// a - b, 0 if that is negative.
std::uint64_t difference(std::uint64_t a, std::uint64_t b)
{
    return a - std::min(a, b);
}

std::uint64_t wholeBlocks(double samples)
{
    constexpr std::uint64_t kBlock = EngineLimits::kBlock;
    return (std::uint64_t(std::ceil(samples)) + kBlock - 1) / kBlock * kBlock;
}
} // namespace

StreamFeed::StreamFeed(const HostSettings &settings, double sceneSeconds,
    const ReceiverControls *receiver, StreamLedger &ledger)
    : m_receiver(receiver), m_ledger(ledger), m_rateHz(settings.deviceRateHz),
      m_freeRun(settings.freeRun), m_samplesPerSecond(fastestRate(settings)),
      m_plannedSeconds(host::plannedSeconds(settings, sceneSeconds)),
      m_goal(wholeBlocks(m_plannedSeconds * m_rateHz)), m_pump(makePump()),
      m_allowance(m_samplesPerSecond == kNoLimit ? kNoLimit : 0.0), m_silence(m_plannedSeconds)
{ }

CreditPump StreamFeed::makePump()
{
    const auto grant = [this](std::uint64_t samples) { m_receiver->addCredit(samples); };
    const auto sent = [this] {
        readStatus();
        return m_status.samples_sent;
    };
    return {m_rateHz, {grant, sent},
        [this](std::uint64_t frames, double share) { return hasRoom(frames, share); }};
}

void StreamFeed::prepare()
{
    m_startTime = m_allowanceTime = Clock::now();
    m_silence.begin(m_startTime);
    if (m_freeRun)
        m_ledger.setGoal(m_goal);
    if (m_receiver)
        m_receiver->setPace(m_freeRun ? VR_PACE_CREDIT : VR_PACE_REAL_TIME);
}

/// What it takes for the engine to get to the goal by itself.
std::uint64_t StreamFeed::regularCredit() const
{
    return m_goal + EngineLimits::kFrameSamples;
}

bool StreamFeed::hasRoom(std::uint64_t frames, double share) const
{
    return double(m_ledger.waitingFrames() + frames) <= share * double(EngineLimits::kAudioRing)
        && std::all_of(m_outlets.begin(), m_outlets.end(),
            [&](const OutletFill *outlet) { return outlet->hasRoom(frames, share); });
}

/// What works by the clock gets its samples evenly: what was not granted in time is not made up for
/// later.
void StreamFeed::refillAllowance()
{
    if (m_samplesPerSecond == kNoLimit)
        return;
    const auto now = Clock::now();
    const double seconds = std::chrono::duration<double>(now - m_allowanceTime).count();
    m_allowanceTime = now;
    m_allowance =
        std::min(m_allowance + seconds * m_samplesPerSecond, 2.0 * double(m_pump.nextRead()));
}

void StreamFeed::advance()
{
    if (!m_freeRun)
        return;
    refillAllowance();
    for (double read = double(m_pump.nextRead());
         m_pump.granted() < regularCredit() && m_allowance >= read && m_pump.grant(processed());
         read = double(m_pump.nextRead()))
        m_allowance -= read;
    // With all that it takes granted, a goal that was not reached is reason enough.
    m_pump.nudge(processed(), m_pump.granted() >= regularCredit());
}

bool StreamFeed::isFinished()
{
    m_isSilent = m_silence.look(m_ledger.processedSamples(), Clock::now());
    return m_isSilent || isAllSent();
}

bool StreamFeed::isAllSent()
{
    if (m_freeRun) {
        if (m_ledger.isGoalReached())
            m_creditAtGoal = std::min(m_creditAtGoal, m_pump.granted());
        return m_ledger.isGoalReached();
    }
    readStatus();
    const bool isOver = m_receiver
        ? m_status.samples_sent >= m_goal || m_status.scene_ended != 0
        : std::chrono::duration<double>(Clock::now() - m_startTime).count() >= m_plannedSeconds;
    if (!isOver)
        return false;
    // One block more: without it the receiver may be silent, which shows by and by.
    if (!m_processedAtEnd)
        m_processedAtEnd = m_ledger.processedSamples();
    return m_ledger.processedSamples() > *m_processedAtEnd;
}

void StreamFeed::halt()
{
    // Without credit the receiver is silent. A free run that is broken off first uses up the credit
    // it has.
    if (m_receiver && !m_freeRun)
        m_receiver->setPace(VR_PACE_CREDIT);
    m_pump.restartClock();
    readStatus();
}

bool StreamFeed::isDraining()
{
    readStatus(); // what was on its way when the feed was halted counts, too
    if (droppedSamples() == 0)
        return false;
    m_pump.note(processed());
    const std::uint64_t before = m_pump.granted();
    if (m_receiver && m_lastNudges > 0)
        m_pump.nudge(processed(), false);
    if (m_pump.granted() != before)
        --m_lastNudges;
    return m_pump.standstill() < kDrainTime; // what the nudges did not bring out is not there
}

/// What the engine has finished, and what never gets there.
std::uint64_t StreamFeed::processed() const
{
    return m_ledger.processedSamples() + lostSamples();
}

void StreamFeed::readStatus()
{
    if (m_receiver)
        m_receiver->getStatus(&m_status);
}

std::uint64_t StreamFeed::lostSamples() const
{
    return FtReadMeter::instance().lostBytes / EngineLimits::kFrameBytes
        * EngineLimits::kFrameSamples;
}

std::uint64_t StreamFeed::droppedSamples() const
{
    const std::uint64_t open = difference(m_status.samples_sent, processed());
    return std::min(difference(open, CreditPump::kLargestRest), lostBeforeGoal());
}

/// At most: each read that was refused on the way to the goal had to be granted once more to get
/// there. Without a goal nobody knows.
std::uint64_t StreamFeed::lostBeforeGoal() const
{
    const std::uint64_t read = m_pump.nextRead();
    return difference(m_creditAtGoal, regularCredit() + lostSamples()) / read * read;
}

std::uint64_t StreamFeed::droppedBlocks() const
{
    // The rest is shorter than a block, so rounding up what exceeds it gives the number of blocks.
    const std::uint64_t read = m_pump.nextRead();
    return (droppedSamples() + read - 1) / read;
}
} // namespace host

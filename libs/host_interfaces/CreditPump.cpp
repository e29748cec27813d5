// SPDX-License-Identifier: GPL-3.0-or-later
#include "host_interfaces/CreditPump.h"

#include <algorithm>

namespace
{
using namespace std::chrono_literals;

constexpr double kAudioRateHz = 48000.0;
constexpr std::uint64_t kSpareFrames = 256; // for what the receiver's filters hold back

// Shares of the rings: what runs by itself, and what nudges may fill.
constexpr double kRegularShare = 0.5;
constexpr double kNudgeShare = 1.0;

// An engine that is awake finishes a block in far less time, unless the machine is busy: then the
// nudge is needless and does no harm.
constexpr auto kStandsStill = 3ms;

// A healthy stream never stands still so long, however busy the machine is.
constexpr auto kStall = 2s;

/// 0 for a rate that the device does not have, which has the smallest window, too.
int rateCode(double rateHz)
{
    constexpr auto kRates = EngineLimits::kRatesHz;
    const auto *rate = std::find(kRates.begin(), kRates.end(), rateHz);
    return rate == kRates.end() ? 0 : int(rate - kRates.begin());
}
} // namespace

CreditPump::CreditPump(double rateHz, Receiver receiver, HasRoom hasRoom)
    : m_rateHz(rateHz), m_receiver(std::move(receiver)), m_hasRoom(std::move(hasRoom))
{ }

std::uint64_t CreditPump::nextRead() const
{
    const std::uint64_t frames =
        EngineLimits::readWindow(rateCode(m_rateHz)) / EngineLimits::kFrameBytes;
    return (m_granted == 0 ? frames : frames - 1) * EngineLimits::kFrameSamples;
}

bool CreditPump::fits(std::uint64_t processed, double share) const
{
    const std::uint64_t accounted = processed + m_writtenOff;
    const std::uint64_t wanted = m_granted + nextRead();
    const std::uint64_t open = wanted - std::min(wanted, accounted);
    const auto frames = kSpareFrames + std::uint64_t(double(open) * kAudioRateHz / m_rateHz);
    return double(open) <= share * double(EngineLimits::kInputRing)
        && (!m_hasRoom || m_hasRoom(frames, share));
}

void CreditPump::grantRead()
{
    const std::uint64_t samples = nextRead();
    m_granted += samples;
    m_receiver.grant(samples);
}

bool CreditPump::grant(std::uint64_t processed)
{
    if (!fits(processed, kRegularShare))
        return false;
    grantRead();
    return true;
}

void CreditPump::note(std::uint64_t processed)
{
    if (processed == m_processedBefore)
        return;
    m_processedBefore = processed;
    restartClock();
}

void CreditPump::nudge(std::uint64_t processed, bool isShort)
{
    note(processed);
    const auto now = Clock::now();
    if (now - m_progressTime >= kStall)
        return writeOff(processed, isShort, now);
    if (now - m_nudgeTime < kStandsStill)
        return;
    m_nudgeTime = now;
    const std::uint64_t sent = m_receiver.sent();
    const bool isOnItsWay = sent + nextRead() <= m_granted;
    const bool hasBlock = sent > processed + kLargestRest;
    if (!isOnItsWay && (hasBlock || isShort) && fits(processed, kNudgeShare))
        grantRead();
}

void CreditPump::writeOff(std::uint64_t processed, bool isShort, Clock::time_point now)
{
    m_writtenOff = m_granted - std::min(m_granted, processed);
    m_progressTime = now;
    if (isShort)
        grantRead();
}

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host_interfaces/EngineLimits.h"

#include <chrono>
#include <cstdint>
#include <functional>

/// Decides how much a virtual receiver that sends on credit may send, so that no ring on the road
/// ever refuses a block, however fast or slow the machine is.
///
/// The engine sleeps when its input is empty, and a wake-up that reaches it a moment too early is
/// lost; the next block wakes it. Here there may be no next block, as the credit waits for the
/// engine. So half of the rings is kept back for nudges: when the engine stands still with a block
/// waiting, one more read is granted, which wakes it. How many there are depends on the moment.
///
/// Counts in IQ samples of one stream. Used by one thread at a time.
class CreditPump
{
public:
    using Clock = std::chrono::steady_clock;

    struct Receiver
    {
        std::function<void(std::uint64_t samples)> grant; ///< may send so many more
        std::function<std::uint64_t()> sent = {}; ///< how many it has sent; only nudges need it
    };

    /// Whether what follows the engine takes so many frames of 48 kHz audio more, if it may be
    /// filled to that share.
    using HasRoom = std::function<bool(std::uint64_t frames, double share)>;

    /// What remains unprocessed when all is done: the reader keeps one frame until it sees the next
    /// one, and the engine waits for a whole block.
    static constexpr std::uint64_t kLargestRest =
        EngineLimits::kFrameSamples + EngineLimits::kBlock - 1;

    /// rateHz: one of the device's. Without hasRoom the audio never waits.
    CreditPump(double rateHz, Receiver receiver, HasRoom hasRoom = {});

    /// Grants one read if that leaves half of each ring free. `processed` here and below: what the
    /// engine has finished, and what a fault took out before it.
    bool grant(std::uint64_t processed);

    /// Grants one read if the engine stands still with a block waiting, or if it is short of one,
    /// and nothing that would wake it is on its way. What does not come out for seconds is written
    /// off: it got lost without a trace and would block the credit for good. To be called again and
    /// again.
    void nudge(std::uint64_t processed, bool isShort);

    std::uint64_t granted() const { return m_granted; }

    /// What the next read brings. The driver's first one takes a whole window, the others a window
    /// less the frame that was kept from the one before. In steps of just this the credit ends
    /// where a read ends.
    std::uint64_t nextRead() const;

    /// From here on the engine is given time anew.
    void restartClock() { m_progressTime = m_nudgeTime = Clock::now(); }

    /// Looks whether the engine has finished something.
    void note(std::uint64_t processed);

    /// Since it last had, as far as grants and looks noticed.
    Clock::duration standstill() const { return Clock::now() - m_progressTime; }

private:
    bool fits(std::uint64_t processed, double share) const;
    void grantRead();
    void writeOff(std::uint64_t processed, bool isShort, Clock::time_point now);

    double m_rateHz;
    Receiver m_receiver;
    HasRoom m_hasRoom;
    std::uint64_t m_granted = 0;
    std::uint64_t m_writtenOff = 0;
    std::uint64_t m_processedBefore = 0;
    Clock::time_point m_progressTime = Clock::now();
    Clock::time_point m_nudgeTime = m_progressTime;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ByteSource.h"

#include <atomic>
#include <chrono>

/// Sends the numbers 0, 1, 2 ... as 64-bit little-endian words at a steady rate, from the moment
/// the receiver is told to stream, so that each byte can be checked at the other end.
class CountingSource : public ByteSource
{
public:
    explicit CountingSource(double bytesPerSecond) : m_rate(bytesPerSecond) { }

    void write(std::span<const std::uint8_t> data) override;
    std::size_t read(std::span<std::uint8_t> data, unsigned timeoutMs) override;
    void setBitMode(std::uint8_t, std::uint8_t) override { }
    void purge(bool, bool) override { }

private:
    using Clock = std::chrono::steady_clock;

    const double m_rate;
    std::atomic<bool> m_streaming = false;
    std::atomic<bool> m_restart = false;
    Clock::time_point m_start;
    std::uint64_t m_sent = 0;
};

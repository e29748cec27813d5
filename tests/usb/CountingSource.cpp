// SPDX-License-Identifier: GPL-3.0-or-later
#include "CountingSource.h"

#include "counting.h"

#include <algorithm>
#include <thread>

namespace
{
constexpr std::size_t kCommandBytes = 11;
constexpr std::uint8_t kStateCommand = 2;
constexpr std::size_t kStreamByte = 9; // of the packet: bits 16 to 23 of the state word
constexpr std::uint8_t kStreamBit = 0x08;
} // namespace

void CountingSource::write(std::span<const std::uint8_t> data)
{
    for (; data.size() >= kCommandBytes; data = data.subspan(kCommandBytes)) {
        if (data[6] != kStateCommand)
            continue;
        const bool on = data[kStreamByte] & kStreamBit;
        if (on && !m_streaming)
            m_restart = true;
        m_streaming = on;
    }
}

std::size_t CountingSource::read(std::span<std::uint8_t> data, unsigned timeoutMs)
{
    const auto end = Clock::now() + std::chrono::milliseconds(timeoutMs);
    for (;;) {
        if (m_restart.exchange(false)) {
            m_start = Clock::now();
            m_sent = 0;
        }
        const auto now = Clock::now();
        std::uint64_t due = 0;
        if (m_streaming) {
            const std::chrono::duration<double> time = now - m_start;
            due = std::uint64_t(std::max(0.0, time.count() * m_rate - double(m_sent)));
        }
        if (due >= data.size() || now >= end) {
            const std::size_t size = std::min<std::uint64_t>(due, data.size());
            countFrom(m_sent, data.first(size));
            m_sent += size;
            return size;
        }
        const double missing = m_streaming ? double(data.size() - due) / m_rate : 1e-3;
        std::this_thread::sleep_for(std::min<Clock::duration>(end - now,
            std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(missing))));
    }
}

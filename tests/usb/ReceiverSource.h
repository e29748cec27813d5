// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ByteSource.h"

#include "d2xx/ftd2xx.h"

#include <chrono>

/// The virtual receiver's stream of a recording, at a part of real time: a virtual machine is slow.
/// One per process.
class ReceiverSource : public ByteSource
{
public:
    /// Without the recording the band built into the library is sent.
    ReceiverSource(const char *recording, double speed);

    void write(std::span<const std::uint8_t> data) override;
    std::size_t read(std::span<std::uint8_t> data, unsigned timeoutMs) override;
    void setBitMode(std::uint8_t mask, std::uint8_t mode) override;
    void purge(bool in, bool out) override;

private:
    using Clock = std::chrono::steady_clock;

    const double m_speed;
    Clock::time_point m_granted = Clock::now(); // up to here samples may have been sent
    FT_HANDLE m_handle = nullptr;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// What is at the chip's FIFO pins: takes the bytes that the host writes and gives those that it
/// reads. One thread reads, another writes.
class ByteSource
{
public:
    virtual ~ByteSource() = default;

    virtual void write(std::span<const std::uint8_t> data) = 0;

    /// Waits until all are there or the time is over; the number given.
    virtual std::size_t read(std::span<std::uint8_t> data, unsigned timeoutMs) = 0;

    virtual void setBitMode(std::uint8_t mask, std::uint8_t mode) = 0;
    virtual void purge(bool in, bool out) = 0;
};

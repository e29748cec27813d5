// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CommandPacket.h"

namespace vr
{
/// Finds command packets in the written byte stream, one byte at a time, as the hardware does: it
/// does not know how the bytes were cut into writes. Bytes that start no packet are skipped and
/// counted. Not thread-safe.
class CommandParser
{
public:
    /// Takes the next byte; true when it completes a packet, which packet() then holds.
    bool push(std::uint8_t byte);

    const CommandPacket &packet() const { return m_packet; }

    /// Bytes so far that belong to no packet.
    std::uint64_t badBytes() const { return m_badBytes; }

    void clear() { *this = CommandParser(); }

private:
    bool fits(std::uint8_t byte) const;

    CommandPacket m_packet;
    std::size_t m_size = 0; // bytes of m_packet.bytes in use
    std::uint64_t m_badBytes = 0;
};
} // namespace vr

// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandParser.h"

namespace vr
{
namespace
{
constexpr std::size_t kTypeAt = CommandPacket::kMarkerSize;
constexpr std::size_t kCodeAt = kTypeAt + 1;
constexpr std::size_t kValueAt = kCodeAt + 1;
} // namespace

bool CommandParser::fits(std::uint8_t byte) const
{
    if (m_size < CommandPacket::kMarkerSize)
        return byte == CommandPacket::kMarker;
    return m_size != kTypeAt || byte == CommandPacket::kType;
}

bool CommandParser::push(std::uint8_t byte)
{
    if (!fits(byte)) {
        // One marker byte more than a marker has: the packet may start one byte later.
        if (m_size == kTypeAt && byte == CommandPacket::kMarker) {
            ++m_badBytes;
            return false;
        }
        m_badBytes += m_size + 1;
        m_size = 0;
        return false;
    }
    m_packet.bytes[m_size++] = byte;
    if (m_size < CommandPacket::kSize)
        return false;
    m_size = 0;
    m_packet.code = m_packet.bytes[kCodeAt];
    m_packet.value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        m_packet.value |= std::uint32_t(m_packet.bytes[kValueAt + i]) << (8 * i);
    return true;
}
} // namespace vr

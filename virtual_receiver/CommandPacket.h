// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace vr
{
/// What the host writes: five marker bytes, a type byte, the command code and a little-endian
/// value.
struct CommandPacket
{
    static constexpr std::size_t kSize = 11;
    static constexpr std::size_t kMarkerSize = 5;
    static constexpr std::uint8_t kMarker = 0x55;
    static constexpr std::uint8_t kType = 0x01;

    enum Code : std::uint8_t { Frequency = 1, State = 2, AdcRegister = 3, Attenuator = 4 };

    std::uint8_t code = 0;
    std::uint32_t value = 0;
    std::array<std::uint8_t, kSize> bytes = {};
};
} // namespace vr

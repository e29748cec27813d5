// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <string>

namespace d2xx
{
struct Chip;

/// Where on the bus a port of a chip is. The way through the hubs stays the same when a device is
/// pulled and put back, its address does not.
struct DevicePlace
{
    std::uint8_t bus = 0;
    std::array<std::uint8_t, 7> hubPorts = {}; ///< from the root on, zeros after the last
    int port = 0;                              ///< of the chip, from 0

    auto operator<=>(const DevicePlace &) const = default;
};

/// One line of the device list.
struct DeviceEntry
{
    DevicePlace place;
    std::uint8_t address = 0;
    const Chip *chip = nullptr;
    std::string serial; ///< UTF-8; empty if it could not be read
    std::string description;
};
} // namespace d2xx

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace d2xx
{
inline constexpr std::uint16_t kVendorId = 0x0403;

/// A kind of FIFO chip that has the synchronous mode (60 MHz, 8 bits), one row of one table.
///
/// A chip with several ports shows each of them as a device of its own: an interface of its own on
/// the bus, a letter after serial number and description, a port number in every request.
struct Chip
{
    std::uint16_t productId;
    const char *name;
    int ports;
    int eepromTypeWord; ///< word of the EEPROM whose low byte tells which EEPROM is fitted

    /// Endpoints of a port, counted from 0.
    static std::uint8_t inEndpoint(int port) { return std::uint8_t(0x81 + 2 * port); }
    static std::uint8_t outEndpoint(int port) { return std::uint8_t(0x02 + 2 * port); }

    /// What requests name a port by: from 1 on where there are several, else 0.
    std::uint16_t portNumber(int port) const { return ports > 1 ? std::uint16_t(port + 1) : 0; }

    /// Null for a product that is none of them.
    static const Chip *find(std::uint16_t vendorId, std::uint16_t productId);
};
} // namespace d2xx

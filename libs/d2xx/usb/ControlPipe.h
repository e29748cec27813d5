// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "d2xx/ftd2xx.h"

#include <cstdint>

struct libusb_device_handle;

namespace d2xx
{
/// The vendor requests of one port of a chip, each one control transfer of 300 ms at most.
///
/// Any thread, several at once: libusb queues them. Requests and their numbers are those of the
/// chip family's USB interface, which is the same in all public drivers for it.
class ControlPipe
{
public:
    /// Port number as Chip::portNumber() tells. The handle stays the caller's.
    ControlPipe(libusb_device_handle *handle, std::uint16_t portNumber)
        : m_handle(handle), m_port(portNumber)
    { }

    /// The port as after power on; the EEPROM is not read again.
    FT_STATUS reset() { return send(0x00, 0); }

    /// Empties a queue of the chip; "in" and "out" as the host sees them.
    FT_STATUS purgeIn() { return send(0x00, 2); }
    FT_STATUS purgeOut() { return send(0x00, 1); }

    /// The request carries the kind in the upper byte of its index.
    FT_STATUS setFlowControl(std::uint16_t kind, std::uint8_t xon, std::uint8_t xoff)
    {
        return send(0x02, std::uint16_t(xoff << 8 | xon), kind);
    }

    /// Milliseconds after which the chip sends a packet that is not full.
    FT_STATUS setLatency(std::uint8_t ms) { return send(0x09, ms); }

    FT_STATUS setBitMode(std::uint8_t mask, std::uint8_t mode)
    {
        return send(0x0b, std::uint16_t(mode << 8 | mask));
    }

    /// One word of the EEPROM, by its number. Writing takes the chip some milliseconds.
    FT_STATUS readWord(std::uint16_t number, std::uint16_t *word);
    FT_STATUS writeWord(std::uint16_t number, std::uint16_t word);

private:
    FT_STATUS send(std::uint8_t request, std::uint16_t value, std::uint16_t index = 0);

    libusb_device_handle *m_handle;
    std::uint16_t m_port;
};
} // namespace d2xx

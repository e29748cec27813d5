// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "d2xx/usb/DeviceEntry.h"

#include <cstdio>
#include <string>

namespace d2xx
{
/// What ftd2xx-info tells of devices, in lines of text to a stream. Each function opens the device
/// it needs and closes it again; false means that a line with "failed" says why.
class DeviceReport
{
public:
    explicit DeviceReport(std::FILE *to) : m_to(to) { }

    /// One line of a device: index, chip, place, serial number, description.
    void line(std::size_t index, const DeviceEntry &entry) const;

    /// The whole EEPROM in lines of 16 bytes, its checksum, user area and calibration pages; with a
    /// name also as a file of its bytes.
    bool eeprom(const DeviceEntry &entry, const std::string &backupFile) const;

    /// Starts the receiver's stream and measures it. rateCode is the receiver's own number of a
    /// sample rate, 0 to 8 for 48 kHz to 3.072 MHz.
    bool streamRate(const DeviceEntry &entry, unsigned rateCode, double seconds) const;

private:
    std::FILE *m_to;
};
} // namespace d2xx

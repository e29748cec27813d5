// SPDX-License-Identifier: GPL-3.0-or-later
#include "d2xx/usb/ControlPipe.h"

#include "d2xx/usb/UsbStatus.h"

#include <libusb-1.0/libusb.h>

#include <array>

namespace d2xx
{
namespace
{
constexpr unsigned kTimeoutMs = 300;
constexpr std::uint8_t kReadEeprom = 0x90;
constexpr std::uint8_t kWriteEeprom = 0x91;

constexpr std::uint8_t kOut = 0x40; // vendor request to the device, from the host
constexpr std::uint8_t kIn = 0xc0;  // the same, to the host
} // namespace

FT_STATUS ControlPipe::send(std::uint8_t request, std::uint16_t value, std::uint16_t index)
{
    return statusOf(libusb_control_transfer(
        m_handle, kOut, request, value, std::uint16_t(index | m_port), nullptr, 0, kTimeoutMs));
}

FT_STATUS ControlPipe::readWord(std::uint16_t number, std::uint16_t *word)
{
    std::array<std::uint8_t, 2> bytes = {};
    const int got = libusb_control_transfer(
        m_handle, kIn, kReadEeprom, 0, number, bytes.data(), bytes.size(), kTimeoutMs);
    if (got < 0)
        return statusOf(got);
    if (got != int(bytes.size()))
        return FT_EEPROM_READ_FAILED;
    *word = std::uint16_t(bytes[1] << 8 | bytes[0]);
    return FT_OK;
}

FT_STATUS ControlPipe::writeWord(std::uint16_t number, std::uint16_t word)
{
    return statusOf(libusb_control_transfer(
        m_handle, kOut, kWriteEeprom, word, number, nullptr, 0, kTimeoutMs));
}
} // namespace d2xx

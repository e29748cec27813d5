// SPDX-License-Identifier: GPL-3.0-or-later
#include "d2xx/usb/UsbDevice.h"

#include "d2xx/usb/Chip.h"
#include "d2xx/usb/DeviceList.h"
#include "d2xx/usb/UsbStatus.h"

#include <libusb-1.0/libusb.h>

namespace d2xx
{
namespace
{
constexpr UCHAR kShortestLatencyMs = 2;
constexpr UCHAR kFirstLatencyMs = 16;
constexpr ULONG kTransferStep = 64;
constexpr ULONG kLargestTransfer = 65536;

// The chip writes its EEPROM reliably only with a slow latency timer: so do all programming tools.
constexpr UCHAR kWritingLatencyMs = 0x77;

bool isTransferSize(ULONG size)
{
    return size >= kTransferStep && size <= kLargestTransfer && size % kTransferStep == 0;
}
} // namespace

std::shared_ptr<UsbDevice> UsbDevice::open(const DeviceEntry &entry, FT_STATUS *status)
{
    auto device = std::make_shared<UsbDevice>(entry);
    *status = device->claim();
    if (*status == FT_OK)
        *status = device->prepare();
    return *status == FT_OK ? device : nullptr;
}

UsbDevice::~UsbDevice()
{
    close();
    m_pump.reset();
    if (m_claimed)
        libusb_release_interface(m_handle, m_entry.place.port);
    if (m_handle)
        libusb_close(m_handle);
}

void UsbDevice::close()
{
    if (m_pump)
        m_pump->stop();
}

FT_STATUS UsbDevice::claim()
{
    if (m_context.error() < 0)
        return statusOf(m_context.error());
    int error = 0;
    m_handle = DeviceList::open(m_context.get(), m_entry, &error);
    if (!m_handle)
        return statusOf(error);
    // Not supported by a system without such drivers: then there is none to be taken away.
    libusb_set_auto_detach_kernel_driver(m_handle, 1);
    error = libusb_claim_interface(m_handle, m_entry.place.port);
    m_claimed = error == LIBUSB_SUCCESS;
    if (error == LIBUSB_ERROR_BUSY)
        complain("%s is in use by another program", m_entry.serial.c_str());
    return statusOf(error);
}

FT_STATUS UsbDevice::prepare()
{
    const Chip &chip = *m_entry.chip;
    const int port = m_entry.place.port;
    m_control.emplace(m_handle, chip.portNumber(port));
    m_eeprom.emplace(chip,
        Eeprom::Access{
            [this](std::uint16_t number, std::uint16_t *word) {
                return m_control->readWord(number, word);
            },
            [this](std::uint16_t number, std::uint16_t word) {
                return m_control->writeWord(number, word);
            },
        },
        m_entry.serial, Eeprom::backupFolder());
    const int packet =
        libusb_get_max_packet_size(libusb_get_device(m_handle), Chip::inEndpoint(port));
    if (packet < 0)
        return statusOf(packet);
    if (const FT_STATUS status = m_control->reset())
        return status;
    if (const FT_STATUS status = m_control->setLatency(kFirstLatencyMs))
        return status;
    m_pump.emplace(m_context.get(), m_handle, Chip::inEndpoint(port), std::size_t(packet));
    return m_pump->start();
}

FT_STATUS UsbDevice::setLatencyTimer(UCHAR ms)
{
    if (ms < kShortestLatencyMs)
        return FT_INVALID_PARAMETER;
    const FT_STATUS status = m_control->setLatency(ms);
    if (status == FT_OK)
        m_latencyMs = ms;
    return status;
}

FT_STATUS UsbDevice::setTransferSizes(ULONG in, ULONG out)
{
    if (!isTransferSize(in) || !isTransferSize(out))
        return FT_INVALID_PARAMETER;
    return m_pump->setTransferSize(in);
}

FT_STATUS UsbDevice::setFlowControl(USHORT kind, UCHAR xon, UCHAR xoff)
{
    return m_control->setFlowControl(kind, xon, xoff);
}

FT_STATUS UsbDevice::setTimeouts(ULONG readMs, ULONG writeMs)
{
    m_readTimeoutMs = readMs;
    m_writeTimeoutMs = writeMs;
    return FT_OK;
}

FT_STATUS UsbDevice::purge(ULONG mask)
{
    if (mask & ~(FT_PURGE_RX | FT_PURGE_TX))
        return FT_INVALID_PARAMETER;
    FT_STATUS status = FT_OK;
    if (mask & FT_PURGE_RX)
        status = m_pump->discard([this] { return m_control->purgeIn(); });
    if (status == FT_OK && (mask & FT_PURGE_TX))
        status = m_control->purgeOut();
    return status;
}

FT_STATUS UsbDevice::read(std::uint8_t *data, DWORD size, DWORD *got)
{
    const std::lock_guard lock(m_reading);
    std::size_t bytes = 0;
    const FT_STATUS status = m_pump->read(data, size, m_readTimeoutMs, &bytes);
    *got = DWORD(bytes);
    return status;
}

FT_STATUS UsbDevice::write(const std::uint8_t *data, DWORD size, DWORD *taken)
{
    const std::lock_guard lock(m_writing);
    *taken = 0;
    if (size == 0)
        return FT_OK; // a packet of nothing would reach the chip all the same
    int done = 0;
    const int error = libusb_bulk_transfer(m_handle, Chip::outEndpoint(m_entry.place.port),
        const_cast<std::uint8_t *>(data), int(size), &done, m_writeTimeoutMs);
    *taken = DWORD(done);
    if (error == LIBUSB_ERROR_TIMEOUT)
        return FT_FAILED_TO_WRITE_DEVICE;
    return statusOf(error);
}

FT_STATUS UsbDevice::userAreaSize(DWORD *size)
{
    const std::lock_guard lock(m_eepromMutex);
    return m_eeprom->userAreaSize(size);
}

FT_STATUS UsbDevice::readUserArea(std::uint8_t *data, DWORD size, DWORD *got)
{
    const std::lock_guard lock(m_eepromMutex);
    return m_eeprom->readUserArea(data, size, got);
}

FT_STATUS UsbDevice::writeUserArea(const std::uint8_t *data, DWORD size)
{
    const std::lock_guard lock(m_eepromMutex);
    if (const FT_STATUS status = m_control->setLatency(kWritingLatencyMs))
        return status;
    const FT_STATUS status = m_eeprom->writeUserArea({data, size});
    m_control->setLatency(m_latencyMs);
    return status;
}

FT_STATUS UsbDevice::readEeprom(EepromImage *image)
{
    const std::lock_guard lock(m_eepromMutex);
    return m_eeprom->readImage(image);
}
} // namespace d2xx

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "d2xx/usb/DeviceEntry.h"
#include "d2xx/usb/Eeprom.h"
#include "d2xx/usb/StreamPump.h"
#include "d2xx/usb/UsbContext.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>

struct libusb_device_handle;

namespace d2xx
{
/// One open port of a chip: what a handle of the FT_ functions stands for.
///
/// Any thread may call anything; reads are served one after the other, and so are writes and the
/// calls for the EEPROM, each kind beside the others. close() makes a read of another thread fail
/// at once. The kernel's serial driver is taken from the port while it is open and comes back after
/// it.
class UsbDevice
{
public:
    /// Opens and starts to read. Null with the status.
    static std::shared_ptr<UsbDevice> open(const DeviceEntry &entry, FT_STATUS *status);

    explicit UsbDevice(const DeviceEntry &entry) : m_entry(entry) { }
    ~UsbDevice();

    void close();

    FT_STATUS resetDevice() { return m_control->reset(); }
    FT_STATUS setBitMode(UCHAR mask, UCHAR mode) { return m_control->setBitMode(mask, mode); }
    FT_STATUS setLatencyTimer(UCHAR ms);

    /// Both from 64 to 65536 bytes in steps of 64. That of writing changes nothing: a packet of
    /// commands goes out as it is.
    FT_STATUS setTransferSizes(ULONG in, ULONG out);
    FT_STATUS setFlowControl(USHORT kind, UCHAR xon, UCHAR xoff);

    /// Milliseconds; 0 waits for ever.
    FT_STATUS setTimeouts(ULONG readMs, ULONG writeMs);
    FT_STATUS purge(ULONG mask);
    FT_STATUS read(std::uint8_t *data, DWORD size, DWORD *got);

    /// FT_FAILED_TO_WRITE_DEVICE if the chip did not take all of it in time.
    FT_STATUS write(const std::uint8_t *data, DWORD size, DWORD *taken);

    FT_STATUS userAreaSize(DWORD *size);
    FT_STATUS readUserArea(std::uint8_t *data, DWORD size, DWORD *got);
    FT_STATUS writeUserArea(const std::uint8_t *data, DWORD size);
    FT_STATUS readEeprom(EepromImage *image);

    StreamPump::Statistics statistics() const { return m_pump->statistics(); }

private:
    FT_STATUS claim();
    FT_STATUS prepare();

    const DeviceEntry m_entry;
    UsbContext m_context;
    libusb_device_handle *m_handle = nullptr;
    bool m_claimed = false;
    std::optional<ControlPipe> m_control;
    std::optional<StreamPump> m_pump;
    std::optional<Eeprom> m_eeprom;
    std::atomic<ULONG> m_readTimeoutMs = 0;
    std::atomic<ULONG> m_writeTimeoutMs = 0;
    std::atomic<UCHAR> m_latencyMs = 16; // what the chip starts with
    std::mutex m_reading;
    std::mutex m_writing;
    std::mutex m_eepromMutex;
};
} // namespace d2xx

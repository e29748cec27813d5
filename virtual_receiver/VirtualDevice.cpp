// SPDX-License-Identifier: GPL-3.0-or-later
// What the FT_ functions but FT_Read do.
#include "VirtualDevice.h"

#include "scenes/BuiltinScene.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace vr
{
namespace
{
constexpr const char *kSerial = "ZN000001";
constexpr const char *kProduct = "ZephrinNano";
constexpr const char *kForeignSerial = "FT000000";
constexpr const char *kForeignProduct = "USB Serial Converter";

// Limits of the USB chip as its maker publishes them.
constexpr UCHAR kMinLatencyMs = 2;
constexpr ULONG kTransferUnit = 64;
constexpr ULONG kMaxTransfer = 65536;

// Command packets kept for vr_get_commands(): a day of continuous tuning.
constexpr std::size_t kMaxCommands = 1u << 20;
} // namespace

VirtualDevice &VirtualDevice::instance()
{
    static VirtualDevice device;
    return device;
}

VirtualDevice::VirtualDevice() : m_scene(makeBuiltinScene()) { }

// Every FT_ function begins here: the call is logged, faults by time happen, and a fault asked for
// this very call gives its status.
template <typename... Numbers>
FT_STATUS VirtualDevice::enter(const char *function, Numbers... numbers)
{
    m_calls.add(function, numbers...);
    runPlugFaults();
    return m_faults.onCall(function);
}

FT_STATUS VirtualDevice::check(FT_HANDLE handle) const
{
    if (handle && handle == m_handle)
        return FT_OK;
    const bool dead = std::count(m_deadHandles.begin(), m_deadHandles.end(), handle) > 0;
    return dead ? FT_IO_ERROR : FT_INVALID_HANDLE;
}

FT_STATUS VirtualDevice::checkFifo(FT_HANDLE handle) const
{
    if (const FT_STATUS status = check(handle))
        return status;
    return m_bitMode == FT_BITMODE_SYNC_FIFO ? FT_OK : FT_IO_ERROR;
}

FT_STATUS VirtualDevice::listNumber(DWORD *count)
{
    Lock lock(m_mutex);
    if (const FT_STATUS status = enter("FT_ListDevices", FT_LIST_NUMBER_ONLY))
        return status;
    if (!count)
        return FT_INVALID_PARAMETER;
    *count = m_foreignDevices + (m_plugged ? 1 : 0);
    return FT_OK;
}

FT_STATUS VirtualDevice::listString(DWORD index, DWORD flags, char *text)
{
    Lock lock(m_mutex);
    if (const FT_STATUS status = enter("FT_ListDevices", index, flags))
        return status;
    const bool serial = flags == (FT_LIST_BY_INDEX | FT_OPEN_BY_SERIAL_NUMBER);
    const bool product = flags == (FT_LIST_BY_INDEX | FT_OPEN_BY_DESCRIPTION);
    if (!text || (!serial && !product))
        return FT_INVALID_PARAMETER;
    if (index > m_foreignDevices || (index == m_foreignDevices && !m_plugged))
        return FT_DEVICE_NOT_FOUND;
    if (index < m_foreignDevices)
        std::strcpy(text, serial ? kForeignSerial : kForeignProduct);
    else
        std::strcpy(text, serial ? kSerial : kProduct);
    return FT_OK;
}

FT_STATUS VirtualDevice::open(int index, FT_HANDLE *handle)
{
    Lock lock(m_mutex);
    if (const FT_STATUS status = enter("FT_Open", index))
        return status;
    if (!handle)
        return FT_INVALID_PARAMETER;
    *handle = nullptr;
    if (index < 0 || unsigned(index) > m_foreignDevices
        || (unsigned(index) == m_foreignDevices && !m_plugged))
        return FT_DEVICE_NOT_FOUND;
    if (m_handle || unsigned(index) < m_foreignDevices)
        return FT_DEVICE_NOT_OPENED;
    m_handle = reinterpret_cast<FT_HANDLE>(++m_lastHandle);
    m_bitMode = FT_BITMODE_RESET;
    m_readTimeoutMs = 0;
    *handle = m_handle;
    return FT_OK;
}

FT_STATUS VirtualDevice::close(FT_HANDLE handle)
{
    Lock lock(m_mutex);
    if (const FT_STATUS status = enter("FT_Close"))
        return status;
    if (std::erase(m_deadHandles, handle))
        return FT_OK;
    if (const FT_STATUS status = check(handle))
        return status;
    m_handle = nullptr;
    dropQueue();
    m_changed.notify_all();
    return FT_OK;
}

FT_STATUS VirtualDevice::resetDevice(FT_HANDLE handle)
{
    Lock lock(m_mutex);
    if (const FT_STATUS status = enter("FT_ResetDevice"))
        return status;
    if (const FT_STATUS status = check(handle))
        return status;
    dropQueue();
    return FT_OK;
}

FT_STATUS VirtualDevice::setBitMode(FT_HANDLE handle, UCHAR mask, UCHAR mode)
{
    Lock lock(m_mutex);
    if (const FT_STATUS status = enter("FT_SetBitMode", mask, mode))
        return status;
    if (const FT_STATUS status = check(handle))
        return status;
    // The chip's other modes (bit bang, MPSSE) drive pins that the receiver does not have.
    if (mode != FT_BITMODE_RESET && mode != FT_BITMODE_SYNC_FIFO)
        return FT_NOT_SUPPORTED;
    m_bitMode = mode;
    return FT_OK;
}

FT_STATUS VirtualDevice::setLatencyTimer(FT_HANDLE handle, UCHAR milliseconds)
{
    Lock lock(m_mutex);
    if (const FT_STATUS status = enter("FT_SetLatencyTimer", milliseconds))
        return status;
    if (const FT_STATUS status = check(handle))
        return status;
    return milliseconds < kMinLatencyMs ? FT_INVALID_PARAMETER : FT_OK;
}

FT_STATUS VirtualDevice::setUsbParameters(FT_HANDLE handle, ULONG inSize, ULONG outSize)
{
    Lock lock(m_mutex);
    if (const FT_STATUS status = enter("FT_SetUSBParameters", inSize, outSize))
        return status;
    if (const FT_STATUS status = check(handle))
        return status;
    const auto fits = [](ULONG size) {
        return size >= kTransferUnit && size <= kMaxTransfer && size % kTransferUnit == 0;
    };
    return fits(inSize) && fits(outSize) ? FT_OK : FT_INVALID_PARAMETER;
}

FT_STATUS VirtualDevice::setFlowControl(FT_HANDLE handle, USHORT flowControl, UCHAR xon, UCHAR xoff)
{
    Lock lock(m_mutex);
    if (const FT_STATUS status = enter("FT_SetFlowControl", flowControl, xon, xoff))
        return status;
    if (const FT_STATUS status = check(handle))
        return status;
    constexpr USHORT kModes[] = {0, FT_FLOW_RTS_CTS, 0x0200 /* DTR/DSR */, 0x0400 /* Xon/Xoff */};
    return std::count(std::begin(kModes), std::end(kModes), flowControl) ? FT_OK
                                                                         : FT_INVALID_PARAMETER;
}

FT_STATUS VirtualDevice::setTimeouts(FT_HANDLE handle, ULONG readMs, ULONG writeMs)
{
    Lock lock(m_mutex);
    if (const FT_STATUS status = enter("FT_SetTimeouts", readMs, writeMs))
        return status;
    if (const FT_STATUS status = check(handle))
        return status;
    m_readTimeoutMs = readMs;
    return FT_OK;
}

FT_STATUS VirtualDevice::purge(FT_HANDLE handle, ULONG mask)
{
    Lock lock(m_mutex);
    if (const FT_STATUS status = enter("FT_Purge", mask))
        return status;
    if (const FT_STATUS status = check(handle))
        return status;
    if (mask == 0 || mask & ~(FT_PURGE_RX | FT_PURGE_TX))
        return FT_INVALID_PARAMETER;
    if (mask & FT_PURGE_RX)
        dropQueue();
    return FT_OK;
}

FT_STATUS VirtualDevice::write(
    FT_HANDLE handle, const std::uint8_t *data, DWORD size, DWORD *written)
{
    Lock lock(m_mutex);
    if (written)
        *written = 0;
    if (const FT_STATUS status = enter("FT_Write", size))
        return status;
    if (const FT_STATUS status = checkFifo(handle))
        return status;
    if (!data || !written)
        return FT_INVALID_PARAMETER;
    for (DWORD i = 0; i < size; ++i) {
        if (m_parser.push(data[i]))
            obey(m_parser.packet());
    }
    *written = size;
    return FT_OK;
}

FT_STATUS VirtualDevice::userAreaSize(FT_HANDLE handle, DWORD *size)
{
    Lock lock(m_mutex);
    if (const FT_STATUS status = enter("FT_EE_UASize"))
        return status;
    if (const FT_STATUS status = check(handle))
        return status;
    if (!size)
        return FT_INVALID_PARAMETER;
    *size = DWORD(m_eeprom.bytes().size());
    return FT_OK;
}

FT_STATUS VirtualDevice::userAreaRead(FT_HANDLE handle, UCHAR *data, DWORD size, DWORD *received)
{
    Lock lock(m_mutex);
    if (received)
        *received = 0;
    if (const FT_STATUS status = enter("FT_EE_UARead", size))
        return status;
    if (const FT_STATUS status = check(handle))
        return status;
    const auto &bytes = m_eeprom.bytes();
    if (!data || !received || size < bytes.size())
        return FT_INVALID_PARAMETER;
    std::copy(bytes.begin(), bytes.end(), data);
    *received = DWORD(bytes.size());
    return FT_OK;
}

FT_STATUS VirtualDevice::userAreaWrite(FT_HANDLE handle, const UCHAR *data, DWORD size)
{
    Lock lock(m_mutex);
    if (const FT_STATUS status = enter("FT_EE_UAWrite", size))
        return status;
    if (const FT_STATUS status = check(handle))
        return status;
    if (!data || size > m_eeprom.bytes().size())
        return FT_INVALID_PARAMETER;
    return m_eeprom.write(data, size) ? FT_OK : FT_EEPROM_WRITE_FAILED;
}

void VirtualDevice::obey(const CommandPacket &packet)
{
    ++m_commandCount;
    if (m_commands.size() < kMaxCommands * CommandPacket::kSize)
        m_commands.insert(m_commands.end(), packet.bytes.begin(), packet.bytes.end());

    const DeviceState before = m_state;
    m_state.apply(packet);
    const bool sameStream = m_state.streaming() == before.streaming()
        && m_state.rateCode() == before.rateCode()
        && m_state.shortSamples() == before.shortSamples();
    if (m_state.streaming() && !sameStream)
        restartStream();
    else if (!m_state.streaming())
        m_clock.stop(std::chrono::steady_clock::now());
    if (!sameStream)
        m_changed.notify_all();
}

void VirtualDevice::restartStream()
{
    m_clock.start(
        m_state.sampleRateHz(), m_state.samplesPerFrame(), std::chrono::steady_clock::now());
    m_skip = 0;
    m_sceneEnded = false;
    ++m_run;
}

void VirtualDevice::dropQueue()
{
    m_queueDropped = true;
    const auto due = m_clock.due(std::chrono::steady_clock::now());
    if (m_clock.pace() == Pace::RealTime)
        passFrames(due);
}

void VirtualDevice::passFrames(std::uint64_t frames)
{
    m_clock.pass(frames);
    m_skip += frames;
}

// Power-on state: what the device forgets when it is unplugged.
void VirtualDevice::powerOn()
{
    m_badBytes += m_parser.badBytes();
    m_parser.clear();
    m_state = DeviceState();
    m_bitMode = FT_BITMODE_RESET;
    m_clock.stop({});
    m_queueDropped = true;
}

void VirtualDevice::plug(bool plugged)
{
    if (m_plugged == plugged)
        return;
    m_plugged = plugged;
    if (plugged)
        return;
    m_unpluggedAt = std::chrono::steady_clock::now();
    m_unpluggedSeconds = m_clock.seconds();
    if (m_handle)
        m_deadHandles.push_back(m_handle);
    m_handle = nullptr;
    powerOn();
    m_changed.notify_all();
}

// The stream's time stands while the device is out, so it is continued by the monotonic clock.
void VirtualDevice::runPlugFaults()
{
    if (m_plugged) {
        const bool streaming = m_state.streaming();
        if (streaming && m_faults.takeUnplug(m_clock.seconds()))
            plug(false);
        return;
    }
    const std::chrono::duration<double> out = std::chrono::steady_clock::now() - m_unpluggedAt;
    if (m_faults.takeReplug(m_unpluggedSeconds + out.count()))
        plug(true);
}
} // namespace vr

// SPDX-License-Identifier: GPL-3.0-or-later
// The FT_ functions on libusb: arguments are checked here, the rest is the device's.
#pragma GCC visibility push(default)
#include "d2xx/ftd2xx.h"
#pragma GCC visibility pop

#include "d2xx/usb/OpenDevices.h"

#include <new>
#include <system_error>

namespace
{
/// Calls the device of a handle. Nothing that is thrown leaves a C function: no memory and no
/// thread are statuses.
template <typename Call>
FT_STATUS on(FT_HANDLE handle, Call call)
{
    try {
        const auto device = d2xx::OpenDevices::instance().find(handle);
        return device ? call(*device) : FT_STATUS(FT_INVALID_HANDLE);
    } catch (const std::bad_alloc &) {
        return FT_INSUFFICIENT_RESOURCES;
    } catch (const std::exception &) {
        return FT_OTHER_ERROR;
    }
}

template <typename Call>
FT_STATUS onList(Call call)
{
    try {
        return call(d2xx::OpenDevices::instance());
    } catch (const std::bad_alloc &) {
        return FT_INSUFFICIENT_RESOURCES;
    } catch (const std::system_error &) {
        return FT_INSUFFICIENT_RESOURCES;
    } catch (const std::exception &) {
        return FT_OTHER_ERROR;
    }
}
} // namespace

FT_STATUS FT_ListDevices(PVOID arg1, PVOID arg2, DWORD flags)
{
    return onList([&](d2xx::OpenDevices &devices) -> FT_STATUS {
        const auto index = DWORD(reinterpret_cast<std::uintptr_t>(arg1));
        switch (flags) {
        case FT_LIST_NUMBER_ONLY:
            return devices.count(static_cast<DWORD *>(arg1));
        case FT_LIST_BY_INDEX | FT_OPEN_BY_SERIAL_NUMBER:
            return devices.string(index, FT_OPEN_BY_SERIAL_NUMBER, static_cast<char *>(arg2));
        case FT_LIST_BY_INDEX | FT_OPEN_BY_DESCRIPTION:
            return devices.string(index, FT_OPEN_BY_DESCRIPTION, static_cast<char *>(arg2));
        default:
            return FT_NOT_SUPPORTED;
        }
    });
}

FT_STATUS FT_Open(int deviceNumber, FT_HANDLE *handle)
{
    return onList([&](d2xx::OpenDevices &devices) { return devices.open(deviceNumber, handle); });
}

FT_STATUS FT_Close(FT_HANDLE handle)
{
    return onList([&](d2xx::OpenDevices &devices) { return devices.close(handle); });
}

FT_STATUS FT_ResetDevice(FT_HANDLE handle)
{
    return on(handle, [](d2xx::UsbDevice &device) { return device.resetDevice(); });
}

FT_STATUS FT_SetBitMode(FT_HANDLE handle, UCHAR mask, UCHAR mode)
{
    return on(handle, [&](d2xx::UsbDevice &device) { return device.setBitMode(mask, mode); });
}

FT_STATUS FT_SetLatencyTimer(FT_HANDLE handle, UCHAR milliseconds)
{
    return on(
        handle, [&](d2xx::UsbDevice &device) { return device.setLatencyTimer(milliseconds); });
}

FT_STATUS FT_SetUSBParameters(FT_HANDLE handle, ULONG inTransferSize, ULONG outTransferSize)
{
    return on(handle, [&](d2xx::UsbDevice &device) {
        return device.setTransferSizes(inTransferSize, outTransferSize);
    });
}

FT_STATUS FT_SetFlowControl(FT_HANDLE handle, USHORT flowControl, UCHAR xon, UCHAR xoff)
{
    return on(handle,
        [&](d2xx::UsbDevice &device) { return device.setFlowControl(flowControl, xon, xoff); });
}

FT_STATUS FT_SetTimeouts(FT_HANDLE handle, ULONG readTimeout, ULONG writeTimeout)
{
    return on(handle,
        [&](d2xx::UsbDevice &device) { return device.setTimeouts(readTimeout, writeTimeout); });
}

FT_STATUS FT_Purge(FT_HANDLE handle, ULONG mask)
{
    return on(handle, [&](d2xx::UsbDevice &device) { return device.purge(mask); });
}

FT_STATUS FT_Read(FT_HANDLE handle, LPVOID buffer, DWORD bytesToRead, LPDWORD bytesReturned)
{
    if (!buffer || !bytesReturned)
        return FT_INVALID_PARAMETER;
    *bytesReturned = 0;
    return on(handle, [&](d2xx::UsbDevice &device) {
        return device.read(static_cast<std::uint8_t *>(buffer), bytesToRead, bytesReturned);
    });
}

FT_STATUS FT_Write(FT_HANDLE handle, LPVOID buffer, DWORD bytesToWrite, LPDWORD bytesWritten)
{
    if (!buffer || !bytesWritten)
        return FT_INVALID_PARAMETER;
    *bytesWritten = 0;
    return on(handle, [&](d2xx::UsbDevice &device) {
        return device.write(static_cast<const std::uint8_t *>(buffer), bytesToWrite, bytesWritten);
    });
}

FT_STATUS FT_EE_UASize(FT_HANDLE handle, LPDWORD size)
{
    if (!size)
        return FT_INVALID_PARAMETER;
    return on(handle, [&](d2xx::UsbDevice &device) { return device.userAreaSize(size); });
}

FT_STATUS FT_EE_UARead(FT_HANDLE handle, PUCHAR data, DWORD dataLength, LPDWORD bytesRead)
{
    if (!data || !bytesRead)
        return FT_INVALID_PARAMETER;
    *bytesRead = 0;
    return on(handle,
        [&](d2xx::UsbDevice &device) { return device.readUserArea(data, dataLength, bytesRead); });
}

FT_STATUS FT_EE_UAWrite(FT_HANDLE handle, PUCHAR data, DWORD dataLength)
{
    if (!data)
        return FT_INVALID_PARAMETER;
    return on(
        handle, [&](d2xx::UsbDevice &device) { return device.writeUserArea(data, dataLength); });
}

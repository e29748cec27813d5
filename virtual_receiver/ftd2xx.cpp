// SPDX-License-Identifier: GPL-3.0-or-later
// The FT_ functions: what a program linked with libftd2xx.so sees of the device.
#pragma GCC visibility push(default)
#include "d2xx/ftd2xx.h"
#pragma GCC visibility pop

#include "VirtualDevice.h"

namespace
{
vr::VirtualDevice &device()
{
    return vr::VirtualDevice::instance();
}
} // namespace

FT_STATUS FT_ListDevices(PVOID arg1, PVOID arg2, DWORD flags)
{
    if (flags == FT_LIST_NUMBER_ONLY)
        return device().listNumber(static_cast<DWORD *>(arg1));
    const auto index = reinterpret_cast<std::uintptr_t>(arg1);
    return device().listString(DWORD(index), flags, static_cast<char *>(arg2));
}

FT_STATUS FT_Open(int deviceNumber, FT_HANDLE *handle)
{
    return device().open(deviceNumber, handle);
}

FT_STATUS FT_Close(FT_HANDLE handle)
{
    return device().close(handle);
}

FT_STATUS FT_ResetDevice(FT_HANDLE handle)
{
    return device().resetDevice(handle);
}

FT_STATUS FT_SetBitMode(FT_HANDLE handle, UCHAR mask, UCHAR mode)
{
    return device().setBitMode(handle, mask, mode);
}

FT_STATUS FT_SetLatencyTimer(FT_HANDLE handle, UCHAR milliseconds)
{
    return device().setLatencyTimer(handle, milliseconds);
}

FT_STATUS FT_SetUSBParameters(FT_HANDLE handle, ULONG inTransferSize, ULONG outTransferSize)
{
    return device().setUsbParameters(handle, inTransferSize, outTransferSize);
}

FT_STATUS FT_SetFlowControl(FT_HANDLE handle, USHORT flowControl, UCHAR xon, UCHAR xoff)
{
    return device().setFlowControl(handle, flowControl, xon, xoff);
}

FT_STATUS FT_SetTimeouts(FT_HANDLE handle, ULONG readTimeout, ULONG writeTimeout)
{
    return device().setTimeouts(handle, readTimeout, writeTimeout);
}

FT_STATUS FT_Purge(FT_HANDLE handle, ULONG mask)
{
    return device().purge(handle, mask);
}

FT_STATUS FT_Read(FT_HANDLE handle, LPVOID buffer, DWORD bytesToRead, LPDWORD bytesReturned)
{
    return device().read(handle, static_cast<std::uint8_t *>(buffer), bytesToRead, bytesReturned);
}

FT_STATUS FT_Write(FT_HANDLE handle, LPVOID buffer, DWORD bytesToWrite, LPDWORD bytesWritten)
{
    return device().write(
        handle, static_cast<const std::uint8_t *>(buffer), bytesToWrite, bytesWritten);
}

FT_STATUS FT_EE_UASize(FT_HANDLE handle, LPDWORD size)
{
    return device().userAreaSize(handle, size);
}

FT_STATUS FT_EE_UARead(FT_HANDLE handle, PUCHAR data, DWORD dataLength, LPDWORD bytesRead)
{
    return device().userAreaRead(handle, data, dataLength, bytesRead);
}

FT_STATUS FT_EE_UAWrite(FT_HANDLE handle, PUCHAR data, DWORD dataLength)
{
    return device().userAreaWrite(handle, data, dataLength);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/FtRelay.h"

#include "library/FtReadMeter.h"

#include <dlfcn.h>
#include <list>

namespace host
{
namespace
{
/// For the FT_ functions below, which wait for nothing to be made.
const FtFunctions &chosen()
{
    return FtRelay::instance().functions();
}
} // namespace

FtRelay::FtRelay() : m_linked(FtFunctions::of(RTLD_NEXT)) { }

FtRelay &FtRelay::instance()
{
    static FtRelay relay;
    return relay;
}

void FtRelay::goOnTo(const FtFunctions &functions)
{
    static std::list<FtFunctions> everChosen;
    const std::lock_guard guard(m_mutex);
    m_functions.store(&everChosen.emplace_back(functions), std::memory_order_release);
    m_bus = {};
    m_isLooking = false;
}

void FtRelay::forgetBus()
{
    const std::lock_guard guard(m_mutex);
    m_bus = {};
    m_isLooking = false;
}

BusView FtRelay::bus() const
{
    const std::lock_guard guard(m_mutex);
    return m_bus;
}

FT_STATUS FtRelay::listDevices(PVOID arg1, PVOID arg2, DWORD flags)
{
    const FtFunctions &before = functions();
    const FT_STATUS status = before.listDevices(arg1, arg2, flags);
    const std::lock_guard guard(m_mutex);
    if (&before != &functions())
        return status; // an answer of a library that is not in use any more
    if (flags == FT_LIST_NUMBER_ONLY)
        noteNumber(status, status == FT_OK ? *static_cast<DWORD *>(arg1) : 0);
    else if (flags == (FT_LIST_BY_INDEX | FT_OPEN_BY_DESCRIPTION))
        noteName(DWORD(reinterpret_cast<std::uintptr_t>(arg1)), status, static_cast<char *>(arg2));
    return status;
}

void FtRelay::noteNumber(FT_STATUS status, DWORD devices)
{
    m_look = {true, status, devices, 0};
    m_isLooking = devices > 0;
    if (!m_isLooking)
        m_bus = m_look;
}

void FtRelay::noteName(DWORD index, FT_STATUS status, const char *text)
{
    if (!m_isLooking)
        return;
    if (status != FT_OK || *text == '\0')
        ++m_look.nameless;
    if (index + 1 < m_look.devices)
        return;
    m_isLooking = false;
    m_bus = m_look;
}
} // namespace host

// A definition that the program exports is found before that of any library, also by libraries and
// plugins that are loaded later.
#pragma GCC visibility push(default)

FT_STATUS FT_ListDevices(PVOID arg1, PVOID arg2, DWORD flags)
{
    return host::FtRelay::instance().listDevices(arg1, arg2, flags);
}

FT_STATUS FT_Open(int deviceNumber, FT_HANDLE *handle)
{
    return host::chosen().open(deviceNumber, handle);
}

FT_STATUS FT_Close(FT_HANDLE handle)
{
    return host::chosen().close(handle);
}

FT_STATUS FT_ResetDevice(FT_HANDLE handle)
{
    return host::chosen().resetDevice(handle);
}

FT_STATUS FT_SetBitMode(FT_HANDLE handle, UCHAR mask, UCHAR mode)
{
    return host::chosen().setBitMode(handle, mask, mode);
}

FT_STATUS FT_SetLatencyTimer(FT_HANDLE handle, UCHAR milliseconds)
{
    return host::chosen().setLatencyTimer(handle, milliseconds);
}

FT_STATUS FT_SetUSBParameters(FT_HANDLE handle, ULONG inTransferSize, ULONG outTransferSize)
{
    return host::chosen().setUsbParameters(handle, inTransferSize, outTransferSize);
}

FT_STATUS FT_SetFlowControl(FT_HANDLE handle, USHORT flowControl, UCHAR xon, UCHAR xoff)
{
    return host::chosen().setFlowControl(handle, flowControl, xon, xoff);
}

FT_STATUS FT_SetTimeouts(FT_HANDLE handle, ULONG readTimeout, ULONG writeTimeout)
{
    return host::chosen().setTimeouts(handle, readTimeout, writeTimeout);
}

FT_STATUS FT_Purge(FT_HANDLE handle, ULONG mask)
{
    return host::chosen().purge(handle, mask);
}

FT_STATUS FT_Read(FT_HANDLE handle, LPVOID buffer, DWORD bytesToRead, LPDWORD bytesReturned)
{
    return host::FtReadMeter::instance().read(
        host::chosen().read, handle, buffer, bytesToRead, bytesReturned);
}

FT_STATUS FT_Write(FT_HANDLE handle, LPVOID buffer, DWORD bytesToWrite, LPDWORD bytesWritten)
{
    return host::chosen().write(handle, buffer, bytesToWrite, bytesWritten);
}

FT_STATUS FT_EE_UASize(FT_HANDLE handle, LPDWORD size)
{
    return host::chosen().userAreaSize(handle, size);
}

FT_STATUS FT_EE_UARead(FT_HANDLE handle, PUCHAR data, DWORD dataLength, LPDWORD bytesRead)
{
    return host::chosen().readUserArea(handle, data, dataLength, bytesRead);
}

FT_STATUS FT_EE_UAWrite(FT_HANDLE handle, PUCHAR data, DWORD dataLength)
{
    return host::chosen().writeUserArea(handle, data, dataLength);
}
#pragma GCC visibility pop

// SPDX-License-Identifier: GPL-3.0-or-later
// What a device in memory has to say to the calls that set up a real one: yes. For the stand-ins
// of the device's library that bring the other functions.
#include "d2xx/ftd2xx.h"

FT_STATUS FT_Close(FT_HANDLE)
{
    return FT_OK;
}

FT_STATUS FT_ResetDevice(FT_HANDLE)
{
    return FT_OK;
}

FT_STATUS FT_SetBitMode(FT_HANDLE, UCHAR, UCHAR)
{
    return FT_OK;
}

FT_STATUS FT_SetLatencyTimer(FT_HANDLE, UCHAR)
{
    return FT_OK;
}

FT_STATUS FT_SetUSBParameters(FT_HANDLE, ULONG, ULONG)
{
    return FT_OK;
}

FT_STATUS FT_SetFlowControl(FT_HANDLE, USHORT, UCHAR, UCHAR)
{
    return FT_OK;
}

FT_STATUS FT_SetTimeouts(FT_HANDLE, ULONG, ULONG)
{
    return FT_OK;
}

FT_STATUS FT_Purge(FT_HANDLE, ULONG)
{
    return FT_OK;
}

FT_STATUS FT_Write(FT_HANDLE, LPVOID, DWORD size, LPDWORD written)
{
    *written = size;
    return FT_OK;
}

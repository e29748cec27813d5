// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "d2xx/ftd2xx.h"

#include <QString>

namespace host
{
/// The functions of one device library.
struct FtFunctions
{
    decltype(&FT_Read) read = nullptr;
    decltype(&FT_Write) write = nullptr;
    decltype(&FT_ListDevices) listDevices = nullptr;
    decltype(&FT_Open) open = nullptr;
    decltype(&FT_Close) close = nullptr;
    decltype(&FT_ResetDevice) resetDevice = nullptr;
    decltype(&FT_SetBitMode) setBitMode = nullptr;
    decltype(&FT_SetLatencyTimer) setLatencyTimer = nullptr;
    decltype(&FT_SetUSBParameters) setUsbParameters = nullptr;
    decltype(&FT_SetFlowControl) setFlowControl = nullptr;
    decltype(&FT_SetTimeouts) setTimeouts = nullptr;
    decltype(&FT_Purge) purge = nullptr;
    decltype(&FT_EE_UASize) userAreaSize = nullptr;
    decltype(&FT_EE_UARead) readUserArea = nullptr;
    decltype(&FT_EE_UAWrite) writeUserArea = nullptr;

    /// Those of a library as dlopen() gave it, or of what comes after the program for RTLD_NEXT.
    /// The first that it does not have goes to `missing`, if that is not null.
    static FtFunctions of(void *library, QString *missing = nullptr);
};
} // namespace host

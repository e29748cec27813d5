// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/FtFunctions.h"

#include <dlfcn.h>
#include <type_traits>

namespace host
{
FtFunctions FtFunctions::of(void *library, QString *missing)
{
    FtFunctions functions;
    const auto find = [&](auto &function, const char *name) {
        function =
            reinterpret_cast<std::remove_reference_t<decltype(function)>>(dlsym(library, name));
        if (!function && missing && missing->isEmpty())
            *missing = name;
    };
    find(functions.read, "FT_Read");
    find(functions.write, "FT_Write");
    find(functions.listDevices, "FT_ListDevices");
    find(functions.open, "FT_Open");
    find(functions.close, "FT_Close");
    find(functions.resetDevice, "FT_ResetDevice");
    find(functions.setBitMode, "FT_SetBitMode");
    find(functions.setLatencyTimer, "FT_SetLatencyTimer");
    find(functions.setUsbParameters, "FT_SetUSBParameters");
    find(functions.setFlowControl, "FT_SetFlowControl");
    find(functions.setTimeouts, "FT_SetTimeouts");
    find(functions.purge, "FT_Purge");
    find(functions.userAreaSize, "FT_EE_UASize");
    find(functions.readUserArea, "FT_EE_UARead");
    find(functions.writeUserArea, "FT_EE_UAWrite");
    return functions;
}
} // namespace host

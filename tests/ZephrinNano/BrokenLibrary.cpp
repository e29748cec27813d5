// SPDX-License-Identifier: GPL-3.0-or-later
// The program's own functions of these names come before the library's.
#include "ZephrinNano/BrokenLibrary.h"

#include "d2xx/ftd2xx.h"

#include <chrono>
#include <dlfcn.h>
#include <thread>

namespace
{
using test::BrokenLibrary;

template <typename Function>
Function real(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}
} // namespace

FT_STATUS FT_ListDevices(PVOID first, PVOID second, DWORD flags)
{
    static const auto library = real<decltype(&FT_ListDevices)>("FT_ListDevices");
    while (BrokenLibrary::listHeld)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    if (flags == FT_LIST_NUMBER_ONLY && BrokenLibrary::devices != 0) {
        *static_cast<DWORD *>(first) = BrokenLibrary::devices;
        return FT_OK;
    }
    return library(first, second, flags);
}

FT_STATUS FT_EE_UASize(FT_HANDLE handle, LPDWORD size)
{
    static const auto library = real<decltype(&FT_EE_UASize)>("FT_EE_UASize");
    if (BrokenLibrary::userArea != 0) {
        *size = BrokenLibrary::userArea;
        return FT_OK;
    }
    return library(handle, size);
}

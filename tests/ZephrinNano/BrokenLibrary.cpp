// SPDX-License-Identifier: GPL-3.0-or-later
// The program's own functions of these names come before the library's.
#include "ZephrinNano/BrokenLibrary.h"

#include "d2xx/ftd2xx.h"

#include <atomic>
#include <chrono>
#include <dlfcn.h>
#include <thread>

namespace
{
std::atomic<unsigned> deviceCount = 0;
std::atomic<unsigned> userAreaSize = 0;
std::atomic<bool> listHeld = false;

template <typename Function>
Function real(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}
} // namespace

namespace test
{
BrokenLibrary::~BrokenLibrary()
{
    deviceCount = 0;
    userAreaSize = 0;
    listHeld = false;
}

void BrokenLibrary::countDevices(unsigned count)
{
    deviceCount = count;
}

void BrokenLibrary::sizeUserArea(unsigned bytes)
{
    userAreaSize = bytes;
}

void BrokenLibrary::holdList(bool hold)
{
    listHeld = hold;
}
} // namespace test

FT_STATUS FT_ListDevices(PVOID first, PVOID second, DWORD flags)
{
    static const auto library = real<decltype(&FT_ListDevices)>("FT_ListDevices");
    while (listHeld)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    if (flags == FT_LIST_NUMBER_ONLY && deviceCount != 0) {
        *static_cast<DWORD *>(first) = deviceCount;
        return FT_OK;
    }
    return library(first, second, flags);
}

FT_STATUS FT_EE_UASize(FT_HANDLE handle, LPDWORD size)
{
    static const auto library = real<decltype(&FT_EE_UASize)>("FT_EE_UASize");
    if (userAreaSize != 0) {
        *size = userAreaSize;
        return FT_OK;
    }
    return library(handle, size);
}

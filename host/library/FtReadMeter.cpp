// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/FtReadMeter.h"

#include "d2xx/ftd2xx.h"

#include <ctime>
#include <dlfcn.h>

namespace host
{
namespace
{
// The one that the program is linked to, if any, as in a test; the host writes it before the plugin
// is loaded.
auto g_library = reinterpret_cast<decltype(&FT_Read)>(dlsym(RTLD_NEXT, "FT_Read"));

std::uint64_t threadNanoseconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::uint64_t(time.tv_sec) * 1'000'000'000u + std::uint64_t(time.tv_nsec);
}
} // namespace

bool FtReadMeter::standBefore(void *read)
{
    g_library = reinterpret_cast<decltype(g_library)>(read);
    return g_library != nullptr;
}

FtReadMeter &FtReadMeter::instance()
{
    static FtReadMeter reads;
    return reads;
}
} // namespace host

// A definition that the program exports is found before that of any library, also by libraries and
// plugins that are loaded later.
__attribute__((visibility("default"))) FT_STATUS FT_Read(
    FT_HANDLE handle, LPVOID buffer, DWORD bytesToRead, LPDWORD bytesReturned)
{
    auto &reads = host::FtReadMeter::instance();
    reads.thread.attach();
    const std::uint64_t before = host::threadNanoseconds();
    const FT_STATUS status = host::g_library(handle, buffer, bytesToRead, bytesReturned);
    reads.nanoseconds.fetch_add(host::threadNanoseconds() - before, std::memory_order_relaxed);
    if (status == FT_OK && *bytesReturned < bytesToRead)
        reads.lostBytes.fetch_add(*bytesReturned, std::memory_order_relaxed);
    return status;
}

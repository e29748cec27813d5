// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/FtReadMeter.h"

#include <ctime>

namespace host
{
namespace
{
std::uint64_t threadNanoseconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::uint64_t(time.tv_sec) * 1'000'000'000u + std::uint64_t(time.tv_nsec);
}
} // namespace

FT_STATUS FtReadMeter::read(decltype(&FT_Read) function, FT_HANDLE handle, LPVOID buffer,
    DWORD bytesToRead, LPDWORD bytesReturned)
{
    thread.attach();
    const std::uint64_t before = threadNanoseconds();
    const FT_STATUS status = function(handle, buffer, bytesToRead, bytesReturned);
    nanoseconds.fetch_add(threadNanoseconds() - before, std::memory_order_relaxed);
    if (status == FT_OK && *bytesReturned < bytesToRead)
        lostBytes.fetch_add(*bytesReturned, std::memory_order_relaxed);
    return status;
}

FtReadMeter &FtReadMeter::instance()
{
    static FtReadMeter reads;
    return reads;
}
} // namespace host

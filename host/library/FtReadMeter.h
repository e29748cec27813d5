// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/ThreadClock.h"

#include "d2xx/ftd2xx.h"

#include <atomic>
#include <cstdint>

namespace host
{
/// What the driver's reads cost and lost. The program stands in front of the device library
/// (FtRelay) and counts what passes.
///
/// The reader thread writes, any thread may read.
struct FtReadMeter
{
    ThreadClock thread;                         ///< the thread that reads
    std::atomic<std::uint64_t> nanoseconds = 0; ///< its processor time inside the device library

    /// Bytes of reads that came back short. The driver reads that range again, so they are lost.
    std::atomic<std::uint64_t> lostBytes = 0;

    /// A read by a library's function, counted.
    FT_STATUS read(decltype(&FT_Read) function, FT_HANDLE handle, LPVOID buffer, DWORD bytesToRead,
        LPDWORD bytesReturned);

    static FtReadMeter &instance();
};
} // namespace host

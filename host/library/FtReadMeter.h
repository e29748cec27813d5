// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/ThreadClock.h"

#include <atomic>
#include <cstdint>

namespace host
{
/// What the driver's reads cost and lost. The program stands in front of the device library's
/// FT_Read() and counts what passes; everything else is the library's own.
///
/// The reader thread writes, any thread may read.
struct FtReadMeter
{
    ThreadClock thread;                         ///< the thread that reads
    std::atomic<std::uint64_t> nanoseconds = 0; ///< its processor time inside the device library

    /// Bytes of reads that came back short. The driver reads that range again, so they are lost.
    std::atomic<std::uint64_t> lostBytes = 0;

    /// The FT_Read() that the reads go on to. Before the first read; false for null.
    bool standBefore(void *read);

    static FtReadMeter &instance();
};
} // namespace host

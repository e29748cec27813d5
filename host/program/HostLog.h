// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace host
{
/// Where Qt's log lines go while it lives: warnings to stderr, debug lines nowhere, for the engine
/// writes one for each block of audio. A line that comes again and again is written once and its
/// number told at the end: a receiver that is pulled out fails some 100000 reads before it is given
/// up. One at a time; any thread may log.
class HostLog
{
public:
    HostLog();
    ~HostLog();
    HostLog(const HostLog &) = delete;
    HostLog &operator=(const HostLog &) = delete;

    /// From here on counts the blocks of IQ that the recorder refused, of which the engine tells in
    /// debug lines only. These are no longer dropped unseen, at some microseconds a block.
    static void countRefusedBlocks();
    static std::uint64_t refusedBlocks();
};
} // namespace host

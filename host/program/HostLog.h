// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace host
{
/// Where Qt's log lines go while it lives: warnings to stderr, debug lines nowhere, for the engine
/// writes one for each block of audio. A line that comes again and again is written once and its
/// number told at the end. The calls that a receiver does not answer are told at the end, too: one
/// that is pulled out fails some 100000 reads before it is given up. One at a time; any thread may
/// log.
class HostLog
{
public:
    HostLog();
    ~HostLog();
    HostLog(const HostLog &) = delete;
    HostLog &operator=(const HostLog &) = delete;

    /// Also what bears on nothing, and at once what else waits for the end. Not at first.
    void setVerbose(bool isVerbose);

    /// Of a receiver that is gone, the calls that it did not answer are not worth a line.
    static void tellOfLostReceiver();
};
} // namespace host

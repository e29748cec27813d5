// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "library/FtReadMeter.h"
#include "library/ThreadClock.h"
#include "report/Measurement.h"
#include "stream/StreamLedger.h"

#include <algorithm>

namespace host
{
/// What each thread of the program takes of the processor. Main thread.
class CpuMeter
{
public:
    /// On the main thread. The ledger must outlive the meter.
    explicit CpuMeter(const StreamLedger &ledger) : m_ledger(ledger) { m_main.attach(); }

    /// The count begins anew.
    void start(const ThreadClock &sound) { m_atStart = now(sound); }

    /// Since start(). While all threads are still there.
    CpuTimes used(const ThreadClock &sound) const { return now(sound) - m_atStart; }

private:
    CpuTimes now(const ThreadClock &sound) const
    {
        const auto &reads = FtReadMeter::instance();
        CpuTimes times;
        times.device = double(reads.nanoseconds) * 1e-9;
        times.reader = std::max(0.0, reads.thread.seconds() - times.device);
        times.engine = m_ledger.engineThread().seconds();
        times.sound = sound.seconds();
        times.main = m_main.seconds();
        times.process = ThreadClock::processSeconds();
        return times;
    }

    const StreamLedger &m_ledger;
    ThreadClock m_main;
    CpuTimes m_atStart;
};
} // namespace host

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <ctime>

namespace host
{
/// The processor time of one thread, readable from another while the thread lives.
class ThreadClock
{
public:
    /// To be called on the thread that is to be measured; costs nothing from the second call on.
    void attach();

    /// To be called on that thread when it ends: seconds() keeps its value.
    void detach();

    /// Processor seconds of that thread since it began; 0 before attach() and, without a detach(),
    /// after its end.
    double seconds() const;

    /// Processor seconds of the whole process.
    static double processSeconds();

private:
    std::atomic<bool> m_attached = false;
    std::atomic<double> m_final = -1.0; // negative while the thread lives
    clockid_t m_clock = 0;              // written once, before m_attached
};
} // namespace host

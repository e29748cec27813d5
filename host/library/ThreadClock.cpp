// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/ThreadClock.h"

#include <pthread.h>

namespace host
{
namespace
{
double secondsOf(clockid_t clock)
{
    timespec time{};
    if (clock_gettime(clock, &time) != 0)
        return 0.0;
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}
} // namespace

void ThreadClock::attach()
{
    if (m_attached.load(std::memory_order_relaxed))
        return;
    if (pthread_getcpuclockid(pthread_self(), &m_clock) == 0)
        m_attached.store(true, std::memory_order_release);
}

void ThreadClock::detach()
{
    m_final = seconds();
}

double ThreadClock::seconds() const
{
    if (m_final >= 0.0)
        return m_final;
    return m_attached.load(std::memory_order_acquire) ? secondsOf(m_clock) : 0.0;
}

double ThreadClock::processSeconds()
{
    return secondsOf(CLOCK_PROCESS_CPUTIME_ID);
}
} // namespace host

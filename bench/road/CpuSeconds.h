// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <ctime>

namespace bench
{
/// What a CPU clock of a process or a thread shows, in seconds.
inline double cpuSeconds(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}
} // namespace bench

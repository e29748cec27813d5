// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <thread>

namespace tp
{
/// How a pool is built.
struct ThreadPoolOptions
{
    /// Threads, from 1 on. The default is one for each processor.
    std::size_t workerCount = std::max(1U, std::thread::hardware_concurrency());

    /// Tasks that may wait at each worker, a power of two from 2 on.
    std::size_t queueSize = 1024;
};
} // namespace tp

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "thread_pool/ThreadPoolOptions.h"
#include "thread_pool/Worker.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tp
{
/// Runs short background jobs on a fixed number of threads.
///
/// A job posted from outside goes to the workers in turn; a job posted by a job stays on its
/// worker. Workers do not take each other's jobs, so jobs of one worker run in the order of their
/// posts.
///
/// Threads: any thread may post, also several at once. Construction and destruction belong to one
/// owner, who sees to it that nobody else posts during the destruction. The destructor runs what is
/// still queued, then ends the threads: whoever waits for a posted job gets it.
template <typename Task, template <typename> class Queue>
class ThreadPoolImpl
{
public:
    /// Throws std::invalid_argument for a worker count of 0 or a queue size that the queue refuses.
    explicit ThreadPoolImpl(const ThreadPoolOptions &options = {})
    {
        if (options.workerCount == 0)
            throw std::invalid_argument("a thread pool needs at least one worker");
        m_workers.reserve(options.workerCount);
        for (std::size_t id = 0; id < options.workerCount; ++id)
            m_workers.push_back(std::make_unique<PoolWorker>(options.queueSize));
        for (std::size_t id = 0; id < options.workerCount; ++id)
            m_workers[id]->start(id);
    }

    ~ThreadPoolImpl()
    {
        for (const auto &worker : m_workers)
            worker->stop();
        for (const auto &worker : m_workers)
            worker->join();
    }

    ThreadPoolImpl(const ThreadPoolImpl &) = delete;
    ThreadPoolImpl &operator=(const ThreadPoolImpl &) = delete;

    /// Queues a job: any callable without arguments that fits into a Task. Allocates nothing and
    /// does not wait. Throws std::runtime_error if the chosen worker's queue is full; the job is
    /// then not run.
    ///
    /// The choice knows a thread by its number only, so a worker of a larger pool may post here
    /// only if its number is below this pool's worker count, or above it; at the count itself
    /// std::out_of_range is thrown.
    template <typename Handler>
    void post(Handler &&handler)
    {
        if (!tryPost(std::forward<Handler>(handler)))
            throw std::runtime_error("thread pool queue is full");
    }

    /// The same, but false for a full queue.
    template <typename Handler>
    [[nodiscard]] bool tryPost(Handler &&handler)
    {
        return m_workers.at(chooseWorker())->post(std::forward<Handler>(handler));
    }

    std::size_t workerCount() const { return m_workers.size(); }

private:
    using PoolWorker = Worker<Task, Queue>;

    std::size_t chooseWorker()
    {
        const std::size_t own = detail::thread_id();
        if (own > m_workers.size())
            return m_nextWorker.fetch_add(1, std::memory_order_relaxed) % m_workers.size();
        return own;
    }

    std::vector<std::unique_ptr<PoolWorker>> m_workers;
    std::atomic<std::uint64_t> m_nextWorker = 0;
};
} // namespace tp

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <limits>
#include <semaphore.h>
#include <stdexcept>
#include <thread>
#include <utility>

namespace tp
{
namespace detail
{
/// The number of the worker that the calling thread is, from 0; on every other thread a value above
/// every worker number.
inline std::size_t &thread_id()
{
    thread_local std::size_t tss_id = std::numeric_limits<std::size_t>::max();
    return tss_id;
}
} // namespace detail

/// One thread of the pool and the queue it works off, oldest task first. It sleeps in the kernel
/// while the queue is empty.
///
/// Host and plugin each compile this header and share one worker. What wakes the thread is
/// therefore a semaphore of the C library: the waiting of std::atomic goes through a table that
/// each of the two would have for itself.
///
/// Threads: post() from any; start(), stop() and join() from the owner. A task must not throw: an
/// exception that leaves it ends the program, as on any thread.
template <typename Task, template <typename> class Queue>
class Worker
{
public:
    /// Capacity of the queue in tasks. The thread does not run yet.
    explicit Worker(std::size_t queueSize) : m_queue(queueSize) { sem_init(&m_signals, 0, 0); }

    ~Worker()
    {
        stop();
        join();
        sem_destroy(&m_signals);
    }

    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    /// Starts the thread under its number. Once.
    void start(std::size_t id)
    {
        m_thread = std::thread([this, id] {
            detail::thread_id() = id;
            work();
        });
    }

    /// Queues a task and wakes the thread. False when the queue is full.
    template <typename Handler>
    bool post(Handler &&handler)
    {
        if (!m_queue.push(std::forward<Handler>(handler)))
            return false;
        signal();
        return true;
    }

    /// Asks the thread to end once its queue is empty.
    void stop()
    {
        m_stop.store(true);
        signal();
    }

    void join()
    {
        if (m_thread.joinable())
            m_thread.join();
    }

private:
    void signal() { sem_post(&m_signals); }

    // Each post and each stop is one signal, given after the fact, so none is slept through.
    void work()
    {
        for (;;) {
            while (sem_wait(&m_signals) != 0 && errno == EINTR) { }
            const bool stopping = m_stop.load(); // before the queue: what was posted still runs
            while (runOne()) { }
            if (stopping)
                return;
        }
    }

    // The task is destroyed here and not kept over a sleep: what it holds is released at once.
    bool runOne()
    {
        Task task;
        if (!m_queue.pop(task))
            return false;
        task();
        return true;
    }

    Queue<Task> m_queue;
    sem_t m_signals; // posts and stops that the thread has not taken notice of
    std::atomic<bool> m_stop = false;
    std::thread m_thread;
};
} // namespace tp

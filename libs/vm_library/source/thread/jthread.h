// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace vm::thread
{
/// A worker with a thread of its own: run() is called, the thread sleeps until it is woken, and so
/// on until it is closed.
///
/// The worker is stopped (stop flag set, no thread) when it is constructed and after close().
///
/// Threads:
/// 1. Owner: open(), close(), hasThread(), and with them before() and after(). One at a time.
/// 2. Worker: run().
/// 3. Any: wake(), stopping().
///
/// A wake-up that comes while run() works is lost. That suits a stream, where the next block brings
/// the next wake-up; run() takes all that is there each time.
///
/// An exception that leaves run() is logged and ends the thread; the stop flag is then set, while
/// the handle stays until the next close(), so open() does nothing before that.
///
/// A derived class calls close() in its destructor: run() and after() are its own, and a thread
/// that is still there when this class is destroyed ends the program.
class jthread
{
public:
    /// Taken by open() and not applied: the stream keeps up at the scheduler's normal priority.
    enum class Priority {
        Low = 0,
        Normal = 1,
        High = 2,
        Highest = 3,
        TimeCritical = 4,
    };

    jthread() = default;
    virtual ~jthread();
    jthread(const jthread &) = delete;
    jthread &operator=(const jthread &) = delete;

    /// Called by open() on its thread, ahead of the new thread.
    virtual void before() { }

    /// Called by close() on its thread, when the worker's thread is gone.
    virtual void after() { }

    /// One round of work, on the worker's thread.
    virtual void run() = 0;

    /// Starts the thread. Does nothing while there is one.
    void open(Priority priority);

    /// Stops the thread, waits for it and calls after(). Does nothing if there is none.
    void close();

    /// True from open() to close(), also when an exception has ended the thread in between.
    bool hasThread() const { return m_thread != nullptr; }

    /// True while the worker is stopped or about to stop.
    bool stopping() const { return m_token.stop != 0; }

    /// Ends the worker's sleep. Takes no lock, so it may be called for every block of a stream.
    void wake() { m_token.condition.notify_all(); }

private:
    struct token
    {
        std::condition_variable condition;
        std::mutex mutex;
        std::atomic<unsigned char> stop = 1; // 1: stopped or to be stopped
    };

    void exec(token *wakeUp);

    token m_token;
    std::unique_ptr<std::thread> m_thread; // owner's thread only; null while no thread exists
};
} // namespace vm::thread

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <memory>
#include <utility>

namespace DspCore
{
/// Jobs of one object in a thread pool of somebody else, which may come to them after the object is
/// gone.
///
/// A job that begins after end() does nothing. end() waits for the jobs that have begun, and for
/// nothing that is up to the pool: when it begins a job, and how long it keeps one that is done.
/// make() and the jobs run on any thread, several at once; neither allocates.
class PoolJobs
{
public:
    PoolJobs();

    /// What to post: calls work() unless the object has ended. `work` must not throw.
    template <typename Work>
    auto make(Work work) const
    {
        return [ticket = Ticket(mState), work = std::move(work)] { ticket.run(work); };
    }

    /// From here on no job does anything. Returns when none is at work any more; not to be called
    /// by one of them.
    void end();

    /// Whether every pool has let go of every job that this library has made, done or not: until
    /// then it may call the library's code. Waits up to `patience` for it.
    static bool released(std::chrono::milliseconds patience);

private:
    class State;

    /// Counts as long as a pool holds the job.
    class Ticket
    {
    public:
        explicit Ticket(std::shared_ptr<State> state);
        Ticket(Ticket &&other) noexcept = default;
        Ticket(const Ticket &) = delete;
        Ticket &operator=(const Ticket &) = delete;
        ~Ticket();

        template <typename Work>
        void run(const Work &work) const
        {
            if (!begin())
                return;
            work();
            finish();
        }

    private:
        bool begin() const;
        void finish() const;

        std::shared_ptr<State> mState; // none after a move
    };

    std::shared_ptr<State> mState;
};
} // namespace DspCore

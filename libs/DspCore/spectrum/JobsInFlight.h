// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <condition_variable>
#include <mutex>
#include <utility>

namespace DspCore
{
/// Counts the jobs of an object that a thread pool still holds, so that the object can outlive
/// them.
///
/// Each job carries a ticket. It counts until the pool destroys the job, run or not. Any thread may
/// take and drop tickets; neither allocates.
class JobsInFlight
{
public:
    class Ticket
    {
    public:
        explicit Ticket(JobsInFlight &jobs) : mJobs(&jobs) { jobs.add(1); }
        Ticket(Ticket &&other) noexcept : mJobs(std::exchange(other.mJobs, nullptr)) { }
        Ticket(const Ticket &) = delete;
        Ticket &operator=(const Ticket &) = delete;
        ~Ticket()
        {
            if (mJobs)
                mJobs->add(-1);
        }

    private:
        JobsInFlight *mJobs;
    };

    /// Returns once no ticket is out.
    void wait()
    {
        std::unique_lock lock(mMutex);
        mNone.wait(lock, [this] { return mCount == 0; });
    }

private:
    void add(int change)
    {
        // The waiter destroys this object as soon as it has the mutex, so the call is inside.
        const std::lock_guard lock(mMutex);
        mCount += change;
        if (mCount == 0)
            mNone.notify_all();
    }

    std::mutex mMutex;
    std::condition_variable mNone;
    int mCount = 0; // guarded by mMutex
};
} // namespace DspCore

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/PoolJobs.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace DspCore
{
namespace
{
std::atomic<int> held = 0; // jobs in the pools of this process
} // namespace

class PoolJobs::State
{
public:
    bool begin()
    {
        const std::lock_guard lock(mMutex);
        if (mEnded)
            return false;
        ++mAtWork;
        return true;
    }

    void finish()
    {
        // The waiter may be gone right after; the state lives on with the job.
        const std::lock_guard lock(mMutex);
        if (--mAtWork == 0)
            mNone.notify_all();
    }

    void end()
    {
        std::unique_lock lock(mMutex);
        mEnded = true;
        mNone.wait(lock, [this] { return mAtWork == 0; });
    }

private:
    std::mutex mMutex;
    std::condition_variable mNone;
    int mAtWork = 0;     // guarded by mMutex
    bool mEnded = false; // guarded by mMutex
};

PoolJobs::PoolJobs() : mState(std::make_shared<State>()) { }

void PoolJobs::end()
{
    mState->end();
}

bool PoolJobs::released(std::chrono::milliseconds patience)
{
    using namespace std::chrono_literals;
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (held > 0) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(1ms);
    }
    return true;
}

PoolJobs::Ticket::Ticket(std::shared_ptr<State> state) : mState(std::move(state))
{
    ++held;
}

PoolJobs::Ticket::~Ticket()
{
    if (!mState)
        return;
    mState.reset();
    --held;
}

bool PoolJobs::Ticket::begin() const
{
    return mState->begin();
}

void PoolJobs::Ticket::finish() const
{
    mState->finish();
}
} // namespace DspCore

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <utility>

namespace host
{
template <typename Signature>
class GuardedFunction;

/// A function that one thread installs and takes away while another calls it.
///
/// When set() returns, the function before is not running and will not run again. The lock is held
/// for a whole call, so a function must not install another one. A caller that comes round at once
/// could keep set() waiting for long, since std::mutex does not queue; it therefore stands back
/// while a change is announced and gets the same answer as without a function.
template <typename Result, typename... Args>
class GuardedFunction<Result(Args...)>
{
public:
    using Function = std::function<Result(Args...)>;

    /// An empty function takes the present one away.
    void set(Function function)
    {
        ++m_changes;
        {
            const std::lock_guard lock(m_mutex);
            m_function.swap(function);
        }
        --m_changes;
    }

    /// Result() without a function.
    Result call(Args... args)
    {
        if (m_changes > 0)
            return Result();
        const std::lock_guard lock(m_mutex);
        return m_function ? m_function(std::forward<Args>(args)...) : Result();
    }

private:
    std::mutex m_mutex;
    Function m_function;            // guarded by m_mutex
    std::atomic<int> m_changes = 0; // set() calls under way
};
} // namespace host

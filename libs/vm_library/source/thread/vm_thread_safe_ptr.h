// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cassert>
#include <memory>
#include <mutex>
#include <type_traits>
#include <utility>

namespace vm::memory
{
/// Shared ownership of an object together with the mutex that guards it.
///
/// Copies share both. A call through the arrow holds the mutex for that one call:
///
///     notch->setWidth(0, 50.0);        // locked from here to the semicolon
///
/// Calls that belong together take the mutex for all of them:
///
///     const auto guard = notch.lock();
///     notch->setFrequency(0, 7.1e6);   // with a recursive mutex the arrow may lock again
///     notch->setWidth(0, 50.0);
///
/// Any thread may use its own copy, and the arrow and lock() of a shared copy that nobody assigns
/// to. Never keep the result of the arrow: it would hold the mutex.
///
/// A pointer without an object is a programming error: every access to it stops the program, with
/// a message that names this file and line.
template <typename T, typename Mutex = std::recursive_mutex>
class safe_ptr
{
    std::shared_ptr<Mutex> m_mutex;
    std::shared_ptr<T> m_ptr;

public:
    /// What the arrow returns: the lock for the length of the full expression.
    class access
    {
    public:
        access(Mutex &mutex, T *object) : m_lock(mutex), m_object(object) { }
        T *operator->() const { return m_object; }

    private:
        std::unique_lock<Mutex> m_lock;
        T *m_object;
    };

    /// Points at nothing.
    safe_ptr() = default;

    safe_ptr(std::shared_ptr<Mutex> mutex, std::shared_ptr<T> object)
        : m_mutex(std::move(mutex)), m_ptr(std::move(object))
    { }

    /// One locked call on the object.
    access operator->()
    {
        T *object = get_for_write();
        return access(*m_mutex, object);
    }
    access operator->() const
    {
        T *object = get_for_read();
        return access(*m_mutex, object);
    }

    /// Holds the mutex until the result goes out of scope.
    [[nodiscard]] std::unique_lock<Mutex> lock() const
    {
        get_for_read();
        return std::unique_lock<Mutex>(*m_mutex);
    }

    explicit operator bool() const { return m_ptr != nullptr; }

    /// The object without a lock, for callers that hold lock(). Never null. Messages of the past
    /// name these two lines, so they stay where they are.
    T *get_for_write() { return assert(m_ptr), m_ptr.get(); }
    T *get_for_read() const { return assert(m_ptr), m_ptr.get(); }
};

/// Creates the object from the arguments, and its mutex.
template <typename T, typename Mutex = std::recursive_mutex, typename... Args>
safe_ptr<T, Mutex> make_safe_ptr(Args &&...args)
{
    return {std::make_shared<Mutex>(), std::make_shared<T>(std::forward<Args>(args)...)};
}
} // namespace vm::memory

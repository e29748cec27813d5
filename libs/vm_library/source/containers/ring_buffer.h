// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/containers/RingCore.h"
#include "vm_library/source/thread/spinlock.h"

#include <cstddef>
#include <gsl/span>
#include <mutex>
#include <vector>

namespace vm::containers
{
/// Hands blocks from one thread to another, whole or not at all.
///
/// A block that does not fit is refused and nothing is overwritten; a read that asks for more than
/// is stored is refused too. Any capacity is allowed, the indices wrap by one modulo per call.
/// A ring that has been read empty begins anew at its start: as long as the reader keeps up, a few
/// blocks of storage are in use and stay in the cache, however large the ring.
/// Every operation is one short critical section under Lock, so any thread may call any of them.
/// Only resize() allocates. A fresh ring has capacity 0 and refuses everything.
template <typename T, typename Lock = vm::thread::spinlock>
class ring_buffer
{
public:
    /// Sets the capacity in elements and empties the ring.
    void resize(std::size_t capacity)
    {
        const std::lock_guard<Lock> guard(m_lock);
        m_capacity = capacity;
        core().clear();
        m_storage.resize(capacity);
    }

    /// Stores the block, or returns false and leaves the ring as it is when the block is empty or
    /// longer than the free space.
    bool write(gsl::span<T> block)
    {
        const std::lock_guard<Lock> guard(m_lock);
        return core().put(m_storage.data(), block.data(), block.size());
    }

    /// Fills the block with the oldest elements, or returns false and leaves both as they are when
    /// the block is empty or longer than what is stored.
    bool read(gsl::span<T> block)
    {
        const std::lock_guard<Lock> guard(m_lock);
        if (!core().take(m_storage.data(), block.data(), block.size()))
            return false;
        if (m_stored == 0)
            m_read = m_write = 0;
        return true;
    }

    /// Drops what is stored; the capacity stays.
    void clear()
    {
        const std::lock_guard<Lock> guard(m_lock);
        core().clear();
    }

    /// Elements stored.
    std::size_t size() const
    {
        const std::lock_guard<Lock> guard(m_lock);
        return m_stored;
    }

    /// Elements that the next write may bring.
    std::size_t free_space() const
    {
        const std::lock_guard<Lock> guard(m_lock);
        return m_free;
    }

    std::size_t capacity() const
    {
        const std::lock_guard<Lock> guard(m_lock);
        return m_capacity;
    }

private:
    auto core() { return moduloRing(m_capacity, m_read, m_write, m_stored, m_free); }

    // All guarded by m_lock.
    std::size_t m_capacity = 0;
    std::size_t m_read = 0;
    std::size_t m_write = 0;
    std::size_t m_stored = 0;
    std::size_t m_free = 0;
    mutable Lock m_lock;
    std::vector<T> m_storage;
};
} // namespace vm::containers

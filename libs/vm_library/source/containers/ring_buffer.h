// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/containers/RingCore.h"
#include "vm_library/source/thread/spinlock.h"

#include <algorithm>
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
/// Every operation is one short critical section under Lock, so any thread may call any of them.
/// Only resize() allocates. A fresh ring has capacity 0 and refuses everything.
///
/// One writer and one reader may also work in the ring itself, on runs of elements that lie in one
/// piece, and spare the copies:
///
///     |. . . t t t s s s s s s s s w w w w . . . . . . . . . . . . . . . .|e e e e|
///            taken stored         room                       free          overhang
///
/// The writer asks for room(), fills it and commit()s it. The reader take()s a run, which stands
/// untouched until the next take(), although it counts as free at once: the storage is longer than
/// the capacity by the longest run. A run that passes the end goes on in the overhang, a second
/// home of the first elements. When little is stored, room() moves that to the start: as long as
/// the reader keeps up, a few blocks of storage are in use and stay in the cache, however large the
/// ring.
template <typename T, typename Lock = vm::thread::spinlock>
class ring_buffer
{
public:
    /// Sets the capacity, and the length of the longest run for work in the ring, in elements, and
    /// empties the ring.
    void resize(std::size_t capacity, std::size_t longestRun = 0)
    {
        const std::lock_guard<Lock> guard(m_lock);
        m_capacity = capacity;
        m_longestRun = longestRun;
        m_storage.resize(capacity + 2 * longestRun);
        empty();
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
        m_taken = 0;
        return core().take(m_storage.data(), block.data(), block.size());
    }

    /// Where the writer may put the next `count` elements, at most the longest run; null if the
    /// ring has no room for them, or the count is 0.
    T *room(std::size_t count)
    {
        const std::lock_guard<Lock> guard(m_lock);
        if (count == 0 || count > m_free || count > m_longestRun)
            return nullptr;
        beginAnew(count);
        m_room = count;
        return m_storage.data() + m_write;
    }

    /// Stores what the writer put into the room. Nothing if the ring was emptied since.
    void commit()
    {
        const std::lock_guard<Lock> guard(m_lock);
        if (m_room == 0)
            return;
        std::copy_n(m_storage.data() + places(), overhang(m_write, m_room), m_storage.data());
        m_stored += m_room;
        m_free -= m_room;
        m_write = (m_write + m_room) % places();
        m_room = 0;
    }

    /// The `count` oldest elements, at most the longest run, for the reader to use where they
    /// stand, until its next take() or read(). Null, and nothing is taken, if there are not so
    /// many or the count is 0.
    T *take(std::size_t count)
    {
        const std::lock_guard<Lock> guard(m_lock);
        m_taken = 0;
        if (count == 0 || count > m_stored || count > m_longestRun)
            return nullptr;
        std::copy_n(m_storage.data(), overhang(m_read, count), m_storage.data() + places());
        T *const first = m_storage.data() + m_read;
        m_taken = count;
        m_stored -= count;
        m_free += count;
        m_read = (m_read + count) % places();
        return first;
    }

    /// Drops what is stored, and the room; the capacity stays.
    void clear()
    {
        const std::lock_guard<Lock> guard(m_lock);
        empty();
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
    auto core() { return moduloRing(places(), m_read, m_write, m_stored, m_free); }

    /// Elements between two visits of an index to the same place.
    std::size_t places() const { return m_capacity + m_longestRun; }

    /// How much of a run passes the end.
    std::size_t overhang(std::size_t first, std::size_t count) const
    {
        return first + count - std::min(first + count, places());
    }

    void empty()
    {
        core().clear();
        m_free = m_capacity;
        m_taken = 0;
        m_room = 0;
    }

    /// Moves what is stored to the start where that is little beside what comes.
    void beginAnew(std::size_t coming)
    {
        constexpr std::size_t kWorth = 4;
        if (m_taken != 0 || m_read == 0 || m_stored > coming / kWorth || m_write < m_read)
            return;
        std::copy_n(m_storage.data() + m_read, m_stored, m_storage.data());
        m_read = 0;
        m_write = m_stored;
    }

    // All guarded by m_lock.
    std::size_t m_capacity = 0;
    std::size_t m_read = 0;
    std::size_t m_write = 0;
    std::size_t m_stored = 0;
    std::size_t m_free = 0;
    mutable Lock m_lock;
    std::vector<T> m_storage;
    std::size_t m_longestRun = 0;
    std::size_t m_taken = 0; // elements that the reader still uses
    std::size_t m_room = 0;  // elements that the writer is about to bring
};
} // namespace vm::containers

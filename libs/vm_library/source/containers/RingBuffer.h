// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/containers/RingCore.h"
#include "vm_library/source/containers/SpinLock.h"

#include <bit>
#include <vector>

namespace Velmora
{
/// The byte queue between the engine and a recording's file thread: blocks whole or not at all,
/// old data never overwritten.
///
/// Any thread may call any operation; each is one short critical section. Only resize() allocates.
/// A fresh ring has capacity 0 and refuses everything.
template <typename T>
class RingBuffer
{
public:
    /// The capacity becomes n rounded up to a power of two, and the ring is emptied. Asking for the
    /// present capacity changes nothing.
    void resize(unsigned int n)
    {
        const SpinLocker locker(m_lock);
        if (n == m_size)
            return;
        m_size = std::bit_ceil(n);
        m_mask = m_size - 1;
        m_storage.resize(m_size);
        core().clear();
    }

    /// Stores n elements, or returns false and changes nothing when n is 0 or above the free count.
    bool write(const T *data, unsigned int n)
    {
        const SpinLocker locker(m_lock);
        return core().put(m_storage.data(), data, n);
    }

    /// Takes the n oldest elements, or returns false and changes nothing when n is 0 or above the
    /// stored count.
    bool read(T *data, unsigned int n)
    {
        const SpinLocker locker(m_lock);
        return core().take(m_storage.data(), data, n);
    }

    /// Drops what is stored; the capacity stays.
    void clear()
    {
        const SpinLocker locker(m_lock);
        core().clear();
    }

    /// Elements stored.
    unsigned int count() const
    {
        const SpinLocker locker(m_lock);
        return m_stored;
    }

    /// Elements that fit.
    unsigned int freeCount() const
    {
        const SpinLocker locker(m_lock);
        return m_free;
    }

    unsigned int capacity() const
    {
        const SpinLocker locker(m_lock);
        return m_size;
    }

private:
    auto core()
    {
        return vm::containers::maskedRing(m_size, m_mask, m_read, m_write, m_stored, m_free);
    }

    // All guarded by m_lock.
    unsigned int m_size = 0;
    unsigned int m_read = 0;
    unsigned int m_write = 0;
    unsigned int m_mask = 0;
    unsigned int m_stored = 0;
    unsigned int m_free = 0;
    std::vector<T> m_storage;
    mutable SpinLock m_lock;
};
} // namespace Velmora

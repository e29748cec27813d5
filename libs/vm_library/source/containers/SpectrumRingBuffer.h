// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/containers/SpinLock.h"
#include "vm_library/source/containers/ring_copy.h"

#include <QVector>
#include <atomic>
#include <bit>
#include <cstddef>

namespace Velmora
{
/// The ring beside the spectrum's window: blocks whole or not at all, old data never overwritten,
/// and counts that can be looked at without the lock.
///
/// Any thread may call any operation; each is one short critical section. Only resize() allocates.
/// A fresh ring has capacity 0 and refuses everything.
template <typename T>
class SpectrumRingBuffer
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
        m_storage.resize(static_cast<int>(m_size));
        reset();
    }

    /// Stores n elements, or returns false and changes nothing when n is 0 or above the free count.
    bool write(const T *data, unsigned int n)
    {
        const SpinLocker locker(m_lock);
        if (n == 0 || n > m_free)
            return false;
        m_stored += n;
        m_free -= n;
        vm::containers::copyIntoRing(m_storage.data(), std::size_t(m_size), m_write, data, n);
        m_write = (m_write + n) & m_mask;
        return true;
    }

    /// Takes the n oldest elements, or returns false and changes nothing when n is 0 or above the
    /// stored count.
    bool read(T *data, unsigned int n)
    {
        const SpinLocker locker(m_lock);
        if (n == 0 || n > m_stored)
            return false;
        m_stored -= n;
        m_free += n;
        vm::containers::copyOutOfRing(m_storage.constData(), std::size_t(m_size), m_read, data, n);
        m_read = (m_read + n) & m_mask;
        return true;
    }

    /// Drops what is stored; the capacity stays.
    void clear()
    {
        const SpinLocker locker(m_lock);
        reset();
    }

    /// Elements stored, without the lock.
    unsigned int count() const { return m_stored; }

    /// Elements that fit, without the lock.
    unsigned int freeCount() const { return m_free; }

    unsigned int capacity() const
    {
        const SpinLocker locker(m_lock);
        return m_size;
    }

private:
    void reset()
    {
        m_read = 0;
        m_write = 0;
        m_stored = 0;
        m_free = m_size;
    }

    // Guarded by m_lock, but for the two counts, which any thread may read.
    unsigned int m_size = 0;
    unsigned int m_read = 0;
    unsigned int m_write = 0;
    unsigned int m_mask = 0;
    std::atomic<unsigned int> m_stored = 0;
    std::atomic<unsigned int> m_free = 0;
    QVector<T> m_storage;
    mutable SpinLock m_lock;
};
} // namespace Velmora

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/containers/RingCore.h"
#include "vm_library/source/containers/SpinLock.h"

#include <atomic>
#include <bit>
#include <cassert>
#include <cstddef>
#include <vector>

/// The ring of every audio outlet and of the IQ tap: one writer, one reader, blocks whole or not
/// at all, old data never overwritten.
///
/// The counts are atomic so that either side can look before it calls: the writer at freeCount(),
/// the reader at count(). They move before the samples do, inside the lock, so a count may be a
/// block ahead of the copy; the read or write that follows waits for the lock and sees the samples.
///
/// The fill gate tells whether the ring has gathered enough to play: armed, it reports under-fill
/// until a write lifts the stored count above the high threshold, and again once a read brings it
/// to the low threshold or below. With the one-shot flag it switches itself off at that write. It
/// is bookkeeping only and never refuses a read or a write.
///
/// Threads: write() from one, read() from one, everything else from any. Allocates in the
/// constructor only.
template <typename T>
class CircularBuffer
{
public:
    /// Capacity in elements, a power of two. The storage is zero-filled.
    explicit CircularBuffer(unsigned int capacity)
        : m_capacity(capacity), m_mask(capacity - 1), m_free(capacity), m_storage(capacity)
    {
        assert(std::has_single_bit(capacity));
    }

    /// Stores n elements, or returns false and changes nothing when n is below 1 or above the free
    /// count.
    bool write(const T *data, int n)
    {
        const auto count = static_cast<unsigned int>(n);
        if (n <= 0 || m_free < count)
            return false;
        const SpinLocker locker(m_lock);
        if (!core().put(m_storage.data(), data, count))
            return false;
        passGate();
        return true;
    }

    /// Takes the n oldest elements, or returns false and changes nothing when n is below 1 or above
    /// the stored count.
    bool read(T *data, int n)
    {
        const auto count = static_cast<unsigned int>(n);
        if (n <= 0 || m_stored < count)
            return false;
        const SpinLocker locker(m_lock);
        // The core looks once more: a clear() from a third thread may have come between the look
        // and the lock.
        if (!core().take(m_storage.data(), data, count))
            return false;
        if (m_gateEnabled)
            m_underFill = m_stored <= m_lowThreshold;
        return true;
    }

    /// Elements stored, without the lock.
    unsigned int count() const { return m_stored; }

    /// Elements that fit, without the lock.
    unsigned int freeCount() const { return m_free; }

    unsigned int capacity() const { return m_capacity; }

    /// Drops what is stored and reports under-fill. Gate, thresholds and one-shot flag stay.
    void clear()
    {
        const SpinLocker locker(m_lock);
        core().clear();
        m_underFill = true;
    }

    /// Switches the fill gate on and judges the present fill.
    void armGate()
    {
        const SpinLocker locker(m_lock);
        m_gateEnabled = true;
        m_underFill = false;
        judgeFill();
    }

    /// Elements above which the ring counts as filled, and down to which it may drain. An enabled
    /// gate judges the present fill at once.
    void setThresholds(unsigned int high, unsigned int low)
    {
        const SpinLocker locker(m_lock);
        m_highThreshold = high;
        m_lowThreshold = low;
        if (m_gateEnabled)
            judgeFill();
    }

    /// Lets the gate switch itself off at the first write that fills the ring.
    void setOneShot() { m_oneShot = true; }

    bool oneShot() const { return m_oneShot; }
    bool underFill() const { return m_underFill; }
    bool gateEnabled() const { return m_gateEnabled; }

private:
    auto core()
    {
        return vm::containers::maskedRing(m_capacity, m_mask, m_read, m_write, m_stored, m_free);
    }

    void judgeFill() { m_underFill = m_stored <= m_highThreshold; }

    void passGate()
    {
        if (!m_gateEnabled || (m_underFill && m_stored <= m_highThreshold))
            return;
        m_underFill = false;
        if (m_oneShot)
            m_gateEnabled = false;
    }

    // Written under m_lock, read by any thread.
    std::atomic<bool> m_oneShot = false;
    std::atomic<bool> m_underFill = true;
    std::atomic<bool> m_gateEnabled = false;

    // Guarded by m_lock, but for the constants and the two counts, which any thread may read.
    unsigned int m_highThreshold = 0;
    unsigned int m_lowThreshold = 0;
    const unsigned int m_capacity;
    const unsigned int m_mask;
    unsigned int m_read = 0;
    unsigned int m_write = 0;
    std::atomic<unsigned int> m_stored = 0;
    std::atomic<unsigned int> m_free;
    std::vector<T> m_storage;
    SpinLock m_lock;
};
